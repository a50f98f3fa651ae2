#ifndef COMMONS_UTF8_H
#define COMMONS_UTF8_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Commons::detail {

// The length of the well-formed sequence that begins at `at`, 0 if none does. `at` lies within the text.
size_t Utf8SequenceLength(std::string_view text, size_t at);

// The code point of a well-formed sequence.
char32_t Utf8CodePoint(std::string_view text, size_t at, size_t length);

// Appends a code point; one that is none (a surrogate, a number too large) becomes U+FFFD.
void AppendUtf8(std::string& out, char32_t point);

// Where the text ceases to be UTF-8, npos if it is throughout.
size_t FindBrokenUtf8(std::string_view text);

} // namespace Commons::detail

#endif
