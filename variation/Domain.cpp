#include <variation/Domain.h>

#include <algorithm>
#include <stdexcept>

namespace TavrelVariation {

namespace {

void CheckLength(std::size_t length) {
    if (length >= kMostValues) throw std::length_error("has more than " + std::to_string(kMostValues) + " values");
}

} // namespace

NumberDomain::NumberDomain(const std::vector<NumberRange>& given, bool wholeNumbers, int places)
    : decimals(places), whole(wholeNumbers) {
    for (const NumberRange& range : given)
        decimals = std::max({decimals, range.minimum.decimals, range.maximum.decimals});
    if (whole) decimals = 0;
    for (const NumberRange& range : given) {
        if (range.maximum < range.minimum)
            throw std::invalid_argument("the range from " + range.minimum.Text() + " to " + range.maximum.Text() +
                                        " has its ends the wrong way round");
        ranges.push_back({range.minimum.WithDecimals(decimals).units, range.maximum.WithDecimals(decimals).units});
    }
    std::sort(ranges.begin(), ranges.end(), [](const Range& a, const Range& b) {
        return a.minimum != b.minimum ? a.minimum < b.minimum : a.maximum < b.maximum;
    });
    std::vector<Range> joined;
    for (const Range& range : ranges) {
        const std::int64_t neighbour = whole ? 1 : 0;
        if (!joined.empty() && range.minimum - neighbour <= joined.back().maximum)
            joined.back().maximum = std::max(joined.back().maximum, range.maximum);
        else
            joined.push_back(range);
    }
    ranges = std::move(joined);
}

bool NumberDomain::Contains(const Decimal& value) const {
    return std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
        return At(range.minimum) <= value && value <= At(range.maximum) && (!whole || value.IsWhole());
    });
}

bool NumberDomain::Contains(const NumberRange& inner) const {
    return std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
        return At(range.minimum) <= inner.minimum && inner.maximum <= At(range.maximum);
    });
}

std::int64_t NumberDomain::Nearest(std::int64_t units) const {
    const Range* below = nullptr;
    for (const Range& range : ranges) {
        if (units >= range.minimum && units <= range.maximum) return units;
        if (units < range.minimum) {
            if (!below) return range.minimum;
            return Difference(units, below->maximum) <= Difference(range.minimum, units) ? below->maximum
                                                                                         : range.minimum;
        }
        below = &range;
    }
    return below->maximum;
}

std::uint64_t NumberDomain::Count() const {
    std::uint64_t count = 0;
    for (const Range& range : ranges)
        count += static_cast<std::uint64_t>(range.maximum) - static_cast<std::uint64_t>(range.minimum) + 1;
    return count;
}

std::string NumberDomain::Text() const {
    std::string text;
    for (const Range& range : ranges) {
        if (!text.empty()) text += " or ";
        text += At(range.minimum).Text();
        if (range.minimum != range.maximum) text += " to " + At(range.maximum).Text();
    }
    return text;
}

std::vector<std::int64_t> NumberDomain::Steps(std::int64_t step) const {
    std::vector<std::int64_t> values;
    for (const Range& range : ranges)
        for (std::int64_t value = range.minimum;; value += step) {
            CheckLength(values.size());
            values.push_back(value);
            if (Difference(range.maximum, value) < step) break;
        }
    return values;
}

std::vector<std::int64_t> NumberDomain::Spaced(std::size_t count) const {
    std::vector<std::int64_t> values;
    if (ranges.empty()) return values;
    if (count > kMostValues) CheckLength(count);
    const std::int64_t first = ranges.front().minimum, last = ranges.back().maximum;
    const std::int64_t length = Difference(last, first);
    if (count == 1) {
        // The middle may end in a half, which goes away from zero; so it is the sum that is halved.
        return {Nearest(RoundedQuotient(Sum(first, last), 1, 2))};
    }
    const auto steps = static_cast<std::int64_t>(count - 1);
    for (std::int64_t i = 0; i <= steps; ++i) {
        // first + i * length / steps as one quotient, so that the half of a negative value goes away from zero, too.
        const std::int64_t wholeSteps = length / steps, rest = length % steps;
        const std::int64_t base = Sum(first, i * wholeSteps);
        const std::int64_t fraction = i * rest; // of `steps`; below count^2
        std::int64_t value = base + fraction / steps;
        const std::int64_t left = fraction % steps;
        if (2 * left > steps || (2 * left == steps && value >= 0)) ++value;
        value = Nearest(value);
        if (values.empty() || values.back() != value) values.push_back(value);
    }
    return values;
}

std::vector<std::int64_t> NumberDomain::All() const {
    if (Count() > kMostValues) CheckLength(kMostValues);
    return Steps(1);
}

std::vector<std::int64_t> NumberDomain::Boundary(std::int64_t step) const {
    std::vector<std::int64_t> values;
    for (const Range& range : ranges) {
        std::vector<std::int64_t> of{range.minimum};
        if (Difference(range.maximum, range.minimum) >= step) {
            of.push_back(range.minimum + step);
            of.push_back(range.maximum - step);
        }
        of.push_back(range.maximum);
        // A short range has fewer than four.
        for (const std::int64_t value : of)
            if (std::find(values.begin(), values.end(), value) == values.end()) values.push_back(value);
    }
    return values;
}

} // namespace TavrelVariation
