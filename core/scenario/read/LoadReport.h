#ifndef SCENARIO_LOADREPORT_H
#define SCENARIO_LOADREPORT_H

#include <scenario/ScenarioItem.h>

#include "read/Explain.h"

// Tells the listener of <scenario/LoadDiagnostics.h> why a text was refused. A cause that a class has kept says more
// than what the reader itself finds, and stands before it. `item` is the one whose lines are being read, or null.
// Always false.
[[gnu::cold]] bool ReportRefusal(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item);

#endif
