#include <variation/PlanFile.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <set>

#include <nlohmann/json.hpp>
#include <scenario/NearestName.h>
#include <variation/Refused.h>

namespace TavrelVariation {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kFormat = "tavrel-plan/1";
constexpr std::uint64_t kMostNumbers = std::uint64_t{1} << 53;
constexpr std::uint64_t kMostEffort = 1000;

// clang-format off
struct MethodRow { MethodKind kind; const char* word; std::vector<std::string> needed; std::vector<std::string> free; };
const std::vector<MethodRow>& Methods() {
    static const std::vector<MethodRow> rows = {
        {MethodKind::Defaults,       "defaults",        {},           {}},
        {MethodKind::OneAtATime,     "one-at-a-time",   {},           {}},
        {MethodKind::Boundary,       "boundary",        {},           {}},
        {MethodKind::Grid,           "grid",            {},           {}},
        {MethodKind::List,           "list",            {},           {"rows"}},
        {MethodKind::Random,         "random",          {"count"},    {}},
        {MethodKind::LatinHypercube, "latin-hypercube", {"count"},    {}},
        {MethodKind::Sobol,          "sobol",           {"count"},    {}},
        {MethodKind::Cover,          "cover",           {"strength"}, {"effort"}},
    };
    return rows;
}

struct DistributionRow { DistributionKind kind; const char* word; std::vector<std::string> needed; };
const std::vector<DistributionRow>& Distributions() {
    static const std::vector<DistributionRow> rows = {
        {DistributionKind::Uniform,        "uniform",         {}},
        {DistributionKind::Normal,         "normal",          {"expectedValue", "variance"}},
        {DistributionKind::LogNormal,      "log-normal",      {"expectedValue", "variance"}},
        {DistributionKind::Poisson,        "poisson",         {"expectedValue"}},
        {DistributionKind::Histogram,      "histogram",       {"bins"}},
        {DistributionKind::ProbabilitySet, "probability-set", {"elements"}},
    };
    return rows;
}
// clang-format on

std::string Meant(const std::string& name, const std::vector<std::string>& candidates) {
    const std::string near = NearestName(name, candidates);
    return near.empty() ? "" : ", did you mean " + near;
}

// A value of the file with the way to it. Asked for something that it is not, it refuses and names the place.
class Entry {
public:
    Entry(const Json& value, std::string way) : json(value), place(std::move(way)) {}

    const std::string& Place() const { return place; }

    [[noreturn]] void Refuse(const std::string& reason) const { throw Refused(place, reason); }

    // An object with members of these names alone, all of `needed` among them.
    void CheckMembers(const std::vector<std::string>& needed, const std::vector<std::string>& free) const {
        CheckType(json.is_object(), "an object");
        std::vector<std::string> known = needed;
        known.insert(known.end(), free.begin(), free.end());
        for (const auto& [name, value] : json.items())
            if (std::find(known.begin(), known.end(), name) == known.end())
                Member(name, value).Refuse("unknown" + Meant(name, known));
        for (const std::string& name : needed)
            if (!json.contains(name)) Member(name, json).Refuse("missing");
    }

    bool Has(const char* name) const { return json.contains(name); }
    Entry operator[](const char* name) const { return Member(name, json[name]); }

    std::vector<std::pair<std::string, Entry>> Members() const {
        CheckType(json.is_object(), "an object");
        std::vector<std::pair<std::string, Entry>> members;
        for (const auto& [name, value] : json.items()) members.emplace_back(name, Member(name, value));
        return members;
    }

    std::vector<Entry> Elements() const {
        CheckType(json.is_array(), "a list");
        std::vector<Entry> elements;
        for (std::size_t i = 0; i < json.size(); ++i) elements.push_back(Member(std::to_string(i), json[i]));
        return elements;
    }

    std::string Text() const {
        CheckType(json.is_string(), "a text");
        return json.get<std::string>();
    }

