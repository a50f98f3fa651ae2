#ifndef TAVREL_SIMULATION_INPUTS_H
#define TAVREL_SIMULATION_INPUTS_H

#include <string>
#include <vector>

#include <scenario/ItemModel.h>
#include <simulation/Events.h>
#include <simulation/Export.h>

namespace TavrelSimulation {

// A file that a run is made of, with the path by which an installation in any folder finds it. Links are resolved.
TAVREL_SIMULATION_API Input InputOf(const std::string& role, const std::string& file,
                                    const std::string& installationFile);

// The files that a script was read from beside its own: includes, and the evaluation, where they stand in files. Each
// once, in the order of the script; one that could not be found is left out.
TAVREL_SIMULATION_API std::vector<Input> IncludesOf(const ScenarioLib::Scenario& scenario,
                                                    const std::string& installationFile);

} // namespace TavrelSimulation

#endif
