// How KIND and VALUE of a parameter become an argument.
#include <algorithm>

#include <scenario/CallUnderWay.h>
#include <scenario/Parameter.h>
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
#include "text/ShortText.h"

namespace {

constexpr const char* kSource = "Parameter";

// Null for a parameter whose link failed, and whose value thus means nothing.
const Parameter* DefinitionOf(const Parameter& parameter) {
    if (parameter.model && parameter.model->kind == KindParameter)
        return static_cast<const Parameter*>(parameter.model);
    return dynamic_cast<const Parameter*>(parameter.model);
}

bool IsNumeric(const std::string& type) { return type == "INTEGER" || type == "FLOAT" || type == "BOOL"; }

float NumberFrom(const std::string& text, ParameterMemory& memory) {
    const bool mayBeKept = text.size() <= memory.numberText.size();
    if (mayBeKept && SameText({memory.numberText.data(), memory.numberSize}, text)) return memory.number;
    memory.number = Narrow(NumberOf(text));
    memory.numberSize = ParameterMemory::kNoNumber;
    if (mayBeKept) {
        std::copy(text.begin(), text.end(), memory.numberText.begin());
        memory.numberSize = static_cast<std::uint8_t>(text.size());
    }
    return memory.number;
}

FoundItems& FoundBy(ParameterMemory& memory) {
    if (!memory.found) memory.found = std::make_unique<FoundItems>();
    return *memory.found;
}

const Variable* FindEntry(const Parameter& parameter, ParameterMemory& memory) {
    const Parameter* definition = DefinitionOf(parameter);
    if (!definition) return nullptr;
    const std::string& tabName = definition->enumTab;
    const StepScope step;
    const std::uint64_t version = treeWatch::EnumTabs(GetModelRoot(&parameter));
    FoundItems& found = FoundBy(memory);
    if (version != 0 && found.version == version && found.value == parameter.value && found.tabName == tabName)
        return found.entry;
    found.version = 0; // should the search not come back
    auto* tab = static_cast<EnumTab*>(parameter.FindEnumTab(tabName));
    if (!tab) AssertionFailed(kSource, 1396);
    found.entry = dynamic_cast<const Variable*>(tab->FindEntry(parameter.value));
    found.value = parameter.value;
    found.tabName = tabName;
    found.version = version;
    return found.entry;
}

// Every variable of that number that the parameter sees, outermost first.
const std::vector<const Variable*>& FindVariables(const Parameter& parameter, ParameterMemory& memory) {
    const std::uint64_t version = treeWatch::VisibleVariables(&parameter);
    FoundItems& found = FoundBy(memory);
    if (version != 0 && found.version == version && found.value == parameter.value) return found.variables;
    found.version = 0;
    std::vector<ScenarioItem*> items;
    const std::string name = std::to_string(WholeNumberOf(parameter.value));
    const_cast<Parameter&>(parameter).CollectVisibleItems(KindVariable, items, name, "");
    found.variables.clear();
    for (const ScenarioItem* item : items) found.variables.push_back(static_cast<const Variable*>(item));
    found.value = parameter.value;
    found.version = version;
    return found.variables;
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
        out.tag = TagFloat;
        out.number = NumberFrom(parameter.value, memory);
        out.text = parameter.value;
    } else if (type == "STRING") {
        out.tag = TagString;
        out.text = parameter.value;
    }
}

void FillEntry(const Parameter& parameter, ParameterMemory& memory, ParameterValue& out) {
    const Variable* entry = FindEntry(parameter, memory);
    if (!entry) return;
    if (IsNumeric(entry->type)) {
        out.tag = TagFloat;
        out.number = NumberFrom(entry->value, memory);
    } else if (entry->type == "STRING") {
        out.tag = TagString;
        out.text = entry->value;
    }
}

void FillResult(const Parameter& parameter, ParameterMemory&, ParameterValue& out) {
    if (!parameter.functionValue) return;
    const std::string& type = parameter.GetType();
    if (IsNumeric(type)) {
        out.tag = TagFloat;
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
        out.tag = byAddress ? TagString : TagFloat;
        if (byAddress)
            out.text.assign(parameter.value).append(" ").append(parameter.ownerFile);
        else
            FillFromVariables(parameter, memory, out);
    } else if (type == "STRING") {
        out.tag = TagString;
        if (byAddress)
            out.number = static_cast<float>(WholeNumberOf(parameter.value));
        else
            FillFromVariables(parameter, memory, out);
    }
}

} // namespace valueKinds

void Parameter::FillValue(ParameterValue& out) const {
    if (!memory) memory = std::make_unique<ParameterMemory>();
    if (!memory->kind || !SameText(memory->kind->word, valueKind)) memory->kind = &ValueKindOf(valueKind);
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
