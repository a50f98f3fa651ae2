#include "TraceText.h"

#include <cmath>

#include <fmt/format.h>
#include <scenario/task.h>

#include "Describe.h"
#include "Failure.h"

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

std::string OutcomesText(const std::vector<Outcome>& outcomes) {
    std::string text;
    for (const Outcome& outcome : outcomes)
        text += fmt::format("{}  {}{}\n", outcome.holds ? "holds" : "fails", OneLine(outcome.criterion),
                            outcome.margin ? fmt::format("  (margin {})", ShortNumber(*outcome.margin)) : "");
    return text;
}

std::string SummaryText(const RunEnd& end) {
    std::string text;
    const auto list = [&](const char* title, const std::vector<std::string>& entries) {
        if (!entries.empty()) text += fmt::format("{}:\n", title);
        for (const std::string& entry : entries) text += fmt::format("  {}\n", OneLine(entry));
    };
    list("rules that were never true", end.neverTrue);
    list("states that were never entered", end.neverEntered);
    std::vector<std::string> scores, findings;
    for (const auto& [number, value] : end.scores) scores.push_back(fmt::format("{}: {}", number, ShortNumber(value)));
    list("scores", scores);
    for (const Finding& finding : end.evaluation)
        findings.push_back(finding.evaluation + "  " + finding.rule + Quoted(finding.label));
    list("rules of the evaluation that fired", findings);
    return text + VerdictText(end);
}

std::string VerdictText(const RunEnd& end) {
    return end.criteria.empty() ? "" : OutcomesText(end.criteria) + fmt::format("verdict: {}\n", end.verdict);
}

std::string EventText(const Event& event) {
    return fmt::format("{:9.3f}  {}\n", event.time, std::visit(Line(), event.what));
}

namespace {

std::string ExplanationJson(const Explanation& explanation) {
    Json parts = Json::array(), looks = Json::array();
    for (const Explanation::Part& part : explanation.parts)
        parts.push_back({{"text", OneLine(part.text)},
                         {"depth", part.depth},
                         {"heldBack", part.heldBack},
                         {"nearest", part.nearest ? Json(*part.nearest) : Json()},
                         {"parts", part.parts},
                         {"mostHeld", part.mostHeld}});
    for (const Explanation::Look& look : explanation.looks)
        looks.push_back({{"time", look.time},
                         {"isLookedAt", look.isLookedAt},
                         {"value", look.value},
                         {"holds", look.holds},
                         {"values", look.values}});
    return DumpJson({{"rule", explanation.rule},
                     {"label", explanation.label},
                     {"isDisabled", explanation.isDisabled},
                     {"timesFired", explanation.timesFired},
                     {"seconds", explanation.seconds},
                     {"lookedAt", explanation.lookedAt},
                     {"parts", parts},
                     {"looks", looks}});
}

// What is told of a part at one step.
std::string LookLine(const Explanation& explanation, const Explanation::Look& look, std::size_t part) {
    const std::string values = OneLine(fmt::format("{}", fmt::join(look.values[part], ", ")));
    return fmt::format("             {}{:5}  {}{}\n", std::string(2 * explanation.parts[part].depth, ' '),
                       look.holds[part] ? "true" : "false", OneLine(explanation.parts[part].text),
                       values.empty() ? "" : fmt::format("  [{}]", values));
}

std::string PartLine(const Explanation::Part& part) {
    std::string line = fmt::format("  {}{}: held the rule back for {} s", std::string(2 * part.depth, ' '),
                                   OneLine(part.text), ShortNumber(std::round(part.heldBack * 1e6) / 1e6));
    if (part.nearest) line += fmt::format("; at the nearest the numbers were {} apart", ShortNumber(*part.nearest));
    if (part.parts > 0) line += fmt::format("; at most {} of its {} parts held at once", part.mostHeld, part.parts);
    return line + "\n";
}

} // namespace

std::string ExplanationText(const Explanation& explanation, bool asJson) {
    if (asJson) return ExplanationJson(explanation);
    std::string text =
        fmt::format("{}{} {}\n", OneLine(explanation.rule), Quoted(explanation.label),
                    explanation.timesFired == 0 ? "did not fire"
                                                : fmt::format("fired {}", Counted(explanation.timesFired, "time")));
    for (const Explanation::Look& look : explanation.looks) {
        text += fmt::format("{:9.3f}  {}\n", look.time,
                            !look.isLookedAt ? "the rule is not looked at"
                            : look.value     ? "the rule is true"
                                             : "the rule is not true");
        for (std::size_t part = 0; part < look.holds.size(); ++part) text += LookLine(explanation, look, part);
    }
    if (explanation.isDisabled) text += "The rule is disabled.\n";
    if (explanation.parts.empty()) text += "Without a condition it is true whenever it is looked at.\n";
    const double away = std::round((explanation.seconds - explanation.lookedAt) * 1e6) / 1e6;
    if (away > 0)
        text += fmt::format("For {} of {} s nobody looked at it, since another state was active.\n", ShortNumber(away),
                            ShortNumber(std::round(explanation.seconds * 1e6) / 1e6));
    std::string reasons;
    for (const Explanation::Part& part : explanation.parts)
        if (part.heldBack > 0 || part.parts > 0) reasons += PartLine(part);
    if (!reasons.empty()) text += "What kept it from being true:\n" + reasons;
    return text;
}

} // namespace tavrel
