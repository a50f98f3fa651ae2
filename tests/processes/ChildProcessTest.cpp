#include <processes/ChildProcess.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iostream>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <lmkUtils/AssertAbort.h>

// What the address checker sees freed stays for a while, so that the memory of a process says little.
#if defined(__SANITIZE_ADDRESS__)
#define TAVREL_TEST_KEEPS_FREED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TAVREL_TEST_KEEPS_FREED
#endif
#endif

namespace {

using namespace TavrelProcesses;
using testing::ElementsAre;
using testing::HasSubstr;

// What came back, in the order in which it did: "3=answer", "4!cause".
struct Told {
    std::vector<std::string> lines;

    void Run(std::size_t count, const ChildSettings& settings, const std::function<std::string(std::size_t)>& work) {
        ForEachInChildren(
            count, settings, work,
            [this](std::size_t item, const std::string& answer) {
                lines.push_back(std::to_string(item) + "=" + answer);
            },
            [this](std::size_t item, const Death& death) {
                lines.push_back(std::to_string(item) + "!" + death.cause);
            });
    }
};

ChildSettings With(std::size_t jobs, double seconds = 60) {
    ChildSettings settings;
    settings.jobs = jobs;
    settings.seconds = seconds;
    return settings;
}

// Items of all sorts: short and long answers, complaints, and every way to die.
std::string Mixed(std::size_t item) {
    std::cerr << "item " << item;
    if (item % 3 == 0) std::cerr << "\nand more\n";
    switch (item % 20) {
    case 2:
        std::cerr << "Assertion failed: none\n";
        break;
    case 3:
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        break;
    case 7:
        AssertAbort("token", 221);
    case 11:
        std::raise(SIGKILL);
        break;
    case 13:
        throw std::runtime_error("no more");
    case 14:
        throw std::bad_alloc();
    case 17:
        _exit(0);
    default:
        break;
    }
    return std::string(item % 20 == 5 ? 200000 : item % 7, static_cast<char>('a' + item % 26));
}

TEST(ChildProcessTest, TheResultsAreTheSameForAnyNumberOfJobs) {
    const auto run = [](std::size_t jobs) {
        testing::internal::CaptureStderr();
        Told told;
        told.Run(300, With(jobs), Mixed);
        const std::string errors = testing::internal::GetCapturedStderr();
        return std::pair(told.lines, errors);
    };
    const auto one = run(1);
    ASSERT_EQ(one.first.size(), 300u);
    EXPECT_EQ(one.first[6], "6=gggggg");
    EXPECT_EQ(one.first[7], "7!it broke an expectation of the library (assertion token:221): a block stands where only "
                            "parameters, calls, rules and tasks may stand");
    EXPECT_THAT(one.first[11], HasSubstr("11!reading it ended the process (Killed"));
    EXPECT_EQ(one.first[13], "13!no more");
    EXPECT_EQ(one.first[14], "14!there is not enough memory to read it");
    EXPECT_EQ(one.first[17], "17!the process that read it ended without an answer");
    EXPECT_THAT(one.second,
                testing::StartsWith("item 0\nand more\nitem 1item 2Assertion failed: none\nitem 3\nand more\n"));
    EXPECT_THAT(one.second, testing::Not(HasSubstr("Assertion failed: token")));
    for (const std::size_t jobs : {2u, 5u, 40u}) EXPECT_TRUE(run(jobs) == one) << jobs << " jobs";
}

TEST(ChildProcessTest, ASlowItemIsGivenUpAndTheOthersGoOn) {
    for (const std::size_t jobs : {1u, 3u}) {
        Told told;
        told.Run(5, With(jobs, 0.2), [](std::size_t item) {
            if (item == 1) std::this_thread::sleep_for(std::chrono::seconds(60));
            // Together these last longer than one may.
            std::this_thread::sleep_for(std::chrono::milliseconds(80));
            return std::string("x");
        });
        EXPECT_THAT(told.lines, ElementsAre("0=x", "1!given up after 0.2 seconds", "2=x", "3=x", "4=x")) << jobs;
    }
}

// While the first item takes its time, the answers of the others must not gather without end, and none may be lost.
TEST(ChildProcessTest, AnswersWaitForTheirTurnWithinBounds) {
    Told told;
    std::size_t most = 0;
    ForEachInChildren(
        200, With(3),
        [](std::size_t item) {
            if (item == 0) std::this_thread::sleep_for(std::chrono::milliseconds(300));
            return std::string(item == 0 ? 1 : 500000, 'x');
        },
        [&](std::size_t, const std::string& answer) {
            most = std::max(most, answer.size());
            told.lines.push_back(answer.substr(0, 1));
            std::size_t total = 0, resident = 0;
            std::ifstream("/proc/self/statm") >> total >> resident;
            most = std::max(most, resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)));
        },
        [](std::size_t, const Death& death) { FAIL() << death.cause; });
    EXPECT_EQ(told.lines.size(), 200u);
