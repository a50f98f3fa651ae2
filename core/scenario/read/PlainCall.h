#ifndef SCENARIO_PLAINCALL_H
#define SCENARIO_PLAINCALL_H

#include "read/Load.h"

// Steps over the call at the cursor, which stands in a rule, without making items of it, if the reader would take it
// without a word. That is told for the form that nearly all calls have: the parameters of the definition in their
// order, each with a KIND, a VALUE and perhaps an OWNER_FILE. False, with the cursor where it was, for all others,
// right or wrong; they are the reader's.
bool PassOverPlainCall(Load& load, const ScenarioItem& rule);

#endif
