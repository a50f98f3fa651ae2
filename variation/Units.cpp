#include "Units.h"

#include <array>
#include <charconv>
#include <cstring>
#include <string>

#include <variation/Assignment.h>

namespace TavrelVariation {

std::string WithDigits(double number, int digits) {
    std::array<char, 40> text;
    return {
        text.data(),
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::scientific, digits - 1).ptr};
}

Decimal InUnit(const Decimal& number, lmk::t_unit from, lmk::t_unit to) {
    if (IsSameUnit(from, to)) return number;
    std::string digits = WithDigits(Converted(number.Number(), from, to), 15);
    // The mantissa's zeros are no decimals of the number.
    const std::size_t exponent = digits.find('e');
    if (exponent == std::string::npos) throw NoDecimal("the number does not fit");
    std::size_t end = exponent;
    while (end > 0 && digits[end - 1] == '0') --end;
    return Decimal::Read(digits.erase(end, exponent - end));
}

bool IsSameUnit(lmk::t_unit a, lmk::t_unit b) { return a == b || std::strcmp(lmk::toText(a), lmk::toText(b)) == 0; }

} // namespace TavrelVariation
