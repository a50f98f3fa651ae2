// Writes an installation of any size:
//
//     generate-installation FOLDER [NAME=NUMBER...]

#include <cstdio>
#include <exception>
#include <string>
#include <utility>

#include "GenerateInstallation.h"

namespace {

constexpr std::pair<const char*, std::size_t InstallationSize::*> kNumbers[] = {
    {"configurations", &InstallationSize::configurations}, {"scenarios", &InstallationSize::scenarios},
    {"folder-depth", &InstallationSize::folderDepth},      {"folders", &InstallationSize::foldersPerLevel},
    {"vehicles", &InstallationSize::vehiclesPerScenario},  {"scripts", &InstallationSize::scriptsPerScenario},
    {"rules", &InstallationSize::rulesPerScript},          {"variables", &InstallationSize::variablesPerScript},
    {"model", &InstallationSize::modelDefinitions},
};

bool set(InstallationSize& size, const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) return false;
    const std::string name = argument.substr(0, equals);
    const unsigned long long number = std::stoull(argument.substr(equals + 1));
    if (name == "seed") {
        size.seed = number;
        return true;
    }
    for (const auto& [key, member] : kNumbers) {
        if (name != key) continue;
        size.*member = static_cast<std::size_t>(number);
        return true;
    }
    return false;
}

int usage(const char* program) {
    std::fprintf(stderr, "usage: %s FOLDER [NAME=NUMBER...]\nnames: seed", program);
    for (const auto& [key, member] : kNumbers) std::fprintf(stderr, " %s", key);
    std::fputc('\n', stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc < 2) return usage(argv[0]);
        InstallationSize size;
        for (int i = 2; i < argc; ++i)
            if (!set(size, argv[i])) return usage(argv[0]);
        std::printf("%s\n", generateInstallation(argv[1], size).c_str());
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
