#ifndef COMMONS_FILEUTILS_H
#define COMMONS_FILEUTILS_H

#include <string>
#include <vector>

#include <environment/Export.h>

// Concrete paths only: variables are the caller's business. Both separators are accepted. Symbolic links are followed.
namespace Commons::FileUtils {

// Whether the path leads to something that is not a folder.
TAVREL_ENVIRONMENT_API bool DoesFileExist(const std::string& path);

// Whether the path leads to a folder. False for null.
TAVREL_ENVIRONMENT_API bool IsFolder(const char* path);

// Replaces `bytes` by the content of a file. False, with `bytes` as they were, for anything that is not a plain file
// (a folder, a pipe, a device), cannot be read, or is larger than 256 MiB.
TAVREL_ENVIRONMENT_API bool LoadFile(const std::string& path, std::vector<unsigned char>& bytes);

} // namespace Commons::FileUtils

#endif
