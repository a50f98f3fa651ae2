// What a parameter shows and whether it can be used, both read against the scenario around it.
#include <algorithm>
#include <map>

#include <lmkUtils/EnvConfig.h>
#include <scenario/Parameter.h>
#include <scenario/evaluation.h>
#include <scenario/function.h>
#include <scenario/scenario.h>
#include <scenario/variable.h>

#include "items/ValueKinds.h"
#include "text/Assertion.h"
#include "text/Kinds.h"
#include "text/NumberText.h"
#include "text/TypeFit.h"

namespace {

constexpr const char* kSource = "Parameter";

const Parameter& DefinitionOf(const Parameter& parameter) { return static_cast<const Parameter&>(*parameter.model); }

ScenarioItem* RootAbove(const Parameter& parameter) {
    return GetTreeRoot(parameter.parent ? parameter.parent : &parameter);
}

// The scenario whose tables the parameter is read against, or null. An evaluation in a file of its own borrows one.
ScenarioLib::Scenario* ScenarioAround(const Parameter& parameter) {
    ScenarioItem* root = RootAbove(parameter);
    if (root->kind == KindEvaluation) return static_cast<Evaluation*>(root)->owner;
    return root->kind == KindScenario ? static_cast<ScenarioLib::Scenario*>(root) : nullptr;
}

// A variable stands in the file that the parameter names, else in the parameter's own.
std::string SearchScope(const Parameter& parameter) {
    if (!parameter.ownerFile.empty()) return parameter.ownerFile;
    const ScenarioItem* file = FindFileScope(&parameter);
    return file ? file->fileName : std::string();
}

bool Knows(const std::map<std::string, std::int32_t>& names, const std::string& name) {
    return names.find(name) != names.end();
}

// Numbers of both types may stand for each other, and a text can be made of everything.
bool TypeFits(const std::string& given, const std::string& wanted) {
    if (given == wanted || wanted == "STRING") return true;
    return AreNumbersOfBothTypes(given, wanted);
}

// An input or output of the vehicle that another parameter of the same call names.
struct VehicleChannel {
    enum Outcome { Found, NoParent, NoFunction, NoVehicle, NoScenario, UnknownVehicle, InvalidIndex };
    Outcome outcome;
    std::string name;
};

// The number of the vehicle that the call is about, -1 if it names none.
std::int32_t VehicleOfCall(const Function& call) {
    for (const Parameter* parameter : call.parameters) {
        if (!parameter || !parameter->model || parameter->model->kind != KindParameter) continue;
        const std::vector<std::string>& kinds = DefinitionOf(*parameter).kindList;
        if (std::find(kinds.begin(), kinds.end(), "VEHICLE") != kinds.end()) return WholeNumberOf(parameter->value);
    }
    return -1;
}

VehicleChannel FindVehicleChannel(const Parameter& parameter, std::vector<VEHICLE::Channel> VEHICLE::*channels) {
    if (!parameter.parent) return {VehicleChannel::NoParent, {}};
    const auto* call = dynamic_cast<const Function*>(parameter.parent);
    if (!call) return {VehicleChannel::NoFunction, {}};
    const std::int32_t vehicle = VehicleOfCall(*call);
    if (vehicle == -1) return {VehicleChannel::NoVehicle, {}};
    ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    if (!scenario) return {VehicleChannel::NoScenario, {}};
    if (!scenario->HasVehicle(vehicle)) return {VehicleChannel::UnknownVehicle, {}};
    const std::vector<VEHICLE::Channel>& list = scenario->GetVehicle(vehicle).*channels;
    // As an unsigned number a negative index lies beyond the end of every list.
    const auto index = static_cast<std::uint32_t>(WholeNumberOf(parameter.value));
    if (index >= list.size()) return {VehicleChannel::InvalidIndex, {}};
    return {VehicleChannel::Found, list[index].name};
}

std::string ChannelOutcomeText(const VehicleChannel& channel, bool& isFinal) {
    switch (channel.outcome) {
    case VehicleChannel::NoParent:
        isFinal = true;
        return "(no parent node)";
    case VehicleChannel::NoFunction:
        return "(parent node is not a function)";
    case VehicleChannel::NoVehicle:
        return "(no vehicle parameter in parent function)";
    case VehicleChannel::NoScenario:
        return "(no parent scenario)";
    case VehicleChannel::UnknownVehicle:
        return "(vehicle not found in scenario)";
    case VehicleChannel::InvalidIndex:
        return "(invalid index)";
    case VehicleChannel::Found:
        break;
    }
    return channel.name;
}

std::string UpperCase(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

// The folder of the data path for a FILEDIR.
std::string DirectoryOfFiles(const std::string& fileDir) {
    struct Row {
        const char* key;
        const char* directory;
    };
    // clang-format off
    static constexpr Row kDirectories[] = {
        {"IMAGES",  "data/images"},
        {"SOUNDS",  "data/sound"},
        {"SCRIPT",  "data\\script\\python"},
        {"PROFILE", "data/script/profile"},
    };
    // clang-format on
    const std::string key = UpperCase(fileDir);
    for (const Row& row : kDirectories)
        if (key == row.key) return row.directory;
    return "data/" + fileDir;
}

} // namespace

namespace valueKinds {

std::string ValueText(const Parameter& parameter, bool&) { return parameter.value; }

std::string EntryText(const Parameter& parameter, bool&) {
    const ScenarioItem* entry = parameter.FindEnumEntry(DefinitionOf(parameter).enumTab, parameter.value);
    if (!entry) AssertionFailed(kSource, 885);
    if (entry->kind != KindEnum) AssertionFailed(kSource, 886);
    return entry->label;
}

std::string CallText(const Parameter& parameter, bool&) {
    return parameter.functionValue ? parameter.functionValue->displayText : std::string();
}

// Traffic lights, barriers and road signs stand in one list.
std::string NameText(const Parameter& parameter, bool&) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    const std::string text = scenario ? scenario->NameAt(WholeNumberOf(parameter.value)) : std::string();
    return text.empty() ? parameter.value : text;
}

std::string ObjectText(const Parameter& parameter, bool&) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    return scenario ? scenario->PointText(parameter.value) : std::string();
}

