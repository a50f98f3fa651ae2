#include <variation/Decimal.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include <Commons/ShortestNumber.h>
#include <boost/multiprecision/cpp_int.hpp>

namespace TavrelVariation {

namespace {

using Wide = boost::multiprecision::int128_t;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

constexpr std::array<std::int64_t, 19> kPowers = [] {
    std::array<std::int64_t, 19> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

std::int64_t Narrow(const Wide& number) {
    if (number > kLargest || number < -kLargest) throw NoDecimal("the number does not fit, it has more than 18 digits");
    return static_cast<std::int64_t>(number);
}

// number / divisor, half away from zero.
Wide Rounded(const Wide& number, const Wide& divisor) {
    const Wide half = divisor / 2;
    Wide quotient = number / divisor;
    const Wide rest = number % divisor;
    const Wide size = rest < 0 ? Wide(-rest) : rest;
    if (size > half || (size == half && divisor % 2 == 0)) quotient += number < 0 ? -1 : 1;
    return quotient;
}

} // namespace

std::int64_t RoundedQuotient(std::int64_t factor1, std::int64_t factor2, std::int64_t divisor) {
    return Narrow(Rounded(Wide(factor1) * factor2, divisor));
}

std::int64_t Sum(std::int64_t a, std::int64_t b) { return Narrow(Wide(a) + b); }
std::int64_t Difference(std::int64_t a, std::int64_t b) { return Narrow(Wide(a) - b); }

Decimal Decimal::Read(std::string_view text) {
    const auto refuse = [&] { throw NoDecimal("\"" + std::string(text) + "\" is no decimal number"); };
    const auto tooLong = [&] { throw NoDecimal("\"" + std::string(text) + "\" has more digits than can be kept, 18"); };
    std::size_t at = 0;
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;

    // Zeros at the end of a fraction are kept aside, since "0.50" has two decimals but a long row of zeros need not
    // fit.
    std::int64_t units = 0;
    long decimals = 0;
    std::size_t digits = 0;
    bool afterPoint = false;
    for (; at < text.size(); ++at) {
        if (text[at] == '.' && !afterPoint) {
            afterPoint = true;
            continue;
        }
        if (!IsDigit(text[at])) break;
        ++digits;
        const int digit = text[at] - '0';
        if (units > (kLargest - digit) / 10) tooLong();
        units = units * 10 + digit;
        if (afterPoint) ++decimals;
    }
    if (digits == 0) refuse();
    if (at < text.size()) {
        if (text[at] != 'e' && text[at] != 'E') refuse();
        std::string_view exponentText = text.substr(at + 1);
        if (exponentText.size() > 1 && exponentText[0] == '+' && IsDigit(exponentText[1]))
            exponentText.remove_prefix(1);
        long exponent = 0;
        const auto [end, error] =
            std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
        if (error == std::errc::result_out_of_range) tooLong();
        if (error != std::errc() || end != exponentText.data() + exponentText.size()) refuse();
        if (exponent > 10000 || exponent < -10000) tooLong();
        decimals -= exponent;
    }
    if (units == 0 && decimals < 0) decimals = 0;
    for (; decimals < 0; ++decimals) {
        if (units > kLargest / 10) tooLong();
        units *= 10;
    }
    for (; decimals > kMostDecimals && units % 10 == 0 && units != 0; --decimals) units /= 10;
    if (decimals > kMostDecimals) tooLong();
    return {negative ? -units : units, static_cast<int>(decimals)};
}

Decimal Decimal::Shortest(double number) {
    if (!std::isfinite(number)) throw NoDecimal("the number is not finite");
    return Read(Commons::ShortestNumber(number));
}

Decimal Decimal::Rounded(double number, int places) {
    double scaled = number;
    for (int i = 0; i < places; ++i) scaled *= 10;
    // std::round goes half away from zero. 2^63 is the first number that no longer fits.
    scaled = std::round(scaled);
    if (!(std::abs(scaled) < 9223372036854775808.0))
        throw NoDecimal("the number does not fit, it has more than 18 digits");
    return {static_cast<std::int64_t>(scaled), places};
}

std::string Decimal::Text() const {
    std::string text;
    AppendTo(text);
    return text;
}

void Decimal::AppendTo(std::string& text) const {
    if (units == 0) {
        text += '0';
        return;
    }
    std::uint64_t digits =
        units < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    int places = decimals;
    while (places > 0 && digits % 10 == 0) {
        digits /= 10;
        --places;
    }
    // From the end of the buffer to its front: at most the 40 decimals, 20 digits, a point and a sign.
    std::array<char, 64> buffer;
    char* at = buffer.data() + buffer.size();
    for (int place = 0; digits != 0 || place <= places; ++place) {
        if (place == places && place != 0) *--at = '.';
        *--at = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    if (units < 0) *--at = '-';
    text.append(at, static_cast<std::size_t>(buffer.data() + buffer.size() - at));
}

double Decimal::Number() const {
    const std::string text = Text();
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

Decimal Decimal::WithDecimals(int places) const {
    Decimal result{units, decimals};
    for (; result.decimals < places; ++result.decimals) {
        if (result.units == 0) {
            result.decimals = places;
            break;
        }
        if (std::abs(result.units) > kLargest / 10)
            throw NoDecimal("the number does not fit, it has more than 18 digits");
        result.units *= 10;
    }
    if (result.decimals == places) return result;
    const int cut = result.decimals - places;
    if (cut >= static_cast<int>(kPowers.size())) return {0, places};
    return {Narrow(TavrelVariation::Rounded(Wide(result.units), Wide(kPowers[static_cast<std::size_t>(cut)]))), places};
}

bool Decimal::IsWhole() const {
    std::int64_t left = units;
    int places = decimals;
    for (; places > 0 && left != 0 && left % 10 == 0; --places) left /= 10;
    return places == 0 || left == 0;
}

int Compare(const Decimal& a, const Decimal& b) {
    const auto order = [](const Wide& x, const Wide& y) { return x < y ? -1 : x > y ? 1 : 0; };
    if (a.decimals == b.decimals) return a.units < b.units ? -1 : a.units > b.units ? 1 : 0;
    if (a.decimals > b.decimals) return -Compare(b, a);
    if (a.units == 0) return order(0, b.units);
    // Beyond 18 places more, every number other than zero is larger than any that fits.
    const int more = b.decimals - a.decimals;
    if (more >= static_cast<int>(kPowers.size())) return a.units < 0 ? -1 : 1;
    return order(Wide(a.units) * kPowers[static_cast<std::size_t>(more)], b.units);
}

} // namespace TavrelVariation
