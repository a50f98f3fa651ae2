#include "text/Refusal.h"

#include <utility>

#include <scenario/NearestName.h>

namespace {

std::string keptCause;

} // namespace

void KeepRefusalCause(std::string cause) {
    if (keptCause.empty()) keptCause = std::move(cause);
}

void ForgetKeptCause() { keptCause.clear(); }

std::string TakeRefusalCause() { return std::exchange(keptCause, {}); }

std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates) {
    const std::string nearest = NearestName(name, candidates);
    return nearest.empty() ? nearest : ", did you mean \"" + nearest + "\"";
}
