// The work on a campaign: which process runs which number, and what becomes of a run that ends its process.
//
// This process only waits. It has one child, the manager, which can be ended at any moment, and then takes all others
// along. The manager's children, the workers, go from number to number; each run is in a process of its own below
// them, so that nothing of it is left for the next.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <deque>
#include <fstream>
#include <map>
#include <new>
#include <optional>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <TavrelScenarioTemplateDb/Failures.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <processes/ChildProcess.h>
#include <variation/Campaign.h>
#include <variation/RunAlone.h>

#include "CampaignFolder.h"

namespace TavrelVariation {

namespace {

using Clock = std::chrono::steady_clock; // another clock may be set while a campaign runs
using Json = nlohmann::ordered_json;
using TavrelSimulation::Verdict;

constexpr std::size_t kBatch = 100'000; // numbers that are given to the workers at once
constexpr int kMostLooks = 2'000;       // at a lock of a run that is about to end
constexpr auto kPause = std::chrono::milliseconds(1);
constexpr int kRunDone = 0, kRunBroken = 1, kRunRefused = 2, kRunOutOfMemory = 3; // how the process of one run leaves
constexpr char kKnown = '\n';                                                     // ends a verdict that it tells
constexpr std::size_t kMostFinishing = 8; // runs of one worker that wait for the disk

double SecondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

bool IsWanted(std::optional<Verdict> verdict, Retry retry) {
    if (!verdict || retry == Retry::All) return true;
    if (*verdict == Verdict::Passed || *verdict == Verdict::Skipped) return false;
    return *verdict != Verdict::Failed || retry == Retry::Failed;
}

// What a worker answers for a number.
struct Answer {
    enum class Kind : char { Done = 'd', Busy = 'b', Elsewhere = 'e', FileError = 'f', Refused = 'r' };
    Kind kind = Kind::Done;
    Verdict verdict = Verdict::Error;
    double seconds = 0;
    pid_t worker = 0;
    std::string sentence;

    std::string Text() const {
        return Json::array({static_cast<char>(kind), WordOf(verdict), seconds, worker, sentence})
            .dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    static Answer Of(const std::string& text) {
        const Json parts = Json::parse(text);
        return {static_cast<Kind>(parts[0].get<int>()),
                VerdictOfWord(parts[1].get<std::string>()).value_or(Verdict::Error), parts[2].get<double>(),
                parts[3].get<pid_t>(), parts[4].get<std::string>()};
    }
};

Verdict VerdictOf(const TavrelProcesses::Death& death) {
    switch (death.kind) {
    case TavrelProcesses::DeathKind::OutOfTime:
        return Verdict::Timeout;
    case TavrelProcesses::DeathKind::Exception:
        return Verdict::Error;
    default:
        return Verdict::Killed;
    }
}

std::string MessageOf(const TavrelProcesses::Death& death, double seconds) {
    switch (death.kind) {
    case TavrelProcesses::DeathKind::Assertion:
        return fmt::format("it broke an expectation of the library (assertion {})", death.assertion);
    case TavrelProcesses::DeathKind::OutOfTime:
        return fmt::format("it took longer than {} s", seconds);
    case TavrelProcesses::DeathKind::OutOfMemory:
        return "there is not enough memory for it";
    case TavrelProcesses::DeathKind::NoAnswer:
        return "it ended its process";
    default:
        return death.cause;
    }
}

TavrelProcesses::ChildSettings SettingsOf(const CampaignOptions& options) {
    TavrelProcesses::ChildSettings settings;
    settings.seconds = options.seconds;
    settings.memory = options.memory;
    settings.jobs = options.jobs;
    settings.quiet = true;
    return settings;
}

// What is being thrown, in words, whatever it is. Memory that ran out is thrown on.
std::string WordsOfFailure() {
    try {
        TavrelScenarioTemplateDb::translateFailures([] { throw; });
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        return failure.what();
    } catch (...) {
    }
    return "it failed in a form that nobody announced";
}

// Runs it; what is thrown becomes the record of a run that could not be had.
RunRecord RecordOfRun(const RunVariant& run, const Variant& variant, const std::string& trace) {
    RunRecord record;
    try {
        try {
            record = run(variant, trace);
        } catch (const CampaignError&) {
            throw;
        } catch (...) {
            record.verdict = Verdict::Error;
            record.message = WordsOfFailure();
        }
    } catch (const std::bad_alloc&) {
        record.verdict = Verdict::Killed;
        record.message = "there is not enough memory for it";
    }
    return record;
}

// What the work answers, or why the campaign cannot go on.
template <typename Work>
Answer Answered(const Work& work) {
    Answer answer;
    try {
        return work();
    } catch (const CampaignFileError& error) {
        answer.kind = Answer::Kind::FileError;
        answer.sentence = error.what();
    } catch (const CampaignError& error) {
        answer.kind = Answer::Kind::Refused;
        answer.sentence = error.what();
    }
    return answer;
}

void ThrowIfStopped(const Answer& answer) {
    if (answer.kind == Answer::Kind::FileError) throw CampaignFileError(answer.sentence);
    if (answer.kind == Answer::Kind::Refused) throw CampaignError(answer.sentence);
}

// What differs between two runs of the same variant, a line for each.
class Log {
public:
    explicit Log(const CampaignFolder& folder) {
        char name[256] = "";
        gethostname(name, sizeof name - 1);
        host = name;
        stream.open(folder.File(fmt::format("log/{}-{}.jsonl", host, getpid())), std::ios::app | std::ios::binary);
    }
    void Tell(std::uint64_t number, const Answer& answer, double sinceStart) {
        Json line = {{"number", number},
                     {"verdict", WordOf(answer.verdict)},
                     {"seconds", answer.seconds},
                     {"sinceStart", sinceStart},
                     {"host", host}};
        if (answer.worker != 0) line["worker"] = answer.worker;
        // Whoever asks how fast it goes asks now, and runs may take minutes.
        stream << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n' << std::flush;
    }

private:
    std::string host;
    std::ofstream stream;
};

// The process of one run. It writes the trace and the record.
class RunOfOne {
public:
    RunOfOne(const CampaignFolder& files, const CampaignOptions& campaignOptions, const Plan& campaignPlan,
             const RunVariant& runVariant)
        : folder(files), options(campaignOptions), plan(campaignPlan), run(runVariant) {}

