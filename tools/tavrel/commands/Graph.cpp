#include <fstream>
#include <set>

#include <scenario/Parameter.h>
#include <scenario/action.h>
#include <simulation/Trace.h>

#include "../Describe.h"
#include "../Scripts.h"
#include "Commands.h"

namespace tavrel {

namespace {

constexpr const char* kVisited = "#2e7d32";

// What a run went through, by the places that its trace names.
struct Visited {
    bool known = false;           // whether a trace was given at all
    std::set<std::string> states; // place of the task and number of the state
    std::set<std::string> rules;  // place of the rule
};

std::string StateKey(const std::string& task, std::int32_t state) { return task + " -> " + std::to_string(state); }

Visited ReadTrace(const std::string& path) {
    Visited visited;
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    std::ifstream file(path);
    std::size_t row = 0;
    for (std::string line; std::getline(file, line);) {
        ++row;
        const Json event = Json::parse(line, nullptr, false);
        if (!event.is_object() || !event.contains("event"))
            throw Failure{ExitUnreadable,
                          fmt::format("{}:{}: this is no event of 'tavrel run --trace json'", path, row)};
        if (event["event"] == "state") visited.states.insert(StateKey(event.value("task", ""), event.value("to", -1)));
        if (event["event"] == "rule" && event.value("value", false))
            visited.rules.insert(event.value("place", "") + " / RULE (" + event.value("rule", "") + ")");
    }
    return visited;
}

// Text for a quoted string of the dot language. Bytes that are no UTF-8 would end the program that draws.
std::string Quoted(const std::string& text) {
    return Json(text).dump(-1, ' ', false,
                           Json::error_handler_t::replace); // the escapes of JSON for quotes, backslashes and line ends
                                                            // are those of the dot language
}

std::string Title(const ScenarioItem& item) {
    return item.label.empty() ? item.name : item.label + " (" + item.name + ")";
}

// One task becomes a cluster; its states are clusters in it if they have states of their own, else nodes.
class Drawing {
public:
    Drawing(const Visited& visitedPlaces) : visited(visitedPlaces) {}

    std::string Draw(Task& root, const std::string& title) {
        text = fmt::format("digraph {} {{\n  compound=true; rankdir=LR; node [shape=box, style=rounded];\n",
                           Quoted(title));
        AddTask(root, "  ");
        for (const std::string& edge : edges) text += edge;
        return text + "}\n";
    }

private:
    // The node that edges to a state lead to: of a task with states, its entry point.
    std::string NodeOf(const Task& task) { return fmt::format("t{}", NumberOf(task)); }

    std::size_t NumberOf(const Task& task) { return numbers.emplace(&task, numbers.size()).first->second; }

    // Includes and criteria bear numbers too, but are no states of the task around them.
    bool WasVisited(const Task& task) const {
        const auto* around = dynamic_cast<const Task*>(task.parent);
        if (!around || task.kind != KindTask) return false;
        const std::ptrdiff_t index = around->StateIndex(std::atoi(task.name.c_str()));
        return index >= 0 && around->subTasks[static_cast<std::size_t>(index)] == &task &&
               visited.states.count(StateKey(TavrelSimulation::PathOf(*around), std::atoi(task.name.c_str()))) != 0;
    }

