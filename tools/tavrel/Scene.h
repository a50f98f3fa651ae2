#ifndef TAVREL_COMMAND_SCENE_H
#define TAVREL_COMMAND_SCENE_H

#include "builtin/World.h"

#include <cstdint>

namespace cfg {
class CfgScenario;
}

namespace tavrel {

// What a scenario file says about the surroundings of its scripts.
class Scene {
public:
    // Puts vehicles, weather and road where the file has them.
    static void FillWorld(builtin::World& world, cfg::CfgScenario& file);
    // The seed of the random numbers that the file gives, 0 for none.
    static std::uint32_t SeedOf(cfg::CfgScenario& file);
};

} // namespace tavrel

#endif
