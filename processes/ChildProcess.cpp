#include <processes/ChildProcess.h>

#include <fmt/format.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace TavrelProcesses {

namespace {

// The checkers of memory reserve far more address space than they use.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kLimitsMemory = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kLimitsMemory = false;
#else
constexpr bool kLimitsMemory = true;
#endif
#else
constexpr bool kLimitsMemory = true;
#endif

constexpr int kExitRecycled = 99;
constexpr int kExitOrphaned = 98;
constexpr const char* kAssertionMark = "Assertion failed: ";
constexpr auto kGathering = std::chrono::milliseconds(2);
constexpr std::size_t kPieceSize = std::size_t(64) * 1024;

using Clock = std::chrono::steady_clock;

ProcessFailure SystemFailure(const char* what) {
    return ProcessFailure(fmt::format("cannot {}: {}", what, std::strerror(errno)));
}

void WriteAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) _exit(kExitOrphaned); // nobody listens any more
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
}

// Resident memory of this process, in bytes.
std::size_t ResidentSize() {
    std::size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

struct AssertionCause {
    const char* assertion;
    const char* cause;
};

// The expectations of the library that a text can break, in words.
// clang-format off
constexpr AssertionCause kAssertionCauses[] = {
    {"ScenarioItem:122", "a block is of a kind that has no items"},
    {"token:275",        "the root model lacks the folder of definitions that the text needs"},
    {"token:221",        "a block stands where only parameters, calls, rules and tasks may stand"},
    {"token:222",        "a block stands where only parameters, calls, rules and tasks may stand"},
    {"function:288",     "the definition of IS_VHL_AT_POSITION has no parameter MAP_RADIUS"},
    {"action:74",        "an action stands outside any rule"},
    {"Condition:283",    "a condition stands outside any rule"},
    {"Parameter:120",    "a parameter stands outside any call"},
    {"Parameter:452",    "a parameter of KIND \"FUNCTION\" has no function"},
    {"Parameter:885",    "a parameter of KIND \"ENUM\" names no entry of its enumeration"},
    {"Parameter:1176",   "the enumeration of a parameter is not in the root model"},
    {"Parameter:1396",   "the enumeration of a parameter is not in the root model"},
};
// clang-format on

std::string AssertionSentence(const std::string& assertion) {
    std::string sentence = fmt::format("it broke an expectation of the library (assertion {})", assertion);
    for (const AssertionCause& row : kAssertionCauses)
        if (assertion == row.assertion) sentence += fmt::format(": {}", row.cause);
    return sentence;
}

// Reads the line of DieOfAssertion back; that of the library itself has nothing behind the assertion.
Death DeathOf(const std::string& line) {
    std::istringstream parts(line);
    std::string assertion, row;
    Death death;
    std::getline(parts, assertion, '\t');
    std::getline(parts, row, '\t');
    std::getline(parts, death.file, '\t');
    std::getline(parts, death.script, '\t');
    std::getline(parts, death.place, '\t');
    death.cause = AssertionSentence(assertion);
    if (!row.empty()) death.row = static_cast<unsigned>(std::strtoul(row.c_str(), nullptr, 10));
    return death;
}

// Passes on what a child writes to its standard error stream, and keeps the assertion back that it dies of.
class ErrorRelay {
public:
    void Take(const char* bytes, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            line += bytes[i];
            if (bytes[i] == '\n' || bytes[i] == '\r') EndLine();
        }
        // A line in progress, such as that of a progress display, is shown as far as it is known not to be an
        // assertion.
        const std::size_t common = std::min(line.size(), std::strlen(kAssertionMark));
        if (line.compare(0, common, kAssertionMark, common) != 0) Show();
    }
    void End() { EndLine(); }

    std::string assertion; // source and line, "token:757", and what DieOfAssertion adds to them

private:
    void EndLine() {
        if (line.rfind(kAssertionMark, 0) == 0) {
            assertion = line.substr(std::strlen(kAssertionMark));
            while (!assertion.empty() && (assertion.back() == '\n' || assertion.back() == '\r')) assertion.pop_back();
            line.clear();
        }
        Show();
    }
    void Show() {
        std::fwrite(line.data(), 1, line.size(), stderr);
        std::fflush(stderr);
        line.clear();
    }

    std::string line;
};

