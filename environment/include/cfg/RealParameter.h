#ifndef CFG_REALPARAMETER_H
#define CFG_REALPARAMETER_H

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// Makes a variadic parameter a real; its RealRange sub-sections say which values it may take.
class TAVREL_ENVIRONMENT_API RealParameter : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit RealParameter(const detail::SectionSetup& setup);
    ~RealParameter() override;

    double defaultValue = 0.0; // the element default
};

} // namespace cfg

#endif
