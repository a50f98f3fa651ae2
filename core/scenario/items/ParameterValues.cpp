// How KIND and VALUE of a parameter become an argument.
#include <memory>
#include <span>
#include <string>
#include <vector>

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

// Out of line: what is asked at each evaluation stays short enough to stand in its caller.
[[gnu::cold, gnu::noinline]] void BeginMemory(std::unique_ptr<ParameterMemory>& memory, const std::string& word) {
    memory = std::make_unique<ParameterMemory>();
    memory->kind = &ValueKindOf(word);
}

float NumberFrom(const std::string& text, ParameterMemory& memory) {
    if (memory.IsFor(text)) return memory.number;
    memory.number = Narrow(NumberOf(text));
    memory.Keep(text);
    return memory.number;
}

const Variable* FindEntry(const Parameter& parameter, ParameterMemory& memory) {
    const Parameter* definition = DefinitionOf(parameter);
    if (!definition) return nullptr;
    const std::string& tabName = definition->enumTab;
    const StepScope step;
    const std::uint64_t version = treeWatch::EnumTabs(GetModelRoot(&parameter));
    FoundItems& found = memory.More();
    if (version != 0 && memory.version == version && found.value == parameter.value && found.tabName == tabName)
        return memory.item;
    memory.version = 0; // should the search not come back
    auto* tab = static_cast<EnumTab*>(parameter.FindEnumTab(tabName));
    if (!tab) AssertionFailed(kSource, 1396);
    memory.item = dynamic_cast<const Variable*>(tab->FindEntry(parameter.value));
    found.value = parameter.value;
    found.tabName = tabName;
    memory.version = version;
    return memory.item;
}

// Every variable of that number that the parameter sees, outermost first.
std::span<const Variable* const> FindVariables(const Parameter& parameter, ParameterMemory& memory) {
    const auto nameOf = [&] { return std::to_string(WholeNumberOf(parameter.value)); };
    if (!memory.IsFor(parameter.value)) {
        memory.version = 0;
        memory.nameSize = static_cast<std::uint8_t>(nameOf().size());
        memory.Keep(parameter.value);
    }
    const std::uint64_t version = treeWatch::VisibleVariables(&parameter, memory.nameSize);
    if (version == 0 || memory.version != version) {
        memory.version = 0; // should the search not come back
        std::vector<ScenarioItem*> items;
        const_cast<Parameter&>(parameter).CollectVisibleItems(KindVariable, items, nameOf(), "");
        memory.item = items.size() == 1 ? static_cast<const Variable*>(items.front()) : nullptr;
        if (!memory.item) {
            std::vector<const Variable*>& variables = memory.More().variables;
            variables.clear();
            for (const ScenarioItem* item : items) variables.push_back(static_cast<const Variable*>(item));
        }
        memory.version = version;
    }
    if (memory.item) return {&memory.item, 1};
    return memory.found->variables;
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
    if (!memory || !SameText(memory->kind->word, valueKind)) BeginMemory(memory, valueKind);
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
