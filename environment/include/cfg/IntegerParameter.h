#ifndef CFG_INTEGERPARAMETER_H
#define CFG_INTEGERPARAMETER_H

#include <cstdint>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// Makes a variadic parameter an integer; its IntegerRange sub-sections say which values it may take.
class TAVREL_ENVIRONMENT_API IntegerParameter : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit IntegerParameter(const detail::SectionSetup& setup);
    ~IntegerParameter() override;

    std::int32_t defaultValue = 0; // the element default
};

} // namespace cfg

#endif
