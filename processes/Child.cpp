#include "Child.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>

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

constexpr int kExitOrphaned = 98;
constexpr std::size_t kPieceSize = std::size_t(64) * 1024;
constexpr std::size_t kMostAtOnce = std::size_t(1) << 20;
constexpr int kPipeSize = 1 << 20; // a child goes on while its parent is busy with other answers

ProcessFailure SystemFailure(const char* what) {
    return ProcessFailure(fmt::format("cannot {}: {}", what, std::strerror(errno)));
}

// A pipe that no program inherits which someone starts meanwhile. A host may have closed its standard streams; their
// numbers stay free for those of the child.
void MakePipe(int (&ends)[2]) {
    if (pipe2(ends, O_CLOEXEC) != 0) throw SystemFailure("make a pipe");
    for (int& end : ends) {
        if (end > STDERR_FILENO) continue;
        const int moved = fcntl(end, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        const int failure = errno;
        close(std::exchange(end, moved));
        if (moved >= 0) continue;
        for (const int other : ends)
            if (other >= 0) close(other);
        errno = failure;
        throw SystemFailure("make a pipe");
    }
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    fcntl(ends[0], F_SETPIPE_SZ, kPipeSize); // or what the system gives
}

void Close(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

// Appends what is there, or about `most` of it. Closes the end when nothing can follow.
void TakeFrom(int& end, std::string& bytes, std::size_t most) {
    char piece[kPieceSize];
    for (const std::size_t before = bytes.size(); end >= 0 && bytes.size() - before < most;) {
        const ssize_t size = read(end, piece, sizeof piece);
        if (size > 0)
            bytes.append(piece, static_cast<std::size_t>(size));
        else if (size < 0 && errno == EAGAIN)
            return;
        else if (size == 0 || errno != EINTR)
            Close(end);
    }
}

// The host's own handling of these would run in its child.
void RestoreSignals() {
    for (const int signal : {SIGINT, SIGTERM}) {
        struct sigaction action;
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action = {};
        action.sa_handler = SIG_DFL;
        sigaction(signal, &action, nullptr);
    }
}

// What the child does before its work.
void Prepare(const ChildSettings& settings, pid_t former, int errorEnd) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != former) _exit(kExitOrphaned); // too late to be told of the end of the parent
    RestoreSignals();
    dup2(errorEnd, STDERR_FILENO);
    close(errorEnd);
    if (settings.quiet) {
        const int nothing = open("/dev/null", O_RDWR);
        dup2(nothing, STDIN_FILENO);
        dup2(nothing, STDOUT_FILENO);
        if (nothing > STDERR_FILENO) close(nothing);
    }
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    // The hard limit stays, for programs that are started here and limited in another way.
    rlimit memory;
    if (!kLimitsMemory || getrlimit(RLIMIT_AS, &memory) != 0) return;
    memory.rlim_cur = std::min<rlim_t>(settings.memory, memory.rlim_max);
    setrlimit(RLIMIT_AS, &memory);
}

} // namespace

Child::Child(const ChildSettings& settings, const std::function<int(int)>& body) {
    int answerPipe[2], errorPipe[2];
    MakePipe(answerPipe);
    answers = answerPipe[0];
    try {
        MakePipe(errorPipe);
    } catch (...) {
        close(answerPipe[1]);
        CloseAll();
        throw;
    }
    errors = errorPipe[0];
    std::fflush(stderr);
    const pid_t former = getpid();
    id = fork();
    if (id == 0) {
        CloseAll();
        Prepare(settings, former, errorPipe[1]);
        _exit(body(answerPipe[1]));
    }
    const int failure = errno;
    close(answerPipe[1]);
    close(errorPipe[1]);
    if (id < 0) {
        CloseAll();
        errno = failure;
        throw SystemFailure("start a process");
    }
    handle = static_cast<int>(syscall(SYS_pidfd_open, id, 0));
}

Child::~Child() {
    if (id > 0) {
        kill(id, SIGKILL);
        End();
    }
    CloseAll();
}

void Child::AddTo(std::vector<pollfd>& waited) const {
    for (const int end : {answers, errors, handle})
        if (end >= 0) waited.push_back({end, POLLIN, 0});
}

bool Child::HasEnded() const {
    pollfd end = {handle, POLLIN, 0};
    return handle >= 0 && poll(&end, 1, 0) == 1;
}

bool Child::Receive(std::string& answered, std::string& complained) {
    const bool ended = HasEnded(); // asked first, so that what is read after it is all there is
    const std::size_t most = ended ? std::string::npos : kMostAtOnce; // a busy child fills a pipe as fast as it empties
    TakeFrom(answers, answered, most);
    TakeFrom(errors, complained, most);
    return handle >= 0 ? !ended : answers >= 0 || errors >= 0;
}

void Child::GiveUp() {
    late = true;
    kill(id, SIGKILL);
}

ChildEnd Child::End() {
    int result = 0;
    // A host that ignores the end of its children has none to wait for; then what arrived tells all.
    while (waitpid(id, &result, 0) < 0 && errno == EINTR) {
    }
    id = -1;
    return {WIFEXITED(result) ? WEXITSTATUS(result) : 0, WIFSIGNALED(result) ? WTERMSIG(result) : 0, late};
}

void Child::CloseAll() {
    Close(answers);
    Close(errors);
    Close(handle);
}

void WaitFor(std::vector<pollfd>& waited, int milliseconds) {
    if (poll(waited.data(), waited.size(), milliseconds) < 0 && errno != EINTR)
        throw SystemFailure("wait for a process");
}

void WriteAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) _exit(kExitOrphaned);
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
}

} // namespace TavrelProcesses
