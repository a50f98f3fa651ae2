#include <algorithm>
#include <map>
#include <numeric>

#include <variation/CoveringArray.h>

namespace TavrelVariation {

namespace {

constexpr std::uint64_t kMostSteps = 2000000; // of one question
constexpr std::size_t kMostKept = 1000000;    // answers

} // namespace

// Answers that were given before, by group and by what was chosen in it.
struct RowCompleter::Answers {
    std::vector<std::map<std::vector<int>, bool>> of;
};

RowCompleter::~RowCompleter() = default;

RowCompleter::RowCompleter(const std::vector<int>& itsLevels, const std::vector<CoverRule>& itsRules)
    : levels(itsLevels), rules(itsRules), groupOf(itsLevels.size(), kNoGroup), rulesOf(itsLevels.size()),
      answers(std::make_unique<Answers>()) {
    // Each rule joins the groups of its factors.
    std::vector<std::size_t> leader(levels.size());
    std::iota(leader.begin(), leader.end(), std::size_t{0});
    const auto leaderOf = [&](std::size_t factor) {
        while (leader[factor] != factor) factor = leader[factor] = leader[leader[factor]];
        return factor;
    };
    for (const CoverRule& rule : rules)
        for (const std::size_t factor : rule.factors) leader[leaderOf(factor)] = leaderOf(rule.factors.front());
    for (std::size_t r = 0; r < rules.size(); ++r) {
        if (rules[r].factors.empty()) continue;
        const std::size_t first = leaderOf(rules[r].factors.front());
        if (groupOf[first] == kNoGroup) {
            groupOf[first] = groups.size();
            groups.emplace_back();
        }
        groups[groupOf[first]].rules.push_back(r);
        for (const std::size_t factor : rules[r].factors) rulesOf[factor].push_back(r);
    }
    for (std::size_t factor = 0; factor < levels.size(); ++factor) {
        if (rulesOf[factor].empty()) continue;
        groupOf[factor] = groupOf[leaderOf(factor)];
        groups[groupOf[factor]].factors.push_back(factor);
    }
    answers->of.resize(groups.size());
}

bool RowCompleter::IsBroken(std::size_t factor, const std::vector<int>& row) const {
    return std::any_of(rulesOf[factor].begin(), rulesOf[factor].end(),
                       [&](std::size_t rule) { return rules[rule].holds(row) == Truth::False; });
}

bool RowCompleter::Obeys(const std::vector<int>& row, std::size_t factor) const { return !IsBroken(factor, row); }

bool RowCompleter::Choose(const Group& group, std::size_t position, std::vector<int>& row,
                          const std::vector<int>& wanted, std::uint64_t& steps) const {
    while (position < group.factors.size() && row[group.factors[position]] != kOpenLevel) ++position;
    if (position == group.factors.size()) return true;
    const std::size_t factor = group.factors[position];
    const int first = wanted.empty() || wanted[factor] < 0 ? 0 : wanted[factor];
    for (int tried = 0; tried < levels[factor]; ++tried) {
        if (++steps > kMostSteps)
            throw CoverFailure("the constraints are too entangled to find out what they allow in " +
                               std::to_string(kMostSteps) + " steps");
        row[factor] = (first + tried) % levels[factor];
        if (!IsBroken(factor, row) && Choose(group, position + 1, row, wanted, steps)) return true;
    }
    row[factor] = kOpenLevel;
    return false;
}

bool RowCompleter::CompleteGroup(const Group& group, std::vector<int>& row, const std::vector<int>& wanted) const {
    if (std::any_of(group.rules.begin(), group.rules.end(),
                    [&](std::size_t rule) { return rules[rule].holds(row) == Truth::False; }))
        return false;
    std::uint64_t steps = 0;
    return Choose(group, 0, row, wanted, steps);
}

bool RowCompleter::CanComplete(const std::vector<int>& row) const {
    std::vector<int> chosen;
    for (std::size_t g = 0; g < groups.size(); ++g) {
        chosen.clear();
        for (const std::size_t factor : groups[g].factors) {
            if (row[factor] == kOpenLevel) continue;
            chosen.push_back(static_cast<int>(factor));
            chosen.push_back(row[factor]);
        }
        const auto known = answers->of[g].find(chosen);
        if (known != answers->of[g].end()) {
            if (!known->second) return false;
            continue;
        }
        std::vector<int> trial = row;
        const bool can = CompleteGroup(groups[g], trial, {});
        if (answers->of[g].size() < kMostKept) answers->of[g].emplace(chosen, can);
        if (!can) return false;
    }
    return true;
}

bool RowCompleter::Complete(std::vector<int>& row, const std::vector<int>& wanted) const {
    std::vector<int> completed = row;
    for (const Group& group : groups)
        if (!CompleteGroup(group, completed, wanted)) return false;
    row = completed;
    return true;
}

} // namespace TavrelVariation
