#include "CampaignJson.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include <fmt/format.h>
#include <lmk/units.h>
#include <nlohmann/json.hpp>
#include <simulation/Sha256.h>
#include <variation/Refused.h>

#include "CampaignFolder.h"

namespace TavrelVariation {

namespace {

using Json = nlohmann::ordered_json;
using TavrelSimulation::Input;

constexpr const char* kFormat = "tavrel-campaign/1";

// Ranges, since most campaigns have one: [[0, 999]].
Json RangesOf(const std::vector<std::uint64_t>& numbers) {
    Json ranges = Json::array();
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
        ranges.push_back(Json::array({numbers[i], numbers[last]}));
        i = last + 1;
    }
    return ranges;
}

std::vector<std::uint64_t> NumbersOf(const Json& ranges) {
    std::vector<std::uint64_t> numbers;
    for (const Json& range : ranges) {
        const auto first = range.at(0).get<std::uint64_t>(), last = range.at(1).get<std::uint64_t>();
        if (last < first || last - first >= kMostRuns || (!numbers.empty() && first <= numbers.back()))
            throw CampaignError("its numbers are no ranges in their order");
        for (std::uint64_t number = first; number <= last; ++number) {
            if (numbers.size() >= kMostRuns) throw CampaignError("it has too many numbers");
            numbers.push_back(number);
        }
    }
    return numbers;
}

Json InputsJson(const std::vector<Input>& inputs) {
    Json json = Json::array();
    for (const Input& input : inputs)
        json.push_back({{"role", input.role}, {"file", input.file}, {"sha256", input.sha256}});
    return json;
}

std::string TimingOf(const PlanFile::Run& run) {
    std::string text = fmt::format("--from {} --step {}", run.from, run.step);
    if (run.until) text += fmt::format(" --until {}", *run.until);
    return text;
}

// The plan with what it left to the scenario and to the command, so that the file alone says what is run.
PlanFile FilledIn(const CampaignSetup& setup) {
    PlanFile file = setup.plan->File();
    if (!setup.configuration.empty()) file.configuration = setup.configuration;
    if (!setup.script.empty()) file.script = setup.script;
    if (!file.run.until) file.run.until = setup.until;
    if (!file.parameters) {
        file.parameters.emplace();
        for (const PlannedParameter& parameter : setup.plan->Parameters()) {
            if (parameter.place.rfind("linked/", 0) == 0) continue;
            file.parameters->emplace_back();
            file.parameters->back().name = parameter.name;
        }
    }
    return file;
}

PlannedRecords PlannedOf(const CampaignSheet& sheet) {
    std::vector<std::string> ids;
    for (const CampaignSheet::Parameter& parameter : sheet.parameters) ids.push_back(parameter.id);
    return {std::move(ids), sheet.criteria};
}

void ReadInto(const Json& json, FrozenCampaign& frozen) {
    frozen.tool = json.at("tool").get<std::string>();
    frozen.installation = json.at("installation").get<std::string>();
    frozen.planText = json.at("plan").dump(2) + "\n";
    frozen.plan = PlanFile::Read(frozen.planText);
    CampaignSheet& sheet = frozen.sheet;
    sheet.scenario = frozen.plan.scenario;
    sheet.configuration = json.at("configuration").get<std::string>();
    sheet.script = frozen.plan.script.value_or("");
    sheet.timing = TimingOf(frozen.plan.run);
    sheet.criteria = frozen.plan.criteria;
    for (const Json& parameter : json.at("parameters"))
        sheet.parameters.push_back({parameter.at("id").get<std::string>(), parameter.at("name").get<std::string>(),
                                    parameter.at("unit").get<std::string>(), parameter.at("numeric").get<bool>()});
    for (const Json& input : json.at("inputs"))
        frozen.inputs.push_back({input.at("role").get<std::string>(), input.at("file").get<std::string>(),
                                 input.at("sha256").get<std::string>()});
    frozen.numbers = NumbersOf(json.at("numbers"));
    sheet.count = frozen.numbers.size();
    frozen.planned = PlannedOf(sheet);
    if (!frozen.planned.Take(frozen.numbers, json.at("marks").get<std::string>()))
        throw CampaignError("it has another number of marks than of variants");
}

} // namespace

