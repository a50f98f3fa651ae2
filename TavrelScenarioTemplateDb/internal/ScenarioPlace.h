#ifndef TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_SCENARIO_PLACE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_SCENARIO_PLACE_H

#include <string>

namespace TavrelScenarioTemplateDb::internal {

// What the scenarios of one listing have in common.
struct ScenarioPlace {
    std::string configuration; // whose data path supplies the root model
    std::string directory;     // the scenario directory, usually in generic form
};

} // namespace TavrelScenarioTemplateDb::internal

#endif
