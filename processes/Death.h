#ifndef PROCESSES_DEATH_H
#define PROCESSES_DEATH_H

#include <functional>
#include <string>
#include <string_view>

#include <processes/ChildProcess.h>

namespace TavrelProcesses {

// How many bytes at the end of `text` may be the beginning of `mark`.
std::size_t BeginningAtEnd(std::string_view text, std::string_view mark);

// Passes on what a child writes to its error stream, and keeps the assertion back that it dies of.
class ErrorRelay {
public:
    using Sink = std::function<void(std::string_view)>;
    explicit ErrorRelay(Sink target) : sink(std::move(target)) {}

    void Take(std::string_view bytes);
    // There is nothing more of the line in progress.
    void End();
    // The child lives: what looked like its assertion is text like any other.
    void TakeBack();

    std::string assertion; // source and line, "token:757", and what DieOfAssertion adds to them

private:
    void EndLine();
    void Show(std::size_t size);

    Sink sink;
    std::string line;
};

// Reads what DieOfAssertion writes after its mark; that of the library itself has nothing after the assertion.
Death DeathOfAssertion(const std::string& line);

} // namespace TavrelProcesses

#endif