    void AddTask(Task& task, const std::string& indent) {
        std::vector<ScenarioItem*> children;
        task.GetChildren(children);
        std::vector<Task*> states;
        for (ScenarioItem* child : children)
            if (auto* state = dynamic_cast<Task*>(child)) states.push_back(state);
        const std::string colour = WasVisited(task) ? fmt::format(", color=\"{}\", penwidth=2", kVisited) : "";
        const bool off = IsDisabled(task);
        if (states.empty() && task.parent) {
            text += fmt::format("{}{} [label={}{}{}];\n", indent, NodeOf(task), Quoted(Title(task)), colour,
                                off                     ? ", style=\"rounded,dashed\""
                                : task.kind == KindTask ? ""
                                                        : ", shape=folder, style=solid");
        } else {
            text += fmt::format("{}subgraph cluster_{} {{\n{}  label={};{}{}\n", indent, NodeOf(task), indent,
                                Quoted(fmt::format("{} {}", KindKeyword(task.kind), Title(task))),
                                off ? " style=dashed;" : "",
                                colour.empty() ? "" : fmt::format(" color=\"{}\"; penwidth=2;", kVisited));
            text += fmt::format("{}  {} [shape=point, label=\"\", xlabel=\"\"];\n", indent, NodeOf(task));
            for (Task* state : states) AddTask(*state, indent + "  ");
            text += indent + "}\n";
            // The first state is entered at the start.
            if (!task.subTasks.empty() && task.subTasks.front()->kind == KindTask)
                edges.push_back(
                    fmt::format("  {} -> {} [arrowhead=vee];\n", NodeOf(task), NodeOf(*task.subTasks.front())));
        }
        for (const Rule* rule : task.rules) AddRule(task, *rule);
    }

    static bool IsDisabled(const Task& task) {
        const auto* criteria = dynamic_cast<const Criteria*>(&task);
        return criteria && criteria->disabled;
    }

    // An edge for each action that names a next state.
    void AddRule(Task& task, const Rule& rule) {
        for (const Action* action : rule.actions) AddAction(task, rule, *action, "");
        for (const Action* action : rule.elseActions) AddAction(task, rule, *action, "else: ");
    }

    void AddAction(Task& task, const Rule& rule, const Action& action, const std::string& branch) {
        auto* around = dynamic_cast<Task*>(task.parent);
        for (const Parameter* parameter : action.parameters) {
            if (parameter->valueKind != "TASK") continue;
            // A rule of a state mostly goes on to a sibling; one of a task, to a state of its own.
            Task* target = around ? StateOf(*around, parameter->value) : nullptr;
            if (!target) target = StateOf(task, parameter->value);
            if (target) AddEdge(NodeOf(task), NodeOf(*target), rule, branch);
        }
        if (action.name == "END_TASK" || action.name == "END_PARENT_TASK") {
            const std::string end = fmt::format("end{}", edges.size());
            edges.push_back(fmt::format("  {} [shape=doublecircle, label=\"\", width=0.15];\n", end));
            AddEdge(NodeOf(task), end, rule, branch);
        }
    }

    static Task* StateOf(const Task& task, const std::string& name) {
        for (Task* state : task.subTasks)
            if (state->name == name) return state;
        return nullptr;
    }

    void AddEdge(const std::string& from, const std::string& to, const Rule& rule, const std::string& branch) {
        std::string style;
        if (rule.disabled) style += ", style=dashed";
        if (visited.rules.count(TavrelSimulation::PathOf(rule)) != 0)
            style += fmt::format(", color=\"{}\", penwidth=2", kVisited);
        edges.push_back(fmt::format("  {} -> {} [label={}{}];\n", from, to, Quoted(branch + Title(rule)), style));
    }

    const Visited& visited;
    std::string text;
    std::vector<std::string> edges; // after all nodes, since a node belongs to the cluster that names it first
    std::map<const Task*, std::size_t> numbers;
};

} // namespace

int RunGraph(Context& context) {
    const LoadedScript loaded = LoadScript(context, context.arguments.Text("SCRIPT"));
    auto* task = dynamic_cast<Task*>(loaded.root.get());
    if (!task) throw Failure{ExitUnreadable, loaded.title + " holds no state machine"};
    const Visited visited = context.arguments.Has("--trace") ? ReadTrace(context.arguments.Text("--trace")) : Visited();
    const std::string text = Drawing(visited).Draw(*task, loaded.title);
    if (context.arguments.Has("--output"))
        SaveFile(context.arguments.Text("--output"), text);
    else
        context.out.Print(std::string_view(text));
    return context.status;
}

} // namespace tavrel
