#ifndef SCENARIO_TASK_H
#define SCENARIO_TASK_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/token.h>

class Rule;
class Variable;
namespace ScenarioLib {
class Scenario;
}

// A numbered state machine: variables, rules, and sub-tasks that are its states, each named by its decimal number. A
// rule's action asks for another state by writing `nextState` and `transitionPending`; the change is made at the start
// of the next step, which does nothing else. A task owns its children and destroys them with itself.
class TAVREL_MODEL_API Task : public Token {
public:
    // The event that Init sends to the observers of a task that lies directly in a scenario, at any time but 0.0.
    static constexpr std::uint32_t kEventInitialised = 2;

    static constexpr std::int32_t kNoState = -1;
    static constexpr std::int32_t kStateEnd = -3;       // ends the task
    static constexpr std::int32_t kStateKeepPause = -4; // a transition that leaves the scenario's pause flag alone

    // The observer, if there is one, is added to the observers; it stays the caller's.
    explicit Task(ScenarioItemObserver* observer = nullptr);
    // Needs no stack for the depth of its sub-tasks.
    ~Task() override;

    double currentTime = 0.0;   // seconds; time of the last step
    std::int32_t stepCount = 0; // steps counted since Init
    double startTime = 0.0;     // seconds; time of the last Init
    std::int32_t currentState = kNoState;
    std::uint8_t transitionPending = 0; // the next step enters `nextState`
    std::int32_t nextState = kNoState;
    std::vector<Variable*> variables;               // owned
    std::vector<Rule*> rules;                       // owned
    std::vector<Task*> subTasks;                    // owned; an evaluation keeps its criteria here too
    std::map<std::int32_t, std::string> stateNames; // filled by the host
    std::string workPath;                           // as given to Init
    std::int32_t taskKind = 0;                      // TASK_KIND; its meaning is the host's

    // The filter TASK gives all of `subTasks`, criteria included.
    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    // The child's kind picks the list. A kind that has none is ignored, and stays the caller's. A sub-task that was
    // added gets free names for its variables, see RenumberVariables.
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    // A task cannot hold an include; one that is to take a child's place is handed to the parent.
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    // Also makes the number that the name begins with the observable id.
    void SetName(const std::string& newName) override;
    bool LoadAttribute(ScenarioTextStream& stream) override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    bool LoadUserAttribute(ScenarioTextStream& stream) override;
    void SaveUserAttributes(std::ostream& out) const override;
    void CopyUserAttributes(Token* target) const override;

    // Appends the sub-tasks.
    virtual void GetSubTasks(std::vector<Task*>& out) const;
    // Starts the task and all its sub-tasks at `time`, in seconds: their first state, their rules, the initial values
    // of their variables. Logs "Init task [label]".
    virtual void Init(const std::string& path, double time);
    // One step at `time`, in seconds, which may stand still or run backwards. `scenario` learns which task was stepped
    // last and may be null. `countStep` raises the step counters. An action must not destroy the tasks and rules that
    // it runs in.
    virtual void Step(double time, ScenarioLib::Scenario* scenario, bool countStep);
    // Gives each own variable whose name is taken elsewhere in the tree the smallest free number as its name and, where
    // needed, a label of its own; parameters below this task that named it follow. Answers whether a name changed.
    virtual bool RenumberVariables();

    // The position of the first sub-task whose name has this number, -1 if there is none. A name without digits has 0.
    std::ptrdiff_t StateIndex(std::int32_t number) const;
    // The number of the first sub-task; 0 without one.
    std::int32_t FirstState() const;
    // The text of a state number, empty if it has none.
    std::string StateName(std::int32_t number) const;
    // The largest level of the rules here and in all sub-tasks below, at least 0.
    std::int32_t MaxRuleLevel() const;

    // Rules added to tasks of this process, less those that went with their task; zeroed by any DetachChildren. Nothing
    // in the library reads it.
    static std::int32_t RuleCount();

protected:
    // From `task` down its first sub-tasks: makes the first state of each level the next one too, and starts the level.
    // `asTask` starts it as a plain task, whatever its class.
    static void InitDownward(Task* task, const std::string& path, double time, bool asTask);

private:
    struct Enclosure;
    void BeginInit(const std::string& path, double time);
    void EndInit(double time, Enclosure& enclosure);
    bool StepOwn(double time, ScenarioLib::Scenario* scenario, Task*& state);
    void EnterState(double time);
};

#endif
