#include <scenario/Criteria.h>

#include <algorithm>

#include "items/AttributeRow.h"

namespace {

using Row = AttributeRow<Criteria>;

bool TakeDisabled(Criteria& criteria, std::string_view value) {
    criteria.disabled = value == "1";
    return true;
}

bool TakeCategory(Criteria& criteria, std::string_view value) {
    criteria.category.assign(value);
    criteria.RegisterCategory();
    return true;
}

// clang-format off
constexpr Row kRows[] = {
    Row::custom                           ("IS_DISABLED", TakeDisabled),
    {"CATEGORY", [](const Criteria& criteria) { return criteria.category.empty(); }, TakeCategory},
    Row::lastText<&Criteria::criticity>   ("CRITICITY"),
    Row::lastText<&Criteria::criteriaType>("ATTRIBUTE_CRITERIA_TYPE"),
    Row::text<&Criteria::text>            ("TEXT"),
    Row::text<&Criteria::sound>           ("SOUND"),
};
// clang-format on

} // namespace

Criteria::Criteria(ScenarioItemObserver* observer) : Task(observer) { RegisterCategory(); }

Criteria::~Criteria() = default;

bool Criteria::LoadAttribute(ScenarioTextStream& stream) {
    return Task::LoadAttribute(stream) || LoadFromRows<kRows>(*this, stream);
}

ScenarioItem* Criteria::Clone() const {
    ScenarioItem* clone = Task::Clone();
    auto& criteria = static_cast<Criteria&>(*clone);
    criteria.disabled = disabled;
    criteria.category = category;
    criteria.criteriaType = criteriaType;
    criteria.criticity = criticity;
    criteria.text = text;
    criteria.sound = sound;
    criteria.RegisterCategory();
    return clone;
}

void Criteria::SaveAttributes(std::ostream& out) const {
    Task::SaveAttributes(out);
    if (disabled != 0) WriteAttribute(out, "IS_DISABLED", "1");
    WriteAttribute(out, "CATEGORY", category);
    WriteAttribute(out, "CRITICITY", criticity);
    WriteAttribute(out, "ATTRIBUTE_CRITERIA_TYPE", criteriaType);
    WriteAttribute(out, "TEXT", text);
    WriteAttribute(out, "SOUND", sound);
}

void Criteria::UpdateDisplayText() { displayText = disabled != 0 ? "//    " + label : label; }

void Criteria::Init(const std::string& path, double time) {
    workPath = path;
    if (disabled != 0) return;
    SetCounter(0.0F, 0, 0.0F);
    SetCounter(0.0F, 1, 0.0F);
    Task::Init(path, time);
}

void Criteria::StepCriteria(double time, ScenarioLib::Scenario* scenario) {
    if (disabled == 0) Task::Step(time, scenario, true);
}

void Criteria::SetCounter(float value, std::int32_t level, float key) {
    counters[static_cast<std::int16_t>(level)].values[key] = value;
}

std::size_t Criteria::RegisterCategory() {
    std::vector<std::string>& all = Categories();
    const auto found = std::find(all.begin(), all.end(), category);
    const auto index = static_cast<std::size_t>(found - all.begin());
    if (found == all.end()) all.push_back(category);
    return index;
}

std::vector<std::string>& Criteria::Categories() {
    static std::vector<std::string> categories;
    return categories;
}
