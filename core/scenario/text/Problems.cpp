#include "text/Problems.h"

#include <utility>

#include <scenario/LoadDiagnostics.h>

#include "text/Refusal.h"
#include "text/TextFormat.h"
#include "text/TextUnderWay.h"

namespace {

std::string sourceName;
// The text that is under way where the file of that name is asked for: as long as it is the innermost one, nothing of
// the file has been read.
const TextUnderWay* textAroundSource = nullptr;

LoadProblem ProblemOf(const std::string& cause) {
    LoadProblem problem;
    problem.file = sourceName;
    problem.script = NameOfText();
    problem.cause = cause;
    return problem;
}

LoadProblem ProblemAt(const ScenarioTextStream& place, const std::string& cause) {
    LoadProblem problem = ProblemOf(cause);
    problem.row = place.line;
    problem.line = RestOfLine(place);
    return problem;
}

} // namespace

void TellProblem(const ScenarioTextStream& place, const std::string& cause, bool isWarning) {
    if (!loadProblemListener) return;
    LoadProblem problem = ProblemAt(place, cause);
    problem.isWarning = isWarning;
    loadProblemListener->OnLoadProblem(problem);
}

void TellUnreadableFile(const std::string& cause) {
    if (loadProblemListener) loadProblemListener->OnLoadProblem(ProblemOf(cause));
}

void TellLoadWarning(const std::string& cause) {
    if (const TextUnderWay* text = TextUnderWay::Current()) TellProblem(text->stream, cause, true);
}

void TellFatalProblem(const std::string& cause, const std::string& assertion) {
    const TextUnderWay* const text = TextUnderWay::Current();
    const bool isUnread = !sourceName.empty() && text == textAroundSource;
    if (!loadProblemListener || (!text && !isUnread)) return;
    LoadProblem problem = isUnread ? ProblemOf(cause) : ProblemAt(text->stream, cause);
    problem.assertion = assertion;
    loadProblemListener->OnLoadProblem(problem);
}

LoadSource::LoadSource(const std::string& name)
    : outer(std::exchange(sourceName, name)), outerText(std::exchange(textAroundSource, TextUnderWay::Current())) {}

LoadSource::~LoadSource() {
    sourceName = outer;
    textAroundSource = outerText;
}

std::string& NameOfText() {
    static std::string name;
    return name;
}
