// The driver beside the least that the same work can cost: listing beside a bare walk of the same folders, opening
// beside a bare parse of the same texts. Compare the two rows of one run; the numbers of different runs do not compare.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <Poco/RecursiveDirectoryIterator.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include "GenerateInstallation.h"

namespace {

namespace fs = std::filesystem;
using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;
using TavrelScenarioTemplateDb::TavrelDatabaseDriver;
using TavrelScenarioTemplateDb::TavrelScenario;

// Without sharing, each opening leaves a root model behind.
constexpr benchmark::IterationCount kFewOpenings = 40;

constexpr char kConfiguration[] = "Configuration 0";

// An installation of one size, generated once for all benchmarks that ask for it and gone with the process.
struct Installation {
    explicit Installation(const InstallationSize& size) {
        std::string pattern = (fs::temp_directory_path() / "tavrel-benchmark-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("No temporary folder");
        folder = pattern;
        file = generateInstallation(folder, size);
        scenarioFolder = folder / "packs" / "0" / "data" / "scenario";
        model = folder / "packs" / "0" / "data" / "tools" / "nuro" / "nuro.mdl";
    }
    ~Installation() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    fs::path folder;
    fs::path file;
    fs::path scenarioFolder;
    fs::path model;
};

// One scenario, in the scenario folder itself.
InstallationSize oneScenario() {
    InstallationSize size;
    size.scenarios = 1;
    size.folderDepth = 0;
    return size;
}

// Opening reads the root model, and what it has to say goes to the standard output, where the results stand.
class QuietOutput {
public:
    QuietOutput() : former(std::cout.rdbuf(quiet.rdbuf())) {}
    ~QuietOutput() { std::cout.rdbuf(former); }
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;

private:
    std::ostringstream quiet;
    std::streambuf* former;
};

// ---- listing

InstallationSize listing(std::size_t scenarios) {
    InstallationSize size;
    size.scenarios = scenarios;
    size.folderDepth = 3;
    size.foldersPerLevel = 5;
    size.vehiclesPerScenario = 0;
    return size;
}

void listScenarios(benchmark::State& state) {
    const Installation installation(listing(static_cast<std::size_t>(state.range(0))));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const auto directory = driver.getRootDirectory()->getDirectory(0)->getDirectory(0)->getDirectory(0);
    std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>> scenarios;
    for (auto _ : state) {
        directory->getScenarios(scenarios);
        benchmark::DoNotOptimize(scenarios.data());
    }
    if (scenarios.size() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not all were listed");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(listScenarios)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(2);

void listBareWalk(benchmark::State& state) {
    const Installation installation(listing(static_cast<std::size_t>(state.range(0))));
    std::int64_t found = 0;
    for (auto _ : state) {
        found = 0;
        Poco::SiblingsFirstRecursiveDirectoryIterator it(installation.scenarioFolder.string());
        const Poco::SiblingsFirstRecursiveDirectoryIterator end;
        for (; it != end; ++it)
            if (it.path().getExtension() == "sce") ++found;
    }
    if (found != state.range(0)) state.SkipWithError("not all were found");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(listBareWalk)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(2);

// What the standard library takes to collect the same paths. Each of the rows below is compared with it.
void listWithStandardLibrary(benchmark::State& state) {
    const Installation installation(listing(static_cast<std::size_t>(state.range(0))));
    std::vector<std::string> paths;
    for (auto _ : state) {
        paths.clear();
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(installation.scenarioFolder))
            if (entry.path().extension() == ".sce") paths.push_back(entry.path().string());
    }
    if (paths.size() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not all were found");
}
BENCHMARK(listWithStandardLibrary)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(2);

// The least that any listing takes: the kernel gives the entries of the folders, and nobody looks at them.
void listEntries(benchmark::State& state) {
    const Installation installation(listing(static_cast<std::size_t>(state.range(0))));
    std::vector<std::string> folders{installation.scenarioFolder.string()};
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(installation.scenarioFolder))
        if (entry.is_directory()) folders.push_back(entry.path().string());
    std::vector<char> bytes(std::size_t(64) * 1024);
    for (auto _ : state)
        for (const std::string& folder : folders) {
            const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
            while (getdents64(descriptor, bytes.data(), bytes.size()) > 0) benchmark::DoNotOptimize(bytes.data());
            close(descriptor);
        }
}
BENCHMARK(listEntries)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1);

// One call of a loop over all of them.
void scenarioByIndex(benchmark::State& state) {
    const Installation installation(listing(static_cast<std::size_t>(state.range(0))));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const auto directory = driver.getRootDirectory()->getDirectory(0)->getDirectory(0)->getDirectory(0);
    std::size_t index = 0;
    for (auto _ : state) {
        index = (index + 7919) % static_cast<std::size_t>(state.range(0));
        benchmark::DoNotOptimize(directory->getScenario(index));
    }
}
BENCHMARK(scenarioByIndex)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1);

void lastScenarioByPath(benchmark::State& state) {
    const Installation installation(listing(static_cast<std::size_t>(state.range(0))));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const auto directory = driver.getRootDirectory()->getDirectory(0)->getDirectory(0)->getDirectory(0);
    const std::string last = directory->getScenario(static_cast<std::size_t>(state.range(0) - 1))->getPath();
    for (auto _ : state) benchmark::DoNotOptimize(driver.getScenario(last));
}
BENCHMARK(lastScenarioByPath)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1);

// ---- opening by number of vehicles

InstallationSize vehicles(std::int64_t number) {
    InstallationSize size = oneScenario();
    size.vehiclesPerScenario = static_cast<std::size_t>(number);
    return size;
}

std::unique_ptr<TavrelScenario> newTemplate(const Installation& installation) {
    return std::make_unique<TavrelScenario>(kConfiguration, "Scenario 0.sce", installation.scenarioFolder.string());
}

void openTemplate(benchmark::State& state) {
    const Installation installation(vehicles(state.range(0)));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const QuietOutput quiet;
    for (auto _ : state) {
        const auto scenario = newTemplate(installation);
        benchmark::DoNotOptimize(scenario->getRootScenarioNode());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(openTemplate)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void openBareParse(benchmark::State& state) {
    const Installation installation(vehicles(state.range(0)));
    const std::string path = (installation.scenarioFolder / "Scenario 0.sce").string();
    for (auto _ : state) {
        pugi::xml_document document;
        if (!document.load_file(path.c_str())) state.SkipWithError("not parsed");
        benchmark::DoNotOptimize(document.first_child());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(openBareParse)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

// ---- looking up by id

void collectIds(const ScenarioNode& node, std::vector<std::string>& ids) {
    std::vector<ScenarioParameter*> parameters;
    node.getParameters(parameters);
    for (const ScenarioParameter* parameter : parameters) ids.push_back(parameter->getParameterId());
    if (node.getChildNumber() == 0) return;
    std::vector<ScenarioNode*> children;
    node.getChildren(children);
    for (const ScenarioNode* child : children) collectIds(*child, ids);
}

// The time of an item is that of one look-up; siblings are searched one by one, so it grows with their number.
void lookUpAllIds(benchmark::State& state) {
    const Installation installation(vehicles(state.range(0)));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const QuietOutput quiet;
    const auto scenario = newTemplate(installation);
    std::vector<std::string> ids;
    collectIds(*scenario->getRootScenarioNode(), ids);
    for (auto _ : state)
        for (const std::string& id : ids) benchmark::DoNotOptimize(scenario->getParameterFromId(id));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(ids.size()));
}
BENCHMARK(lookUpAllIds)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

// ---- memory

// What the allocator holds for one template that is open, its node tree built; the model of this installation is empty.
void memoryOfOpenTemplates(benchmark::State& state) {
    constexpr std::size_t kTemplates = 20;
    const Installation installation(vehicles(state.range(0)));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const QuietOutput quiet;
    std::size_t bytes = 0;
    newTemplate(installation)->getRootScenarioNode(); // whatever is made once per process
    for (auto _ : state) {
        std::vector<std::unique_ptr<TavrelScenario>> open;
        open.reserve(kTemplates);
        const struct mallinfo2 before = mallinfo2();
        for (std::size_t i = 0; i < kTemplates; ++i) {
            open.push_back(newTemplate(installation));
            open.back()->getRootScenarioNode();
        }
        const struct mallinfo2 after = mallinfo2();
        bytes = (after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / kTemplates;
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["fileBytes"] = static_cast<double>(fs::file_size(installation.scenarioFolder / "Scenario 0.sce"));
    state.counters["perVehicle"] = static_cast<double>(bytes) / static_cast<double>(state.range(0));
}
BENCHMARK(memoryOfOpenTemplates)->Arg(10)->Arg(100)->Arg(1000)->Iterations(3)->Unit(benchmark::kMicrosecond);

// ---- sharing of root models

// Resident memory of this process.
double residentBytes() {
    double total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// What stays for each template that was opened and closed, by whether root models are shared and by the definitions of
// the model. A host that opens 20,000 templates with sharing stays below 100 MB.
void memoryThatStays(benchmark::State& state) {
    InstallationSize size = oneScenario();
    size.modelDefinitions = static_cast<std::size_t>(state.range(1));
    const Installation installation(size);
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const QuietOutput quiet;
    std::optional<TavrelScenarioTemplateDb::ShareRootModels> sharing;
    if (state.range(0) != 0) sharing.emplace();
    newTemplate(installation)->getRootScenarioNode();
    const double before = residentBytes();
    for (auto _ : state) newTemplate(installation)->getRootScenarioNode();
    const double after = residentBytes();
    state.counters["bytesEach"] = (after - before) / static_cast<double>(state.iterations());
    state.counters["residentMB"] = after / 1e6;
    state.counters["modelBytes"] = static_cast<double>(fs::file_size(installation.model));
    if (sharing && after - before >= 100e6) state.SkipWithError("too much memory stays");
}
BENCHMARK(memoryThatStays)->Args({1, 300})->Iterations(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(memoryThatStays)
    ->ArgsProduct({{1, 0}, {300, 1700, 4200}})
    ->Iterations(kFewOpenings)
    ->Unit(benchmark::kMicrosecond);

// ---- scripts

// Root models stay for the life of the process, one for each time a template is opened; hence a fixed number of times.
constexpr benchmark::IterationCount kOpenings = 40;

InstallationSize scripts(std::int64_t number) {
    InstallationSize size = oneScenario();
    size.scriptsPerScenario = static_cast<std::size_t>(number);
    size.modelDefinitions = 400;
    return size;
}

void openWithScripts(benchmark::State& state) {
    const Installation installation(scripts(state.range(0)));
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const QuietOutput quiet;
    for (auto _ : state) {
        const auto scenario = newTemplate(installation);
        benchmark::DoNotOptimize(scenario->getRootScenarioNode());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(openWithScripts)->Arg(1)->Arg(10)->Arg(100)->Iterations(kOpenings)->Unit(benchmark::kMicrosecond);

// A model of 0.4 MB and a scenario file of 0.6 MB, nearly all of it one script.
InstallationSize bigScript() {
    InstallationSize size = oneScenario();
    size.scriptsPerScenario = 1;
    size.modelDefinitions = 1700;
    size.rulesPerScript = 790;
    return size;
}

// The fastest of all rounds, which a busy machine disturbs least.
class Fastest {
public:
    explicit Fastest(benchmark::State& benchmarkState) : state(benchmarkState) {}
    Fastest(const Fastest&) = delete;
    Fastest& operator=(const Fastest&) = delete;
    ~Fastest() { state.counters["fastest_us"] = fastest.count(); }
    void begin() { begun = Clock::now(); }
    void end() { fastest = std::min(fastest, Microseconds(Clock::now() - begun)); }

private:
    using Clock = std::chrono::steady_clock;
    using Microseconds = std::chrono::duration<double, std::micro>;
    benchmark::State& state;
    Clock::time_point begun;
    Microseconds fastest = Microseconds::max();
};

// With 1, root models are shared.
void openAndReadVariable(benchmark::State& state) {
    const Installation installation(bigScript());
    std::optional<TavrelScenarioTemplateDb::ShareRootModels> sharing;
    if (state.range(0) != 0) sharing.emplace();
    const TavrelDatabaseDriver driver(installation.file.string(), "*", kConfiguration);
    const QuietOutput quiet;
    const std::string id = "/sce/Scenario/ScenarioScript[scriptName=\"script 0\"]/Variable[name=3]/value";
    Fastest fastest(state);
    for (auto _ : state) {
        fastest.begin();
        const auto scenario = newTemplate(installation);
        benchmark::DoNotOptimize(scenario->getParameterFromId(id)->getValueAsString());
        fastest.end();
    }
    state.counters["modelBytes"] = static_cast<double>(fs::file_size(installation.model));
    state.counters["scenarioBytes"] =
        static_cast<double>(fs::file_size(installation.scenarioFolder / "Scenario 0.sce"));
}
BENCHMARK(openAndReadVariable)->Arg(0)->Arg(1)->Iterations(kOpenings)->Unit(benchmark::kMicrosecond);

// The same three texts, two of them rewritten as XML: model, scenario file, script.
void parseTheSameAsXml(benchmark::State& state) {
    const InstallationSize size = bigScript();
    const std::string texts[] = {asXml(generateModel(size)), generateScenario(size, 0), asXml(generateScript(size, 0))};
    Fastest fastest(state);
    for (auto _ : state) {
        fastest.begin();
        for (const std::string& text : texts) {
            pugi::xml_document document;
            if (!document.load_buffer(text.data(), text.size())) state.SkipWithError("not parsed");
            benchmark::DoNotOptimize(document.first_child());
        }
        fastest.end();
    }
    state.counters["modelBytes"] = static_cast<double>(texts[0].size());
    state.counters["scenarioBytes"] = static_cast<double>(texts[1].size());
    state.counters["scriptBytes"] = static_cast<double>(texts[2].size());
}
BENCHMARK(parseTheSameAsXml)->Iterations(kOpenings)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
