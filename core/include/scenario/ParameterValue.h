#ifndef SCENARIO_PARAMETERVALUE_H
#define SCENARIO_PARAMETERVALUE_H

#include <array>
#include <cstdint>
#include <string>

// What an argument holds. The numbers are part of the interface.
enum ParameterTag : std::int32_t { TagInteger, TagFloat, TagBool, TagString, TagVoid };

// One argument as the run-time entries behind CODE numbers receive it.
struct ParameterValue {
    std::int32_t tag = TagVoid; // a ParameterTag; what is neither a number nor a text is void
    float number = 0.0F;
    std::string text;
};

// The arguments of a call, in the order of its parameters; those beyond the last parameter are fresh.
using ParameterValues = std::array<ParameterValue, 12>;

#endif
