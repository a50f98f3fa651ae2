#ifndef SUPPORT_RANDOMTEST_H
#define SUPPORT_RANDOMTEST_H

#include <chrono>
#include <cstdlib>

// How long the changes of a random test go on: a second, or as many as TAVREL_RANDOM_SECONDS asks for.
class RandomDuration {
public:
    RandomDuration() {
        const char* const asked = std::getenv("TAVREL_RANDOM_SECONDS");
        end = Clock::now() + std::chrono::seconds(asked ? std::atoi(asked) : 1);
    }
    bool IsOver() const { return Clock::now() > end; }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point end;
};

// The seed that a random test begins with: always the same one, or TAVREL_RANDOM_SEED.
inline unsigned RandomSeed() {
    const char* const asked = std::getenv("TAVREL_RANDOM_SEED");
    return asked ? static_cast<unsigned>(std::atoi(asked)) : 4711;
}

#endif
