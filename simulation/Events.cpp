#include <simulation/Events.h>

#include <limits>

#include <nlohmann/json.hpp>

namespace TavrelSimulation {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kFormat = "tavrel-trace/1";

Json MarginJson(const std::optional<double>& margin) { return margin ? Json(*margin) : Json(); }

Json JsonOf(const Names& names) {
    Json variables = Json::array(), scores = Json::array();
    for (const Names::Variable& variable : names.variables)
        variables.push_back({variable.name, variable.label, variable.start});
    for (const Names::Score& score : names.scores) scores.push_back(Json::array({score.number, score.start}));
    return {{"rules", names.rules},
            {"tasks", names.tasks},
            {"variables", std::move(variables)},
            {"scores", std::move(scores)}};
}

// Adds the members of each kind of event after "time" and "event".
struct MemberWriter {
    Json& json;

    void operator()(const RunStart& start) const {
        json["event"] = "start";
        json["format"] = kFormat;
        json["tool"] = start.tool.empty() ? TAVREL_VERSION : start.tool;
        json["scenario"] = start.scenario;
        json["script"] = start.script;
        json["until"] = start.until;
        json["step"] = start.step;
        json["seed"] = start.seed;
        json["values"] = Json::object();
        for (const auto& [id, text] : start.values) json["values"][id] = text;
        if (start.names) json["names"] = JsonOf(*start.names);
        json["inputs"] = Json::array();
        for (const Input& input : start.inputs)
            json["inputs"].push_back({{"role", input.role}, {"file", input.file}, {"sha256", input.sha256}});
    }
    void operator()(const RuleChange& change) const {
        json["event"] = "rule";
        json["rule"] = change.rule;
        json["label"] = change.label;
        json["place"] = change.place;
        json["value"] = change.value;
    }
    void operator()(const StateChange& change) const {
        json["event"] = "state";
        json["task"] = change.task;
        json["from"] = change.from;
        json["to"] = change.to;
        json["label"] = change.label;
    }
    void operator()(const VariableChange& change) const {
        json["event"] = "variable";
        json["variable"] = change.variable;
        json["label"] = change.label;
        json["place"] = change.place;
        json["from"] = change.from;
        json["to"] = change.to;
    }
    void operator()(const ScoreChange& change) const {
        json["event"] = "score";
        json["score"] = change.score;
        json["from"] = change.from;
        json["to"] = change.to;
    }
    void operator()(const Effect& effect) const {
        json["event"] = "effect";
        json["name"] = effect.name;
        json["arguments"] = effect.arguments;
    }
    void operator()(const Pause& pause) const {
        json["event"] = "pause";
        json["value"] = pause.value;
    }
    void operator()(const Stop&) const { json["event"] = "stop"; }
    void operator()(const LogEntry& entry) const {
        json["event"] = "log";
        json["severity"] = entry.severity;
        json["text"] = entry.text;
    }
    void operator()(const RunEnd& end) const {
        json["event"] = "end";
        json["steps"] = end.steps;
        json["stopped"] = end.stopped;
        json["rulesFired"] = end.rulesFired;
        json["neverTrue"] = end.neverTrue;
        json["neverEntered"] = end.neverEntered;
        Json scores = Json::array(), findings = Json::array(), criteria = Json::array();
        for (const auto& [number, value] : end.scores) scores.push_back(Json::array({number, value}));
        for (const Finding& finding : end.evaluation)
            findings.push_back({{"rule", finding.rule}, {"label", finding.label}, {"evaluation", finding.evaluation}});
        for (const Outcome& outcome : end.criteria)
            criteria.push_back(
                {{"criterion", outcome.criterion}, {"holds", outcome.holds}, {"margin", MarginJson(outcome.margin)}});
        json["scores"] = std::move(scores);
        json["evaluation"] = std::move(findings);
        json["verdict"] = end.verdict;
        json["criteria"] = std::move(criteria);
    }
};

// Takes members out of an event that anybody may have written.
class Members {
public:
    explicit Members(const Json& object) : json(object) {}

