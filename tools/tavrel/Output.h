#ifndef TAVREL_COMMAND_OUTPUT_H
#define TAVREL_COMMAND_OUTPUT_H

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <scenario/LogLines.h>

namespace tavrel {

enum class Colour { Red, Yellow, Cyan };

// The results of the command. The library writes what it finds in a root model to the standard output, by design; so
// this object takes the real standard output for itself and leaves the process one whose lines are kept apart.
// There is one object, which lives as long as `main`.
class Output {
public:
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Text is gathered and written in large pieces; Flush writes what is left. Both fail with a Failure, so that a full
    // disk is told.
    void Print(std::string_view text);
    template <typename... Args>
    void Print(fmt::format_string<Args...> format, Args&&... args) {
        Print(std::string_view(fmt::format(format, std::forward<Args>(args)...)));
    }
    void Flush();
    // From now on text is kept for TakeHeld and never written: a child process hands it to its parent. Text that was
    // gathered before is the parent's to write.
    void Hold();
    std::string TakeHeld();

    // Whether a person is looking. The styles give the text back as it is when nobody is, or when NO_COLOR is set.
    bool IsTerminal() const { return terminal; }
    // The width of that terminal now; what is usual where it does not tell.
    std::size_t Columns() const;
    std::string Strong(const std::string& text) const;
    std::string Faint(const std::string& text) const;
    std::string Coloured(Colour colour, const std::string& text) const;
    // From now on the styles give all text back as it is: it goes to a file.
    void WithoutStyles() { coloured = false; }

    // What the library has logged since the last call, each line without control characters.
    std::vector<LogLine> TakeLog();

private:
    std::string Styled(const char* code, const std::string& text) const;

    int descriptor;
    bool terminal;
    bool coloured;
    bool holds = false;
    std::string pending;
    LogLines log;
    std::streambuf* former; // what std::cout wrote to before
};

} // namespace tavrel

#endif
