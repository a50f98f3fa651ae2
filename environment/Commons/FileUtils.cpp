#include <Commons/FileUtils.h>

#include <new>
#include <stdexcept>

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
        std::string content;
        std::string reason;
        if (!detail::ReadPlainFile(path, content, reason)) return false;
        // Who reads text puts a NUL behind it.
        bytes.clear();
        bytes.reserve(content.size() + 1);
        bytes.assign(content.begin(), content.end());
        return true;
    } catch (const std::bad_alloc&) {
        return false; // larger than the memory at hand is a file that cannot be read
    } catch (const std::length_error&) {
        return false;
    }
}

} // namespace Commons::FileUtils
