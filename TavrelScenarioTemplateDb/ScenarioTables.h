#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SCENARIO_TABLES_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SCENARIO_TABLES_H

#include <list>
#include <memory>
#include <vector>

#include <TavrelScenarioTemplateDb/Export.h>
#include <scenario/scenario.h>

namespace cfg {
class CfgScenario;
}

namespace TavrelScenarioTemplateDb {

// A script knows vehicles, drivers, triggers and the like by tables that a host fills; this fills them from the
// sections of the scenario file.
class TAVREL_DRIVER_API ScenarioTables {
public:
    ScenarioTables();
    ~ScenarioTables();
    ScenarioTables(const ScenarioTables&) = delete;
    ScenarioTables& operator=(const ScenarioTables&) = delete;

    // Vehicles by their id with the names of their inputs and outputs ("Input", "Output"), drivers by their name, and
    // by their place among their like the names of "Trigger", "Image" and "Sound"; a point for each "Object". An entry
    // that is there already is kept, but for vehicles. The evaluation, if there is one, gets the scenario as its owner.
    // The scenario borrows some of the tables, so this object must outlive its use.
    void fill(ScenarioLib::Scenario& scenario, cfg::CfgScenario& file);

private:
    std::list<ScenarioLib::Scenario::Point> points;
    std::vector<std::unique_ptr<ScenarioItem>> items; // what the points are named by
};

} // namespace TavrelScenarioTemplateDb

#endif
