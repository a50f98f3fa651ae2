#include "Death.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include <fmt/format.h>

namespace TavrelProcesses {

namespace {

constexpr std::string_view kAssertionMark = "Assertion failed: "; // of AssertAbort as well

struct AssertionCause {
    const char* assertion;
    const char* cause;
};

// The expectations of the library that a text can break.
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

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }

// Without the line ends and tabs that part the fields of a line.
std::string Field(std::string text) {
    std::replace_if(text.begin(), text.end(), IsControl, ' ');
    return text;
}

} // namespace

std::string CauseOfAssertion(const std::string& assertion) {
    for (const AssertionCause& row : kAssertionCauses)
        if (assertion == row.assertion) return row.cause;
    return "";
}

void DieOfAssertion(const std::string& assertion, const Death& known) {
    const std::string line = fmt::format("{}{}\t{}\t{}\t{}\t{}\n", kAssertionMark, assertion, known.row,
                                         Field(known.file), Field(known.script), Field(known.place));
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    std::abort();
}

Death DeathOfAssertion(const std::string& line) {
    std::istringstream parts(line);
    std::string row;
    Death death;
    death.kind = DeathKind::Assertion;
    std::getline(parts, death.assertion, '\t');
    std::getline(parts, row, '\t');
    std::getline(parts, death.file, '\t');
    std::getline(parts, death.script, '\t');
    std::getline(parts, death.place, '\t');
    if (!row.empty()) death.row = static_cast<unsigned>(std::strtoul(row.c_str(), nullptr, 10));
    death.cause = fmt::format("it broke an expectation of the library (assertion {})", death.assertion);
    const std::string cause = CauseOfAssertion(death.assertion);
    if (!cause.empty()) death.cause += ": " + cause;
    return death;
}

std::string DeathSentence(const std::string& subject, const Death& death) {
    std::string sentence = subject;
    if (!death.file.empty()) sentence += ": " + death.file;
    if (!death.script.empty()) sentence += ": script " + death.script;
    if (death.row > 0) sentence += fmt::format("{}{}", death.script.empty() ? ":" : ", row ", death.row);
    sentence += ": " + death.cause;
    if (!death.place.empty()) sentence += fmt::format(" (in {})", death.place);
    return sentence;
}

std::size_t BeginningAtEnd(std::string_view text, std::string_view mark) {
    for (std::size_t size = std::min(text.size(), mark.size() - 1); size > 0; --size)
        if (text.substr(text.size() - size) == mark.substr(0, size)) return size;
    return 0;
}

void ErrorRelay::Take(std::string_view bytes) {
    for (const char c : bytes) {
        line += c;
        if (c == '\n' || c == '\r') EndLine();
    }
    // A line in progress, such as that of a progress display, is shown as far as it is known not to be an assertion,
    // which may follow in the same line.
    const std::size_t found = line.find(kAssertionMark);
    Show(found == std::string::npos ? line.size() - BeginningAtEnd(line, kAssertionMark) : found);
}

void ErrorRelay::End() { EndLine(); }

void ErrorRelay::EndLine() {
    const std::size_t found = line.find(kAssertionMark);
    Show(std::min(found, line.size()));
    if (line.empty()) return;
    TakeBack();
    assertion = line.substr(kAssertionMark.size());
    while (!assertion.empty() && (assertion.back() == '\n' || assertion.back() == '\r')) assertion.pop_back();
    line.clear();
}

void ErrorRelay::TakeBack() {
    if (!assertion.empty()) sink(fmt::format("{}{}\n", kAssertionMark, assertion));
    assertion.clear();
}

void ErrorRelay::Show(std::size_t size) {
    if (size > 0) sink(std::string_view(line).substr(0, size));
    line.erase(0, size);
}

} // namespace TavrelProcesses
