// Benchmarks compare runs on generated installations, so these have to be the same in every run and have to be
// accepted: a script that is refused at its first row is quick to open.

#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <support/InstallationBuilder.h>

#include "GenerateInstallation.h"

namespace {

namespace fs = std::filesystem;

InstallationSize small() {
    InstallationSize size;
    size.seed = 5;
    size.configurations = 2;
    size.scenarios = 30;
    size.vehiclesPerScenario = 3;
    size.scriptsPerScenario = 2;
    size.modelDefinitions = 64;
    return size;
}

std::map<std::string, std::string> filesOf(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        files[fs::relative(entry.path(), folder).string()] = contentOf(entry.path());
    }
    return files;
}

TEST(GeneratedInstallation, IsTheSameForOneSeedAndAnotherForAnother) {
    const InstallationBuilder first, second, third; // for their folders alone
    generateInstallation(first.path(), small());
    generateInstallation(second.path(), small());
    InstallationSize other = small();
    other.seed = 6;
    generateInstallation(third.path(), other);
    const auto files = filesOf(first.path());
    EXPECT_EQ(files.size(), 1U + 2 * (1 + 1 + 30)); // installation; configuration, model and scenarios of each
    EXPECT_TRUE(files == filesOf(second.path()));
    EXPECT_FALSE(files == filesOf(third.path()));
}

TEST(GeneratedInstallation, EveryTemplateOpensWithAllItsVariables) {
    const InstallationBuilder folder;
    const std::string file = generateInstallation(folder.path(), small()).string();
    for (const char* name : {"Configuration 0", "Configuration 1"}) {
        const TavrelScenarioTemplateDb::TavrelDatabaseDriver driver(file, "*", name);
        std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>> scenarios;
        driver.getRootDirectory()->getDirectory(0)->getDirectory(0)->getDirectory(0)->getScenarios(scenarios);
        EXPECT_EQ(scenarios.size(), 30U);
        for (const auto& scenario : scenarios) {
            const auto* root = scenario->getRootScenarioNode();
            // Weather, the declaration, vehicles, drivers, scripts.
            ASSERT_EQ(root->getChildNumber(), 1U + 1 + 3 + 3 + 2) << scenario->getPath();
            EXPECT_EQ(root->getChild(9)->getParameterNumber(), 5U) << scenario->getPath();
            EXPECT_EQ(scenario->getVariadicParameterNumber(), 1U);
        }
    }
}

TEST(GeneratedInstallation, XmlHasOneElementForEachItemAndOneAttributeForEachLine) {
    InstallationSize size = small();
    const std::string text = generateScript(size, 1);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(asXml(text).c_str()));
    std::size_t items = 0;
    std::size_t attributes = 0;
    const auto count = [&](const auto& self, const pugi::xml_node& node) -> void {
        ++items;
        for (const auto& attribute : node.attributes()) attributes += std::string(attribute.name()) != "name";
        for (const auto& child : node.children()) self(self, child);
    };
    count(count, document.first_child());

    std::size_t headers = 0;
    std::size_t lines = 0;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        headers += line.find("TYPEOF ") != std::string::npos;
        lines += line.find("=\"") != std::string::npos;
    }
    EXPECT_EQ(items, headers);
    EXPECT_EQ(attributes, lines);
}

} // namespace
