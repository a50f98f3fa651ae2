// The sample installation is documentation that runs: every model, include, script and template of it has to be
// accepted as it stands, and to mean what its README says.

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <cfg/CfgScenario.h>
#include <cfg/Driver.h>
#include <cfg/ScenarioScript.h>
#include <cfg/Vehicle.h>
#include <gtest/gtest.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/ItemModel.h>
#include <support/FailureOf.h>
#include <support/ModelText.h>

namespace {

namespace fs = std::filesystem;
using lmkUtils::EnvConfig;

const std::string kInstallation = SAMPLE_INSTALLATION "/tavrel.xml";

std::string without(char character, std::string text) {
    std::erase(text, character);
    return text;
}

// A configuration that is current, with its root model in use.
class Configuration {
public:
    explicit Configuration(const std::string& configurationName) : name(configurationName) {
        EnvConfig::setTavrelConfigFilePath(kInstallation);
        EnvConfig::setConfig(name, false);
        const std::string path = EnvConfig::findInPath("data/tools/nuro", "nuro.mdl");
        scenarioRootModel = nullptr; // the model must not link to that of another test
        model.reset(dynamic_cast<Folders*>(LoadScenarioFile(path.c_str(), &log, false)));
        scenarioRootModel = model.get();
    }
    ~Configuration() {
        scenarioRootModel = nullptr;
        scenarioLog = nullptr;
        EnvConfig::leaveConfig();
    }
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;

    // Each scenario file, with the folder that it stands in.
    void eachScenario(const std::function<void(const std::string& directory, const fs::path& file)>& visit) const {
        for (const std::string& directory : EnvConfig::getSeparatedPath("data/scenario"))
            for (const auto& entry : fs::recursive_directory_iterator(directory))
                if (entry.path().extension() == ".sce") visit(directory, entry.path());
    }

    std::string name;
    std::ostringstream log;
    std::unique_ptr<Folders> model;
};

const char* const kConfigurations[] = {"City", "Highway", "Fahrschule Süd", "Classic"};

// ---- what a host fills in, as the README of the installation tells it

std::string textOf(cfg::Section* section, const std::string& parameter) {
    for (auto it = section->beginParameter(); it != section->endParameter(); ++it)
        if (it.getCName() == parameter) return it.getString();
    return "";
}

std::vector<cfg::Section*> sections(cfg::Section* parent, const char* name) {
    std::vector<cfg::Section*> found;
    parent->getSubSections(name, found);
    return found;
}

void fill(ScenarioLib::Scenario& scenario, cfg::Section* root) {
    for (cfg::Section* section : sections(root, cfg::Vehicle::sectionName())) {
        const auto* vehicle = dynamic_cast<cfg::Vehicle*>(section);
        VEHICLE& record = scenario.GetVehicle(vehicle->id);
        record.name = vehicle->name;
        for (cfg::Section* input : sections(section, "Input")) record.inputs.push_back({textOf(input, "name")});
        for (cfg::Section* output : sections(section, "Output")) record.outputs.push_back({textOf(output, "name")});
    }
    for (cfg::Section* section : sections(root, cfg::Driver::sectionName())) {
        const auto* driver = dynamic_cast<cfg::Driver*>(section);
        scenario.channelNumbers[driver->name] = driver->id;
    }
    const std::pair<const char*, std::map<std::string, std::int32_t>*> tables[] = {
        {"Trigger", &scenario.triggers}, {"Image", &scenario.images}, {"Sound", &scenario.sounds}};
    for (const auto& [name, table] : tables)
        for (cfg::Section* section : sections(root, name))
            table->emplace(textOf(section, "name"), static_cast<std::int32_t>(table->size()));
}

std::unique_ptr<ScenarioItem> readText(const std::string& text, std::ostream* log) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    return std::unique_ptr<ScenarioItem>(LoadScenarioText(stream, nullptr, nullptr, log, false));
}

// ---- models

TEST(SampleInstallation, ModelsReadAndUseEveryWordOfKindAndEveryTypeOfEntry) {
    const Configuration city("City");
    std::vector<ScenarioItem*> items;
    city.model->FindItem(KindFolder, "PARAMETER_LIST", "")->CollectItemsOfKind(items, KindParameter, false, false);
    std::set<std::string> words;
    for (const ScenarioItem* item : items) {
        const auto* parameter = dynamic_cast<const Parameter*>(item);
        words.insert(parameter->kindList.begin(), parameter->kindList.end());
    }
    EXPECT_EQ(words.size(), 24U) << testing::PrintToString(words);
    items.clear();
    city.model->CollectItemsOfKind(items, KindEnum, false, false);
    std::set<std::string> types;
    for (const ScenarioItem* item : items) types.insert(dynamic_cast<const Enum*>(item)->type);
    EXPECT_EQ(types, (std::set<std::string>{"BOOL", "FLOAT", "INTEGER", "STRING"}));
}

// ---- scripts

// Scripts of the archive are upgraded when they are read, and an evaluation that is a reference does not write its
// file; what all others are written back as is what they were.
bool isWrittenDifferently(const fs::path& file) {
    return file.string().find("/archive/") != std::string::npos || file.filename() == "Eco drive.sce";
}

