#include "text/NumberText.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <string_view>

#include <locale.h>

namespace {

// White space of the classic locale, which the conversions step over whatever locale the host has set.
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool IsHexDigit(char c) { return IsDigit(c) || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f'); }

// The first character after blanks and one sign. Every text ends with a NUL, which is none of these.
const char* SkipSign(const char* at) {
    while (IsSpace(*at)) ++at;
    if (*at == '+' || *at == '-') ++at;
    return at;
}

// Whether `at` begins with the lower-case `word`, in any case.
bool BeginsWith(const char* at, const char* word) {
    for (; *word; ++at, ++word)
        if ((*at | 0x20) != *word) return false;
    return true;
}

locale_t ClassicLocale() {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    return classic;
}

// Powers of ten that a double holds exactly.
constexpr std::array<double, 16> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Nearly every number of a script is a few plain digits, for which one division of two exact numbers gives the
// correctly rounded result. Answers false for all else, which goes to the library.
bool PlainNumber(const char* at, double& number) {
    const bool negative = *at == '-';
    if (negative) ++at;
    std::int64_t digits = 0;
    int count = 0;
    for (; IsDigit(*at); ++at, ++count) {
        if (count == 15) return false;
        digits = digits * 10 + (*at - '0');
    }
    std::size_t decimals = 0;
    if (*at == '.')
        for (++at; IsDigit(*at); ++at, ++count, ++decimals) {
            if (count == 15) return false;
            digits = digits * 10 + (*at - '0');
        }
    if (count == 0 || *at != '\0') return false;
    const double size = static_cast<double>(digits) / kPowersOfTen[decimals];
    number = negative ? -size : size;
    return true;
}

} // namespace

double NumberOf(const std::string& text) {
    double number = 0.0;
    if (PlainNumber(text.c_str(), number)) return number;
    return strtod_l(text.c_str(), nullptr, ClassicLocale());
}

float Narrow(double number) {
    constexpr float kMax = std::numeric_limits<float>::max();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    if (number > kMax) return kInfinity;
    if (number < -kMax) return -kInfinity;
    return static_cast<float>(number);
}

std::int32_t WholeNumberOf(const std::string& text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const char* at = text.c_str();
    while (IsSpace(*at)) ++at;
    const bool negative = *at == '-';
    std::int64_t number = 0;
    for (at = SkipSign(at); IsDigit(*at); ++at) {
        number = number * 10 + (negative ? '0' - *at : *at - '0');
        if (number > Limits::max()) return Limits::max();
        if (number < Limits::min()) return Limits::min();
    }
    return static_cast<std::int32_t>(number);
}

bool BeginsWithNumber(const std::string& text) {
    const char* at = SkipSign(text.c_str());
    // The word is read as far as it goes on: what begins as "infinity" has to end so.
    if (BeginsWith(at, "inf")) return (at[3] | 0x20) != 'i' || BeginsWith(at, "infinity");
    if (BeginsWith(at, "nan")) return true;
    if (at[0] == '0' && (at[1] | 0x20) == 'x') {
        // A point is taken for a digit here: "0x." converts, to 0.
        return at[2] == '.' || IsHexDigit(at[2]);
    }
    if (*at == '.') ++at;
    return IsDigit(*at);
}

bool BeginsWithWholeNumber(const std::string& text) { return IsDigit(*SkipSign(text.c_str())); }

std::string SixDecimals(double number) {
    // The largest double has 309 digits before the point.
    std::array<char, 400> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, 6);
    return std::string(buffer.data(), end.ptr);
}
