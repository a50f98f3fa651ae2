#ifndef SUPPORT_DATAPATH_H
#define SUPPORT_DATAPATH_H

#include <filesystem>
#include <fstream>
#include <string>

#include <lmkUtils/EnvConfig.h>

// An installation of one configuration, current while the object lives, whose data path is a single folder. What was in
// use before is put back.
class DataPath {
public:
    DataPath()
        : formerFile(lmkUtils::EnvConfig::ourConfigCfgFile),
          formerConfiguration(lmkUtils::EnvConfig::getCurrentConfiguration()) {
        std::string pattern = (std::filesystem::temp_directory_path() / "tavrel-data-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        WriteAbsolute(folder / "tavrel.xml", "<tavrel><configuration name=\"Test\" path=\"c\"/></tavrel>");
        WriteAbsolute(folder / "c/configuration.xml",
                      "<configuration version=\"1\"><dataPath><root>../root</root></dataPath></configuration>");
        std::filesystem::create_directories(Root());
        lmkUtils::EnvConfig::setTavrelConfigFilePath((folder / "tavrel.xml").string());
        lmkUtils::EnvConfig::setConfig("Test", false);
    }
    ~DataPath() {
        lmkUtils::EnvConfig::setConfig("", false);
        lmkUtils::EnvConfig::ourConfigCfgFile = formerFile;
        if (!formerConfiguration.empty()) lmkUtils::EnvConfig::setConfig(formerConfiguration, false);
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    DataPath(const DataPath&) = delete;
    DataPath& operator=(const DataPath&) = delete;

    std::filesystem::path Root() const { return folder / "root"; }
    // Makes a file below the root, with its folders.
    void Write(const std::string& relative, const std::string& content) { WriteAbsolute(Root() / relative, content); }

private:
    static void WriteAbsolute(const std::filesystem::path& path, const std::string& content) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
    }

    std::string formerFile;
    std::string formerConfiguration;
    std::filesystem::path folder;
};

#endif