    std::string FilledText() const {
        const std::string text = Text();
        if (text.empty()) Refuse("must not be empty");
        return text;
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const Entry& element : Elements()) texts.push_back(element.Text());
        return texts;
    }

    // What an assignment takes: a text, or a number or truth that is one as JSON writes it.
    std::string ValueText() const {
        CheckType(json.is_string() || json.is_number() || json.is_boolean(), "a text, a number, true or false");
        return json.is_string() ? json.get<std::string>() : json.dump();
    }

    std::vector<std::string> ValueTexts() const {
        std::vector<std::string> texts;
        for (const Entry& element : Elements()) texts.push_back(element.ValueText());
        return texts;
    }

    std::string DecimalText() const {
        CheckType(json.is_string() || json.is_number(), "a number");
        const std::string text = ValueText();
        try {
            Decimal::Read(text);
        } catch (const NoDecimal& refused) {
            Refuse(refused.what());
        }
        return text;
    }

    double Number() const { return Decimal::Read(DecimalText()).Number(); }

    std::uint64_t Whole(std::uint64_t least, std::uint64_t most) const {
        CheckType(json.is_number(), "a whole number");
        std::uint64_t number = 0;
        // 1e3 and 10.0 are whole numbers, too.
        if (json.is_number_unsigned()) {
            number = json.get<std::uint64_t>();
        } else {
            const double real = json.get<double>();
            if (real != std::floor(real)) CheckType(false, "a whole number");
            if (real < static_cast<double>(least) || real >= 18446744073709551616.0)
                Refuse("must be from " + std::to_string(least) + " to " + std::to_string(most));
            number = static_cast<std::uint64_t>(real);
        }
        if (number < least || number > most)
            Refuse("must be from " + std::to_string(least) + " to " + std::to_string(most));
        return number;
    }

    PlanFile::Row Row() const {
        PlanFile::Row row;
        for (const auto& [name, value] : Members()) row.emplace_back(name, value.ValueText());
        return row;
    }

    std::vector<PlanFile::Row> Rows() const {
        std::vector<PlanFile::Row> rows;
        for (const Entry& element : Elements()) rows.push_back(element.Row());
        return rows;
    }

private:
    Entry Member(const std::string& name, const Json& value) const {
        return Entry(value, place.empty() ? name : place + "/" + name);
    }

    void CheckType(bool is, const char* wanted) const {
        if (is) return;
        const char* found = json.is_object()    ? "an object"
                            : json.is_array()   ? "a list"
                            : json.is_string()  ? "a text"
                            : json.is_boolean() ? (json.get<bool>() ? "true" : "false")
                            : json.is_null()    ? "null"
                                                : nullptr;
        Refuse(std::string("must be ") + wanted + ", not " + (found ? found : json.dump()));
    }

    const Json& json;
    std::string place;
};

template <typename Table>
const auto& RowOf(const Table& table, const Entry& name) {
    const std::string word = name.Text();
    std::vector<std::string> words;
    for (const auto& row : table) {
        if (row.word == word) return row;
        words.emplace_back(row.word);
    }
    std::string all;
    for (const std::string& known : words) all += (all.empty() ? "" : ", ") + known;
    const std::string meant = Meant(word, words);
    name.Refuse("\"" + word + "\" is unknown" + (meant.empty() ? "; there are " + all : meant));
}

// The members of an object that says with "name" what it is; a member of another kind is told as unknown to this one.
template <typename Row>
void CheckNamed(const Entry& entry, const Row& row, const std::vector<std::string>& free) {
    std::vector<std::string> needed = row.needed;
    needed.insert(needed.begin(), "name");
    entry.CheckMembers(needed, free);
}

