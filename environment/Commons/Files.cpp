#include "Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Commons/WholeFile.h>

namespace Commons::detail {

Descriptor::Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    close();
    number = std::exchange(other.number, -1);
    return *this;
}

bool Descriptor::close() {
    const int closing = std::exchange(number, -1);
    return closing < 0 || ::close(closing) == 0;
}

std::string SystemReason(int error) {
    switch (error) {
    case ENOENT:
        return "no such file";
    case ENOTDIR:
        return "a part of the path is not a folder";
    case EACCES:
    case EPERM:
        return "no permission";
    case ELOOP:
        return "symbolic links that lead in a circle";
    case ENAMETOOLONG:
        return "the path is too long";
    case EROFS:
        return "the file system is read-only";
    case ENOSPC:
        return "no space left";
    case EDQUOT:
    case EFBIG:
        return "the file is larger than allowed";
    case ENOMEM:
        return "out of memory";
    case EISDIR:
        return "a folder, not a file";
    default:
        break;
    }
    const char* description = ::strerrordesc_np(error);
    if (!description) return "system error " + std::to_string(error);
    std::string words = description;
    words[0] = static_cast<char>(words[0] >= 'A' && words[0] <= 'Z' ? words[0] - 'A' + 'a' : words[0]);
    return words;
}

std::string WithForwardSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

namespace {

// Reads to the end of the file, which may be another one than was expected when `content` got its size: one byte more.
template <class Bytes>
bool ReadAll(int descriptor, Bytes& content) {
    const size_t expected = content.size() - 1;
    size_t length = 0;
    for (;;) {
        if (length == content.size()) content.resize(content.size() * 2);
        const ssize_t count = ::read(descriptor, content.data() + length, content.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        length += static_cast<size_t>(count);
        // Less than was asked for, just where the end was expected, is the end.
        if (count == 0 || (length == expected && content.size() == expected + 1)) break;
    }
    content.resize(length);
    return true;
}

// Asked of the system in one call, where a walk along the path takes one for each folder. What stands at that path by
// now may be another file.
std::string PlaceOf(int descriptor) {
    std::array<char, 4096> place;
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), place.data(), place.size());
    if (length <= 0 || static_cast<size_t>(length) == place.size() || place[0] != '/') return {};
    return {place.data(), static_cast<size_t>(length)};
}

template <class Bytes>
bool ReadPlain(const std::string& path, Bytes& content, std::string& reason, OpenedFile* opened) {
    if (path.find('\0') != std::string::npos) {
        reason = SystemReason(ENOENT);
        return false;
    }
    // Without O_NONBLOCK the open of a pipe would wait for a writer.
    const Descriptor file(::open(WithForwardSlashes(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        reason = SystemReason(errno);
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        reason = S_ISDIR(status.st_mode) ? SystemReason(EISDIR) : "not a plain file";
        return false;
    }
    if (status.st_size > static_cast<off_t>(kLargestFile)) {
        reason = "larger than 256 MiB";
        return false;
    }
    try {
        // One byte more than the file is said to hold, so that its end is seen without growing.
        Bytes read(static_cast<size_t>(status.st_size) + 1, typename Bytes::value_type{});
        if (!ReadAll(file.get(), read)) {
            reason = SystemReason(errno);
            return false;
        }
        if (opened) *opened = {PlaceOf(file.get()), status.st_dev, status.st_ino};
        content = std::move(read);
        return true;
    } catch (const std::bad_alloc&) {
        reason = SystemReason(ENOMEM);
    } catch (const std::length_error&) {
        reason = SystemReason(ENOMEM);
    }
    return false;
}

} // namespace

bool ReadPlainFile(const std::string& path, std::string& content, std::string& reason, OpenedFile* opened) {
    return ReadPlain(path, content, reason, opened);
}

bool ReadPlainFile(const std::string& path, std::vector<unsigned char>& content, std::string& reason) {
    return ReadPlain(path, content, reason, nullptr);
}

} // namespace Commons::detail
