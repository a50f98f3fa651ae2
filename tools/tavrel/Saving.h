#ifndef TAVREL_COMMAND_SAVING_H
#define TAVREL_COMMAND_SAVING_H

#include <optional>
#include <string>

#include <Commons/WholeFile.h>

#include "Installation.h"

namespace tavrel {

// Keeps other programs from changing a file while a command edits it: from before the file is read until it is saved
// and read back. So several commands that edit one file at the same time do it one after the other.
class EditLock {
public:
    // Waits for its turn, and says so when that takes long. Fails with a Failure if another program keeps the file for
    // a minute without a change to it.
    explicit EditLock(const std::string& path);

private:
    std::optional<Commons::FileLock> lock;
};

// Where a command saves the scenario: the path of --output, or of the file itself. Touches no file but the folder of
// the former, which must be there. To be locked before anything of the scenario is asked for, since that reads it.
std::string SaveTarget(const Context& context, const OpenedScenario& opened);

// Saves the scenario there, as its own path from then on. Fails with a Failure that tells the reason.
void SaveScenario(OpenedScenario& opened, const std::string& target);

} // namespace tavrel

#endif