std::string VehicleText(const Parameter& parameter, bool&) {
    ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    const std::int32_t number = WholeNumberOf(parameter.value);
    if (scenario && scenario->HasVehicle(number))
        return "[" + parameter.value + "] " + scenario->GetVehicle(number).name;
    return number == -1 ? "environment" : "";
}

std::string DriverText(const Parameter& parameter, bool&) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    if (!scenario || !Knows(scenario->channelNumbers, parameter.value)) return {};
    return "[" + std::to_string(scenario->ChannelNumber(parameter.value)) + "] " + parameter.value;
}

// Channel names are a table of every task, so an include on its own is asked too.
std::string ChannelText(const Parameter& parameter, bool&) {
    ScenarioItem* root = RootAbove(parameter);
    const Task* task = ScenarioAround(parameter);
    if (root->kind == KindInclude) task = static_cast<const Task*>(root);
    const std::string text = task ? task->StateName(WholeNumberOf(parameter.value)) : std::string();
    return text.empty() ? parameter.value : text;
}

std::string InputText(const Parameter& parameter, bool& isFinal) {
    return ChannelOutcomeText(FindVehicleChannel(parameter, &VEHICLE::inputs), isFinal);
}

std::string OutputText(const Parameter& parameter, bool& isFinal) {
    return ChannelOutcomeText(FindVehicleChannel(parameter, &VEHICLE::outputs), isFinal);
}

std::string ItemText(const Parameter& parameter, bool&) {
    const ScenarioItemKind kind = KindFromKeyword(parameter.valueKind);
    if (kind == KindNone) return "?";
    ScenarioItem* root = GetTreeRoot(&parameter);
    if (!root) AssertionFailed(kSource, 1104);
    const ScenarioItem* item = root->FindItem(kind, parameter.value, SearchScope(parameter));
    if (!item) return {};
    if (kind == KindVariable && !parameter.ownerFile.empty()) return item->label + " [" + parameter.ownerFile + "]";
    return item->label;
}

bool Always(const Parameter&) { return true; }

