#include <TavrelScenarioTemplateDb/internal/FileBytes.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TavrelScenarioTemplateDb::internal {

namespace {

// Small enough to stay in the processor's cache from the read to the comparison.
constexpr std::size_t kPiece = std::size_t(32) * 1024;

bool readsAs(int descriptor, std::string_view bytes) {
    std::array<char, kPiece> piece;
    while (!bytes.empty()) {
        const ssize_t size = ::read(descriptor, piece.data(), std::min(piece.size(), bytes.size()));
        if (size <= 0 || std::memcmp(piece.data(), bytes.data(), static_cast<std::size_t>(size)) != 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
    return ::read(descriptor, piece.data(), 1) == 0;
}

} // namespace

bool holdsExactly(const std::string& path, std::string_view bytes) {
    // Such a path would lead elsewhere than it leads the reader.
    if (path.find('\\') != std::string::npos || path.find('\0') != std::string::npos) return false;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) return false;
    struct stat status {};
    const bool isSame = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                        static_cast<std::size_t>(status.st_size) == bytes.size() && readsAs(descriptor, bytes);
    ::close(descriptor);
    return isSame;
}

} // namespace TavrelScenarioTemplateDb::internal
