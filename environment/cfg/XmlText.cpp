#include "XmlText.h"

#include <algorithm>
#include <cstring>

#include "../Commons/Xml.h"

namespace cfg::detail {

namespace {

constexpr std::string_view kCDataBegin = "<![CDATA[";
constexpr std::string_view kCDataEnd = "]]>";

bool StandsAt(std::string_view source, size_t position, std::string_view text) {
    return source.substr(std::min(position, source.size()), text.size()) == text;
}

// After the next occurrence of `text`, else the end.
size_t After(std::string_view source, size_t position, std::string_view text) {
    const size_t found = source.find(text, position);
    return found == std::string_view::npos ? source.size() : found + text.size();
}

// After the ">" of the tag in which `position` stands, outside of quotes.
size_t AfterTag(std::string_view source, size_t position) {
    while (position < source.size() && source[position] != '>') {
        const char c = source[position++];
        if (c == '"' || c == '\'') position = After(source, position, std::string_view(&c, 1));
    }
    return std::min(position + 1, source.size());
}

bool IsEmptyTag(std::string_view source, size_t afterTag) { return afterTag >= 2 && source[afterTag - 2] == '/'; }

// After a comment, a CDATA section or an instruction that begins at `position`; `position` if none does.
size_t AfterMarkup(std::string_view source, size_t position) {
    if (StandsAt(source, position, "<!--")) return After(source, position + 4, "-->");
    if (StandsAt(source, position, kCDataBegin)) return After(source, position + kCDataBegin.size(), kCDataEnd);
    if (StandsAt(source, position, "<?")) return After(source, position + 2, "?>");
    return position;
}

// The "</" that closes the element whose content begins at `position`.
size_t FindEndTag(std::string_view source, size_t position) {
    size_t open = 1;
    while ((position = source.find('<', position)) != std::string_view::npos) {
        if (const size_t after = AfterMarkup(source, position); after != position) {
            position = after;
        } else if (StandsAt(source, position, "</")) {
            if (--open == 0) return position;
            position = AfterTag(source, position);
        } else {
            position = AfterTag(source, position);
            if (!IsEmptyTag(source, position)) ++open;
        }
    }
    return source.size();
}

// References are resolved by the parser alone, so that a value reads the same however it is come by.
std::string Resolved(std::string_view text) {
    if (text.find('&') == std::string_view::npos) return std::string(text);
    const std::string element = "<v>" + std::string(text) + "</v>";
    pugi::xml_document document;
    document.load_buffer(element.data(), element.size(), Commons::detail::kXmlValueFlags | pugi::parse_ws_pcdata,
                         pugi::encoding_utf8);
    return document.first_child().child_value();
}

bool BeginsName(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || (c & '\x80') != 0;
}

bool ContinuesName(char c) { return BeginsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

} // namespace

bool IsXmlName(std::string_view name) {
    return !name.empty() && BeginsName(name.front()) && std::all_of(name.begin(), name.end(), ContinuesName);
}

size_t AttributeEnd(std::string_view source, size_t position) {
    return std::min(source.find(source[position - 1], position), source.size());
}

std::string AttributeText(std::string_view source, size_t position) {
    std::string_view text = source.substr(position, AttributeEnd(source, position) - position);
    if (text.find('<') == std::string_view::npos) return Resolved(text);
    // Not allowed there, yet read by the parser; between tags it would not be.
    std::string escaped;
    for (const char c : text) c == '<' ? escaped += "&lt;" : escaped += c;
    return Resolved(escaped);
}

ElementExtent FindElement(std::string_view source, size_t name) {
    const size_t afterTag = AfterTag(source, name);
    if (IsEmptyTag(source, afterTag)) return {name - 1, afterTag, afterTag, afterTag, true};
    const size_t endTag = FindEndTag(source, afterTag);
    return {name - 1, afterTag, endTag, AfterTag(source, endTag), false};
}

size_t FindElementEnd(std::string_view source, size_t position) {
    const size_t afterTag = AfterTag(source, position);
    return IsEmptyTag(source, afterTag) ? afterTag : AfterTag(source, FindEndTag(source, afterTag));
}

bool HoldsPlainText(std::string_view source, size_t name) {
    const size_t begin = AfterTag(source, name);
    return !IsEmptyTag(source, begin) && StandsAt(source, source.find('<', begin), "</");
}

ElementText ReadElementText(std::string_view source, size_t name) {
    ElementText content;
    size_t position = AfterTag(source, name);
    if (IsEmptyTag(source, position)) return content;
    const size_t begin = position;
    bool lastIsCData = false;
    while (position < source.size() && !StandsAt(source, position, "</")) {
        const size_t after = AfterMarkup(source, position);
        if (after == position && source[position] == '<') {
            content.hasElements = true;
            return content;
        }
        lastIsCData = StandsAt(source, position, kCDataBegin);
        if (after == position) {
            const size_t end = std::min(source.find('<', position), source.size());
            content.text += Resolved(source.substr(position, end - position));
            content.pieces.emplace_back(position, end);
            position = end;
            continue;
        }
        if (lastIsCData) {
            const size_t textBegin = position + kCDataBegin.size();
            content.text += source.substr(textBegin, after - kCDataEnd.size() - textBegin);
            content.pieces.emplace_back(position, after);
        }
        position = after;
    }
    content.isOneCData =
        lastIsCData && content.pieces.size() == 1 && content.pieces.front() == std::pair(begin, position);
    return content;
}

std::string_view LineStart(std::string_view source, size_t position) {
    size_t begin = position;
    while (begin > 0 && (source[begin - 1] == ' ' || source[begin - 1] == '\t')) --begin;
    if (begin == 0 || source[begin - 1] != '\n') return {};
    --begin;
    if (begin > 0 && source[begin - 1] == '\r') --begin;
    return source.substr(begin, position - begin);
}

std::string EscapedText(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        switch (text[i]) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '\r':
            escaped += "&#13;";
            break;
        case '>':
            // Plain, so that scripts stay readable, unless it would end a CDATA section.
            escaped += i >= 2 && text.substr(i - 2, 2) == "]]" ? "&gt;" : ">";
            break;
        default:
            escaped += text[i];
        }
    }
    return escaped;
}

std::string EscapedAttribute(std::string_view text, char quote) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '\t':
            escaped += "&#9;";
            break;
        case '\n':
            escaped += "&#10;";
            break;
        case '\r':
            escaped += "&#13;";
            break;
        default:
            if (c == quote)
                escaped += quote == '"' ? "&quot;" : "&apos;";
            else
                escaped += c;
        }
    }
    return escaped;
}

} // namespace cfg::detail
