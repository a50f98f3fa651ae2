#ifndef SCENARIO_TYPEFIT_H
#define SCENARIO_TYPEFIT_H

#include <string>

// FLOAT and INTEGER, either way round: numbers of both types may stand for each other.
inline bool AreNumbersOfBothTypes(const std::string& a, const std::string& b) {
    return (a == "FLOAT" && b == "INTEGER") || (a == "INTEGER" && b == "FLOAT");
}

#endif
