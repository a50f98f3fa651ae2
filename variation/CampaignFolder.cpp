#include "CampaignFolder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Commons/WholeFile.h>
#include <fmt/format.h>
#include <variation/CampaignError.h>

namespace TavrelVariation {

namespace {

namespace fs = std::filesystem;
using TavrelSimulation::Verdict;

constexpr std::string_view kBeside = ".under-way";
constexpr const char* kWork = "work";
constexpr std::size_t kMostOfRecord = std::size_t{64} << 20;

class OpenFile {
public:
    OpenFile(const std::string& path, int flags) : descriptor(open(path.c_str(), flags | O_CLOEXEC, 0666)) {}
    ~OpenFile() {
        if (descriptor >= 0) close(descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Get() const { return descriptor; }
    // Closes it; false if that told of a failed write.
    bool Close() { return close(std::exchange(descriptor, -1)) == 0; }

private:
    int descriptor;
};

// At most `most` bytes of a file, and, where it is asked for, which one it is; none if it cannot be read, and errno
// says why.
std::optional<std::string> BytesOf(const std::string& path, std::size_t most, FileState* state) {
    const OpenFile file(path, O_RDONLY | O_NONBLOCK);
    if (file.Get() < 0) return std::nullopt;
    if (state) {
        struct stat about;
        if (fstat(file.Get(), &about) != 0) return std::nullopt;
        *state = {about.st_ino, about.st_mtim.tv_sec, about.st_mtim.tv_nsec};
    }
    std::string bytes;
    char part[4096];
    while (bytes.size() < most) {
        const ssize_t count = read(file.Get(), part, std::min(sizeof part, most - bytes.size()));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        bytes.append(part, static_cast<std::size_t>(count));
        if (static_cast<std::size_t>(count) < sizeof part) break; // of a file, that is the end
    }
    return bytes;
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Writes a file beside its place, flushes it and moves it there, or leaves nothing. No two processes write the same
// one.
void WriteFlushed(const std::string& beside, const std::string& file, std::string_view bytes,
                  const std::function<void()>& beforeFlush) {
    OpenFile out(beside, O_WRONLY | O_CREAT | O_TRUNC);
    int failure = out.Get() < 0 || !WriteAll(out.Get(), bytes) ? errno : 0;
    if (failure == 0 && beforeFlush) beforeFlush();
    if (failure == 0 && fdatasync(out.Get()) != 0) failure = errno;
    if (out.Get() >= 0 && !out.Close() && failure == 0) failure = errno;
    if (failure == 0 && rename(beside.c_str(), file.c_str()) != 0) failure = errno;
    if (failure == 0) return;
    unlink(beside.c_str());
    throw FileError(file, failure);
}

// The number that a file of a run is called by. Only one spelling of it is, so that none counts twice.
std::optional<std::uint64_t> NumberOfRun(std::string_view name) {
    constexpr std::size_t kDigits = 6;
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    const auto digits = static_cast<std::size_t>(end - name.data());
    if (error != std::errc() || name.substr(digits) != ".json") return std::nullopt;
    if (digits < kDigits || (digits > kDigits && name.front() == '0')) return std::nullopt;
    return number;
}

// The bytes of a file of a run. One that is there and cannot be read is told.
std::optional<std::string> BytesOfRun(const std::string& file, const CampaignFolder::Tell& tell,
                                      FileState* state = nullptr) {
    auto bytes = BytesOf(file, kMostOfRecord, state);
    if (!bytes && errno != ENOENT && tell)
        tell(fmt::format("{}: {}, so its run counts as missing", file,
                         Commons::WordsOf({errno, std::generic_category()})));
    return bytes;
}

void TellNoRecord(const std::string& file, std::uint64_t number, const CampaignFolder::Tell& tell) {
    if (tell) tell(fmt::format("{}: it is no whole record of run {}, which counts as missing", file, number));
}

// What is of another plan is told together, so that not each file needs a call.
class Foreign {
public:
    void Add(std::string sentence) {
        if (sentence.empty()) return;
        if (count++ == 0) first = std::move(sentence);
    }
    void Refuse() const {
        if (count == 0) return;
        throw CampaignError(fmt::format("{}{}. Move {} out of runs/ and call tavrel campaign run for {}", first,
                                        count > 1 ? fmt::format(", and so it is with {} more", count - 1) : "",
                                        count > 1 ? "them" : "it",
                                        count > 1 ? "runs of this plan" : "a run of this plan"));
    }

private:
    std::string first;
    std::size_t count = 0;
};

// A folder that vanishes, or was never made, holds nothing.
template <typename Take>
void ForEachName(const std::string& folder, const Take& take) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        take(entry->path().filename().string());
    if (error && error != std::errc::no_such_file_or_directory) throw FileError(folder, error.value());
}

struct flock LockOf(std::uint64_t number, short type) {
    struct flock lock;
    std::memset(&lock, 0, sizeof lock); // of a lock of an open file, the process must be 0
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(number);
    lock.l_len = 1;
    return lock;
}

} // namespace

CampaignFileError FileError(const std::string& file, int error) {
    return CampaignFileError(fmt::format("{}: {}", file, Commons::WordsOf({error, std::system_category()})));
}

std::string CampaignFolder::NumberedFile(const char* below, std::uint64_t number, const char* ending) const {
    return fmt::format("{}/{}/{:06}{}", folder, below, number, ending);
}

std::string CampaignFolder::FileBeside(const std::string& of, std::uint64_t number) const {
    char host[256] = "";
    gethostname(host, sizeof host - 1);
    return fmt::format("{}/{}/{:06}.{}-{}{}", folder, of, number, host, getpid(), kBeside);
}

std::string CampaignFolder::WorkFolder(std::uint64_t number) const { return NumberedFile(kWork, number, ""); }

void CampaignFolder::KeepOutput(std::uint64_t number) const {
    std::error_code ignored;
    fs::copy_file(OutputFile(number), NumberedFile("log", number, ".txt"), fs::copy_options::overwrite_existing,
                  ignored);
}

void CampaignFolder::MakeFolders() const {
    for (const char* name : {"runs", "traces", "log"}) {
        std::error_code error;
        fs::create_directories(File(name), error);
        if (error) throw FileError(File(name), error.value());
    }
}

std::vector<std::uint64_t> CampaignFolder::NumbersOfRuns() const {
    std::vector<std::uint64_t> numbers;
    ForEachName(File("runs"), [&](const std::string& name) {
        if (const auto number = NumberOfRun(name)) numbers.push_back(*number);
    });
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

bool CampaignFolder::HasRuns() const { return !NumbersOfRuns().empty(); }

std::optional<std::string> CampaignFolder::LineIn(std::string bytes, std::uint64_t number) const {
    if (RecordLine::Of(bytes, number)) return bytes;
    // Another hand may have written it.
    const auto record = RecordOf(bytes);
    if (!record || record->number != number) return std::nullopt;
    return plan->LineOf(*record);
}

std::string CampaignFolder::ForeignIn(const std::string& line, std::uint64_t number) const {
    const auto parts = RecordLine::Of(line, number);
    const std::string complaint = parts ? plan->ComplaintOf(number, *parts) : "";
    return complaint.empty() ? "" : fmt::format("{} is the record of another plan: {}", RunFile(number), complaint);
}

std::map<std::uint64_t, Verdict> CampaignFolder::Verdicts(const std::function<bool(std::uint64_t)>& isWanted,
                                                          const Tell& tell) const {
    std::map<std::uint64_t, Verdict> verdicts;
    Foreign foreign;
    for (const std::uint64_t number : NumbersOfRuns()) {
        if (!isWanted(number)) continue;
        const std::string file = RunFile(number);
        auto bytes = BytesOfRun(file, tell);
        if (!bytes) continue;
        const auto line = LineIn(*std::move(bytes), number);
        if (!line) {
            TellNoRecord(file, number, tell);
            continue;
        }
        foreign.Add(ForeignIn(*line, number));
        verdicts.emplace_hint(verdicts.end(), number, RecordLine::Of(*line, number)->verdict);
    }
    foreign.Refuse();
    return verdicts;
}

std::optional<FinishedRun> CampaignFolder::RunOf(std::uint64_t number) const {
    FileState state;
    auto bytes = BytesOfRun(RunFile(number), {}, &state);
    const auto line = bytes ? LineIn(*std::move(bytes), number) : std::nullopt;
    if (!line) return std::nullopt;
    return FinishedRun{RecordLine::Of(*line, number)->verdict, state};
}

std::vector<RunRecord> CampaignFolder::Records(const std::vector<std::uint64_t>& wanted, std::string& lines,
                                               const Tell& tell) const {
    std::vector<RunRecord> records;
    Foreign foreign;
    for (const std::uint64_t number : NumbersOfRuns()) {
        if (!std::binary_search(wanted.begin(), wanted.end(), number)) continue;
        const std::string file = RunFile(number);
        auto bytes = BytesOfRun(file, tell);
        if (!bytes) continue;
        const auto line = LineIn(*std::move(bytes), number);
        auto record = line ? RecordOf(*line) : std::nullopt;
        if (!record) {
            TellNoRecord(file, number, tell);
            continue;
        }
        foreign.Add(ForeignIn(*line, number));
        lines += *line;
        records.push_back(*std::move(record));
    }
    foreign.Refuse();
    return records;
}

void CampaignFolder::HoldPlanned(const RunRecord& record) const {
    const std::string line = plan->LineOf(record);
    const auto parts = RecordLine::Of(line, record.number);
    // Whoever makes other variants of the same plan is another version of these samplers, or the file was edited.
    if (!parts || plan->ComplaintOf(record.number, *parts).empty()) return;
    throw CampaignError(fmt::format("{}: this command makes another variant {} of the plan than the one that began the "
                                    "campaign; begin a new campaign",
                                    File("campaign.json"), record.number));
}

void CampaignFolder::Write(const RunRecord& record, const std::function<void()>& beforeFlush) const {
    WriteFlushed(FileBeside("runs", record.number), RunFile(record.number), JsonOf(record) + "\n", beforeFlush);
}

void CampaignFolder::RemoveLeftovers(
    const std::function<void(std::uint64_t, const std::function<void()>&)>& withRight) const {
    for (const std::string below : {"runs", "traces", kWork})
        ForEachName(File(below), [&](const std::string& name) {
            std::uint64_t number = 0;
            const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
            if (error != std::errc()) return;
            if (below != kWork && !std::string_view(name).ends_with(kBeside)) return;
            withRight(number, [&] {
                std::error_code ignored;
                fs::remove_all(File(below) + "/" + name, ignored);
            });
        });
}

Claims::Claims(const CampaignFolder& folder)
    : descriptor(open(folder.File("claims").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    if (descriptor < 0) throw FileError(folder.File("claims"), errno);
}

Claims::~Claims() { close(descriptor); }

bool Claims::Take(std::uint64_t number) {
    struct flock lock = LockOf(number, F_WRLCK);
    if (fcntl(descriptor, F_OFD_SETLK, &lock) == 0) return true;
    if (errno == EAGAIN || errno == EACCES) return false;
    throw FileError("claims", errno);
}

void Claims::Await(std::uint64_t number) {
    struct flock lock = LockOf(number, F_WRLCK);
    while (fcntl(descriptor, F_OFD_SETLKW, &lock) != 0)
        if (errno != EINTR) throw FileError("claims", errno);
}

void Claims::Release(std::uint64_t number) {
    struct flock lock = LockOf(number, F_UNLCK);
    fcntl(descriptor, F_OFD_SETLK, &lock);
}

} // namespace TavrelVariation
