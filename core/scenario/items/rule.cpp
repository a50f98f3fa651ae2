#include <scenario/rule.h>

#include <algorithm>

#include <scenario/Condition.h>
#include <scenario/action.h>
#include <scenario/variable.h>

#include "items/AttributeRow.h"
#include "items/ChildStore.h"
#include "run/StepScope.h"
#include "text/HostCode.h"
#include "text/Log.h"
#include "text/NumberText.h"
#include "text/Refusal.h"

namespace {

constexpr const char* kNormal = "NORMAL";

bool IsEvaluationWord(std::string_view word) { return word == kNormal || word == "WARNING" || word == "ERROR"; }

// The word stays stored, whether it is one or not. The empty text is what a rule is saved with that never saw the end
// of a load: it reads back as unset.
bool TakeEvaluation(Rule& rule, std::string_view value) {
    rule.evaluation = value;
    return value.empty() || IsEvaluationWord(value) ||
           Refuse("EVALUATION \"", value, "\" is not among \"NORMAL WARNING ERROR\"");
}

// clang-format off
constexpr AttributeRow<Rule> kRows[] = {
    AttributeRow<Rule>::flag<&Rule::disabled>("IS_DISABLED"),
    {"EVALUATION", [](const Rule& rule) { return rule.evaluation.empty(); }, TakeEvaluation},
};
// clang-format on

// Runs one branch. By index, as an action may edit the list that it stands in.
void Execute(const std::vector<Action*>& branch) {
    for (std::size_t i = 0; i < branch.size(); ++i)
        if (branch[i]) branch[i]->Execute();
}

} // namespace

Rule::Rule(ScenarioItemObserver* observer) {
    if (observer) AddObserver(observer);
}

Rule::~Rule() {
    childStore::Destroy(variables);
    childStore::Destroy(conditions);
    childStore::Destroy(actions);
    childStore::Destroy(elseActions);
}

void Rule::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == KindNone || kindFilter == KindVariable) childStore::Append(variables, out, KindNone);
    if (kindFilter == KindNone || kindFilter == KindCondition) childStore::Append(conditions, out, KindNone);
    if (kindFilter == KindNone || kindFilter == KindAction) childStore::Append(actions, out, KindNone);
    if (kindFilter == KindNone || kindFilter == KindElseAction) childStore::Append(elseActions, out, KindNone);
}

void Rule::DetachChildren() {
    variables.clear();
    conditions.clear();
    actions.clear();
    elseActions.clear();
}

void Rule::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (!child) return;
    switch (child->kind) {
    case KindVariable:
        childStore::Place(this, variables, child, reference, after);
        break;
    case KindCondition:
        childStore::Place(this, conditions, child, reference, after);
        break;
    case KindAction:
        childStore::Place(this, actions, child, reference, after);
        break;
    case KindElseAction:
        childStore::Place(this, elseActions, child, reference, after);
        break;
    default:
        break;
    }
}

void Rule::RemoveChild(ScenarioItem* child) {
    if (childStore::Remove(this, variables, child)) return;
    if (childStore::Remove(this, conditions, child)) return;
    if (childStore::Remove(this, actions, child)) return;
    childStore::Remove(this, elseActions, child);
}

void Rule::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (!newChild) return;
    switch (newChild->kind) {
    case KindVariable:
        childStore::Replace(this, variables, newChild, oldChild);
        break;
    case KindCondition:
        childStore::Replace(this, conditions, newChild, oldChild);
        break;
    case KindAction:
        childStore::Replace(this, actions, newChild, oldChild);
        break;
    case KindElseAction:
        childStore::Replace(this, elseActions, newChild, oldChild);
        break;
    default:
        break;
    }
}

void Rule::SwapChildren(ScenarioItem* a, ScenarioItem* b) {
    childStore::Swap(variables, a, b);
    childStore::Swap(conditions, a, b);
    childStore::Swap(actions, a, b);
    childStore::Swap(elseActions, a, b);
}

void Rule::SwitchBranch(Action* action, std::size_t index) {
    const bool isElse = std::find(elseActions.begin(), elseActions.end(), action) != elseActions.end();
    std::vector<Action*>& from = isElse ? elseActions : actions;
    std::vector<Action*>& to = isElse ? actions : elseActions;
    const auto place = std::find(from.begin(), from.end(), action);
    if (!action || place == from.end()) return;
    from.erase(place);
    action->kind = isElse ? KindAction : KindElseAction;
    to.insert(to.begin() + static_cast<std::ptrdiff_t>(std::min(index, to.size())), action);
}

void Rule::SetName(const std::string& newName) {
    Token::SetName(newName);
    SetObservableId(static_cast<std::uint32_t>(WholeNumberOf(name)));
}

bool Rule::AcceptsChildKind(std::uint32_t childKind) const {
    // A rule can hold variables of its own, but no text gives it one.
    return childKind == KindAction || childKind == KindElseAction || childKind == KindCondition;
}

bool Rule::LoadAttribute(ScenarioTextStream& stream) {
    return Token::LoadAttribute(stream) || LoadFromRows<kRows>(*this, stream);
}

bool Rule::OnLoadEnd() {
    if (evaluation.empty()) evaluation = kNormal;
    return Token::OnLoadEnd();
}

ScenarioItem* Rule::Clone() const {
    ScenarioItem* clone = Token::Clone();
    auto& rule = static_cast<Rule&>(*clone);
    rule.evaluation = evaluation;
    rule.disabled = disabled;
    return clone;
}

void Rule::SaveAttributes(std::ostream& out) const {
    Token::SaveAttributes(out);
    if (disabled != 0) WriteAttribute(out, "IS_DISABLED", "1");
    if (evaluation != kNormal) WriteAttribute(out, "EVALUATION", evaluation);
}

void Rule::UpdateDisplayText() { displayText = disabled != 0 ? "//    " + label : label; }

void Rule::Init(const std::string& path, double time) {
    workPath = path;
    if (scenarioLog) LogMessage(LogSeverity::Progress, "Init rule [" + name + "]");
    if (!conditions.empty() && conditions.front()) conditions.front()->Init(time);
    lastChangeTime = time;
    result = kNotEvaluated;
    activationCount = 0;
    activeTime = 0.0;
}

void Rule::Step(double time) {
    if (disabled != 0) return;
    const StepScope scope;
    const std::int32_t before = result;
    const bool isTrue = conditions.empty() || !conditions.front() || conditions.front()->Evaluate(time);
    result = isTrue ? 1 : 0;

    // The condition may have disabled the rule meanwhile. That silences the ELSE branch only.
    if (isTrue)
        Execute(actions);
    else if (disabled == 0)
        Execute(elseActions);

    if (result == before) return;
    if (result == 1)
        ++activationCount;
    else
        activeTime += time - lastChangeTime;
    const HostCode hostCode;
    NotifyObservers(result == 1 ? kEventBecameTrue : kEventBecameFalse);
    lastChangeTime = time;
}

std::int32_t Rule::Level() const { return activationCount > 0 ? level : 0; }
