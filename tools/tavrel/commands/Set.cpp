#include <Commons/WholeFile.h>
#include <cfg/CfgScenario.h>

#include "../Scripts.h"
#include "../Values.h"
#include "Commands.h"

namespace tavrel {

using namespace TavrelVariation;

int RunSet(Context& context) {
    const std::vector<AssignmentText> given = ReadAssignments(context.arguments.Texts("ASSIGNMENT"));
    const std::string operand = context.arguments.Text("SCENARIO");
    const OpenedScenario found = OpenScenario(context, operand);
    const std::string path = found.scenario->getFilePath();
    // From the reading on, so that what others save meanwhile is neither lost nor undone.
    const Commons::FileLock lock(path);
    if (!lock.isFree()) throw Failure{ExitUnreadable, fmt::format("{}: another program keeps it locked", path)};
    Template opened(found.configuration.name, found.scenario->getPath(), found.directory);
    OpenDespiteDeclarations(opened);
    cfg::CfgScenario& file = opened.File();
    std::vector<std::string> left;
    WithRefusals([&] {
        Settable settable(file, opened.getRootScenarioNode());
        settable.Apply(ReadAll(settable, {}, given, Ranges::AreTold, &left));
    });
    const std::string target = context.arguments.Text("--output", path);
    if (!file.save(target.c_str(), static_cast<Commons::Encoding::Mode>(1), false))
        throw Failure{ExitUnreadable, PlacedLine(file.errorMessage)};
    for (const std::string& sentence : left) Report(sentence);
    return context.status;
}

} // namespace tavrel