PlanFile::Method ReadMethod(const Entry& entry) {
    entry.Members();
    if (!entry.Has("name")) throw Refused(entry.Place() + "/name", "missing");
    const MethodRow& row = RowOf(Methods(), entry["name"]);
    CheckNamed(entry, row, row.free);
    PlanFile::Method method;
    method.kind = row.kind;
    if (entry.Has("count")) method.count = entry["count"].Whole(1, kMostNumbers - 1);
    if (entry.Has("strength")) method.strength = static_cast<int>(entry["strength"].Whole(1, 6));
    if (entry.Has("effort")) method.effort = static_cast<int>(entry["effort"].Whole(1, kMostEffort));
    if (entry.Has("rows")) method.rows = entry["rows"].Rows();
    return method;
}

std::pair<std::string, std::string> ReadRange(const Entry& entry) {
    const std::vector<Entry> ends = entry.Elements();
    if (ends.size() != 2) entry.Refuse("must have two ends, minimum and maximum");
    const auto end = [](const Entry& at) {
        const std::string text = at.ValueText();
        return text;
    };
    return {end(ends[0]), end(ends[1])};
}

PlanFile::Sampling ReadDistribution(const Entry& entry) {
    entry.Members();
    if (!entry.Has("name")) throw Refused(entry.Place() + "/name", "missing");
    const DistributionRow& row = RowOf(Distributions(), entry["name"]);
    CheckNamed(entry, row, {});
    PlanFile::Sampling sampling;
    sampling.distribution.kind = row.kind;
    if (entry.Has("expectedValue")) sampling.distribution.expectedValue = entry["expectedValue"].Number();
    if (entry.Has("variance")) sampling.distribution.variance = entry["variance"].Number();
    if (entry.Has("bins")) {
        for (const Entry& bin : entry["bins"].Elements()) {
            bin.CheckMembers({"range", "weight"}, {});
            const std::vector<Entry> ends = bin["range"].Elements();
            if (ends.size() != 2) bin["range"].Refuse("must have two ends, minimum and maximum");
            sampling.distribution.bins.push_back(
                {{Decimal::Read(ends[0].DecimalText()), Decimal::Read(ends[1].DecimalText())}, bin["weight"].Number()});
        }
        if (sampling.distribution.bins.empty()) entry["bins"].Refuse("must not be empty");
    }
    if (entry.Has("elements")) {
        for (const Entry& element : entry["elements"].Elements()) {
            element.CheckMembers({"value", "weight"}, {});
            sampling.elements.push_back({element["value"].ValueText(), element["weight"].Number()});
        }
        if (sampling.elements.empty()) entry["elements"].Refuse("must not be empty");
    }
    return sampling;
}

PlanFile::Parameter ReadParameter(const std::string& name, const Entry& entry) {
    entry.CheckMembers({}, {"values", "range", "step", "count", "decimals", "distribution"});
    PlanFile::Parameter parameter;
    parameter.name = name;
    if (entry.Has("values")) {
        parameter.values = entry["values"].ValueTexts();
        if (parameter.values->empty()) entry["values"].Refuse("must not be empty");
        for (const char* other : {"range", "step", "count"})
            if (entry.Has(other)) entry[other].Refuse("has no meaning beside values");
    }
    if (entry.Has("range")) parameter.range = ReadRange(entry["range"]);
    if (entry.Has("step")) {
        parameter.step = entry["step"].DecimalText();
        if (Decimal::Read(*parameter.step).units <= 0) entry["step"].Refuse("must be greater than 0");
        if (entry.Has("count")) entry["count"].Refuse("has no meaning beside step");
    }
    if (entry.Has("count")) parameter.count = entry["count"].Whole(1, kMostValues);
    if (entry.Has("decimals")) parameter.decimals = static_cast<int>(entry["decimals"].Whole(0, 15));
    if (entry.Has("distribution")) parameter.distribution = ReadDistribution(entry["distribution"]);
    return parameter;
}

