#include <scenario/Condition.h>

#include <string_view>

#include <scenario/DefinitionLists.h>
#include <scenario/Parameter.h>

#include "items/AttributeRow.h"
#include "items/ChildStore.h"
#include "link/Definitions.h"
#include "run/CallArguments.h"
#include "run/StepScope.h"
#include "text/Assertion.h"
#include "text/Kinds.h"
#include "text/Log.h"
#include "text/NumberText.h"
#include "text/Refusal.h"

namespace {

constexpr const char* kSource = "Condition";
constexpr const char* kList = DefinitionListOf(KindCondition);
constexpr childStore::NullChildSite kNullChild = {kSource, 131};

constexpr float kUnset = -1.0F;
constexpr std::int32_t kNotEvaluated = 2;

// What a modifier makes of the state after an evaluation.
struct Reading {
    const Condition& condition;
    bool changed;
    double time;

    bool Lasts(std::int32_t state) const {
        return condition.state == state && time - condition.lastChangeTime >= static_cast<double>(condition.duration);
    }
};

struct Modifier {
    std::string_view word;
    const char* display;
    bool hasDuration;
    bool (*holds)(const Reading&);
};

// clang-format off
constexpr Modifier kModifiers[] = {
    {"IS_TRUE",            "IS TRUE",            false, [](const Reading& now) { return now.condition.state == 1; }},
    {"IS_FALSE",           "IS FALSE",           false, [](const Reading& now) { return now.condition.state == 0; }},
    {"BECOMES_TRUE",       "BECOMES TRUE",       false, [](const Reading& now) { return now.condition.state == 1 && now.changed; }},
    {"BECOMES_FALSE",      "BECOMES FALSE",      false, [](const Reading& now) { return now.condition.state == 0 && now.changed; }},
    {"HAS_BEEN_TRUE",      "HAS BEEN TRUE",      false, [](const Reading& now) { return now.condition.hasBeenTrue != 0; }},
    {"HAS_BEEN_FALSE",     "HAS BEEN FALSE",     false, [](const Reading& now) { return now.condition.hasBeenFalse != 0; }},
    {"HAS_BEEN_TRUE_FOR",  "HAS BEEN TRUE FOR",  true,  [](const Reading& now) { return now.Lasts(1); }},
    {"HAS_BEEN_FALSE_FOR", "HAS BEEN FALSE FOR", true,  [](const Reading& now) { return now.Lasts(0); }},
};

struct Comparison {
    const char* name;
    const char* sign;
};
constexpr Comparison kComparisons[] = {
    {"EQUAL",    "="},
    {"NOTEQUAL", "!="},
    {"INFERIOR", "<"},
    {"INFEQUAL", "<="},
    {"SUPERIOR", ">"},
    {"SUPEQUAL", ">="},
};
// clang-format on

const Modifier* FindModifier(std::string_view word) {
    for (const Modifier& row : kModifiers)
        if (row.word == word) return &row;
    return nullptr;
}

const char* ComparisonSign(const std::string& name) {
    for (const Comparison& row : kComparisons)
        if (name == row.name) return row.sign;
    return nullptr;
}

// Whether sub-conditions make up the condition, in place of parameters.
bool IsJunction(std::string_view name) { return name == "AND" || name == "OR"; }

std::string DurationText(const Condition& condition) {
    return condition.duration == kUnset ? std::string() : SixDecimals(static_cast<double>(condition.duration));
}

// No text is what an unset duration looks like, both ways.
void SetDuration(Condition& condition, const std::string& text) {
    condition.duration = text.empty() ? kUnset : Narrow(NumberOf(text));
}

bool TakeModifier(Condition& condition, std::string_view value) {
    condition.modifier = value;
    // What the writer prints for a condition without one.
    if (value.empty() || FindModifier(value)) return true;
    if (!RefusalsAreTold()) return false;
    std::vector<std::string> words;
    for (const Modifier& row : kModifiers) words.emplace_back(row.word);
    return Refuse("unknown MODIFIER \"", value, "\"", DidYouMean(value, words));
}

bool TakeDuration(Condition& condition, std::string_view value) {
    SetDuration(condition, std::string(value));
    return true;
}

using Row = AttributeRow<Condition>;

// clang-format off
constexpr Row kUserRows[] = {
    {"MODIFIER", [](const Condition& condition) { return condition.modifier.empty(); },     TakeModifier},
    {"DURATION", [](const Condition& condition) { return condition.duration == kUnset; },   TakeDuration},
};
// clang-format on

std::string TextOf(const Function& call, std::size_t index) {
    const Parameter* parameter = index < call.parameters.size() ? call.parameters[index] : nullptr;
    return parameter ? parameter->displayText : std::string();
}

std::string JunctionText(const Condition& condition, const std::string& word) {
    if (condition.subConditions.empty()) return "[  " + word + "  ?  ]";
    std::string text;
    for (const Condition* sub : condition.subConditions) {
        if (!sub) AssertionFailed(kSource, 148);
        if (!text.empty()) text += "  " + word + "  ";
        text += "[  " + sub->displayText + "  ]";
    }
    return text;
}

} // namespace

