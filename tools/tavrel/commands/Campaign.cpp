#include <variation/Campaign.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include <processes/ChildProcess.h>
#include <simulation/Inputs.h>
#include <variation/Bisection.h>
#include <variation/RunAlone.h>
#include <variation/Simulator.h>
#include <variation/VariantRunner.h>

#include "../Describe.h"
#include "../Plans.h"
#include "../Progress.h"
#include "Commands.h"

namespace tavrel {

namespace {

using namespace TavrelVariation;
using TavrelSimulation::Verdict;

// A plan, its scenario and what runs its variants.
struct Workshop {
    OpenedPlan plan;
    std::string installation;
    std::vector<TavrelSimulation::Criterion> criteria;
    std::unique_ptr<VariantRunner> runner;

    RunVariant InWorld() {
        return [this](const Variant& variant, const std::string& trace) {
            std::optional<std::uint32_t> seed;
            if (variant.seed) seed = static_cast<std::uint32_t>(*variant.seed);
            return runner->Run(plan.plan.Assignments(variant), seed, trace);
        };
    }
};

TavrelSimulation::Span SpanOf(const PlanFile& file) {
    TavrelSimulation::Span span;
    span.until = file.run.until.value_or(file.run.from + span.until);
    span.from = file.run.from;
    span.step = file.run.step;
    return span;
}

// What the campaign or its plan refuses is wrong usage; what cannot be read, written or run is not.
template <typename Work>
auto WithCampaignRefusals(const std::string& subject, const Work& work) {
    try {
        return WithPlanRefusals(subject, work);
    } catch (const TavrelSimulation::CriterionError& refused) {
        throw Failure{ExitUsage, OneLine(subject + ": " + refused.what())};
    } catch (const RunError& error) {
        throw Failure{ExitUnreadable, OneLine(error.what())};
    } catch (const CampaignFileError& error) {
        throw Failure{ExitUnreadable, OneLine(error.what())};
    } catch (const CampaignError& refused) {
        throw Failure{ExitUsage, OneLine(refused.what())};
    }
}

// Refuses, with its place in the plan, the first criterion that the script has no part for.
void RefuseCriterion(VariantRunner::Setup setup) {
    const std::vector<TavrelSimulation::Criterion> criteria = setup.criteria;
    for (std::size_t i = 0; i < criteria.size(); ++i) {
        setup.criteria = {criteria[i]};
        try {
            const VariantRunner alone(setup);
        } catch (const TavrelSimulation::CriterionError& refused) {
            throw Refused(fmt::format("criteria/{}", i), refused.what());
        }
    }
}

Workshop OpenWorkshop(Context& context, const PlanFile& file, const std::string& path) {
    Workshop shop{OpenPlan(context, file, path), "", {}, nullptr};
    shop.installation = shop.plan.scenario.installation;
    for (const std::string& text : file.criteria) shop.criteria.push_back(TavrelSimulation::ParseCriterion(text));
    VariantRunner::Setup setup;
    setup.file = &shop.plan.scenario.opened->File();
    setup.root = shop.plan.scenario.opened->getRootScenarioNode();
    setup.scenario = shop.plan.scenario.path;
    setup.script = file.script.value_or("");
    setup.installation = shop.installation;
    setup.inputs = {TavrelSimulation::InputOf("scenario", shop.plan.scenario.opened->getFilePath(), shop.installation),
                    TavrelSimulation::InputOf(
                        "rootModel", TavrelScenarioTemplateDb::RootModel::fileOf(shop.plan.scenario.configuration),
                        shop.installation)};
    setup.span = SpanOf(file);
    if (const std::string complaint = setup.span.Complaint(); !complaint.empty()) throw Refused("run", complaint);
    setup.criteria = shop.criteria;
    try {
        shop.runner = std::make_unique<VariantRunner>(setup);
    } catch (const TavrelSimulation::CriterionError&) {
        RefuseCriterion(setup);
        throw;
    }
    return shop;
}

// The workshop is opened in this process, since the runs are forks of it. A text that ends the process that reads it
// must not end the command, so a child opens it first.
Workshop OpenWorkshopSafely(Context& context, const PlanFile& file, const std::string& path) {
    TavrelProcesses::RunInChild(file.scenario, context.Children(), [&] {
        try {
            OpenWorkshop(context, file, path);
        } catch (...) {
            // It is told when it happens here.
        }
        return 0;
    });
    return OpenWorkshop(context, file, path);
}

std::string CountsText(const CampaignCounts& counts) {
    std::string text = fmt::format("{} variants", counts.Finished() + counts.missing.size());
    const char* separator = ": ";
    for (const auto& [verdict, count] : counts.verdicts) {
        text += fmt::format("{}{} {}", separator, count, WordOf(verdict));
        separator = ", ";
    }
    if (!counts.missing.empty()) text += fmt::format("{}{} missing", separator, counts.missing.size());
    return text;
}

void TellFaults(const CampaignCounts& counts) {
    for (const std::string& fault : counts.faults) Report(OneLine(fault));
}

ExitStatus StatusOf(const CampaignCounts& counts) {
    if (counts.Open() > 0) return ExitUnreadable;
    return counts.Of(Verdict::Failed) > 0 ? ExitFindings : ExitClean;
}

// The campaign's own installation, unless the user names one.
Context WithInstallation(Context& context, Arguments& arguments, const std::string& installation) {
    const char* fromEnvironment = std::getenv("TAVREL_CONFIG");
    std::error_code error;
    if (!arguments.Has("--config") && (!fromEnvironment || !*fromEnvironment) &&
        std::filesystem::exists(installation, error))
        arguments.values["--config"] = {installation};
    return Context{arguments, context.out};
}

Shard ShardOfArguments(const Arguments& arguments) {
    const std::string text = arguments.Text("--shard", "0/1");
    if (text != "auto") return ShardOf(text);
    return ShardOfEngine([](const std::string& name) -> std::optional<std::string> {
        const char* value = std::getenv(name.c_str());
        return value ? std::optional<std::string>(value) : std::nullopt;
    });
}

CampaignOptions OptionsOf(const Context& context) {
    const Arguments& arguments = context.arguments;
    const TavrelProcesses::ChildSettings limits = context.Children();
    CampaignOptions options;
    options.shard = ShardOfArguments(arguments);
    options.jobs = limits.jobs;
    options.seconds = limits.seconds;
    options.memory = limits.memory;
    const std::string retry = arguments.Text("--retry"), traces = arguments.Text("--traces", "all");
    options.retry = retry == "all" ? Retry::All : retry == "failed" ? Retry::Failed : Retry::Open;
    options.traces = traces == "none" ? Traces::None : traces == "failed" ? Traces::Failed : Traces::All;
    if (arguments.Has("--memory")) {
        const double megabytes = arguments.Number("--memory", 0);
        if (!(megabytes >= 1) || megabytes > 1e7)
            throw Failure{ExitUsage, "--memory takes a number of megabytes, at least 1"};
        options.memory = static_cast<std::size_t>(megabytes * 1048576.0);
    }
    return options;
}

std::string GoOnCommand(const Arguments& arguments) {
    std::string text = "tavrel campaign run " + ShellWord(arguments.Text("DIR"));
    for (const char* option :
         {"--config", "--shard", "--jobs", "--retry", "--command", "--traces", "--timeout", "--memory"})
        if (arguments.Has(option)) text += fmt::format(" {} {}", option, ShellWord(arguments.Text(option)));
    return text;
}

// The plan calls a parameter by one of its names; here any of them will do.
std::string NameInPlan(const OpenedPlan& plan, const std::string& name) {
    const std::vector<PlannedParameter>& parameters = plan.plan.Parameters();
    const auto isCalled = [&](const PlannedParameter& parameter) {
        return parameter.name == name || parameter.id == name;
    };
    if (std::any_of(parameters.begin(), parameters.end(), isCalled)) return name;
    const Settable& settable = *plan.scenario.settable;
    try {
        return settable.Targets()[settable.Find(name).target].id;
    } catch (const AssignmentError&) {
        return name; // the search refuses it, with the nearest one of the plan
    }
}

Json EndJson(const BisectionEnd& end) {
    Json criteria = Json::array();
    for (const TavrelSimulation::Outcome& outcome : end.record.criteria)
        criteria.push_back({{"criterion", outcome.criterion},
                            {"holds", outcome.holds},
                            {"margin", outcome.margin ? Json(*outcome.margin) : Json()}});
    return {{"value", end.value}, {"verdict", WordOf(end.record.verdict)}, {"criteria", std::move(criteria)}};
}

std::string EndText(const BisectionEnd& end) {
    std::string text = fmt::format("  {} {}", end.value, WordOf(end.record.verdict));
    for (const TavrelSimulation::Outcome& outcome : end.record.criteria)
        text += fmt::format("\n    {} {}{}", outcome.criterion, outcome.holds ? "holds" : "does not hold",
                            outcome.margin ? fmt::format(", margin {}", *outcome.margin) : "");
    return text + "\n";
}

} // namespace

int RunCampaignInit(Context& context) {
    const std::string path = context.arguments.Text("PLAN");
    if (!context.arguments.Has("--output")) throw Failure{ExitUsage, "campaign init needs --output DIR"};
    return WithCampaignRefusals(path, [&]() -> int {
        PlanFile file = ReadPlanFile(path);
        file.scenario = OperandOf(file, path); // the campaign may be run from another folder
        const Workshop shop = OpenWorkshopSafely(context, file, path);
        CampaignSetup setup;
        setup.plan = &shop.plan.plan;
        setup.installation = std::filesystem::absolute(shop.installation).lexically_normal().string();
        setup.configuration = shop.plan.scenario.configuration;
        setup.script = shop.runner->Script();
        setup.until = SpanOf(file).until;
        setup.tool = TAVREL_COMMAND_VERSION;
        setup.inputs = shop.runner->Inputs();
        const Campaign campaign = Campaign::Begin(setup, context.arguments.Text("--output"));
        context.out.Print("{}: {} variants\n", campaign.Folder(), campaign.Numbers().size());
        return context.status;
    });
}

int RunCampaignRun(Context& context) {
    const std::string folder = context.arguments.Text("DIR");
    return WithCampaignRefusals(folder, [&]() -> int {
        CampaignOptions options = OptionsOf(context);
        options.tell = [](const std::string& sentence) { Report(OneLine(sentence)); };
        const Campaign campaign = Campaign::Open(folder);
        std::optional<Simulator> simulator;
        if (context.arguments.Has("--command")) simulator.emplace(context.arguments.Text("--command"), options.memory);
        Arguments arguments = context.arguments;
        Context own = WithInstallation(context, arguments, campaign.Installation());
        // What was cut short or has other names now cannot be opened, or not with this plan.
        const std::string installation = InstallationFileInUse(own.arguments);
        std::error_code error;
        if (std::filesystem::exists(installation, error)) campaign.HoldAgainstFiles(installation);
        Workshop shop = OpenWorkshopSafely(own, campaign.ThePlan(), folder);
        campaign.HoldAgainst(shop.runner->Inputs());
        const RunVariant run =
            simulator ? RunWith(*simulator, *shop.runner, shop.plan.plan, shop.criteria, folder) : shop.InWorld();
        std::optional<Progress> progress;
        const auto tell = [&](std::uint64_t done, std::uint64_t all) {
            if (!progress) progress.emplace(static_cast<double>(all), "runs");
            if (done == all)
                progress->Hide();
            else
                progress->Reach(static_cast<double>(done));
        };
        CampaignCounts counts;
        const bool finished = campaign.Run(shop.plan.plan, options, run, tell, &counts);
        if (!finished) Progress::Wipe(); // it was shown by a process that is gone
        context.out.Print("{}\n", CountsText(counts));
        if (!finished)
            throw Failure{ExitUnreadable,
                          "interrupted; what was finished is kept. To go on: " + GoOnCommand(context.arguments)};
        return StatusOf(counts);
    });
}

int RunCampaignStatus(Context& context) {
    const std::string folder = context.arguments.Text("DIR");
    return WithCampaignRefusals(folder, [&]() -> int {
        const Campaign campaign = Campaign::Open(folder);
        const CampaignCounts counts = campaign.Count({});
        TellFaults(counts);
        const Campaign::Speed speed = campaign.MeanSpeed();
        if (context.arguments.Has("--json")) {
            Json verdicts = Json::object();
            for (const Verdict verdict : {Verdict::Passed, Verdict::Failed, Verdict::Error, Verdict::Timeout,
                                          Verdict::Killed, Verdict::Skipped})
                verdicts[WordOf(verdict)] = counts.Of(verdict);
            context.out.Print(DumpJson({{"scenario", campaign.ThePlan().scenario},
                                        {"count", campaign.Numbers().size()},
                                        {"finished", counts.Finished()},
                                        {"verdicts", std::move(verdicts)},
                                        {"missing", counts.missing},
                                        {"runsPerSecond", speed.runsPerSecond},
                                        {"secondsPerRun", speed.secondsPerRun}}));
            return context.status;
        }
        context.out.Print("{}\n", CountsText(counts));
        if (!counts.missing.empty()) context.out.Print("missing: {}\n", RangesText(counts.missing));
        if (speed.secondsPerRun > 0)
            context.out.Print("{:.1f} runs a second, {:.4f} s for each\n", speed.runsPerSecond, speed.secondsPerRun);
        return context.status;
    });
}

int RunCampaignMerge(Context& context) {
    const std::string folder = context.arguments.Text("DIR");
    return WithCampaignRefusals(folder, [&]() -> int {
        const CampaignCounts counts = Campaign::Open(folder).Merge(context.arguments.Text("--output", folder));
        TellFaults(counts);
        context.out.Print("{}\n", CountsText(counts));
        return StatusOf(counts);
    });
}

int RunCampaignBisect(Context& context) {
    const Arguments& arguments = context.arguments;
    const std::string path = arguments.Text("PLAN");
    for (const char* needed : {"--parameter", "--tolerance"})
        if (!arguments.Has(needed)) throw Failure{ExitUsage, fmt::format("campaign bisect needs {}", needed)};
    return WithCampaignRefusals(path, [&]() -> int {
        PlanFile file = ReadPlanFile(path);
        // One parameter is moved; all others stay where the defaults have them.
        file.method = {};
        file.include.clear();
        file.constraints.clear();
        file.repetitions = 1;
        Workshop shop = OpenWorkshopSafely(context, file, path);
        const CampaignOptions options = OptionsOf(context);
        const RunVariant run = shop.InWorld();
        int probes = 4;
        if (arguments.Has("--probes") && (!ReadNumber(arguments.Text("--probes"), probes) || probes < 0))
            throw Failure{ExitUsage, fmt::format("--probes takes a number of values from 0 on, not \"{}\"",
                                                 arguments.Text("--probes"))};
        const Bisection found =
            Bisect(shop.plan.plan, NameInPlan(shop.plan, arguments.Text("--parameter")), arguments.Text("--tolerance"),
                   static_cast<std::size_t>(probes),
                   [&](const Variant& variant) { return RunAlone(shop.plan.plan, variant, options, run); });
        const std::string name = arguments.Text("--parameter");
        if (arguments.Has("--json")) {
            context.out.Print(DumpJson({{"parameter", name},
                                        {"differ", found.differ},
                                        {"low", EndJson(found.low)},
                                        {"high", EndJson(found.high)},
                                        {"runs", found.runs},
                                        {"changes", found.changes}}));
        } else if (!found.differ) {
            context.out.Print("{}: the ends do not differ, so there is no limit to look for ({} runs)\n{}{}", name,
                              found.runs, EndText(found.low), EndText(found.high));
        } else {
            context.out.Print("{}: the limit lies between ({} runs)\n{}{}", name, found.runs, EndText(found.low),
                              EndText(found.high));
            if (found.changes > 1)
                context.out.Print("The verdict changes {} times over the probes; this is the first limit.\n",
                                  found.changes);
        }
        return found.differ ? ExitClean : ExitFindings;
    });
}

} // namespace tavrel
