#include <variation/RunRecord.h>

#include <utility>

#include <nlohmann/json.hpp>

#include "RecordLine.h"

namespace TavrelVariation {

namespace {

using Json = nlohmann::ordered_json;
using TavrelSimulation::Verdict;

std::optional<std::string> TextOf(const Json& json, const char* member) {
    const auto found = json.find(member);
    if (found == json.end() || !found->is_string()) return std::nullopt;
    return found->get<std::string>();
}

std::optional<TavrelSimulation::Outcome> OutcomeOf(const Json& json) {
    if (!json.is_object()) return std::nullopt;
    const auto text = TextOf(json, "criterion");
    const auto holds = json.find("holds");
    const auto margin = json.find("margin");
    if (!text || holds == json.end() || !holds->is_boolean() || margin == json.end()) return std::nullopt;
    TavrelSimulation::Outcome outcome{*text, holds->get<bool>(), std::nullopt};
    if (margin->is_number())
        outcome.margin = margin->get<double>();
    else if (!margin->is_null())
        return std::nullopt;
    return outcome;
}

bool ReadLists(const Json& json, RunRecord& record) {
    const auto values = json.find("values");
    const auto criteria = json.find("criteria");
    if (values == json.end() || !values->is_object() || criteria == json.end() || !criteria->is_array()) return false;
    for (const auto& [id, text] : values->items()) {
        if (!text.is_string()) return false;
        record.values.emplace_back(id, text.get<std::string>());
    }
    for (const Json& item : *criteria) {
        auto outcome = OutcomeOf(item);
        if (!outcome) return false;
        record.criteria.push_back(*std::move(outcome));
    }
    return true;
}

} // namespace

std::string JsonOf(const RunRecord& record) {
    Json json = {{"format", kRecordFormat}, {"number", record.number}, {"verdict", WordOf(record.verdict)}};
    if (record.seed) json["seed"] = *record.seed;
    json["values"] = Json::object();
    for (const auto& [id, text] : record.values) json["values"][id] = text;
    json["criteria"] = Json::array();
    for (const TavrelSimulation::Outcome& outcome : record.criteria)
        json["criteria"].push_back({{"criterion", outcome.criterion},
                                    {"holds", outcome.holds},
                                    {"margin", outcome.margin ? Json(*outcome.margin) : Json()}});
    json["message"] = record.message.empty() ? Json() : Json(record.message);
    json["events"] = record.events;
    json["trace"] = record.trace.empty() ? Json() : Json(record.trace);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<RunRecord> RecordOf(const std::string& text) {
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object() || TextOf(json, "format") != kRecordFormat) return std::nullopt;
    RunRecord record;
    const auto number = json.find("number");
    const auto verdict = VerdictOfWord(TextOf(json, "verdict").value_or(""));
    if (number == json.end() || !number->is_number_unsigned() || !verdict) return std::nullopt;
    record.number = number->get<std::uint64_t>();
    record.verdict = *verdict;
    if (!ReadLists(json, record)) return std::nullopt;
    const auto seed = json.find("seed");
    if (seed != json.end() && seed->is_number_unsigned()) record.seed = seed->get<std::uint32_t>();
    const auto events = json.find("events");
    if (events != json.end() && events->is_number_unsigned()) record.events = events->get<std::size_t>();
    record.message = TextOf(json, "message").value_or("");
    record.trace = TextOf(json, "trace").value_or("");
    return record;
}

std::optional<Verdict> VerdictOfWord(const std::string& word) {
    for (const Verdict verdict :
         {Verdict::Passed, Verdict::Failed, Verdict::Error, Verdict::Timeout, Verdict::Killed, Verdict::Skipped})
        if (word == WordOf(verdict)) return verdict;
    return std::nullopt;
}

} // namespace TavrelVariation
