#include "XmlEscape.h"

#include <Commons/CodePoint.h>

namespace TavrelVariation {

std::string XmlEscaped(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size() + text.size() / 8);
    while (!text.empty()) {
        const Commons::CodePoint point = Commons::FirstCodePoint(text);
        const std::string_view character = text.substr(0, point.size);
        if (!point.IsInXml())
            escaped += "\xEF\xBF\xBD"; // the replacement character
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