// That all of them are valid and run is tested with the command.
TEST(SampleInstallation, EveryScriptReadsAndIsWrittenAsItWas) {
    for (const char* name : kConfigurations) {
        const Configuration configuration(name);
        ASSERT_TRUE(configuration.model) << name;
        std::size_t scripts = 0;
        configuration.eachScenario([&](const std::string&, const fs::path& path) {
            const LoadProblems problems;
            cfg::CfgScenario file;
            ASSERT_TRUE(
                file.load(path.c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true))
                << file.errorMessage;
            for (cfg::Section* section : sections(file.getRootSection(), cfg::ScenarioScript::sectionName())) {
                SCOPED_TRACE(std::string(name) + ": " + path.string());
                const std::string& text = dynamic_cast<cfg::ScenarioScript*>(section)->text;
                std::ostringstream log;
                const auto item = readText(text, &log);
                ASSERT_TRUE(item) << log.str();
                EXPECT_EQ(problems.told, std::vector<std::string>());
                auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(item.get());
                ASSERT_TRUE(scenario);

                for (const Include* include : scenario->includes) EXPECT_NE(include->label, "?") << include->fileName;

                if (!isWrittenDifferently(path)) {
                    EXPECT_EQ(SavedText(*scenario), without('\r', text));
                }
                ++scripts;
            }
        });
        EXPECT_GE(scripts, 4U) << name;
    }
}

TEST(SampleInstallation, CallsOfTheArchiveComeOutInTheirNewestForm) {
    const struct {
        const char* file;
        const char* shown; // the call as a list shows it, the upgraded part included
    } rows[] = {
        {"Exported channel.sce", "IF    Exported channel  (5)  >  0.5"},
        {"At a position.sce", "IF    Is at  ([0] Car,  120,  1.75,  10)    BECOMES TRUE"},
        {"Image without time.sce",
         "THEN  Show the image  (arrow_left.png,  Centre screen,  0.1,  0.1,  0.2,  0.2,  3)"},
        {"Animation of a vehicle.sce", "THEN  Start the animation  (3,  wave,  Yes,  Vehicle,  2)"},
        {"Animation of the scenery.sce", "THEN  Start the animation  (3,  wave,  Yes,  Object of the scenery,  0)"},
        {"Snapshot.sce", "THEN  Take a picture  (Mirror,  \"\")"},
        {"Time marker.sce", "THEN  Mark this moment  (Halfway,  \"\")"},
    };
    const Configuration configuration("City");
    for (const auto& row : rows) {
        cfg::CfgScenario file;
        const std::string path = EnvConfig::findInPath("data/scenario/archive/scripts before 3.0", row.file);
        ASSERT_TRUE(
            file.load(path.c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true))
            << row.file;
        auto* script = dynamic_cast<cfg::ScenarioScript*>(
            file.getRootSection()->getSubSection(cfg::ScenarioScript::sectionName()));
        const auto item = readText(script->text, nullptr);
        ASSERT_TRUE(item) << row.file;
        fill(dynamic_cast<ScenarioLib::Scenario&>(*item), file.getRootSection());
        item->UpdateDisplayTextTree();

        std::vector<ScenarioItem*> calls;
        for (const std::uint32_t kind : {KindCondition, KindAction})
            item->CollectItemsOfKind(calls, kind, false, false);
        const bool found = std::any_of(calls.begin(), calls.end(),
                                       [&](const ScenarioItem* call) { return call->displayText == row.shown; });
        EXPECT_TRUE(found) << row.file << " does not show " << row.shown;
    }
}

TEST(SampleInstallation, GeneralParametersStandBesideTheirScenario) {
    const Configuration configuration("Highway");
    cfg::CfgScenario file;
    const std::string path = EnvConfig::findInPath("data/scenario/motorway", "Nebelbank.sce");
    ASSERT_TRUE(file.load(path.c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true));
    const auto item = readText(
        dynamic_cast<cfg::ScenarioScript*>(file.getRootSection()->getSubSection(cfg::ScenarioScript::sectionName()))
            ->text,
        nullptr);
    const auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(item.get());
    ASSERT_TRUE(scenario && scenario->generalParameters);
    EXPECT_EQ(scenario->generalParameters->description,
              "Nebel in zwanzig Sekunden, dahinter ein Stau. Grüße an alle Schüler.");
}

// ---- templates

TEST(SampleInstallation, EveryTemplateOpensAndEveryDeclarationHasItsTarget) {
    std::size_t scenarios = 0;
    std::set<ScenarioTemplateDb::ParameterType> types;
    for (const char* name : kConfigurations) {
        const TavrelScenarioTemplateDb::TavrelDatabaseDriver driver(kInstallation, "*", name);
        std::vector<std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory>> directories;
        driver.getRootDirectory()->getDirectory(0)->getDirectory(0)->getDirectories(directories);
        for (const auto& directory : directories) {
            std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>> found;
            directory->getScenarios(found);
            for (const auto& scenario : found) {
                SCOPED_TRACE(std::string(name) + ": " + scenario->getPath());
                EXPECT_EQ(failureOf([&] { scenario->getRootScenarioNode(); }), Failure());
                const std::size_t number = scenario->getVariadicParameterNumber();
                for (std::size_t i = 0; i < number; ++i) {
                    const auto* declaration = scenario->getVariadicParameter(i);
                    EXPECT_TRUE(declaration->getTargetParameter()) << declaration->getParameterId();
                    types.insert(declaration->getType());
                }
                ++scenarios;
            }
        }
    }
    EXPECT_GE(scenarios, 30U);
    EXPECT_EQ(types.size(), 4U);
}

} // namespace