class Child {
public:
    // `body` receives the descriptor to write its answers to and gives the exit status.
    Child(const ChildSettings& childSettings, const std::function<int(int)>& body) : settings(childSettings) {
        int answerPipe[2], errorPipe[2];
        if (pipe(answerPipe) != 0) throw SystemFailure("make a pipe");
        if (pipe(errorPipe) != 0) {
            close(answerPipe[0]);
            close(answerPipe[1]);
            throw SystemFailure("make a pipe");
        }
        std::fflush(stderr);
        const pid_t former = getpid();
        id = fork();
        if (id == 0) {
            close(answerPipe[0]);
            close(errorPipe[0]);
            Settle(former, errorPipe[1]);
            _exit(body(answerPipe[1]));
        }
        close(answerPipe[1]);
        close(errorPipe[1]);
        answers = answerPipe[0];
        errors = errorPipe[0];
        if (id < 0) {
            const ProcessFailure failure = SystemFailure("start a process");
            CloseAll();
            throw failure;
        }
        Restart();
    }
    ~Child() {
        if (id > 0) {
            kill(id, SIGKILL);
            waitpid(id, nullptr, 0);
        }
        CloseAll();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // The time for an item begins.
    void Restart() {
        deadline =
            Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(settings.seconds));
    }

    // Waits for something to arrive, and appends it to `received`. False when the child has ended, or was ended because
    // its time is over.
    bool Receive(std::string& received) {
        pollfd ends[2] = {{answers, POLLIN, 0}, {errors, POLLIN, 0}};
        const int ready = poll(ends, 2, Patience());
        if (ready < 0 && errno != EINTR) throw SystemFailure("wait for a process");
        if (ready == 0 && settings.timed && Clock::now() >= deadline) {
            tooSlow = true;
            return false;
        }
        if (ready <= 0) return true;
        char bytes[kPieceSize];
        if (ends[0].revents) TakeFrom(answers, bytes, [&](std::size_t size) { received.append(bytes, size); });
        if (ends[1].revents) TakeFrom(errors, bytes, [&](std::size_t size) { relay.Take(bytes, size); });
        // Answers come by the thousand and small. Between two looks at the pipe some may gather, or each of them would
        // cost a change of process.
        if (ends[0].revents && answers >= 0) std::this_thread::sleep_for(kGathering);
        return answers >= 0 || errors >= 0;
    }

    // Waits for the end. The cause is empty if the child ended by itself, with `status`.
    Death End(int& status) {
        if (tooSlow) kill(id, SIGKILL);
        int result = 0;
        while (waitpid(id, &result, 0) < 0 && errno == EINTR) {
        }
        id = -1;
        relay.End();
        status = WIFEXITED(result) ? WEXITSTATUS(result) : 0;
        if (tooSlow) return {fmt::format("given up after {} seconds", settings.seconds), "", "", 0, ""};
        if (!relay.assertion.empty()) return DeathOf(relay.assertion);
        if (WIFEXITED(result)) return {};
        const int signal = WTERMSIG(result);
        // Nobody reads the results any more. This process ends as it would if it had written them itself.
        if (signal == SIGPIPE) raise(SIGPIPE);
        return {fmt::format("reading it ended the process ({})", strsignal(signal)), "", "", 0, ""};
    }

private:
    // What the child does before its work.
    void Settle(pid_t former, int errorEnd) const {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != former) _exit(kExitOrphaned); // too late to be told of the end of the parent
        dup2(errorEnd, STDERR_FILENO);
        close(errorEnd);
        const rlimit noCore = {0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        const rlimit memory = {settings.memory, settings.memory};
        if (kLimitsMemory) setrlimit(RLIMIT_AS, &memory);
    }

    // Milliseconds until the time of the item is over; -1 for ever.
    int Patience() const {
        if (!settings.timed) return -1;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count() + 1;
        return static_cast<int>(std::max<long long>(0, std::min<long long>(left, 1000000)));
    }

