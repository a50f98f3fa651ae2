#ifndef TAVREL_COMMAND_SAVEFILE_H
#define TAVREL_COMMAND_SAVEFILE_H

#include <string>
#include <string_view>

namespace tavrel {

// Puts `text` into a file: beside it first, so that a failure leaves the old file whole. Fails with a Failure. A path
// that names no ordinary file, such as /dev/null, is written to as it is.
void SaveFile(const std::string& path, std::string_view text);

} // namespace tavrel

#endif
