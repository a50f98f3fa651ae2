#ifndef TAVREL_VARIATION_UNITS_H
#define TAVREL_VARIATION_UNITS_H

#include <string>

#include <lmk/units.h>
#include <variation/Decimal.h>

namespace TavrelVariation {

// A number with so many digits, rounded, as "1.5e+01"; at most 20.
std::string WithDigits(double number, int digits);

// A number of `from` as a decimal of `to`, two units of one dimension; where they differ, with 15 digits, so that
// 90 km/h are 25 m/s and no more. Fails with NoDecimal for a number that does not fit.
Decimal InUnit(const Decimal& number, lmk::t_unit from, lmk::t_unit to);

// Whether the units are the same, or both none.
bool IsSameUnit(lmk::t_unit a, lmk::t_unit b);

} // namespace TavrelVariation

#endif
