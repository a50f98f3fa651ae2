#ifndef TAVREL_COMMAND_SPELLING_H
#define TAVREL_COMMAND_SPELLING_H

#include <string>
#include <vector>

namespace tavrel {

// Names as people write them. A name is meant by its own bytes first; else by the same in another Unicode normal form,
// as other systems write the names of files; else with its control characters written out, as listings show it.

// Whether `written` can mean `name`.
bool IsSpellingOf(const std::string& written, const std::string& name);

// The one of the names that is meant; `written` as it is where none is.
std::string MeantOf(const std::string& written, const std::vector<std::string>& names);

// The path of what is on disk, looked for folder by folder; `path` as it is where nothing is meant.
std::string MeantOnDisk(const std::string& path);

} // namespace tavrel

#endif
