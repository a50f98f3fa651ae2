#include <variation/Philox.h>

namespace TavrelVariation {

namespace {

constexpr std::uint32_t kMultiplier0 = 0xD2511F53, kMultiplier1 = 0xCD9E8D57;
constexpr std::uint32_t kWeyl0 = 0x9E3779B9, kWeyl1 = 0xBB67AE85;
constexpr int kRounds = 10;

constexpr unsigned kFeistelRounds = 6;

std::uint32_t High(std::uint64_t number) { return static_cast<std::uint32_t>(number >> 32); }
std::uint32_t Low(std::uint64_t number) { return static_cast<std::uint32_t>(number); }

// The last step of SplitMix64: every bit of the answer depends on every bit of the number.
std::uint64_t Mixed(std::uint64_t number) {
    number = (number ^ (number >> 30)) * 0xBF58476D1CE4E5B9u;
    number = (number ^ (number >> 27)) * 0x94D049BB133111EBu;
    return number ^ (number >> 31);
}

} // namespace

std::array<std::uint32_t, 4> Philox(std::array<std::uint32_t, 4> counter, std::array<std::uint32_t, 2> key) {
    for (int round = 0; round < kRounds; ++round) {
        const std::uint64_t product0 = std::uint64_t{kMultiplier0} * counter[0];
        const std::uint64_t product1 = std::uint64_t{kMultiplier1} * counter[2];
        counter = {High(product1) ^ counter[1] ^ key[0], Low(product1), High(product0) ^ counter[3] ^ key[1],
                   Low(product0)};
        key[0] += kWeyl0;
        key[1] += kWeyl1;
    }
    return counter;
}

std::uint64_t RandomBits(std::uint64_t seed, std::uint64_t index, std::uint64_t stream) {
    const auto bits = Philox({Low(index), High(index), Low(stream), High(stream)}, {Low(seed), High(seed)});
    return std::uint64_t{bits[1]} << 32 | bits[0];
}

double UnitNumber(std::uint64_t bits) {
    constexpr double kStep = 1.0 / (std::uint64_t{1} << 53);
    return static_cast<double>((bits >> 12 << 1) + 1) * kStep;
}

std::uint64_t StreamOf(std::string_view name) {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const char letter : name) hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3u;
    return hash;
}

Permutation::Permutation(std::uint64_t size, std::uint64_t key) : count(size), seed(key) {
    while (halfBits < 31 && (std::uint64_t{1} << (2 * halfBits)) < count) ++halfBits;
}

std::uint64_t Permutation::operator()(std::uint64_t index) const {
    const std::uint64_t mask = (std::uint64_t{1} << halfBits) - 1;
    do {
        std::uint64_t left = index >> halfBits, right = index & mask;
        for (unsigned round = 0; round < kFeistelRounds; ++round) {
            const std::uint64_t next = left ^ (Mixed(seed + (right << 3 | round) * 0x9E3779B97F4A7C15u) & mask);
            left = right;
            right = next;
        }
        index = left << halfBits | right;
    } while (index >= count);
    return index;
}

} // namespace TavrelVariation