    std::string Text(const char* name) const {
        const Json* member = Find(name);
        if (!member) return "";
        if (!member->is_string()) Refuse(name, "a text");
        return member->get<std::string>();
    }
    double Number(const char* name) const {
        const Json* member = Find(name);
        if (!member) return 0;
        if (!member->is_number()) Refuse(name, "a number");
        return member->get<double>();
    }
    template <typename Whole>
    Whole WholeNumber(const char* name) const {
        const Json* member = Find(name);
        return member ? Converted<Whole>(*member, name) : Whole();
    }
    bool Flag(const char* name) const {
        const Json* member = Find(name);
        if (!member) return false;
        if (!member->is_boolean()) Refuse(name, "true or false");
        return member->get<bool>();
    }
    template <typename Take>
    void Each(const char* name, const Take& take) const {
        const Json* member = Find(name);
        if (!member) return;
        if (!member->is_array()) Refuse(name, "a list");
        for (const Json& entry : *member) take(entry);
    }
    // Of a list of objects.
    template <typename Take>
    void EachObject(const char* name, const Take& take) const {
        Each(name, [&](const Json& entry) {
            if (!entry.is_object()) Refuse(name, "a list of objects");
            take(Members(entry));
        });
    }
    std::vector<std::string> Texts(const char* name) const {
        std::vector<std::string> texts;
        Each(name, [&](const Json& entry) {
            if (!entry.is_string()) Refuse(name, "a list of texts");
            texts.push_back(entry.get<std::string>());
        });
        return texts;
    }
    // An entry of a list that is a list itself.
    static const Json& Part(const Json& entry, std::size_t index, const char* name) {
        if (!entry.is_array() || entry.size() <= index) Refuse(name, "a list of lists");
        return entry[index];
    }
    template <typename Whole>
    static Whole Converted(const Json& value, const char* name) {
        if (!value.is_number_integer()) Refuse(name, "a whole number");
        if (value.is_number_unsigned() &&
            value.get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<Whole>::max()))
            Refuse(name, "a smaller number");
        if (!value.is_number_unsigned() &&
            value.get<std::int64_t>() < static_cast<std::int64_t>(std::numeric_limits<Whole>::min()))
            Refuse(name, "a larger number");
        return static_cast<Whole>(value.get<std::int64_t>());
    }
    [[noreturn]] static void Refuse(const char* name, const char* wanted) {
        throw TraceError("the member \"" + std::string(name) + "\" is not " + wanted);
    }
    const Json* Find(const char* name) const {
        const auto found = json.find(name);
        return found == json.end() || found->is_null() ? nullptr : &*found;
    }

private:
    const Json& json;
};

std::string TextPart(const Json& entry, std::size_t index, const char* name) {
    const Json& part = Members::Part(entry, index, name);
    if (!part.is_string()) Members::Refuse(name, "made of texts");
    return part.get<std::string>();
}

double NumberPart(const Json& entry, std::size_t index, const char* name) {
    const Json& part = Members::Part(entry, index, name);
    if (!part.is_number()) Members::Refuse(name, "made of numbers");
    return part.get<double>();
}

// A score is a list of its number and its value.
std::pair<std::int32_t, double> ScoreOf(const Json& entry) {
    return {Members::Converted<std::int32_t>(Members::Part(entry, 0, "scores"), "scores"),
            NumberPart(entry, 1, "scores")};
}

Names NamesOf(const Json& json) {
    if (!json.is_object()) Members::Refuse("names", "an object");
    const Members members(json);
    Names names{members.Texts("rules"), members.Texts("tasks"), {}, {}};
    members.Each("variables", [&](const Json& entry) {
        names.variables.push_back(
            {TextPart(entry, 0, "variables"), TextPart(entry, 1, "variables"), TextPart(entry, 2, "variables"), ""});
    });
    members.Each("scores", [&](const Json& entry) {
        const auto [number, start] = ScoreOf(entry);
        names.scores.push_back({number, start});
    });
    return names;
}

