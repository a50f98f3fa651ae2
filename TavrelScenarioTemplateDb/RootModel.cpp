#include <TavrelScenarioTemplateDb/RootModel.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <Commons/FileUtils.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/program.h>

namespace TavrelScenarioTemplateDb {

std::string RootModel::fileOf(const std::string& configuration) {
    const std::vector<std::string> candidates =
        lmkUtils::EnvConfig::getSeparatedPathForConfiguration(configuration, kPath);
    const auto candidate = std::find_if(candidates.begin(), candidates.end(), Commons::FileUtils::DoesFileExist);
    return candidate == candidates.end() ? std::string() : *candidate;
}

RootModel::Outcome RootModel::use(const std::string& file, std::ostream* log) {
    static auto* const kept = new std::vector<std::unique_ptr<ScenarioItem>>(); // by which every model stays reachable
    struct Current {
        ~Current() { scenarioRootModel = model; }
        Folders* model = std::exchange(scenarioRootModel, nullptr);
    } current;
    std::unique_ptr<ScenarioItem> item(LoadScenarioFile(file.c_str(), log, false));
    if (!item) return Outcome::Unreadable;
    auto* model = dynamic_cast<Folders*>(item.get());
    if (!model) return Outcome::NoFolder;
    kept->push_back(std::move(item));
    current.model = model;
    return Outcome::InUse;
}

} // namespace TavrelScenarioTemplateDb
