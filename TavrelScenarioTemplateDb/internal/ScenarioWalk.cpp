#include <TavrelScenarioTemplateDb/internal/ScenarioWalk.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Commons/WholeFile.h>
#include <Poco/DirectoryIterator.h>
#include <Poco/Exception.h>
#include <Poco/Path.h>

namespace TavrelScenarioTemplateDb::internal {

namespace {

constexpr std::string_view kScenarioSuffix = ".sce";

// What leads nowhere: a link does so by itself; anything else has gone, or become something else, since it was listed.
bool isLink(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool isGone(int error, const std::string& path) { return (error == ENOENT || error == ENOTDIR) && !isLink(path); }

int errorOf(const Poco::Exception& failure) {
    if (dynamic_cast<const Poco::FileNotFoundException*>(&failure)) return ENOENT;
    if (dynamic_cast<const Poco::OpenFileException*>(&failure)) return ENOTDIR;
    return EIO;
}

// ---- by way of Poco, whose failures are the ones that hosts know

// Lists by hand, because Poco's own traversal asks the disk whether an entry is a folder and keeps the answer to
// itself, so that asking whether it is a file would double the cost.
void walkByPoco(const std::string& root, const ScenarioVisitor& visitor) {
    const Poco::DirectoryIterator end;
    std::vector<std::string> folders{root}; // those still to be listed, the next one at the end
    while (!folders.empty()) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        const auto subfolders = static_cast<std::ptrdiff_t>(folders.size());
        Poco::DirectoryIterator entry;
        try {
            entry = Poco::DirectoryIterator(folder);
        } catch (const Poco::Exception& failure) {
            if (folder == root || !isGone(errorOf(failure), folder)) throw;
            continue;
        }
        for (; entry != end; ++entry) {
            const std::string& path = entry->path();
            const std::size_t name = path.rfind('/') + 1;
            if (Commons::IsSaveUnderWay(std::string_view(path).substr(name))) continue;
            bool isFile = false, isFolder = false;
            try {
                isFile = entry->isFile();
                isFolder = !isFile && entry->isDirectory();
            } catch (const Poco::Exception& failure) {
                if (!isGone(errorOf(failure), path)) throw;
            }
            if (isFolder) folders.push_back(path);
            if (!isFile || !path.ends_with(kScenarioSuffix)) continue;
            // From after the root's slash on.
            const std::string_view below = std::string_view(path).substr(std::min(root.size() + 1, name));
            const std::size_t length = below.size() - (path.size() - name);
            if (!visitor.found(below.substr(0, length), below.substr(length))) return;
        }
        std::reverse(folders.begin() + subfolders, folders.end());
    }
}

// ---- by the entries of the folders, which know what they are

// What a folder holds, as the kernel gives it.
class Entries {
public:
    Entries() : bytes(std::size_t(64) * 1024 / sizeof(std::max_align_t)) {}
    ~Entries() { close(); }
    Entries(const Entries&) = delete;
    Entries& operator=(const Entries&) = delete;

    bool open(const std::string& folder) {
        close();
        position = end = 0;
        descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
        return descriptor >= 0;
    }
    // Whether the entry can be reached, as a folder that may be listed need not let one in.
    bool canReach(const dirent64& entry) const {
        struct stat status {};
        return ::fstatat(descriptor, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
    }
    // The next entry but for the folder itself and the one above it; null at the end.
    const dirent64* next() {
        while (position < end || fill()) {
            const auto* entry = reinterpret_cast<const dirent64*>(data() + position);
            position += entry->d_reclen;
            const char* name = entry->d_name;
            if (name[0] != '.' || (name[1] != '\0' && (name[1] != '.' || name[2] != '\0'))) return entry;
        }
        return nullptr;
    }

private:
    char* data() { return reinterpret_cast<char*>(bytes.data()); }
    // A failure counts as the end, as it does for Poco.
    bool fill() {
        const ssize_t size = ::getdents64(descriptor, data(), bytes.size() * sizeof(std::max_align_t));
        position = 0;
        end = size > 0 ? static_cast<std::size_t>(size) : 0;
        return end > 0;
    }
    void close() {
        if (descriptor >= 0) ::close(descriptor);
        descriptor = -1;
    }

    std::vector<std::max_align_t> bytes;
    int descriptor = -1;
    std::size_t position = 0;
    std::size_t end = 0;
};

class EntryWalk {
public:
    EntryWalk(const std::string& rootFolder, const ScenarioVisitor& scenarioVisitor)
        : root(rootFolder), visitor(scenarioVisitor) {}

    // False if anything could not be read, or may not be readable for Poco.
    bool run() {
        // Poco takes such a root for another one.
        if (Poco::Path(root).toString() != root || root.ends_with('/')) return false;
        folders.emplace_back();
        while (!folders.empty() && !isOver) {
            const std::string folder = std::move(folders.back());
            folders.pop_back();
            const auto subfolders = static_cast<std::ptrdiff_t>(folders.size());
            if (!list(folder)) return false;
            std::reverse(folders.begin() + subfolders, folders.end());
        }
        return true;
    }

private:
    // `folder` is a path below the root, empty or with a slash at its end.
    bool list(const std::string& folder) {
        path = root + '/' + folder;
        if (!entries.open(path)) return !folder.empty() && isGone(errno, path.substr(0, path.size() - 1));
        const std::size_t length = path.size();
        bool isChecked = false; // whether entries of this folder may be looked at
        while (const dirent64* entry = entries.next()) {
            const std::string_view name = entry->d_name;
            if (Commons::IsSaveUnderWay(name)) continue;
            if (length + name.size() >= PATH_MAX) return false;
            unsigned char type = entry->d_type;
            if (type == DT_LNK || type == DT_UNKNOWN) {
                path.resize(length);
                path += name;
                if (!look(type)) return false;
                isChecked = isChecked || type != DT_UNKNOWN;
            } else if (!isChecked) {
                isChecked = entries.canReach(*entry);
                if (!isChecked && errno == ENOENT) continue; // gone since it was listed
                if (!isChecked) return false;
            }
            if (type == DT_DIR)
                folders.push_back(folder + std::string(name) + '/');
            else if (type == DT_REG && name.ends_with(kScenarioSuffix) && !visitor.found(folder, name)) {
                isOver = true;
                return true;
            }
        }
        return true;
    }

    // What stands at `path`; DT_UNKNOWN if it is gone. False if it cannot be told.
    bool look(unsigned char& type) const {
        struct stat status {};
        type = DT_UNKNOWN;
        if (::stat(path.c_str(), &status) != 0) return isGone(errno, path);
        type = S_ISREG(status.st_mode) ? DT_REG : S_ISDIR(status.st_mode) ? DT_DIR : DT_CHR;
        return true;
    }

    const std::string& root;
    const ScenarioVisitor& visitor;
    std::vector<std::string> folders; // those still to be listed, the next one at the end
    Entries entries;
    std::string path;
    bool isOver = false;
};

} // namespace

std::string relativePath(std::string_view folder, std::string_view name) {
    std::string relative;
    relative.reserve(folder.size() + name.size());
    relative.append(folder).append(name);
    for (std::size_t at = relative.find('\\'); at != std::string::npos; at = relative.find('\\', at))
        relative[at] = '/';
    return relative;
}

void walkScenarioFiles(const std::string& root, const ScenarioVisitor& visitor) {
    visitor.begin();
    if (EntryWalk(root, visitor).run()) return;
    visitor.begin();
    walkByPoco(root, visitor);
}

} // namespace TavrelScenarioTemplateDb::internal
