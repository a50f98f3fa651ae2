#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <locale.h>

#include "TextChecks.h"

namespace TavrelChecking {

namespace {

constexpr std::string_view kWhite = " \t\n\v\f\r";

std::string_view WithoutWhite(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhite), text.size()));
    return text;
}

locale_t PlainLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

// The length of the number that the text begins with, blanks before it included; 0 if there is none.
std::size_t NumberLength(std::string_view text, double& number) {
    // Nearly all begin with a digit; then the two readers differ in hexadecimal numbers and in those out of range.
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    const bool isDigit = sign < text.size() && text[sign] >= '0' && text[sign] <= '9';
    if (isDigit && text.find_first_of("xX") == std::string_view::npos) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc()) return static_cast<std::size_t>(end - text.data());
    }
    const std::string copy(text);
    char* end = nullptr;
    number = strtod_l(copy.c_str(), &end, PlainLocale());
    return static_cast<std::size_t>(end - copy.c_str());
}

} // namespace

double NumberOf(std::string_view text) {
    double number = 0;
    NumberLength(text, number);
    return number;
}

namespace {

// Whether what was read to that length is a number, and not the beginning of a word that is none.
bool IsNumberOfLength(std::string_view text, std::size_t length, double number) {
    if (length == 0) return false;
    // A "0x" or an "infin" broken off is none.
    const std::string_view rest = text.substr(length);
    const std::string_view seen = WithoutWhite(text.substr(0, length));
    const bool isBrokenHex =
        (seen == "0" || seen == "+0" || seen == "-0") && (rest.starts_with('x') || rest.starts_with('X'));
    const bool isBrokenWord = std::isinf(number) && !rest.empty() && (rest[0] == 'i' || rest[0] == 'I');
    return !isBrokenHex && !isBrokenWord;
}

} // namespace

bool BeginsWithNumber(std::string_view text) {
    double number = 0;
    const std::size_t length = NumberLength(text, number);
    return IsNumberOfLength(text, length, number);
}

bool BeginsWithWholeNumber(std::string_view text) {
    text = WithoutWhite(text);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text[0] >= '0' && text[0] <= '9';
}

int WholeNumberOf(std::string_view text) {
    text = WithoutWhite(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range)
        return text.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    return error == std::errc() ? number : 0;
}

bool IsNumber(std::string_view text) {
    text = WithoutWhite(text);
    while (!text.empty() && kWhite.find(text.back()) != std::string_view::npos) text.remove_suffix(1);
    double number = 0;
    return !text.empty() && NumberLength(text, number) == text.size() && IsNumberOfLength(text, text.size(), number);
}

bool IsWholeNumber(std::string_view text) {
    text = WithoutWhite(text);
    while (!text.empty() && kWhite.find(text.back()) != std::string_view::npos) text.remove_suffix(1);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsOfType(std::string_view value, std::string_view type) {
    if (type == "FLOAT") return IsNumber(value);
    if (type == "INTEGER") return IsWholeNumber(value);
    if (type == "BOOL") return IsNumber(value) || value == "true" || value == "false";
    return true;
}

} // namespace TavrelChecking
