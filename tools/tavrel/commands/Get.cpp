#include "../Describe.h"
#include "../Installation.h"
#include "Commands.h"

namespace tavrel {

int RunGet(Context& context) {
    Installation installation(context);
    const std::string id = context.arguments.Text("ID");
    const OpenedScenario opened = installation.Open(context.arguments.Text("SCENARIO"));
    const ScenarioTemplateDb::ScenarioParameter* parameter = opened.scenario->getParameterFromId(id);
    if (!parameter)
        throw Failure{
            ExitUnreadable,
            fmt::format("\"{}\" is no parameter id; one begins with /sce/Scenario/ and ends at a parameter, and "
                        "'tavrel ids {}' shows them all",
                        id, opened.scenario->getPath())};
    if (context.arguments.Has("--json"))
        context.out.Print(DumpJson(ParameterJson(*parameter)));
    else
        context.out.Print("{}\n", parameter->getValueAsString());
    return context.status;
}

} // namespace tavrel
