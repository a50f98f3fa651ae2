#ifndef LMKUTILS_INSTALLATION_H
#define LMKUTILS_INSTALLATION_H

#include <cstdint>
#include <string>
#include <vector>

// The two files that describe an installation, read as they are on disk at this moment.
namespace lmkUtils::detail {

struct Configuration {
    std::string name;
    std::string folder; // absolute, concrete, forward slashes
};

// The installation file.
struct Installation {
    std::vector<std::string> pathVariables; // names of environment variables that may stand in generic paths
    std::vector<Configuration> configurations;
};

// Reads the installation file; `shownPath` is its name in messages. Throws ConfigurationError.
Installation ReadInstallation(const std::string& path, const std::string& shownPath);

// The roots of the data path that the configuration in `folder` declares: absolute, concrete, forward slashes. They
// need not exist. Throws ConfigurationError.
std::vector<std::string> ReadDataPath(const std::string& folder);

// The version text that the configuration in `folder` declares. Throws ConfigurationError if there is none.
std::string ReadVersionText(const std::string& folder);

// The path below `folder`, unless it is absolute, with forward slashes and without detours through "." and "..". A
// step back out of a symbolic link stays, since it does not lead to where it seems to.
std::string AbsolutePath(const std::string& path, const std::string& folder);

} // namespace lmkUtils::detail

#endif
