#include "ModelTexts.h"

#include <string_view>
#include <vector>

#include <scenario/ScenarioItem.h>

namespace modelTexts {

namespace {

// Writes the text format, tabs and all.
class Writer {
public:
    void Begin(std::string_view word, std::string_view name) {
        text += '\n';
        Indent();
        text.append("TYPEOF ").append(word).append(" (").append(name).append(")\n");
        Indent();
        text += "{\n";
        ++depth;
    }
    void End() {
        --depth;
        Indent();
        text += "}\n";
    }
    void Attribute(std::string_view key, std::string_view value) {
        Indent();
        text.append(key).append("=\"").append(value).append("\"\n");
    }
    std::size_t Size() const { return text.size(); }
    std::string Take() { return std::move(text); }

private:
    void Indent() { text.append(depth, '\t'); }
    std::size_t depth = 0;
    std::string text;
};

std::string Name(const char* stem, std::size_t number) { return stem + std::to_string(number); }

constexpr std::size_t kCallsPerTab = 20;

const char* KindListOf(std::size_t call) { return call % kCallsPerTab == 0 ? "USER ENUM VARIABLE" : "USER VARIABLE"; }

void AddParameterDefinition(Writer& out, std::size_t call, const char* stem) {
    out.Begin("PARAMETER", Name(stem, call));
    out.Attribute("LABEL", "Parameter of a call");
    out.Attribute("UNIT", "m/s");
    out.Attribute("TYPE", "FLOAT");
    out.Attribute("USAGE", "BY_VALUE");
    if (call % kCallsPerTab == 0) out.Attribute("ENUMTAB", Name("TAB_", call));
    out.Attribute("KINDLIST", KindListOf(call));
    out.Attribute("MINVALUE", "0");
    out.Attribute("MAXVALUE", "100");
    out.Attribute("KIND", "USER");
    out.Attribute("VALUE", "12.5");
    out.Attribute("OWNER_FILE", "");
    out.End();
}

void AddParameter(Writer& out, std::size_t call, const char* stem, std::size_t value) {
    out.Begin("PARAMETER", Name(stem, call));
    out.Attribute("KIND", "USER");
    out.Attribute("VALUE", std::to_string(value % 100));
    out.Attribute("OWNER_FILE", "");
    out.End();
}

void AddCall(Writer& out, const char* word, const char* stem, std::size_t call, std::size_t value) {
    out.Begin(word, Name(stem, call));
    AddParameter(out, call, "FIRST_", value);
    AddParameter(out, call, "SECOND_", value + 1);
    out.End();
}

// Which call stands under which word: a third each for actions, conditions and functions.
constexpr struct {
    const char* list;
    const char* word;
    const char* stem;
} kCallLists[] = {{"FUNCTION_LIST", "FUNCTION", "FUNCTION_"},
                  {"ACTION_LIST", "ACTION", "ACTION_"},
                  {"CONDITION_LIST", "CONDITION", "CONDITION_"}};

void AppendXmlText(std::string& xml, std::string_view text) {
    for (const char c : text) {
        if (c == '&') {
            xml += "&amp;";
        } else if (c == '<') {
            xml += "&lt;";
        } else {
            xml += c;
        }
    }
}

} // namespace

std::string Model(std::size_t calls) {
    Writer out;
    out.Begin("FOLDER", "model");
    out.Begin("FOLDER", "ENUMTAB_LIST");
    for (std::size_t call = 0; call < calls; call += kCallsPerTab) {
        out.Begin("ENUMTAB", Name("TAB_", call));
        for (std::size_t entry = 0; entry < 5; ++entry) {
            out.Begin("ENUM", std::to_string(entry));
            out.Attribute("LABEL", "Entry");
            out.Attribute("TYPE", "FLOAT");
            out.Attribute("VALUE", std::to_string(entry));
            out.End();
        }
        out.End();
    }
    out.End();
    out.Begin("FOLDER", "PARAMETER_LIST");
    for (std::size_t call = 0; call < calls; ++call) {
        AddParameterDefinition(out, call, "FIRST_");
        AddParameterDefinition(out, call, "SECOND_");
    }
    out.End();
    for (const auto& list : kCallLists) {
        out.Begin("FOLDER", list.list);
        for (std::size_t call = 0; call < calls; ++call) {
            out.Begin(list.word, Name(list.stem, call));
            out.Attribute("LABEL", "Call of two");
            out.Attribute("CODE", std::to_string(call));
            AddParameter(out, call, "FIRST_", 1);
            AddParameter(out, call, "SECOND_", 2);
            out.End();
        }
        out.End();
    }
    out.End();
    return out.Take();
}

std::string Script(std::size_t calls, std::size_t bytes) {
    Writer out;
    out.Begin("SCENARIO", "script");
    std::size_t call = 0;
    const auto next = [&] { return call = (call + 7919) % calls; };
    for (std::size_t task = 0; out.Size() < bytes; ++task) {
        out.Begin("TASK", std::to_string(task));
        out.Attribute("LABEL", "State");
        for (std::size_t rule = 0; rule < 10 && out.Size() < bytes; ++rule) {
            out.Begin("RULE", std::to_string(rule));
            out.Attribute("LABEL", "Rule of three calls");
            AddCall(out, "CONDITION", "CONDITION_", next(), rule);
            AddCall(out, "ACTION", "ACTION_", next(), rule);
            AddCall(out, "ELSE_ACTION", "ACTION_", next(), rule);
            out.End();
        }
        out.End();
    }
    out.End();
    return out.Take();
}

std::string AsXml(const std::string& text) {
    std::string xml;
    xml.reserve(text.size() * 2);
    std::vector<std::string_view> open;
    bool isStartTagOpen = false;
    const auto closeStartTag = [&] {
        if (isStartTagOpen) xml += ">\n";
        isStartTagOpen = false;
    };
    ScenarioTextStream stream(text.c_str(), text.size());
    while (stream.cursor < stream.end) {
        const char* stop = stream.cursor;
        while (stop < stream.end && *stop != '\n') ++stop;
        const std::string_view line(stream.cursor, static_cast<std::size_t>(stop - stream.cursor));
        if (line.substr(0, 7) == "TYPEOF ") {
            closeStartTag();
            const std::size_t blank = line.find(' ', 7);
            open.push_back(line.substr(7, blank - 7));
            xml.append(open.size() - 1, '\t');
            xml.append("<").append(open.back()).append(" name=\"");
            AppendXmlText(xml, line.substr(blank + 2, line.size() - blank - 3));
            xml += '"';
            isStartTagOpen = true;
        } else if (line == "}") {
            if (isStartTagOpen) {
                xml += "/>\n";
                isStartTagOpen = false;
            } else {
                xml.append(open.size() - 1, '\t');
                xml.append("</").append(open.back()).append(">\n");
            }
            open.pop_back();
        } else if (line != "{") {
            xml += ' ';
            AppendXmlText(xml, line);
        }
        NextLine(stream);
    }
    return xml;
}

std::size_t CountItems(const ScenarioItem& item) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    std::size_t count = 1;
    for (const ScenarioItem* child : children) count += CountItems(*child);
    return count;
}

} // namespace modelTexts
