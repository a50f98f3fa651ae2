#include <scenario/action.h>

#include <scenario/DefinitionLists.h>

#include "link/Definitions.h"
#include "run/CallArguments.h"
#include "run/StepScope.h"
#include "text/Assertion.h"
#include "text/HostCode.h"
#include "text/Kinds.h"

namespace {

constexpr const char* kSource = "action";
constexpr const char* kList = DefinitionListOf(KindAction);

} // namespace

Action::Action(ScenarioItem* parentItem) : Function(parentItem) {}

Action::~Action() = default;

bool Action::OnLoadBegin() {
    if (!Token::OnLoadBegin()) return false;
    if (!LinkDefinition(*this, kList)) return false;
    if (model == this) returnType = "VOID";
    return true;
}

void Action::UpdateDisplayText() {
    if (!parent) AssertionFailed(kSource, 74);
    Function::UpdateDisplayText();
    displayText.insert(0, kind == KindAction ? "THEN  " : "ELSE  ");
}

// Whether an action makes sense in its rule is asked of the rule's first child, whatever else the rule holds.
void Action::UpdateValidity() {
    Function::UpdateValidity();
    if (!valid) return;
    const ScenarioItem* first = parent && parent->kind == KindRule ? parent->GetFirstChild() : nullptr;
    valid = first && (first->kind == KindCondition || first->kind == KindVariable);
}

void Action::Execute() {
    const Token* definition = RootDefinitionOf(*this);
    if (!definition || !KindIsIn(definition->kind, kCallable)) AssertionFailed(kSource, 112);
    const std::int32_t number = static_cast<const Function*>(definition)->codeNumber;
    if (number == -1) return;
    const StepScope step;
    const CallArguments arguments(*this);
    const ActionEntry* entry = FindImplementation(ActionTable(), *this, number);
    if (!entry) return;
    const HostCode hostCode;
    (*entry)(arguments.Values());
}

std::vector<ActionEntry>& ActionTable() {
    static std::vector<ActionEntry> table = {[](const ParameterValues&) {}};
    return table;
}
