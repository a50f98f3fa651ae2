#ifndef TAVREL_SIMULATION_RUNNER_H
#define TAVREL_SIMULATION_RUNNER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <scenario/ItemModel.h>
#include <simulation/Criteria.h>
#include <simulation/Events.h>
#include <simulation/Export.h>
#include <simulation/Trace.h>
#include <simulation/Verdict.h>
#include <simulation/World.h>

namespace TavrelSimulation {

// When the steps of a run are, in seconds.
struct Span {
    double from = 0;
    double until = 60;
    double step = 0.1;

    // Each time is worked out from the number of its step, and not by adding up, so that 1.5 s is 1.5 s and not a
    // little less: scripts compare times.
    TAVREL_SIMULATION_API double TimeOf(std::size_t index) const;
    // How many steps there are, the one at `from` among them. Of a span without a complaint.
    TAVREL_SIMULATION_API std::size_t Steps() const;
    // Why no run can have these times; empty if one can.
    TAVREL_SIMULATION_API std::string Complaint() const;
};

struct RunSettings {
    Span span;
    RunStart start;                  // what the start line says; `until`, `step` and `names` are filled in by the run
    std::vector<Criterion> criteria; // that the run is judged by
    int leastSeverity = 3;           // of what the library logs, what becomes an event
    // Called after each step, if there is one.
    std::function<void(const ScenarioLib::Scenario&, double time)> afterStep;
    // Called once before the first step, after the scenario was started.
    std::function<void(const ScenarioLib::Scenario&)> beforeSteps;
};

struct RunResult {
    Verdict verdict = Verdict::Passed;
    RunEnd end; // what the last event said
};

// Runs a script in a world: starts both, steps them until the script stops or the time is over, and tells `listener`
// every event from the start to the end. The tables by CODE are those of the process: RegisterActions and its like, or
// a host's own, come first. Several runs may follow one another with scenarios and worlds of their own. The log of the
// item model is the run's while it lasts, and then what it was.
// Throws std::invalid_argument with the complaint of the span, and CriterionError where a criterion is about something
// that the script does not have, both before anything runs. What an implementation or the listener throws passes
// through.
TAVREL_SIMULATION_API RunResult Run(ScenarioLib::Scenario& scenario, World& world, const RunSettings& settings,
                                    const Trace::Listener& listener);

} // namespace TavrelSimulation

#endif