RunStart StartOf(const Json& json) {
    const Members members(json);
    RunStart start;
    start.tool = members.Text("tool");
    start.scenario = members.Text("scenario");
    start.script = members.Text("script");
    start.until = members.Number("until");
    start.step = members.Number("step");
    start.seed = members.WholeNumber<std::uint32_t>("seed");
    if (const Json* values = members.Find("values")) {
        if (!values->is_object()) Members::Refuse("values", "an object");
        for (const auto& [id, text] : values->items()) {
            if (!text.is_string()) Members::Refuse("values", "an object of texts");
            start.values.emplace_back(id, text.get<std::string>());
        }
    }
    if (const Json* names = members.Find("names")) start.names = NamesOf(*names);
    members.EachObject("inputs", [&](const Members& input) {
        start.inputs.push_back({input.Text("role"), input.Text("file"), input.Text("sha256")});
    });
    return start;
}

RunEnd EndOf(const Json& json) {
    const Members members(json);
    RunEnd end;
    end.steps = members.WholeNumber<std::uint64_t>("steps");
    end.stopped = members.Flag("stopped");
    end.rulesFired = members.WholeNumber<std::uint64_t>("rulesFired");
    end.neverTrue = members.Texts("neverTrue");
    end.neverEntered = members.Texts("neverEntered");
    members.Each("scores", [&](const Json& entry) { end.scores.push_back(ScoreOf(entry)); });
    members.EachObject("evaluation", [&](const Members& finding) {
        end.evaluation.push_back({finding.Text("rule"), finding.Text("label"), finding.Text("evaluation")});
    });
    end.verdict = members.Text("verdict");
    members.EachObject("criteria", [&](const Members& outcome) {
        Outcome criterion{outcome.Text("criterion"), outcome.Flag("holds"), std::nullopt};
        if (outcome.Find("margin")) criterion.margin = outcome.Number("margin");
        end.criteria.push_back(std::move(criterion));
    });
    return end;
}

} // namespace

std::string JsonOf(const Event& event) {
    Json json;
    json["time"] = event.time;
    std::visit(MemberWriter{json}, event.what);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<Event> EventOf(const std::string& text) {
    const Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded()) throw TraceError("this is no JSON");
    if (!json.is_object()) throw TraceError("this is no JSON object");
    const Members members(json);
    if (!members.Find("event")) throw TraceError("the member \"event\" is missing");
    if (!members.Find("time")) throw TraceError("the member \"time\" is missing");
    const std::string kind = members.Text("event");
    const auto event = [&](auto what) { return Event{members.Number("time"), std::move(what)}; };
    if (kind == "start") return event(StartOf(json));
    if (kind == "rule")
        return event(
            RuleChange{members.Text("rule"), members.Text("label"), members.Text("place"), members.Flag("value")});
    if (kind == "state")
        return event(StateChange{members.Text("task"), members.WholeNumber<std::int32_t>("from"),
                                 members.WholeNumber<std::int32_t>("to"), members.Text("label")});
    if (kind == "variable")
        return event(VariableChange{members.Text("variable"), members.Text("label"), members.Text("place"),
                                    members.Text("from"), members.Text("to")});
    if (kind == "score")
        return event(
            ScoreChange{members.WholeNumber<std::int32_t>("score"), members.Number("from"), members.Number("to")});
    if (kind == "effect") return event(Effect{members.Text("name"), members.Texts("arguments")});
    if (kind == "pause") return event(Pause{members.Flag("value")});
    if (kind == "stop") return event(Stop{});
    if (kind == "log") return event(LogEntry{members.WholeNumber<int>("severity"), members.Text("text")});
    if (kind == "end") return event(EndOf(json));
    return std::nullopt;
}

} // namespace TavrelSimulation
