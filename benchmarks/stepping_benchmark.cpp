// What a step of a scenario costs: rule by rule beside two conversions of the same texts, and with more of everything
// around a rule. Rows of one run compare; the counter `allocations` is that of one step.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <scenario/ItemModel.h>

#include "CountAllocations.h"

namespace {

using ScenarioLib::Scenario;

std::string Block(const std::string& header, const std::string& body) {
    return "TYPEOF " + header + "\n{\n" + body + "}\n";
}

std::string Parameter(const std::string& name, const std::string& kind, const std::string& value) {
    return Block("PARAMETER (" + name + ")", "KIND=\"" + kind + "\"\nVALUE=\"" + value + "\"\n");
}

std::string Model() {
    const auto definition = [](const std::string& name) {
        return Block("PARAMETER (" + name + ")", "TYPE=\"FLOAT\"\nENUMTAB=\"TAB\"\nKINDLIST=\"USER VARIABLE ENUM\"\n");
    };
    std::string entries;
    for (int i = 0; i < 20; ++i)
        entries +=
            Block("ENUM (E" + std::to_string(i) + ")", "TYPE=\"FLOAT\"\nVALUE=\"" + std::to_string(i) + ".5\"\n");
    const std::string both = Parameter("A", "USER", "0") + Parameter("B", "USER", "0");
    return Block(
        "FOLDER (model)",
        Block("FOLDER (ENUMTAB_LIST)", Block("ENUMTAB (TAB)", entries)) +
            Block("FOLDER (PARAMETER_LIST)", definition("A") + definition("B")) + Block("FOLDER (FUNCTION_LIST)", "") +
            Block("FOLDER (CONDITION_LIST)", Block("CONDITION (INFERIOR)", "CODE=\"1\"\n" + both)) +
            Block("FOLDER (ACTION_LIST)", Block("ACTION (SET)", "CODE=\"1\"\n" + Parameter("A", "USER", "0"))));
}

std::unique_ptr<ScenarioItem> Read(const std::string& text) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    std::unique_ptr<ScenarioItem> item(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    if (!item) std::abort();
    return item;
}

// The arguments of the conditions, in turn.
std::pair<std::string, std::string> Literals(std::size_t rule) {
    return {std::to_string(rule % 97) + "." + std::to_string(rule % 1000), std::to_string(rule % 89) + ".25"};
}
std::pair<std::string, std::string> Entries(std::size_t rule) {
    return {"E" + std::to_string(rule % 20), "E" + std::to_string((rule + 7) % 20)};
}
std::pair<std::string, std::string> Names(std::size_t rule) {
    return {std::to_string(rule % 10), std::to_string((rule + 3) % 10)};
}
std::pair<std::string, std::string> NamesOfAllSizes(std::size_t rule) {
    return {std::to_string(rule % 1000), std::to_string((rule + 3) % 1000)};
}
using Arguments = std::pair<std::string, std::string> (*)(std::size_t);

enum class Acting { Never, WhenTrue };

std::string Rules(std::size_t first, std::size_t count, const std::string& kind, Arguments arguments,
                  Acting acting = Acting::Never) {
    std::string text;
    for (std::size_t i = first; i < first + count; ++i) {
        const auto [a, b] = arguments(i);
        std::string body = Block("CONDITION (INFERIOR)", Parameter("A", kind, a) + Parameter("B", kind, b));
        if (acting == Acting::WhenTrue) body += Block("ACTION (SET)", Parameter("A", "USER", "1.5"));
        text += Block("RULE (" + std::to_string(i) + ")", body);
    }
    return text;
}

std::string Variables(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text +=
            Block("VARIABLE (" + std::to_string(i) + ")", "TYPE=\"FLOAT\"\nVALUE=\"" + std::to_string(i) + ".5\"\n");
    return text;
}

// The model, and what the host puts behind its codes.
struct Host {
    Host() : model(Read(Model())) {
        scenarioRootModel = dynamic_cast<Folders*>(model.get());
        ConditionTable().resize(1);
        ConditionTable().push_back([](const ParameterValues& values) { return values[0].number < values[1].number; });
        ActionTable().resize(1);
        ActionTable().push_back(
            [this](const ParameterValues& values) { sum += static_cast<double>(values[0].number); });
    }
    std::unique_ptr<ScenarioItem> model;
    double sum = 0.0;
};

Host& TheHost() {
    static Host host;
    return host;
}

void Step(benchmark::State& state, Scenario& scenario, std::size_t rules) {
    scenario.Init("", 0.0);
    double time = 0.0;
    // To enter the state, to make what is made once, and to take each branch.
    for (int i = 0; i < 4; ++i) scenario.StepScenario(time += 0.02);
    const std::uint64_t before = allocationsSoFar();
    scenario.StepScenario(time += 0.02);
    state.counters["allocations"] = static_cast<double>(allocationsSoFar() - before);
    for (auto _ : state) scenario.StepScenario(time += 0.02);
    state.counters["perRule"] = benchmark::Counter(
        static_cast<double>(rules), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    benchmark::DoNotOptimize(TheHost().sum);
}

// --- the number of rules

void stepFlat(benchmark::State& state) {
    TheHost();
    const auto rules = static_cast<std::size_t>(state.range(0));
    const auto item = Read(Block("SCENARIO (0)", Rules(0, rules, "USER", Literals)));
    Step(state, static_cast<Scenario&>(*item), rules);
}
BENCHMARK(stepFlat)->Arg(10)->Arg(1000)->Arg(10000)->Arg(100000);

// Ten rules to a state, and each state within the other.
void stepDeep(benchmark::State& state) {
    TheHost();
    constexpr std::size_t kPerState = 10;
    const auto rules = static_cast<std::size_t>(state.range(0));
    const auto item = Read(Block("SCENARIO (0)", ""));
    Task* deepest = static_cast<Scenario*>(item.get());
    for (std::size_t first = 0; first < rules; first += kPerState) {
        Task* next = static_cast<Task*>(Read(Block("TASK (1)", Rules(first, kPerState, "USER", Literals))).release());
        deepest->AddChild(next, nullptr, true);
        deepest = next;
    }
    Step(state, static_cast<Scenario&>(*item), rules);
}
BENCHMARK(stepDeep)->Arg(10)->Arg(1000)->Arg(100000);

// So many states side by side, the last one active, and nothing to do in any of them.
void stepStates(benchmark::State& state) {
    TheHost();
    const auto states = static_cast<std::int32_t>(state.range(0));
    std::string text;
    for (std::int32_t i = 0; i < states; ++i) text += Block("TASK (" + std::to_string(i) + ")", "");
    const auto item = Read(Block("SCENARIO (0)", text));
    auto& scenario = static_cast<Scenario&>(*item);
    scenario.Init("", 0.0);
    scenario.nextState = states - 1;
    scenario.transitionPending = 1;
    double time = 0.0;
    for (auto _ : state) scenario.StepScenario(time += 0.02);
    if (scenario.currentState != states - 1) state.SkipWithError("not in its last state");
}
BENCHMARK(stepStates)->Arg(10)->Arg(2000);

// The two conversions that a condition of two literals cannot do without, each rule's own texts.
void convertTwice(benchmark::State& state) {
    const auto rules = static_cast<std::size_t>(state.range(0));
    std::vector<std::array<std::string, 2>> texts;
    for (std::size_t i = 0; i < rules; ++i) {
        const auto [a, b] = Literals(i);
        texts.push_back({a, b});
    }
    for (auto _ : state) {
        for (const auto& [a, b] : texts) {
            benchmark::DoNotOptimize(std::atof(a.c_str()));
            benchmark::DoNotOptimize(std::atof(b.c_str()));
        }
    }
    state.counters["perRule"] = benchmark::Counter(
        static_cast<double>(rules), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(convertTwice)->Arg(10)->Arg(1000)->Arg(10000)->Arg(100000);

// --- the kind of argument, 10,000 rules

constexpr std::size_t kRules = 10000;

void StepOn(benchmark::State& state, const std::string& kind, Arguments arguments, std::size_t variables,
            Acting acting = Acting::Never) {
    TheHost();
    const auto item = Read(Block("SCENARIO (0)", Variables(variables) + Rules(0, kRules, kind, arguments, acting)));
    Step(state, static_cast<Scenario&>(*item), kRules);
}

void stepOnLiterals(benchmark::State& state) { StepOn(state, "USER", Literals, 0); }
BENCHMARK(stepOnLiterals);
void stepOnEntries(benchmark::State& state) { StepOn(state, "ENUM", Entries, 0); }
BENCHMARK(stepOnEntries);
// The argument is the number of variables in scope.
void stepOnVariables(benchmark::State& state) {
    StepOn(state, "VARIABLE", Names, static_cast<std::size_t>(state.range(0)));
}
BENCHMARK(stepOnVariables)->Arg(10)->Arg(1000);

// The same with an action in every second rule or so. After an action everything may have changed, so all that was
// found by name is looked at again.
void stepAndActOnLiterals(benchmark::State& state) { StepOn(state, "USER", Literals, 0, Acting::WhenTrue); }
BENCHMARK(stepAndActOnLiterals);
void stepAndActOnVariables(benchmark::State& state) {
    StepOn(state, "VARIABLE", Names, static_cast<std::size_t>(state.range(0)), Acting::WhenTrue);
}
BENCHMARK(stepAndActOnVariables)->Arg(10)->Arg(1000);
// Names of a size that no rule asks for take less time than others, so here each of the 1,000 is asked for.
void stepAndActOnAllVariables(benchmark::State& state) {
    StepOn(state, "VARIABLE", NamesOfAllSizes, 1000, Acting::WhenTrue);
}
BENCHMARK(stepAndActOnAllVariables);

// --- names

// A task whose variables all have names that are taken. Beside it the same, one variable after the other.
std::unique_ptr<ScenarioItem> TakenNames(std::size_t count, Task*& state) {
    std::unique_ptr<ScenarioItem> item = Read(Block("SCENARIO (0)", Variables(count)));
    state = static_cast<Task*>(Read(Block("TASK (1)", Variables(count))).release());
    state->parent = item.get();
    static_cast<Scenario&>(*item).subTasks.push_back(state);
    return item;
}

void renumberVariables(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Task* task = nullptr;
        const auto item = TakenNames(static_cast<std::size_t>(state.range(0)), task);
        state.ResumeTiming();
        if (!task->RenumberVariables()) std::abort();
    }
}
BENCHMARK(renumberVariables)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void renumberOneByOne(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Task* task = nullptr;
        const auto item = TakenNames(static_cast<std::size_t>(state.range(0)), task);
        state.ResumeTiming();
        for (Variable* variable : task->variables) {
            variable->MakeUniqueName();
            variable->MakeUniqueLabel();
        }
    }
}
BENCHMARK(renumberOneByOne)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

BENCHMARK_MAIN();
