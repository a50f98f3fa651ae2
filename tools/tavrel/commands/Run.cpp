#include <charconv>

#include <simulation/Explanation.h>
#include <simulation/Inputs.h>
#include <simulation/Runner.h>
#include <simulation/Scene.h>

#include "../Describe.h"
#include "../Progress.h"
#include "../Scripts.h"
#include "../TraceText.h"
#include "../Values.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

using namespace TavrelSimulation;

constexpr double kUntil = 60;
constexpr double kStep = 0.1;
constexpr int kWarning = 3;

Span SpanOf(const Arguments& arguments) {
    const double from = arguments.Number("--from", 0);
    const Span span{from, arguments.Number("--until", from + kUntil), arguments.Number("--step", kStep)};
    if (span.step <= 0) throw Failure{ExitUsage, "--step takes a number of seconds above 0"};
    if (span.until < span.from) throw Failure{ExitUsage, "--until lies before --from"};
    if (!span.Complaint().empty()) throw Failure{ExitUsage, "there are too many steps between --from and --until"};
    return span;
}

std::uint32_t SeedOf(const std::string& text) {
    std::uint32_t seed = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seed);
    if (error != std::errc() || end != text.data() + text.size())
        throw Failure{ExitUsage, fmt::format("--seed takes a whole number from 0 to 4294967295, not \"{}\"", text)};
    return seed;
}

// People want to know what fired, and not the end of it.
bool IsRuleEnding(const Event& event) {
    const auto* rule = std::get_if<RuleChange>(&event.what);
    return rule && !rule->value;
}

// Where a trace goes: to the results, or into a file that is written when the run has ended.
class TraceWriter {
public:
    TraceWriter(Context& userContext)
        : context(userContext), asJson(context.arguments.Text("--trace", "text") == "json"),
          quiet(context.arguments.Has("--quiet")), toFile(context.arguments.Has("--output")),
          explains(context.arguments.Has("--explain")) {}

    void Take(const Event& event) {
        const auto* end = std::get_if<RunEnd>(&event.what);
        if (!end && !context.arguments.Has("--verbose") && !asJson && IsRuleEnding(event)) return;
        const std::string line = asJson ? JsonOf(event) + "\n" : EventText(event) + (end ? SummaryText(*end) : "");
        if (toFile)
            gathered += line;
        else if (!explains && (!quiet || end))
            context.out.Print(line);
        if (toFile && end && !explains) context.out.Print(EventText(event) + SummaryText(*end));
    }
    void Finish() const {
        if (toFile) SaveFile(context.arguments.Text("--output"), gathered);
    }

private:
    Context& context;
    const bool asJson, quiet, toFile, explains;
    std::string gathered;
};

// What a scenario without a script gives, with --all.
int TellSkipped(Context& context, const std::string& path) {
    RunStart start;
    start.scenario = path;
    RunEnd end;
    end.verdict = WordOf(Verdict::Skipped);
    if (context.arguments.Text("--trace", "text") == "json")
        context.out.Print(JsonOf({0, start}) + "\n" + JsonOf({0, end}) + "\n");
    else
        context.out.Print("skipped {}: it has no script\n", ShownText(path));
    context.verdict = end.verdict;
    return context.status;
}

} // namespace

int RunRun(Context& context) {
    const Arguments& arguments = context.arguments;
    RunSettings settings;
    settings.span = SpanOf(arguments);
    settings.criteria = ReadCriteria(arguments.Texts("--expect"));
    const bool seeded = arguments.Has("--seed");
    const std::uint32_t seed = seeded ? SeedOf(arguments.Text("--seed")) : 0;
    if (arguments.Has("--all") && arguments.Has("--output"))
        throw Failure{ExitUsage, "--all and --output exclude each other"};
    std::vector<TavrelVariation::AssignmentText> fromFile;
    if (arguments.Has("--set-file")) fromFile = ReadAssignmentFile(arguments.Text("--set-file"));
    std::vector<TavrelVariation::AssignmentText> given = ReadAssignments(arguments.Texts("--set"));

    LoadedScript loaded = LoadScript(context, arguments.Text("SCRIPT"), [&](Template& opened) {
        if (fromFile.empty() && given.empty()) return;
        WithRefusals([&] {
            TavrelVariation::Settable settable(opened.File(), opened.getRootScenarioNode());
            NameAsInScenario(settable, fromFile);
            NameAsInScenario(settable, given);
            const auto assignments = TavrelVariation::ReadAll(settable, fromFile, given);
            settable.Apply(assignments);
            for (const auto& assignment : assignments)
                settings.start.values.emplace_back(assignment.id, assignment.text);
        });
    });
    if (!loaded.root) return TellSkipped(context, loaded.path);
    if (!loaded.opened && !(fromFile.empty() && given.empty()))
        throw Failure{ExitUsage, loaded.path + " is a script by itself; values are set in a scenario file"};
    if (!loaded.scenario)
        throw Failure{ExitUnreadable, loaded.title + " is no scenario, so it cannot be run by itself"};

    World world;
    if (loaded.opened) {
        Scene::FillWorld(world, loaded.opened->File());
        settings.start.seed = Scene::SeedOf(loaded.opened->File());
    }
    if (seeded) settings.start.seed = seed;
    RegisterFunctions(world);
    RegisterConditions(world);
    RegisterActions(world);
    context.TellLog(false);
    // Display texts place nested calls into the parameters that they fill.
    UpdateDisplayTexts(*loaded.scenario);

    settings.leastSeverity = arguments.Has("--verbose") ? 0 : kWarning;
    settings.start.tool = TAVREL_COMMAND_VERSION;
    settings.start.scenario = loaded.path;
    settings.start.script = loaded.script;
    settings.start.inputs = {InputOf(loaded.opened ? "scenario" : "script", loaded.file, loaded.installation),
                             InputOf("rootModel", loaded.rootModel, loaded.installation)};
    for (Input& input : IncludesOf(*loaded.scenario, loaded.installation))
        settings.start.inputs.push_back(std::move(input));

    return WithRefusals([&] {
        std::optional<Explainer> explainer;
        if (arguments.Has("--explain")) explainer.emplace(*loaded.scenario, arguments.Text("--explain"));
        Progress progress(settings.span.until - settings.span.from, "seconds");
        settings.afterStep = [&](const ScenarioLib::Scenario&, double time) {
            if (explainer) explainer->AfterStep(time);
            progress.Reach(time - settings.span.from);
        };
        TraceWriter trace(context);
        const RunResult result = Run(*loaded.scenario, world, settings, [&](const Event& event) { trace.Take(event); });
        trace.Finish();
        if (explainer) {
            const bool asJson = arguments.Text("--trace") == "json";
            context.out.Print(ExplanationText(explainer->Finish(), asJson));
            if (!asJson) context.out.Print(VerdictText(result.end));
        }
        context.verdict = WordOf(result.verdict);
        return result.verdict == Verdict::Passed ? context.status : std::max<int>(ExitFindings, context.status);
    });
}

} // namespace tavrel
