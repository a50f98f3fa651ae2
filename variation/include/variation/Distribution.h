#ifndef TAVREL_VARIATION_DISTRIBUTION_H
#define TAVREL_VARIATION_DISTRIBUTION_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include <variation/Domain.h>
#include <variation/Export.h>

namespace TavrelVariation {

enum class DistributionKind { Uniform, Normal, LogNormal, Poisson, Histogram, ProbabilitySet };

// How likely which numbers are, before the domain cuts it. Names and members are those of the OpenSCENARIO standard.
struct TAVREL_VARIATION_API Distribution {
    struct Bin {
        NumberRange range;
        double weight = 0;
    };

    DistributionKind kind = DistributionKind::Uniform;
    double expectedValue = 0; // Normal, Poisson; LogNormal: of the logarithm
    double variance = 0;      // Normal; LogNormal: of the logarithm
    std::vector<Bin> bins;    // Histogram
};

// The quantile of a distribution that is cut to a domain exactly: the probability outside is given to the inside in
// proportion. Uniform goes over a union of ranges by length, over whole numbers by count. Poisson has whole numbers
// only. A ProbabilitySet has no ranges and is an IndexQuantile. The quantiles are those of Boost.Math.
class TAVREL_VARIATION_API NumberQuantile {
public:
    // A domain without ranges cuts nothing; then Uniform is not possible. Fails with std::invalid_argument, whose text
    // is to follow the place: for parameters that the distribution cannot have, and where none of it is in the domain.
    NumberQuantile(const NumberDomain& numbers, const Distribution& distribution);

    // For u in (0, 1): the quantile rounded to the domain's decimals, half away from zero, in its units. Never falls
    // with u. Fails with NoDecimal for a number that does not fit, which only an unbounded domain has.
    std::int64_t At(double u) const;

private:
    // A part of the domain that the distribution gives something: [low, high] with `mass` of it, `before` below it.
    struct Piece {
        double low;
        double high;
        double mass;
        double before;
    };

    void Add(double low, double high, double mass);
    void AddParts(const NumberRange* range);
    double Inside(const Piece& piece, double fraction) const;

    NumberDomain domain;
    Distribution of;
    double deviation = 0;
    double total = 0;
    bool byCount = false;
    std::vector<Piece> pieces;
};

// The quantile over the positions of a list: by count, or by weight.
class TAVREL_VARIATION_API IndexQuantile {
public:
    explicit IndexQuantile(std::size_t size);
    // Fails with std::invalid_argument for weights below zero, not finite, or all zero.
    explicit IndexQuantile(const std::vector<double>& weights);

    // For u in (0, 1).
    std::size_t At(double u) const;

private:
    std::size_t count;
    std::vector<double> upTo; // sum of the weights up to each position; empty by count
};

} // namespace TavrelVariation

#endif