bool FileExists(const Parameter& parameter) {
    if (parameter.value.empty()) return false;
    const std::string directory = DirectoryOfFiles(DefinitionOf(parameter).fileDir);
    if (directory.empty()) AssertionFailed(kSource, 610);
    return !lmkUtils::EnvConfig().findInPath(directory, parameter.value).empty();
}

bool ResultFits(const Parameter& parameter) {
    if (!parameter.functionValue) return false;
    const Token* definition = parameter.functionValue->model;
    if (!definition) AssertionFailed(kSource, 624);
    if (!KindIsIn(definition->kind, kCallable)) AssertionFailed(kSource, 625);
    return TypeFits(static_cast<const Function*>(definition)->returnType, parameter.GetType());
}

bool LiteralInLimits(const Parameter& parameter) {
    if (!parameter.CheckValueFormat()) return false;
    const Parameter& definition = DefinitionOf(parameter);
    const double value = NumberOf(parameter.value);
    if (!definition.minValue.empty() && !(value >= NumberOf(definition.minValue))) return false;
    return definition.maxValue.empty() || NumberOf(definition.maxValue) >= value;
}

bool VehicleExists(const Parameter& parameter) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    if (!scenario) return true;
    const std::int32_t number = WholeNumberOf(parameter.value);
    if (scenario->HasVehicle(number)) return true;
    // The one parameter that may mean the environment in place of a vehicle.
    return number == -1 && DefinitionOf(parameter).name == "VHL_NUMBER_PLUS";
}

bool VariableFits(const Parameter& parameter) {
    ScenarioItem* root = GetTreeRoot(&parameter);
    if (!root) AssertionFailed(kSource, 682);
    const ScenarioItem* variable = root->FindItem(KindVariable, parameter.value, SearchScope(parameter));
    return variable && TypeFits(static_cast<const Variable*>(variable)->type, parameter.GetType());
}

bool InputExists(const Parameter& parameter) {
    return FindVehicleChannel(parameter, &VEHICLE::inputs).outcome == VehicleChannel::Found;
}

bool OutputExists(const Parameter& parameter) {
    return FindVehicleChannel(parameter, &VEHICLE::outputs).outcome == VehicleChannel::Found;
}

bool TriggerExists(const Parameter& parameter) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    return scenario && Knows(scenario->triggers, parameter.value);
}

bool DriverExists(const Parameter& parameter) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    return scenario && Knows(scenario->channelNumbers, parameter.value);
}

bool ImageExists(const Parameter& parameter) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    return scenario && Knows(scenario->images, parameter.value);
}

bool SoundExists(const Parameter& parameter) {
    const ScenarioLib::Scenario* scenario = ScenarioAround(parameter);
    return scenario && Knows(scenario->sounds, parameter.value);
}

bool ItemExists(const Parameter& parameter) {
    const ScenarioItemKind kind = KindFromKeyword(parameter.valueKind);
    if (kind == KindNone || kind == KindModifier) return true;
    ScenarioItem* root = GetTreeRoot(&parameter);
    if (!root) AssertionFailed(kSource, 833);
    return root->FindItem(kind, parameter.value, "") != nullptr;
}

} // namespace valueKinds

void Parameter::UpdateDisplayText() {
    if (model == this) {
        displayText = name + "    (" + label + ")";
        return;
    }
    if (!model) AssertionFailed(kSource, 876);
    if (model->kind != KindParameter) AssertionFailed(kSource, 877);
    bool isFinal = false;
    displayText = ValueKindOf(valueKind).text(*this, isFinal);
    if (isFinal) return;
    if (!IsValid()) displayText += "?";
    if (displayText.empty()) displayText = "\"\"";
}

void Parameter::UpdateValidity() {
    if (!model) AssertionFailed(kSource, 569);
    if (model->kind != KindParameter) AssertionFailed(kSource, 570);
    bool isValid = ValueKindOf(valueKind).isValid(*this);
    const ScenarioItem* root = RootAbove(*this);
    if (root->kind == KindScenario && !ownerFile.empty() && ownerFile != root->fileName)
        isValid = isValid && static_cast<const ScenarioLib::Scenario*>(root)->FindIncludeByFile(ownerFile);
    valid = isValid;
}
