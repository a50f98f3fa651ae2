#include "Progress.h"

#include <cstdio>

#include <unistd.h>

#include <fmt/format.h>

namespace tavrel {

namespace {

using Clock = std::chrono::steady_clock;

// Asked at the start of the program: a child process writes into a pipe to its parent, which passes all on.
const bool kOnTerminal = isatty(STDERR_FILENO) == 1;

constexpr auto kFirst = std::chrono::seconds(1);
constexpr auto kThen = std::chrono::milliseconds(200);
constexpr const char* kClearLine = "\r\x1b[K";

} // namespace

Progress::Progress(double goalNumber, std::string unitText)
    : goal(goalNumber), unit(std::move(unitText)), wanted(kOnTerminal), start(Clock::now()), next(start + kFirst) {}

Progress::~Progress() { Hide(); }

void Progress::Reach(double done) {
    if (!wanted || Clock::now() < next) return;
    next = Clock::now() + kThen;
    shown = true;
    std::string line = fmt::format("{}{:.0f} of {:.0f} {}", kClearLine, done, goal, unit);
    const double rate = done / std::chrono::duration<double>(Clock::now() - start).count();
    if (rate > 0) line += fmt::format(", {:.3g} a second, {:.0f} s left", rate, (goal - done) / rate);
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

void Progress::Wipe() {
    if (!kOnTerminal) return;
    std::fputs(kClearLine, stderr);
    std::fflush(stderr);
}

void Progress::Hide() {
    if (!shown) return;
    std::fputs(kClearLine, stderr);
    std::fflush(stderr);
    shown = false;
}

} // namespace tavrel