PlanFile::Linked ReadLinked(const Entry& entry) {
    entry.CheckMembers({"parameters", "rows"}, {});
    PlanFile::Linked linked;
    linked.parameters = entry["parameters"].Texts();
    if (linked.parameters.empty()) entry["parameters"].Refuse("must not be empty");
    for (const Entry& row : entry["rows"].Elements()) {
        linked.rows.push_back(row.ValueTexts());
        if (linked.rows.back().size() != linked.parameters.size())
            row.Refuse("must have " + std::to_string(linked.parameters.size()) +
                       " values, one for each parameter, not " + std::to_string(linked.rows.back().size()));
    }
    if (linked.rows.empty()) entry["rows"].Refuse("must not be empty");
    return linked;
}

PlanFile::Run ReadRun(const Entry& entry) {
    entry.CheckMembers({}, {"from", "until", "step"});
    PlanFile::Run run;
    if (entry.Has("from")) run.from = entry["from"].Number();
    if (entry.Has("until")) run.until = entry["until"].Number();
    if (entry.Has("step")) run.step = entry["step"].Number();
    if (!(run.step > 0)) entry["step"].Refuse("must be greater than 0");
    if (run.until && *run.until < run.from) entry["until"].Refuse("must not lie before from");
    return run;
}

// The text as JSON, of which no object has a member twice: which of two counts would be anybody's guess.
Json Parsed(const std::string& text) {
    std::vector<std::pair<std::string, std::set<std::string>>> open; // objects and lists on the way, with their members
    std::string twice;
    const auto watch = [&](int, Json::parse_event_t event, Json& parsed) {
        switch (event) {
        case Json::parse_event_t::object_start:
        case Json::parse_event_t::array_start:
            open.emplace_back();
            break;
        case Json::parse_event_t::object_end:
        case Json::parse_event_t::array_end:
            if (!open.empty()) open.pop_back();
            break;
        case Json::parse_event_t::key: {
            const auto name = parsed.get<std::string>();
            if (open.empty()) break;
            open.back().first = name;
            if (!open.back().second.insert(name).second && twice.empty())
                for (const auto& [member, members] : open)
                    if (!member.empty()) twice += (twice.empty() ? "" : "/") + member;
            break;
        }
        default:
            break;
        }
        return true;
    };
    try {
        Json json = Json::parse(text, watch);
        if (!twice.empty()) throw Refused(twice, "is there twice");
        return json;
    } catch (const Json::parse_error& failed) {
        // The library counts bytes; its sentence begins with a number of its own and ends with what it expected.
        const std::size_t end = std::min(failed.byte > 0 ? failed.byte - 1 : 0, text.size());
        const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
        const std::size_t start = text.rfind('\n', end == 0 ? 0 : end - 1);
        const std::size_t column = end - (end == 0 || start == std::string::npos ? 0 : start + 1) + 1;
        throw Refused("line " + std::to_string(line) + ", column " + std::to_string(column), "is no JSON");
    } catch (const Json::exception& failed) {
        throw Refused("", std::string("is no JSON: ") + failed.what());
    }
}

Json RowsJson(const std::vector<PlanFile::Row>& rows) {
    Json json = Json::array();
    for (const PlanFile::Row& row : rows) {
        Json object = Json::object();
        for (const auto& [name, value] : row) object[name] = value;
        json.push_back(std::move(object));
    }
    return json;
}

