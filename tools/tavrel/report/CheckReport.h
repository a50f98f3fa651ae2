#ifndef TAVREL_COMMAND_CHECKREPORT_H
#define TAVREL_COMMAND_CHECKREPORT_H

#include <functional>
#include <string>
#include <vector>

#include <checking/Check.h>
#include <fmt/format.h>

#include "../Describe.h"

namespace tavrel {

class Output;

// A finding with what only a whole run knows of it.
struct ToldFinding {
    TavrelChecking::Finding finding;
    // The same for the same fault as long as its rule, its line and its way in the tree stay, whatever the rows.
    std::string fingerprint;
    bool isHeld = false; // by the baseline: it is not told and does not count
};

// What a run of check found, in the order in which it is told.
struct CheckReport {
    std::vector<ToldFinding> findings;
    std::vector<TavrelChecking::Omission> omissions;
    std::vector<std::string> files;                 // that were looked at, sorted
    std::vector<const TavrelChecking::Rule*> rules; // that were looked at
    std::vector<std::string> notes;                 // about the run itself: what a baseline holds in vain
    TavrelChecking::Severity failOn = TavrelChecking::Severity::Error;
    std::string baseline; // its file; empty without one
    std::string base;     // the folder that the paths of SARIF start at, absolute, with "/" at the end
};

// How a path is told.
using Spelling = std::function<std::string(const std::string& path)>;

// Puts the findings of a run in order, without two that are alike, and gives them their fingerprints. The file of a
// finding may have been come by in several ways: all paths are spelled alike first.
CheckReport ReportOf(TavrelChecking::Result result, const Spelling& spelling);

// For people: as the path was given, or as it was found below a folder, or the folder of an installation file, that was
// given; others as they are.
Spelling SpellingOf(const std::vector<std::string>& given);

// A path as programs get it, whatever folder the command runs in.
std::string AbsolutePath(const std::string& path);

// "2 errors, 1 warning, 0 notes" of what is told.
std::string CountsOf(const CheckReport& report);

// The forms. `out` lends its colours.
std::string TextForm(const CheckReport& report, const Output& out);
std::string JsonForm(const CheckReport& report);
std::string JsonLinesForm(const CheckReport& report);
std::string SarifForm(const CheckReport& report);
std::string JunitForm(const CheckReport& report);
std::string GithubForm(const CheckReport& report);

} // namespace tavrel

#endif
