#include "XmlEscape.h"

#include <cstddef>
#include <cstdint>

namespace TavrelVariation {

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

// How many bytes the character at the beginning of `text` has; 0 if it is no UTF-8 or cannot stand in XML.
std::size_t CharacterSize(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[at])); };
    const std::uint32_t first = byte(0);
    if (first < 0x80) return first >= 0x20 || first == '\t' || first == '\n' || first == '\r' ? 1 : 0;
    const std::size_t size = first >= 0xF0 && first < 0xF5 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
    if (size == 0 || first >= 0xF5 || text.size() < size) return 0;
    std::uint32_t code = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) return 0;
        code = code << 6 | (byte(i) & 0x3FU);
    }
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kLeast[size] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return 0;
    return code == 0xFFFE || code == 0xFFFF ? 0 : size;
}

} // namespace

std::string XmlEscaped(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size() + text.size() / 8);
    while (!text.empty()) {
        const std::size_t size = CharacterSize(text);
        const std::string_view character = text.substr(0, size == 0 ? 1 : size);
        if (size == 0)
            escaped += kReplacement;
        else if (character == "&")
            escaped += "&amp;";
        else if (character == "<")
            escaped += "&lt;";
        else if (character == ">")
            escaped += "&gt;";
        else if (character == "\"")
            escaped += "&quot;";
        else if (character == "\n")
            escaped += "&#10;";
        else if (character == "\r")
            escaped += "&#13;";
        else if (character == "\t")
            escaped += "&#9;";
        else
            escaped += character;
        text.remove_prefix(character.size());
    }
    return escaped;
}

} // namespace TavrelVariation
