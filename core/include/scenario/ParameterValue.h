#ifndef SCENARIO_PARAMETERVALUE_H
#define SCENARIO_PARAMETERVALUE_H

#include <array>
#include <cstdint>
#include <string>

// One argument as the run-time entries behind CODE numbers receive it.
struct ParameterValue {
    std::int32_t tag = 4; // 0 INTEGER, 1 FLOAT, 2 BOOL, 3 STRING, 4 VOID
    float number = 0.0F;
    std::string text;
};

// The arguments of a call, in the order of its parameters; those beyond the last parameter are fresh.
using ParameterValues = std::array<ParameterValue, 12>;

#endif
