#include "Files.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Commons::detail {

namespace {

// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return number >= 0; }
    int get() const { return number; }
    // Some file systems report a failed write only here.
    bool close() {
        const int closing = std::exchange(number, -1);
        return closing < 0 || ::close(closing) == 0;
    }

private:
    int number;
};

// The texts of the C library follow the locale of the host; these do not.
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
        return "system error " + std::to_string(error);
    }
}

constexpr mode_t kPermissionBits = 07777;
constexpr int kMostLinks = 40; // as many as the system itself follows
constexpr int kMostTemporaries = 1000;

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Where a write to `path` ends up. A link may lead to a file that does not exist yet.
bool FollowLinks(std::string& path, std::string& reason) {
    for (int links = 0; links <= kMostLinks; ++links) {
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0) {
            if (errno == ENOENT) return true;
            reason = SystemReason(errno);
            return false;
        }
        if (!S_ISLNK(status.st_mode)) return true;
        char target[4096];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0 || static_cast<size_t>(length) == sizeof target) {
            reason = SystemReason(length < 0 ? errno : ENAMETOOLONG);
            return false;
        }
        const std::string next(target, static_cast<size_t>(length));
        path = next.starts_with('/') ? next : FolderOf(path).append("/").append(next);
    }
    reason = SystemReason(ELOOP);
    return false;
}

// Makes a file of its own beside the target. The name is short, so that it fits wherever the target's does.
int OpenTemporary(const std::string& target, std::string& temporary) {
    static unsigned counter = 0;
    for (int attempt = 0; attempt < kMostTemporaries; ++attempt) {
        temporary = FolderOf(target) + "/.save-" + std::to_string(::getpid()) + "-" + std::to_string(counter++);
        const int opened = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (opened >= 0 || errno != EEXIST) return opened;
    }
    return -1;
}

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

// No file of an installation comes near it. What is larger was not meant, and might take all the memory there is.
constexpr off_t kLargestFile = off_t(256) << 20;

bool WriteAll(int descriptor, const std::string& content) {
    size_t written = 0;
    while (written < content.size()) {
        const ssize_t count = ::write(descriptor, content.data() + written, content.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        written += static_cast<size_t>(count);
    }
    return true;
}

} // namespace

std::string WithForwardSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

namespace {

template <class Bytes>
bool ReadPlain(const std::string& path, Bytes& content, std::string& reason) {
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
    if (status.st_size > kLargestFile) {
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

bool ReadPlainFile(const std::string& path, std::string& content, std::string& reason) {
    return ReadPlain(path, content, reason);
}

bool ReadPlainFile(const std::string& path, std::vector<unsigned char>& content, std::string& reason) {
    return ReadPlain(path, content, reason);
}

bool WriteFileWhole(const std::string& path, const std::string& content, std::string& reason) {
    std::string target = WithForwardSlashes(path);
    if (target.empty() || target.find('\0') != std::string::npos) {
        reason = SystemReason(ENOENT);
        return false;
    }
    if (!FollowLinks(target, reason)) return false;

    struct stat existing {};
    const bool exists = ::stat(target.c_str(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode)) {
        reason = S_ISDIR(existing.st_mode) ? SystemReason(EISDIR) : "not a plain file";
        return false;
    }
    // Moving over a write-protected file would succeed and undo the protection.
    if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        reason = SystemReason(errno);
        return false;
    }

    std::string temporary;
    Descriptor file(OpenTemporary(target, temporary));
    if (!file) {
        reason = SystemReason(errno);
        return false;
    }
    bool stored = true;
    if (exists) {
        // Only a privileged process may give a file away; for all others the owner is its own.
        if (::fchown(file.get(), existing.st_uid, existing.st_gid) != 0) errno = 0;
        stored = ::fchmod(file.get(), existing.st_mode & kPermissionBits) == 0;
    }
    stored = stored && WriteAll(file.get(), content) && ::fsync(file.get()) == 0 && file.close() &&
             ::rename(temporary.c_str(), target.c_str()) == 0;
    if (!stored) {
        reason = SystemReason(errno);
        ::unlink(temporary.c_str());
        return false;
    }
    // The move itself must outlive a crash, too; the file is whole either way.
    const Descriptor folder(::open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) ::fsync(folder.get());
    return true;
}

} // namespace Commons::detail
