#include <support/InstallationBuilder.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <lmkUtils/EnvConfig.h>

namespace fs = std::filesystem;
using lmkUtils::EnvConfig;

namespace {

// Texts of a test hold no more than these.
std::string attribute(const std::string& name, const std::string& value) {
    std::string text;
    for (const char c : value)
        c == '&' ? text += "&amp;" : c == '<' ? text += "&lt;" : c == '"' ? text += "&quot;" : text += c;
    return " " + name + "=\"" + text + "\"";
}

bool standsAlone(const std::string& root) { return root.starts_with('/') || root.starts_with("${"); }

// A folder that a test has locked would not be removed.
void unlock(const fs::path& folder) {
    std::error_code ignored;
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ignored);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored))
        if (!entry.is_symlink(ignored) && entry.is_directory(ignored)) unlock(entry.path());
}

} // namespace

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

InstallationBuilder::InstallationBuilder() : formerlyInUse(EnvConfig::getInUse()) {
    std::string pattern = (fs::canonical(fs::temp_directory_path()) / "tavrel installation XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    folder = pattern;
    writeInstallation();
}

InstallationBuilder::~InstallationBuilder() {
    for (const auto& [name, former] : variables)
        former ? setenv(name.c_str(), former->c_str(), 1) : unsetenv(name.c_str());
    EnvConfig::putBack(formerlyInUse);
    unlock(folder);
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

std::string InstallationBuilder::file() const { return folder + "/tavrel.xml"; }

void InstallationBuilder::use() const { EnvConfig::setTavrelConfigFilePath(file()); }

void InstallationBuilder::configuration(const std::string& name, const std::string& version,
                                        const std::vector<std::string>& roots) {
    const auto known = std::find_if(configurations.begin(), configurations.end(),
                                    [&name](const Configuration& one) { return one.name == name; });
    const size_t number = static_cast<size_t>(known - configurations.begin());
    const std::string path = "configurations/" + std::to_string(number);
    std::string content =
        "<configuration" + (version.empty() ? "" : attribute("version", version)) + ">\n  <dataPath>\n";
    for (const std::string& root : roots)
        content += "    <root>" + (standsAlone(root) ? root : "../../" + root) + "</root>\n";
    write(path + "/configuration.xml", content + "  </dataPath>\n</configuration>\n");
    if (known == configurations.end()) configurations.push_back({name, path});
    writeInstallation();
}

void InstallationBuilder::pathVariable(const std::string& name, const std::string& relative) {
    const char* former = std::getenv(name.c_str());
    variables.emplace(name, former ? std::optional<std::string>(former) : std::nullopt);
    setenv(name.c_str(), (folder + "/" + relative).c_str(), 1);
    writeInstallation();
}

void InstallationBuilder::writeInstallation() const {
    std::string content = "<tavrel>\n";
    for (const auto& [name, former] : variables) content += "  <pathVariable" + attribute("name", name) + "/>\n";
    for (const Configuration& one : configurations)
        content += "  <configuration" + attribute("name", one.name) + attribute("path", one.path) + "/>\n";
    write("tavrel.xml", content + "</tavrel>\n");
}

std::string InstallationBuilder::write(const std::string& relative, const std::string& content) const {
    const fs::path path = fs::path(folder) / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

std::string InstallationBuilder::scenario(const std::string& root, const std::string& relative,
                                          const SectionText& rootSection) const {
    return scenario(root, relative, rootSection.file());
}

std::string InstallationBuilder::scenario(const std::string& root, const std::string& relative,
                                          const std::string& content) const {
    return write(root + "/data/scenario/" + relative, content);
}

std::string InstallationBuilder::model(const std::string& root) const {
    return model(root, "TYPEOF FOLDER (MODEL)\n{\n}\n");
}

std::string InstallationBuilder::model(const std::string& root, const std::string& content) const {
    return write(root + "/data/tools/nuro/nuro.mdl", content);
}
