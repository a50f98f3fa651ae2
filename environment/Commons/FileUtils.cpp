#include <Commons/FileUtils.h>

#include <new>

#include <sys/stat.h>

#include "Files.h"

namespace Commons::FileUtils {

namespace {

// False for what does not exist, cannot be reached or is a circle of links.
bool StatusOf(const std::string& path, struct stat& status) {
    if (path.find('\0') != std::string::npos) return false;
    if (path.find('\\') == std::string::npos) return ::stat(path.c_str(), &status) == 0;
    return ::stat(detail::WithForwardSlashes(path).c_str(), &status) == 0;
}

} // namespace

bool DoesFileExist(const std::string& path) {
    struct stat status {};
    return StatusOf(path, status) && !S_ISDIR(status.st_mode);
}

bool IsFolder(const char* path) {
    struct stat status {};
    return path && StatusOf(path, status) && S_ISDIR(status.st_mode);
}

bool LoadFile(const std::string& path, std::vector<unsigned char>& bytes) {
    try {
        std::string reason;
        return detail::ReadPlainFile(path, bytes, reason);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace Commons::FileUtils
