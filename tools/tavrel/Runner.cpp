#include "Runner.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_set>

#include <TavrelScenarioTemplateDb/ShareRootModels.h>
#include <lmkUtils/InstallationMoment.h>

#include "CommandTable.h"
#include "Describe.h"
#include "Files.h"
#include "Installation.h"
#include "Progress.h"
#include "Scripts.h"
#include "commands/Commands.h"
#include "report/ShownText.h"

namespace tavrel {

namespace {

using namespace TavrelProcesses;

// What the sub-command works on: its operand, if it takes one.
std::string Subject(const Arguments& arguments) {
    const std::vector<OptionRow>& operands = arguments.command->operands;
    const bool isOne = !operands.empty() && operands.front().takes == Takes::One;
    const bool comparesTwo = operands.size() > 1 && operands[1].offers == Offers::Scenarios;
    return isOne && !comparesTwo ? arguments.Text(operands.front().name) : "";
}

// What the library says of a template does not always name it.
std::string WithSubject(const Context& context, const Failure& failure) {
    const std::string subject = Subject(context.arguments);
    const std::string sentence = WithCauseOfRefusal(failure.sentence, subject);
    const bool named = subject.empty() || sentence.find(subject) != std::string::npos ||
                       sentence.find(ShownText(subject)) != std::string::npos;
    return named ? sentence : subject + ": " + sentence;
}

// The sub-command, with each of its failures as a sentence and a status. Fails with a Failure for wrong usage.
int RunToEnd(Context& context) {
    int status = ExitClean;
    try {
        status = context.arguments.command->run(context);
        context.TellLog(status != ExitClean);
    } catch (...) {
        const Failure failure = CurrentFailure();
        if (failure.status == ExitUsage) throw failure;
        Report(WithSubject(context, failure));
        context.TellLog(true);
        status = failure.status;
    }
    return status;
}

int RunAndWrite(Context& context) {
    try {
        const int status = RunToEnd(context);
        context.out.Flush();
        return status;
    } catch (const Failure& failure) {
        Report(failure.sentence);
        return failure.status;
    }
}

constexpr char kEndOfVerdict = '\n'; // in what a child answers, before what it prints

// How many runs came to what.
class Verdicts {
public:
    void Count(const std::string& verdict) { ++counts[verdict.empty() ? "error" : verdict]; }
    std::string Text() const {
        std::string text;
        // Each of these has had its sentence.
        if (counts.count("error") + counts.count("timeout") + counts.count("killed") == counts.size()) return text;
        for (const char* word : {"passed", "failed", "error", "timeout", "killed", "skipped"})
            if (const auto count = counts.find(word); count != counts.end())
                text += fmt::format("{}{} {}", text.empty() ? "\n" : ", ", count->second, word);
        return text.empty() ? text : text + "\n";
    }

private:
    std::map<std::string, std::size_t> counts;
};

// What list shows, but for scenarios that another one of their path hides.
std::vector<ListedScenario> AllScenarios(const std::vector<ScenarioDirectory>& directories) {
    std::vector<ListedScenario> all;
    const ScenarioDirectory* first = directories.data();
    std::unordered_set<std::string_view> known; // paths of the configuration
    for (const ScenarioDirectory& directory : directories) {
        if (first->configuration.name != directory.configuration.name) {
            first = &directory;
            known.clear();
        }
        for (const std::string& path : directory.scenarios)
            if (known.insert(path).second) all.push_back({&directory, &path, first});
    }
    return all;
}

// The sub-command for each scenario of the installation, one after the other in children. What a child prints travels
// to this process, so that the results stay in order and a scenario that ends its child takes no other along.
int RunForAll(Context& context) {
    Installation installation(context);
    const std::vector<ScenarioDirectory> directories = installation.AllDirectories();
    const std::vector<ListedScenario> all = AllScenarios(directories);
    if (all.empty() && context.status == ExitClean)
        context.Tell({ExitUnreadable, installation.File() + " has no scenario"});
    const bool asArray = context.arguments.Has("--json");
    const bool asLines = context.arguments.Text("--trace") == "json";
    const char* separator = asArray ? "[\n" : "";
    const TavrelScenarioTemplateDb::ShareRootModels sharing; // nothing here changes a root model
    const lmkUtils::InstallationMoment moment;               // the answers are of one state of the installation
    Verdicts verdicts;
    Progress progress(static_cast<double>(all.size()), "scenarios");
    ForEachInChildren(
        all.size(), context.Children(),
        [&](std::size_t item) {
            Arguments arguments = context.arguments;
            arguments.values["--config"] = {installation.File()};
            arguments.values["--configuration"] = {all[item].directory->configuration.name};
            arguments.values[arguments.command->operands.front().name] = {*all[item].path};
            context.out.Hold();
            Context one{arguments, context.out};
            one.listed = &all[item];
            // It was there when the folder was read.
            const std::string file = all[item].File();
            const std::string reason = ReasonNotToOpen(file);
            if (!reason.empty()) {
                one.Tell({ExitUnreadable, fmt::format("{}: {}", file, reason)});
                return std::to_string(ExitUnreadable);
            }
            try {
                const int status = RunToEnd(one);
                return std::to_string(status) + one.verdict + kEndOfVerdict + context.out.TakeHeld();
            } catch (const Failure& wrongUsage) {
                return std::to_string(ExitUsage) + wrongUsage.sentence;
            }
        },
        [&](std::size_t item, const std::string& answer) {
            progress.Hide();
            progress.Reach(static_cast<double>(item));
            const int status = answer[0] - '0';
            if (status == ExitUsage) throw Failure{ExitUsage, answer.substr(1)};
            context.status = std::max(context.status, status);
            const std::size_t end = answer.find(kEndOfVerdict);
            verdicts.Count(end == std::string::npos ? "" : answer.substr(1, end - 1));
            if (end == std::string::npos || answer.size() == end + 1) return;
            context.out.Print(separator);
            context.out.Print(std::string_view(answer).substr(end + 1));
            separator = asArray ? ",\n" : asLines ? "" : "\n";
        },
        [&](std::size_t item, const Death& death) {
            progress.Hide();
            verdicts.Count(death.kind == DeathKind::OutOfTime   ? "timeout"
                           : death.kind == DeathKind::Exception ? "error"
                                                                : "killed");
            context.Tell({ExitUnreadable, DeathSentence(all[item].File(), death)});
        });
    if (context.arguments.command->run == RunRun && !asLines) context.out.Print(verdicts.Text());
    if (asArray) context.out.Print(*separator == '[' ? "[]\n" : "]\n");
    context.out.Flush();
    return context.status;
}

} // namespace

int RunCommand(Context& context) {
    if (context.arguments.Has("--all")) return RunForAll(context);
    const Runs runs = context.arguments.command->runs;
    if (runs == Runs::Here || runs == Runs::OverItsOwnChildren) return RunAndWrite(context);
    ChildSettings settings = context.Children();
    settings.timed = runs == Runs::InOneChild;
    return RunInChild(Subject(context.arguments), settings, [&] { return RunAndWrite(context); });
}

} // namespace tavrel
