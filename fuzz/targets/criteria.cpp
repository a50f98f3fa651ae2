// A criterion, and after a line "%%" a trace that it judges: an answer, or a refusal with a place within the text.

#include <sstream>

#include <simulation/Criteria.h>

#include "../Support.h"

using namespace TavrelSimulation;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ::Input input(data, size);
    const std::string text = input.NextPart();
    std::vector<Event> events;
    std::istringstream lines(input.Rest());
    for (std::string line; std::getline(lines, line);) {
        try {
            if (std::optional<Event> event = EventOf(line)) events.push_back(std::move(*event));
        } catch (const TraceError&) {
            // no event
        }
    }
    const Names* names = nullptr;
    for (const Event& event : events)
        if (const auto* start = std::get_if<RunStart>(&event.what); start && start->names) names = &*start->names;
    try {
        Judge judge({ParseCriterion(text)}, names);
        for (const Event& event : events) judge.Hear(event);
        Demand(judge.Outcomes().size() == 1, "one criterion has one outcome");
    } catch (const CriterionError& error) {
        Demand(error.column >= 1 && error.column <= text.size() + 1, "a refusal has a place in the text", text);
    }
    return 0;
}