Json ParameterJson(const PlanFile::Parameter& parameter) {
    Json json = Json::object();
    if (parameter.values) json["values"] = *parameter.values;
    if (parameter.range) json["range"] = {parameter.range->first, parameter.range->second};
    if (parameter.step) json["step"] = *parameter.step;
    if (parameter.count) json["count"] = *parameter.count;
    if (parameter.decimals) json["decimals"] = *parameter.decimals;
    if (!parameter.distribution) return json;
    const Distribution& distribution = parameter.distribution->distribution;
    Json& told = json["distribution"];
    for (const DistributionRow& row : Distributions()) {
        if (row.kind != distribution.kind) continue;
        told["name"] = row.word;
        for (const std::string& member : row.needed) {
            if (member == "expectedValue") told[member] = distribution.expectedValue;
            if (member == "variance") told[member] = distribution.variance;
            if (member == "bins")
                for (const Distribution::Bin& bin : distribution.bins)
                    told[member].push_back(
                        {{"range", {bin.range.minimum.Text(), bin.range.maximum.Text()}}, {"weight", bin.weight}});
            if (member == "elements")
                for (const PlanFile::Element& element : parameter.distribution->elements)
                    told[member].push_back({{"value", element.value}, {"weight", element.weight}});
        }
    }
    return json;
}

} // namespace

const char* WordOf(MethodKind kind) {
    for (const MethodRow& row : Methods())
        if (row.kind == kind) return row.word;
    return "";
}

PlanFile PlanFile::Read(const std::string& text) {
    const Json json = Parsed(text);
    const Entry file(json, "");
    file.CheckMembers({"format", "scenario"}, {"configuration", "script", "run", "seed", "method", "parameters",
                                               "linked", "constraints", "include", "repetitions", "criteria"});
    if (file["format"].Text() != kFormat)
        file["format"].Refuse("must be \"" + std::string(kFormat) + "\", not \"" + file["format"].Text() + "\"");
    PlanFile plan;
    plan.scenario = file["scenario"].FilledText();
    if (file.Has("configuration")) plan.configuration = file["configuration"].FilledText();
    if (file.Has("script")) plan.script = file["script"].FilledText();
    if (file.Has("run")) plan.run = ReadRun(file["run"]);
    if (file.Has("seed")) plan.seed = file["seed"].Whole(0, std::numeric_limits<std::uint64_t>::max());
    if (file.Has("method")) plan.method = ReadMethod(file["method"]);
    if (file.Has("parameters")) {
        plan.parameters.emplace();
        for (const auto& [name, entry] : file["parameters"].Members())
            plan.parameters->push_back(ReadParameter(name, entry));
    }
    if (file.Has("linked"))
        for (const Entry& entry : file["linked"].Elements()) plan.linked.push_back(ReadLinked(entry));
    if (file.Has("constraints")) plan.constraints = file["constraints"].Texts();
    if (file.Has("include")) plan.include = file["include"].Rows();
    if (file.Has("repetitions")) plan.repetitions = file["repetitions"].Whole(1, kMostNumbers - 1);
    if (file.Has("criteria")) plan.criteria = file["criteria"].Texts();
    return plan;
}

std::string PlanFile::Text() const {
    Json json;
    json["format"] = kFormat;
    json["scenario"] = scenario;
    if (configuration) json["configuration"] = *configuration;
    if (script) json["script"] = *script;
    json["run"] = {{"from", run.from}};
    if (run.until) json["run"]["until"] = *run.until;
    json["run"]["step"] = run.step;
    json["seed"] = seed;
    Json& told = json["method"];
    told["name"] = WordOf(method.kind);
    for (const MethodRow& row : Methods()) {
        if (row.kind != method.kind) continue;
        if (row.needed == std::vector<std::string>{"count"}) told["count"] = method.count;
        if (method.kind == MethodKind::Cover) {
            told["strength"] = method.strength;
            told["effort"] = method.effort;
        }
        if (method.rows) told["rows"] = RowsJson(*method.rows);
    }
    if (parameters) {
        Json& all = json["parameters"] = Json::object();
        for (const Parameter& parameter : *parameters) all[parameter.name] = ParameterJson(parameter);
    }
    json["linked"] = Json::array();
    for (const Linked& set : linked) json["linked"].push_back({{"parameters", set.parameters}, {"rows", set.rows}});
    json["constraints"] = constraints;
    json["include"] = RowsJson(include);
    json["repetitions"] = repetitions;
    json["criteria"] = criteria;
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace TavrelVariation
