// Variants of plans: the n-th of many, lists of them beside the text that they are, and covering arrays.

#include <filesystem>
#include <fstream>
#include <memory>

#include <unistd.h>

#include <benchmark/benchmark.h>
#include <cfg/CfgScenario.h>
#include <variation/CoveringArray.h>
#include <variation/Plan.h>

namespace {

using namespace TavrelVariation;

// A scenario of 100 real parameters, and plans over all of them.
const Settable& Hundred() {
    static const Settable* const settable = [] {
        const std::filesystem::path folder = std::filesystem::temp_directory_path();
        const std::string name = "hundred-" + std::to_string(::getpid()) + ".sce";
        std::ofstream file(folder / name);
        file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<sce version=\"1\"><Scenario><name>Hundred</name>";
        for (int i = 0; i < 100; ++i) file << "<p" << i << " type=\"real\" ScenarioTreeValue=\"1\"/>";
        file << "</Scenario></sce>\n";
        file.close();
        auto* opened = new cfg::CfgScenario;
        opened->load((folder / name).string());
        auto* made = new Settable(*opened);
        std::filesystem::remove(folder / name);
        return made;
    }();
    return *settable;
}

Plan PlanOver(const std::string& method, const std::string& entry, int parameters) {
    std::string text =
        R"({"format": "tavrel-plan/1", "scenario": "hundred.sce", "method": )" + method + ", \"parameters\": {";
    for (int i = 0; i < parameters; ++i)
        text += (i == 0 ? "\"/sce/Scenario/p" : ", \"/sce/Scenario/p") + std::to_string(i) + "\": " + entry;
    return Plan(PlanFile::Read(text + "}}"), Hundred());
}

// To be at most 50 us, and for the last argument at most twice that of 0.
void NthVariant(benchmark::State& state, const std::string& method) {
    const Plan plan = PlanOver(method, R"({"range": [0, 1000]})", 100);
    Variant variant;
    const auto number = static_cast<std::uint64_t>(state.range(0));
    for (auto _ : state) {
        plan.At(number, variant);
        benchmark::DoNotOptimize(variant.values.data());
    }
}

Plan Million() { return PlanOver(R"({"name": "grid"})", R"({"range": [0, 1000], "count": 10})", 6); }

void AppendVariant(const Plan& plan, const Variant& variant, std::string& text) {
    for (std::size_t i = 0; i < variant.values.size(); ++i) plan.AppendText(i, variant.values[i], text);
}

// Lists 10^6 variants as text. To be at most 1.2 times FormatMillion.
void ListMillion(benchmark::State& state) {
    const Plan plan = Million();
    Variant variant;
    std::string text;
    for (auto _ : state)
        for (std::uint64_t number = 0; plan.NextFrom(number, variant); ++number) {
            text.clear();
            AppendVariant(plan, variant, text);
            benchmark::DoNotOptimize(text.data());
        }
}

// The text alone, of one variant a million times.
void FormatMillion(benchmark::State& state) {
    const Plan plan = Million();
    Variant variant;
    plan.At(plan.End() / 9 * 5, variant); // of the same length as most
    std::string text;
    for (auto _ : state)
        for (std::uint64_t number = 0; number < plan.End(); ++number) {
            text.clear();
            AppendVariant(plan, variant, text);
            benchmark::DoNotOptimize(text.data());
        }
}

// The rows that are found stand beside the time.
void Covering(benchmark::State& state, const std::vector<std::pair<int, int>>& levels, int effort) {
    CoverProblem problem;
    problem.effort = effort;
    for (const auto& [count, factors] : levels)
        problem.levels.insert(problem.levels.end(), static_cast<std::size_t>(factors), count);
    std::size_t rows = 0;
    for (auto _ : state) rows = CoveringArray(problem).size();
    state.counters["rows"] = static_cast<double>(rows);
}

constexpr std::int64_t kFar = 1000000000000000;
BENCHMARK_CAPTURE(NthVariant, random, R"({"name": "random", "count": 9000000000000000})")->Arg(0)->Arg(kFar);
BENCHMARK_CAPTURE(NthVariant, sobol, R"({"name": "sobol", "count": 9000000000000000})")->Arg(0)->Arg(kFar);
BENCHMARK_CAPTURE(NthVariant, hypercube, R"({"name": "latin-hypercube", "count": 9000000000000000})")
    ->Arg(0)
    ->Arg(kFar);
BENCHMARK(ListMillion)->Unit(benchmark::kMillisecond);
BENCHMARK(FormatMillion)->Unit(benchmark::kMillisecond);
#define COVERING(name, ...)                                                                                            \
    BENCHMARK_CAPTURE(Covering, name##_effort_1, std::vector<std::pair<int, int>> __VA_ARGS__, 1)                      \
        ->Iterations(1)                                                                                                \
        ->Unit(benchmark::kMillisecond);                                                                               \
    BENCHMARK_CAPTURE(Covering, name##_effort_8, std::vector<std::pair<int, int>> __VA_ARGS__, 8)                      \
        ->Iterations(1)                                                                                                \
        ->Unit(benchmark::kMillisecond)
COVERING(pairs_3x4, {{3, 4}});
COVERING(pairs_3x13, {{3, 13}});
COVERING(pairs_4x15_3x17_2x29, {{4, 15}, {3, 17}, {2, 29}});
COVERING(pairs_4x1_3x39_2x35, {{4, 1}, {3, 39}, {2, 35}});
COVERING(pairs_2x100, {{2, 100}});
COVERING(pairs_10x20, {{10, 20}});

} // namespace

BENCHMARK_MAIN();
