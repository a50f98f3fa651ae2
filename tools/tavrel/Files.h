#ifndef TAVREL_COMMAND_FILES_H
#define TAVREL_COMMAND_FILES_H

#include <functional>
#include <string>
#include <string_view>

#include <Commons/WholeFile.h>

namespace tavrel {

using Commons::ReasonNotToOpen;

// Calls `found` for all that stands below `folder`, in the order of the file system; folders are among it, and links
// are not followed. A folder that cannot be walked goes to `failed` as a sentence, and the others are walked all the
// same.
void Walk(const std::string& folder, const std::function<void(const std::string& path)>& found,
          const std::function<void(const std::string& sentence)>& failed);

// Puts `text` into a file as Commons::WriteFileWhole does, so that a failure leaves the old file whole. Fails with a
// Failure. A path that names no ordinary file, such as /dev/null, is written to as it is.
void SaveFile(const std::string& path, std::string_view text);

} // namespace tavrel

#endif
