// How KIND and VALUE of a parameter become an argument.
#include <scenario/Parameter.h>

#include <lmkUtils/AssertAbort.h>
#include <scenario/function.h>
#include <scenario/program.h>
#include <scenario/variable.h>

#include "NumberText.h"
#include "ParameterKinds.h"
#include "ParameterMemory.h"

namespace {

constexpr const char* kSource = "Parameter";

constexpr std::int32_t kFloatTag = 1;
constexpr std::int32_t kStringTag = 3;

const Parameter& DefinitionOf(const Parameter& parameter) { return static_cast<const Parameter&>(*parameter.model); }

bool IsNumeric(const std::string& type) { return type == "INTEGER" || type == "FLOAT" || type == "BOOL"; }

// Lets every variable of that number that the parameter sees in its file fill the record, so the innermost one stands
// and each that does not fit leaves its warning.
void FillFromVariables(const Parameter& parameter, ParameterValue& out) {
    std::vector<ScenarioItem*> variables;
    const_cast<Parameter&>(parameter).CollectVisibleItems(KindVariable, variables,
                                                          std::to_string(WholeNumberOf(parameter.value)), "");
    for (const ScenarioItem* variable : variables) {
        const ScenarioItem* file = FindFileScope(variable);
        if (file && file->fileName == parameter.ownerFile) static_cast<const Variable*>(variable)->FillValue(out);
    }
}

} // namespace

namespace ParameterKinds {

void FillNothing(const Parameter&, ParameterValue&) {}

// Numbers of every type travel as FLOAT.
void FillLiteral(const Parameter& parameter, ParameterValue& out) {
    const std::string& type = parameter.GetType();
    if (IsNumeric(type)) {
        out.tag = kFloatTag;
        out.number = Narrow(NumberOf(parameter.value));
        out.text = parameter.value;
    } else if (type == "STRING") {
        out.tag = kStringTag;
        out.text = parameter.value;
    }
}

void FillEntry(const Parameter& parameter, ParameterValue& out) {
    ScenarioItem* tab = parameter.FindEnumTab(DefinitionOf(parameter).enumTab);
    if (!tab) AssertAbort(kSource, 1396);
    const auto* entry = dynamic_cast<const Variable*>(static_cast<EnumTab*>(tab)->FindEntry(parameter.value));
    if (!entry) return;
    if (IsNumeric(entry->type)) {
        out.tag = kFloatTag;
        out.number = Narrow(NumberOf(entry->value));
    } else if (entry->type == "STRING") {
        out.tag = kStringTag;
        out.text = entry->value;
    }
}

void FillResult(const Parameter& parameter, ParameterValue& out) {
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

void FillVariable(const Parameter& parameter, ParameterValue& out) {
    const std::string& type = parameter.GetType();
    const bool byAddress = DefinitionOf(parameter).usage == "BY_ADDRESS";
    if (IsNumeric(type)) {
        // By address the implementation receives a reference, the number and the file, in place of a value.
        out.tag = byAddress ? kStringTag : kFloatTag;
        if (byAddress)
            out.text = parameter.value + " " + parameter.ownerFile;
        else
            FillFromVariables(parameter, out);
    } else if (type == "STRING") {
        out.tag = kStringTag;
        if (byAddress)
            out.number = static_cast<float>(WholeNumberOf(parameter.value));
        else
            FillFromVariables(parameter, out);
    }
}

} // namespace ParameterKinds

void Parameter::FillValue(ParameterValue& out) const { ParameterKindOf(valueKind).fill(*this, out); }
