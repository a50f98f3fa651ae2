#ifndef TAVREL_SIMULATION_TRACE_H
#define TAVREL_SIMULATION_TRACE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <scenario/ItemModel.h>
#include <simulation/Events.h>
#include <simulation/Export.h>

namespace TavrelSimulation {

// "SCENARIO (1) / TASK (2)": where an item stands, in the words of the file, the item itself included.
TAVREL_SIMULATION_API std::string PathOf(const ScenarioItem& item);

// What a script has, as traces and criteria name it. To be asked before the run.
TAVREL_SIMULATION_API Names NamesOf(const ScenarioLib::Scenario& scenario);

// Watches a scenario while it runs and makes an event of whatever changes: rules as they tell it, states, variables and
// scores by comparing after each step, in the order of the file. A host with a loop of its own uses it as Runner does.
class TAVREL_SIMULATION_API Trace : private ScenarioItemObserver {
public:
    using Listener = std::function<void(const Event&)>;

    // Watches the rules of the scenario until it is destroyed; the scenario must live as long.
    Trace(ScenarioLib::Scenario& watched, Listener eventListener);
    ~Trace() override;
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    // What happens from now on happens at that time, in seconds.
    void SetTime(double seconds) { time = seconds; }
    // After a step: tells what is no longer as it was.
    void Compare();
    // An event of another kind, at the present time.
    void Tell(decltype(Event::what) what);
    // What the run came to, but for the steps, the verdict and the criteria.
    RunEnd Summary() const;

private:
    struct WatchedRule {
        Rule* rule;
        bool fired;
    };
    struct WatchedTask {
        Task* task;
        std::int32_t state;
        bool entered; // whether the task around it ever went to it
    };
    struct WatchedVariable {
        Variable* variable;
        std::string value;
    };

    void OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) override;
    void Watch(ScenarioItem& item);
    void CompareScores();

    ScenarioLib::Scenario& scenario;
    const Listener listener;
    double time = 0;
    std::vector<WatchedRule> rules;
    std::map<const Rule*, std::size_t> ruleIndex;
    std::vector<WatchedTask> tasks;
    std::map<const Task*, std::size_t> taskIndex;
    std::vector<WatchedVariable> variables;
    std::map<std::int32_t, float> scores;
    std::int32_t stopped = 0, paused = 0;
    std::size_t rulesFired = 0;
};

} // namespace TavrelSimulation

#endif
