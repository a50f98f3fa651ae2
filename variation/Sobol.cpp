#include <variation/Sobol.h>

#include <bit>
#include <stdexcept>

#include <boost/random/sobol.hpp>

namespace TavrelVariation {

std::size_t Sobol::MaximumDimensions() { return boost::random::default_sobol_table::max_dimension; }

Sobol::Sobol(std::size_t dimensions) {
    if (dimensions > MaximumDimensions())
        throw std::invalid_argument("there are direction numbers for " + std::to_string(MaximumDimensions()) +
                                    " dimensions, not for " + std::to_string(dimensions));
    if (dimensions == 0) return;
    directions.resize(dimensions * kBits);
    // The Gray code of 2^(bit + 1) - 1 is 2^bit, so that point is the direction number of the bit itself. The engine
    // begins after the zero point, which is put back here by counting one less.
    boost::random::sobol engine(dimensions);
    for (std::size_t bit = 0; bit < kBits; ++bit) {
        const std::uint64_t before = bit + 1 < kBits ? (std::uint64_t{1} << (bit + 1)) - 2 : ~std::uint64_t{0} - 1;
        engine.seed(before);
        for (std::size_t dimension = 0; dimension < dimensions; ++dimension)
            directions[dimension * kBits + bit] = engine();
    }
}

std::uint64_t Sobol::Coordinate(std::uint64_t point, std::size_t dimension) const {
    const std::uint64_t* const of = directions.data() + dimension * kBits;
    std::uint64_t coordinate = 0;
    for (std::uint64_t gray = point ^ (point >> 1); gray != 0; gray &= gray - 1)
        coordinate ^= of[std::countr_zero(gray)];
    return coordinate;
}

std::uint64_t OwenScrambled(std::uint64_t coordinate, std::uint64_t key) {
    constexpr unsigned kScrambled = 52;
    std::uint64_t flips = 0;
    for (unsigned bit = 0; bit < kScrambled; ++bit) {
        // The node of the tree: the bits above, with a leading one that tells beginnings of different length apart.
        const std::uint64_t node = bit == 0 ? 1 : (std::uint64_t{1} << bit) | (coordinate >> (64 - bit));
        std::uint64_t hash = (node * 0x9E3779B97F4A7C15u) ^ key;
        hash = (hash ^ (hash >> 32)) * 0xD6E8FEB86659FD93u;
        hash = (hash ^ (hash >> 32)) * 0xD6E8FEB86659FD93u;
        flips |= (hash >> 63) << (63 - bit);
    }
    return coordinate ^ flips;
}

} // namespace TavrelVariation