Condition::Condition(ScenarioItem* parentItem) : Function(parentItem) {}

Condition::~Condition() { childStore::Destroy(subConditions); }

void Condition::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == 0 || kindFilter == KindCondition) childStore::Append(subConditions, out, 0);
    Function::GetChildren(out, kindFilter);
}

void Condition::DetachChildren() {
    subConditions.clear();
    Function::DetachChildren();
}

void Condition::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (!child) AssertionFailed(kNullChild.source, kNullChild.line);
    if (child->kind == KindCondition)
        childStore::Place(this, subConditions, child, reference, after, kNullChild);
    else
        Function::AddChild(child, reference, after);
}

void Condition::RemoveChild(ScenarioItem* child) {
    if (!childStore::Remove(this, subConditions, child)) Function::RemoveChild(child);
}

void Condition::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (newChild && newChild->kind == KindCondition)
        childStore::Replace(this, subConditions, newChild, oldChild);
    else
        Function::ReplaceChild(newChild, oldChild);
}

void Condition::SwapChildren(ScenarioItem* a, ScenarioItem* b) {
    childStore::Swap(subConditions, a, b);
    Function::SwapChildren(a, b);
}

void Condition::SaveChildren(std::ostream& out) const {
    if (IsJunction(name))
        ScenarioItem::SaveChildren(out);
    else
        Function::SaveChildren(out);
}

bool Condition::AcceptsChildKind(std::uint32_t childKind) const {
    return IsJunction(name) ? childKind == KindCondition : Function::AcceptsChildKind(childKind);
}

bool Condition::OnLoadBegin() {
    if (!Token::OnLoadBegin()) return false;
    if (!LinkDefinition(*this, kList)) return false;
    if (model == this) returnType = "BOOL";
    return true;
}

bool Condition::OnLoadEnd() {
    // A junction has no parameters to compare with its definition.
    if (!IsJunction(name) && !Function::OnLoadEnd()) return false;
    if (modifier.empty()) modifier = "IS_TRUE";
    return true;
}

bool Condition::LoadUserAttribute(ScenarioTextStream& stream) { return LoadFromRows<kUserRows>(*this, stream); }

void Condition::SaveUserAttributes(std::ostream& out) const {
    Function::SaveUserAttributes(out);
    if (modifier != "IS_TRUE") WriteAttribute(out, "MODIFIER", modifier);
    const Modifier* row = FindModifier(modifier);
    if (row && row->hasDuration) WriteAttribute(out, "DURATION", DurationText(*this));
}

void Condition::CopyUserAttributes(Token* target) const {
    if (!target) AssertionFailed(kSource, 262);
    if (target->kind != KindCondition) AssertionFailed(kSource, 263);
    auto* copy = static_cast<Condition*>(target);
    copy->SetModel(model);
    if (!IsJunction(name)) Function::CopyUserAttributes(copy);
    copy->modifier = modifier;
    // By way of the text, so that a clone is what a saved condition reads back as.
    SetDuration(*copy, DurationText(*this));
}

