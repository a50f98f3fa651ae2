// Reading, writing and copying items, each beside the least that the machine could do with the same bytes: copy them,
// and parse the same tree as XML. The comparison is made within each iteration, so that a busy machine slows both.
#include <cstring>
#include <memory>
#include <ostream>
#include <streambuf>
#include <utility>

#include <malloc.h>
#include <time.h>

#include <benchmark/benchmark.h>
#include <pugixml.hpp>
#include <scenario/ItemModel.h>

#include "ModelTexts.h"

namespace {

// Time of the processor, not of the wall: what else the machine does is not what is measured.
double Now() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double SecondsOf(const auto& act) {
    const double begin = Now();
    act();
    return Now() - begin;
}

std::unique_ptr<ScenarioItem> Read(const std::string& text) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    std::unique_ptr<ScenarioItem> item(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    if (!item) std::fprintf(stderr, "refused at row %u\n", stream.line);
    return item;
}

class RootModel {
public:
    explicit RootModel(const std::string& text) : model(Read(text)) {
        scenarioRootModel = static_cast<Folders*>(model.get());
    }
    ~RootModel() { scenarioRootModel = nullptr; }

private:
    std::unique_ptr<ScenarioItem> model;
};

// What the same bytes cost others, summed over the iterations of a benchmark.
class Yardstick {
public:
    Yardstick(std::string bytes, std::string xmlText) : copyOf(std::move(bytes)), xml(std::move(xmlText)) {
        target.resize(copyOf.size());
    }
    void Measure(double seconds) {
        own += seconds;
        pugi::xml_document document;
        parsing += SecondsOf([&] { document.load_buffer(xml.data(), xml.size(), pugi::parse_default); });
        copying += SecondsOf([&] {
            std::memcpy(target.data(), copyOf.data(), copyOf.size());
            benchmark::ClobberMemory();
        });
    }
    void Report(benchmark::State& state) const {
        state.counters["x_pugixml"] = own / parsing;
        state.counters["x_memcpy"] = own / copying;
        state.SetBytesProcessed(static_cast<std::int64_t>(copyOf.size()) * state.iterations());
    }

private:
    std::string copyOf;
    std::string xml;
    std::string target;
    double own = 0;
    double parsing = 0;
    double copying = 0;
};

constexpr std::size_t kMegabyte = 1000 * 1000;

void ReadModel(benchmark::State& state) {
    const std::size_t bytes = static_cast<std::size_t>(state.range(0)) * kMegabyte;
    const std::size_t bytesPerCall = modelTexts::Model(1000).size() / 1000;
    const std::string text = modelTexts::Model(bytes / bytesPerCall);
    Yardstick yardstick(text, modelTexts::AsXml(text));
    for (auto _ : state) {
        std::unique_ptr<ScenarioItem> item;
        const double seconds = SecondsOf([&] { item = Read(text); });
        state.SetIterationTime(seconds);
        yardstick.Measure(seconds);
    }
    yardstick.Report(state);
}

// The model and then the script, as an opened template does it.
void ReadScriptWithModel(benchmark::State& state) {
    constexpr std::size_t kCalls = 300;
    const std::string model = modelTexts::Model(kCalls);
    const std::string script =
        modelTexts::Script(kCalls, static_cast<std::size_t>(state.range(0)) * kMegabyte - model.size());
    Yardstick yardstick(model + script, "<all>" + modelTexts::AsXml(model) + modelTexts::AsXml(script) + "</all>");
    for (auto _ : state) {
        std::unique_ptr<RootModel> root;
        std::unique_ptr<ScenarioItem> item;
        const double seconds = SecondsOf([&] {
            root = std::make_unique<RootModel>(model);
            item = Read(script);
        });
        state.SetIterationTime(seconds);
        yardstick.Measure(seconds);
    }
    yardstick.Report(state);
}

// A script of so many items against a model of so many definitions; beside it the same against 100.
void ReadScriptAgainst(benchmark::State& state) {
    const auto items = static_cast<std::size_t>(state.range(0));
    // Five definitions to a call: two parameters, three calls of that number.
    const std::size_t calls = static_cast<std::size_t>(state.range(1)) / 5;
    constexpr std::size_t kFewCalls = 20;
    constexpr std::size_t kBytesPerItem = 94;
    const RootModel model(modelTexts::Model(calls));
    Folders* const many = scenarioRootModel;
    const RootModel fewModel(modelTexts::Model(kFewCalls));
    Folders* const few = scenarioRootModel;
    const std::string script = modelTexts::Script(calls, items * kBytesPerItem);
    const std::string fewScript = modelTexts::Script(kFewCalls, items * kBytesPerItem);
    double fewSeconds = 0;
    double seconds = 0;
    std::size_t count = 0;
    for (auto _ : state) {
        std::unique_ptr<ScenarioItem> item;
        scenarioRootModel = few;
        fewSeconds += SecondsOf([&] { item = Read(fewScript); });
        item.reset();
        scenarioRootModel = many;
        const double now = SecondsOf([&] { item = Read(script); });
        state.SetIterationTime(now);
        seconds += now;
        if (count == 0) count = modelTexts::CountItems(*item);
    }
    state.counters["items"] = static_cast<double>(count);
    state.counters["x_100_definitions"] = seconds / fewSeconds;
}

// Counts and forgets.
class Sink : public std::streambuf {
protected:
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void Write(benchmark::State& state) {
    const std::string text = modelTexts::Model(10000);
    const std::unique_ptr<ScenarioItem> item = Read(text);
    Yardstick yardstick(text, modelTexts::AsXml(text));
    Sink sink;
    std::ostream out(&sink);
    for (auto _ : state) {
        const double seconds = SecondsOf([&] { item->Save(out); });
        state.SetIterationTime(seconds);
        yardstick.Measure(seconds);
    }
    yardstick.Report(state);
}

void Clone(benchmark::State& state) {
    constexpr std::size_t kCalls = 300;
    const RootModel root(modelTexts::Model(kCalls));
    const std::string text = modelTexts::Script(kCalls, 10 * kMegabyte);
    const std::unique_ptr<ScenarioItem> item = Read(text);
    Yardstick yardstick(text, modelTexts::AsXml(text));
    for (auto _ : state) {
        std::unique_ptr<ScenarioItem> copy;
        const double seconds = SecondsOf([&] { copy.reset(item->Clone()); });
        state.SetIterationTime(seconds);
        yardstick.Measure(seconds);
    }
    yardstick.Report(state);
}

void Destroy(benchmark::State& state) {
    constexpr std::size_t kCalls = 300;
    const RootModel root(modelTexts::Model(kCalls));
    const std::string text = modelTexts::Script(kCalls, 10 * kMegabyte);
    Yardstick yardstick(text, modelTexts::AsXml(text));
    for (auto _ : state) {
        std::unique_ptr<ScenarioItem> item = Read(text);
        const double seconds = SecondsOf([&] { item.reset(); });
        state.SetIterationTime(seconds);
        yardstick.Measure(seconds);
    }
    yardstick.Report(state);
}

void BytesPerItem(benchmark::State& state) {
    constexpr std::size_t kCalls = 300;
    const RootModel root(modelTexts::Model(kCalls));
    const std::string text = modelTexts::Script(kCalls, 10 * kMegabyte);
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        const std::unique_ptr<ScenarioItem> item = Read(text);
        const auto bytes = static_cast<double>(mallinfo2().uordblks - before);
        const auto items = static_cast<double>(modelTexts::CountItems(*item));
        state.counters["items"] = items;
        state.counters["bytes_per_item"] = bytes / items;
        state.counters["bytes_per_byte_of_text"] = bytes / static_cast<double>(text.size());
    }
    state.counters["sizeof_item"] = sizeof(ScenarioItem);
    state.counters["sizeof_parameter"] = sizeof(Parameter);
    state.counters["sizeof_action"] = sizeof(Action);
    state.counters["sizeof_rule"] = sizeof(Rule);
}

BENCHMARK(ReadModel)->Arg(1)->Arg(10)->Arg(50)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadScriptWithModel)->Arg(1)->Arg(10)->Arg(50)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadScriptAgainst)
    ->ArgNames({"items", "definitions"})
    ->Args({5000, 1000})
    ->Args({5000, 10000})
    ->Args({30000, 100})
    ->Args({30000, 1000})
    ->Args({30000, 10000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Write)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Clone)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Destroy)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BytesPerItem)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
