#ifndef TAVREL_COMMAND_FAILURE_H
#define TAVREL_COMMAND_FAILURE_H

#include <string>
#include <vector>

namespace tavrel {

// What the process answers with. Every sub-command uses these four and no others: data never travels in the status.
enum ExitStatus {
    ExitClean = 0,
    ExitFindings = 1,   // a check found something, a run failed
    ExitUsage = 2,      // the command line makes no sense
    ExitUnreadable = 3, // something could not be found, read, opened or written
};

// How a sub-command gives up: the one sentence that the user reads, and the status to leave with.
struct Failure {
    ExitStatus status;
    std::string sentence;
};

// What the exception that is being handled says, whichever of the library's forms it has. To be called in a catch
// block. An exception that was thrown by pointer is deleted here.
Failure CurrentFailure();

// A message of the library as one line: its line ends and the severity marks of its log become blanks.
std::string OneLine(const std::string& message);

// Text for a terminal: line ends stay, and other control characters, which could write anywhere, become blanks.
std::string Printable(const std::string& text);

// A message that names a place, "file:row: reason", as one line, without the row where it is 0 and the whole file
// meant.
std::string PlacedLine(const std::string& message);

// The end of a sentence about a name that is not known: ", did you mean "X"" with the nearest of those that are; empty
// if none is near.
std::string DidYouMean(const std::string& name, const std::vector<std::string>& known);

// Writes the sentence to the standard error stream, after the name of the command.
void Report(const std::string& sentence);

} // namespace tavrel

#endif
