#include <Commons/WholeFile.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "FileRights.h"
#include "Files.h"

namespace Commons {

using detail::Descriptor;
using detail::SystemReason;

// The lock on one file. It is kept on the file itself, which each save replaces: the new file is locked before it gets
// the name, and whoever waited for the former one looks at the name again.
struct FileLock::State {
    std::string target; // the path with its links followed
    Descriptor file;    // locked; none if there is nothing to lock, or an earlier State of this thread has it
    std::thread::id thread = std::this_thread::get_id();
    bool isFree = true;
};

std::string WordsOf(const std::error_code& error) { return SystemReason(error.value()); }

std::string ReasonNotToOpen(const std::string& path, bool* isTooLarge) {
    namespace fs = std::filesystem;
    if (isTooLarge) *isTooLarge = false;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (path.empty() || status.type() == fs::file_type::not_found) return "there is no such file";
    if (!fs::status_known(status)) return WordsOf(error);
    if (fs::is_directory(status)) return "it is a folder";
    if (!fs::is_regular_file(status)) return "it is no regular file";
    if (::access(path.c_str(), R_OK) != 0) return WordsOf({errno, std::generic_category()});
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) return WordsOf(error);
    if (size <= kLargestFile) return "";
    if (isTooLarge) *isTooLarge = true;
    return "with " + std::to_string(size) + " bytes it is larger than any file that is read";
}

namespace {

constexpr std::string_view kTemporaryPrefix = ".save-";
constexpr size_t kHashDigits = 16;
constexpr int kMostLinks = 40; // as many as the system itself follows
constexpr int kMostTemporaries = 1000;
constexpr int kUsualTemporaries = 32; // beyond these, the first free place ends the look for rests

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool AreSame(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
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

// The path as the system opens it, its links followed. False, with a reason, if it leads nowhere.
bool FindTarget(const std::string& path, std::string& target, std::string& reason) {
    target = detail::WithForwardSlashes(path);
    if (target.empty() || target.find('\0') != std::string::npos) {
        reason = SystemReason(ENOENT);
        return false;
    }
    return FollowLinks(target, reason);
}

// The locks of this process, in the order in which they were taken, with the files that they hold.
std::vector<FileLock::State*> takenLocks;
std::mutex takenLocksAccess;

// Whether the lock is this thread's. What another thread has locked is waited for like the lock of another program.
bool IsOwn(const FileLock::State& lock) { return lock.thread == std::this_thread::get_id(); }

bool Holds(const FileLock::State& own, const struct stat& file) {
    struct stat status {};
    return own.file && ::fstat(own.file.get(), &status) == 0 && AreSame(status, file);
}

bool IsLockedHere(const std::string& target) {
    struct stat file {};
    if (::stat(target.c_str(), &file) != 0) return false;
    const std::lock_guard access(takenLocksAccess);
    return std::any_of(takenLocks.begin(), takenLocks.end(),
                       [&](const auto* lock) { return IsOwn(*lock) && Holds(*lock, file); });
}

// Gives the lock of a file that was just put in the place of `former` to whoever has locked that place for longest.
void KeepLocked(const std::string& target, const struct stat& former, Descriptor file) {
    const std::lock_guard access(takenLocksAccess);
    for (FileLock::State* own : takenLocks) {
        if (!IsOwn(*own) || !own->isFree || (own->target != target && !Holds(*own, former))) continue;
        own->file = std::move(file);
        return;
    }
}

enum class Attempt : std::uint8_t { Locked, Taken, Impossible };

// Without waiting.
Attempt TryLock(int file) {
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        return errno == EWOULDBLOCK ? Attempt::Taken : Attempt::Impossible;
    }
    return Attempt::Locked;
}

// Some file systems lock a file only for those who may write to it.
Descriptor OpenToLock(const std::string& path, int access) {
    return Descriptor(::open(path.c_str(), access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
}

Attempt LockPlainFile(const std::string& path, Descriptor& file, struct stat& status) {
    for (const int access : {O_RDONLY, O_RDWR}) {
        file = OpenToLock(path, access);
        if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (const Attempt attempt = TryLock(file.get()); attempt != Attempt::Impossible) return attempt;
    }
    file = Descriptor();
    return Attempt::Impossible;
}

// Asking again costs little beside a save, and a fair queue is no use to those who wait for a file that is replaced.
constexpr std::chrono::milliseconds kPause{5};

// Waits until the file that stands at `target` is locked. False if someone else has kept it for too long.
bool LockTarget(const std::string& target, std::chrono::milliseconds patience, Descriptor& locked) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point end = Clock::now() + patience;
    struct stat seen {};
    for (;;) {
        Descriptor file;
        struct stat status {};
        struct stat named {};
        const Attempt attempt = LockPlainFile(target, file, status);
        if (attempt == Attempt::Impossible) return true;
        if (attempt == Attempt::Locked && ::stat(target.c_str(), &named) == 0 && AreSame(named, status)) {
            locked = std::move(file);
            return true;
        }
        if (!AreSame(seen, status)) end = Clock::now() + patience;
        seen = status;
        if (Clock::now() >= end) return false;
        file = Descriptor();
        std::this_thread::sleep_for(kPause);
    }
}

// What the files beside a target are called. The name is short, so that it fits wherever the target's does.
std::string TemporaryPrefix(const std::string& target) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : std::string_view(target).substr(target.rfind('/') + 1))
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    std::string digits;
    for (size_t i = 0; i < kHashDigits; ++i, hash >>= 4) digits += "0123456789abcdef"[hash & 0xF];
    return FolderOf(target).append("/").append(kTemporaryPrefix).append(digits).append("-");
}

