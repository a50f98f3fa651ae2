#ifndef SUPPORT_RUNNINGHOST_H
#define SUPPORT_RUNNINGHOST_H

#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/ModelText.h>

// A host that runs scenarios: a root model with a small vocabulary, implementations behind its CODE numbers, and an
// observer. Whatever happens is one line of a trace, such as "0.5 rule 3 then" or "0.5 SAY 7".
//
//   conditions  EQUAL(A, B)    A equals B          actions  SAY(A)      only a line of the trace
//               AFTER(A)       the time is past A           GO(A)       the task that runs gets the next state A
//               SWITCH(A)      switches[A] is on            END         the task that runs ends
//               AND, OR                                     PAUSE, STOP set the flag of the scenario
//                                                           DO(A)       calls deeds[A]
// A and B are numbers, given as such, as an entry of the tab TAB, or as a variable.
class RunningHost : public ScenarioItemObserver {
public:
    RunningHost();
    ~RunningHost() override;
    RunningHost(const RunningHost&) = delete;
    RunningHost& operator=(const RunningHost&) = delete;

    // Reads a script with this host as the observer of all its tasks and rules. Null if it does not parse; the
    // message is then in `log`.
    std::unique_ptr<ScenarioItem> Read(const std::string& text);
    template <class Item>
    std::unique_ptr<Item> ReadAs(std::string_view raw) {
        std::unique_ptr<ScenarioItem> item = Read(ScriptText(raw));
        auto* typed = dynamic_cast<Item*>(item.get());
        if (typed) static_cast<void>(item.release());
        return std::unique_ptr<Item>(typed);
    }

    // Starts the scenario at the first time and steps it at each of the others. Gives the trace since then.
    std::string Run(ScenarioLib::Scenario& scenario, const std::vector<double>& times);
    void Start(ScenarioLib::Scenario& scenario, double time);
    void StepAt(double time);
    std::string TakeTrace() { return std::exchange(trace, std::string()); }

    void OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) override;
    void Note(const std::string& what);

    std::ostringstream log;
    std::map<int, bool> switches;
    std::map<int, std::function<void()>> deeds;
    ScenarioLib::Scenario* running = nullptr;
    double now = 0.0;
    std::string trace;

private:
    std::unique_ptr<ScenarioItem> model;
    Folders* formerModel;
    std::vector<ActionEntry> formerActions;
    std::vector<ConditionEntry> formerConditions;
};

// A test that runs scenarios. Messages on the standard output go into `output`.
class RunningTest : public ::testing::Test {
protected:
    RunningTest() : formerBuffer(std::cout.rdbuf(output.rdbuf())) {}
    ~RunningTest() override { std::cout.rdbuf(formerBuffer); }

    std::ostringstream output;
    RunningHost host;

private:
    std::streambuf* formerBuffer;
};

#endif
