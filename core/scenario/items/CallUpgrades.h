#ifndef SCENARIO_CALLUPGRADES_H
#define SCENARIO_CALLUPGRADES_H

#include <string_view>

class Function;

// Brings a call as older scripts wrote it into the form of its definition. Nothing else in the library knows that old
// scripts exist. A call or a definition too short for an upgrade is left alone; its parameters then do not match.
void UpgradeCall(Function& call, Function& definition);

// Whether older scripts wrote calls of that name in another form.
bool IsUpgraded(std::string_view callName);

#endif
