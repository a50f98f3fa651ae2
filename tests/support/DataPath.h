#ifndef SUPPORT_DATAPATH_H
#define SUPPORT_DATAPATH_H

#include <filesystem>
#include <string>

#include <lmkUtils/EnvConfig.h>
#include <scenario/ScenarioItem.h>
#include <support/InstallationBuilder.h>

// An installation of one configuration, current while the object lives, whose data path is the folder Root().
class DataPath {
public:
    DataPath() {
        installation.configuration("Test", "1", {"root"});
        installation.use();
        lmkUtils::EnvConfig::setConfig("Test", false);
        std::filesystem::create_directories(Root());
    }

    std::filesystem::path Root() const { return installation.path() + "/root"; }
    // A path below the root as the model writes paths.
    std::string Normal(const std::string& relative) const {
        std::string path = (Root() / relative).string();
        NormalizePath(path);
        return path;
    }
    // Makes a file below the root, with its folders.
    void Write(const std::string& relative, const std::string& content) const {
        installation.write("root/" + relative, content);
    }

private:
    InstallationBuilder installation;
};

#endif
