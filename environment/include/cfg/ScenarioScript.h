#ifndef CFG_SCENARIOSCRIPT_H
#define CFG_SCENARIOSCRIPT_H

#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// A script, kept as the text of the item model.
class TAVREL_ENVIRONMENT_API ScenarioScript : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit ScenarioScript(const detail::SectionSetup& setup);
    ~ScenarioScript() override;

    std::string name;       // the element scriptName
    std::string scriptType; // "nuro" or empty for a script of the item model
    std::string text;       // byte for byte as in the file
};

} // namespace cfg

#endif
