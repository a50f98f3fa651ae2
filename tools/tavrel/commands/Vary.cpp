#include <charconv>
#include <filesystem>
#include <fstream>
#include <limits>

#include <cfg/CfgScenario.h>
#include <variation/Results.h>

#include "../Describe.h"
#include "../Files.h"
#include "../Plans.h"
#include "../Progress.h"
#include "../ScenarioLines.h"
#include "../Values.h"
#include "Commands.h"

namespace tavrel {

namespace {

using namespace TavrelVariation;

constexpr std::size_t kRowsForWidths = 1000;     // of a table, by which its columns are as wide as they are
constexpr std::size_t kMostMissing = 10;         // combinations that are told
constexpr std::uint64_t kMostCovered = 10000000; // variants that are looked at for coverage

std::uint64_t NumberOf(const Context& context, const std::string& name, std::uint64_t fallback,
                       const char* wanted = "must be the number of a variant, 0 or more,") {
    if (!context.arguments.Has(name)) return fallback;
    const std::string text = context.arguments.Text(name);
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw Failure{ExitUsage, fmt::format("{} {} not \"{}\"", name, wanted, text)};
    return number;
}

// The variants from --from to --to, both included, in order.
template <typename Visit>
void ForEachVariant(const Context& context, const Plan& plan, const Visit& visit) {
    const std::uint64_t from = NumberOf(context, "--from", 0);
    const std::uint64_t to = NumberOf(context, "--to", std::numeric_limits<std::uint64_t>::max());
    if (to < from) throw Failure{ExitUsage, fmt::format("--to {} lies before --from {}", to, from)};
    Variant variant;
    for (std::uint64_t number = from; plan.NextFrom(number, variant, to); number = variant.number + 1) visit(variant);
}

std::string Quoted(const std::string& text) { return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace); }

// A variant as one line of JSON; what stays the same from line to line is made once.
class JsonLine {
public:
    explicit JsonLine(const Plan& itsPlan) : plan(itsPlan) {
        for (std::size_t i = 0; i < plan.Parameters().size(); ++i)
            keys.push_back((i == 0 ? "" : ",") + Quoted(plan.Parameters()[i].id) + ":\"");
    }

    void Append(const Variant& variant, std::string& line) const {
        line += "{\"number\":";
        line += std::to_string(variant.number);
        if (variant.seed) line += ",\"seed\":" + std::to_string(*variant.seed);
        line += ",\"values\":{";
        for (std::size_t i = 0; i < keys.size(); ++i) {
            line += keys[i];
            const Value& value = variant.values[i];
            if (value.text && NeedsEscape(*value.text)) {
                const std::string escaped = Quoted(*value.text);
                line.append(escaped, 1, escaped.size() - 2);
            } else {
                plan.AppendText(i, value, line);
            }
            line += '"';
        }
        line += "}}\n";
    }

private:
    static bool NeedsEscape(const std::string& text) {
        for (const char letter : text)
            if (letter == '"' || letter == '\\' || static_cast<unsigned char>(letter) < 0x20 ||
                static_cast<unsigned char>(letter) >= 0x7f)
                return true;
        return false;
    }

    const Plan& plan;
    std::vector<std::string> keys;
};

void ListCsv(Context& context, const Plan& plan) {
    const bool seeded = plan.File().repetitions > 1;
    std::string line = seeded ? "number,seed" : "number";
    for (const PlannedParameter& parameter : plan.Parameters()) line += "," + CsvField(parameter.id);
    context.out.Print(line + "\n");
    std::string cell;
    ForEachVariant(context, plan, [&](const Variant& variant) {
        line = std::to_string(variant.number);
        if (variant.seed) line += "," + std::to_string(*variant.seed);
        for (std::size_t i = 0; i < variant.values.size(); ++i) {
            cell.clear();
            plan.AppendText(i, variant.values[i], cell);
            line += ',';
            line += CsvField(cell);
        }
        line += '\n';
        context.out.Print(line);
    });
}

void ListTable(Context& context, const Plan& plan) {
    const bool seeded = plan.File().repetitions > 1;
    std::vector<std::string> head{"number"};
    if (seeded) head.emplace_back("seed");
    for (const PlannedParameter& parameter : plan.Parameters()) head.push_back(OneLine(parameter.name));
    std::vector<std::vector<std::string>> kept{head};
    std::vector<std::size_t> widths;
    const auto print = [&](const std::vector<std::string>& cells) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            line += cells[i];
            const std::size_t width = ColumnsOf(cells[i]);
            if (i + 1 < cells.size()) line.append(width < widths[i] ? widths[i] - width + 2 : 2, ' ');
        }
        context.out.Print(line + "\n");
    };
    const auto printKept = [&] {
        widths.assign(head.size(), 0);
        for (const auto& cells : kept)
            for (std::size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], ColumnsOf(cells[i]));
        for (const auto& cells : kept) print(cells);
        kept.clear();
    };
    ForEachVariant(context, plan, [&](const Variant& variant) {
        std::vector<std::string> cells{std::to_string(variant.number)};
        if (seeded) cells.push_back(std::to_string(variant.seed.value_or(0)));
        for (std::size_t i = 0; i < variant.values.size(); ++i)
            cells.push_back(OneLine(plan.TextOf(i, variant.values[i])));
        if (!widths.empty()) return print(cells);
        kept.push_back(std::move(cells));
        if (kept.size() > kRowsForWidths) printKept();
    });
    if (widths.empty()) printKept();
}

