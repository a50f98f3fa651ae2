#include "Trace.h"

#include "Failure.h"

#include <fmt/format.h>

namespace tavrel {

namespace {

std::string Quoted(const Json& label) {
    const std::string text = OneLine(label.get<std::string>());
    return text.empty() ? "" : fmt::format(" \"{}\"", text);
}

std::string StateText(const Json& number) {
    const int state = number.get<int>();
    if (state == Task::kNoState) return "none";
    return state == Task::kStateEnd ? "end" : std::to_string(state);
}

std::string Counted(const Json& number, const char* what) {
    const auto count = number.get<std::size_t>();
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

} // namespace

std::string PathOf(const ScenarioItem& item) {
    std::vector<std::string> steps;
    for (const ScenarioItem* step = &item; step; step = step->parent)
        steps.push_back(step->name.empty() ? KindKeyword(step->kind)
                                           : fmt::format("{} ({})", KindKeyword(step->kind), step->name));
    return fmt::format("{}", fmt::join(steps.rbegin(), steps.rend(), " / "));
}

Trace::Trace(ScenarioLib::Scenario& watched, Listener eventListener)
    : scenario(watched), listener(std::move(eventListener)) {
    Watch(scenario);
    if (scenario.evaluation) scores = scenario.evaluation->scores;
}

Trace::~Trace() {
    for (Rule* rule : rules) rule->RemoveObserver(this);
}

void Trace::Watch(ScenarioItem& item) {
    if (auto* rule = dynamic_cast<Rule*>(&item)) {
        rule->AddObserver(this);
        rules.push_back(rule);
    }
    // A state that is entered is told as a change from none.
    if (auto* task = dynamic_cast<Task*>(&item)) tasks.push_back({task, Task::kNoState});
    if (auto* variable = dynamic_cast<Variable*>(&item)) variables.push_back({variable, variable->value});
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (ScenarioItem* child : children) Watch(*child);
}

void Trace::OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) {
    const auto* rule = dynamic_cast<const Rule*>(source);
    if (!rule || event > Rule::kEventBecameFalse) return;
    const bool became = event == Rule::kEventBecameTrue;
    if (became) ++rulesFired;
    Tell("rule", {{"rule", rule->name},
                  {"label", rule->label},
                  {"place", rule->parent ? PathOf(*rule->parent) : ""},
                  {"value", became}});
}

void Trace::Tell(const std::string& event, const Json& members) {
    Json all = {{"time", time}, {"event", event}};
    all.update(members);
    listener(all);
}

void Trace::Compare() {
    for (WatchedTask& watched : tasks) {
        const std::int32_t state = watched.task->currentState;
        if (state == watched.state) continue;
        const std::ptrdiff_t index = watched.task->StateIndex(state);
        Tell("state", {{"task", PathOf(*watched.task)},
                       {"from", watched.state},
                       {"to", state},
                       {"label", index < 0 ? "" : watched.task->subTasks[static_cast<std::size_t>(index)]->label}});
        watched.state = state;
    }
    for (WatchedVariable& watched : variables) {
        if (watched.variable->value == watched.value) continue;
        Tell("variable", {{"variable", watched.variable->name},
                          {"label", watched.variable->label},
                          {"place", watched.variable->parent ? PathOf(*watched.variable->parent) : ""},
                          {"from", watched.value},
                          {"to", watched.variable->value}});
        watched.value = watched.variable->value;
    }
    CompareScores();
    if (scenario.paused != paused) Tell("pause", {{"value", scenario.paused != 0}});
    if (scenario.stopped && !stopped) Tell("stop", Json::object());
    paused = scenario.paused;
    stopped = scenario.stopped;
}

void Trace::CompareScores() {
    if (!scenario.evaluation) return;
    for (const auto& [number, value] : scenario.evaluation->scores) {
        const auto former = scores.find(number);
        const float before = former == scores.end() ? 0 : former->second;
        if (before == value) continue;
        Tell("score", {{"score", number}, {"from", before}, {"to", value}});
        scores[number] = value;
    }
}

std::string EventText(const Json& event) {
    const auto text = [&](const char* member) { return OneLine(event[member].get<std::string>()); };
    // A rule need not have one.
    const auto name = [&](const char* member) { return (event[member] == "" ? "" : " ") + text(member); };
    const std::string kind = text("event");
    std::string line = fmt::format("{:9.3f}  ", event["time"].get<double>());
    if (kind == "rule")
        line += fmt::format("rule{}{} {} in {}", name("rule"), Quoted(event["label"]),
                            event["value"].get<bool>() ? "fired" : "became false", text("place"));
    else if (kind == "state")
        line += fmt::format("state of {}: {} -> {}{}", text("task"), StateText(event["from"]), StateText(event["to"]),
                            Quoted(event["label"]));
    else if (kind == "variable")
        line += fmt::format("variable{}{}: {} -> {} in {}", name("variable"), Quoted(event["label"]), text("from"),
                            text("to"), text("place"));
    else if (kind == "score")
        line += fmt::format("score {}: {} -> {}", event["score"].get<int>(), ShortNumber(event["from"].get<double>()),
                            ShortNumber(event["to"].get<double>()));
    else if (kind == "effect") {
        line += text("name");
        for (const Json& argument : event["arguments"])
            line += " " + OneLine(argument.dump(-1, ' ', false, Json::error_handler_t::replace));
    } else if (kind == "pause")
        line += event["value"].get<bool>() ? "the scenario pauses" : "the scenario goes on";
    else if (kind == "stop")
        line += "the scenario stops";
    else if (kind == "log")
        line += "log: " + text("text");
    else if (kind == "start")
        line += "start of " + text("scenario");
    else
        line += fmt::format("end after {}, {} fired", Counted(event["steps"], "step"),
                            Counted(event["rulesFired"], "rule"));
    return line + "\n";
}

} // namespace tavrel