    // Calls `known` when all is written but for the wait for the disk. Throws CampaignFileError.
    void Work(std::uint64_t number, const std::function<void(Verdict)>& known) const {
        Variant variant;
        if (!plan.At(number, variant)) throw CampaignError(fmt::format("the plan has no variant {}", number));
        const std::string trace = options.traces == Traces::None ? "" : folder.FileBeside("traces", number);
        RunRecord record;
        Complete(record, variant, plan);
        folder.HoldPlanned(record);
        try {
            record = RecordOfRun(run, variant, trace);
        } catch (const CampaignError&) {
            if (!trace.empty()) unlink(trace.c_str());
            throw;
        }
        Complete(record, variant, plan);
        KeepTrace(record, trace);
        folder.Write(record, [&] { known(record.verdict); });
    }

private:
    // The trace is in its place before the record says that the run is finished.
    void KeepTrace(const RunRecord& record, const std::string& trace) const {
        const std::string file = folder.TraceFile(record.number);
        const bool keep =
            options.traces == Traces::All || (options.traces == Traces::Failed && record.verdict != Verdict::Passed);
        if (!trace.empty() && keep && access(trace.c_str(), F_OK) == 0) {
            if (rename(trace.c_str(), file.c_str()) == 0) return;
            throw FileError(file, errno);
        }
        if (!trace.empty()) unlink(trace.c_str());
        unlink(file.c_str()); // of a former run of this number
    }

    const CampaignFolder& folder;
    const CampaignOptions& options;
    const Plan& plan;
    const RunVariant& run;
};

// A child that ends with the process that made it. `body` answers with the status to leave with; what it throws must
// not go on in the child's copy of all that called this.
template <typename Body>
pid_t Fork(const Body& body) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0) throw FileError("no process can be made", errno);
    if (child > 0) return child;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kRunBroken);
    try {
        _exit(body());
    } catch (...) {
        _exit(kRunBroken);
    }
}

int Await(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

void WriteAll(int descriptor, const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t count = write(descriptor, text.data() + at, text.size() - at);
        if (count < 0 && errno != EINTR) return;
        if (count > 0) at += static_cast<std::size_t>(count);
    }
}

