#include "ScriptVariables.h"

#include <algorithm>
#include <string_view>

#include <scenario/ScenarioItem.h>

namespace TavrelVariation {

namespace {

constexpr std::string_view kSeparators("\t\n\r\f\0", 5); // what ends a line for the reader, and the text

// Keys of a variable that the writer puts before VALUE.
constexpr std::string_view kBefore[] = {"IS_SELECTED", "IS_EXPANDED", "ISA_INDEX", "LABEL", "FILE", "TYPE"};

bool StandsBeforeValue(const ScenarioTextStream& stream) {
    const std::string_view rest(stream.cursor, static_cast<std::size_t>(stream.end - stream.cursor));
    return std::any_of(std::begin(kBefore), std::end(kBefore),
                       [&](std::string_view key) { return rest.starts_with(key); });
}

// The line end and the indentation right before `position`.
std::string LineBeginBefore(const std::string& text, std::size_t position) {
    std::size_t begin = position;
    while (begin > 0 && kSeparators.find(text[begin - 1]) != std::string_view::npos) --begin;
    const std::size_t feed = text.rfind('\n', position == 0 ? 0 : position - 1);
    if (feed == std::string::npos || feed < begin) return text.substr(begin, position - begin);
    return text.substr(feed > begin && text[feed - 1] == '\r' ? feed - 1 : feed,
                       position - (feed > begin && text[feed - 1] == '\r' ? feed - 1 : feed));
}

std::size_t EndOfLine(const std::string& text, std::size_t position) {
    return std::min(text.find_first_of(kSeparators, position), text.size());
}

class Scanner {
public:
    explicit Scanner(const std::string& script) : text(script), stream(script.c_str(), script.size() + 1) {}

    std::vector<VariableInText> Scan() {
        ScenarioItemKind kind = KindNone;
        std::string name;
        while (stream.cursor < stream.end && *stream.cursor != '\0') {
            if (ReadHeader(stream, kind, name)) {
                NextLine(stream);
                if (stream.cursor >= stream.end || *stream.cursor != '{') continue;
                NextLine(stream);
                if (kind == KindVariable && IsOfScript())
                    ScanVariable(name);
                else
                    open.push_back(kind);
            } else {
                if (*stream.cursor == '}' && !open.empty()) open.pop_back();
                NextLine(stream);
            }
        }
        return std::move(found);
    }

private:
    std::size_t Position() const { return static_cast<std::size_t>(stream.cursor - text.c_str()); }

    // What an include brings along belongs to it; nothing outside of a rule sees what is in it.
    bool IsOfScript() const {
        for (auto kind = open.rbegin(); kind != open.rend(); ++kind) {
            if (*kind == KindRule || *kind == KindInclude) return false;
            if (*kind == KindScenario || *kind == KindCriteria || *kind == KindEvaluation) return true;
        }
        return true;
    }

    // From after the brace to the closing one.
    void ScanVariable(const std::string& name) {
        VariableInText& variable = found.emplace_back();
        variable.name = name;
        // The line after which VALUE goes; without one that stands before it, the brace's.
        std::size_t after = text.rfind('{', Position()) + 1;
        const std::size_t firstLine = Position();
        std::string value;
        bool any = false;
        while (stream.cursor < stream.end && *stream.cursor != '\0' && *stream.cursor != '}') {
            any = true;
            // Most lines are of other keys.
            const char first = *stream.cursor;
            if (first == 'V' && ReadStringAttribute(stream, "VALUE", value)) {
                // The first value counts; an empty one leaves the place to a later line.
                if (variable.value.empty()) {
                    variable.hasValueLine = true;
                    variable.value = value;
                    variable.valueBegin = Position() + std::string_view("VALUE=\"").size();
                }
            } else if (first == 'T' && ReadStringAttribute(stream, "TYPE", value)) {
                variable.type = value;
            } else if (first == 'I' && ReadStringAttribute(stream, "INTERACTIVE_TYPE", value)) {
                variable.interactiveType = value;
            }
            if (!variable.hasValueLine && StandsBeforeValue(stream)) after = Position();
            NextLine(stream);
        }
        if (!variable.hasValueLine) {
            variable.valueBegin = std::min(EndOfLine(text, after), text.size());
            variable.lineBegin = LineBeginBefore(text, any ? firstLine : Position());
            if (!any) variable.lineBegin += '\t';
        }
        if (stream.cursor < stream.end && *stream.cursor == '}') NextLine(stream);
    }

    const std::string& text;
    ScenarioTextStream stream;
    std::vector<ScenarioItemKind> open; // the items around the cursor
    std::vector<VariableInText> found;
};

} // namespace

std::vector<VariableInText> VariablesIn(const std::string& script) { return Scanner(script).Scan(); }

void PutValue(std::string& script, std::vector<VariableInText>& variables, std::size_t index,
              const std::string& value) {
    VariableInText& variable = variables[index];
    const std::size_t former = script.size(), place = variable.valueBegin;
    if (variable.hasValueLine) {
        script.replace(place, variable.value.size(), value);
    } else {
        const std::string line = variable.lineBegin + "VALUE=\"";
        script.insert(place, line + value + "\"");
        variable.valueBegin += line.size();
        variable.hasValueLine = true;
    }
    variable.value = value;
    // What stands after it has moved.
    for (std::size_t i = 0; i < variables.size(); ++i)
        if (i != index && variables[i].valueBegin > place) variables[i].valueBegin += script.size() - former;
}

} // namespace TavrelVariation