#ifndef TAVREL_TEST_KEEPS_FREED
    EXPECT_LT(most, std::size_t(60) << 20); // all of them are 100 MB
#endif
}

TEST(ChildProcessTest, AChildThatHasGrownGivesWay) {
    ChildSettings settings = With(2);
    settings.recycle = std::size_t(8) << 20;
    std::vector<std::string> processes;
    ForEachInChildren(
        12, settings,
        [](std::size_t) {
            static std::vector<char>* kept;
            kept = new std::vector<char>(std::size_t(16) << 20, 'x');
            return std::to_string(getpid()) + (kept->empty() ? "" : " ");
        },
        [&](std::size_t, const std::string& answer) { processes.push_back(answer); },
        [](std::size_t, const Death& death) { FAIL() << death.cause; });
    std::sort(processes.begin(), processes.end());
    EXPECT_EQ(std::unique(processes.begin(), processes.end()) - processes.begin(), 12);
}

TEST(ChildProcessTest, AQuietChildLeavesTheStreamsOfItsHostAlone) {
    ChildSettings settings = With(2);
    settings.quiet = true;
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    std::cout << "host";
    std::vector<Death> deaths;
    ForEachInChildren(
        3, settings,
        [](std::size_t item) -> std::string {
            std::cout << "child" << std::endl;
            std::cerr << "complaint\n";
            if (item == 1) AssertAbort("Parameter", 757);
            return std::to_string(std::cin.get());
        },
        [](std::size_t, const std::string& answer) { EXPECT_EQ(answer, "-1"); },
        [&](std::size_t item, const Death& death) {
            EXPECT_EQ(item, 1u);
            deaths.push_back(death);
        });
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "host");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    ASSERT_EQ(deaths.size(), 1u);
    EXPECT_EQ(deaths[0].kind, DeathKind::Assertion);
    EXPECT_EQ(deaths[0].assertion, "Parameter:757");
}

TEST(ChildProcessTest, WhatAProgramKnowsOfItsEndTravels) {
    std::vector<Death> deaths;
    ForEachInChildren(
        1, With(1),
        [](std::size_t) -> std::string {
            Death known;
            known.file = "a\tb\nc";
            known.script = "main";
            known.row = 7;
            known.place = "SCENARIO (1)";
            DieOfAssertion("token:1", known);
        },
        [](std::size_t, const std::string&) { FAIL(); },
        [&](std::size_t, const Death& death) { deaths.push_back(death); });
    ASSERT_EQ(deaths.size(), 1u);
    EXPECT_EQ(DeathSentence("x.sce", deaths[0]),
              "x.sce: a b c: script main, row 7: it broke an expectation of the library (assertion token:1) "
              "(in SCENARIO (1))");
}

TEST(ChildProcessTest, WhatTheReceiverThrowsEndsTheChildren) {
    EXPECT_THROW(ForEachInChildren(
                     100, With(4), [](std::size_t) { return std::to_string(getpid()); },
                     [](std::size_t item, const std::string&) {
                         if (item == 10) throw std::logic_error("enough");
                     },
                     [](std::size_t, const Death&) {}),
                 std::logic_error);
    errno = 0;
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD) << "a child is left";
}

