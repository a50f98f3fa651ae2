// A script, with all its faults: the look at it ends, has an error if and only if the library has something against the
// text, places each finding within the text and tells none twice.

#include <algorithm>
#include <set>
#include <tuple>

#include <Commons/TextPlaces.h>
#include <TavrelScenarioTemplateDb/ShareRootModels.h>
#include <lmkUtils/AssertAbort.h>
#include <processes/ChildProcess.h>

#include "../../checking/Examiner.h"
#include "../Support.h"

// A command tells its parent process of the assertion; here it is an answer as any other.
void TavrelProcesses::DieOfAssertion(const std::string& assertion, const Death&) {
    const std::size_t colon = assertion.rfind(':');
    AssertAbort(assertion.substr(0, colon).c_str(), std::stoi(assertion.substr(colon + 1)));
}

namespace {

using namespace TavrelChecking;

void LookAtPlaces(const std::vector<Finding>& findings, const std::string& path, const std::string& text) {
    const Commons::TextPlaces places(text);
    using Place = std::pair<std::uint32_t, std::uint32_t>;
    std::set<std::tuple<std::string, Place, std::string, std::string, std::vector<Place>>> once;
    for (const Finding& finding : findings) {
        if (finding.file != path) continue;
        const Span& span = finding.span;
        const std::string what = finding.rule->id + (" " + finding.message);
        std::vector<Place> related;
        for (const RelatedPlace& place : finding.related) related.emplace_back(place.span.row, place.span.column);
        const Place place(span.row, span.column);
        Demand(once.emplace(finding.rule->id, place, finding.message, finding.place, related).second,
               "a finding comes once", what);
        Demand(std::tie(span.row, span.column) <= std::tie(span.endRow, span.endColumn), "a place has an order", what);
        for (const auto& [row, column] : {std::pair(span.row, span.column), std::pair(span.endRow, span.endColumn)}) {
            Demand(row >= 1 && row <= places.RowCount(), "a row lies in the text", what);
            Demand(places.PlaceOf(places.PositionOf({row, column})).column == column, "a column lies in its row", what);
        }
        Demand(!finding.message.empty() && !finding.help.empty(), "a finding has a message and a remedy", what);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TavrelScenarioTemplateDb::ShareRootModels sharing; // as where the command looks at many files
    static const Options options;
    static Examiner examiner(options);
    const std::string text(reinterpret_cast<const char*>(data), size);
    Job job;
    job.path = "fuzz.sc";
    job.kind = FileKind::Script;
    job.installation = FUZZ_SAMPLE "/tavrel.xml";
    job.configuration = "City";
    const Examined unjudged = examiner.Examine(job, &text, false);
    LookAtPlaces(unjudged.findings, job.path, text);
    Outlives([&] {
        const Examined judged = examiner.Examine(job, &text, true);
        LookAtPlaces(judged.findings, job.path, text);
        const bool hasError = std::any_of(judged.findings.begin(), judged.findings.end(), [&](const Finding& finding) {
            return finding.severity == Severity::Error && finding.file == job.path;
        });
        const Verdict verdict = JudgeScript(text, judged.model);
        std::string all;
        for (const Finding& finding : judged.findings)
            all += std::string(WordOf(finding.severity)) + " " + finding.rule->id + " " + finding.message + "\n";
        Demand(hasError == !verdict.IsFine(), "what is told is what the library says", all);
    });
    return 0;
}
