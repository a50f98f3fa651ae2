#include "Utf8.h"

#include <array>
#include <cstdint>
#include <cstring>

#include <Commons/CodePoint.h>

namespace Commons {

CodePoint FirstCodePoint(std::string_view text) {
    const size_t size = detail::Utf8SequenceLength(text, 0);
    if (size == 0) return {static_cast<unsigned char>(text[0]), 1, false};
    return {detail::Utf8CodePoint(text, 0, size), size, true};
}

} // namespace Commons

namespace Commons::detail {

namespace {

constexpr unsigned kContinuationMask = 0xC0;
constexpr unsigned kContinuation = 0x80;

unsigned ByteAt(std::string_view text, size_t at) { return static_cast<unsigned char>(text[at]); }

bool ContinuesAt(std::string_view text, size_t at) {
    return at < text.size() && (ByteAt(text, at) & kContinuationMask) == kContinuation;
}

} // namespace

size_t Utf8SequenceLength(std::string_view text, size_t at) {
    const unsigned lead = ByteAt(text, at);
    if (lead < 0x80) return 1;
    const size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                          : (lead & 0xF0) == 0xE0        ? 3
                          : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                         : 0;
    for (size_t i = 1; i < length; ++i)
        if (!ContinuesAt(text, at + i)) return 0;
    if (length < 3) return length;
    // Overlong forms, surrogates and what lies beyond the last code point show in the second byte.
    const unsigned second = ByteAt(text, at + 1);
    if (lead == 0xE0 && second < 0xA0) return 0;
    if (lead == 0xED && second > 0x9F) return 0;
    if (lead == 0xF0 && second < 0x90) return 0;
    if (lead == 0xF4 && second > 0x8F) return 0;
    return length;
}

char32_t Utf8CodePoint(std::string_view text, size_t at, size_t length) {
    if (length == 1) return static_cast<char32_t>(ByteAt(text, at));
    char32_t point = ByteAt(text, at) & (0xFFU >> (length + 1));
    for (size_t i = 1; i < length; ++i) point = (point << 6) | (ByteAt(text, at + i) & 0x3F);
    return point;
}

void AppendUtf8(std::string& out, char32_t point) {
    if (point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) point = 0xFFFD;
    const auto append = [&out](char32_t byte) { out += static_cast<char>(byte); };
    const auto continuation = [&](int shift) { append(kContinuation | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0 | (point >> 6));
        continuation(0);
    } else if (point < 0x10000) {
        append(0xE0 | (point >> 12));
        continuation(6);
        continuation(0);
    } else {
        append(0xF0 | (point >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

size_t FindBrokenUtf8(std::string_view text) {
    // Scenario files are nearly all ASCII, so many bytes are passed at a time where possible.
    using Words = std::array<std::uint64_t, 8>;
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    size_t at = 0;
    while (at < text.size()) {
        for (Words words; at + sizeof words <= text.size(); at += sizeof words) {
            std::memcpy(words.data(), text.data() + at, sizeof words);
            std::uint64_t all = 0;
            for (const std::uint64_t word : words) all |= word;
            if (all & kHighBits) break;
        }
        while (at < text.size() && ByteAt(text, at) < 0x80) ++at;
        if (at == text.size()) break;
        const size_t length = Utf8SequenceLength(text, at);
        if (length == 0) return at;
        at += length;
    }
    return std::string_view::npos;
}

} // namespace Commons::detail
