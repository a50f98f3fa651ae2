#include <fstream>

#include <simulation/Verdict.h>

#include "../Describe.h"
#include "../Files.h"
#include "../TraceText.h"
#include "../Values.h"
#include "Commands.h"

namespace tavrel {

namespace {

using namespace TavrelSimulation;

// The events of one run.
std::vector<Event> ReadTrace(const std::string& path) {
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    std::ifstream file(path, std::ios::binary);
    std::vector<Event> events;
    std::size_t row = 0;
    bool started = false;
    for (std::string line; std::getline(file, line);) {
        ++row;
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        const auto refuse = [&](const std::string& why) {
            throw Failure{ExitUnreadable, fmt::format("{}:{}: {}", path, row, OneLine(why))};
        };
        try {
            std::optional<Event> event = EventOf(line);
            if (!event) continue;
            const bool starts = std::holds_alternative<RunStart>(event->what);
            if (starts && started) refuse("a second run begins here, and only one can be judged");
            started = started || starts;
            events.push_back(std::move(*event));
        } catch (const TraceError& error) {
            refuse(std::string("this is no event of a trace: ") + error.what());
        }
    }
    if (events.empty()) throw Failure{ExitUnreadable, path + ": there is no event of a run in it"};
    return events;
}

} // namespace

int RunJudge(Context& context) {
    const std::vector<Criterion> criteria = ReadCriteria(context.arguments.Texts("--expect"));
    if (criteria.empty()) throw Failure{ExitUsage, "--expect is required: a trace is judged by criteria"};
    const std::vector<Event> events = ReadTrace(context.arguments.Text("TRACE"));
    const Names* names = nullptr;
    for (const Event& event : events)
        if (const auto* start = std::get_if<RunStart>(&event.what); start && start->names) names = &*start->names;
    return WithRefusals([&] {
        Judge judge(criteria, names);
        for (const Event& event : events) judge.Hear(event);
        const std::vector<Outcome> outcomes = judge.Outcomes();
        const Verdict verdict = VerdictOf(outcomes);
        if (context.arguments.Has("--json")) {
            Json list = Json::array();
            for (const Outcome& outcome : outcomes)
                list.push_back({{"criterion", outcome.criterion},
                                {"holds", outcome.holds},
                                {"margin", outcome.margin ? Json(*outcome.margin) : Json()}});
            context.out.Print(DumpJson({{"verdict", WordOf(verdict)}, {"criteria", list}}));
        } else {
            context.out.Print(OutcomesText(outcomes) + fmt::format("verdict: {}\n", WordOf(verdict)));
        }
        return verdict == Verdict::Passed ? context.status : std::max<int>(ExitFindings, context.status);
    });
}

} // namespace tavrel
