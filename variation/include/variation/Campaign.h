#ifndef TAVREL_VARIATION_CAMPAIGN_H
#define TAVREL_VARIATION_CAMPAIGN_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <simulation/Events.h>
#include <simulation/Verdict.h>
#include <variation/CampaignError.h>
#include <variation/Export.h>
#include <variation/Plan.h>
#include <variation/Results.h>
#include <variation/RunRecord.h>
#include <variation/Shard.h>

// Campaigns: a folder in which the variants of a plan are run, on one machine or on many that see it. The number of a
// variant is its identity: a run is finished if and only if its file is in the folder, and whoever begins with a number
// holds a lock on it, so nothing is lost or done twice, whoever is killed when.
namespace TavrelVariation {

class PlannedRecords;

// More runs than that are no campaign; a plan of a greater number is refused.
inline constexpr std::uint64_t kMostRuns = 10'000'000;

// What a campaign is made from, frozen when it begins.
struct TAVREL_VARIATION_API CampaignSetup {
    const Plan* plan = nullptr;
    std::string installation; // file of the installation that the plan was read with
    std::string configuration;
    std::string script;          // that is run; empty where the scenario has none
    std::optional<double> until; // s, for a plan that does not say it
    std::string tool;            // version of the command
    std::vector<TavrelSimulation::Input> inputs;
};

// How the verdicts of some numbers stand.
struct TAVREL_VARIATION_API CampaignCounts {
    std::map<TavrelSimulation::Verdict, std::uint64_t> verdicts;
    std::vector<std::uint64_t> missing; // numbers without a run, in their order
    // A sentence, with the file and the reason, for each file of a run that is none: cut short, of another number, or
    // not to be read. These numbers are missing, too.
    std::vector<std::string> faults;

    std::uint64_t Of(TavrelSimulation::Verdict verdict) const {
        const auto found = verdicts.find(verdict);
        return found == verdicts.end() ? 0 : found->second;
    }
    std::uint64_t Finished() const;
    // No run was possible, or is there yet.
    std::uint64_t Open() const;
};

enum class Traces { All, Failed, None };
enum class Retry { Open, Failed, All }; // what is run again: what had no run; failed ones, too; everything

struct CampaignOptions {
    Shard shard;
    std::size_t jobs = 1;
    Retry retry = Retry::Open;
    Traces traces = Traces::All;
    double seconds = 60;                       // for each run
    std::size_t memory = std::size_t(4) << 30; // address space of each run, in bytes
    // Called, before anything runs, with a sentence for each file of a run of the shard that is none, so that it is run
    // again; may be empty.
    std::function<void(const std::string& sentence)> tell;
};

// Called after each run of this process, with what it did so far: `done` of `all` numbers that it set out with.
using CampaignProgress = std::function<void(std::uint64_t done, std::uint64_t all)>;

// Runs one variant and tells what came of it. It is called in a process of its own, which ends afterwards. The trace is
// written to `traceFile` unless that is empty. What is thrown becomes the message of a run that could not be had, but
// for CampaignError, which ends the work without a record.
using RunVariant = std::function<RunRecord(const Variant& variant, const std::string& traceFile)>;

//
// Count, Run and Merge throw CampaignError that names the file for a record whose values, seed or criteria are not
// those that the plan has for its number: it came from another campaign, and would count as a run of this one.
class TAVREL_VARIATION_API Campaign {
public:
    // Makes the folder and freezes the plan in it. A folder that holds the same campaign already is left as it is.
    // Throws CampaignError for a folder of another one, and for a plan of more runs than kMostRuns or of a number that
    // only an upper bound is known of.
    static Campaign Begin(const CampaignSetup& setup, const std::string& folder);
    // Throws CampaignError for a folder that holds no campaign, or one of a later format, and CampaignFileError for one
    // that cannot be read.
    static Campaign Open(const std::string& folder);

    const std::string& Folder() const { return folder; }
    const std::string& Installation() const { return installation; }
    // The plan as it was frozen.
    const PlanFile& ThePlan() const { return planFile; }
    const CampaignSheet& Sheet() const { return sheet; }
    // All numbers there are, in their order.
    const std::vector<std::uint64_t>& Numbers() const { return numbers; }

    // Throws CampaignError that names which input is another one than when the campaign began.
    void HoldAgainst(const std::vector<TavrelSimulation::Input>& inputs) const;
    // The same of the files below the folder of this installation file, without opening any as what it is. It finds
    // what is cut short or gone; HoldAgainst finds what came to these files or took the place of one.
    void HoldAgainstFiles(const std::string& installationFile) const;

    // How the numbers of a shard stand.
    CampaignCounts Count(const Shard& shard) const;
    // Runs what is not finished of a shard. The plan must be the frozen one. Numbers that another process is at are
    // waited for, and what others have finished since this call began is not run again. Throws CampaignFileError if the
    // folder cannot be written to, and another CampaignError if `run` throws one that is no CampaignFileError: the
    // campaign cannot go on then. Answers false when it was interrupted by SIGINT or SIGTERM: what was finished until
    // then is there, and nothing is half there. `counts` gets how the numbers of the shard stand afterwards, as Count
    // tells it; it may be null.
    bool Run(const Plan& plan, const CampaignOptions& options, const RunVariant& run, const CampaignProgress& progress,
             CampaignCounts* counts = nullptr) const;

    // Runs a second, over the last work on the campaign, of all commands that had a part in it, and the seconds of one
    // run in the mean; 0 where nothing is known.
    struct Speed {
        double runsPerSecond = 0;
        double secondsPerRun = 0;
    };
    Speed MeanSpeed() const;

    // Writes results.jsonl, results.csv, junit.xml and report.html. They are a function of the finished runs alone.
    // Throws CampaignFileError.
    CampaignCounts Merge(const std::string& output) const;

private:
    Campaign() = default;

    std::map<std::uint64_t, TavrelSimulation::Verdict>
    VerdictsOf(const Shard& shard, const std::function<void(const std::string&)>& tell) const;
    CampaignCounts CountOf(const std::map<std::uint64_t, TavrelSimulation::Verdict>& verdicts,
                           const Shard& shard) const;

    std::string folder;
    std::string installation;
    PlanFile planFile;
    CampaignSheet sheet;
    std::vector<TavrelSimulation::Input> inputs;
    std::vector<std::uint64_t> numbers;
    std::shared_ptr<const PlannedRecords> planned;
};

} // namespace TavrelVariation

#endif
