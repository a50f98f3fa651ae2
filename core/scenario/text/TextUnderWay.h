#ifndef SCENARIO_TEXTUNDERWAY_H
#define SCENARIO_TEXTUNDERWAY_H

#include <cstddef>

#include <scenario/ItemText.h>

// A text that is being read. Texts lie within one another, since an include reads its file.
class TextUnderWay {
public:
    explicit TextUnderWay(ScenarioTextStream& text);
    ~TextUnderWay();
    TextUnderWay(const TextUnderWay&) = delete;
    TextUnderWay& operator=(const TextUnderWay&) = delete;

    // The innermost one, or null.
    static TextUnderWay* Current();

    // Whether the text under way may take one more value of that many bytes. Values are parts of the text and do not
    // overlap, unless quotes are missing: then each line holds all that follows up to the next quote, and a text of
    // such lines would cost the square of its length.
    static bool MayTake(std::size_t bytes) { return !IsLong(bytes) || !Current() || Current()->TakeLong(bytes); }
    // Whether it counts.
    static bool IsLong(std::size_t bytes) {
        constexpr std::size_t kOrdinary = 4096;
        return bytes > kOrdinary;
    }

    ScenarioTextStream& stream;

private:
    bool TakeLong(std::size_t bytes);

    TextUnderWay* outer;
    std::size_t longBytes = 0; // in all long values so far
};

#endif
