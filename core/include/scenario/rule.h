#ifndef SCENARIO_RULE_H
#define SCENARIO_RULE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/token.h>

class Action;
class Condition;
class Variable;

// One test with the actions for "true", the actions for "false" and variables of its own. A rule lives in a task, which
// initialises it once and steps it again and again; it tells its observers when its truth changes. It owns all its
// children and destroys them with itself.
class TAVREL_MODEL_API Rule : public Token {
public:
    // Events that a rule sends to its observers.
    static constexpr std::uint32_t kEventBecameTrue = 0;
    static constexpr std::uint32_t kEventBecameFalse = 1;
    // `result` before the first step, so that the first step counts as a change whatever it yields.
    static constexpr std::int32_t kNotEvaluated = 2;

    // The observer, if there is one, is added to the observers; it stays the caller's.
    explicit Rule(ScenarioItemObserver* observer = nullptr);
    ~Rule() override;

    std::string evaluation;              // EVALUATION: "NORMAL", "WARNING" or "ERROR"; empty until a load ends
    std::uint8_t disabled = 0;           // IS_DISABLED
    std::vector<Variable*> variables;    // owned; no search from outside the rule finds them
    std::vector<Condition*> conditions;  // owned; only the first is ever evaluated
    std::vector<Action*> actions;        // owned, kind ACTION
    std::vector<Action*> elseActions;    // owned, kind ELSE_ACTION
    std::int32_t level = 0;              // set by the host
    std::int32_t result = kNotEvaluated; // 0, 1 or kNotEvaluated
    double lastChangeTime = 0.0;         // seconds
    std::int32_t activationCount = 0;    // changes to true since Init
    double activeTime = 0.0;             // seconds; the spans that ended with a change to false
    std::string workPath;                // as given to Init

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    // The child's kind picks the list. A kind that has none is ignored, and stays the caller's.
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    // Both must stand in one list; an action never changes its branch here.
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    // Also makes the number that the name begins with the observable id.
    void SetName(const std::string& newName) override;
    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    bool OnLoadEnd() override;
    ScenarioItem* Clone() const override;
    void UpdateDisplayText() override;

    // Moves an action of this rule to the other branch and changes its kind. `index` is its place there; one beyond the
    // end means the end. An action that the rule does not hold is left alone.
    virtual void SwitchBranch(Action* action, std::size_t index);

    // Forgets what was measured and starts the condition anew. Logs "Init rule [name]".
    void Init(const std::string& path, double time);
    // Evaluates the condition and executes one of the two branches: at every step, not only on a change. An action must
    // not destroy the rule that it runs in.
    void Step(double time);
    // `level` once the rule was true since Init, before that 0.
    std::int32_t Level() const;
};

#endif
