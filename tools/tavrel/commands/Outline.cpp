#include <scenario/Condition.h>
#include <scenario/Criteria.h>
#include <scenario/action.h>
#include <scenario/evaluation.h>
#include <scenario/rule.h>
#include <scenario/variable.h>

#include "../Describe.h"
#include "../ScriptRows.h"
#include "../Scripts.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

// A line of the outline, with what stands below it.
struct Line {
    std::string kind; // "state", "rule", "if", "then" and so on
    std::string text;
    const ScenarioItem* item;
    std::vector<Line> below;
};

std::string Title(const ScenarioItem& item) {
    if (item.label.empty()) return item.name;
    return item.name.empty() ? item.label : fmt::format("{} ({})", item.label, item.name);
}

Line ConditionLine(const std::string& kind, const Condition& condition) {
    Line line{kind, condition.displayText, &condition, {}};
    for (const Condition* part : condition.subConditions) line.below.push_back(ConditionLine("part", *part));
    return line;
}

Line VariableLine(const Variable& variable) {
    return {
        "variable", fmt::format("{} = {} ({})", Title(variable), variable.initialValue, variable.type), &variable, {}};
}

Line RuleLine(const Rule& rule) {
    Line line{"rule", Title(rule), &rule, {}};
    if (rule.evaluation == "WARNING" || rule.evaluation == "ERROR") line.text += ", " + rule.evaluation;
    if (rule.disabled) line.text += ", disabled";
    for (const Variable* variable : rule.variables) line.below.push_back(VariableLine(*variable));
    for (const Condition* condition : rule.conditions) line.below.push_back(ConditionLine("if", *condition));
    for (const Action* action : rule.actions) line.below.push_back({"then", action->displayText, action, {}});
    for (const Action* action : rule.elseActions) line.below.push_back({"else", action->displayText, action, {}});
    return line;
}

std::string WordOf(const Task& task) {
    switch (task.kind) {
    case KindScenario:
        return "scenario";
    case KindInclude:
        return "include";
    case KindEvaluation:
        return "evaluation";
    case KindCriteria:
        return "criteria";
    default:
        return task.parent ? "state" : "task";
    }
}

Line TaskLine(const Task& task) {
    Line line{WordOf(task), Title(task), &task, {}};
    const auto* criteria = dynamic_cast<const Criteria*>(&task);
    if (criteria && criteria->disabled) line.text += ", disabled";
    // What a reference holds stands in a file of its own, which has an outline of its own.
    if (task.IsIndexEntry()) {
        line.text = task.fileName + (task.label.empty() ? "" : fmt::format(" ({})", task.label));
        return line;
    }
    std::vector<ScenarioItem*> children;
    task.GetChildren(children);
    for (const ScenarioItem* child : children)
        if (const auto* variable = dynamic_cast<const Variable*>(child))
            line.below.push_back(VariableLine(*variable));
        else if (const auto* rule = dynamic_cast<const Rule*>(child))
            line.below.push_back(RuleLine(*rule));
        else if (const auto* below = dynamic_cast<const Task*>(child))
            line.below.push_back(TaskLine(*below));
    return line;
}

// Display texts part their pieces by several blanks.
std::string Joined(const std::string& text) {
    std::string joined;
    for (const char c : OneLine(text))
        if (c != ' ' || (!joined.empty() && joined.back() != ' ')) joined += c;
    return joined;
}

void PrintLine(Output& out, const Line& line, const ScriptRows& rows, const std::string& indent) {
    const std::uint32_t row = rows.Of(*line.item).row;
    // The display text of a call begins with its own word: IF, THEN, ELSE.
    const bool isCall = line.kind == "if" || line.kind == "then" || line.kind == "else";
    const std::string word = isCall ? "" : line.kind == "part" ? "- " : out.Strong(line.kind) + " ";
    out.Print("{}  {}{}{}\n", out.Faint(fmt::format("{:>6}", row == 0 ? "" : std::to_string(row))), indent, word,
              ShownText(Joined(line.text)));
    for (const Line& below : line.below) PrintLine(out, below, rows, indent + "  ");
}

Json LineJson(const Line& line, const ScriptRows& rows) {
    const ScriptRows::Place place = rows.Of(*line.item);
    Json json = {{"kind", line.kind},         {"name", line.item->name},
                 {"label", line.item->label}, {"text", line.text},
                 {"file", place.file},        {"row", place.row == 0 ? Json() : Json(place.row)},
                 {"children", Json::array()}};
    for (const Line& below : line.below) json["children"].push_back(LineJson(below, rows));
    return json;
}

} // namespace

int RunOutline(Context& context) {
    const LoadedScript loaded = LoadScript(context, context.arguments.Text("SCRIPT"));
    const auto* task = dynamic_cast<const Task*>(loaded.root.get());
    if (!task) throw Failure{ExitUnreadable, loaded.title + " holds no states and rules"};
    UpdateDisplayTexts(*loaded.root);
    const ScriptRows rows = RowsOf(loaded);
    const Line line = TaskLine(*task);
    if (context.arguments.Has("--json"))
        context.out.Print(DumpJson(LineJson(line, rows)));
    else
        PrintLine(context.out, line, rows, "");
    return context.status;
}

} // namespace tavrel
