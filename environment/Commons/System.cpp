#include <Commons/System.h>

#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>

#include <Poco/RegularExpression.h>

namespace Commons::System {

const char* const DaemonVariableMatchingPattern = R"(\$\{([A-Za-z_][A-Za-z0-9_]*)\})";

namespace {

// Where a variable stands in a text, "${NAME}" with the braces, and its name.
struct Occurrence {
    size_t begin;
    size_t length;
    std::string name;
};

bool BeginsName(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
bool ContinuesName(char c) { return BeginsName(c) || (c >= '0' && c <= '9'); }

// The common pattern by hand: a path of any length must neither cost time nor stack, which engines for expressions
// do not promise.
std::optional<Occurrence> FindVariable(const std::string& text, size_t from) {
    for (size_t begin = text.find("${", from); begin != std::string::npos; begin = text.find("${", begin + 1)) {
        size_t end = begin + 2;
        if (end == text.size() || !BeginsName(text[end])) continue;
        while (end < text.size() && ContinuesName(text[end])) ++end;
        if (end < text.size() && text[end] == '}')
            return Occurrence{begin, end + 1 - begin, text.substr(begin + 2, end - begin - 2)};
    }
    return std::nullopt;
}

std::optional<Occurrence> FindMatch(const Poco::RegularExpression& expression, const std::string& text, size_t from) {
    Poco::RegularExpression::MatchVec groups;
    if (expression.match(text, from, groups) < 2 || groups[0].length == 0) return std::nullopt;
    return Occurrence{groups[0].offset, groups[0].length, text.substr(groups[1].offset, groups[1].length)};
}

std::optional<std::string> ValueOf(const std::string& name, const std::map<std::string, std::string>& variables) {
    if (const auto found = variables.find(name); found != variables.end()) return found->second;
    if (const char* value = std::getenv(name.c_str())) return value;
    return std::nullopt;
}

template <typename Find>
bool Expand(const std::string& in, std::string& out, const std::map<std::string, std::string>& variables, Find find) {
    std::string expanded;
    size_t done = 0;
    bool allKnown = true;
    while (const std::optional<Occurrence> variable = find(in, done)) {
        expanded.append(in, done, variable->begin - done);
        done = variable->begin + variable->length;
        if (const std::optional<std::string> value = ValueOf(variable->name, variables)) {
            expanded += *value;
        } else {
            expanded.append(in, variable->begin, variable->length);
            allKnown = false;
        }
    }
    expanded.append(in, done, std::string::npos);
    out = std::move(expanded); // last, since `in` may be the same object
    return allKnown;
}

} // namespace

bool ExpandLocalEnvironmentVariables(const std::string& in, std::string& out, const char* pattern,
                                     const std::map<std::string, std::string>& variables) {
    if (!pattern || std::strcmp(pattern, DaemonVariableMatchingPattern) == 0)
        return Expand(in, out, variables, FindVariable);
    try {
        const Poco::RegularExpression expression(pattern);
        return Expand(in, out, variables, [&expression](const std::string& text, size_t from) {
            return FindMatch(expression, text, from);
        });
    } catch (const std::exception&) { // Poco: no expression, or a match that exhausts the engine
        out = in;
        return false;
    }
}

} // namespace Commons::System
