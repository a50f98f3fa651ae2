#ifndef SCENARIO_EXPLAIN_H
#define SCENARIO_EXPLAIN_H

#include <string>

#include <scenario/ScenarioItem.h>

// What the reader itself finds wrong.
enum class Cause { NoHeader, UnknownKind, TooDeep, NoBrace, ItemRefused, ItemIncomplete, TextEnds, NoNumber };

// The sentence that a person reads. `item` is the one whose lines are being read, or null.
std::string Explain(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item);

#endif
