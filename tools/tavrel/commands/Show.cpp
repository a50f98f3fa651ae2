#include <cfg/VariadicParameter.h>

#include "../Describe.h"
#include "../Installation.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;

// A line for each parameter of an installation: put together by hand, which takes half the time of a format.
void PrintParameter(Output& out, const ScenarioParameter& parameter, const std::string& indent) {
    std::string line = indent + OneLine(parameter.getName());
    line.append(" = ").append(OneLine(ValueText(parameter)));
    if (parameter.hasParameterUnit()) line.append(" ").append(parameter.getParameterUnit());
    std::string remark = "(" + TypeWord(parameter);
    const std::string description = parameter.getDescription();
    if (!description.empty()) remark.append(", ").append(OneLine(description));
    line.append("  ").append(out.Faint(remark.append(")"))).append("\n");
    out.Print(line);
}

void PrintNode(Output& out, const ScenarioNode& node, const std::string& indent) {
    out.Print(indent + out.Strong(OneLine(node.getName())) + "\n");
    const std::string below = indent + "  ";
    std::vector<ScenarioParameter*> parameters;
    node.getParameters(parameters);
    for (const ScenarioParameter* parameter : parameters) PrintParameter(out, *parameter, below);
    if (node.getChildNumber() == 0) return; // a script refuses to list its children
    std::vector<ScenarioNode*> children;
    node.getChildren(children);
    for (const ScenarioNode* child : children) PrintNode(out, *child, below);
}

void PrintText(Output& out, const OpenedScenario& opened) {
    const auto& scenario = *opened.scenario;
    out.Print("{}\n", out.Strong(OneLine(scenario.getName())));
    if (!scenario.getDescription().empty()) out.Print("{}\n", Printable(scenario.getDescription()));
    out.Print("\npath           {}\nconfiguration  {} ({})\nfile           {}\n\n", ShownText(scenario.getPath()),
              ShownText(opened.configuration.name), ShownText(opened.configuration.version),
              ShownText(scenario.getFilePath()));
    PrintNode(out, *scenario.getRootScenarioNode(), "");
    const std::size_t count = scenario.getVariadicParameterNumber();
    if (count > 0) out.Print("\n{}\n", out.Strong("Variadic parameters"));
    for (std::size_t i = 0; i < count; ++i) {
        const auto& declaration = *scenario.getVariadicParameter(i);
        out.Print("  {}  {}  {}\n     {}\n", i, OneLine(declaration.getName()),
                  out.Faint("(" + OneLine(DeclarationText(declaration)) + ")"),
                  ShownText(declaration.getParameterId()));
    }
}

void PrintJson(Output& out, const OpenedScenario& opened) {
    const auto& scenario = *opened.scenario;
    const Json json = {{"configuration", opened.configuration.name},
                       {"version", opened.configuration.version},
                       {"path", scenario.getPath()},
                       {"file", scenario.getFilePath()},
                       {"name", scenario.getName()},
                       {"description", scenario.getDescription()},
                       {"root", NodeJson(*scenario.getRootScenarioNode())},
                       {"variadicParameters", DeclarationsJson(scenario)}};
    out.Print(DumpJson(json));
}

} // namespace

int RunShow(Context& context) {
    const OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    if (context.arguments.Has("--json"))
        PrintJson(context.out, opened);
    else
        PrintText(context.out, opened);
    return context.status;
}

int RunIds(Context& context) {
    const OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    for (const std::string& id : ParameterIds(*opened.scenario->getRootScenarioNode()))
        context.out.Print("{}\n", ShownText(id));
    return context.status;
}

} // namespace tavrel
