#include <scenario/NearestName.h>

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace {

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

std::string NearestName(std::string_view name, const std::vector<std::string>& candidates) {
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
    return best ? *best : std::string();
}
