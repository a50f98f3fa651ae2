// Campaigns: short runs beside processes that do nothing, and what a folder of many finished runs costs.

#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <variation/Campaign.h>
#include <variation/VariantRunner.h>

namespace {

namespace fs = std::filesystem;
using namespace TavrelVariation;

constexpr char kConfiguration[] = "Highway";
constexpr char kScenario[] = "motorway/Emergency braking.sce";
constexpr char kPlan[] = R"({"format": "tavrel-plan/1", "scenario": "motorway/Emergency braking.sce",
"seed": 1, "method": {"name": "random", "count": 100000}, "parameters": {"Gap": {}, "Deceleration": {}},
"criteria": ["always variable(\"Shortest headway\") >= 0.8"]})";

class Template : public TavrelScenarioTemplateDb::TavrelScenario {
public:
    using TavrelScenario::TavrelScenario;
    cfg::CfgScenario& file() const { return *getCfgScenarioSection(); }
};

// A scenario of the sample, opened once, as a campaign has it; each run has 60 steps.
struct Workshop {
    Workshop() : driver(TAVREL_SAMPLE "/tavrel.xml", "*", kConfiguration) {
        opened = std::make_unique<Template>(kConfiguration, kScenario, TAVREL_SAMPLE "/packs/road/data/scenario");
        settable = std::make_unique<Settable>(opened->file(), opened->getRootScenarioNode());
        plan = std::make_unique<Plan>(PlanFile::Read(kPlan), *settable);
        VariantRunner::Setup setup;
        setup.file = &opened->file();
        setup.root = opened->getRootScenarioNode();
        setup.scenario = kScenario;
        setup.installation = TAVREL_SAMPLE "/tavrel.xml";
        setup.span.until = 6;
        setup.criteria.push_back(TavrelSimulation::ParseCriterion(plan->File().criteria[0]));
        runner = std::make_unique<VariantRunner>(setup);
    }
    RunRecord operator()(const Variant& variant, const std::string& trace) {
        return runner->Run(plan->Assignments(variant), {}, trace);
    }

    TavrelScenarioTemplateDb::TavrelDatabaseDriver driver;
    std::unique_ptr<Template> opened;
    std::unique_ptr<Settable> settable;
    std::unique_ptr<Plan> plan;
    std::unique_ptr<VariantRunner> runner;
};
Workshop& workshop() {
    static Workshop* const one = new Workshop; // left to the end of the process
    return *one;
}

struct Folder {
    explicit Folder(const std::string& name) : path(fs::temp_directory_path() / fmt::format("{}-{}", name, getpid())) {
        fs::remove_all(path);
    }
    ~Folder() { fs::remove_all(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const std::string path;
};

Campaign begin(const std::string& folder) {
    CampaignSetup setup;
    setup.plan = workshop().plan.get();
    setup.configuration = kConfiguration;
    return Campaign::Begin(setup, folder);
}

double processorSeconds() {
    double seconds = 0;
    for (const int whose : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage used;
        getrusage(whose, &used);
        for (const timeval& time : {used.ru_utime, used.ru_stime})
            seconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    }
    return seconds;
}

// The least that a run in a process of its own can cost.
void forkAndExit(benchmark::State& state) {
    workshop();
    const double before = processorSeconds();
    for (auto _ : state) {
        const pid_t child = fork();
        if (child == 0) _exit(0);
        waitpid(child, nullptr, 0);
    }
    state.counters["cpu_us"] = (processorSeconds() - before) * 1e6 / static_cast<double>(state.iterations());
}

// So many processes side by side. At least 400 runs a second and core; with two at least 1.8 times as many as with one.
void shortRuns(benchmark::State& state) {
    constexpr int kRuns = 1000;
    const double before = processorSeconds();
    for (auto _ : state) {
        state.PauseTiming();
        // Folders go at the end of the process: while files are being deleted, some file systems are slow to make new.
        static std::deque<Folder> folders;
        folders.emplace_back(fmt::format("tavrel-campaign-benchmark-{}", folders.size()));
        const Campaign campaign = begin(folders.back().path);
        CampaignOptions options;
        options.shard = {0, 100'000 / kRuns};
        options.jobs = static_cast<std::size_t>(state.range(0));
        state.ResumeTiming();
        if (!campaign.Run(*workshop().plan, options, std::ref(workshop()), nullptr)) state.SkipWithError("interrupted");
        state.PauseTiming();
        if (campaign.Count(options.shard).Open() != 0) state.SkipWithError("some runs are missing");
        state.ResumeTiming();
    }
    const auto runs = static_cast<double>(state.iterations()) * kRuns;
    state.counters["runs_per_s"] = benchmark::Counter(runs, benchmark::Counter::kIsRate);
    state.counters["cpu_us"] = (processorSeconds() - before) * 1e6 / runs;
}

// A folder with 100,000 finished runs.
const Campaign& finished() {
    static const Folder folder("tavrel-finished-benchmark");
    static const Campaign campaign = [] {
        Campaign made = begin(folder.path);
        fs::create_directories(folder.path + "/runs");
        RunRecord record;
        record.trace = std::string(64, 'a');
        record.events = 37;
        Variant variant;
        for (const std::uint64_t number : made.Numbers()) {
            workshop().plan->At(number, variant);
            record.number = number;
            record.values.clear();
            for (const AssignmentText& value : workshop().plan->Assignments(variant))
                record.values.emplace_back(value.name, value.value);
            const bool holds = number % 7 != 0;
            const double margin = static_cast<double>(number % 1000) * 0.00137 * (holds ? 1 : -1);
            record.verdict = holds ? TavrelSimulation::Verdict::Passed : TavrelSimulation::Verdict::Failed;
            record.criteria = {{made.Sheet().criteria[0], holds, margin}};
            std::ofstream(fmt::format("{}/runs/{:06}.json", folder.path, number)) << JsonOf(record) << '\n';
        }
        return made;
    }();
    return campaign;
}

// To be below 2 s.
void merge(benchmark::State& state) {
    const Campaign& campaign = finished();
    const Folder output("tavrel-merge-benchmark");
    for (auto _ : state) benchmark::DoNotOptimize(campaign.Merge(output.path));
}

// To be below 1 s.
void startWithNothingToDo(benchmark::State& state) {
    const Campaign& campaign = finished();
    for (auto _ : state) campaign.Run(*workshop().plan, {}, std::ref(workshop()), nullptr);
}

BENCHMARK(forkAndExit)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(shortRuns)->Arg(1)->Arg(2)->Iterations(1)->Repetitions(3)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(merge)->Iterations(1)->Repetitions(3)->Unit(benchmark::kMillisecond);
BENCHMARK(startWithNothingToDo)->Iterations(1)->Repetitions(3)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
