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

[[noreturn]] void Fail(const std::string& file, int error) {
    throw CampaignFileError(fmt::format("{}: {}", file, std::strerror(error)));
}

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

// At most `most` bytes of a file; none if it cannot be read, and errno says why.
std::optional<std::string> BytesOf(const std::string& path, std::size_t most) {
    const OpenFile file(path, O_RDONLY | O_NONBLOCK);
    if (file.Get() < 0) return std::nullopt;
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
std::optional<std::string> BytesOfRun(const std::string& file, const CampaignFolder::Tell& tell) {
    auto bytes = BytesOf(file, kMostOfRecord);
    if (!bytes && errno != ENOENT && tell)
        tell(fmt::format("{}: {}, so its run counts as missing", file,
                         Commons::WordsOf({errno, std::generic_category()})));
    return bytes;
}

void TellNoRecord(const std::string& file, std::uint64_t number, const CampaignFolder::Tell& tell) {
    if (tell) tell(fmt::format("{}: it is no whole record of run {}, which counts as missing", file, number));
}

// A folder that vanishes, or was never made, holds nothing.
template <typename Take>
void ForEachName(const std::string& folder, const Take& take) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        take(entry->path().filename().string());
    if (error && error != std::errc::no_such_file_or_directory) Fail(folder, error.value());
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
        if (error) Fail(File(name), error.value());
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

std::map<std::uint64_t, Verdict> CampaignFolder::Verdicts(const std::function<bool(std::uint64_t)>& isWanted,
                                                          const Tell& tell) const {
    std::map<std::uint64_t, Verdict> verdicts;
    for (const std::uint64_t number : NumbersOfRuns())
        if (const auto verdict = isWanted(number) ? VerdictOf(number, tell) : std::nullopt)
            verdicts.emplace_hint(verdicts.end(), number, *verdict);
    return verdicts;
}

std::optional<Verdict> CampaignFolder::VerdictOf(std::uint64_t number, const Tell& tell) const {
    const std::string file = RunFile(number);
    const auto bytes = BytesOfRun(file, tell);
    if (!bytes) return std::nullopt;
    if (const auto verdict = VerdictInside(*bytes, number)) return verdict;
    // Another hand may have written it.
    const auto record = RecordOf(*bytes);
    if (record && record->number == number) return record->verdict;
    TellNoRecord(file, number, tell);
    return std::nullopt;
}

std::vector<RunRecord> CampaignFolder::Records(const std::vector<std::uint64_t>& wanted, std::string& lines,
                                               const Tell& tell) const {
    std::vector<RunRecord> records;
    for (const std::uint64_t number : NumbersOfRuns()) {
        if (!std::binary_search(wanted.begin(), wanted.end(), number)) continue;
        const std::string file = RunFile(number);
        const auto bytes = BytesOfRun(file, tell);
        if (!bytes) continue;
        auto record = RecordOf(*bytes);
        if (!record || record->number != number) {
            TellNoRecord(file, number, tell);
            continue;
        }
        // A record that was written here is a line already.
        lines += bytes->find('\n') + 1 == bytes->size() ? *bytes : JsonOf(*record) + "\n";
        records.push_back(*std::move(record));
    }
    return records;
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
    if (descriptor < 0) Fail(folder.File("claims"), errno);
}

Claims::~Claims() { close(descriptor); }

bool Claims::Take(std::uint64_t number) {
    struct flock lock = LockOf(number, F_WRLCK);
    if (fcntl(descriptor, F_OFD_SETLK, &lock) == 0) return true;
    if (errno == EAGAIN || errno == EACCES) return false;
    Fail("claims", errno);
}

void Claims::Await(std::uint64_t number) {
    struct flock lock = LockOf(number, F_WRLCK);
    while (fcntl(descriptor, F_OFD_SETLKW, &lock) != 0)
        if (errno != EINTR) Fail("claims", errno);
}

void Claims::Release(std::uint64_t number) {
    struct flock lock = LockOf(number, F_UNLCK);
    fcntl(descriptor, F_OFD_SETLK, &lock);
}

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
    Fail(file, failure);
}

} // namespace TavrelVariation