// A host that handles the signal itself is told; it must not take the item for the cause.
TEST(ChildProcessTest, AChildThatIsInterruptedBlamesNoItem) {
    for (const int signal : {SIGINT, SIGTERM})
        EXPECT_THROW(ForEachInChildren(
                         10, With(2),
                         [signal](std::size_t item) {
                             if (item == 4) std::raise(signal);
                             return std::string();
                         },
                         [](std::size_t, const std::string&) {},
                         [](std::size_t item, const Death& death) { FAIL() << item << death.cause; }),
                     Interrupted);
}

TEST(ChildProcessTest, ASignalThatEndsTheParentLeavesNoOrphan) {
    for (const int signal : {SIGINT, SIGTERM, SIGKILL}) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t parent = fork();
        if (parent == 0) {
            close(ends[0]);
            ChildSettings settings = With(3);
            settings.timed = false;
            ForEachInChildren(
                3, settings,
                [&](std::size_t) {
                    const pid_t own = getpid();
                    if (write(ends[1], &own, sizeof own) != sizeof own) _exit(1);
                    while (true) pause();
                    return std::string();
                },
                [](std::size_t, const std::string&) {}, [](std::size_t, const Death&) {});
            _exit(0);
        }
        close(ends[1]);
        pid_t children[3];
        for (pid_t& child : children) ASSERT_EQ(read(ends[0], &child, sizeof child), ssize_t(sizeof child));
        kill(parent, signal);
        int status = 0;
        waitpid(parent, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        // Each of them holds the pipe open, so its end says that they are gone.
        char rest = 0;
        EXPECT_EQ(read(ends[0], &rest, 1), 0);
        close(ends[0]);
    }
}

// Two threads of a host each have children; those of one inherit the pipes of the other's.
TEST(ChildProcessTest, AHostMayHaveClosedItsStreams) {
    for (const std::vector<int>& closed : {std::vector{0, 2}, {0, 1}, {0, 1, 2}}) {
        const pid_t host = fork();
        if (host == 0) {
            alarm(20); // a result that never comes is waited for without end
            for (const int stream : closed) close(stream);
            Told told;
            ChildSettings settings = With(2);
            settings.quiet = true;
            told.Run(20, settings, [](std::size_t item) { return std::to_string(item * item); });
            _exit(told.lines.size() == 20 && told.lines[9] == "9=81" ? 0 : 1);
        }
        int status = 0;
        waitpid(host, &status, 0);
        EXPECT_EQ(status, 0) << closed.back();
    }
}

TEST(ChildProcessTest, ThreadsOfAHostDoNotWaitForOneAnother) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::thread slow([&] {
        Told told;
        told.Run(1, With(1), [&](std::size_t) {
            char sign = 0;
            return std::string(read(ends[0], &sign, 1) == 1 ? "slow" : "");
        });
        EXPECT_THAT(told.lines, ElementsAre("0=slow"));
    });
    for (int i = 0; i < 20; ++i) {
        Told told;
        told.Run(2, With(1, 1), [](std::size_t item) -> std::string {
            if (item == 0) std::raise(SIGKILL);
            return "quick";
        });
        EXPECT_THAT(told.lines, ElementsAre("0!reading it ended the process (Killed)", "1=quick"));
    }
    EXPECT_EQ(write(ends[1], "1", 1), 1);
    slow.join();
    for (const int end : ends) close(end);
}

TEST(ChildProcessTest, OneChildSharesTheStreamsAndTellsItsStatus) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunInChild("x", With(1),
                         [] {
                             std::cerr << "told";
                             return 3;
                         }),
              3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "told");
    const auto sentence = [](const ChildSettings& settings, const std::function<int()>& work) -> std::string {
        try {
            RunInChild("x.sce", settings, work);
            return "";
        } catch (const ProcessFailure& failure) {
            return failure.what();
        }
    };
    EXPECT_EQ(sentence(With(1),
                       [] {
                           AssertAbort("token", 757);
                           return 0;
                       }),
              "x.sce: it broke an expectation of the library (assertion token:757)");
    EXPECT_EQ(sentence(With(1, 0.1),
                       [] {
                           while (true) pause();
                           return 0;
                       }),
              "x.sce: given up after 0.1 seconds");
    EXPECT_EQ(sentence(With(1), []() -> int { throw std::runtime_error("torn"); }), "x.sce: torn");
}

} // namespace