// To its end, or to the first `last`.
std::string ReadAll(int descriptor, char last = '\0') {
    std::string text;
    char part[512];
    for (ssize_t count = 0; (count = read(descriptor, part, sizeof part)) != 0;) {
        if (count < 0 && errno != EINTR) break;
        if (count > 0) text.append(part, static_cast<std::size_t>(count));
        if (last != '\0' && !text.empty() && text.back() == last) break;
    }
    return text;
}

// Does the work of a child: answers with the status that it leaves with, and tells why it failed.
template <typename Work, typename Tell>
int StatusOf(const Work& work, const Tell& tell) {
    try {
        work();
        return kRunDone;
    } catch (const CampaignFileError& error) {
        tell(error.what());
    } catch (const CampaignError& error) {
        tell(error.what());
        return kRunRefused;
    } catch (const std::bad_alloc& error) {
        tell(error.what());
        return kRunOutOfMemory;
    } catch (...) {
        tell(WordsOfFailure());
    }
    return kRunBroken;
}

// Two ends of a pipe that no other program inherits.
struct Pipe {
    int ends[2] = {-1, -1};

    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) throw FileError("no pipe can be made", errno);
    }
    ~Pipe() {
        CloseRead();
        CloseWrite();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseRead() { CloseEnd(0); }
    void CloseWrite() { CloseEnd(1); }

private:
    void CloseEnd(int which) {
        if (ends[which] >= 0) close(std::exchange(ends[which], -1));
    }
};

// The manager.
class Work {
public:
    Work(const CampaignFolder& files, const Plan& campaignPlan, const CampaignOptions& campaignOptions,
         const RunVariant& runVariant, const std::map<std::uint64_t, FileState>& filesAtFirst,
         const CampaignProgress& onProgress, int failureEnd)
        : folder(files), plan(campaignPlan), options(campaignOptions), one(folder, options, plan, runVariant),
          atFirst(filesAtFirst), progress(onProgress), failure(failureEnd), log(folder) {}

    // Throws CampaignFileError.
    void Through(std::vector<std::uint64_t> numbers) {
        all = numbers.size();
        Tell();
        while (!numbers.empty()) {
            std::vector<std::uint64_t> busy;
            for (std::size_t from = 0; from < numbers.size(); from += kBatch) {
                const auto first = numbers.begin() + static_cast<std::ptrdiff_t>(from);
                const auto last =
                    numbers.begin() + static_cast<std::ptrdiff_t>(std::min(numbers.size(), from + kBatch));
                RunBatch({first, last}, busy);
            }
            // What others are at is theirs, unless they fail to bring it to its end.
            Claims claims(folder);
            for (const std::uint64_t number : busy) {
                claims.Await(number);
                claims.Release(number);
            }
            numbers = std::move(busy);
        }
    }

private:
    void RunBatch(const std::vector<std::uint64_t>& numbers, std::vector<std::uint64_t>& busy) {
        TavrelProcesses::ForEachInChildren(
            numbers.size(), SettingsOf(options), [&](std::size_t item) { return WorkOn(numbers[item]).Text(); },
            [&](std::size_t item, const std::string& text) {
                const Answer answer = Answer::Of(text);
                ThrowIfStopped(answer);
                if (answer.kind == Answer::Kind::Busy) return busy.push_back(numbers[item]);
                if (answer.kind == Answer::Kind::Done) log.Tell(numbers[item], answer, SecondsSince(start));
                ++done;
                Tell();
            },
            [&](std::size_t item, const TavrelProcesses::Death& death) { Bury(numbers[item], death, busy); });
    }

    // In a worker.
    Answer WorkOn(std::uint64_t number) {
        Answer answer = Answered([&] {
            Answer shared;
            Claims claims(folder);
            if (!claims.Take(number)) {
                shared.kind = Answer::Kind::Busy;
                return shared;
            }
            // Somebody else may have finished it since this command looked. That is what this one was asked for, too.
            if (const auto finished = folder.RunOf(number); finished && finished->file != FileAtFirst(number)) {
                shared.kind = Answer::Kind::Elsewhere;
                shared.verdict = finished->verdict;
                return shared;
            }
            return RunInItsProcess(number);
        });
        answer.worker = getpid();
        return answer;
    }

    FileState FileAtFirst(std::uint64_t number) const {
        const auto found = atFirst.find(number);
        return found == atFirst.end() ? FileState() : found->second;
    }

