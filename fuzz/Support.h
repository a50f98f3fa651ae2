#ifndef FUZZ_SUPPORT_H
#define FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

// What the targets share. A target is one unit with the function LLVMFuzzerTestOneInput, linked once with the fuzzing
// engine and once, by every compiler, with ReplayMain.cpp.

// Leaves AssertAbort in place of the end of the process: a named fatal assertion is an answer. One that is not named
// in assertions.txt ends the process after all, as every other fault does.
struct Asserted {};

// How often each assertion was reached so far, by "source:line".
const std::map<std::string, std::size_t>& ReachedAssertions();

// Runs `body` up to an assertion, if it reaches one: then false.
template <class Body>
bool Outlives(Body&& body) {
    try {
        body();
        return true;
    } catch (const Asserted&) {
        return false;
    }
}

// Ends the process unless `holds`, with the sentence that does not hold.
void Demand(bool holds, const char* sentence);
void Demand(bool holds, const char* sentence, const std::string& detail);

// The bytes of an input as a text and, where a target needs more than one thing, as several.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest(reinterpret_cast<const char*>(data), size) {}

    // Up to the next line that is "%%", or all that is left.
    std::string NextPart();
    std::string Rest() const { return std::string(rest); }

private:
    std::string_view rest;
};

// A folder of this process that goes with it, in memory where the system has such a place.
class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string Path(const std::string& relative) const { return folder + "/" + relative; }
    // Makes the folders above it as needed. Answers the path.
    std::string Write(const std::string& relative, std::string_view bytes) const;
    std::string Read(const std::string& relative) const;

private:
    std::string folder;
};

#endif
