#include "../Progress.h"
#include "../Scripts.h"
#include "../TraceText.h"
#include "Commands.h"

#include <simulation/Runner.h>
#include <simulation/Scene.h>

#include <iostream>

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

// People want to know what fired, and not the end of it.
bool IsRuleEnding(const Event& event) {
    const auto* rule = std::get_if<RuleChange>(&event.what);
    return rule && !rule->value;
}

} // namespace

int RunRun(Context& context) {
    RunSettings settings;
    settings.span = SpanOf(context.arguments);
    const bool asJson = context.arguments.Text("--trace", "text") == "json";
    LoadedScript loaded = LoadScript(context, context.arguments.Text("SCRIPT"));
    if (!loaded.scenario)
        throw Failure{ExitUnreadable, loaded.title + " is no scenario, so it cannot be run by itself"};

    World world;
    if (loaded.opened) {
        Scene::FillWorld(world, loaded.opened->File());
        settings.start.seed = Scene::SeedOf(loaded.opened->File());
    }
    RegisterFunctions(world);
    RegisterConditions(world);
    RegisterActions(world);
    context.TellLog(false);
    // Display texts place nested calls into the parameters that they fill.
    UpdateDisplayTexts(*loaded.scenario);

    const bool all = context.arguments.Has("--verbose");
    settings.leastSeverity = all ? 0 : kWarning;
    settings.start.scenario = loaded.title;
    Progress progress(settings.span.until - settings.span.from, "seconds");
    settings.afterStep = [&](const ScenarioLib::Scenario&, double time) { progress.Reach(time - settings.span.from); };
    const RunResult result = Run(*loaded.scenario, world, settings, [&](const Event& event) {
        if (asJson)
            context.out.Print(JsonOf(event) + "\n");
        else if (all || !IsRuleEnding(event))
            context.out.Print(EventText(event));
    });
    return result.verdict == Verdict::Passed ? context.status : ExitFindings;
}

} // namespace tavrel
