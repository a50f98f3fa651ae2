#ifndef CFG_LITERALPARAMETER_H
#define CFG_LITERALPARAMETER_H

#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// Makes a variadic parameter a text; its LiteralRange sub-sections are the texts that it may take.
class TAVREL_ENVIRONMENT_API LiteralParameter : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit LiteralParameter(const detail::SectionSetup& setup);
    ~LiteralParameter() override;

    std::string defaultValue; // the element default
};

} // namespace cfg

#endif
