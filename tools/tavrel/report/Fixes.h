#ifndef TAVREL_COMMAND_FIXES_H
#define TAVREL_COMMAND_FIXES_H

#include <string>
#include <vector>

#include <checking/Check.h>

namespace tavrel {

// A file with what its findings propose.
struct FixedFile {
    std::string path;
    std::string before;
    std::string after;
    std::size_t fixes = 0;     // that were made
    std::size_t takenBack = 0; // that would have made a new error
};

// Makes the changes that findings propose, in memory: those that cannot be wrong, with `unsafe` the likely ones too. A
// change touches its span and nothing else. The file is checked again; a change that makes an error which was not there
// before is taken back. What else can be fixed then is fixed, too. Files that stay as they are do not come back.
std::vector<FixedFile> FixFiles(const std::vector<TavrelChecking::Job>& jobs, const TavrelChecking::Result& found,
                                const TavrelChecking::Options& options, bool unsafe);

} // namespace tavrel

#endif
