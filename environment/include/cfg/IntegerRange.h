#ifndef CFG_INTEGERRANGE_H
#define CFG_INTEGERRANGE_H

#include <cstdint>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// A range of integers, both ends included. Nothing ties the two fields to each other.
class TAVREL_ENVIRONMENT_API IntegerRange : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit IntegerRange(const detail::SectionSetup& setup);
    ~IntegerRange() override;

    std::int32_t maximum = 0;
    std::int32_t minimum = 0;
};

} // namespace cfg

#endif