    template <typename Take>
    static void TakeFrom(int& end, char* bytes, const Take& take) {
        const ssize_t size = read(end, bytes, kPieceSize);
        if (size > 0) {
            take(static_cast<std::size_t>(size));
        } else if (size == 0 || errno != EINTR) {
            close(end);
            end = -1;
        }
    }

    void CloseAll() {
        if (answers >= 0) close(answers);
        if (errors >= 0) close(errors);
        answers = errors = -1;
    }

    const ChildSettings settings;
    pid_t id = -1;
    int answers = -1;
    int errors = -1;
    bool tooSlow = false;
    Clock::time_point deadline;
    ErrorRelay relay;
};

// An answer travels as its length and its bytes.
void SendAnswer(int end, const std::string& answer) {
    const std::uint64_t size = answer.size();
    std::string frame(reinterpret_cast<const char*>(&size), sizeof size);
    frame += answer;
    WriteAll(end, frame.data(), frame.size());
}

bool TakeAnswer(std::string& received, std::string& answer) {
    std::uint64_t size = 0;
    if (received.size() < sizeof size) return false;
    std::memcpy(&size, received.data(), sizeof size);
    if (received.size() - sizeof size < size) return false;
    answer = received.substr(sizeof size, size);
    received.erase(0, sizeof size + size);
    return true;
}

// Without the line ends and tabs that part the fields of the line of DieOfAssertion.
std::string Field(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = ' ';
    return text;
}

// The items from `first` on, until the child has grown too large.
int WorkThrough(std::size_t first, std::size_t count, std::size_t recycle, int end,
                const std::function<std::string(std::size_t)>& work) {
    for (std::size_t item = first; item < count; ++item) {
        SendAnswer(end, work(item));
        if (item + 1 < count && ResidentSize() > recycle) return kExitRecycled;
    }
    return 0;
}

} // namespace

std::string DeathSentence(const std::string& subject, const Death& death) {
    std::string sentence = subject;
    if (!death.file.empty()) sentence += ": " + death.file;
    if (!death.script.empty()) sentence += ": script " + death.script;
    if (death.row > 0) sentence += fmt::format("{}{}", death.script.empty() ? ":" : ", row ", death.row);
    sentence += ": " + death.cause;
    if (!death.place.empty()) sentence += fmt::format(" (in {})", death.place);
    return sentence;
}

void DieOfAssertion(const std::string& assertion, const Death& known) {
    const std::string line = fmt::format("{}{}\t{}\t{}\t{}\t{}\n", kAssertionMark, assertion, known.row,
                                         Field(known.file), Field(known.script), Field(known.place));
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    std::abort();
}

int RunInChild(const std::string& subject, const ChildSettings& settings, const std::function<int()>& work) {
    Child child(settings, [&work](int) { return work(); });
    std::string nothing;
    while (child.Receive(nothing)) {
    }
    int status = 0;
    const Death death = child.End(status);
    if (!death.cause.empty()) throw ProcessFailure(DeathSentence(subject, death));
    return status;
}

void ForEachInChildren(std::size_t count, const ChildSettings& settings,
                       const std::function<std::string(std::size_t)>& work,
                       const std::function<void(std::size_t, const std::string&)>& done,
                       const std::function<void(std::size_t, const Death&)>& died) {
    std::size_t next = 0;
    while (next < count) {
        Child child(settings, [&, next](int end) { return WorkThrough(next, count, settings.recycle, end, work); });
        std::string received, answer;
        bool lives = true;
        while (lives) {
            lives = child.Receive(received);
            while (TakeAnswer(received, answer)) {
                done(next++, answer);
                child.Restart();
            }
        }
        int status = 0;
        Death death = child.End(status);
        if (next < count && !(death.cause.empty() && status == kExitRecycled)) {
            if (death.cause.empty()) death.cause = "the process that read it ended without an answer";
            died(next, death);
            ++next;
        }
    }
}

} // namespace TavrelProcesses
