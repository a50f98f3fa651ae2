#include "Files.h"

#include "Failure.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tavrel {

namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t(256) << 20;

[[noreturn]] void Fail(const std::string& path) {
    throw Failure{ExitUnreadable, fmt::format("cannot write {}: {}", path, std::strerror(errno))};
}

bool WriteAndClose(int file, std::string_view text, bool sync) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            const int cause = errno;
            close(file);
            errno = cause;
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    const bool flushed = !sync || fsync(file) == 0;
    return close(file) == 0 && flushed;
}

} // namespace

std::string ReasonNotToOpen(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) return "there is no such file";
    if (!std::filesystem::is_regular_file(status)) return "it is no regular file";
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) return error.message();
    if (size > kLargestFile) return fmt::format("with {} bytes it is larger than any file that is read", size);
    return "";
}

void SaveFile(const std::string& path, std::string_view text) {
    struct stat former = {};
    const bool exists = stat(path.c_str(), &former) == 0;
    if (exists && !S_ISREG(former.st_mode)) {
        const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (file < 0 || !WriteAndClose(file, text, false)) Fail(path);
        return;
    }
    // A link keeps pointing to the file that changes.
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(path, error);
    if (error) target = path;
    std::string beside = target.string() + ".XXXXXX";
    const int file = mkstemp(beside.data());
    if (file < 0) Fail(path);
    const mode_t mask = umask(0);
    umask(mask);
    const bool done = fchmod(file, exists ? former.st_mode & 07777 : 0666 & ~mask) == 0;
    if (!WriteAndClose(file, text, true) || !done || rename(beside.c_str(), target.c_str()) != 0) {
        const int cause = errno;
        unlink(beside.c_str());
        errno = cause;
        Fail(path);
    }
}

} // namespace tavrel
