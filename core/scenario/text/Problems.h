#ifndef SCENARIO_PROBLEMS_H
#define SCENARIO_PROBLEMS_H

#include <string>

#include <scenario/ItemText.h>

// What the listener of <scenario/LoadDiagnostics.h> is told, each with its file, row and line. Without a listener
// nothing happens.

// Of the line at the cursor.
void TellProblem(const ScenarioTextStream& place, const std::string& cause, bool isWarning);
// Of a file that has no lines to show.
void TellUnreadableFile(const std::string& cause);
// Of something that is passed over at the reader's line while the load goes on.
void TellLoadWarning(const std::string& cause);
// Of the reader's line, at once: before a fatal assertion, which leaves the reader no time to do so.
void TellRefusalNow(const std::string& cause);

// The name under which problems are told while it lives.
class LoadSource {
public:
    explicit LoadSource(const std::string& name);
    ~LoadSource();
    LoadSource(const LoadSource&) = delete;
    LoadSource& operator=(const LoadSource&) = delete;

private:
    std::string outer;
};

#endif
