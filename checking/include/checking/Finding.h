#ifndef CHECKING_FINDING_H
#define CHECKING_FINDING_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <checking/Rules.h>

namespace TavrelChecking {

// A part of a file as an editor shows it: rows and columns from 1, columns in Unicode code points, the end exclusive.
// A byte order mark at the beginning has no column, and each byte that is no UTF-8 counts one. A carriage return before
// a line feed belongs to the line end. An empty span stands where something is missing; a finding about a file as a
// whole has the empty span at 1:1.
struct Span {
    std::uint32_t row = 1;
    std::uint32_t column = 1;
    std::uint32_t endRow = 1;
    std::uint32_t endColumn = 1;
    bool operator==(const Span&) const = default;
};

// A place that explains a finding, such as the INCLUDE through which its file is read.
struct RelatedPlace {
    std::string file;
    Span span;
    std::string message;
};

// A change of the bytes of a file: those from `begin` up to `end`, counted from 0, give way to `replacement`, which is
// written as the file needs it at that place (in a scenario file with character references).
struct Edit {
    std::string file;
    Span span;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string replacement;
};

struct Fix {
    std::string title; // what it does: replace "SET_SPEDD" by "SET_SPEED"
    bool isSafe;       // it cannot be wrong
    std::vector<Edit> edits;
};

// One fault, at its place.
struct Finding {
    const Rule* rule = nullptr; // of the table; never null in a result
    Severity severity = Severity::Error;
    std::string file; // the path as it was given or found
    Span span;
    std::string script;          // the name of the script, in a scenario file
    bool isInScript = false;     // the finding stands in a script of a scenario file, which may have no name
    std::uint32_t scriptRow = 0; // the row within that script; 0 outside of scripts
    std::string place;           // the way in the tree, "SCENARIO (1) / TASK (2)"; empty at the top
    std::string display;         // what a list of the application shows for the item, if it is known
    std::string message;         // what is wrong here, without a full stop
    std::string help;            // the remedy, as a sentence
    std::string line;            // the row of the file, without its line end
    std::vector<RelatedPlace> related;
    std::vector<Fix> fixes;
};

// By file, row, column, rule and message, and no two alike.
TAVREL_CHECKING_API void SortFindings(std::vector<Finding>& findings);

} // namespace TavrelChecking

#endif
