#include "Files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Commons/WholeFile.h>
#include <fmt/format.h>

#include "Failure.h"

namespace tavrel {

namespace {

[[noreturn]] void Fail(const std::string& path) {
    throw Failure{ExitUnreadable, fmt::format("cannot write {}: {}", path, std::strerror(errno))};
}

bool WriteAndClose(int file, std::string_view text) {
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
    return close(file) == 0;
}

} // namespace

void Walk(const std::string& folder, const std::function<void(const std::string& path)>& found,
          const std::function<void(const std::string& sentence)>& failed) {
    std::vector<std::string> folders{folder};
    while (!folders.empty()) {
        const std::string walked = std::move(folders.back());
        folders.pop_back();
        std::error_code error, unknown;
        for (std::filesystem::directory_iterator entry(walked, error), end; !error && entry != end;
             entry.increment(error)) {
            found(entry->path().string());
            if (!entry->is_symlink(unknown) && entry->is_directory(unknown)) folders.push_back(entry->path().string());
        }
        if (error) failed(fmt::format("{}: {}", walked, Commons::WordsOf(error)));
    }
}

void SaveFile(const std::string& path, std::string_view text) {
    struct stat former = {};
    const bool exists = stat(path.c_str(), &former) == 0;
    if (exists && !S_ISREG(former.st_mode)) {
        const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (file < 0 || !WriteAndClose(file, text)) Fail(path);
        return;
    }
    std::string reason;
    if (!Commons::WriteFileWhole(path, text, reason))
        throw Failure{ExitUnreadable, fmt::format("cannot write {}: {}", path, reason)};
}

} // namespace tavrel
