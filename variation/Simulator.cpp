#include <variation/Simulator.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <Commons/WholeFile.h>
#include <fmt/format.h>
#include <processes/ChildProcess.h>
#include <simulation/Sha256.h>
#include <variation/CampaignError.h>
#include <variation/Refused.h>

#include "CampaignFolder.h"

namespace TavrelVariation {

namespace {

namespace fs = std::filesystem;
using TavrelSimulation::Verdict;

constexpr const char* kPlace = "command";
constexpr int kMostLooks = 5000;    // for processes to end
constexpr useconds_t kPause = 1000; // microseconds between two looks
constexpr int kMemoryPause = 20;    // milliseconds between two looks at the memory of a program

std::vector<std::string> WordsOf(const std::string& command) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    char quote = '\0';
    for (std::size_t at = 0; at < command.size(); ++at) {
        const char letter = command[at];
        if (letter == '\\' && quote != '\'' && at + 1 < command.size()) {
            word += command[++at];
            inWord = true;
        } else if (quote != '\0') {
            if (letter == quote)
                quote = '\0';
            else
                word += letter;
        } else if (letter == '"' || letter == '\'') {
            quote = letter;
            inWord = true;
        } else if (letter == ' ' || letter == '\t' || letter == '\n') {
            if (inWord) words.push_back(std::exchange(word, {}));
            inWord = false;
        } else {
            word += letter;
            inWord = true;
        }
    }
    if (quote != '\0') throw Refused(kPlace, fmt::format("a quote {} is not closed", quote));
    if (inWord) words.push_back(word);
    if (words.empty()) throw Refused(kPlace, "it names no program");
    return words;
}

// Fills in what stands in braces. Throws Refused for a name that is not known.
template <typename ValueOf>
std::string Filled(const std::string& word, const ValueOf& valueOf) {
    std::string filled;
    for (std::size_t at = 0; at < word.size(); ++at) {
        const std::string_view pair = std::string_view(word).substr(at, 2);
        if (pair == "{{" || pair == "}}") {
            filled += word[at++];
        } else if (word[at] == '{') {
            const std::size_t end = word.find('}', at);
            if (end == std::string::npos) throw Refused(kPlace, "a brace is not closed in " + word);
            filled += valueOf(word.substr(at + 1, end - at - 1));
            at = end;
        } else {
            filled += word[at];
        }
    }
    return filled;
}

bool IsProgram(const std::string& file) {
    std::error_code error;
    return access(file.c_str(), X_OK) == 0 && fs::is_regular_file(file, error);
}

// The file of a program, looked for as a shell does; empty if there is none.
std::string FileOfProgram(const std::string& program) {
    if (program.find('/') != std::string::npos) return IsProgram(program) ? program : "";
    const char* path = std::getenv("PATH");
    const std::string folders = path ? path : "/usr/bin:/bin";
    for (std::size_t begin = 0; begin <= folders.size();) {
        const std::size_t end = std::min(folders.find(':', begin), folders.size());
        const std::string folder = folders.substr(begin, end - begin);
        std::string file = (folder.empty() ? "." : folder) + "/" + program;
        if (IsProgram(file)) return file;
        begin = end + 1;
    }
    return "";
}

// The children of a process, whichever of its threads made them.
std::vector<pid_t> ChildrenOf(const std::string& process) {
    std::vector<pid_t> children;
    std::error_code error;
    for (fs::directory_iterator thread("/proc/" + process + "/task", error), end; !error && thread != end;
         thread.increment(error)) {
        std::ifstream list(thread->path() / "children");
        for (pid_t child = 0; list >> child;) children.push_back(child);
    }
    return children;
}

// Resident memory of all that descends from a process, in bytes. Pages that several share count for each of them.
std::size_t MemoryBelow(const std::string& process) {
    static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::size_t bytes = 0;
    for (const pid_t child : ChildrenOf(process)) {
        const std::string name = std::to_string(child);
        std::size_t total = 0, resident = 0;
        std::ifstream("/proc/" + name + "/statm") >> total >> resident;
        bytes += resident * page + MemoryBelow(name);
    }
    return bytes;
}

// Ends the program, what it started, and what that started: those of its group at once, and whoever left the group once
// its parent is gone, since this process then is the parent.
void EndAll(pid_t program) {
    kill(-program, SIGKILL);
    kill(program, SIGKILL);
    // What the system cannot end, as in a wait for a dead disk, is not waited for.
    for (int look = 0; look < kMostLooks; ++look) {
        for (const pid_t child : ChildrenOf("self")) {
            kill(-child, SIGKILL);
            kill(child, SIGKILL);
        }
        const pid_t gone = waitpid(-1, nullptr, WNOHANG);
        if (gone < 0 && errno == ECHILD) return;
        if (gone == 0) usleep(kPause);
    }
}

// How a program came to its end.
struct Ending {
    int status = 0;          // as waitpid tells it
    int notStarted = 0;      // the error, where there was no program to run
    bool overMemory = false; // it was ended for it
};

[[noreturn]] void BecomeProgram(const std::vector<std::string>& words, const std::string& output, int complaint) {
    const std::string program = FileOfProgram(words.front());
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int number : {SIGINT, SIGTERM, SIGPIPE, SIGCHLD}) signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    // Many programs reserve far more addresses than they use; what this one uses is watched instead.
    rlimit addresses;
    if (getrlimit(RLIMIT_AS, &addresses) == 0) {
        addresses.rlim_cur = addresses.rlim_max;
        setrlimit(RLIMIT_AS, &addresses);
    }
    const int in = open("/dev/null", O_RDONLY);
    int out = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (out < 0) out = open("/dev/null", O_WRONLY);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(out, STDERR_FILENO);
    // The lock on the number is one of the files of the run. None of them is the program's.
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    // What the system cannot start is not handed to a shell, which would take it for a script.
    execv(program.c_str(), arguments.data());
    const int failure = program.empty() ? ENOENT : errno;
    if (write(complaint, &failure, sizeof failure) < 0) _exit(126);
    _exit(127);
}

