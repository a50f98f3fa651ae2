// Paths as items store them: with backslashes, and resolved through the environment.
#include <lmkUtils/EnvConfig.h>
#include <scenario/ItemText.h>

void NormalizePath(std::string& path) {
    std::size_t kept = 0;
    for (std::size_t at = 0; at < path.size(); ++at) {
        // A slash in front is the root of a file system that knows no backslash.
        const char c = path[at] == '/' && at > 0 ? '\\' : path[at];
        // The second of two in front stays: it begins a network path.
        if (c == '\\' && at > 1 && path[kept - 1] == '\\') continue;
        path[kept++] = c;
    }
    path.resize(kept);
}

std::string FileNameOf(const char* path) { return path ? FileNameOf(std::string(path)) : std::string(); }

std::string FileNameOf(const std::string& path) { return path.substr(path.find_last_of("\\/") + 1); }

void ResolveDataPath(const char* file, std::string& directory) {
    const std::string found = file ? lmkUtils::EnvConfig::findInPath(directory, file) : std::string();
    if (!found.empty()) {
        directory = found;
    } else {
        if (file) directory.append("\\").append(file);
        directory = lmkUtils::EnvConfig()[directory];
    }
    NormalizePath(directory);
}

void ResolveDataPath(const std::string& file, std::string& directory) { ResolveDataPath(file.c_str(), directory); }

std::string ParameterFileOf(const std::string& path) {
    if (path.empty()) return path;
    return path.substr(0, path.size() < 2 ? 0 : path.size() - 2) + "par";
}
