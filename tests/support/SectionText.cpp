#include <support/SectionText.h>

#include <utility>

namespace {

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\t':
            result += "&#9;";
            break;
        case '\n':
            result += "&#10;";
            break;
        case '\r':
            result += "&#13;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string attribute(const std::string& name, const std::string& value) {
    return value.empty() ? "" : " " + name + "=\"" + escaped(value) + "\"";
}

} // namespace

SectionText::SectionText(std::string sectionName) : name(std::move(sectionName)) {}

SectionText& SectionText::parameter(const std::string& parameterName, const std::string& value, const std::string& type,
                                    const std::string& unit, const std::string& verboseName) {
    return line("<" + parameterName + attribute("type", type) + attribute("unit", unit) +
                attribute("verboseName", verboseName) + " ScenarioTreeValue=\"" + escaped(value) + "\"/>");
}

SectionText& SectionText::text(const std::string& field, const std::string& value) {
    return line("<" + field + ">" + escaped(value) + "</" + field + ">");
}

SectionText& SectionText::section(const SectionText& subSection) {
    content += subSection.element(1);
    return *this;
}

SectionText& SectionText::script(const std::string& scriptName, const std::string& scriptText) {
    return section(SectionText("ScenarioScript").text("scriptName", scriptName).text("text", scriptText));
}

SectionText& SectionText::line(const std::string& element) {
    content += "  " + element + "\n";
    return *this;
}

std::string SectionText::element(size_t depth) const {
    const std::string text = "<" + name + ">\n" + content + "</" + name + ">\n";
    std::string indented;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = text.find('\n', begin) + 1;
        indented += std::string(2 * depth, ' ') + text.substr(begin, end - begin);
        begin = end;
    }
    return indented;
}

std::string SectionText::file() const { return "<sce version=\"1\">\n" + element(1) + "</sce>\n"; }
