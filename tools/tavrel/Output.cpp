#include "Output.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "Failure.h"

namespace tavrel {

namespace {

constexpr std::size_t kUsualColumns = 80, kLeastColumns = 20;
constexpr std::size_t kPieceSize = std::size_t(64) * 1024;

} // namespace

Output::Output() {
    std::cout.flush();
    descriptor = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    terminal = isatty(STDOUT_FILENO) == 1;
    const char* const kind = std::getenv("TERM");
    coloured = terminal && !std::getenv("NO_COLOR") && kind && *kind && std::strcmp(kind, "dumb") != 0;
    // Whatever is written to the descriptor itself must not mix with the results either.
    if (descriptor >= 0) dup2(STDERR_FILENO, STDOUT_FILENO);
    former = std::cout.rdbuf(&log);
}

Output::~Output() {
    std::cout.rdbuf(former);
    if (descriptor >= 0) close(descriptor);
}

void Output::Print(std::string_view text) {
    pending += text;
    if (!holds && pending.size() >= kPieceSize) Flush();
}

void Output::Hold() {
    holds = true;
    pending.clear();
}

std::string Output::TakeHeld() { return std::exchange(pending, {}); }

std::size_t Output::Columns() const {
    winsize size = {};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualColumns;
    return std::max<std::size_t>(size.ws_col, kLeastColumns);
}

void Output::Flush() {
    std::string piece;
    piece.swap(pending);
    std::size_t done = 0;
    while (done < piece.size()) {
        const ssize_t written = write(descriptor, piece.data() + done, piece.size() - done);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0)
            throw Failure{ExitUnreadable, fmt::format("cannot write the results: {}", std::strerror(errno))};
        done += static_cast<std::size_t>(written);
    }
}

std::string Output::Styled(const char* code, const std::string& text) const {
    return coloured ? fmt::format("\x1b[{}m{}\x1b[0m", code, text) : text;
}

std::string Output::Strong(const std::string& text) const { return Styled("1", text); }

std::string Output::Faint(const std::string& text) const { return Styled("2", text); }

std::string Output::Coloured(Colour colour, const std::string& text) const {
    return Styled(colour == Colour::Red ? "1;31" : colour == Colour::Yellow ? "1;33" : "1;36", text);
}

std::vector<LogLine> Output::TakeLog() {
    std::vector<LogLine> lines = log.Take();
    for (LogLine& line : lines) line.text = OneLine(line.text);
    return lines;
}

} // namespace tavrel
