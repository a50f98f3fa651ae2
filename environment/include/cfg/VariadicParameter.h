#ifndef CFG_VARIADICPARAMETER_H
#define CFG_VARIADICPARAMETER_H

#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// The declaration that a parameter of the scenario may be varied. Its typed sub-section (BooleanParameter,
// IntegerParameter, RealParameter or LiteralParameter) holds the default and the ranges.
class TAVREL_ENVIRONMENT_API VariadicParameter : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit VariadicParameter(const detail::SectionSetup& setup);
    ~VariadicParameter() override;

    std::string name;
    std::string description;
    std::string parameterId;   // the full id of the parameter
    std::string parameterUnit; // a unit text; empty for none
};

} // namespace cfg

#endif
