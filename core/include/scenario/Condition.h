#ifndef SCENARIO_CONDITION_H
#define SCENARIO_CONDITION_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <scenario/function.h>

// The test of a rule: a comparison or another condition call, or "AND" or "OR" over sub-conditions, with a modifier
// that tells how the truth value is read over time. Times are seconds of the scenario.
class TAVREL_MODEL_API Condition : public Function {
public:
    explicit Condition(ScenarioItem* parentItem = nullptr);
    // Destroys `subConditions`.
    ~Condition() override;

    std::string modifier;                  // MODIFIER; "IS_TRUE" after a load that gave none
    std::vector<Condition*> subConditions; // owned
    float duration = -1.0F;                // DURATION in seconds; -1.0 means unset
    double lastChangeTime = 0.0;           // time of the last change of `state`
    std::int32_t state = 2;                // 0 false, 1 true, 2 not evaluated since Init
    std::uint8_t hasBeenTrue = 0;          // since Init
    std::uint8_t hasBeenFalse = 0;         // since Init

    // Sub-conditions first, then the parameters.
    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    void SaveChildren(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    bool OnLoadBegin() override;
    bool OnLoadEnd() override;
    // Needs a model that is a condition, and a parent.
    void UpdateDisplayText() override;
    // Copies the code number of the definition at the end of the chain as well.
    void SetModel(Token* item) override;
    bool LoadUserAttribute(ScenarioTextStream& stream) override;
    void SaveUserAttributes(std::ostream& out) const override;
    void CopyUserAttributes(Token* target) const override;
    void UpdateValidity() override;

    // Evaluates the whole tree of conditions and reads the truth value through the modifier.
    bool Evaluate(double time);
    // Forgets the history, as before the first Evaluate.
    void Init(double time);
};

// The implementations of conditions by CODE, for a host to extend; entry 0 is the default and gives true. A CODE
// without an entry is logged as an error and gives false. Entries may look at items and change values, but must not
// change this table while they run.
using ConditionEntry = std::function<bool(const ParameterValues&)>;
TAVREL_MODEL_API std::vector<ConditionEntry>& ConditionTable();

#endif