void Condition::UpdateDisplayText() {
    if (!model) AssertionFailed(kSource, 281);
    if (model->kind != KindCondition) AssertionFailed(kSource, 282);
    if (!parent) AssertionFailed(kSource, 283);
    if (model == this) {
        displayText = name + "    (" + label + ")";
        return;
    }
    const Token* definition = RootDefinitionOf(*this);
    if (!definition) AssertionFailed(kSource, 289);
    std::string text;
    if (IsJunction(name)) {
        text = JunctionText(*this, definition->name);
    } else if (ComparisonSign(name)) {
        const char* sign = ComparisonSign(definition->name);
        text = TextOf(*this, 0) + "  " + (sign ? sign : "") + "  " + TextOf(*this, 1);
    } else {
        Function::UpdateDisplayText();
        text = displayText;
    }
    if (modifier != "IS_TRUE") {
        const Modifier* row = FindModifier(modifier);
        text += "    ";
        if (row) text += row->display;
        if (row && row->hasDuration) text += "  " + DurationText(*this) + "  second(s)";
    }
    displayText = (parent->kind == KindRule ? "IF    " : "") + text;
}

void Condition::SetModel(Token* item) {
    Token::SetModel(item);
    const Token* definition = RootDefinitionOf(*this);
    if (definition && KindIsIn(definition->kind, kCallable))
        codeNumber = static_cast<const Function*>(definition)->codeNumber;
}

void Condition::UpdateValidity() {
    if (IsJunction(name)) {
        valid = !subConditions.empty();
        for (const Condition* sub : subConditions) {
            if (!sub) AssertionFailed(kSource, 334);
            valid = valid && sub->IsValid();
        }
    } else {
        Function::UpdateValidity();
    }
    // Of several conditions a rule evaluates the first alone, so the others load but are invalid.
    if (valid && parent && parent->kind == KindRule) valid = parent->GetFirstChild() == this;
}

bool Condition::Evaluate(double time) {
    const StepScope step;
    const std::int32_t before = state;
    if (!subConditions.empty()) {
        state = name == "OR" ? 0 : 1;
        // No short cut: every branch must be evaluated, or the later ones lose their history.
        for (Condition* sub : subConditions) {
            if (!sub) AssertionFailed(kSource, 371);
            const bool isTrue = sub->Evaluate(time);
            if (isTrue && name == "OR") state = 1;
            if (!isTrue && name == "AND") state = 0;
        }
    } else {
        const Token* definition = RootDefinitionOf(*this);
        if (!definition || !KindIsIn(definition->kind, kCallable)) AssertionFailed(kSource, 379);
        const std::int32_t number = static_cast<const Function*>(definition)->codeNumber;
        // Without a CODE there is nothing to call: a fault of the model that leaves the condition false.
        state = 0;
        if (number != -1) {
            const CallArguments arguments(*this);
            const ConditionEntry* entry = FindImplementation(ConditionTable(), *this, number);
            if (entry && (*entry)(arguments.Values())) state = 1;
        }
    }
    const bool changed = state != before;
    if (changed) {
        lastChangeTime = time;
        (state == 1 ? hasBeenTrue : hasBeenFalse) = 1;
    }
    if (const Modifier* row = FindModifier(modifier)) return row->holds({*this, changed, time});
    LogMessage(LogSeverity::Warning, "Unknown modifier " + modifier);
    return false;
}

void Condition::Init(double time) {
    lastChangeTime = time;
    state = kNotEvaluated;
    hasBeenTrue = 0;
    hasBeenFalse = 0;
    for (Condition* sub : subConditions) {
        if (!sub) AssertionFailed(kSource, 419);
        sub->Init(time);
    }
}

std::vector<ConditionEntry>& ConditionTable() {
    static std::vector<ConditionEntry> table = {[](const ParameterValues&) { return true; }};
    return table;
}
