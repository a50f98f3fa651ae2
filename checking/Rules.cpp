#include <checking/Rules.h>

#include <algorithm>

namespace TavrelChecking {

const char* WordOf(Severity severity) {
    switch (severity) {
    case Severity::Note:
        return "note";
    case Severity::Warning:
        return "warning";
    case Severity::Error:
        break;
    }
    return "error";
}

const std::vector<Rule>& Rules() {
    static const std::vector<Rule> rules = [] {
        std::vector<Rule> all = {
#define RULE(number, name, severity, brief, full, why, sample, remedy)                                                 \
    {"TV" #number, name, Severity::severity, brief, full, why, sample, remedy},
#include "Rules.def"
#undef RULE
        };
        std::sort(all.begin(), all.end(),
                  [](const Rule& one, const Rule& other) { return std::string_view(one.id) < other.id; });
        return all;
    }();
    return rules;
}

const Rule* FindRule(std::string_view idOrName) {
    for (const Rule& rule : Rules())
        if (idOrName == rule.id || idOrName == rule.name) return &rule;
    return nullptr;
}

bool IsChosen(const Rule& rule, const std::vector<std::string>& choices) {
    return std::any_of(choices.begin(), choices.end(), [&](const std::string& choice) {
        return !choice.empty() && std::string_view(rule.id).starts_with(choice);
    });
}

} // namespace TavrelChecking