// Between a run and its program stands this process. It outlives the run just long enough to end the program and all
// that it started, however the run itself comes to its end. The run's lock on its number ends with this process, so
// nobody begins anew while something of the old is at work.
[[noreturn]] void Supervise(const std::vector<std::string>& words, const std::string& output, std::size_t memory,
                            int fromRun, int toRun) {
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    setsid(); // no key of a terminal ends it
    for (const int number : {SIGINT, SIGTERM}) signal(number, SIG_IGN);
    signal(SIGCHLD, SIG_DFL);
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGCHLD);
    sigprocmask(SIG_BLOCK, &ends, nullptr);
    const int told = signalfd(-1, &ends, SFD_CLOEXEC);
    int complaint[2];
    if (told < 0 || pipe2(complaint, O_CLOEXEC | O_NONBLOCK) != 0) _exit(1);
    const pid_t program = fork();
    if (program == 0) BecomeProgram(words, output, complaint[1]);
    if (program < 0) _exit(1);
    setpgid(program, program);
    Ending ending;
    bool ended = false;
    while (!ended && !ending.overMemory) {
        pollfd waited[] = {{fromRun, 0, 0}, {told, POLLIN, 0}};
        if (poll(waited, 2, memory > 0 ? kMemoryPause : -1) < 0 && errno != EINTR) break;
        if ((waited[0].revents & (POLLHUP | POLLERR)) != 0) break; // the run is gone
        signalfd_siginfo information;
        if ((waited[1].revents & POLLIN) != 0 && read(told, &information, sizeof information) < 0) break;
        // Others than the program may have been left to this process.
        int status = 0;
        rusage used;
        for (pid_t gone = 0; !ended && (gone = wait4(-1, &status, WNOHANG, &used)) > 0;) {
            // What grew and ended between two looks.
            if (memory > 0 && static_cast<std::size_t>(used.ru_maxrss) > memory / 1024) ending.overMemory = true;
            if (gone != program) continue;
            ending.status = status;
            ended = true;
        }
        if (!ended && memory > 0 && MemoryBelow("self") > memory) ending.overMemory = true;
    }
    EndAll(program);
    if (read(complaint[0], &ending.notStarted, sizeof ending.notStarted) < 0) ending.notStarted = 0;
    if ((ended || ending.overMemory) && write(toRun, &ending, sizeof ending) < 0) _exit(1);
    _exit(0);
}

