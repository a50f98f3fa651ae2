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

#include <sys/types.h>

#include <simulation/Verdict.h>
#include <variation/CampaignError.h>
#include <variation/RunRecord.h>

#include "RecordLine.h"

namespace TavrelVariation {

// A failure of the system at that file, in words.
CampaignFileError FileError(const std::string& file, int error);

// Which file stands somewhere. Each that is moved there is another one, whatever the clock says.
struct FileState {
    ino_t number = 0; // none: there is no file
    std::int64_t seconds = 0, nanoseconds = 0;

    bool operator==(const FileState& other) const = default;
};

struct FinishedRun {
    TavrelSimulation::Verdict verdict;
    FileState file;
};

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
// CampaignFileError, and a record of another plan is a CampaignError that names its file and tells what to do.
class CampaignFolder {
public:
    using Tell = std::function<void(const std::string& sentence)>;

    // Without `planned`, which must outlive this object, for whoever reads no record.
    explicit CampaignFolder(std::string path, const PlannedRecords* planned = nullptr)
        : folder(std::move(path)), plan(planned) {}

    const std::string& Path() const { return folder; }
    std::string File(const std::string& name) const { return folder + "/" + name; }
    std::string RunFile(std::uint64_t number) const { return NumberedFile("runs", number, ".json"); }
    std::string TraceFile(std::uint64_t number) const { return NumberedFile("traces", number, ".jsonl"); }
    // A file of this process beside those of the folder `of`; RemoveLeftovers knows it by its name.
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
    // One run, and which file it is.
    std::optional<FinishedRun> RunOf(std::uint64_t number) const;
    // The records of the wanted numbers, both sorted; `lines` gets them as lines of JSON. What is no run is none here.
    std::vector<RunRecord> Records(const std::vector<std::uint64_t>& wanted, std::string& lines,
                                   const Tell& tell) const;
    // Throws CampaignError if the plan does not have the record so.
    void HoldPlanned(const RunRecord& record) const;
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

    // A record as a line, if the bytes of a file are the whole one of that number.
    std::optional<std::string> LineIn(std::string bytes, std::uint64_t number) const;
    // A sentence about what is of another plan; empty if nothing is.
    std::string ForeignIn(const std::string& line, std::uint64_t number) const;

    std::string folder;
    const PlannedRecords* plan;
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

} // namespace TavrelVariation

#endif
