// A simulator of one's own, as a campaign runs it: reads two values of a scenario file, lets two cars brake, and writes
// what happened as a trace that criteria can judge.
//
//     tavrel campaign run DIR --command 'example-simulate INSTALLATION-FILE CONFIGURATION {scenario} {trace}'
//
// It knows "motorway/Emergency braking.sce" of the sample: the car in front brakes as hard as it can, and the driver
// behind, who keeps the gap that the scenario says, brakes a second later as the scenario says.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include <ScenarioTemplateDb/ScenarioTemplateDb.h>
#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>

#include "Report.h"

namespace {

constexpr double kStep = 0.1;      // s
constexpr double kReaction = 1;    // s
constexpr double kHardest = 9;     // m/s2, of the car in front
constexpr double kSpeed = 33.333;  // m/s, of both
constexpr double kOwnPosition = 0; // m along the road

double numberOf(ScenarioTemplateDb::Scenario& scenario, const std::string& id) {
    const auto* parameter = scenario.getParameterFromId(id);
    if (!parameter) throw std::runtime_error("the scenario has no " + id);
    return std::stod(parameter->getValueAsString());
}

struct File {
    explicit File(const std::string& path) : file(std::fopen(path.c_str(), "wb")) {
        if (!file) throw std::runtime_error(path + " cannot be written");
    }
    ~File() { std::fclose(file); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    std::FILE* file;
};

void simulate(const std::string& installation, const std::string& configuration, const std::string& scenarioFile,
              const std::string& traceFile) {
    const TavrelScenarioTemplateDb::TavrelDatabaseDriver driver(installation, "*", configuration);
    const std::filesystem::path path = std::filesystem::absolute(scenarioFile);
    TavrelScenarioTemplateDb::TavrelScenario scenario(configuration, path.filename().string(),
                                                      path.parent_path().string());
    const double gap = numberOf(scenario, "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=1]/roadPosition") - kOwnPosition;
    const double braking =
        numberOf(scenario, "/sce/Scenario/ScenarioScript[scriptName=\"main\"]/Variable[name=2]/value");

    const File trace(traceFile);
    double front = gap, own = kOwnPosition, frontSpeed = kSpeed, ownSpeed = kSpeed, time = 0;
    // Criteria ask for it by the name that it has in the script of the scenario. In seconds.
    double shortest = gap / ownSpeed;
    std::fprintf(trace.file, "{\"time\":0.0,\"event\":\"start\",\"format\":\"tavrel-trace/1\",\"until\":60.0}\n");
    for (int step = 1; step <= 600 && (ownSpeed > 0 || step == 1); ++step) {
        time = step * kStep;
        frontSpeed = std::max(0.0, frontSpeed - kHardest * kStep);
        if (time > kReaction) ownSpeed = std::max(0.0, ownSpeed - braking * kStep);
        front += frontSpeed * kStep;
        own += ownSpeed * kStep;
        const double headway = std::max(0.0, front - own) / std::max(ownSpeed, 1.0);
        if (headway >= shortest && step > 1) continue;
        std::fprintf(trace.file,
                     "{\"time\":%.1f,\"event\":\"variable\",\"variable\":\"911\",\"label\":\"Shortest headway\","
                     "\"place\":\"SCENARIO (1) / INCLUDE (1)\",\"from\":\"%.3f\",\"to\":\"%.3f\"}\n",
                     time, shortest, headway);
        shortest = headway;
    }
    std::fprintf(trace.file, "{\"time\":%.1f,\"event\":\"end\"}\n", time);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: %s INSTALLATION-FILE CONFIGURATION SCENARIO-FILE TRACE-FILE\n", argv[0]);
        return 2;
    }
    return reportFailures([&] { simulate(argv[1], argv[2], argv[3], argv[4]); });
}