// Runs the program to its end.
Ending RunProgram(const std::vector<std::string>& words, const std::string& output, std::size_t memory) {
    int toSupervisor[2], fromSupervisor[2];
    if (pipe2(toSupervisor, O_CLOEXEC) != 0) throw FileError("no pipe can be made", errno);
    if (pipe2(fromSupervisor, O_CLOEXEC) != 0) {
        const int failure = errno;
        close(toSupervisor[0]);
        close(toSupervisor[1]);
        throw FileError("no pipe can be made", failure);
    }
    const pid_t supervisor = fork();
    if (supervisor == 0) {
        close(toSupervisor[1]);
        close(fromSupervisor[0]);
        Supervise(words, output, memory, toSupervisor[0], fromSupervisor[1]);
    }
    const int failure = errno;
    close(toSupervisor[0]);
    close(fromSupervisor[1]);
    Ending ending;
    ssize_t count = -1;
    if (supervisor > 0) {
        while ((count = read(fromSupervisor[0], &ending, sizeof ending)) < 0 && errno == EINTR) {
        }
        while (waitpid(supervisor, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    close(toSupervisor[1]);
    close(fromSupervisor[0]);
    if (supervisor < 0) throw FileError("no process can be made", failure);
    if (count != static_cast<ssize_t>(sizeof ending)) throw CampaignFileError("the simulator could not be watched");
    return ending;
}

// What a trace says; a sentence for one that cannot be read.
struct Judged {
    std::vector<TavrelSimulation::Outcome> outcomes;
    std::size_t events = 0;
    std::string fault;
};

Judged JudgeTrace(const std::string& file, const std::vector<TavrelSimulation::Criterion>& criteria) {
    Judged judged;
    if (std::error_code unknown; !fs::exists(file, unknown)) {
        judged.fault = "it left no trace";
        return judged;
    }
    // A trace of any size can be judged, since it is read row by row.
    bool isTooLarge = false;
    if (const std::string reason = Commons::ReasonNotToOpen(file, &isTooLarge); !reason.empty() && !isTooLarge) {
        judged.fault = "its trace: " + reason;
        return judged;
    }
    std::ifstream stream(file, std::ios::binary);
    std::unique_ptr<TavrelSimulation::Judge> judge;
    std::string line;
    try {
        for (std::size_t row = 1; std::getline(stream, line); ++row) {
            if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
            std::optional<TavrelSimulation::Event> event;
            try {
                event = TavrelSimulation::EventOf(line);
            } catch (const TavrelSimulation::TraceError& error) {
                judged.fault = fmt::format("row {} of its trace: {}", row, error.what());
                return judged;
            }
            ++judged.events;
            if (!event) continue;
            if (!judge) {
                const auto* start = std::get_if<TavrelSimulation::RunStart>(&event->what);
                judge = std::make_unique<TavrelSimulation::Judge>(criteria,
                                                                  start && start->names ? &*start->names : nullptr);
            }
            judge->Hear(*event);
        }
        // Criteria would hold over nothing.
        if (judge)
            judged.outcomes = judge->Outcomes();
        else
            judged.fault = "its trace: there is no event of a run in it";
    } catch (const TavrelSimulation::CriterionError& error) {
        judged.fault = error.what();
    }
    return judged;
}

} // namespace

Simulator::Simulator(const std::string& command, std::size_t mostMemory) : words(WordsOf(command)), memory(mostMemory) {
    ArgumentsFor({}); // the words in braces
    if (FileOfProgram(words.front()).empty()) throw Refused(kPlace, "there is no program " + words.front());
}

std::vector<std::string> Simulator::ArgumentsFor(const Job& job) const {
    std::vector<std::string> arguments;
    for (const std::string& word : words)
        arguments.push_back(Filled(word, [&](const std::string& name) -> std::string {
            if (name == "scenario") return job.scenario;
            if (name == "trace") return job.trace;
            if (name == "number") return std::to_string(job.number);
            if (name == "folder") return job.folder;
            if (name == "seed") return job.seed ? std::to_string(*job.seed) : "";
            throw Refused(kPlace, "{" + name + "} is none of {scenario}, {trace}, {number}, {seed} and {folder}");
        }));
    return arguments;
}

RunRecord Simulator::Run(const Job& job, const std::vector<TavrelSimulation::Criterion>& criteria,
                         const std::string& output) const {
    const Ending ending = RunProgram(ArgumentsFor(job), output, memory);
    RunRecord record;
    const Judged judged = JudgeTrace(job.trace, criteria);
    record.events = judged.events;
    record.trace = TavrelSimulation::Sha256OfFile(job.trace);
    if (ending.notStarted != 0) {
        record.verdict = Verdict::Error;
        record.message = fmt::format("{} cannot be started: {}", words.front(),
                                     Commons::WordsOf({ending.notStarted, std::system_category()}));
        return record;
    }
    if (ending.overMemory) {
        record.verdict = Verdict::Killed;
        record.message = fmt::format("the simulator took more than {} MB of memory", memory >> 20);
        return record;
    }
    if (WIFSIGNALED(ending.status)) {
        record.verdict = Verdict::Killed;
        record.message = fmt::format("the simulator was ended by a signal ({})",
                                     TavrelProcesses::TextOfSignal(WTERMSIG(ending.status)));
        return record;
    }
    const int left = WEXITSTATUS(ending.status);
    if (criteria.empty()) {
        record.verdict = left == 0 ? Verdict::Passed : Verdict::Failed;
        if (left != 0) record.message = fmt::format("the simulator ended with status {}", left);
        return record;
    }
    if (left != 0 || !judged.fault.empty()) {
        record.verdict = Verdict::Error;
        record.message = left != 0 ? fmt::format("the simulator ended with status {}", left) : judged.fault;
        return record;
    }
    record.criteria = judged.outcomes;
    record.verdict = TavrelSimulation::VerdictOf(record.criteria);
    return record;
}

namespace {

// A folder that goes away with this object.
class WorkFolder {
public:
    explicit WorkFolder(std::string folder) : path(std::move(folder)) {
        std::error_code error;
        fs::remove_all(path, error);
        fs::create_directories(path, error);
        if (error) throw FileError(path, error.value());
    }
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::string path;
};

} // namespace

RunVariant RunWith(const Simulator& simulator, VariantRunner& runner, const Plan& plan,
                   const std::vector<TavrelSimulation::Criterion>& criteria, const std::string& campaignFolder) {
    return
        [&simulator, &runner, &plan, &criteria, campaignFolder](const Variant& variant, const std::string& traceFile) {
            const CampaignFolder files(campaignFolder);
            // Not every simulator works in the folder of the command. A trace may name its files, so they are called
            // the same in every run of the number.
            const WorkFolder folder(fs::absolute(files.WorkFolder(variant.number)).string());
            Simulator::Job job;
            job.number = variant.number;
            job.seed = variant.seed ? static_cast<std::uint32_t>(*variant.seed) : runner.OwnSeed();
            job.folder = folder.path;
            job.scenario = fmt::format("{}/{:06}.sce", folder.path, variant.number);
            job.trace = folder.path + "/trace.jsonl";
            runner.Save(plan.Assignments(variant), job.scenario);
            RunRecord record = simulator.Run(job, criteria, files.OutputFile(variant.number));
            runner.HoldFiles(); // it may have read them
            std::error_code error;
            if (record.verdict != Verdict::Passed) files.KeepOutput(variant.number);
            if (traceFile.empty() || !fs::is_regular_file(job.trace, error)) return record;
            fs::rename(job.trace, traceFile, error);
            if (error) throw FileError(traceFile, error.value());
            return record;
        };
}

} // namespace TavrelVariation
