#ifndef TAVREL_VARIATION_CAMPAIGNFOLDER_H
#define TAVREL_VARIATION_CAMPAIGNFOLDER_H

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <simulation/Verdict.h>
#include <variation/RunRecord.h>

namespace TavrelVariation {

// The files of a campaign:
//
//     campaign.json         what is run, frozen
//     runs/000007.json      a finished run; what is there is finished
//     traces/000007.jsonl   its trace, if traces are kept
//     log/HOST-PID.jsonl    what differs between two runs of the same variant: how long each took, and where
//     claims                locks, a byte for each number
//     work/000007/          of a simulator, while it runs
//
// Everything is written beside its place and moved there, so that nothing is ever half there. Failures are
// CampaignError.
class CampaignFolder {
public:
    using Tell = std::function<void(const std::string& sentence)>;

    explicit CampaignFolder(std::string path) : folder(std::move(path)) {}

    const std::string& Path() const { return folder; }
    std::string File(const std::string& name) const { return folder + "/" + name; }
    std::string RunFile(std::uint64_t number) const { return NumberedFile("runs", number, ".json"); }
    std::string TraceFile(std::uint64_t number) const { return NumberedFile("traces", number, ".jsonl"); }
    // A file of this process beside those of the folder `of`; whoever cleans up knows it by its name.
    std::string FileBeside(const std::string& of, std::uint64_t number) const;
    // A folder for whoever has the right to work on the number.
    std::string WorkFolder(std::uint64_t number) const;

    // What a simulator prints.
    std::string OutputFile(std::uint64_t number) const { return WorkFolder(number) + "/output.txt"; }
    // Keeps it as log/NUMBER.txt, if there is any.
    void KeepOutput(std::uint64_t number) const;

    // Makes the folders that a run writes to.
    void MakeFolders() const;
    // Whether there is any file of a run.
    bool HasRuns() const;
    // The verdict of each wanted number that has a run. A file that holds no whole record of its number, as after a
    // loss of power, and one that cannot be read are none; `tell` gets a sentence for each of these.
    std::map<std::uint64_t, TavrelSimulation::Verdict>
    Verdicts(const std::function<bool(std::uint64_t number)>& isWanted, const Tell& tell) const;
    std::optional<TavrelSimulation::Verdict> VerdictOf(std::uint64_t number, const Tell& tell = {}) const;
    // The records of the wanted numbers, both sorted; `lines` gets them as lines of JSON. What is no run is none here.
    std::vector<RunRecord> Records(const std::vector<std::uint64_t>& wanted, std::string& lines,
                                   const Tell& tell) const;
    // Writes the record, flushes it and moves it to its place. `beforeFlush` is called when only the wait for the disk
    // is left.
    void Write(const RunRecord& record, const std::function<void()>& beforeFlush = {}) const;
    // Removes what processes that were killed have left. `withRight` calls what it is given while nobody else can work
    // on the number, or leaves it.
    void RemoveLeftovers(
        const std::function<void(std::uint64_t number, const std::function<void()>& remove)>& withRight) const;

private:
    std::string NumberedFile(const char* below, std::uint64_t number, const char* ending) const;
    // The numbers that a file of a run is called by, sorted.
    std::vector<std::uint64_t> NumbersOfRuns() const;

    std::string folder;
};

// The right to work on numbers of a campaign, against all processes of all machines that see the folder. The locks end
// with the process, however that ends.
class Claims {
public:
    // Throws CampaignError if the folder cannot be written to.
    explicit Claims(const CampaignFolder& folder);
    ~Claims();
    Claims(const Claims&) = delete;
    Claims& operator=(const Claims&) = delete;

    // False if somebody else works on the number.
    bool Take(std::uint64_t number);
    // Waits until nobody works on the number, and takes it.
    void Await(std::uint64_t number);
    void Release(std::uint64_t number);

private:
    int descriptor;
};

// Writes a file beside its place, flushes it and moves it there. Throws CampaignError, and leaves nothing then.
void WriteFlushed(const std::string& beside, const std::string& file, std::string_view bytes,
                  const std::function<void()>& beforeFlush = {});

} // namespace TavrelVariation

#endif
