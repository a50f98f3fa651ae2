#include "../Progress.h"
#include "../Scene.h"
#include "../Scripts.h"
#include "../Trace.h"
#include "Commands.h"

#include <cmath>
#include <iostream>

namespace tavrel {

namespace {

constexpr double kUntil = 60;
constexpr double kStep = 0.1;
constexpr int kWarning = 3;
constexpr int kError = 4;
constexpr double kMostSteps = 1e9;

struct Span {
    double from;
    double until;
    double step;

    // Each time is worked out from the number of its step, and not by adding up, so that 1.5 s is 1.5 s and not a
    // little less: scripts compare times.
    double TimeOf(std::size_t index) const {
        return std::round((from + static_cast<double>(index) * step) * 1e9) / 1e9;
    }
    std::size_t Steps() const { return static_cast<std::size_t>(std::floor((until - from) / step + 1e-9)) + 1; }
};

Span SpanOf(const Arguments& arguments) {
    const double from = arguments.Number("--from", 0);
    const Span span{from, arguments.Number("--until", from + kUntil), arguments.Number("--step", kStep)};
    if (span.step <= 0) throw Failure{ExitUsage, "--step takes a number of seconds above 0"};
    if (span.until < span.from) throw Failure{ExitUsage, "--until lies before --from"};
    if ((span.until - span.from) / span.step > kMostSteps)
        throw Failure{ExitUsage, "there are too many steps between --from and --until"};
    return span;
}

// People want to know what fired, and not the end of it.
bool IsRuleEnding(const Json& event) { return event["event"] == "rule" && !event["value"].get<bool>(); }

// What the library logged in the last step. Answers whether an error is among it.
bool TellLog(Context& context, Trace& trace) {
    bool error = false;
    for (const LogLine& line : context.out.TakeLog()) {
        if (line.severity < kWarning && !context.arguments.Has("--verbose")) continue;
        trace.Tell("log", {{"severity", line.severity}, {"text", line.text}});
        error = error || line.severity >= kError;
    }
    return error;
}

} // namespace

int RunRun(Context& context) {
    const Span span = SpanOf(context.arguments);
    const bool asJson = context.arguments.Text("--trace", "text") == "json";
    LoadedScript loaded = LoadScript(context, context.arguments.Text("SCRIPT"));
    if (!loaded.scenario)
        throw Failure{ExitUnreadable, loaded.title + " is no scenario, so it cannot be run by itself"};
    ScenarioLib::Scenario& scenario = *loaded.scenario;

    builtin::World world;
    if (loaded.opened) Scene::FillWorld(world, loaded.opened->File());
    builtin::RegisterFunctions(world);
    builtin::RegisterConditions(world);
    builtin::RegisterActions(world);
    context.TellLog(false);
    // Display texts place nested calls into the parameters that they fill.
    UpdateDisplayTexts(scenario);

    const bool all = context.arguments.Has("--verbose");
    Trace trace(scenario, [&](const Json& event) {
        if (asJson)
            context.out.Print(DumpJsonLine(event));
        else if (all || !IsRuleEnding(event))
            context.out.Print(EventText(event));
    });
    world.onEffect = [&](const std::string& name, const std::vector<std::string>& arguments) {
        trace.Tell("effect", {{"name", name}, {"arguments", arguments}});
    };
    scenarioLog = &std::cout; // which gathers what the library writes, for the trace
    trace.SetTime(span.from);
    trace.Tell("start", {{"scenario", loaded.title}, {"until", span.until}, {"step", span.step}});
    world.Start(scenario, span.from, loaded.opened ? Scene::SeedOf(loaded.opened->File()) : 0);
    scenario.Init("", span.from);

    Progress progress(span.until - span.from, "seconds");
    bool failed = TellLog(context, trace);
    std::size_t steps = 0;
    while (steps < span.Steps() && !scenario.stopped) {
        const double time = span.TimeOf(steps++);
        trace.SetTime(time);
        world.Advance(time);
        scenario.StepScenario(time);
        failed = TellLog(context, trace) || failed;
        trace.Compare();
        progress.Reach(time - span.from);
    }
    trace.Tell("end", {{"steps", steps}, {"stopped", scenario.stopped != 0}, {"rulesFired", trace.RulesFired()}});
    return failed ? ExitFindings : context.status;
}

} // namespace tavrel
