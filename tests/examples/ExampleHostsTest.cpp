// The example hosts on the sample installation: what they print, and how a failure of either form ends.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/wait.h>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

struct Result {
    std::string output; // both streams
    int status = -1;
};

Result run(const std::string& host, const std::string& arguments) {
    const std::string command = std::string(HOSTS) + "/example-" + host + " " + arguments + " 2>&1";
    Result result;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return result;
    std::array<char, 4096> buffer;
    for (std::size_t read = 0; (read = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        result.output.append(buffer.data(), read);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

const std::string kFile = "'" SAMPLE_INSTALLATION "/tavrel.xml' ";

TEST(ExampleHosts, BrowseShowsEveryConfigurationUnderItsVersion) {
    const Result result = run("browse", kFile);
    EXPECT_EQ(result.status, 0);
    for (const char* line : {"\n  2.8\n    Classic\n", "\n  3.10.1\n    Fahrschule Süd\n", "\n  3.2\n    City\n",
                             "\n        night/夜間運転.sce\n", "\n        workshop/Every word.sce\n"})
        EXPECT_NE(result.output.find(line), std::string::npos) << line << "\nin\n" << result.output;
}

TEST(ExampleHosts, ParametersShowsSectionsAndScripts) {
    const Result result = run("parameters", kFile + "Highway 'rural/Überholen auf der Landstraße.sce'");
    EXPECT_EQ(result.status, 0);
    for (const char* line :
         {"/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed = 60.000000 km/h  real\n",
          "/sce/Scenario/startPosition = (of a type that is not shown) m  \n",
          "/sce/Scenario/ScenarioScript[scriptName=\"main\"]/Variable[name=3]/value = Anna  literal\n"})
        EXPECT_NE(result.output.find(line), std::string::npos) << line << "\nin\n" << result.output;
}

TEST(ExampleHosts, DeclareSavesBesideTheOldScenario) {
    std::string pattern = (fs::temp_directory_path() / "tavrel-hosts-XXXXXX").string();
    const fs::path folder = fs::path(mkdtemp(pattern.data())) / "installation";
    fs::copy(SAMPLE_INSTALLATION, folder, fs::copy_options::recursive);
    const Result result = run("declare", "'" + (folder / "tavrel.xml").string() +
                                             "' City 'Proving ground.sce' /sce/Scenario/ProvingGround/gates 'Neu.sce'");
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(result.output.find("Neu.sce declares 1 variadic parameters, the last one \"Gates\"\n"), std::string::npos)
        << result.output;
    EXPECT_TRUE(fs::exists(folder / "packs/common/data/scenario/Neu.sce"));
    fs::remove_all(folder.parent_path());
}

TEST(ExampleHosts, RunDrivesTheScriptToItsEnd) {
    const Result result = run("run", kFile);
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("Classic emergency stop\n"
                                 "All calls are valid.\n"
                                 "  entered: Drive\n"
                                 "  Brake!\n"
                                 "  entered: Brake\n"
                                 "  Stopped\n"
                                 "  entered: End\n"
                                 "Braking from = 13.888889 after "),
              std::string::npos)
        << result.output;
}

TEST(ExampleHosts, FailuresOfBothFormsEndAsASentence) {
    const struct {
        const char* why;
        const char* host;
        std::string arguments;
        int status;
        const char* output;
    } rows[] = {
        {"thrown by value", "browse", "/nowhere/tavrel.xml", 1,
         "Tavrel configuration file [/nowhere/tavrel.xml] doesn't exists! (code -1)\n"},
        {"thrown by pointer", "declare", kFile + "City 'Proving ground.sce' /sce/Scenario/nothing x.sce", 1,
         "No child parameter with id=nothing in scenario element : Scenario (code -1)\n"},
        {"wrong usage", "browse", "", 2, "INSTALLATION-FILE\n"},
    };
    for (const auto& row : rows) {
        const Result result = run(row.host, row.arguments);
        EXPECT_EQ(result.status, row.status) << row.why;
        EXPECT_NE(result.output.find(row.output), std::string::npos) << row.why << ": " << result.output;
    }
}

} // namespace