// "70 km/h": a value of the plan with the unit that it is in.
std::string WithUnit(const PlannedParameter& parameter, const Value& value) {
    if (value.text) return *value.text;
    const std::string unit = lmk::toText(parameter.unit);
    return value.number.Text() + (unit.empty() ? "" : " " + unit);
}

// What the scenario has, in the unit of the plan.
std::string PresentOf(const Plan& plan, std::size_t parameter) {
    const PlannedParameter& of = plan.Parameters()[parameter];
    Value value;
    return plan.ReadValue(parameter, of.present, value) ? WithUnit(of, value) : of.present;
}

// The number, with leading zeros, so that names sort like numbers.
std::string ScenarioName(std::uint64_t number) { return fmt::format("{:06}.sce", number); }

Json CombinationJson(const std::vector<AssignmentText>& combination) {
    Json json = Json::object();
    for (const AssignmentText& assignment : combination) json[assignment.name] = assignment.value;
    return json;
}

// Of what coverage is counted where nothing is said: what a plan of `cover` asks for, else pairs, if there are any.
int UsualStrength(const Plan& plan) {
    if (plan.File().method.kind == MethodKind::Cover) return plan.File().method.strength;
    std::size_t factors = plan.Parameters().size();
    for (const PlanFile::Linked& set : plan.File().linked) factors -= set.parameters.size() - 1;
    return factors < 2 ? 1 : 2;
}

// The values of runs: objects with a member "values", one a line, as list and campaigns write them.
class RunLines {
public:
    RunLines(const std::string& itsPath, const Plan& itsPlan) : path(itsPath), plan(itsPlan) {
        const std::string reason = ReasonNotToOpen(path);
        if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
        file.open(path, std::ios::binary);
        for (std::size_t i = 0; i < plan.Parameters().size(); ++i) indexOf[plan.Parameters()[i].id] = i;
    }

    bool Next(std::vector<Value>& values) {
        std::string line;
        do {
            if (!std::getline(file, line)) return false;
            ++row;
        } while (line.find_first_not_of(" \t\r") == std::string::npos);
        const Json json = Json::parse(line, nullptr, false);
        if (!json.is_object() || !json.contains("values") || !json["values"].is_object())
            throw Failure{ExitUnreadable, fmt::format("{}:{}: the line is no object with \"values\"", path, row)};
        values.assign(plan.Parameters().size(), Value{{}, &none});
        for (const auto& [id, text] : json["values"].items()) {
            const auto known = indexOf.find(id);
            if (known == indexOf.end()) continue;
            if (!text.is_string() || !plan.ReadValue(known->second, text.get<std::string>(), values[known->second]))
                throw Failure{ExitUnreadable, fmt::format("{}:{}: {} has a value that it cannot have: {}", path, row,
                                                          id, DumpJsonLine(text))};
        }
        return true;
    }

private:
    const std::string path;
    const Plan& plan;
    std::ifstream file;
    std::map<std::string, std::size_t> indexOf;
    std::size_t row = 0;
    const std::string none = "\n"; // of a parameter that the run does not tell; no value has it
};

} // namespace

