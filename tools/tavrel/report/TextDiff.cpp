#include "TextDiff.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace tavrel {

namespace {

constexpr std::ptrdiff_t kAround = 3;
constexpr std::ptrdiff_t kMostChanges = 2000; // lines; beyond it, all that differs is one block

using Lines = std::vector<std::string_view>;

// With their line ends, so that texts that differ in these alone differ.
Lines LinesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

struct Step {
    char sign; // ' ', '-' or '+'
    std::string_view line;
};

std::ptrdiff_t Size(const Lines& lines) { return static_cast<std::ptrdiff_t>(lines.size()); }

// The shortest way from one text to the other, by E. Myers: for each number of changes how far each diagonal gets, and
// then back along the way that got to the end.
std::vector<Step> StepsBetween(const Lines& a, const Lines& b) {
    const auto at = [](const Lines& lines, std::ptrdiff_t i) { return lines[static_cast<std::size_t>(i)]; };
    std::vector<std::vector<std::ptrdiff_t>> rounds;
    const std::ptrdiff_t most = std::min(Size(a) + Size(b), kMostChanges);
    std::vector<std::ptrdiff_t> reach(static_cast<std::size_t>(2 * most + 3), 0);
    const auto cell = [&](std::vector<std::ptrdiff_t>& from, std::ptrdiff_t diagonal) -> std::ptrdiff_t& {
        return from[static_cast<std::size_t>(diagonal + most + 1)];
    };
    bool found = false;
    for (std::ptrdiff_t changes = 0; changes <= most && !found; ++changes) {
        rounds.push_back(reach);
        for (std::ptrdiff_t k = -changes; k <= changes && !found; k += 2) {
            const bool down = k == -changes || (k != changes && cell(reach, k - 1) < cell(reach, k + 1));
            std::ptrdiff_t x = down ? cell(reach, k + 1) : cell(reach, k - 1) + 1;
            while (x < Size(a) && x - k < Size(b) && at(a, x) == at(b, x - k)) ++x;
            cell(reach, k) = x;
            found = x >= Size(a) && x - k >= Size(b);
        }
    }
    std::vector<Step> steps;
    if (!found) {
        for (const std::string_view line : a) steps.push_back({'-', line});
        for (const std::string_view line : b) steps.push_back({'+', line});
        return steps;
    }
    std::ptrdiff_t x = Size(a), y = Size(b);
    for (std::ptrdiff_t changes = static_cast<std::ptrdiff_t>(rounds.size()) - 1; changes >= 0; --changes) {
        std::vector<std::ptrdiff_t>& before = rounds[static_cast<std::size_t>(changes)];
        const std::ptrdiff_t k = x - y;
        const bool down = k == -changes || (k != changes && cell(before, k - 1) < cell(before, k + 1));
        const std::ptrdiff_t fromX = changes == 0 ? 0 : down ? cell(before, k + 1) : cell(before, k - 1);
        const std::ptrdiff_t fromY = changes == 0 ? 0 : down ? fromX - (k + 1) : fromX - (k - 1);
        while (x > fromX && y > fromY && at(a, x - 1) == at(b, y - 1)) {
            steps.push_back({' ', at(a, x - 1)});
            --x;
            --y;
        }
        if (changes == 0) break;
        if (down)
            steps.push_back({'+', at(b, --y)});
        else
            steps.push_back({'-', at(a, --x)});
    }
    std::reverse(steps.begin(), steps.end());
    return steps;
}

std::string Range(std::size_t begin, std::size_t count) {
    const std::size_t first = count == 0 ? begin : begin + 1;
    return count == 1 ? fmt::format("{}", first) : fmt::format("{},{}", first, count);
}

} // namespace

std::string UnifiedDiff(const std::string& path, std::string_view before, std::string_view after) {
    if (before == after) return "";
    const std::vector<Step> steps = StepsBetween(LinesOf(before), LinesOf(after));
    const auto count = static_cast<std::ptrdiff_t>(steps.size());
    const auto step = [&](std::ptrdiff_t i) -> const Step& { return steps[static_cast<std::size_t>(i)]; };
    std::string text = fmt::format("--- {0}\n+++ {0}\n", path);
    std::size_t rowBefore = 0, rowAfter = 0; // lines after us
    std::ptrdiff_t done = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        if (step(i).sign == ' ') continue;
        const std::ptrdiff_t begin = std::max(done, i - kAround);
        std::ptrdiff_t end = i + 1; // one past the last change of the block
        for (std::ptrdiff_t j = i; j < count && j <= end + 2 * kAround; ++j)
            if (step(j).sign != ' ') end = j + 1;
        end = std::min(count, end + kAround);
        rowBefore += static_cast<std::size_t>(begin - done); // nothing changed up to there
        rowAfter += static_cast<std::size_t>(begin - done);
        std::size_t linesBefore = 0, linesAfter = 0;
        std::string lines;
        for (std::ptrdiff_t j = begin; j < end; ++j) {
            if (step(j).sign != '+') ++linesBefore;
            if (step(j).sign != '-') ++linesAfter;
            lines += step(j).sign;
            lines += step(j).line;
            if (step(j).line.back() != '\n') lines += "\n\\ No newline at end of file\n";
        }
        text += fmt::format("@@ -{} +{} @@\n{}", Range(rowBefore, linesBefore), Range(rowAfter, linesAfter), lines);
        rowBefore += linesBefore;
        rowAfter += linesAfter;
        done = end;
        i = end - 1;
    }
    return text;
}

} // namespace tavrel