std::string FrozenCampaign::Text() const {
    Json json = {{"format", kFormat},
                 {"tool", tool},
                 {"installation", installation},
                 {"configuration", sheet.configuration},
                 {"algorithms",
                  {{"bits", "Philox4x32-10"},
                   {"cover", "rows one at a time, then a tabu search over them"},
                   {"quantiles", "Boost.Math"},
                   {"sobol", "Joe-Kuo direction numbers, Owen scrambling by hash"},
                   {"trace", "SHA-256"}}},
                 {"seed", plan.seed},
                 {"count", numbers.size()},
                 {"plan", Json::parse(planText)}};
    json["parameters"] = Json::array();
    for (const CampaignSheet::Parameter& parameter : sheet.parameters)
        json["parameters"].push_back({{"id", parameter.id},
                                      {"name", parameter.name},
                                      {"unit", parameter.unit},
                                      {"numeric", parameter.isNumeric}});
    json["inputs"] = InputsJson(inputs);
    json["numbers"] = RangesOf(numbers);
    json["marks"] = planned.Marks();
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

FrozenCampaign FrozenCampaign::Read(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const int failure = errno;
    if (!stream && failure != ENOENT && failure != ENOTDIR) throw FileError(file, failure);
    if (!stream)
        throw CampaignError(file +
                            " cannot be opened, so its folder holds no campaign; tavrel campaign init begins one");
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const Json json = Json::parse(bytes, nullptr, false);
    if (!json.is_object() || !json.contains("format") || !json["format"].is_string())
        throw CampaignError(file + " is no campaign");
    if (json["format"] != kFormat)
        throw CampaignError(fmt::format("{} has the format {}, and this command knows {}", file,
                                        json["format"].get<std::string>(), kFormat));
    FrozenCampaign frozen;
    try {
        ReadInto(json, frozen);
    } catch (const nlohmann::json::exception&) {
        throw CampaignError(file + " is no whole campaign: a member is missing or of another type");
    } catch (const Refused& refused) {
        throw CampaignError(fmt::format("{}: plan/{}", file, refused.what()));
    } catch (const CampaignError& error) {
        throw CampaignError(fmt::format("{}: {}", file, error.what()));
    }
    return frozen;
}

FrozenCampaign Freeze(const CampaignSetup& setup) {
    const Plan& plan = *setup.plan;
    FrozenCampaign frozen;
    frozen.tool = setup.tool;
    frozen.installation = setup.installation;
    frozen.plan = FilledIn(setup);
    frozen.planText = frozen.plan.Text();
    frozen.inputs = setup.inputs;
    CampaignSheet& sheet = frozen.sheet;
    sheet.scenario = frozen.plan.scenario;
    sheet.configuration = setup.configuration;
    for (const PlannedParameter& parameter : plan.Parameters())
        sheet.parameters.push_back({parameter.id, parameter.name, lmk::toText(parameter.unit),
                                    parameter.type == ValueType::Integer || parameter.type == ValueType::Real});
    const VariantCount count = plan.Count();
    if (!count.isExact || count.number > kMostRuns)
        throw CampaignError(fmt::format("the plan has {}{} variants, and a campaign has at most {} runs",
                                        count.isExact ? "" : "up to ", count.number, kMostRuns));
    Variant variant;
    sheet.criteria = frozen.plan.criteria;
    frozen.planned = PlannedOf(sheet);
    RunRecord record;
    for (std::uint64_t from = 0; plan.NextFrom(from, variant); from = variant.number + 1) {
        frozen.numbers.push_back(variant.number);
        Complete(record, variant, plan);
        frozen.planned.Add(record);
    }
    sheet.count = frozen.numbers.size();
    return frozen;
}

std::string DifferenceOf(const FrozenCampaign& present, const FrozenCampaign& wanted) {
    if (Json::parse(present.planText) != Json::parse(wanted.planText)) return "its plan is another one";
    if (present.numbers != wanted.numbers || present.planned.Marks() != wanted.planned.Marks())
        return "its variants are others";
    if (present.sheet.configuration != wanted.sheet.configuration) return "its configuration is another one";
    return DifferenceOf(present.inputs, wanted.inputs);
}

std::string DifferenceOf(const std::vector<Input>& present, const std::vector<Input>& wanted) {
    const auto find = [](const std::vector<Input>& inputs, const Input& wantedInput) -> const Input* {
        for (const Input& input : inputs)
            if (input.role == wantedInput.role && input.file == wantedInput.file) return &input;
        return nullptr;
    };
    std::string text;
    const auto tell = [&](const Input& input, const char* what) {
        text += fmt::format("{}{} {} {}", text.empty() ? "" : ", ", input.role, input.file, what);
    };
    for (const Input& input : present) {
        const Input* now = find(wanted, input);
        if (!now)
            tell(input, "is not there any more");
        else if (now->sha256.empty() && !input.sha256.empty())
            tell(input, "cannot be read any more");
        else if (now->sha256 != input.sha256)
            tell(input, "has changed since the campaign began");
    }
    for (const Input& input : wanted)
        if (!find(present, input)) tell(input, "is new");
    return text;
}

std::vector<Input> AsTheyAreNow(std::vector<Input> inputs, const std::string& installationFile) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(fs::absolute(installationFile).parent_path(), error);
    for (Input& input : inputs) input.sha256 = TavrelSimulation::Sha256OfFile((folder / input.file).string());
    return inputs;
}

} // namespace TavrelVariation
