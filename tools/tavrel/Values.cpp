#include "Values.h"

#include <fstream>
#include <iterator>
#include <set>

#include <fmt/format.h>

#include "Describe.h"
#include "Files.h"
#include "Spelling.h"

namespace tavrel {

using TavrelSimulation::Criterion;
using TavrelVariation::AssignmentText;

std::vector<AssignmentText> ReadAssignments(const std::vector<std::string>& texts) {
    return WithRefusals([&] {
        std::vector<AssignmentText> assignments;
        for (const std::string& text : texts) assignments.push_back(TavrelVariation::ReadAssignment(text));
        return assignments;
    });
}

void NameAsInScenario(const TavrelVariation::Settable& settable, std::vector<AssignmentText>& assignments) {
    std::vector<std::string> names;
    for (const TavrelVariation::Target& target : settable.Targets()) names.push_back(target.id);
    for (const TavrelVariation::Declaration& declaration : settable.Declarations()) names.push_back(declaration.name);
    for (AssignmentText& assignment : assignments) assignment.name = MeantOf(assignment.name, names);
}

std::vector<AssignmentText> ReadAssignmentFile(const std::string& path) {
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::set<std::string> names;
    std::string twice;
    const auto look = [&](int depth, Json::parse_event_t event, Json& value) {
        if (depth == 1 && event == Json::parse_event_t::key && !names.insert(value.get<std::string>()).second)
            twice = value.get<std::string>();
        return true;
    };
    const Json json = Json::parse(text, look, false);
    if (json.is_discarded()) throw Failure{ExitUsage, path + ": this is no JSON"};
    if (!json.is_object()) throw Failure{ExitUsage, path + ": this is no object of names and values"};
    if (!twice.empty()) throw Failure{ExitUsage, fmt::format("{}: \"{}\" is set twice", path, OneLine(twice))};
    std::vector<AssignmentText> assignments;
    for (const auto& [name, value] : json.items()) {
        if (!value.is_string())
            throw Failure{ExitUsage, fmt::format("{}: the value of \"{}\" is no text, such as \"90 km/h\" or \"true\"",
                                                 path, OneLine(name))};
        assignments.push_back({name, value.get<std::string>()});
    }
    return assignments;
}

std::vector<Criterion> ReadCriteria(const std::vector<std::string>& texts) {
    return WithRefusals([&] {
        std::vector<Criterion> criteria;
        for (const std::string& text : texts) criteria.push_back(TavrelSimulation::ParseCriterion(text));
        return criteria;
    });
}

} // namespace tavrel
