#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <thread>
#include <utility>

#include <sched.h>
#include <sys/mman.h>
#include <unistd.h>

#include <fmt/format.h>

#include "Child.h"
#include "Death.h"

namespace TavrelProcesses {

namespace {

constexpr auto kGathering = std::chrono::milliseconds(2);
constexpr auto kPause = std::chrono::microseconds(500);
constexpr std::size_t kMostWaiting = std::size_t(4) << 20;   // bytes of answers that came before their turn
constexpr std::size_t kMostComplaint = std::size_t(1) << 20; // bytes of errors that wait for the end of their item

using Clock = std::chrono::steady_clock;

// A moment that means the same in all processes of the machine.
std::int64_t Now() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
}

// Resident memory of this process, in bytes.
std::size_t ResidentSize() {
    std::size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void PassOn(std::string_view errors) {
    std::fwrite(errors.data(), 1, errors.size(), stderr);
    std::fflush(stderr);
}

// What a child sends, as its head and its bytes.
enum class Sent : std::uint32_t { Answer, Exception, OutOfMemory };
struct Head {
    std::uint64_t item;
    std::uint64_t size;
    Sent kind;
};

void Send(int end, std::size_t item, Sent kind, std::string_view bytes) {
    Head head;
    std::memset(&head, 0, sizeof head); // no stray byte of this process leaves it
    head.item = item;
    head.size = bytes.size();
    head.kind = kind;
    WriteAll(end, reinterpret_cast<const char*>(&head), sizeof head);
    WriteAll(end, bytes.data(), bytes.size());
}

// Takes one message off the beginning of `received` from `read` on; false if it is not whole yet.
bool TakeMessage(const std::string& received, std::size_t& read, Head& head, std::string& bytes) {
    if (received.size() - read < sizeof head) return false;
    std::memcpy(&head, received.data() + read, sizeof head);
    if (received.size() - read - sizeof head < head.size) return false;
    bytes = received.substr(read + sizeof head, head.size);
    read += sizeof head + head.size;
    return true;
}

// Calls `work` and sends its answer; false, when an exception left it, which is sent instead.
template <typename Work>
bool SendResult(int end, std::size_t item, const Work& work) {
    try {
        Send(end, item, Sent::Answer, work());
        return true;
    } catch (const std::bad_alloc&) {
        Send(end, item, Sent::OutOfMemory, "");
    } catch (const std::exception& exception) {
        Send(end, item, Sent::Exception, exception.what());
    } catch (...) {
        Send(end, item, Sent::Exception, "something failed in a form that nobody announced");
    }
    return false;
}

Death DeathOfMessage(Sent kind, const std::string& text) {
    Death death;
    death.kind = kind == Sent::OutOfMemory ? DeathKind::OutOfMemory : DeathKind::Exception;
    death.cause = kind == Sent::OutOfMemory ? "there is not enough memory to read it" : text;
    return death;
}

// How a child died that has given no answer. Nothing is known of the place but what stands with an assertion.
Death DeathOf(const ChildEnd& end, const std::string& assertion, double seconds) {
    if (!end.late && !assertion.empty()) return DeathOfAssertion(assertion);
    Death death;
    if (end.late) {
        death.kind = DeathKind::OutOfTime;
        death.cause = fmt::format("given up after {} seconds", seconds);
    } else if (end.signal != 0) {
        death.kind = DeathKind::Signal;
        death.cause = fmt::format("reading it ended the process ({})", TextOfSignal(end.signal));
    } else {
        death.cause = "the process that read it ended without an answer";
    }
    return death;
}

bool WasInterrupted(const ChildEnd& end) { return !end.late && (end.signal == SIGINT || end.signal == SIGTERM); }

// Nobody reads the results any more. This process ends as it would if it had written them itself.
void EndWithTheReader(const ChildSettings& settings, const ChildEnd& end) {
    if (end.signal == SIGPIPE && !settings.quiet) raise(SIGPIPE);
}

// Milliseconds until `seconds` after `since` are over.
int Patience(const ChildSettings& settings, std::int64_t since) {
    if (!settings.timed) return -1;
    const double left = settings.seconds * 1e3 - static_cast<double>(Now() - since) / 1e6 + 1;
    return static_cast<int>(std::clamp(left, 0.0, 1e6));
}

bool IsOver(const ChildSettings& settings, std::int64_t since) {
    return settings.timed && Patience(settings, since) == 0;
}

// What the children and their parent share: who has taken which item, and since when each child is at work on one. A
// child takes the first item that is free by writing its own number on it, so that the parent knows what a child was at
// in whatever moment that died.
class Board {
public:
    Board(std::size_t itemCount, std::size_t placeCount) : count(itemCount), places(placeCount) {
        size = sizeof(Shared) + places * sizeof(Moment) + count * sizeof(Owner);
        memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw ProcessFailure(fmt::format("cannot share memory: {}", std::strerror(errno)));
        // Fresh pages are all 0, which is what each of these begins with.
        shared = static_cast<Shared*>(memory);
        moments = reinterpret_cast<Moment*>(shared + 1);
        owners = reinterpret_cast<Owner*>(moments + places);
    }
    ~Board() { munmap(memory, size); }
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;

    // For child `number`, from 1 on; false when no item is free.
    bool Take(std::uint32_t number, std::size_t& item) {
        for (item = shared->first; item < count; ++item) {
            std::uint32_t nobody = 0;
            if (!owners[item].compare_exchange_strong(nobody, number)) continue;
            std::size_t former = shared->first;
            while (former <= item && !shared->first.compare_exchange_weak(former, item + 1)) {
            }
            return true;
        }
        return false;
    }
    bool HasFreeItem() const {
        for (std::size_t item = shared->first; item < count; ++item)
            if (owners[item] == 0) return true;
        return false;
    }
    // The item that child `number` took last; none if that is below `from`.
    std::optional<std::size_t> TakenBy(std::uint32_t number, std::size_t from) const {
        // Whoever has just taken an item may not have moved the mark of the first free one yet.
        for (std::size_t item = std::min(count, shared->first + places); item-- > from;)
            if (owners[item] == number) return item;
        return std::nullopt;
    }

    // The moment at which the child in this place began with its item; 0 when it is at none.
    std::atomic<std::int64_t>& Since(std::size_t place) { return moments[place]; }
    // Whether children are to wait with the next item.
    std::atomic<bool>& Hold() { return shared->hold; }

private:
    struct Shared {
        std::atomic<std::size_t> first; // no item below is free
        std::atomic<bool> hold;
    };
    using Moment = std::atomic<std::int64_t>;
    using Owner = std::atomic<std::uint32_t>;
    static_assert(std::atomic<std::size_t>::is_always_lock_free && Moment::is_always_lock_free &&
                  Owner::is_always_lock_free && sizeof(Owner) == sizeof(std::uint32_t));

    const std::size_t count;
    const std::size_t places;
    std::size_t size;
    void* memory;
    Shared* shared;
    Moment* moments;
    Owner* owners;
};

// The children at work, and the results that wait for their turn.
class Crew {
public:
    Crew(std::size_t itemCount, const ChildSettings& childSettings,
         const std::function<std::string(std::size_t)>& itemWork,
         const std::function<void(std::size_t, const std::string&)>& onAnswer,
         const std::function<void(std::size_t, const Death&)>& onDeath)
        : count(itemCount), settings(childSettings), work(itemWork), done(onAnswer), died(onDeath),
          workers(std::min(count, std::max<std::size_t>(settings.jobs, 1))), board(count, workers.size()) {
        std::random_device random;
        for (int i = 0; i < 4; ++i) {
            const std::uint32_t part = random();
            mark.append(reinterpret_cast<const char*>(&part), sizeof part);
        }
    }

    void WorkThrough() {
        for (std::size_t place = 0; place < workers.size(); ++place) Start(place);
        while (next < count) {
            Wait();
            for (std::size_t place = 0; place < workers.size(); ++place)
                if (workers[place]) Look(place);
            // What a child took and never answered for, whatever became of it, is waited for by nobody.
            const bool isAnyAtWork =
                std::any_of(workers.begin(), workers.end(), [](const auto& worker) { return worker != nullptr; });
            if (!isAnyAtWork && waiting.count(next) == 0) Add(next, {"", "", DeathOf({}, {}, settings.seconds)});
            HandOn();
        }
    }

private:
    struct Result {
        std::string errors; // what the child wrote to its error stream meanwhile
        std::string answer;
        std::optional<Death> death;
    };
    struct Worker {
        explicit Worker(std::uint32_t ownNumber, bool quiet)
            : number(ownNumber), relay([this, quiet](std::string_view text) {
                  if (!quiet) Complain(errors, text);
              }) {}
        Worker(const Worker&) = delete;
        Worker& operator=(const Worker&) = delete;

        const std::uint32_t number;
        std::unique_ptr<Child> child;
        std::string answered, complained; // as it came
        std::string errors;               // of the item in work, as it is to be passed on
        std::deque<std::string> complete; // the same of items that were ended
        std::deque<std::pair<Head, std::string>> messages;
        bool hasAnswered = false;
        ErrorRelay relay;
    };

    void Start(std::size_t place) {
        board.Since(place) = 0;
        auto worker = std::make_unique<Worker>(++started, settings.quiet);
        worker->child =
            std::make_unique<Child>(settings, [&](int end) { return WorkInChild(place, worker->number, end); });
        workers[place] = std::move(worker);
    }

    // An item that never stops complaining must not fill this process.
    static void Complain(std::string& errors, std::string_view text) {
        errors += text;
        if (errors.size() < kMostComplaint) return;
        PassOn(errors);
        errors.clear();
    }

    // In the child: item after item, until none is free or the child has grown too large.
    int WorkInChild(std::size_t place, std::uint32_t number, int end) {
        const std::size_t atFirst = ResidentSize();
        std::size_t item = 0;
        while (true) {
            while (board.Hold()) std::this_thread::sleep_for(kPause);
            if (!board.Take(number, item)) return 0;
            board.Since(place) = Now();
            const bool answered = SendResult(end, item, [&] { return Marked(work(item)); });
            board.Since(place) = 0;
            if (!answered || ResidentSize() > atFirst + settings.recycle) return 0;
        }
    }

    // Ends the part of the error stream that belongs to an item.
    std::string Marked(std::string answer) const {
        std::clog.flush();
        std::fflush(stderr);
        WriteAll(STDERR_FILENO, mark.data(), mark.size());
        return answer;
    }

    void Wait() {
        // Answers come by the thousand and small. Between two looks some may gather, or each of them would cost a
        // change of process.
        if (received) std::this_thread::sleep_for(kGathering);
        received = false;
        std::vector<pollfd> waited;
        int patience = settings.timed ? Patience(settings, Now()) : -1;
        for (std::size_t place = 0; place < workers.size(); ++place) {
            if (!workers[place]) continue;
            workers[place]->child->AddTo(waited);
            const std::int64_t since = board.Since(place);
            if (since != 0 && settings.timed) patience = std::min(patience, Patience(settings, since));
        }
        WaitFor(waited, patience);
    }

    // Takes what a child has sent, and sees to its end.
    void Look(std::size_t place) {
        Worker& worker = *workers[place];
        const bool lives = worker.child->Receive(worker.answered, worker.complained);
        ReadMessages(worker);
        ReadErrors(worker);
        MatchResults(worker);
        const std::int64_t since = board.Since(place);
        if (lives && since != 0 && IsOver(settings, since)) return worker.child->GiveUp();
        if (!lives) Bury(place);
    }

    void ReadMessages(Worker& worker) {
        std::size_t read = 0;
        Head head;
        std::string bytes;
        while (TakeMessage(worker.answered, read, head, bytes)) {
            worker.messages.emplace_back(head, std::move(bytes));
            worker.hasAnswered = received = true;
        }
        worker.answered.erase(0, read);
    }

    void ReadErrors(Worker& worker) {
        std::size_t begin = 0, found = 0;
        while ((found = worker.complained.find(mark, begin)) != std::string::npos) {
            worker.relay.Take(std::string_view(worker.complained).substr(begin, found - begin));
            worker.relay.End();
            worker.relay.TakeBack();
            worker.complete.push_back(std::exchange(worker.errors, {}));
            begin = found + mark.size();
        }
        const std::size_t rest = std::max(begin, worker.complained.size() - BeginningAtEnd(worker.complained, mark));
        worker.relay.Take(std::string_view(worker.complained).substr(begin, rest - begin));
        worker.complained.erase(0, rest);
    }

    void MatchResults(Worker& worker) {
        while (!worker.messages.empty() && !worker.complete.empty() &&
               worker.messages.front().first.kind == Sent::Answer) {
            auto& [head, bytes] = worker.messages.front();
            Add(head.item, {std::move(worker.complete.front()), std::move(bytes), std::nullopt});
            worker.messages.pop_front();
            worker.complete.pop_front();
        }
    }

    void Add(std::size_t item, Result result) {
        bytesWaiting += result.errors.size() + result.answer.size();
        waiting.emplace(item, std::move(result));
    }

    // A child has ended: after its last item, or over one.
    void Bury(std::size_t place) {
        const std::unique_ptr<Worker> worker = std::move(workers[place]);
        workers[place] = nullptr;
        const ChildEnd end = worker->child->End();
        if (WasInterrupted(end))
            throw Interrupted(fmt::format("the work was interrupted ({})", TextOfSignal(end.signal)));
        EndWithTheReader(settings, end);
        std::optional<std::size_t> last = board.TakenBy(worker->number, next);
        if (last && waiting.count(*last) != 0) last.reset();
        // One that never came to any item dies over the next, or a new one would be started for ever.
        std::size_t item = 0;
        if (!last && !worker->hasAnswered && board.Take(worker->number, item)) last = item;
        if (last) {
            worker->relay.Take(worker->complained);
            worker->relay.End();
            std::string errors;
            for (const std::string& part : worker->complete) errors += part;
            Add(*last, {errors + worker->errors, "", CauseOf(*worker, end)});
        }
        if (board.HasFreeItem()) Start(place);
    }

    Death CauseOf(const Worker& worker, const ChildEnd& end) const {
        if (!worker.messages.empty() && worker.messages.front().first.kind != Sent::Answer)
            return DeathOfMessage(worker.messages.front().first.kind, worker.messages.front().second);
        return DeathOf(end, worker.relay.assertion, settings.seconds);
    }

    void HandOn() {
        for (auto first = waiting.begin(); first != waiting.end() && first->first == next; first = waiting.begin()) {
            const Result result = std::move(first->second);
            waiting.erase(first);
            bytesWaiting -= result.errors.size() + result.answer.size();
            PassOn(result.errors);
            const std::size_t item = next++;
            if (result.death)
                died(item, *result.death);
            else
                done(item, result.answer);
        }
        board.Hold() = bytesWaiting > kMostWaiting;
    }

    const std::size_t count;
    const ChildSettings& settings;
    const std::function<std::string(std::size_t)>& work;
    const std::function<void(std::size_t, const std::string&)>& done;
    const std::function<void(std::size_t, const Death&)>& died;

    std::string mark; // ends an item in an error stream: no text of a stranger has it
    std::vector<std::unique_ptr<Worker>> workers;
    Board board;
    std::uint32_t started = 0;
    bool received = false; // in the last round
    std::size_t next = 0;  // the first item whose result was not handed on
    std::map<std::size_t, Result> waiting;
    std::size_t bytesWaiting = 0;
};

} // namespace

std::string TextOfSignal(int number) {
    const char* text = sigdescr_np(number);
    return text ? text : fmt::format("signal {}", number);
}

std::size_t UsableCores() {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    if (sched_getaffinity(0, sizeof cores, &cores) != 0) return std::max(1U, std::thread::hardware_concurrency());
    return static_cast<std::size_t>(std::max(1, CPU_COUNT(&cores)));
}

int RunInChild(const std::string& subject, const ChildSettings& settings, const std::function<int()>& work) {
    Child child(settings, [&work](int end) {
        int status = 0;
        SendResult(end, 0, [&] {
            status = work();
            return std::string();
        });
        return status;
    });
    ErrorRelay relay([&settings](std::string_view text) {
        if (!settings.quiet) PassOn(text);
    });
    const std::int64_t since = Now();
    std::string received, errors;
    for (bool lives = true; lives;) {
        std::vector<pollfd> waited;
        child.AddTo(waited);
        WaitFor(waited, Patience(settings, since));
        lives = child.Receive(received, errors);
        relay.Take(errors);
        errors.clear();
        if (lives && IsOver(settings, since)) child.GiveUp();
    }
    relay.End();
    const ChildEnd end = child.End();
    EndWithTheReader(settings, end);
    Head head;
    std::size_t read = 0;
    std::string text;
    Death death;
    if (TakeMessage(received, read, head, text) && head.kind != Sent::Answer)
        death = DeathOfMessage(head.kind, text);
    else if (end.late || end.signal != 0)
        death = DeathOf(end, relay.assertion, settings.seconds);
    if (death.cause.empty()) {
        relay.TakeBack();
        return end.status;
    }
    const std::string sentence = DeathSentence(subject, death);
    if (WasInterrupted(end)) throw Interrupted(sentence);
    throw ProcessFailure(sentence);
}

void ForEachInChildren(std::size_t count, const ChildSettings& settings,
                       const std::function<std::string(std::size_t)>& work,
                       const std::function<void(std::size_t, const std::string&)>& done,
                       const std::function<void(std::size_t, const Death&)>& died) {
    if (count > 0) Crew(count, settings, work, done, died).WorkThrough();
}

} // namespace TavrelProcesses
