// How KIND and VALUE of a parameter become an argument.
#include <scenario/Parameter.h>

#include <algorithm>

#include <scenario/CallUnderWay.h>
#include <scenario/function.h>
#include <scenario/program.h>
#include <scenario/variable.h>

#include "items/ValueKinds.h"
#include "run/ParameterMemory.h"
#include "run/StepScope.h"
#include "run/TreeWatch.h"
#include "text/Assertion.h"
#include "text/Kinds.h"
#include "text/NumberText.h"

namespace {

constexpr const char* kSource = "Parameter";

constexpr std::int32_t kFloatTag = 1;
constexpr std::int32_t kStringTag = 3;

// Null for a parameter whose link failed, and whose value thus means nothing.
const Parameter* DefinitionOf(const Parameter& parameter) {
    if (parameter.model && parameter.model->kind == KindParameter)
        return static_cast<const Parameter*>(parameter.model);
    return dynamic_cast<const Parameter*>(parameter.model);
}

bool IsNumeric(const std::string& type) { return type == "INTEGER" || type == "FLOAT" || type == "BOOL"; }

// A number has fewer characters; a longer text is converted at each use and not kept a second time.
constexpr std::size_t kKeptNumber = 64;

float NumberFrom(const std::string& text, ParameterMemory& memory) {
    if (memory.hasNumber && memory.numberText == text) return memory.number;
    const float number = Narrow(NumberOf(text));
    memory.hasNumber = text.size() <= kKeptNumber;
    if (memory.hasNumber) {
        memory.numberText = text;
        memory.number = number;
    }
    return number;
}

// Whether a search is needed, since none was made for this version and these texts.
bool IsOutdated(ParameterMemory& memory, std::uint64_t version, const std::string& name, const std::string& tabName) {
    if (memory.version == version && memory.name == name && memory.tabName == tabName) return false;
    memory.version = version;
    memory.name = name;
    memory.tabName = tabName;
    return true;
}

const Variable* FindEntry(const Parameter& parameter, ParameterMemory& memory) {
    const Parameter* definition = DefinitionOf(parameter);
    if (!definition) return nullptr;
    const std::string& tabName = definition->enumTab;
    ScenarioItem* root = GetModelRoot(&parameter);
    const StepScope step;
    const std::uint64_t version = treeWatch::EnumTabs(root);
    // What was found is asked itself too, whatever the watch knows of it.
    if (!IsOutdated(memory, version, parameter.value, tabName) &&
        !(memory.entry && memory.entry->name != parameter.value))
        return memory.entry;
    memory.version = 0; // should the search not come back
    auto* tab = static_cast<EnumTab*>(parameter.FindEnumTab(tabName));
    if (!tab) AssertionFailed(kSource, 1396);
    memory.entry = dynamic_cast<const Variable*>(tab->FindEntry(parameter.value));
    memory.version = version;
    return memory.entry;
}

// The innermost place above the parameter where it can see variables; from the call up to there nothing has any.
ScenarioItem* InnermostLevel(const Parameter& parameter) {
    static std::vector<ScenarioItem*> variables;
    ScenarioItem* item = parameter.parent;
    while (item && (KindIsIn(item->kind, kCallable) || item->kind == KindParameter || item->kind == KindRule)) {
        variables.clear();
        item->GetChildren(variables, KindVariable);
        if (!variables.empty()) break;
        item = item->parent;
    }
    return item;
}

// Every variable of that number that the parameter sees, outermost first.
const std::vector<const Variable*>& FindVariables(const Parameter& parameter, ParameterMemory& memory) {
    ScenarioItem* level = InnermostLevel(parameter);
    const std::uint64_t version = level ? treeWatch::VisibleVariables(level) : 0;
    const bool isOutdated = IsOutdated(memory, version, parameter.value, std::string()) || version == 0;
    if (!isOutdated && std::all_of(memory.variables.begin(), memory.variables.end(),
                                   [&](const Variable* variable) { return variable->name == memory.searched; }))
        return memory.variables;
    memory.searched = std::to_string(WholeNumberOf(parameter.value));
    std::vector<ScenarioItem*> found;
    const_cast<Parameter&>(parameter).CollectVisibleItems(KindVariable, found, memory.searched, "");
    memory.variables.clear();
    for (const ScenarioItem* item : found) memory.variables.push_back(static_cast<const Variable*>(item));
    return memory.variables;
}

// Lets every variable of that number in the parameter's file fill the record, so that the innermost one stands and
// each one that does not fit leaves its warning.
void FillFromVariables(const Parameter& parameter, ParameterMemory& memory, ParameterValue& out) {
    const StepScope step;
    for (const Variable* variable : FindVariables(parameter, memory)) {
        const ScenarioItem* file = FindFileScope(variable);
        if (file && file->fileName == parameter.ownerFile) variable->FillValue(out);
    }
}

} // namespace

