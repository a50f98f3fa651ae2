#include <TavrelScenarioTemplateDb/ScenarioScripts.h>

#include <cstddef>

#include <cfg/CfgScenario.h>
#include <cfg/Scenario.h>
#include <cfg/ScenarioScript.h>

namespace TavrelScenarioTemplateDb {

namespace {

void collectScripts(cfg::Section& section, std::vector<cfg::ScenarioScript*>& scripts) {
    for (std::size_t index = 0; index < section.getSubSectionCount(); ++index) {
        cfg::Section* const below = section.getSubSection(index);
        if (auto* script = dynamic_cast<cfg::ScenarioScript*>(below)) {
            if (isItemModelScript(*script)) scripts.push_back(script);
        } else if (!isHiddenSection(below->getName())) {
            collectScripts(*below, scripts);
        }
    }
}

} // namespace

bool isItemModelScript(const cfg::ScenarioScript& script) {
    return !script.text.empty() && (script.scriptType.empty() || script.scriptType == "nuro");
}

std::vector<cfg::ScenarioScript*> scriptsOf(cfg::CfgScenario& file) {
    std::vector<cfg::ScenarioScript*> scripts;
    collectScripts(*file.getRootSection(), scripts);
    return scripts;
}

bool isHiddenSection(std::string_view name) { return name == "ScenarioTemplate"; }

} // namespace TavrelScenarioTemplateDb
