#include <algorithm>

#include <checking/Rules.h>

#include "../Context.h"
#include "../Describe.h"
#include "Commands.h"

namespace tavrel {

using TavrelChecking::Rule;

namespace {

Json RuleJson(const Rule& rule) {
    return {{"rule", rule.id},        {"name", rule.name},    {"severity", TavrelChecking::WordOf(rule.severity)},
            {"summary", rule.brief},  {"meaning", rule.full}, {"why", rule.why},
            {"example", rule.sample}, {"help", rule.remedy}};
}

std::string Indented(const std::string& text) {
    std::string result = "    ";
    for (const char c : text) {
        result += c;
        if (c == '\n') result += "    ";
    }
    return result;
}

std::string RuleText(const Rule& rule, const Output& out) {
    std::string text = fmt::format("{}  {} ({})\n\n{}\n\n{}\n", out.Strong(rule.id), rule.name,
                                   TavrelChecking::WordOf(rule.severity), rule.full, rule.why);
    if (*rule.sample) text += fmt::format("\nExample:\n{}\n", Indented(rule.sample));
    return text + fmt::format("\nRemedy: {}\n", rule.remedy);
}

} // namespace

int RunExplain(Context& context) {
    const bool asJson = context.arguments.Has("--json") || context.arguments.Text("--format") == "json";
    const std::vector<Rule>& rules = TavrelChecking::Rules();
    if (!context.arguments.Has("ID")) {
        Json all = Json::array();
        for (const Rule& rule : rules)
            if (asJson)
                all.push_back(RuleJson(rule));
            else
                context.out.Print("{}  {:24} {:8} {}\n", rule.id, rule.name, TavrelChecking::WordOf(rule.severity),
                                  rule.brief);
        if (asJson) context.out.Print(DumpJson(all));
        return context.status;
    }
    const std::string id = context.arguments.Text("ID");
    const Rule* const rule = TavrelChecking::FindRule(id);
    if (!rule) {
        std::vector<std::string> names;
        for (const Rule& known : rules) names.insert(names.end(), {known.id, known.name});
        throw Failure{ExitUsage,
                      fmt::format("there is no rule \"{}\"{}; 'tavrel explain' lists all", id, DidYouMean(id, names))};
    }
    context.out.Print(asJson ? DumpJson(RuleJson(*rule)) : RuleText(*rule, context.out));
    return context.status;
}

} // namespace tavrel
