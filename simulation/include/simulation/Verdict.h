#ifndef TAVREL_SIMULATION_VERDICT_H
#define TAVREL_SIMULATION_VERDICT_H

#include <string>
#include <vector>

#include <simulation/Events.h>
#include <simulation/Export.h>

namespace TavrelSimulation {

// What the criteria say of one run, or why there is none.
enum class Verdict {
    Passed,  // all criteria hold
    Failed,  // one does not, or a call had no implementation
    Error,   // the run could not be had
    Timeout, // it took too long
    Killed,  // a fatal assertion, a signal or the limit on memory ended it
    Skipped, // a scenario without a script: nothing to run
};

// "passed", "failed" and so on.
TAVREL_SIMULATION_API const char* WordOf(Verdict verdict);
// Passed if all hold, else Failed.
TAVREL_SIMULATION_API Verdict VerdictOf(const std::vector<Outcome>& outcomes);

} // namespace TavrelSimulation

#endif
