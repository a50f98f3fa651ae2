#ifndef CFG_REALRANGE_H
#define CFG_REALRANGE_H

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// A range of reals. Nothing ties the two fields to each other.
class TAVREL_ENVIRONMENT_API RealRange : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit RealRange(const detail::SectionSetup& setup);
    ~RealRange() override;

    double maximum = 0.0;
    double minimum = 0.0;
};

} // namespace cfg

#endif
