#ifndef TAVREL_COMMAND_TRACE_H
#define TAVREL_COMMAND_TRACE_H

#include "Describe.h"

#include <scenario/ItemModel.h>

#include <functional>
#include <string>
#include <vector>

namespace tavrel {

// "SCENARIO (1) / TASK (2)": where an item stands, in the words of the file, the item itself included.
std::string PathOf(const ScenarioItem& item);

// Watches a scenario while it runs and makes an event of whatever changes: rules as they tell it, states, variables and
// scores by comparing after each step, in the order of the file. Each event is one JSON object; the members are
// documented and stable.
class Trace : private ScenarioItemObserver {
public:
    using Listener = std::function<void(const Json&)>;

    Trace(ScenarioLib::Scenario& watched, Listener eventListener);
    ~Trace() override;
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    // What happens from now on happens at that time, in seconds.
    void SetTime(double seconds) { time = seconds; }
    // After a step: tells what is no longer as it was.
    void Compare();
    // An event of another kind, with the time put in front.
    void Tell(const std::string& event, const Json& members);

    std::size_t RulesFired() const { return rulesFired; }

private:
    struct WatchedTask {
        Task* task;
        std::int32_t state;
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
    std::vector<Rule*> rules;
    std::vector<WatchedTask> tasks;
    std::vector<WatchedVariable> variables;
    std::map<std::int32_t, float> scores;
    std::int32_t stopped = 0, paused = 0;
    std::size_t rulesFired = 0;
};

// An event as a line for people.
std::string EventText(const Json& event);

} // namespace tavrel

#endif
