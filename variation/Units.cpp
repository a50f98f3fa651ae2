#include "Units.h"

#include <variation/Assignment.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

namespace TavrelVariation {

Decimal InUnit(const Decimal& number, lmk::t_unit from, lmk::t_unit to) {
    if (IsSameUnit(from, to)) return number;
    std::array<char, 40> text;
    std::snprintf(text.data(), text.size(), "%.14e", Converted(number.Number(), from, to));
    std::string digits = text.data();
    // The mantissa's zeros are no decimals of the number, and the locale of the process may write a comma.
    std::replace(digits.begin(), digits.end(), ',', '.');
    const std::size_t exponent = digits.find('e');
    std::size_t end = exponent;
    while (end > 0 && digits[end - 1] == '0') --end;
    return Decimal::Read(digits.erase(end, exponent - end));
}

bool IsSameUnit(lmk::t_unit a, lmk::t_unit b) { return a == b || std::strcmp(lmk::toText(a), lmk::toText(b)) == 0; }

} // namespace TavrelVariation
