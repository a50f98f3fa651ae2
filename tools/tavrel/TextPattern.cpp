#include "TextPattern.h"

#include <Commons/TextPlaces.h>
#include <Poco/Unicode.h>

namespace tavrel {

namespace {

// Bytes that are no UTF-8 stay apart from all characters.
constexpr char32_t kNoCharacter = 0x110000;

char32_t Decoded(std::string_view bytes) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() == 1) return byte(0) < 0x80 ? byte(0) : kNoCharacter + byte(0);
    char32_t value = byte(0) & (0xFFU >> (bytes.size() + 1));
    for (std::size_t i = 1; i < bytes.size(); ++i) value = value << 6 | (byte(i) & 0x3FU);
    return value;
}

std::u32string Folded(std::string_view text) {
    std::u32string folded;
    folded.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t size = Commons::TextPlaces::CharacterLength(text, i);
        char32_t c = Decoded(text.substr(i, size));
        if (c < kNoCharacter) c = static_cast<char32_t>(Poco::Unicode::toLower(static_cast<int>(c)));
        folded += c == U'\\' ? U'/' : c;
        i += size;
    }
    return folded;
}

// Goes back to the last "*" alone, so that the time does not grow with each further one.
bool FitsWhole(std::u32string_view text, std::u32string_view pattern) {
    std::size_t t = 0, p = 0, star = std::u32string_view::npos, resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == U'*') {
            star = p++;
            resume = t;
        } else if (p < pattern.size() && (pattern[p] == U'?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star != std::u32string_view::npos) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == U'*') ++p;
    return p == pattern.size();
}

} // namespace

TextPattern::TextPattern(const std::string& pattern)
    : wanted(Folded(pattern)), isWhole(pattern.find_first_of("*?") != std::string::npos) {}

bool TextPattern::Fits(std::string_view text) const {
    const std::u32string folded = Folded(text);
    return isWhole ? FitsWhole(folded, wanted) : folded.find(wanted) != std::u32string::npos;
}

} // namespace tavrel
