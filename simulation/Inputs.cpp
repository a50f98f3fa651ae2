#include <simulation/Inputs.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include <lmkUtils/EnvConfig.h>
#include <simulation/Sha256.h>

namespace TavrelSimulation {

namespace {

namespace fs = std::filesystem;

// Paths in items are stored with backslashes.
std::string FileOf(const Include& include) {
    std::string file = include.resolvedPath.empty() ? include.fileName : include.resolvedPath;
    std::error_code error;
    if (!fs::exists(file, error)) std::replace(file.begin(), file.end(), '\\', '/');
    if (!fs::is_regular_file(file, error)) {
        std::string name = include.fileName;
        std::replace(name.begin(), name.end(), '\\', '/');
        file = lmkUtils::EnvConfig::findInPath(Include::kDirectory, name);
    }
    return fs::is_regular_file(file, error) ? file : "";
}

void Collect(const ScenarioItem& item, const std::string& installationFile, std::set<std::string>& known,
             std::vector<Input>& inputs) {
    if (const auto* include = dynamic_cast<const Include*>(&item); include && include->IsIndexEntry()) {
        const std::string file = FileOf(*include);
        if (!file.empty() && known.insert(file).second) inputs.push_back(InputOf("include", file, installationFile));
    }
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (const ScenarioItem* child : children)
        if (dynamic_cast<const Task*>(child)) Collect(*child, installationFile, known, inputs);
}

} // namespace

Input InputOf(const std::string& role, const std::string& file, const std::string& installationFile) {
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(fs::absolute(installationFile).parent_path(), error);
    const fs::path path = fs::weakly_canonical(fs::absolute(file), error);
    const fs::path relative = path.lexically_relative(folder);
    return {role, relative.empty() ? path.generic_string() : relative.generic_string(), Sha256OfFile(file)};
}

std::vector<Input> IncludesOf(const ScenarioLib::Scenario& scenario, const std::string& installationFile) {
    std::vector<Input> inputs;
    std::set<std::string> known;
    Collect(scenario, installationFile, known, inputs);
    return inputs;
}

} // namespace TavrelSimulation
