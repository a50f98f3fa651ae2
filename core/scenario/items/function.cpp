#include <scenario/function.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <scenario/DefinitionLists.h>
#include <scenario/Parameter.h>

#include "items/AttributeRow.h"
#include "items/CallUpgrades.h"
#include "items/ChildStore.h"
#include "link/Definitions.h"
#include "run/CallArguments.h"
#include "run/StepScope.h"
#include "text/Assertion.h"
#include "text/Kinds.h"
#include "text/NumberText.h"
#include "text/Refusal.h"
#include "text/TextFormat.h"
#include "text/TypeFit.h"

namespace {

constexpr const char* kSource = "function";
constexpr const char* kList = DefinitionListOf(KindFunction);
constexpr childStore::NullChildSite kNullChild = {kSource, 118};

bool IsParameterKind(const ScenarioItem* item) { return item->kind == KindParameter || item->kind == KindReturn; }
bool IsCall(const ScenarioItem* item) { return KindIsIn(item->kind, kCallable); }

using Row = AttributeRow<Function>;

bool TakeCode(Function& call, std::string_view value) {
    call.code = value;
    // An empty CODE, as the writer prints for none, leaves the number at "no implementation".
    if (!value.empty()) call.codeNumber = WholeNumberOf(call.code);
    return true;
}

// Any word stays in the field, but only those that the map tool knows are taken.
bool TakeWizard(Function& call, std::string_view value) {
    call.wizard = value;
    return value.empty() || value == "MAPTOOL" || value == "MAPTOOLRECT" ||
           Refuse("WIZARD \"", value, "\" is not among \"MAPTOOL MAPTOOLRECT\"");
}

bool TakeSeeAlso(Function& call, std::string_view value) {
    AppendWords(value, call.seeAlso);
    return true;
}

// clang-format off
constexpr Row kModelRows[] = {
    Row::text<&Function::overloadable>("IS_OVERLOADABLE"),
    {"CODE",     [](const Function& call) { return call.code.empty(); },    TakeCode},
    {"WIZARD",   [](const Function& call) { return call.wizard.empty(); },  TakeWizard},
    {"SEE_ALSO", [](const Function& call) { return call.seeAlso.empty(); }, TakeSeeAlso},
};

struct Operator {
    const char* name;
    const char* sign;
};
constexpr Operator kOperators[] = {
    {"DIVIDE",   "/"},
    {"MINUS",    "-"},
    {"MODULO",   "%"},
    {"MULTIPLY", "x"},
    {"PLUS",     "+"},
};
// clang-format on

const char* OperatorSign(const std::string& name) {
    for (const Operator& row : kOperators)
        if (name == row.name) return row.sign;
    return nullptr;
}

std::string TextOf(const Function& call, std::size_t index) {
    return index < call.parameters.size() ? call.parameters[index]->displayText : std::string();
}

// The search that both twins make. The subtrees of the parameters are searched once: they are among the children, and
// what a search under the empty scope missed no later one finds. A second pass would double the time at every level
// of nested calls; it is left for a call whose children are not its parameters.
template <class Item, class Call>
Item* FindInCall(Call& call, std::uint32_t itemKind, const std::string& itemName, const std::string& scope,
                 const std::string& scopeOfLastPass, int line) {
    if (!scope.empty()) {
        const ScenarioItem* file = call.parent ? FindFileScope(call.parent) : nullptr;
        if (!file || (file->fileName != scope && file->kind != KindScenario)) return nullptr;
    }
    if (call.kind == itemKind && call.name == itemName) return &call;
    std::vector<ScenarioItem*> children;
    call.GetChildren(children);
    for (Item* child : children) {
        if (!child) AssertionFailed(kSource, line);
        if (Item* hit = child->FindItem(itemKind, itemName, std::string())) return hit;
    }
    const std::size_t count = call.parameters.size();
    if (children.size() >= count &&
        std::equal(call.parameters.begin(), call.parameters.end(), children.end() - static_cast<std::ptrdiff_t>(count)))
        return nullptr;
    for (Item* parameter : call.parameters) {
        if (!parameter) AssertionFailed(kSource, line);
        if (Item* hit = parameter->FindItem(itemKind, itemName, scopeOfLastPass)) return hit;
    }
    return nullptr;
}

// Parameters are children too, so what stands below them is gathered twice; callers take the result as a set.
template <class Item, class Call>
void CollectBelow(Call& call, std::uint32_t itemKind, std::vector<Item*>& out, int line) {
    std::vector<ScenarioItem*> children;
    call.GetChildren(children);
    for (Item* child : children) {
        if (!child) AssertionFailed(kSource, line);
        child->CollectItemsOfKind(out, itemKind, true, true);
    }
    for (Item* parameter : call.parameters) {
        if (!parameter) AssertionFailed(kSource, line);
        parameter->CollectItemsOfKind(out, itemKind, true, true);
    }
}

bool HoldsCall(const Parameter& parameter) { return parameter.functionValue != nullptr; }

void Bind(Function& call, Parameter& parameter) {
    call.boundParameter = &parameter;
    parameter.SetFunction(&call);
}

// Whether the parameter may hold the result of the call.
bool Fits(const Parameter& parameter, const Function& call) {
    if (!parameter.model || parameter.model->kind != KindParameter) return false;
    if (!call.model || !IsCall(call.model)) return false;
    const auto& definition = static_cast<const Parameter&>(*parameter.model);
    const std::vector<std::string>& kinds = definition.kindList;
    if (std::find(kinds.begin(), kinds.end(), "FUNCTION") == kinds.end()) return false;
    const std::string& result = static_cast<const Function*>(call.model)->returnType;
    return result == definition.GetType() || AreNumbersOfBothTypes(result, definition.GetType());
}

} // namespace