    // While the process of one run waits for the disk, the worker goes on with the next. It has told its verdict then,
    // and has nothing to lose by the worker's end; its lock tells others that the number is in work.
    Answer RunInItsProcess(std::uint64_t number) {
        const Clock::time_point begin = Clock::now();
        Pipe pipe;
        const pid_t child = Fork([&] {
            int toTell = pipe.ends[1];
            return StatusOf(
                [&] {
                    one.Work(number, [&](Verdict verdict) {
                        prctl(PR_SET_PDEATHSIG, 0);
                        WriteAll(toTell, std::string(WordOf(verdict)) + kKnown);
                        toTell = failure;
                    });
                },
                [&](const std::string& sentence) { WriteAll(toTell, sentence); });
        });
        pipe.CloseWrite();
        Answer answer;
        answer.sentence = ReadAll(pipe.ends[0], kKnown);
        answer.seconds = SecondsSince(begin);
        if (answer.sentence.ends_with(kKnown)) {
            answer.sentence.pop_back();
            answer.verdict = VerdictOfWord(answer.sentence).value_or(Verdict::Error);
            answer.sentence.clear();
            finishing.push_back(child);
            if (finishing.size() > kMostFinishing) {
                Await(finishing.front());
                finishing.pop_front();
            }
            return answer;
        }
        const int status = Await(child);
        // The worker dies as its run died, which is how the manager learns of such things.
        if (WIFSIGNALED(status)) {
            signal(WTERMSIG(status), SIG_DFL);
            raise(WTERMSIG(status));
        }
        const int left = WEXITSTATUS(status);
        if (answer.sentence.empty() || (left != kRunBroken && left != kRunRefused && left != kRunOutOfMemory))
            _exit(left); // the run ended the process by itself
        if (left == kRunOutOfMemory) throw std::bad_alloc();
        answer.kind = left == kRunRefused ? Answer::Kind::Refused : Answer::Kind::FileError;
        return answer;
    }

    // A run that ended its worker.
    void Bury(std::uint64_t number, const TavrelProcesses::Death& death, std::vector<std::uint64_t>& busy) {
        // The run may take a moment to follow its worker, and holds the lock until then.
        Claims claims(folder);
        bool taken = claims.Take(number);
        for (int look = 0; !taken && look < kMostLooks; ++look) {
            std::this_thread::sleep_for(kPause);
            taken = claims.Take(number);
        }
        if (!taken) return busy.push_back(number);
        Variant variant;
        RunRecord record;
        if (!plan.At(number, variant)) return;
        Complete(record, variant, plan);
        record.verdict = VerdictOf(death);
        record.message = MessageOf(death, options.seconds);
        folder.KeepOutput(number);
        folder.RemoveLeftovers([&](std::uint64_t left, const auto& remove) {
            if (left == number) remove();
        });
        unlink(folder.TraceFile(number).c_str());
        folder.Write(record);
        Answer answer;
        answer.verdict = record.verdict;
        if (death.kind == TavrelProcesses::DeathKind::OutOfTime) answer.seconds = options.seconds;
        log.Tell(number, answer, SecondsSince(start));
        ++done;
        Tell();
    }

    void Tell() {
        if (progress) progress(done, all);
    }

    const CampaignFolder& folder;
    const Plan& plan;
    const CampaignOptions& options;
    const RunOfOne one;
    const std::map<std::uint64_t, FileState>& atFirst; // of the numbers that had a run when this command looked
    const CampaignProgress& progress;
    const int failure; // where a sentence goes that comes too late for an answer
    std::deque<pid_t> finishing;
    const Clock::time_point start = Clock::now();
    Log log;
    std::uint64_t done = 0, all = 0;
};

// While it lives, SIGINT and SIGTERM wait.
class SignalsWait {
public:
    SignalsWait() {
        sigset_t asked;
        sigemptyset(&asked);
        sigaddset(&asked, SIGINT);
        sigaddset(&asked, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &asked, &before);
    }
    ~SignalsWait() { End(); }
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    // In a child, which has no end of this object.
    void End() const { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before;
};

// While it lives, SIGINT and SIGTERM end the manager, and this process goes on.
class EndsTheManager {
public:
    explicit EndsTheManager(pid_t child) {
        manager = child;
        interrupted = 0;
        struct sigaction action;
        std::memset(&action, 0, sizeof action);
        action.sa_handler = [](int) {
            interrupted = 1;
            kill(manager, SIGKILL);
        };
        sigaction(SIGINT, &action, &formerInterrupt);
        sigaction(SIGTERM, &action, &formerTerminate);
    }
    ~EndsTheManager() {
        sigaction(SIGINT, &formerInterrupt, nullptr);
        sigaction(SIGTERM, &formerTerminate, nullptr);
    }
    EndsTheManager(const EndsTheManager&) = delete;
    EndsTheManager& operator=(const EndsTheManager&) = delete;

