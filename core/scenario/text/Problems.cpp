#include "text/Problems.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include <scenario/LoadDiagnostics.h>

#include "text/Refusal.h"
#include "text/TextFormat.h"
#include "text/TextUnderWay.h"

namespace {

std::string sourceName;

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

} // namespace

void TellProblem(const ScenarioTextStream& place, const std::string& cause, bool isWarning) {
    if (loadProblemListener) Tell(place.line, RestOfLine(place), cause, isWarning);
}

void TellUnreadableFile(const std::string& cause) { Tell(1, {}, cause, false); }

void TellLoadWarning(const std::string& cause) {
    if (const TextUnderWay* text = TextUnderWay::Current()) TellProblem(text->stream, cause, true);
}

void TellRefusalNow(const std::string& cause) {
    if (const TextUnderWay* text = TextUnderWay::Current()) TellProblem(text->stream, cause, false);
}

LoadSource::LoadSource(const std::string& name) : outer(std::exchange(sourceName, name)) {}

LoadSource::~LoadSource() { sourceName = outer; }
