#include <variation/CoveringArray.h>

namespace TavrelVariation {

namespace {

constexpr std::uint64_t kMostCombinations = 50000000;

// Every choice of `size` of the numbers 0 to count - 1, in order.
std::vector<std::vector<std::size_t>> Choices(std::size_t count, std::size_t size) {
    std::vector<std::vector<std::size_t>> choices;
    std::vector<std::size_t> choice(size);
    for (std::size_t i = 0; i < size; ++i) choice[i] = i;
    while (size <= count) {
        choices.push_back(choice);
        if (choices.size() > kMostCombinations) throw CoverFailure("there are too many combinations to count");
        std::size_t last = size;
        while (last > 0 && choice[last - 1] == count - size + last - 1) --last;
        if (last == 0) break;
        ++choice[last - 1];
        for (std::size_t i = last; i < size; ++i) choice[i] = choice[i - 1] + 1;
    }
    return choices;
}

} // namespace

CoverageCounter::CoverageCounter(const std::vector<int>& itsLevels, const std::vector<CoverRule>& itsRules,
                                 int itsStrength)
    : levels(itsLevels), rules(itsRules), strength(static_cast<std::size_t>(itsStrength)),
      choices(Choices(itsLevels.size(), strength)) {
    std::uint64_t all = 0;
    for (const auto& choice : choices) {
        std::uint64_t combinations = 1;
        for (const std::size_t factor : choice) {
            combinations *= static_cast<std::uint64_t>(levels[factor]);
            if (combinations > kMostCombinations) throw CoverFailure("there are too many combinations to count");
        }
        all += combinations;
        if (all > kMostCombinations) throw CoverFailure("there are too many combinations to count");
        seen.emplace_back(static_cast<std::size_t>(combinations), false);
    }
}

void CoverageCounter::Add(const std::vector<int>& row) {
    for (std::size_t c = 0; c < choices.size(); ++c) {
        std::size_t place = 0;
        bool whole = true;
        for (const std::size_t factor : choices[c]) {
            whole = whole && row[factor] >= 0;
            if (!whole) break;
            place = place * static_cast<std::size_t>(levels[factor]) + static_cast<std::size_t>(row[factor]);
        }
        if (whole) seen[c][place] = true;
    }
}

CoverageCounter::Result CoverageCounter::Count(std::size_t mostMissing) const {
    const RowCompleter completer(levels, rules);
    Result result;
    std::vector<int> row(levels.size(), kOpenLevel);
    for (std::size_t c = 0; c < choices.size(); ++c) {
        for (std::size_t place = 0; place < seen[c].size(); ++place) {
            std::size_t rest = place;
            for (std::size_t i = choices[c].size(); i-- > 0;) {
                const auto count = static_cast<std::size_t>(levels[choices[c][i]]);
                row[choices[c][i]] = static_cast<int>(rest % count);
                rest /= count;
            }
            if (!completer.CanComplete(row)) continue;
            ++result.possible;
            if (seen[c][place])
                ++result.covered;
            else if (result.missing.size() < mostMissing)
                result.missing.push_back(row);
        }
        for (const std::size_t factor : choices[c]) row[factor] = kOpenLevel;
    }
    return result;
}

} // namespace TavrelVariation
