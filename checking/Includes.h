#ifndef CHECKING_INCLUDES_H
#define CHECKING_INCLUDES_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "TextChecks.h"

namespace TavrelChecking {

// A script file that others include, as it was found in the data path of the configuration in use.
struct IncludedFile {
    std::string path;
    std::string reason; // why it cannot be read; empty if it can
    bool isOutside = false;
    std::shared_ptr<const ScriptTree> tree; // null if it cannot be read
    std::vector<Fault> faults;              // of the text by itself
    bool isRefused = false;                 // the reader takes nothing from it
};

// The files that the scripts of one configuration include, each looked at once.
class Includes {
public:
    explicit Includes(const Definitions& rootModel) : definitions(rootModel) {}

    // The file of that FILE attribute; null if the data path has none.
    const IncludedFile* Find(const std::string& file);
    // The names that the data path has, as FILE attributes write them.
    const std::vector<std::string>& Names();

private:
    const Definitions& definitions;
    std::map<std::string, std::unique_ptr<IncludedFile>> files; // by FILE
    std::vector<std::string> names;
    bool areNamesKnown = false;
};

// What makes a text one that the reader refuses.
bool IsRefused(const std::vector<Fault>& faults);

// The bytes of a file; false with the reason.
bool ReadBytes(const std::string& path, std::string& bytes, std::string& reason);

} // namespace TavrelChecking

#endif
