#ifndef SCENARIO_OFFER_H
#define SCENARIO_OFFER_H

#include <scenario/ScenarioItem.h>

// Offers `child` to `parent` at its end. False: the parent ignored it, and it stays with the caller. Its `parent` is
// set in any case, so that it can look around.
bool OfferChild(ScenarioItem& parent, ScenarioItem* child);

// Takes `child` out of `parent` and destroys it, also where RemoveChild of the parent only forgets it.
[[gnu::cold]] void TakeBackAndDestroy(ScenarioItem& parent, ScenarioItem* child);

// Each item tells its end here.
void NoteEndOf(const ScenarioItem& item);

#endif