Function::Function(ScenarioItem* parentItem) : Token(parentItem) {}

Function::~Function() {
    childStore::Destroy(parameters);
    delete returnParameter;
}

void Function::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == 0 || kindFilter == KindParameter) childStore::Append(parameters, out, 0);
}

void Function::DetachChildren() { parameters.clear(); }

void Function::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (!child) AssertionFailed(kNullChild.source, kNullChild.line);
    if (!IsParameterKind(child)) return;
    childStore::Place(this, parameters, child, reference, after, kNullChild);
}

void Function::RemoveChild(ScenarioItem* child) {
    if (child && child == returnParameter) {
        returnParameter = nullptr;
        delete child;
        return;
    }
    childStore::Remove(this, parameters, child);
}

void Function::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (newChild && IsParameterKind(newChild)) childStore::Replace(this, parameters, newChild, oldChild);
}

void Function::SwapChildren(ScenarioItem* a, ScenarioItem* b) { childStore::Swap(parameters, a, b); }

void Function::SaveChildren(std::ostream& out) const {
    for (Parameter* parameter : parameters) {
        if (!parameter) AssertionFailed(kSource, 171);
        parameter->Save(out);
    }
    if (returnParameter) returnParameter->Save(out);
}

bool Function::AcceptsChildKind(std::uint32_t childKind) const {
    return childKind == KindParameter || childKind == KindFunction;
}

bool Function::OnLoadBegin() {
    if (!Token::OnLoadBegin()) return false;
    if (!LinkDefinition(*this, kList)) return false;
    if (model == this) returnType = "FLOAT";
    return true;
}

