#ifndef BENCHMARKS_GENERATE_INSTALLATION_H
#define BENCHMARKS_GENERATE_INSTALLATION_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

// What is to be generated. The same values give the same files, byte for byte, on every machine.
struct InstallationSize {
    std::uint64_t seed = 1;
    std::size_t configurations = 1;       // each with a pack of its own
    std::size_t scenarios = 10;           // in each configuration
    std::size_t folderDepth = 2;          // levels of folders below data/scenario; scenarios stand in all of them
    std::size_t foldersPerLevel = 4;      // sub-folders of each folder above the lowest level
    std::size_t vehiclesPerScenario = 10; // each with its driver
    std::size_t scriptsPerScenario = 0;
    std::size_t rulesPerScript = 20;
    std::size_t variablesPerScript = 5;
    std::size_t modelDefinitions = 0; // half of them parameters; less than eight count as none
};

// Writes an installation below `folder`, over whatever stands there, and answers the path of its installation file.
// The configurations are named "Configuration 0" and so on, the scenarios "Scenario 0"; throws std::runtime_error for a
// file that cannot be written.
std::filesystem::path generateInstallation(const std::filesystem::path& folder, const InstallationSize& size);

// The single texts of it. A script links to the model of the same size only; with rules in it, it needs a model with
// definitions, and throws std::runtime_error otherwise.
std::string generateModel(const InstallationSize& size);
std::string generateScript(const InstallationSize& size, std::uint64_t number);
std::string generateScenario(const InstallationSize& size, std::uint64_t number);

// A model or script as XML: an element for each item, an attribute for each of its lines. It measures what parsing the
// same tree takes in a format that parsers are tuned for.
std::string asXml(const std::string& itemText);

#endif
