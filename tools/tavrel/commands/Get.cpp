#include "../Describe.h"
#include "../Installation.h"
#include "Commands.h"

namespace tavrel {

int RunGet(Context& context) {
    const std::string id = context.arguments.Text("ID");
    const OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    const ScenarioTemplateDb::ScenarioParameter& parameter = ParameterOf(*opened.scenario, id);
    if (context.arguments.Has("--json"))
        context.out.Print(DumpJson(ParameterJson(parameter)));
    else
        context.out.Print("{}\n", ValueText(parameter));
    return context.status;
}

} // namespace tavrel