namespace valueKinds {

void FillNothing(const Parameter&, ParameterMemory&, ParameterValue&) {}

// Numbers of every type travel as FLOAT.
void FillLiteral(const Parameter& parameter, ParameterMemory& memory, ParameterValue& out) {
    const std::string& type = parameter.GetType();
    if (IsNumeric(type)) {
        out.tag = kFloatTag;
        out.number = NumberFrom(parameter.value, memory);
        out.text = parameter.value;
    } else if (type == "STRING") {
        out.tag = kStringTag;
        out.text = parameter.value;
    }
}

void FillEntry(const Parameter& parameter, ParameterMemory& memory, ParameterValue& out) {
    const Variable* entry = FindEntry(parameter, memory);
    if (!entry) return;
    if (IsNumeric(entry->type)) {
        out.tag = kFloatTag;
        out.number = NumberFrom(entry->value, memory);
    } else if (entry->type == "STRING") {
        out.tag = kStringTag;
        out.text = entry->value;
    }
}

void FillResult(const Parameter& parameter, ParameterMemory&, ParameterValue& out) {
    if (!parameter.functionValue) return;
    const std::string& type = parameter.GetType();
    if (IsNumeric(type)) {
        out.tag = kFloatTag;
        out.number = parameter.functionValue->Evaluate();
    } else if (type == "STRING") {
        // The tag stays as it is: implementations tell a computed text from a given one by it.
        out.text = SixDecimals(static_cast<double>(parameter.functionValue->Evaluate()));
    }
}

void FillVariable(const Parameter& parameter, ParameterMemory& memory, ParameterValue& out) {
    const Parameter* definition = DefinitionOf(parameter);
    if (!definition) return;
    const std::string& type = parameter.GetType();
    const bool byAddress = definition->usage == "BY_ADDRESS";
    if (IsNumeric(type)) {
        // By address the implementation receives a reference, the number and the file, in place of a value.
        out.tag = byAddress ? kStringTag : kFloatTag;
        if (byAddress)
            out.text.assign(parameter.value).append(" ").append(parameter.ownerFile);
        else
            FillFromVariables(parameter, memory, out);
    } else if (type == "STRING") {
        out.tag = kStringTag;
        if (byAddress)
            out.number = static_cast<float>(WholeNumberOf(parameter.value));
        else
            FillFromVariables(parameter, memory, out);
    }
}

} // namespace valueKinds

void Parameter::FillValue(ParameterValue& out) const {
    if (!memory) memory = std::make_unique<ParameterMemory>();
    if (!memory->kind || memory->kindWord != valueKind) {
        memory->kindWord = valueKind;
        memory->kind = &ValueKindOf(valueKind);
    }
    memory->kind->fill(*this, *memory, out);
}

// As FillFromVariables looks for a value, but that a reference is not asked whether its type fits.
Variable* ReferencedVariable(const Parameter& parameter) {
    std::vector<ScenarioItem*> found;
    parameter.CollectVisibleItems(KindVariable, found, std::to_string(WholeNumberOf(parameter.value)), "");
    for (auto item = found.rbegin(); item != found.rend(); ++item) {
        const ScenarioItem* file = FindFileScope(*item);
        if (file && file->fileName == parameter.ownerFile) return dynamic_cast<Variable*>(*item);
    }
    return nullptr;
}
