#include <simulation/Runner.h>

#include <cmath>
#include <iostream>
#include <utility>

#include <scenario/LogLines.h>

namespace TavrelSimulation {

namespace {

constexpr double kMostSteps = 1e9;
constexpr int kError = 4;

// Control characters become blanks, runs of them one.
std::string OnOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const bool control = static_cast<unsigned char>(c) < ' ' || c == '\x7f';
        if (!control)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

// The model's log while a run lasts.
class RunLog {
public:
    RunLog() : stream(&lines), former(std::exchange(scenarioLog, &stream)) {}
    ~RunLog() { scenarioLog = former; }
    RunLog(const RunLog&) = delete;
    RunLog& operator=(const RunLog&) = delete;

    // Tells what came since the last call, and whether an error is among it.
    bool Tell(Trace& trace, int leastSeverity) {
        bool error = false;
        for (const LogLine& line : lines.Take()) {
            error = error || line.severity >= kError;
            if (line.severity >= leastSeverity) trace.Tell(LogEntry{line.severity, OnOneLine(line.text)});
        }
        return error;
    }

private:
    LogLines lines;
    std::ostream stream;
    std::ostream* const former;
};

// The listener of effects is the world's only while it runs.
class EffectsOf {
public:
    EffectsOf(World& runWorld, Trace& trace) : world(runWorld), former(std::move(runWorld.onEffect)) {
        world.onEffect = [&trace](const std::string& name, const std::vector<std::string>& arguments) {
            trace.Tell(Effect{name, arguments});
        };
    }
    ~EffectsOf() { world.onEffect = std::move(former); }
    EffectsOf(const EffectsOf&) = delete;
    EffectsOf& operator=(const EffectsOf&) = delete;

private:
    World& world;
    EffectListener former;
};

} // namespace

double Span::TimeOf(std::size_t index) const {
    return std::round((from + static_cast<double>(index) * step) * 1e9) / 1e9;
}

std::size_t Span::Steps() const { return static_cast<std::size_t>(std::floor((until - from) / step + 1e-9)) + 1; }

std::string Span::Complaint() const {
    if (!std::isfinite(from) || !std::isfinite(until) || !std::isfinite(step)) return "the times of a run are numbers";
    if (step <= 0) return "the step of a run is a number of seconds above 0";
    if (until < from) return "the end of a run lies before its start";
    return (until - from) / step > kMostSteps ? "there are too many steps between the start and the end of a run" : "";
}

RunResult Run(ScenarioLib::Scenario& scenario, World& world, const RunSettings& settings,
              const Trace::Listener& listener) {
    const Span& span = settings.span;
    if (const std::string complaint = span.Complaint(); !complaint.empty()) throw std::invalid_argument(complaint);
    RunStart start = settings.start;
    start.until = span.until;
    start.step = span.step;
    start.names = NamesOf(scenario);
    Judge judge(settings.criteria, &*start.names);
    Trace trace(scenario, [&](const Event& event) {
        judge.Hear(event);
        listener(event);
    });
    RunLog log;
    const EffectsOf effects(world, trace);

    trace.SetTime(span.from);
    trace.Tell(start);
    world.Start(scenario, span.from, start.seed);
    scenario.Init("", span.from);
    bool failed = log.Tell(trace, settings.leastSeverity);
    if (settings.beforeSteps) settings.beforeSteps(scenario);
    std::size_t steps = 0;
    double time = span.from;
    while (steps < span.Steps() && !scenario.stopped) {
        time = span.TimeOf(steps++);
        trace.SetTime(time);
        world.Advance(time);
        scenario.StepScenario(time);
        failed = log.Tell(trace, settings.leastSeverity) || failed;
        trace.Compare();
        if (settings.afterStep) settings.afterStep(scenario, time);
    }
    RunResult result;
    result.end = trace.Summary();
    result.end.steps = steps;
    // The run ends at its last step.
    judge.Hear({time, result.end});
    result.end.criteria = judge.Outcomes();
    result.verdict = failed ? Verdict::Failed : VerdictOf(result.end.criteria);
    result.end.verdict = WordOf(result.verdict);
    listener({time, result.end});
    return result;
}

const char* WordOf(Verdict verdict) {
    constexpr const char* kWords[] = {"passed", "failed", "error", "timeout", "killed", "skipped"};
    return kWords[static_cast<std::size_t>(verdict)];
}

Verdict VerdictOf(const std::vector<Outcome>& outcomes) {
    for (const Outcome& outcome : outcomes)
        if (!outcome.holds) return Verdict::Failed;
    return Verdict::Passed;
}

} // namespace TavrelSimulation