    bool WasAsked() const { return interrupted != 0; }

private:
    static inline volatile pid_t manager = 0;
    static inline volatile std::sig_atomic_t interrupted = 0;
    struct sigaction formerInterrupt, formerTerminate;
};

} // namespace

RunRecord RunAlone(const Plan& plan, const Variant& variant, const CampaignOptions& options, const RunVariant& run) {
    RunRecord record;
    TavrelProcesses::ForEachInChildren(
        1, SettingsOf(options),
        [&](std::size_t) {
            return Answered([&] {
                       Answer answer;
                       answer.sentence = JsonOf(RecordOfRun(run, variant, ""));
                       return answer;
                   })
                .Text();
        },
        [&](std::size_t, const std::string& text) {
            const Answer answer = Answer::Of(text);
            ThrowIfStopped(answer);
            record = RecordOf(answer.sentence).value_or(RunRecord());
        },
        [&](std::size_t, const TavrelProcesses::Death& death) {
            record.verdict = VerdictOf(death);
            record.message = MessageOf(death, options.seconds);
        });
    Complete(record, variant, plan);
    return record;
}

bool Campaign::Run(const Plan& plan, const CampaignOptions& options, const RunVariant& run,
                   const CampaignProgress& progress, CampaignCounts* counts) const {
    const CampaignFolder files(folder, planned.get());
    files.MakeFolders();
    std::vector<std::uint64_t> wanted;
    std::map<std::uint64_t, FileState> atFirst;
    {
        const std::map<std::uint64_t, Verdict> verdicts = VerdictsOf(options.shard, options.tell);
        for (const std::uint64_t number : numbers) {
            if (!options.shard.Has(number)) continue;
            const auto found = verdicts.find(number);
            const bool isThere = found != verdicts.end();
            if (!IsWanted(isThere ? std::optional(found->second) : std::nullopt, options.retry)) continue;
            wanted.push_back(number);
            if (const auto finished = isThere ? files.RunOf(number) : std::nullopt)
                atFirst.emplace_hint(atFirst.end(), number, finished->file);
        }
        // Most calls of an engine that repeats find nothing to do, and look at the records once.
        if (wanted.empty() && counts) *counts = CountOf(verdicts, options.shard);
    }
    Claims claims(files);
    const auto removeLeftovers = [&] {
        files.RemoveLeftovers([&](std::uint64_t number, const auto& remove) {
            if (!options.shard.Has(number) || !claims.Take(number)) return;
            remove();
            claims.Release(number);
        });
    };
    removeLeftovers();
    if (wanted.empty()) return true;

    Pipe failure;
    std::optional<EndsTheManager> handler;
    pid_t manager = 0;
    {
        // Nothing may come between the birth of the manager and the handler that knows it.
        const SignalsWait wait;
        manager = Fork([&] {
            // Terminals and engines ask the whole group. This process's parent decides.
            signal(SIGINT, SIG_IGN);
            signal(SIGTERM, SIG_IGN);
            wait.End();
            return StatusOf(
                [&] { Work(files, plan, options, run, atFirst, progress, failure.ends[1]).Through(wanted); },
                [&](const std::string& sentence) { WriteAll(failure.ends[1], sentence); });
        });
        handler.emplace(manager);
    }
    failure.CloseWrite();
    const std::string sentence = ReadAll(failure.ends[0]);
    const int status = Await(manager);
    if (handler->WasAsked()) {
        removeLeftovers();
        if (counts) *counts = Count(options.shard);
        return false;
    }
    if (WIFSIGNALED(status))
        throw CampaignFileError(
            fmt::format("the work was ended ({})", TavrelProcesses::TextOfSignal(WTERMSIG(status))));
    if (WEXITSTATUS(status) == kRunRefused) {
        removeLeftovers();
        throw CampaignError(fmt::format("{}: {}", folder, sentence));
    }
    if (WEXITSTATUS(status) != kRunDone || !sentence.empty()) throw CampaignFileError(sentence);
    if (counts) *counts = Count(options.shard);
    return true;
}

} // namespace TavrelVariation
