#ifndef COMMONS_CODEPOINT_H
#define COMMONS_CODEPOINT_H

#include <cstddef>
#include <string_view>

#include <environment/Export.h>

namespace Commons {

// A character of a text in UTF-8.
struct CodePoint {
    char32_t value;   // of a byte that is no UTF-8, the byte
    std::size_t size; // in bytes, at least 1
    bool isValid;     // false for a byte that is no UTF-8

    // Whether a file of XML 1.0 can hold it, as itself or as a reference.
    bool IsInXml() const {
        return isValid && (value >= 0x20 || value == '\t' || value == '\n' || value == '\r') && value != 0xFFFE &&
               value != 0xFFFF;
    }
};

// The first one of a text that is not empty.
TAVREL_ENVIRONMENT_API CodePoint FirstCodePoint(std::string_view text);

} // namespace Commons

#endif
