#ifndef TAVREL_COMMAND_SCENARIOLINES_H
#define TAVREL_COMMAND_SCENARIOLINES_H

#include <string>
#include <vector>

#include "Output.h"

namespace tavrel {

// How many columns of a terminal a text without control characters takes.
std::size_t ColumnsOf(const std::string& text);

// A list of scenarios, one line each: separated by tabs for programs, in columns that fit the terminal for people.
// Control characters are written out, so no name breaks its line.
class ScenarioLines {
public:
    explicit ScenarioLines(Output& output) : out(output) {}

    // All lines are to be known before the first is printed.
    void Add(const std::string& configuration, const std::string& path, const std::string& name);
    void Print(std::size_t line) const;
    std::size_t Count() const { return lines.size(); }

private:
    struct Line {
        std::string configuration, path, name;
    };

    Output& out;
    std::vector<Line> lines;
    std::size_t configurationColumns = 0, pathColumns = 0, nameColumns = 0; // of the widest
};

} // namespace tavrel

#endif