int RunVaryPlan(Context& context) {
    const std::string operand = context.arguments.Text("SCENARIO");
    const std::vector<std::string> criteria = context.arguments.Texts("--expect");
    ReadCriteria(criteria);
    const SettableScenario scenario = OpenSettable(context, operand);
    std::vector<std::string> leftOut;
    std::string plan = WithPlanRefusals(
        operand, [&] { return StarterPlan(operand, scenario.configuration, *scenario.settable, &leftOut); });
    if (!criteria.empty()) {
        Json json = Json::parse(plan);
        json["criteria"] = criteria;
        plan = json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
    }
    context.out.Print(plan);
    for (const std::string& sentence : leftOut) Report(OneLine(sentence));
    if (scenario.settable->Declarations().empty())
        Report(OneLine(fmt::format("{} declares nothing that may vary; 'tavrel variadic add' does, and a plan may also "
                                   "name parameters by their ids, as 'tavrel ids' lists them",
                                   operand)));
    return context.status;
}

int RunVaryCount(Context& context) {
    const OpenedPlan opened = OpenPlan(context, context.arguments.Text("PLAN"));
    const VariantCount count = WithPlanRefusals(opened.path, [&] { return opened.plan.Count(); });
    if (context.arguments.Has("--json"))
        context.out.Print(DumpJson({{"count", count.number}, {"exact", count.isExact}}));
    else
        context.out.Print("{}{}\n", count.isExact ? "" : "at most ", count.number);
    if (!count.isExact) Report("the constraints may allow fewer; so many are not counted one by one");
    return context.status;
}

int RunVaryList(Context& context) {
    const std::string format = context.arguments.Text("--format", "table");
    const OpenedPlan opened = OpenPlan(context, context.arguments.Text("PLAN"));
    WithPlanRefusals(opened.path, [&] {
        if (format == "csv") return ListCsv(context, opened.plan);
        if (format == "table") return ListTable(context, opened.plan);
        const JsonLine json(opened.plan);
        std::string line;
        ForEachVariant(context, opened.plan, [&](const Variant& variant) {
            line.clear();
            json.Append(variant, line);
            context.out.Print(line);
        });
    });
    return context.status;
}

int RunVaryShow(Context& context) {
    const std::uint64_t number = NumberOf(context, "N", 0);
    const OpenedPlan opened = OpenPlan(context, context.arguments.Text("PLAN"));
    const Plan& plan = opened.plan;
    Variant variant;
    const bool exists = WithPlanRefusals(opened.path, [&] { return number < plan.End() && plan.At(number, variant); });
    if (!exists)
        throw Failure{ExitUsage,
                      number < plan.End()
                          ? fmt::format("{}: there is no variant {}; the constraints leave it out", opened.path, number)
                          : fmt::format("{}: there is no variant {}; the numbers end before {}", opened.path, number,
                                        plan.End())};
    if (context.arguments.Has("--json")) {
        Json json{{"number", variant.number}};
        if (variant.seed) json["seed"] = *variant.seed;
        Json& values = json["values"] = Json::array();
        for (std::size_t i = 0; i < variant.values.size(); ++i) {
            const PlannedParameter& parameter = plan.Parameters()[i];
            Json value{{"id", parameter.id}, {"name", parameter.name}, {"type", WordOf(parameter.type)}};
            if (*lmk::toText(parameter.unit) != '\0') value["unit"] = lmk::toText(parameter.unit);
            value["value"] = plan.TextOf(i, variant.values[i]);
            value["present"] = parameter.present;
            values.push_back(std::move(value));
        }
        context.out.Print(DumpJson(json));
        return context.status;
    }
    context.out.Print("variant {}{}\n", variant.number, variant.seed ? fmt::format(", seed {}", *variant.seed) : "");
    std::size_t nameWidth = 0, valueWidth = 0;
    for (std::size_t i = 0; i < variant.values.size(); ++i) {
        nameWidth = std::max(nameWidth, ColumnsOf(OneLine(plan.Parameters()[i].name)));
        valueWidth = std::max(valueWidth, ColumnsOf(OneLine(WithUnit(plan.Parameters()[i], variant.values[i]))));
    }
    for (std::size_t i = 0; i < variant.values.size(); ++i) {
        const PlannedParameter& parameter = plan.Parameters()[i];
        const std::string name = OneLine(parameter.name), value = OneLine(WithUnit(parameter, variant.values[i]));
        context.out.Print("  {}{}  {}{}  (file: {})\n", name, std::string(nameWidth - ColumnsOf(name), ' '), value,
                          std::string(valueWidth - ColumnsOf(value), ' '), OneLine(PresentOf(plan, i)));
        if (parameter.name != parameter.id) context.out.Print("    {}\n", context.out.Faint(parameter.id));
    }
    return context.status;
}

