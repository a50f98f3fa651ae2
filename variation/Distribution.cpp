#include <variation/Distribution.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include <boost/math/distributions/normal.hpp>
#include <boost/math/special_functions/gamma.hpp>

namespace TavrelVariation {

namespace {

// Doubles stay doubles: what a long double is differs between machines, and the plan's values must not.
using Policy =
    boost::math::policies::policy<boost::math::policies::promote_double<false>,
                                  boost::math::policies::overflow_error<boost::math::policies::ignore_error>,
                                  boost::math::policies::underflow_error<boost::math::policies::ignore_error>>;
using Normal = boost::math::normal_distribution<double, Policy>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Of the standard normal distribution. Beyond the middle the part above is taken, which stays exact far out.
double Below(double x) { return boost::math::cdf(Normal(), x); }
double Above(double x) { return boost::math::cdf(boost::math::complement(Normal(), x)); }

double NormalMass(double low, double high) { return low >= 0 ? Above(low) - Above(high) : Below(high) - Below(low); }

double NormalInside(double low, double high, double fraction) {
    const double mass = NormalMass(low, high);
    double x = low;
    const double below = Below(low) + fraction * mass;
    if (low < 0 && below <= 0.5) {
        if (below > 0) x = boost::math::quantile(Normal(), below);
    } else {
        const double above = Above(high) + (1 - fraction) * mass;
        x = above > 0 ? boost::math::quantile(boost::math::complement(Normal(), above)) : high;
    }
    return std::clamp(x, low, high);
}

// The probability of the whole numbers from `low` to `high`, both at least 0.
double PoissonBelow(double mean, double number) {
    return number < 0 ? 0 : boost::math::gamma_q(number + 1, mean, Policy());
}
double PoissonAbove(double mean, double number) {
    return number < 0 ? 1 : boost::math::gamma_p(number + 1, mean, Policy());
}
double PoissonMass(double mean, double low, double high) {
    return low > mean ? PoissonAbove(mean, low - 1) - PoissonAbove(mean, high)
                      : PoissonBelow(mean, high) - PoissonBelow(mean, low - 1);
}

void CheckWeight(double weight) {
    if (!(weight >= 0) || !std::isfinite(weight)) throw std::invalid_argument("a weight is a number of at least 0");
}

} // namespace

void NumberQuantile::Add(double low, double high, double mass) {
    if (!(mass > 0)) return;
    pieces.push_back({low, high, mass, total});
    total += mass;
}

// What the distribution gives to one range, or to all numbers.
void NumberQuantile::AddParts(const NumberRange* range) {
    const double low = range ? range->minimum.Number() : -kInfinity;
    const double high = range ? range->maximum.Number() : kInfinity;
    switch (of.kind) {
    case DistributionKind::Uniform:
    case DistributionKind::ProbabilitySet:
        break;
    case DistributionKind::Normal:
        return Add(low, high, NormalMass((low - of.expectedValue) / deviation, (high - of.expectedValue) / deviation));
    case DistributionKind::LogNormal:
        if (high <= 0) return;
        return Add(low, high,
                   NormalMass(((low > 0 ? std::log(low) : -kInfinity) - of.expectedValue) / deviation,
                              (std::log(high) - of.expectedValue) / deviation));
    case DistributionKind::Poisson: {
        // Beyond forty deviations no double is left.
        const double most = std::ceil(of.expectedValue + 40 * std::sqrt(of.expectedValue) + 100);
        const double first = std::max(0.0, std::ceil(low)), last = std::min(most, std::floor(high));
        if (first <= last) Add(first, last, PoissonMass(of.expectedValue, first, last));
        return;
    }
    case DistributionKind::Histogram:
        for (const Distribution::Bin& bin : of.bins) {
            const double binLow = bin.range.minimum.Number(), binHigh = bin.range.maximum.Number();
            const double from = std::max(low, binLow), to = std::min(high, binHigh);
            if (from < to) Add(from, to, bin.weight * (to - from) / (binHigh - binLow));
        }
        return;
    }
}

NumberQuantile::NumberQuantile(const NumberDomain& numbers, const Distribution& distribution)
    : domain(numbers), of(distribution) {
    if (of.kind == DistributionKind::ProbabilitySet)
        throw std::invalid_argument("a probability-set has elements and no ranges");
    if (of.kind == DistributionKind::Normal || of.kind == DistributionKind::LogNormal) {
        if (!(of.variance > 0) || !std::isfinite(of.variance) || !std::isfinite(of.expectedValue))
            throw std::invalid_argument("the variance must be greater than 0");
        deviation = std::sqrt(of.variance);
    }
    if (of.kind == DistributionKind::Poisson && (!(of.expectedValue > 0) || of.expectedValue > 1e12))
        throw std::invalid_argument("the expectedValue must be greater than 0 and at most 1e12");
    if (of.kind == DistributionKind::Histogram) {
        std::sort(of.bins.begin(), of.bins.end(), [](const Distribution::Bin& a, const Distribution::Bin& b) {
            return a.range.minimum < b.range.minimum;
        });
        for (std::size_t i = 0; i < of.bins.size(); ++i) {
            CheckWeight(of.bins[i].weight);
            if (of.bins[i].range.maximum <= of.bins[i].range.minimum)
                throw std::invalid_argument("the bin from " + of.bins[i].range.minimum.Text() + " to " +
                                            of.bins[i].range.maximum.Text() + " has no width");
            if (i > 0 && of.bins[i].range.minimum < of.bins[i - 1].range.maximum)
                throw std::invalid_argument("the bins overlap at " + of.bins[i].range.minimum.Text());
        }
    }

    if (of.kind == DistributionKind::Uniform) {
        if (domain.IsEmpty()) throw std::invalid_argument("uniform needs a range");
        // Ranges of one number each have no length, and share alike.
        byCount = domain.IsWhole() || std::all_of(domain.Ranges().begin(), domain.Ranges().end(),
                                                  [](const auto& range) { return range.minimum == range.maximum; });
        for (const auto& range : domain.Ranges()) {
            const auto low = static_cast<double>(range.minimum), high = static_cast<double>(range.maximum);
            Add(low, high, byCount ? high - low + 1 : high - low);
        }
        return;
    }
    for (const auto& range : domain.Ranges()) {
        const NumberRange ends{domain.At(range.minimum), domain.At(range.maximum)};
        AddParts(&ends);
    }
    if (domain.IsEmpty()) AddParts(nullptr);
    if (!(total > 0))
        throw std::invalid_argument("the distribution has no probability within " +
                                    (domain.IsEmpty() ? "the numbers" : domain.Text()));
}

double NumberQuantile::Inside(const Piece& piece, double fraction) const {
    switch (of.kind) {
    case DistributionKind::Normal:
        return of.expectedValue + deviation * NormalInside((piece.low - of.expectedValue) / deviation,
                                                           (piece.high - of.expectedValue) / deviation, fraction);
    case DistributionKind::LogNormal: {
        const double low = piece.low > 0 ? std::log(piece.low) : -kInfinity;
        return std::exp(of.expectedValue +
                        deviation * NormalInside((low - of.expectedValue) / deviation,
                                                 (std::log(piece.high) - of.expectedValue) / deviation, fraction));
    }
    case DistributionKind::Poisson: {
        // The first whole number up to which there is at least that part.
        double low = piece.low, high = piece.high;
        while (low < high) {
            const double middle = std::floor((low + high) / 2);
            if (PoissonMass(of.expectedValue, piece.low, middle) >= fraction * piece.mass)
                high = middle;
            else
                low = middle + 1;
        }
        return low;
    }
    default:
        return piece.low + fraction * (piece.high - piece.low);
    }
}

std::int64_t NumberQuantile::At(double u) const {
    const double target = u * total;
    auto piece = std::upper_bound(pieces.begin(), pieces.end(), target,
                                  [](double wanted, const Piece& candidate) { return wanted < candidate.before; }) -
                 1;
    const double inside = target - piece->before;
    if (of.kind == DistributionKind::Uniform) {
        // In units, so that nothing but the last step rounds.
        const double number = byCount ? piece->low + std::floor(inside) : std::round(piece->low + inside);
        const auto units = static_cast<std::int64_t>(std::min(number, 9223372036854774784.0));
        const auto low = static_cast<std::int64_t>(piece->low);
        const auto high = static_cast<std::int64_t>(std::min(piece->high, 9223372036854774784.0));
        return std::clamp(units, low, high);
    }
    const double fraction = std::clamp(inside / piece->mass, 0.0, 1.0);
    const std::int64_t units = Decimal::Rounded(Inside(*piece, fraction), domain.Decimals()).units;
    return domain.IsEmpty() ? units : domain.Nearest(units);
}

IndexQuantile::IndexQuantile(std::size_t size) : count(size) {}

IndexQuantile::IndexQuantile(const std::vector<double>& weights) : count(weights.size()) {
    double sum = 0;
    for (const double weight : weights) {
        CheckWeight(weight);
        sum += weight;
        upTo.push_back(sum);
    }
    if (!(sum > 0) || !std::isfinite(sum)) throw std::invalid_argument("the weights have no sum above 0");
}

std::size_t IndexQuantile::At(double u) const {
    if (upTo.empty()) return std::min(static_cast<std::size_t>(u * static_cast<double>(count)), count - 1);
    const auto found = std::upper_bound(upTo.begin(), upTo.end(), u * upTo.back());
    return std::min(static_cast<std::size_t>(found - upTo.begin()), count - 1);
}

} // namespace TavrelVariation
