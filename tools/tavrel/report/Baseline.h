#ifndef TAVREL_COMMAND_BASELINE_H
#define TAVREL_COMMAND_BASELINE_H

#include <map>
#include <string>
#include <tuple>

#include "CheckReport.h"

namespace tavrel {

// Findings that are known and are to be told no more: how many there are of each rule at each way in the tree of each
// file. Rows change with every edit, these rarely do.
class Baseline {
public:
    // Paths in it are relative to the folder of `file`, which need not exist yet.
    explicit Baseline(const std::string& file);

    // Fails with a Failure of ExitUnreadable if the file cannot be read or is no baseline.
    void Read();
    // All that the report has, but for what could not be looked at.
    void Take(const CheckReport& report);
    void Save() const;

    // Marks what it holds, from the first of those that are alike on, and notes what it holds in vain.
    void Apply(CheckReport& report) const;

private:
    using Key = std::tuple<std::string, std::string, std::string>; // file, rule, way in the tree

    std::string RelativeOf(const std::string& file) const;
    Key KeyOf(const TavrelChecking::Finding& finding) const;

    std::string path;
    std::string folder; // absolute
    std::map<Key, std::size_t> counts;
};

// Whether the rule says that a file could not be looked at. Nothing excuses that.
bool TellsOfOmission(const TavrelChecking::Finding& finding);

} // namespace tavrel

#endif
