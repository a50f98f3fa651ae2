#include <lmk/units.h>

#include <cstring>
#include <numbers>

namespace lmk {

namespace {

// What a unit measures: numbers of one dimension can be told in each unit of it.
enum class Dimension {
    Number, // shares too
    Length,
    Time,
    Mass,
    Frequency, // of what happens so and so often, and no rotation
    Angle,
    Voltage,
    Current,
    Volume,
    Speed,
    Rotation,
    Acceleration,
    AngularAcceleration,
    Force,
    Torque,
    Power,
    Pressure,
    Temperature,
};

// SI = value * numerator / denominator + offset. The fraction keeps round values round: 180 km/h is exactly 50 m/s.
struct Row {
    t_unit unit;
    const char* text;
    double numerator;
    double denominator;
    double offset;
    Dimension dimension;
};

constexpr double kPi = std::numbers::pi;
constexpr double kPound = 0.45359237;        // in kg
constexpr double kStandardGravity = 9.80665; // in m/s2
constexpr double kHorsepower = 745.69987158227022;
constexpr double kPsi = 6894.757293168361;

// clang-format off
constexpr Row kUnits[] = {
    {UNIT_UNDEFINED,         "",      1.0,              1.0,     0.0,  Dimension::Number},
    {UNIT_NONE,              "",      1.0,              1.0,     0.0,  Dimension::Number},

    {UNIT_M,                 "m",     1.0,              1.0,     0.0,  Dimension::Length},
    {UNIT_MM,                "mm",    1.0,              1000.0,  0.0,  Dimension::Length},
    {UNIT_CM,                "cm",    1.0,              100.0,   0.0,  Dimension::Length},
    {UNIT_DM,                "dm",    1.0,              10.0,    0.0,  Dimension::Length},
    {UNIT_KM,                "km",    1000.0,           1.0,     0.0,  Dimension::Length},
    {UNIT_INCH,              "in",    254.0,            10000.0, 0.0,  Dimension::Length},
    {UNIT_FOOT,              "ft",    3048.0,           10000.0, 0.0,  Dimension::Length},
    {UNIT_YARD,              "yd",    9144.0,           10000.0, 0.0,  Dimension::Length},
    {UNIT_MILE,              "mi",    1609344.0,        1000.0,  0.0,  Dimension::Length},
    {UNIT_NAUTICAL_MILE,     "nmi",   1852.0,           1.0,     0.0,  Dimension::Length},

    {UNIT_S,                 "s",     1.0,              1.0,     0.0,  Dimension::Time},
    {UNIT_MS,                "ms",    1.0,              1000.0,  0.0,  Dimension::Time},
    {UNIT_US,                "us",    1.0,              1e6,     0.0,  Dimension::Time},
    {UNIT_MINUTE,            "min",   60.0,             1.0,     0.0,  Dimension::Time},
    {UNIT_HOUR,              "h",     3600.0,           1.0,     0.0,  Dimension::Time},
    {UNIT_DAY,               "d",     86400.0,          1.0,     0.0,  Dimension::Time},

    {UNIT_KG,                "kg",    1.0,              1.0,     0.0,  Dimension::Mass},
    {UNIT_G,                 "g",     1.0,              1000.0,  0.0,  Dimension::Mass},
    {UNIT_TONNE,             "t",     1000.0,           1.0,     0.0,  Dimension::Mass},
    {UNIT_POUND,             "lb",    kPound,           1.0,     0.0,  Dimension::Mass},

    {UNIT_HZ,                "Hz",    1.0,              1.0,     0.0,  Dimension::Frequency},
    {UNIT_KHZ,               "kHz",   1000.0,           1.0,     0.0,  Dimension::Frequency},
    {UNIT_MHZ,               "MHz",   1e6,              1.0,     0.0,  Dimension::Frequency},

    {UNIT_RAD,               "rad",   1.0,              1.0,     0.0,  Dimension::Angle},
    {UNIT_MRAD,              "mrad",  1.0,              1000.0,  0.0,  Dimension::Angle},
    {UNIT_DEG,               "deg",   kPi,              180.0,   0.0,  Dimension::Angle},
    {UNIT_GRADE,             "grad",  kPi,              200.0,   0.0,  Dimension::Angle},
    {UNIT_TURN,              "tr",    2.0 * kPi,        1.0,     0.0,  Dimension::Angle},

    {UNIT_PERCENT,           "%",     1.0,              100.0,   0.0,  Dimension::Number},
    {UNIT_PER_MILLE,         "\u2030", 1.0,            1000.0,  0.0,  Dimension::Number},

    {UNIT_V,                 "V",     1.0,              1.0,     0.0,  Dimension::Voltage},
    {UNIT_MV,                "mV",    1.0,              1000.0,  0.0,  Dimension::Voltage},
    {UNIT_KV,                "kV",    1000.0,           1.0,     0.0,  Dimension::Voltage},
    {UNIT_A,                 "A",     1.0,              1.0,     0.0,  Dimension::Current},
    {UNIT_MA,                "mA",    1.0,              1000.0,  0.0,  Dimension::Current},

    {UNIT_M3,                "m3",    1.0,              1.0,     0.0,  Dimension::Volume},
    {UNIT_CM3,               "cm3",   1.0,              1e6,     0.0,  Dimension::Volume},
    {UNIT_L,                 "L",     1.0,              1000.0,  0.0,  Dimension::Volume},
    {UNIT_ML,                "mL",    1.0,              1e6,     0.0,  Dimension::Volume},

    {UNIT_M_S,               "m/s",   1.0,              1.0,     0.0,  Dimension::Speed},
    {UNIT_MM_S,              "mm/s",  1.0,              1000.0,  0.0,  Dimension::Speed},
    {UNIT_FT_S,              "ft/s",  3048.0,           10000.0, 0.0,  Dimension::Speed},
    {UNIT_KM_H,              "km/h",  1000.0,           3600.0,  0.0,  Dimension::Speed},
    {UNIT_MPH,               "mph",   1609344.0,        3600000.0, 0.0,  Dimension::Speed},
    {UNIT_KNOT,              "kn",    1852.0,           3600.0,  0.0,  Dimension::Speed},

    {UNIT_RAD_S,             "rad/s", 1.0,              1.0,     0.0,  Dimension::Rotation},
    {UNIT_DEG_S,             "deg/s", kPi,              180.0,   0.0,  Dimension::Rotation},
    {UNIT_RPM,               "rpm",   kPi,              30.0,    0.0,  Dimension::Rotation},

    {UNIT_M_S2,              "m/s2",  1.0,              1.0,     0.0,  Dimension::Acceleration},
    {UNIT_STANDARD_GRAVITY,  "g0",    kStandardGravity, 1.0,     0.0,  Dimension::Acceleration},
    {UNIT_RAD_S2,            "rad/s2", 1.0,             1.0,     0.0,  Dimension::AngularAcceleration},
    {UNIT_DEG_S2,            "deg/s2", kPi,             180.0,   0.0,  Dimension::AngularAcceleration},

    {UNIT_N,                 "N",     1.0,              1.0,     0.0,  Dimension::Force},
    {UNIT_DAN,               "daN",   10.0,             1.0,     0.0,  Dimension::Force},
    {UNIT_KN,                "kN",    1000.0,           1.0,     0.0,  Dimension::Force},
    {UNIT_N_M,               "N.m",   1.0,              1.0,     0.0,  Dimension::Torque},

    {UNIT_W,                 "W",     1.0,              1.0,     0.0,  Dimension::Power},
    {UNIT_KW,                "kW",    1000.0,           1.0,     0.0,  Dimension::Power},
    {UNIT_HORSEPOWER,        "hp",    kHorsepower,      1.0,     0.0,  Dimension::Power},
    {UNIT_METRIC_HORSEPOWER, "ch",    735.49875,        1.0,     0.0,  Dimension::Power},

    {UNIT_PA,                "Pa",    1.0,              1.0,     0.0,  Dimension::Pressure},
    {UNIT_HPA,               "hPa",   100.0,            1.0,     0.0,  Dimension::Pressure},
    {UNIT_KPA,               "kPa",   1000.0,           1.0,     0.0,  Dimension::Pressure},
    {UNIT_MPA,               "MPa",   1e6,              1.0,     0.0,  Dimension::Pressure},
    {UNIT_BAR,               "bar",   1e5,              1.0,     0.0,  Dimension::Pressure},
    {UNIT_MBAR,              "mbar",  100.0,            1.0,     0.0,  Dimension::Pressure},
    {UNIT_PSI,               "psi",   kPsi,             1.0,     0.0,  Dimension::Pressure},

    {UNIT_K,                 "K",     1.0,              1.0,     0.0,  Dimension::Temperature},
    {UNIT_CELSIUS,           "degC",  1.0,              1.0,     273.15,  Dimension::Temperature},
    {UNIT_FAHRENHEIT,        "degF",  5.0,              9.0,     459.67 * 5.0 / 9.0,  Dimension::Temperature},
};
// clang-format on

const Row* RowOf(t_unit unit) {
    for (const Row& row : kUnits)
        if (row.unit == unit) return &row;
    return nullptr;
}

} // namespace

const char* toText(t_unit unit) {
    const Row* row = RowOf(unit);
    return row ? row->text : "";
}

t_unit toTUnit(const char* text) {
    if (!text) return UNIT_UNDEFINED;
    for (const Row& row : kUnits)
        if (row.text[0] == text[0] && std::strcmp(row.text, text) == 0) return row.unit;
    return UNIT_UNDEFINED;
}

double convToUnit(t_unit unit, double value) {
    const Row* row = RowOf(unit);
    return row ? (value - row->offset) * row->denominator / row->numerator : value;
}

double convToSI(t_unit unit, double value) {
    const Row* row = RowOf(unit);
    return row ? value * row->numerator / row->denominator + row->offset : value;
}

bool sameDimension(t_unit unit, t_unit other) {
    const Row* row = RowOf(unit);
    const Row* otherRow = RowOf(other);
    return row && otherRow && row->dimension == otherRow->dimension;
}

} // namespace lmk
