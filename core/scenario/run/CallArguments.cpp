#include "run/CallArguments.h"

#include <algorithm>
#include <deque>
#include <utility>

#include <scenario/CallUnderWay.h>
#include <scenario/Parameter.h>

#include "text/Assertion.h"
#include "text/Log.h"

namespace {

constexpr const char* kSource = "function";

// One record set for each level of calls within calls. A deque, since records must not move while they are in use.
std::deque<ParameterValues>& Levels() {
    static std::deque<ParameterValues> levels;
    return levels;
}
std::size_t depth = 0;

const Function* callUnderWay = nullptr;

// A text longer than this is given back, so that one huge value does not stay for the life of the process.
constexpr std::size_t kKeptText = 4096;

ParameterValues& NextLevel() {
    std::deque<ParameterValues>& levels = Levels();
    if (depth == levels.size()) levels.emplace_back();
    return levels[depth];
}

void Refresh(ParameterValue& value) {
    value.tag = TagVoid;
    value.number = 0.0F;
    if (value.text.capacity() > kKeptText)
        value.text = std::string();
    else
        value.text.clear();
}

std::string NameInLog(const Function& call) { return std::string(KindKeyword(call.kind)) + " [" + call.name + "]"; }

} // namespace

CallArguments::Level::Level() : values(NextLevel()) { ++depth; }

CallArguments::Level::~Level() {
    for (std::size_t i = 0; i < filled; ++i) Refresh(values[i]);
    --depth;
}

CallArguments::CallArguments(const Function& call) {
    const std::size_t count = std::min(call.parameters.size(), level.values.size());
    if (count < call.parameters.size()) TellTooLong(call);
    for (; level.filled < count;) {
        const Parameter* parameter = call.parameters[level.filled];
        if (!parameter) AssertionFailed(kSource, 633);
        // Counted first, for a fill that throws half way.
        parameter->FillValue(level.values[level.filled++]);
    }
    // Only now: the calls within this one ran while its arguments were filled.
    outerCall = std::exchange(callUnderWay, &call);
}

CallArguments::~CallArguments() { callUnderWay = outerCall; }

void CallArguments::TellTooLong(const Function& call) {
    if (call.isTooLongTold) return;
    call.isTooLongTold = true;
    LogMessage(LogSeverity::Error, NameInLog(call) + ": an implementation receives twelve parameters, not " +
                                       std::to_string(call.parameters.size()));
}

void LogMissingEntry(const Function& call, std::int32_t code) {
    LogMessage(LogSeverity::Error, NameInLog(call) + ": no implementation for CODE " + std::to_string(code));
}

const Function* CallUnderWay() { return callUnderWay; }

Variable* ReferencedVariable(std::size_t argument) {
    if (!callUnderWay || argument >= callUnderWay->parameters.size()) return nullptr;
    const Parameter* parameter = callUnderWay->parameters[argument];
    return parameter ? ReferencedVariable(*parameter) : nullptr;
}
