#include "Context.h"

namespace tavrel {

namespace {

constexpr double kDefaultSeconds = 60;
constexpr int kWarning = 3; // severity from which a line of the log says that something is wrong

} // namespace

TavrelProcesses::ChildSettings Context::Children() const {
    TavrelProcesses::ChildSettings settings;
    settings.seconds = arguments.Number("--timeout", kDefaultSeconds);
    if (settings.seconds <= 0) throw Failure{ExitUsage, "--timeout takes a number of seconds above 0"};
    int jobs = static_cast<int>(TavrelProcesses::UsableCores());
    if (arguments.Has("--jobs") && (!ReadNumber(arguments.Text("--jobs"), jobs) || jobs < 1))
        throw Failure{ExitUsage, fmt::format("--jobs takes a number of processes from 1 on, not \"{}\"",
                                             arguments.Text("--jobs"))};
    settings.jobs = static_cast<std::size_t>(jobs);
    return settings;
}

void Context::TellLog(bool onFailure) {
    const bool all = arguments.Has("--verbose");
    for (const LogLine& line : out.TakeLog())
        if (all || (onFailure && line.severity >= kWarning)) Report(line.text);
}

} // namespace tavrel
