#include "items/AttributeRow.h"

#include <string>

#include "text/TextFormat.h"

void NoteSecondValue(const ScenarioTextStream& stream, std::string_view key) {
    if (!RefusalsAreTold()) return;
    // A key that only begins a longer one is no second value.
    if (KeyOf(RestOfLine(stream)) == key) KeepRefusalCause("a second value for " + std::string(key));
}