bool Function::OnLoadEnd() {
    if (!model) AssertionFailed(kSource, 214);
    if (!IsCall(model)) AssertionFailed(kSource, 215);
    auto& definition = static_cast<Function&>(*model);
    SetFunctionModel(&definition);
    if (!Token::OnLoadEnd()) return false;

    bool hasOneReturn = true;
    for (std::size_t i = 0; i < parameters.size();) {
        Parameter* parameter = parameters[i];
        if (!parameter) AssertionFailed(kSource, 226);
        if (!parameter->isReturn || returnParameter) {
            if (parameter->isReturn)
                hasOneReturn = Refuse("\"", name, "\" has a second RETURN \"", parameter->name, "\"");
            ++i;
            continue;
        }
        parameters.erase(parameters.begin() + static_cast<std::ptrdiff_t>(i));
        returnParameter = parameter;
        returnType = parameter->GetType();
    }
    if (!hasOneReturn) return false;

    if (parameters.size() != definition.parameters.size())
        return Refuse("\"", name, "\" has ", parameters.size(), " parameters, its definition has ",
                      definition.parameters.size());
    if (model == this) return true;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i]->name == definition.parameters[i]->name) continue;
        if (definition.overloadable != "1")
            return Refuse("parameter ", i + 1, " of \"", name, "\" is \"", parameters[i]->name,
                          "\", its definition has \"", definition.parameters[i]->name, "\"");
        // The mark of an overloaded parameter. It is no RETURN: this one stays among the parameters.
        parameters[i]->isReturn = true;
    }
    return true;
}

bool Function::LoadModelAttribute(ScenarioTextStream& stream) {
    return Token::LoadModelAttribute(stream) || LoadFromRows<kModelRows>(*this, stream);
}

bool Function::LoadUserAttribute(ScenarioTextStream& /*stream*/) { return false; }

void Function::SaveModelAttributes(std::ostream& out) const {
    Token::SaveModelAttributes(out);
    if (overloadable == "1") WriteAttribute(out, "IS_OVERLOADABLE", overloadable);
    WriteAttribute(out, "CODE", code);
    WriteAttribute(out, "WIZARD", wizard);
    WriteAttribute(out, "SEE_ALSO", JoinWords(seeAlso));
}

void Function::SaveUserAttributes(std::ostream& out) const { Token::SaveUserAttributes(out); }

// Leaves `seeAlso` behind on purpose.
void Function::CopyModelAttributes(Token* target) const {
    if (!target) AssertionFailed(kSource, 301);
    if (!IsCall(target)) AssertionFailed(kSource, 302);
    auto* copy = static_cast<Function*>(target);
    copy->code = code;
    copy->codeNumber = codeNumber;
    copy->returnType = returnType;
    copy->wizard = wizard;
    copy->overloadable = overloadable == "1" ? "1" : "0";
    if (!returnParameter) return;
    auto* result = static_cast<Parameter*>(returnParameter->Clone());
    result->parent = copy;
    delete copy->returnParameter;
    copy->returnParameter = result;
}

void Function::CopyUserAttributes(Token* target) const {
    if (!target) AssertionFailed(kSource, 321);
    if (!IsCall(target)) AssertionFailed(kSource, 322);
    target->SetModel(model);
    static_cast<Function*>(target)->weight = weight;
}

void Function::UpdateDisplayTextTree() {
    std::vector<Function*> calls;
    std::vector<ScenarioItem*> children;
    GetChildren(children);
    for (ScenarioItem* child : children) {
        if (!child) AssertionFailed(kSource, 341);
        if (IsCall(child)) {
            calls.push_back(static_cast<Function*>(child));
            calls.back()->boundParameter = nullptr;
        } else if (child->kind != KindParameter) {
            AssertionFailed(kSource, 346);
        }
    }
    // A parameter that asks for a call comes first.
    for (Function* call : calls)
        for (Parameter* parameter : parameters)
            if (!call->boundParameter && parameter->valueKind == "FUNCTION" && !HoldsCall(*parameter))
                Bind(*call, *parameter);
    for (Function* call : calls)
        for (Parameter* parameter : parameters) {
            if (call->boundParameter || HoldsCall(*parameter) || !Fits(*parameter, *call)) continue;
            Bind(*call, *parameter);
            // Drops the owner file too.
            parameter->SetKind("FUNCTION");
        }
    for (Function* call : calls) call->UpdateDisplayTextTree();
    for (Parameter* parameter : parameters) parameter->UpdateDisplayTextTree();
    UpdateValidity();
    UpdateDisplayText();
}

