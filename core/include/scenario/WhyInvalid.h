#ifndef SCENARIO_WHYINVALID_H
#define SCENARIO_WHYINVALID_H

#include <string>

#include <scenario/Export.h>

class ScenarioItem;

// Why an item whose IsValid() is false is not valid, as a sentence without its full stop that names the item:
//   parameter "SPEED" with VEHICLE "7": the scenario has no such vehicle
// Empty for an item that is valid. As IsValid, of the last UpdateDisplayTextTree or UpdateValidity; nothing is judged
// anew.
TAVREL_MODEL_API std::string WhyInvalid(const ScenarioItem& item);

// Whether only a whole scenario can judge the item: a call, and a parameter of a KIND that refers to what a scenario
// holds. In a script that is included elsewhere such an item is not valid, and that means nothing.
TAVREL_MODEL_API bool IsJudgedByScenario(const ScenarioItem& item);

#endif