// Whether something stands at the path that stays there. What nobody keeps locked is the rest of a killed save.
bool StandsAfterLook(const std::string& path) {
    const Descriptor file = OpenToLock(path, O_RDONLY);
    if (!file) return errno != ENOENT;
    struct stat status {};
    struct stat named {};
    return ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || TryLock(file.get()) != Attempt::Locked ||
           ::lstat(path.c_str(), &named) != 0 || !AreSame(status, named) || ::unlink(path.c_str()) != 0;
}

void RemoveRests(const std::string& prefix) {
    for (int i = 0; i < kMostTemporaries; ++i)
        if (!StandsAfterLook(prefix + std::to_string(i)) && i >= kUsualTemporaries) return;
}

// A file of this save's own beside the target; removed at the end unless it was moved.
class Temporary {
public:
    Temporary(const std::string& target, mode_t mode) {
        const std::string prefix = TemporaryPrefix(target);
        RemoveRests(prefix);
        for (int i = 0; i < kMostTemporaries; ++i) {
            path = prefix + std::to_string(i);
            file = Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            if (!file && errno != EEXIST) return;
            // Until it is locked, another save may take it for a rest.
            struct stat status {};
            if (file && TryLock(file.get()) != Attempt::Taken && ::fstat(file.get(), &status) == 0 &&
                status.st_nlink > 0)
                return;
            file = Descriptor();
            errno = EEXIST;
        }
    }
    ~Temporary() {
        if (file) ::unlink(path.c_str());
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;

    explicit operator bool() const { return static_cast<bool>(file); }
    int get() const { return file.get(); }
    // Gives the file its name. It stays locked as long as the result lives.
    Descriptor MoveTo(const std::string& target) {
        return ::rename(path.c_str(), target.c_str()) == 0 ? std::move(file) : Descriptor();
    }

private:
    std::string path;
    Descriptor file;
};

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

bool HoldsExpected(const std::string& target, std::string_view expected, std::string& reason) {
    std::string found;
    if (!detail::ReadPlainFile(target, found, reason)) {
        reason = "it cannot be compared with what was loaded: " + reason;
        return false;
    }
    if (found == expected) return true;
    reason = "it has been changed by someone else meanwhile, so load it again";
    return false;
}

// `expected` may be null: then it does not matter what the file holds.
bool Save(const std::string& path, const std::string_view* expected, std::string_view bytes, std::string& reason) {
    std::string target;
    if (!FindTarget(path, target, reason)) return false;
    const FileLock lock(target);
    if (!lock.isFree()) {
        reason = "another program keeps it locked";
        return false;
    }

    struct stat former {};
    const bool exists = ::stat(target.c_str(), &former) == 0;
    if (exists && !S_ISREG(former.st_mode)) {
        reason = S_ISDIR(former.st_mode) ? SystemReason(EISDIR) : "not a plain file";
        return false;
    }
    // Moving over a write-protected file would succeed and undo the protection.
    if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        reason = SystemReason(errno);
        return false;
    }
    if (exists && expected && !HoldsExpected(target, *expected, reason)) return false;

    Temporary temporary(target, exists ? 0600 : 0666);
    if (!temporary) {
        const int cause = errno;
        reason = SystemReason(cause);
        if (cause == ENOENT) reason = "its folder does not exist";
        if (cause == EACCES || cause == EPERM) reason = "no permission to make a file in its folder";
        return false;
    }
    if (!WriteAll(temporary.get(), bytes)) {
        reason = SystemReason(errno);
        return false;
    }
    if (exists && !detail::KeepRights(target, former, temporary.get(), reason)) return false;
    Descriptor moved;
    if (::fsync(temporary.get()) == 0) moved = temporary.MoveTo(target);
    if (!moved) {
        reason = SystemReason(errno);
        return false;
    }
    // The move itself must outlive a crash, too; the file is whole either way.
    const Descriptor folder(::open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) ::fsync(folder.get());
    KeepLocked(target, former, std::move(moved));
    return true;
}

} // namespace

bool WriteFileWhole(const std::string& path, std::string_view bytes, std::string& reason) {
    return Save(path, nullptr, bytes, reason);
}

bool ReplaceFileWhole(const std::string& path, std::string_view expected, std::string_view bytes, std::string& reason) {
    return Save(path, &expected, bytes, reason);
}

bool IsSaveUnderWay(std::string_view fileName) {
    if (!fileName.starts_with(kTemporaryPrefix)) return false;
    fileName.remove_prefix(kTemporaryPrefix.size());
    const size_t digits = fileName.find_first_not_of("0123456789abcdef");
    return digits == kHashDigits && fileName[digits] == '-' && fileName.size() > digits + 1 &&
           fileName.find_first_not_of("0123456789", digits + 1) == std::string_view::npos;
}

FileLock::FileLock(const std::string& path, std::chrono::milliseconds patience) : state(std::make_unique<State>()) {
    std::string reason;
    if (!FindTarget(path, state->target, reason)) return;
    if (!IsLockedHere(state->target)) state->isFree = LockTarget(state->target, patience, state->file);
    const std::lock_guard access(takenLocksAccess);
    takenLocks.push_back(state.get());
}

FileLock::~FileLock() {
    const std::lock_guard access(takenLocksAccess);
    std::erase(takenLocks, state.get());
}

bool FileLock::isFree() const { return state->isFree; }

} // namespace Commons
