#include <algorithm>

#include <lmkUtils/EnvConfig.h>
#include <scenario/DefinitionLists.h>
#include <scenario/Parameter.h>
#include <scenario/function.h>

#include "../Describe.h"
#include "../Scripts.h"
#include "../TextPattern.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

struct WordList {
    const char* folder; // of the root model
    const char* kind;
};
constexpr WordList kLists[] = {
    {DefinitionListOf(KindCondition), "condition"},
    {DefinitionListOf(KindAction), "action"},
    {DefinitionListOf(KindFunction), "function"},
};

// The definition at the end of the chain: a call's parameter in the model is itself an instance.
const Parameter& DefinitionOf(const Parameter& parameter) {
    const Token* token = &parameter;
    while (token->model && token->model != token) token = token->model;
    const auto* definition = dynamic_cast<const Parameter*>(token);
    return definition ? *definition : parameter;
}

Json EntriesOf(const Parameter& definition) {
    Json entries = Json::array();
    const ScenarioItem* tab = definition.enumTab.empty() ? nullptr : definition.FindEnumTab(definition.enumTab);
    if (!tab) return entries;
    std::vector<ScenarioItem*> children;
    tab->GetChildren(children);
    for (const ScenarioItem* child : children)
        if (const auto* entry = dynamic_cast<const Enum*>(child))
            entries.push_back({{"name", entry->name}, {"label", entry->label}, {"value", entry->value}});
    return entries;
}

Json TextOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json ParameterWords(const Parameter& parameter) {
    const Parameter& definition = DefinitionOf(parameter);
    return {{"name", parameter.name},
            {"label", definition.label},
            {"type", definition.type},
            {"unit", TextOrNull(definition.unit)},
            {"usage", definition.usage},
            {"kinds", definition.kindList},
            {"minimum", TextOrNull(definition.minValue)},
            {"maximum", TextOrNull(definition.maxValue)},
            {"enumeration", TextOrNull(definition.enumTab)},
            {"entries", EntriesOf(definition)},
            {"directory", TextOrNull(definition.fileDir)},
            {"defaultKind", TextOrNull(parameter.valueKind)},
            {"defaultValue", TextOrNull(parameter.value)}};
}

Json Word(const char* kind, const std::string& model, const Function& function) {
    Json word = {{"kind", kind},   {"name", function.name}, {"label", function.label},    {"code", function.code},
                 {"model", model}, {"returns", Json()},     {"parameters", Json::array()}};
    if (function.returnParameter) {
        const Parameter& returned = DefinitionOf(*function.returnParameter);
        word["returns"] = {{"type", returned.type}, {"unit", TextOrNull(returned.unit)}};
    } else if (!function.returnType.empty()) {
        word["returns"] = {{"type", function.returnType}, {"unit", Json()}};
    }
    for (const Parameter* parameter : function.parameters) word["parameters"].push_back(ParameterWords(*parameter));
    return word;
}

// The definitions below a folder, sub-folders included; those inside a definition are calls.
void AddWords(const ScenarioItem& folder, const WordList& list, const std::string& model, const TextPattern* pattern,
              Json& words, std::vector<std::string>& names) {
    std::vector<ScenarioItem*> children;
    folder.GetChildren(children);
    for (const ScenarioItem* child : children) {
        const auto* function = dynamic_cast<const Function*>(child);
        if (!function) {
            AddWords(*child, list, model, pattern, words, names);
            continue;
        }
        names.push_back(function->name);
        if (!pattern || pattern->Fits(function->name) || pattern->Fits(function->label))
            words.push_back(Word(list.kind, model, *function));
    }
}

std::string Joined(const Json& list, const char* member) {
    std::vector<std::string> parts;
    for (const Json& entry : list)
        parts.push_back(member ? entry[member].get<std::string>() : entry.get<std::string>());
    return fmt::format("{}", fmt::join(parts, " "));
}

std::string ParameterText(const Json& parameter) {
    const auto text = [&](const char* member) {
        return parameter[member].is_string() ? OneLine(parameter[member].get<std::string>()) : "";
    };
    std::string line = text("type");
    if (!text("unit").empty()) line += " " + text("unit");
    if (!text("minimum").empty() && !text("maximum").empty())
        line += fmt::format(", {} to {}", text("minimum"), text("maximum"));
    else if (!text("minimum").empty())
        line += ", from " + text("minimum");
    else if (!text("maximum").empty())
        line += ", up to " + text("maximum");
    line += ", " + Joined(parameter["kinds"], nullptr);
    if (text("usage") == "BY_ADDRESS") line += ", by address";
    if (!parameter["entries"].empty()) line += ": " + OneLine(Joined(parameter["entries"], "name"));
    if (!text("defaultValue").empty()) line += fmt::format("; {}", text("defaultValue"));
    return line;
}

void PrintText(Output& out, const Json& words, bool severalModels) {
    std::string model;
    for (const Json& word : words) {
        if (severalModels && word["model"] != model) out.Print("{}\n", ShownText(word["model"].get<std::string>()));
        model = word["model"].get<std::string>();
        const auto text = [&](const char* member) { return OneLine(word[member].get<std::string>()); };
        std::string returns;
        if (word["returns"].is_object())
            returns = fmt::format(" -> {}{}", word["returns"]["type"].get<std::string>(),
                                  word["returns"]["unit"].is_string() ? " " + word["returns"]["unit"].get<std::string>()
                                                                      : "");
        out.Print("{} {}{}  {}\n", text("kind"), out.Strong(text("name")), returns, out.Faint(text("label")));
        for (const Json& parameter : word["parameters"])
            out.Print("    {}  {}  {}\n", OneLine(parameter["name"].get<std::string>()), ParameterText(parameter),
                      out.Faint(OneLine(parameter["label"].get<std::string>())));
    }
}

// The root models of the configurations that the filters let through, each once.
std::vector<std::string> Models(Context& context) {
    if (context.arguments.Has("--model")) return {context.arguments.Text("--model")};
    Installation installation(context);
    std::vector<std::string> models;
    for (const Configuration& configuration : installation.Configurations()) {
        const std::string model = TavrelScenarioTemplateDb::RootModel::fileOf(configuration.name);
        if (model.empty())
            context.Tell({ExitUnreadable, fmt::format("configuration \"{}\" has no root model", configuration.name)});
        else if (std::find(models.begin(), models.end(), model) == models.end())
            models.push_back(model);
    }
    return models;
}

} // namespace

int RunWords(Context& context) {
    const std::string wanted = context.arguments.Text("PATTERN");
    const TextPattern pattern(wanted);
    Json words = Json::array();
    std::vector<std::string> names;
    const std::vector<std::string> models = Models(context);
    for (const std::string& model : models) {
        UseRootModelFile(model);
        for (const WordList& list : kLists)
            if (const ScenarioItem* folder = scenarioRootModel->FindItem(KindFolder, list.folder, ""))
                AddWords(*folder, list, model, wanted.empty() ? nullptr : &pattern, words, names);
    }
    if (context.arguments.Has("--json"))
        context.out.Print(DumpJson(words));
    else
        PrintText(context.out, words, models.size() > 1);
    if (!words.empty() || models.empty()) return context.status;
    Report(fmt::format("no condition, action or function has \"{}\" in its name or label{}", wanted,
                       DidYouMean(wanted, names)));
    return std::max<int>(context.status, ExitFindings);
}

} // namespace tavrel
