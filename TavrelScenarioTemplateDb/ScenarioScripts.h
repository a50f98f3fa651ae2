#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SCENARIO_SCRIPTS_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SCENARIO_SCRIPTS_H

#include <string_view>
#include <vector>

#include <TavrelScenarioTemplateDb/Export.h>

namespace cfg {
class CfgScenario;
class ScenarioScript;
} // namespace cfg

namespace TavrelScenarioTemplateDb {

// Whether the item model reads the script. Those of other kinds, and those without a text, make no node either.
TAVREL_DRIVER_API bool isItemModelScript(const cfg::ScenarioScript& script);

// Those of a scenario file that hosts see, in the order of the file, with those of vehicles and other sections. They
// stay owned by the file.
TAVREL_DRIVER_API std::vector<cfg::ScenarioScript*> scriptsOf(cfg::CfgScenario& file);

// Whether a sub-section of that name makes no node, nor does anything below it.
TAVREL_DRIVER_API bool isHiddenSection(std::string_view name);

} // namespace TavrelScenarioTemplateDb

#endif
