#ifndef SCENARIO_LOG_H
#define SCENARIO_LOG_H

#include <string_view>

// The first character of a message on the log; readers of the log know these numbers.
enum class LogSeverity : char { Information = 1, Progress = 2, Warning = 3, Error = 4 };

// Writes one message to `scenarioLog`, if there is one, and flushes it.
void LogMessage(LogSeverity severity, std::string_view text);

#endif
