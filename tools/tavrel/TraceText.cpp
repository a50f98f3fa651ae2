#include "TraceText.h"

#include "Describe.h"
#include "Failure.h"

#include <scenario/task.h>

#include <fmt/format.h>

namespace tavrel {

namespace {

using namespace TavrelSimulation;

std::string Quoted(const std::string& label) {
    const std::string text = OneLine(label);
    return text.empty() ? "" : fmt::format(" \"{}\"", text);
}

// A rule need not have one.
std::string NameBehindBlank(const std::string& name) { return name.empty() ? "" : " " + OneLine(name); }

std::string StateText(int state) {
    if (state == Task::kNoState) return "none";
    return state == Task::kStateEnd ? "end" : std::to_string(state);
}

std::string Counted(std::size_t count, const char* what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

struct Line {
    std::string operator()(const RunStart& start) const {
        const std::string script = start.script.empty() ? "" : ", script " + start.script;
        return "start of " + OneLine(start.scenario + script);
    }
    std::string operator()(const RuleChange& change) const {
        return fmt::format("rule{}{} {} in {}", NameBehindBlank(change.rule), Quoted(change.label),
                           change.value ? "fired" : "became false", OneLine(change.place));
    }
    std::string operator()(const StateChange& change) const {
        return fmt::format("state of {}: {} -> {}{}", OneLine(change.task), StateText(change.from),
                           StateText(change.to), Quoted(change.label));
    }
    std::string operator()(const VariableChange& change) const {
        return fmt::format("variable{}{}: {} -> {} in {}", NameBehindBlank(change.variable), Quoted(change.label),
                           OneLine(change.from), OneLine(change.to), OneLine(change.place));
    }
    std::string operator()(const ScoreChange& change) const {
        return fmt::format("score {}: {} -> {}", change.score, ShortNumber(change.from), ShortNumber(change.to));
    }
    std::string operator()(const Effect& effect) const {
        std::string line = OneLine(effect.name);
        for (const std::string& argument : effect.arguments)
            line += " " + OneLine(Json(argument).dump(-1, ' ', false, Json::error_handler_t::replace));
        return line;
    }
    std::string operator()(const Pause& pause) const {
        return pause.value ? "the scenario pauses" : "the scenario goes on";
    }
    std::string operator()(const Stop&) const { return "the scenario stops"; }
    std::string operator()(const LogEntry& entry) const { return "log: " + OneLine(entry.text); }
    std::string operator()(const RunEnd& end) const {
        return fmt::format("end after {}, {} fired", Counted(end.steps, "step"), Counted(end.rulesFired, "rule"));
    }
};

} // namespace

std::string EventText(const Event& event) {
    return fmt::format("{:9.3f}  {}\n", event.time, std::visit(Line(), event.what));
}

} // namespace tavrel
