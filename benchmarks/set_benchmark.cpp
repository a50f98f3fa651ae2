// What setting values in a scenario file costs beside loading it, with its node tree, and saving it: CPU time of both
// over one file of 0.6 MB.

#include <filesystem>
#include <fstream>
#include <string>

#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>
#include <benchmark/benchmark.h>
#include <cfg/CfgScenario.h>
#include <cfg/Scenario.h>
#include <variation/Assignment.h>

namespace {

constexpr int kSections = 1700;
constexpr int kVariables = 1700;

const std::string& scenarioFile() {
    static const std::string path = [] {
        const std::string file = (std::filesystem::temp_directory_path() / "tavrel-set-benchmark.sce").string();
        std::ofstream out(file, std::ios::binary);
        out << "<sce version=\"1\">\n  <Scenario>\n";
        for (int i = 0; i < kSections; ++i)
            out << "    <Part" << i
                << ">\n      <speed type=\"real\" unit=\"km/h\" verboseName=\"Speed\" ScenarioTreeValue=\"" << i
                << ".5\"/>\n      <count type=\"integer\" ScenarioTreeValue=\"" << i
                << "\"/>\n      <label verboseName=\"What it is called\" ScenarioTreeValue=\"part " << i
                << "\"/>\n    </Part" << i << ">\n";
        out << "    <ScenarioScript><scriptName>main</scriptName><text>TYPEOF SCENARIO (1)\n{\n";
        for (int i = 1; i <= kVariables; ++i)
            out << "\tTYPEOF VARIABLE (" << i << ")\n\t{\n\t\tLABEL=\"Variable " << i
                << "\"\n\t\tTYPE=\"FLOAT\"\n\t\tVALUE=\"" << i << "\"\n\t\tINTERACTIVE_TYPE=\"FLOAT\"\n\t}\n";
        out << "}\n</text></ScenarioScript>\n  </Scenario>\n</sce>\n";
        return file;
    }();
    return path;
}

void load(cfg::CfgScenario& file) {
    file.load(scenarioFile().c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true);
}

void save(cfg::CfgScenario& file) { file.save(scenarioFile().c_str(), static_cast<Commons::Encoding::Mode>(1), false); }

void loadAndSave(benchmark::State& state) {
    for (auto step : state) {
        static_cast<void>(step);
        cfg::CfgScenario file;
        load(file);
        const TavrelScenarioTemplateDb::TavrelScenarioNode root(file.getRootSection(), nullptr);
        save(file);
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(scenarioFile()));
}
BENCHMARK(loadAndSave)->Unit(benchmark::kMillisecond);

void loadSetAndSave(benchmark::State& state) {
    int value = 0;
    for (auto step : state) {
        static_cast<void>(step);
        cfg::CfgScenario file;
        load(file);
        TavrelScenarioTemplateDb::TavrelScenarioNode root(file.getRootSection(), nullptr);
        TavrelVariation::Settable settable(file, &root);
        const std::string text = std::to_string(++value % 100);
        settable.Apply(TavrelVariation::ReadAll(
            settable, {},
            {{"/sce/Scenario/Part700/speed", text},
             {"/sce/Scenario/ScenarioScript[scriptName=\"main\"]/Variable[name=900]/value", text}}));
        save(file);
    }
}
BENCHMARK(loadSetAndSave)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
