#ifndef TAVREL_COMMAND_SCENE_H
#define TAVREL_COMMAND_SCENE_H

#include "builtin/World.h"

#include <scenario/ItemModel.h>

#include <list>
#include <memory>
#include <vector>

namespace cfg {
class CfgScenario;
}

namespace tavrel {

// What a scenario file says about the surroundings of its scripts. A script knows vehicles, drivers, triggers and the
// like by tables that a host fills; this fills them from the sections of the file.
class Scene {
public:
    // Fills the tables from which the texts of parameters are read. The scenario borrows some of them, so this object
    // must outlive its use.
    void FillTables(ScenarioLib::Scenario& scenario, cfg::CfgScenario& file);
    // Puts vehicles, weather and road where the file has them.
    static void FillWorld(builtin::World& world, cfg::CfgScenario& file);
    // The seed of the random numbers that the file gives, 0 for none.
    static std::uint32_t SeedOf(cfg::CfgScenario& file);

private:
    std::list<ScenarioLib::Scenario::Point> points;
    std::vector<std::unique_ptr<ScenarioItem>> items; // what the points are named by
};

} // namespace tavrel

#endif
