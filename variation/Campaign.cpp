#include <variation/Campaign.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include <Commons/WholeFile.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <variation/Refused.h>

#include "CampaignFolder.h"
#include "CampaignJson.h"

namespace TavrelVariation {

namespace fs = std::filesystem;
using TavrelSimulation::Verdict;

namespace {

void WriteWhole(const std::string& file, const std::string& text) {
    std::string reason;
    if (!Commons::WriteFileWhole(file, text, reason)) throw CampaignFileError(fmt::format("{}: {}", file, reason));
}

} // namespace

std::uint64_t CampaignCounts::Finished() const {
    std::uint64_t all = 0;
    for (const auto& [verdict, count] : verdicts) all += count;
    return all;
}

std::uint64_t CampaignCounts::Open() const {
    return Of(Verdict::Error) + Of(Verdict::Timeout) + Of(Verdict::Killed) + missing.size();
}

Campaign Campaign::Begin(const CampaignSetup& setup, const std::string& folder) {
    const FrozenCampaign frozen = Freeze(setup);
    const CampaignFolder files(folder);
    const std::string file = files.File("campaign.json");
    std::error_code error;
    if (fs::exists(file, error)) {
        const FrozenCampaign present = FrozenCampaign::Read(file);
        if (const std::string difference = DifferenceOf(present, frozen); !difference.empty())
            throw CampaignError(fmt::format("{} holds another campaign: {}", folder, difference));
        return Open(folder);
    }
    // They would count as those of the new one.
    if (files.HasRuns())
        throw CampaignError(fmt::format("{} has no campaign.json, but runs of another campaign in runs/; take another "
                                        "folder, or move these away",
                                        folder));
    fs::create_directories(folder, error);
    if (error) throw FileError(folder, error.value());
    files.MakeFolders();
    WriteWhole(file, frozen.Text());
    return Open(folder);
}

Campaign Campaign::Open(const std::string& folder) {
    FrozenCampaign frozen = FrozenCampaign::Read(CampaignFolder(folder).File("campaign.json"));
    Campaign campaign;
    campaign.folder = folder;
    campaign.installation = std::move(frozen.installation);
    campaign.planFile = std::move(frozen.plan);
    campaign.sheet = std::move(frozen.sheet);
    campaign.inputs = std::move(frozen.inputs);
    campaign.numbers = std::move(frozen.numbers);
    campaign.planned = std::make_shared<const PlannedRecords>(std::move(frozen.planned));
    return campaign;
}

void Campaign::HoldAgainst(const std::vector<TavrelSimulation::Input>& now) const {
    if (const std::string difference = DifferenceOf(inputs, now); !difference.empty())
        throw CampaignError(fmt::format("{}: {}; begin a new campaign for it", folder, difference));
}

void Campaign::HoldAgainstFiles(const std::string& installationFile) const {
    HoldAgainst(AsTheyAreNow(inputs, installationFile));
}

CampaignCounts Campaign::CountOf(const std::map<std::uint64_t, Verdict>& verdicts, const Shard& shard) const {
    CampaignCounts counts;
    for (const std::uint64_t number : numbers) {
        if (!shard.Has(number)) continue;
        const auto found = verdicts.find(number);
        if (found == verdicts.end())
            counts.missing.push_back(number);
        else
            ++counts.verdicts[found->second];
    }
    return counts;
}

std::map<std::uint64_t, Verdict> Campaign::VerdictsOf(const Shard& shard,
                                                      const std::function<void(const std::string&)>& tell) const {
    const auto isWanted = [&](std::uint64_t number) {
        return shard.Has(number) && std::binary_search(numbers.begin(), numbers.end(), number);
    };
    return CampaignFolder(folder, planned.get()).Verdicts(isWanted, tell);
}

CampaignCounts Campaign::Count(const Shard& shard) const {
    std::vector<std::string> faults;
    const auto tell = [&](const std::string& sentence) { faults.push_back(sentence); };
    CampaignCounts counts = CountOf(VerdictsOf(shard, tell), shard);
    counts.faults = std::move(faults);
    return counts;
}

namespace {

// What a log tells of the last call of its process.
struct Stretch {
    std::size_t runs = 0;
    double seconds = 0; // of all runs
    double first = 0, last = 0;

    explicit Stretch(const std::string& file) {
        std::ifstream log(file);
        for (std::string line; std::getline(log, line);) {
            const auto json = nlohmann::json::parse(line, nullptr, false);
            if (!json.is_object() || !json.contains("seconds") || !json.contains("sinceStart")) continue;
            if (!json["seconds"].is_number() || !json["sinceStart"].is_number()) continue;
            const double at = json["sinceStart"].get<double>();
            // A later call of the same process number begins its time anew.
            if (runs == 0 || at < last) {
                runs = 0;
                seconds = 0;
                first = at - json["seconds"].get<double>();
            }
            last = at;
            seconds += json["seconds"].get<double>();
            ++runs;
        }
    }
    double RunsPerSecond() const { return last > first ? static_cast<double>(runs) / (last - first) : 0; }
};

} // namespace

Campaign::Speed Campaign::MeanSpeed() const {
    // The work that came last is that of the log that was written last, and of those that were written meanwhile.
    std::error_code error;
    std::vector<std::pair<fs::file_time_type, std::string>> logs;
    for (fs::directory_iterator entry(CampaignFolder(folder).File("log"), error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() != ".jsonl") continue; // what a simulator printed
        const auto written = entry->last_write_time(error);
        if (!error) logs.emplace_back(written, entry->path().string());
    }
    std::sort(logs.rbegin(), logs.rend());
    Speed speed;
    std::size_t runs = 0;
    std::optional<fs::file_time_type> begin;
    for (const auto& [written, file] : logs) {
        if (begin && written < *begin) break;
        const Stretch stretch(file);
        if (stretch.runs == 0) continue;
        if (!begin)
            begin = written - std::chrono::duration_cast<fs::file_time_type::duration>(
                                  std::chrono::duration<double>(stretch.last - stretch.first));
        runs += stretch.runs;
        speed.secondsPerRun += stretch.seconds;
        speed.runsPerSecond += stretch.RunsPerSecond();
    }
    if (runs > 0) speed.secondsPerRun /= static_cast<double>(runs);
    return speed;
}

CampaignCounts Campaign::Merge(const std::string& output) const {
    const CampaignFolder files(folder, planned.get());
    std::string lines;
    std::vector<std::string> faults;
    const std::vector<RunRecord> records =
        files.Records(numbers, lines, [&](const std::string& sentence) { faults.push_back(sentence); });
    std::map<std::uint64_t, Verdict> verdicts;
    for (const RunRecord& record : records) verdicts.emplace_hint(verdicts.end(), record.number, record.verdict);
    CampaignCounts counts = CountOf(verdicts, {});
    counts.faults = std::move(faults);
    std::error_code error;
    fs::create_directories(output, error);
    if (error) throw FileError(output, error.value());
    WriteWhole(output + "/results.jsonl", lines);
    WriteWhole(output + "/results.csv", ResultsCsv(sheet, records));
    WriteWhole(output + "/junit.xml", ResultsJunit(sheet, records, counts.missing));
    WriteWhole(output + "/report.html", ResultsHtml(sheet, records, counts.missing));
    return counts;
}

} // namespace TavrelVariation
