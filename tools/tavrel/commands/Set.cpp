#include <memory>
#include <utility>

#include "../Saving.h"
#include "../Scripts.h"
#include "../Values.h"
#include "Commands.h"

namespace tavrel {

using namespace TavrelVariation;

int RunSet(Context& context) {
    std::vector<AssignmentText> given = ReadAssignments(context.arguments.Texts("ASSIGNMENT"));
    OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    const std::string target = SaveTarget(context, opened);
    const EditLock lock(target);
    auto scenario = std::make_unique<Template>(opened.configuration.name, opened.scenario->getPath(), opened.directory);
    OpenDespiteDeclarations(*scenario);
    std::vector<std::string> left;
    WithRefusals([&] {
        Settable settable(scenario->File(), scenario->getRootScenarioNode());
        NameAsInScenario(settable, given);
        settable.Apply(ReadAll(settable, {}, given, Ranges::AreTold, &left));
    });
    opened.scenario = std::move(scenario);
    SaveScenario(opened, target);
    for (const std::string& sentence : left) Report(sentence);
    return context.status;
}

} // namespace tavrel
