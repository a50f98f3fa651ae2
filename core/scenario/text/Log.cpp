#include "text/Log.h"

#include <ostream>

#include <scenario/ItemText.h>

std::ostream* scenarioLog = nullptr;

void LogMessage(LogSeverity severity, std::string_view text) {
    if (!scenarioLog) return;
    scenarioLog->put(static_cast<char>(severity));
    scenarioLog->write(text.data(), static_cast<std::streamsize>(text.size()));
    scenarioLog->put('\n');
    scenarioLog->flush();
}
