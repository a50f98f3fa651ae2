#ifndef CFG_BOOLEANPARAMETER_H
#define CFG_BOOLEANPARAMETER_H

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// Makes a variadic parameter a boolean.
class TAVREL_ENVIRONMENT_API BooleanParameter : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit BooleanParameter(const detail::SectionSetup& setup);
    ~BooleanParameter() override;

    bool defaultValue = false; // the element default
};

} // namespace cfg

#endif