int RunVaryWrite(Context& context) {
    if (!context.arguments.Has("--output"))
        throw Failure{ExitUsage, "--output names the folder to write to; it is missing"};
    const std::filesystem::path folder = context.arguments.Text("--output");
    const OpenedPlan opened = OpenPlan(context, context.arguments.Text("PLAN"));
    const Plan& plan = opened.plan;
    // A plan whose draws run out is refused before anything is written.
    WithPlanRefusals(opened.path, [&] { ForEachVariant(context, plan, [](const Variant&) {}); });
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw Failure{ExitUnreadable, fmt::format("{}: {}", folder.string(), error.message())};
    const JsonLine json(plan);
    std::string lines;
    Progress progress(static_cast<double>(plan.End()), "variants");
    WithPlanRefusals(opened.path, [&] {
        ForEachVariant(context, plan, [&](const Variant& variant) {
            SettableScenario scenario = opened.scenario.Again();
            scenario.settable->Apply(ReadAll(*scenario.settable, plan.Assignments(variant), {}));
            const std::string target = (folder / ScenarioName(variant.number)).string();
            cfg::CfgScenario& file = scenario.opened->File();
            if (!file.save(target.c_str(), static_cast<Commons::Encoding::Mode>(1), false))
                throw Failure{ExitUnreadable, PlacedLine(file.errorMessage)};
            json.Append(variant, lines);
            progress.Reach(static_cast<double>(variant.number));
        });
    });
    SaveFile((folder / "variants.jsonl").string(), lines);
    return context.status;
}

int RunVaryCoverage(Context& context) {
    const OpenedPlan opened = OpenPlan(context, context.arguments.Text("PLAN"));
    const Plan& plan = opened.plan;
    const std::uint64_t strength =
        NumberOf(context, "--strength", static_cast<std::uint64_t>(UsualStrength(plan)), "is from 1 to 6,");
    if (strength < 1 || strength > 6)
        throw Failure{ExitUsage, fmt::format("--strength is from 1 to 6, not {}", strength)};
    PlanCoverage coverage = WithPlanRefusals(opened.path, [&] {
        if (context.arguments.Has("--runs")) {
            RunLines runs(context.arguments.Text("--runs"), plan);
            return plan.Coverage(
                static_cast<int>(strength), [&](std::vector<Value>& values) { return runs.Next(values); },
                kMostMissing);
        }
        if (plan.End() > kMostCovered)
            throw Refused("method",
                          "makes too many variants to look at them all; write some with list and give them to --runs");
        Variant variant;
        std::uint64_t number = 0;
        return plan.Coverage(
            static_cast<int>(strength),
            [&](std::vector<Value>& values) {
                if (!plan.NextFrom(number, variant)) return false;
                number = variant.number + 1;
                values = variant.values;
                return true;
            },
            kMostMissing);
    });
    if (context.arguments.Has("--json")) {
        Json json{{"strength", strength},
                  {"variants", coverage.variants},
                  {"covered", coverage.covered},
                  {"possible", coverage.possible}};
        Json& missing = json["missing"] = Json::array();
        for (const auto& combination : coverage.missing) missing.push_back(CombinationJson(combination));
        context.out.Print(DumpJson(json));
        return context.status;
    }
    context.out.Print("{} of {} combinations of {} parameter{} covered by {} variant{}\n", coverage.covered,
                      coverage.possible, strength, strength == 1 ? "" : "s", coverage.variants,
                      coverage.variants == 1 ? "" : "s");
    for (const auto& combination : coverage.missing) {
        std::string line;
        for (const AssignmentText& assignment : combination)
            line += (line.empty() ? "" : ", ") + assignment.name + "=" + assignment.value;
        context.out.Print("missing: {}\n", OneLine(line));
    }
    const std::uint64_t rest = coverage.possible - coverage.covered - coverage.missing.size();
    if (rest > 0) context.out.Print("and {} more\n", rest);
    return context.status;
}

int RunVarySchema(Context& context) {
    context.out.Print(PlanSchema());
    return context.status;
}

} // namespace tavrel
