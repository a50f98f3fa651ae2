#include <simulation/Trace.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

namespace TavrelSimulation {

namespace {

std::string PlaceOf(const ScenarioItem& item) { return item.parent ? PathOf(*item.parent) : ""; }

template <typename Visit>
void Walk(const ScenarioItem& item, const Visit& visit) {
    visit(item);
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (const ScenarioItem* child : children) Walk(*child, visit);
}

// The scores that the calls of the script name by a literal, beside those of the table.
void AddNamedScores(const Function& call, std::set<std::int32_t>& numbers) {
    for (const Parameter* parameter : call.parameters)
        if (parameter && parameter->name == "SCORE_NUMBER" && parameter->valueKind != "FUNCTION" &&
            parameter->valueKind != "VARIABLE")
            numbers.insert(std::atoi(parameter->value.c_str()));
}

} // namespace

std::string PathOf(const ScenarioItem& item) {
    std::string path = KindKeyword(item.kind);
    if (!item.name.empty()) path += " (" + item.name + ")";
    return item.parent ? PathOf(*item.parent) + " / " + path : path;
}

Names NamesOf(const ScenarioLib::Scenario& scenario) {
    Names names;
    std::vector<const Variable*> variables;
    std::map<std::string, std::size_t> count;
    std::set<std::int32_t> scores;
    Walk(scenario, [&](const ScenarioItem& item) {
        if (dynamic_cast<const Rule*>(&item)) names.rules.push_back(PathOf(item));
        if (dynamic_cast<const Task*>(&item)) names.tasks.push_back(PathOf(item));
        if (const auto* call = dynamic_cast<const Function*>(&item)) AddNamedScores(*call, scores);
        if (const auto* variable = dynamic_cast<const Variable*>(&item)) {
            variables.push_back(variable);
            ++count[variable->name];
        }
    });
    for (const Variable* variable : variables) {
        const bool unique = count[variable->name] == 1;
        names.variables.push_back({unique ? variable->name : PlaceOf(*variable) + " / " + variable->name,
                                   variable->label, variable->initialValue, PlaceOf(*variable)});
    }
    if (!scenario.evaluation) return names;
    for (const auto& [number, value] : scenario.evaluation->scores) scores.insert(number);
    for (const std::int32_t number : scores) {
        const auto known = scenario.evaluation->scores.find(number);
        const double start = known == scenario.evaluation->scores.end() ? 0.0 : static_cast<double>(known->second);
        names.scores.push_back({number, start});
    }
    return names;
}

Trace::Trace(ScenarioLib::Scenario& watched, Listener eventListener)
    : scenario(watched), listener(std::move(eventListener)) {
    Watch(scenario);
    if (scenario.evaluation) scores = scenario.evaluation->scores;
}

Trace::~Trace() {
    for (const WatchedRule& watched : rules) watched.rule->RemoveObserver(this);
}

void Trace::Watch(ScenarioItem& item) {
    if (auto* rule = dynamic_cast<Rule*>(&item)) {
        rule->AddObserver(this);
        ruleIndex.emplace(rule, rules.size());
        rules.push_back({rule, false});
    }
    // A state that is entered is told as a change from none.
    if (auto* task = dynamic_cast<Task*>(&item)) {
        taskIndex.emplace(task, tasks.size());
        tasks.push_back({task, Task::kNoState, false});
    }
    if (auto* variable = dynamic_cast<Variable*>(&item)) variables.push_back({variable, variable->value});
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (ScenarioItem* child : children) Watch(*child);
}

void Trace::OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) {
    const auto* rule = dynamic_cast<const Rule*>(source);
    if (!rule || event > Rule::kEventBecameFalse) return;
    const bool became = event == Rule::kEventBecameTrue;
    if (became) {
        ++rulesFired;
        if (const auto known = ruleIndex.find(rule); known != ruleIndex.end()) rules[known->second].fired = true;
    }
    Tell(RuleChange{rule->name, rule->label, PlaceOf(*rule), became});
}

void Trace::Tell(decltype(Event::what) what) { listener({time, std::move(what)}); }

void Trace::Compare() {
    for (WatchedTask& watched : tasks) {
        const std::int32_t state = watched.task->currentState;
        if (state == watched.state) continue;
        const std::ptrdiff_t index = watched.task->StateIndex(state);
        const Task* entered = index < 0 ? nullptr : watched.task->subTasks[static_cast<std::size_t>(index)];
        if (const auto known = taskIndex.find(entered); known != taskIndex.end()) tasks[known->second].entered = true;
        Tell(StateChange{PathOf(*watched.task), watched.state, state, entered ? entered->label : ""});
        watched.state = state;
    }
    for (WatchedVariable& watched : variables) {
        const Variable& variable = *watched.variable;
        if (variable.value == watched.value) continue;
        Tell(VariableChange{variable.name, variable.label, PlaceOf(variable), watched.value, variable.value});
        watched.value = variable.value;
    }
    CompareScores();
    if (scenario.paused != paused) Tell(Pause{scenario.paused != 0});
    if (scenario.stopped && !stopped) Tell(Stop{});
    paused = scenario.paused;
    stopped = scenario.stopped;
}

void Trace::CompareScores() {
    if (!scenario.evaluation) return;
    for (const auto& [number, value] : scenario.evaluation->scores) {
        const auto former = scores.find(number);
        const float before = former == scores.end() ? 0 : former->second;
        if (before == value) continue;
        Tell(ScoreChange{number, static_cast<double>(before), static_cast<double>(value)});
        scores[number] = value;
    }
}

RunEnd Trace::Summary() const {
    RunEnd end;
    end.stopped = scenario.stopped != 0;
    end.rulesFired = rulesFired;
    for (const auto& [rule, fired] : rules) {
        if (!fired) end.neverTrue.push_back(PathOf(*rule));
        if (fired && (rule->evaluation == "WARNING" || rule->evaluation == "ERROR"))
            end.evaluation.push_back({PathOf(*rule), rule->label, rule->evaluation});
    }
    // Criteria and includes are no states: they run side by side.
    for (const WatchedTask& watched : tasks)
        if (watched.task->kind == KindTask && !watched.entered) end.neverEntered.push_back(PathOf(*watched.task));
    for (const auto& [number, value] : scores) end.scores.emplace_back(number, static_cast<double>(value));
    return end;
}

} // namespace TavrelSimulation
