#ifndef SUPPORT_INSTALLATIONBUILDER_H
#define SUPPORT_INSTALLATIONBUILDER_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <lmkUtils/EnvConfig.h>
#include <support/SectionText.h>

// The bytes of a file.
std::string contentOf(const std::string& path);

// An installation in a temporary folder of its own, which goes with this object. Every operation writes at once, so a
// test may change the installation while it is in use. The file and the configuration that the process used before are
// put back at the end.
class InstallationBuilder {
public:
    InstallationBuilder();
    ~InstallationBuilder();
    InstallationBuilder(const InstallationBuilder&) = delete;
    InstallationBuilder& operator=(const InstallationBuilder&) = delete;

    // The folder, absolute and without links, and the installation file in it.
    const std::string& path() const { return folder; }
    std::string file() const;
    // Makes the file the one in use.
    void use() const;

    // Adds a configuration, or replaces the one of that name. Roots are relative to path(), unless they are absolute or
    // begin with a variable; they are not made. An empty version is left out of the file.
    void configuration(const std::string& name, const std::string& version, const std::vector<std::string>& roots);
    // Lets a variable of the process stand in generic paths and sets it to a folder below path().
    void pathVariable(const std::string& name, const std::string& relative);

    // Makes a file below path() with its folders; gives its absolute path.
    std::string write(const std::string& relative, const std::string& content) const;
    // Makes "data/scenario" of a root and in it a scenario; gives its absolute path.
    std::string scenario(const std::string& root, const std::string& relative, const SectionText& rootSection) const;
    std::string scenario(const std::string& root, const std::string& relative, const std::string& content) const;
    // Makes the root model of a root, without a definition in it unless there is a text.
    std::string model(const std::string& root) const;
    std::string model(const std::string& root, const std::string& content) const;

private:
    void writeInstallation() const;

    struct Configuration {
        std::string name;
        std::string path;
    };

    std::string folder;
    std::vector<Configuration> configurations;
    std::map<std::string, std::optional<std::string>> variables; // with what they were before
    lmkUtils::EnvConfig::InUse formerlyInUse;
};

#endif
