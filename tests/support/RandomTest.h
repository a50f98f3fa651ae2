#ifndef SUPPORT_RANDOMTEST_H
#define SUPPORT_RANDOMTEST_H

#include <chrono>
#include <cstdlib>
#include <optional>

// How long the changes of a random test go on: for so many rounds, whatever the machine does meanwhile, or for as many
// seconds as TAVREL_RANDOM_SECONDS asks for.
class RandomDuration {
public:
    explicit RandomDuration(int rounds) : left(rounds) {
        const char* const asked = std::getenv("TAVREL_RANDOM_SECONDS");
        if (asked) end = Clock::now() + std::chrono::seconds(std::atoi(asked));
    }
    // Asked once before each round.
    bool IsOver() { return end ? Clock::now() > *end : left-- <= 0; }

private:
    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> end;
    int left;
};

// The seed that a random test begins with: always the same one, or TAVREL_RANDOM_SEED.
inline unsigned RandomSeed() {
    const char* const asked = std::getenv("TAVREL_RANDOM_SEED");
    return asked ? static_cast<unsigned>(std::atoi(asked)) : 4711;
}

#endif
