#ifndef TAVREL_SIMULATION_SCENE_H
#define TAVREL_SIMULATION_SCENE_H

#include <cstdint>

#include <scenario/ItemModel.h>
#include <simulation/Export.h>
#include <simulation/World.h>

namespace cfg {
class CfgScenario;
}

namespace TavrelSimulation {

// What a scenario file says about the surroundings of its scripts.
class TAVREL_SIMULATION_API Scene {
public:
    // Puts vehicles, weather and road where the file has them.
    static void FillWorld(World& world, cfg::CfgScenario& file);
    // The seed of the random numbers that the file gives, 0 for none.
    static std::uint32_t SeedOf(cfg::CfgScenario& file);
};

} // namespace TavrelSimulation

#endif
