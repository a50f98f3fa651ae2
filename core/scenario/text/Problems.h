#ifndef SCENARIO_PROBLEMS_H
#define SCENARIO_PROBLEMS_H

#include <string>

#include <scenario/ItemText.h>

class TextUnderWay;

// What the listener of <scenario/LoadDiagnostics.h> is told, each with its file, row and line. Without a listener
// nothing happens.

// Of the line at the cursor.
void TellProblem(const ScenarioTextStream& place, const std::string& cause, bool isWarning);
// Of a file that has no lines to show.
void TellUnreadableFile(const std::string& cause);
// Of something that is passed over at the reader's line while the load goes on.
void TellLoadWarning(const std::string& cause);
// Of the fatal assertion with that label, at the reader's line, or in the file that is about to be read.
void TellFatalProblem(const std::string& cause, const std::string& assertion);

// The file of the problems that are told while it lives.
class LoadSource {
public:
    explicit LoadSource(const std::string& name);
    ~LoadSource();
    LoadSource(const LoadSource&) = delete;
    LoadSource& operator=(const LoadSource&) = delete;

private:
    std::string outer;
    const TextUnderWay* outerText;
};

// The name of the text in memory that is being read, as LoadTextName left it.
std::string& NameOfText();

#endif
