#ifndef LMK_UNITS_H
#define LMK_UNITS_H

#include <environment/Export.h>

namespace lmk {

// Units of numeric values. Values are stored in SI units; a unit says in which form they are shown. The numbers are
// part of the interface.
// clang-format off
enum t_unit : int {
    UNIT_UNDEFINED = 0, // this and the next mean that there is no unit
    UNIT_NONE      = 1,

    UNIT_M = 2, UNIT_MM = 3, UNIT_CM = 4, UNIT_DM = 5, UNIT_KM = 6, UNIT_INCH = 7, UNIT_FOOT = 8, UNIT_YARD = 9,
    UNIT_MILE = 10, UNIT_NAUTICAL_MILE = 11,

    UNIT_S = 12, UNIT_MS = 13, UNIT_US = 14, UNIT_MINUTE = 15, UNIT_HOUR = 16, UNIT_DAY = 17,

    UNIT_KG = 18, UNIT_G = 19, UNIT_TONNE = 20, UNIT_POUND = 21,

    UNIT_HZ = 22, UNIT_KHZ = 23, UNIT_MHZ = 24,

    UNIT_RAD = 27, UNIT_MRAD = 28, UNIT_DEG = 29, UNIT_GRADE = 30, UNIT_TURN = 31,

    UNIT_PERCENT = 32, UNIT_PER_MILLE = 33,

    UNIT_V = 34, UNIT_MV = 35, UNIT_KV = 36, UNIT_A = 37, UNIT_MA = 38,

    UNIT_M3 = 40, UNIT_CM3 = 41, UNIT_L = 42, UNIT_ML = 43,

    UNIT_M_S = 50, UNIT_MM_S = 51, UNIT_FT_S = 52, UNIT_KM_H = 53, UNIT_MPH = 54, UNIT_KNOT = 55,

    UNIT_RAD_S = 58, UNIT_DEG_S = 59, UNIT_RPM = 60,

    UNIT_M_S2 = 61, UNIT_STANDARD_GRAVITY = 62, UNIT_RAD_S2 = 63, UNIT_DEG_S2 = 64,

    UNIT_N = 65, UNIT_DAN = 66, UNIT_KN = 67, UNIT_N_M = 68,

    UNIT_W = 70, UNIT_KW = 71, UNIT_HORSEPOWER = 72, UNIT_METRIC_HORSEPOWER = 73,

    UNIT_PA = 75, UNIT_HPA = 76, UNIT_KPA = 77, UNIT_MPA = 78, UNIT_BAR = 79, UNIT_MBAR = 80, UNIT_PSI = 81,

    UNIT_K = 85, UNIT_CELSIUS = 86, UNIT_FAHRENHEIT = 87,
};
// clang-format on

// The unit as text, such as "km/h"; empty for the two that mean no unit and for a number that is no unit. The text is
// never null and stays for the life of the process.
TAVREL_ENVIRONMENT_API const char* toText(t_unit unit);

// The unit of a text, UNIT_UNDEFINED for the empty text, an unknown one and null. Compared as it stands.
TAVREL_ENVIRONMENT_API t_unit toTUnit(const char* text);

// From SI to the unit named, and back. A number that is no unit leaves the value as it is.
TAVREL_ENVIRONMENT_API double convToUnit(t_unit unit, double value);
TAVREL_ENVIRONMENT_API double convToSI(t_unit unit, double value);

// Whether numbers of one unit can be told in the other: both are lengths, or both speeds. No unit, percent and per
// mille are one dimension. False for a number that is no unit.
TAVREL_ENVIRONMENT_API bool sameDimension(t_unit unit, t_unit other);

} // namespace lmk

#endif