void Function::UpdateDisplayText() {
    if (model == this) {
        displayText = name + "    (" + label + ")    (" + code + ")";
        return;
    }
    const Token* definition = RootDefinitionOf(*this);
    if (!definition) AssertionFailed(kSource, 379);
    for (const Parameter* parameter : parameters)
        if (!parameter) AssertionFailed(kSource, 381);
    if (OperatorSign(name)) {
        const char* sign = OperatorSign(definition->name);
        displayText = TextOf(*this, 0) + " " + (sign ? sign : "") + " " + TextOf(*this, 1);
        return;
    }
    displayText = definition->label + "  (";
    for (std::size_t i = 0; i < parameters.size(); ++i) displayText += (i ? ",  " : "") + parameters[i]->displayText;
    displayText += ")";
}

ScenarioItem* Function::FindItem(std::uint32_t itemKind, const std::string& itemName, const std::string& scope) {
    return FindInCall<ScenarioItem>(*this, itemKind, itemName, scope, std::string(), 412);
}

// Unlike its twin this one hands the scope on to the parameters in its last pass.
const ScenarioItem* Function::FindItem(std::uint32_t itemKind, const std::string& itemName,
                                       const std::string& scope) const {
    return FindInCall<const ScenarioItem>(*this, itemKind, itemName, scope, scope, 437);
}

void Function::CollectAllItems(std::uint32_t itemKind, const std::string& itemName, std::vector<ScenarioItem*>& out) {
    if (kind == itemKind && name == itemName) out.push_back(this);
    CollectBelow(*this, itemKind, out, 468);
}

void Function::CollectAllItems(std::uint32_t itemKind, const std::string& itemName,
                               std::vector<const ScenarioItem*>& out) const {
    if (kind == itemKind && name == itemName) out.push_back(this);
    CollectBelow(*this, itemKind, out, 491);
}

void Function::CollectAllItemsOfKind(std::uint32_t itemKind, std::vector<ScenarioItem*>& out) {
    if (kind == itemKind) out.push_back(this);
    CollectBelow(*this, itemKind, out, 514);
}

void Function::CollectAllItemsOfKind(std::uint32_t itemKind, std::vector<const ScenarioItem*>& out) const {
    if (kind == itemKind) out.push_back(this);
    CollectBelow(*this, itemKind, out, 537);
}

void Function::SetFunctionModel(Token* definition) {
    if (!definition) AssertionFailed(kSource, 552);
    if (!IsCall(definition)) AssertionFailed(kSource, 553);
    if (model != this) UpgradeCall(*this, static_cast<Function&>(*definition));
}

void Function::UpdateValidity() {
    constexpr std::string_view kPrefix = "EVALUATION";
    if (std::string_view(name).substr(0, kPrefix.size()) == kPrefix) {
        const ScenarioItem* above = parent;
        while (above && above->kind != KindCriteria) above = above->parent;
        if (!above) {
            valid = false;
            return;
        }
    }
    Token::UpdateValidity();
    bool isValid = valid;
    for (Parameter* parameter : parameters) {
        if (!parameter) AssertionFailed(kSource, 593);
        parameter->UpdateValidity();
        isValid = isValid && parameter->IsValid();
    }
    // Whoever takes parameters is a call, and a call within one has to fill a parameter of it. A folder takes
    // everything, so a definition is never valid; nothing depends on that.
    if (parent && parent->AcceptsChildKind(KindParameter) && !boundParameter) isValid = false;
    valid = isValid;
}

float Function::Evaluate() const {
    const Token* definition = RootDefinitionOf(*this);
    if (!definition || !IsCall(definition)) AssertionFailed(kSource, 622);
    const std::int32_t number = static_cast<const Function*>(definition)->codeNumber;
    if (number == -1) return 0.0F;
    const StepScope step;
    const CallArguments arguments(*this);
    const FunctionEntry* entry = FindImplementation(FunctionTable(), *this, number);
    return entry ? (*entry)(arguments.Values()) : 0.0F;
}

std::vector<FunctionEntry>& FunctionTable() {
    static std::vector<FunctionEntry> table = {[](const ParameterValues&) { return 0.0F; }};
    return table;
}
