#include "ShownText.h"

#include <algorithm>
#include <cstdint>

#include <Commons/CodePoint.h>
#include <fmt/format.h>

namespace tavrel {

namespace {

using Commons::CodePoint;

// Line separators, and what turns the direction of writing around.
bool IsHidden(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

std::string WrittenOut(const CodePoint& c) {
    const auto value = static_cast<std::uint32_t>(c.value);
    if (!c.isValid) return fmt::format("\\x{:02x}", value);
    switch (c.value) {
    case '\t':
        return "\\t";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    default:
        return value < 0x80 ? fmt::format("\\x{:02x}", value) : fmt::format("\\u{:04x}", value);
    }
}

// Calls `take` with each code point as it is shown.
template <class Take>
void ForEachShown(std::string_view text, const Take& take) {
    while (!text.empty()) {
        const CodePoint c = Commons::FirstCodePoint(text);
        if (c.isValid && !IsHidden(c.value))
            take(c, std::string(text.substr(0, c.size)), std::size_t(1));
        else {
            const std::string written = WrittenOut(c);
            take(c, written, written.size());
        }
        text.remove_prefix(c.size);
    }
}

} // namespace

bool IsShownAsItIs(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::string ShownText(std::string_view text) {
    if (IsShownAsItIs(text)) return std::string(text);
    std::string shown;
    ForEachShown(text, [&](const CodePoint&, const std::string& piece, std::size_t) { shown += piece; });
    return shown;
}

ShownLine ShownLineOf(std::string_view row) {
    ShownLine line;
    std::size_t column = 0;
    bool indents = true;
    ForEachShown(row, [&](const CodePoint& c, const std::string& piece, std::size_t width) {
        line.columns.push_back(column);
        indents = indents && c.value == '\t';
        line.text += indents ? "    " : piece;
        column += indents ? 4 : width;
    });
    line.columns.push_back(column);
    return line;
}

std::string XmlText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const CodePoint c = Commons::FirstCodePoint(text);
        const std::string_view piece = text.substr(0, c.size);
        if (!c.IsInXml() || c.value == '\r')
            result += WrittenOut(c);
        else if (piece == "&")
            result += "&amp;";
        else if (piece == "<")
            result += "&lt;";
        else if (piece == ">")
            result += "&gt;";
        else if (piece == "\"")
            result += "&quot;";
        else if (piece == "\n")
            result += "&#10;";
        else if (piece == "\t")
            result += "&#9;";
        else
            result += piece;
        text.remove_prefix(c.size);
    }
    return result;
}

} // namespace tavrel
