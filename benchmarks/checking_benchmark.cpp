// What looking for faults costs beside plain reading: CPU time of this process and of the children that look.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include <sys/resource.h>

#include <TavrelScenarioTemplateDb/RootModel.h>
#include <benchmark/benchmark.h>
#include <checking/Check.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/ItemModel.h>
#include <scenario/LoadDiagnostics.h>

#include "GenerateInstallation.h"

namespace {

using namespace TavrelChecking;
namespace fs = std::filesystem;

constexpr std::size_t kRules = 1600; // of some six items each

InstallationSize SizeOfScripts(std::size_t rules) {
    InstallationSize size;
    size.modelDefinitions = 100;
    size.scriptsPerScenario = 1;
    size.rulesPerScript = rules;
    return size;
}

// With one large script, and some scenarios with small ones.
const fs::path& Installation(std::size_t scenarios) {
    static fs::path made[2];
    fs::path& path = made[scenarios > 1 ? 1 : 0];
    if (path.empty()) {
        InstallationSize size = SizeOfScripts(scenarios > 1 ? 10 : kRules);
        size.scenarios = scenarios;
        path = generateInstallation(
            fs::temp_directory_path() / ("tavrel-checking-benchmark-" + std::to_string(scenarios)), size);
    }
    return path;
}

std::string Script() { return generateScript(SizeOfScripts(kRules), 0); }

// Faults of `count` lines, far from one another: keys that no item has.
std::string WithFaults(std::string text, std::size_t count) {
    for (std::size_t number = 1; number <= count; ++number) {
        const std::size_t line = text.find("\n", text.size() * number / (count + 1));
        const std::size_t brace = text.find("{\n", line);
        text.insert(brace + 2, "\tNO_SUCH_KEY=\"1\"\n");
    }
    return text;
}

double CpuSeconds() {
    double seconds = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage = {};
        getrusage(who, &usage);
        for (const timeval& part : {usage.ru_utime, usage.ru_stime})
            seconds += static_cast<double>(part.tv_sec) + 1e-6 * static_cast<double>(part.tv_usec);
    }
    return seconds;
}

// Asks for what is wrong while it lives.
class Listener : public ScopedLoadProblemListener {
    void OnLoadProblem(const LoadProblem&) override {}
};

// As hosts read, or with somebody who asks for what is wrong; there is nothing.
void ReadScript(benchmark::State& state, bool isListening) {
    lmkUtils::EnvConfig::setTavrelConfigFilePath(Installation(1).string());
    const std::string configuration = "Configuration 0";
    lmkUtils::EnvConfig::setConfig(configuration, false);
    using TavrelScenarioTemplateDb::RootModel;
    RootModel::use(RootModel::fileOf(configuration), nullptr);
    const std::string text = Script();
    std::size_t items = 0;
    std::optional<Listener> listener;
    if (isListening) listener.emplace();
    for (auto step : state) {
        static_cast<void>(step);
        const double begin = CpuSeconds();
        ScenarioTextStream stream(text.c_str(), text.size() + 1);
        ItemLoadContext context{nullptr, nullptr};
        const std::unique_ptr<ScenarioItem> root(LoadScenarioText(stream, nullptr, &context, nullptr, false));
        if (!root) return state.SkipWithError("the script is refused");
        state.SetIterationTime(CpuSeconds() - begin);
    }
    for (std::size_t at = 0; (at = text.find("TYPEOF", at)) != std::string::npos; ++at) ++items;
    state.counters["items"] = static_cast<double>(items);
}
void Read(benchmark::State& state) { ReadScript(state, false); }
void ReadListening(benchmark::State& state) { ReadScript(state, true); }
BENCHMARK(Read)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadListening)->UseManualTime()->Unit(benchmark::kMillisecond);

// With so many faults.
void CheckScript(benchmark::State& state) {
    Job job;
    job.path = (Installation(1).parent_path() / "script.sc").string();
    job.kind = FileKind::Script;
    job.installation = Installation(1).string();
    job.configuration = "Configuration 0";
    const auto faults = static_cast<std::size_t>(state.range(0));
    const std::string text = WithFaults(Script(), faults);
    std::size_t errors = 0;
    for (auto step : state) {
        static_cast<void>(step);
        const double begin = CpuSeconds();
        const Result result = CheckText(text, job, {});
        state.SetIterationTime(CpuSeconds() - begin);
        errors = 0;
        for (const Finding& finding : result.findings) errors += finding.severity == Severity::Error ? 1U : 0U;
        if (errors != faults) return state.SkipWithError("other faults are found than planted");
    }
}
BENCHMARK(CheckScript)->Arg(0)->Arg(10)->UseManualTime()->Unit(benchmark::kMillisecond);

// The sample, all of it.
void CheckSample(benchmark::State& state) {
    for (auto step : state) {
        static_cast<void>(step);
        const double begin = CpuSeconds();
        Result found;
        const Result result = Check(JobsFor(TAVREL_SAMPLE, {}, found), {});
        state.SetIterationTime(CpuSeconds() - begin);
    }
}
BENCHMARK(CheckSample)->UseManualTime()->Unit(benchmark::kMillisecond);

// So many scenarios, side by side on so many cores: the time on the clock.
void CheckScenarios(benchmark::State& state) {
    Options options;
    options.jobs = static_cast<unsigned>(state.range(1));
    Result found;
    const auto jobs = JobsFor(Installation(static_cast<std::size_t>(state.range(0))).string(), options, found);
    for (auto step : state) {
        static_cast<void>(step);
        const auto begin = std::chrono::steady_clock::now();
        const double cpu = CpuSeconds();
        const Result result = Check(jobs, options);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        state.counters["cpu_s"] = CpuSeconds() - cpu;
        state.counters["files"] = static_cast<double>(result.files.size());
    }
}
BENCHMARK(CheckScenarios)
    ->Args({10000, 1})
    ->Args({10000, 2})
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
