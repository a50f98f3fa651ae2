#include "read/LoadReport.h"

#include <string>

#include "text/Problems.h"
#include "text/Refusal.h"

bool ReportRefusal(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item) {
    if (!RefusalsAreTold()) return false;
    const std::string kept = TakeRefusalCause();
    TellProblem(stream, kept.empty() ? Explain(stream, cause, item) : kept, false);
    return false;
}
