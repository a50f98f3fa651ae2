#include "read/Load.h"

#include "text/TextFormat.h"

namespace {

// Nested blocks of a text with all that it includes.
constexpr unsigned kMaxNestingOfAllTexts = 2500;

Load* currentLoad = nullptr;

} // namespace

Load::Load(ScenarioTextStream& stream, ScenarioItem* parent)
    : text(stream), tree(parent), outer(currentLoad), outerDepth(outer ? outer->outerDepth + outer->depth : 0) {
    currentLoad = this;
    scannedLine = {};
}

Load::~Load() { currentLoad = outer; }

bool Load::IsTooDeep(unsigned more) const {
    return depth + more > kMaxNesting || outerDepth + depth + more > kMaxNestingOfAllTexts;
}
