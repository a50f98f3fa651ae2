#ifndef SCENARIO_LOGLINES_H
#define SCENARIO_LOGLINES_H

#include <cstddef>
#include <streambuf>
#include <string>
#include <vector>

#include <scenario/Export.h>

// One message of the item model.
struct LogLine {
    int severity = 0; // 1 information, 2 progress, 3 warning, 4 error, 0 for a line without a mark
    std::string text; // as it was written, which may hold control characters of a script
};

// Gathers what the item model writes to `scenarioLog` and cuts it into lines. Put it into a stream and let
// `scenarioLog` point to that; both must live until the log is another one again.
class TAVREL_MODEL_API LogLines : public std::streambuf {
public:
    // A log that nobody takes must not grow for ever: lines beyond these are dropped.
    static constexpr std::size_t kMost = 10000;

    // The lines that ended since the last call, in their order.
    std::vector<LogLine> Take();

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;

private:
    void EndLine();

    std::string current;
    std::vector<LogLine> lines;
};

#endif
