#include "ShownText.h"

#include <cstdint>

#include <fmt/format.h>

namespace tavrel {

namespace {

struct CodePoint {
    std::uint32_t value;
    std::size_t size; // in bytes
    bool valid;       // false: a byte that is no UTF-8
};

CodePoint FirstOf(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t size = first < 0x80 ? 1 : first >> 5 == 6 ? 2 : first >> 4 == 14 ? 3 : first >> 3 == 30 ? 4 : 0;
    if (size == 1) return {first, 1, true};
    if (size == 0 || text.size() < size) return {first, 1, false};
    std::uint32_t value = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (byte(i) >> 6 != 2) return {first, 1, false};
        value = value << 6 | (byte(i) & 0x3FU);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kSmallest[size] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return {first, 1, false};
    return {value, size, true};
}

// Line separators, and what turns the direction of writing around.
bool IsHidden(std::uint32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

std::string WrittenOut(const CodePoint& c) {
    if (!c.valid) return fmt::format("\\x{:02x}", c.value);
    switch (c.value) {
    case '\t':
        return "\\t";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    default:
        return c.value < 0x80 ? fmt::format("\\x{:02x}", c.value) : fmt::format("\\u{:04x}", c.value);
    }
}

// Calls `take` with each code point as it is shown.
template <class Take>
void ForEachShown(std::string_view text, const Take& take) {
    while (!text.empty()) {
        const CodePoint c = FirstOf(text);
        if (c.valid && !IsHidden(c.value))
            take(c, std::string(text.substr(0, c.size)), std::size_t(1));
        else {
            const std::string written = WrittenOut(c);
            take(c, written, written.size());
        }
        text.remove_prefix(c.size);
    }
}

} // namespace

std::string ShownText(std::string_view text) {
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
        const CodePoint c = FirstOf(text);
        const std::string_view piece = text.substr(0, c.size);
        const bool allowed = c.valid && (c.value >= 0x20 || c.value == '\t' || c.value == '\n') && c.value != 0xFFFE &&
                             c.value != 0xFFFF;
        if (!allowed)
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
