#include <scenario/WhyInvalid.h>

#include <algorithm>
#include <vector>

#include <scenario/Parameter.h>
#include <scenario/function.h>

#include "items/ValueKinds.h"

namespace {

std::string CauseOfParameter(const Parameter& parameter) {
    const std::string what =
        "parameter \"" + parameter.name + "\" with " + parameter.valueKind + " \"" + parameter.value + "\"";
    const char* const why = ValueKindOf(parameter.valueKind).whyInvalid;
    return why ? what + ": " + why : what + " is not valid";
}

bool HasInvalidPart(const ScenarioItem& item) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    if (const auto* call = dynamic_cast<const Function*>(&item))
        children.insert(children.end(), call->parameters.begin(), call->parameters.end());
    return std::any_of(children.begin(), children.end(),
                       [](const ScenarioItem* child) { return child && !child->IsValid(); });
}

} // namespace

std::string WhyInvalid(const ScenarioItem& item) {
    if (item.IsValid()) return {};
    if (const auto* parameter = dynamic_cast<const Parameter*>(&item)) return CauseOfParameter(*parameter);
    if (item.kind == KindInclude && item.IsIndexEntry())
        return "INCLUDE of \"" + item.fileName + "\": the data path has no such script";
    const std::string what = std::string(KindKeyword(item.kind)) + " \"" + item.name + "\"";
    if (HasInvalidPart(item)) return what + ": a part of it is not valid";
    if (item.kind == KindAction || item.kind == KindElseAction)
        return what + ": it stands in no rule that begins with a condition";
    if (item.kind == KindCondition) return what + ": a rule heeds its first condition alone, and AND and OR need parts";
    return what + ": it is not valid where it stands";
}

bool IsJudgedByScenario(const ScenarioItem& item) {
    if (const auto* parameter = dynamic_cast<const Parameter*>(&item))
        return ValueKindOf(parameter->valueKind).needsScenario;
    return dynamic_cast<const Function*>(&item) != nullptr;
}
