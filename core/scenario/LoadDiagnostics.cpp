#include <scenario/LoadDiagnostics.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "AttributeRow.h"
#include "LoadReport.h"
#include "LoadState.h"
#include "Refusal.h"
#include "TextMatch.h"

namespace {

std::string sourceName;
std::string keptCause;

void Tell(std::uint32_t row, std::string_view line, const std::string& cause, bool isWarning) {
    if (!loadProblemListener) return;
    LoadProblem problem;
    problem.file = sourceName;
    problem.row = row;
    problem.line = line;
    problem.cause = cause;
    problem.isWarning = isWarning;
    loadProblemListener->OnLoadProblem(problem);
}

std::string NameOfItem(const ScenarioItem* item) {
    if (!item) return "the text";
    return std::string(KindKeyword(item->kind)) + " (" + item->name + ")";
}

// The key, when the line has the form of an attribute.
std::optional<std::string_view> KeyOf(std::string_view line) {
    const std::size_t equals = line.find("=\"");
    if (equals == 0 || equals == std::string_view::npos) return std::nullopt;
    if (line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789") < equals) return std::nullopt;
    return line.substr(0, equals);
}

std::string ExplainNoHeader(const ScenarioTextStream& stream, const ScenarioItem* item) {
    const std::string_view line = RestOfLine(stream);
    const std::string owner = NameOfItem(item);
    if (line.empty() && IsUsedUp(stream)) {
        if (stream.end - stream.cursor > 1) return "a NUL character stands in the text";
        return item ? "the text ends before the closing brace of " + owner : "there is no item in the text";
    }
    if (line.front() == ' ') return "the line begins with a blank; only tabs may stand before a line";
    if (line.substr(0, 6) == "TYPEOF") {
        return "the header cannot be read: it needs one blank, a known word and a name in brackets, or a carriage "
               "return behind the word";
    }
    if (const auto key = KeyOf(line)) {
        const std::string keyText(*key);
        if (std::count(line.begin(), line.end(), '"') < 2) return "the value of " + keyText + " has no closing quote";
        return owner + (item ? " has no attribute " : " begins with the attribute ") + keyText;
    }
    return item ? "the line is neither an attribute of " + owner + " nor the header of an item"
                : "the text does not begin with the header of an item";
}

std::string Explain(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item) {
    std::string_view keyword;
    std::string_view name;
    switch (cause) {
    case Cause::NoHeader:
        return ExplainNoHeader(stream, item);
    case Cause::UnknownKind:
        MatchHeader(stream, keyword, name);
        return "\"" + std::string(keyword) + "\" is no kind of item";
    case Cause::TooDeep:
        return "blocks are nested more than " + std::to_string(kMaxNesting) + " deep";
    case Cause::NoBrace:
        return "the opening brace of " + NameOfItem(item) + " is missing";
    case Cause::ItemRefused:
        return NameOfItem(item) + " is not possible here";
    case Cause::ItemIncomplete:
        return NameOfItem(item) + " is not complete";
    case Cause::TextEnds:
        return "the text ends before the closing brace of " + NameOfItem(item);
    case Cause::NoNumber:
        return "the value is not a number of the form that its key needs";
    }
    return {};
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

LoadProblemListener::~LoadProblemListener() = default;

LoadProblemListener* SetLoadProblemListener(LoadProblemListener* listener) {
    return std::exchange(loadProblemListener, listener);
}

void KeepRefusalCause(std::string cause) {
    if (keptCause.empty()) keptCause = std::move(cause);
}

void ForgetKeptCause() { keptCause.clear(); }

void NoteSecondValue(const ScenarioTextStream& stream, std::string_view key) {
    if (!loadProblemListener) return;
    // A key that only begins a longer one is no second value.
    if (KeyOf(RestOfLine(stream)) == key) KeepRefusalCause("a second value for " + std::string(key));
}

bool ReportRefusal(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item) {
    if (!loadProblemListener) return false;
    const std::string text = keptCause.empty() ? Explain(stream, cause, item) : std::exchange(keptCause, {});
    Tell(stream.line, RestOfLine(stream), text, false);
    return false;
}

void ReportUnreadableFile(const std::string& cause) { Tell(1, {}, cause, false); }

void ReportWarning(const ScenarioTextStream& place, const std::string& cause) {
    if (loadProblemListener) Tell(place.line, RestOfLine(place), cause, true);
}

void TellLoadWarning(const std::string& cause) {
    if (const Load* load = Load::Current()) ReportWarning(load->stream, cause);
}

void TellRefusalNow(const std::string& cause) {
    if (!loadProblemListener) return;
    const Load* load = Load::Current();
    if (!load) return;
    Tell(load->stream.line, RestOfLine(load->stream), cause, false);
}

std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates) {
    // A third of the letters wrong is another word.
    const std::size_t tolerated = name.size() / 3 + 1;
    const std::string* best = nullptr;
    std::size_t bestDistance = tolerated + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t shorter = std::min(candidate.size(), name.size());
        if (std::max(candidate.size(), name.size()) - shorter >= bestDistance) continue;
        const std::size_t distance = EditDistance(name, candidate);
        if (distance >= bestDistance) continue;
        best = &candidate;
        bestDistance = distance;
    }
    return best ? ", did you mean \"" + *best + "\"" : std::string();
}

LoadSource::LoadSource(const std::string& name) : outer(std::exchange(sourceName, name)) {}

LoadSource::~LoadSource() { sourceName = outer; }
