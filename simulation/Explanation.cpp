#include <simulation/Explanation.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include <scenario/CallUnderWay.h>
#include <simulation/Criteria.h>
#include <simulation/Trace.h>
#include <simulation/World.h>

namespace TavrelSimulation {

namespace {

constexpr const char* kComparisons[] = {"EQUAL", "NOTEQUAL", "INFERIOR", "INFEQUAL", "SUPERIOR", "SUPEQUAL"};

bool IsJunction(const Condition& condition) { return !condition.subConditions.empty(); }

// What the modifier makes of the state that the last evaluation left.
bool Holds(const Condition& condition, double time) {
    const std::string& word = condition.modifier;
    const bool changed = condition.lastChangeTime == time;
    const auto lasts = [&](std::int32_t state) {
        return condition.state == state && time - condition.lastChangeTime >= static_cast<double>(condition.duration);
    };
    if (word == "IS_TRUE") return condition.state == 1;
    if (word == "IS_FALSE") return condition.state == 0;
    if (word == "BECOMES_TRUE") return condition.state == 1 && changed;
    if (word == "BECOMES_FALSE") return condition.state == 0 && changed;
    if (word == "HAS_BEEN_TRUE") return condition.hasBeenTrue != 0;
    if (word == "HAS_BEEN_FALSE") return condition.hasBeenFalse != 0;
    if (word == "HAS_BEEN_TRUE_FOR") return lasts(1);
    return word == "HAS_BEEN_FALSE_FOR" && lasts(0);
}

std::string TextOf(const Condition& condition) {
    std::string text = condition.displayText;
    if (IsJunction(condition)) {
        text = condition.name;
        if (condition.modifier != "IS_TRUE") text += " " + condition.modifier;
    }
    if (text.starts_with("IF ")) text.erase(0, std::min(text.find_first_not_of(' ', 2), text.size()));
    return text;
}

const Rule* FindRule(const ScenarioItem& item, const std::string& path) {
    const auto* rule = dynamic_cast<const Rule*>(&item);
    if (rule && PathOf(item) == path) return rule;
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (const ScenarioItem* child : children)
        if (const Rule* found = FindRule(*child, path)) return found;
    return nullptr;
}

} // namespace

struct Explainer::Watched {
    const Rule* rule = nullptr;
    std::vector<const Condition*> conditions; // by part
    std::vector<ParameterValues> values;      // the last arguments of each
    std::vector<bool> asked;                  // ever
    bool wasAsked = false;                    // in this step
    std::map<std::size_t, ConditionEntry> former;
    Explanation explanation;
    std::optional<double> lastTime;
    bool lastLookedAt = false;
    std::vector<std::size_t> holdingBack; // at the last step
    std::int32_t lastCount = 0;
    std::optional<Explanation::Look> last;

    void Add(const Condition& condition, std::size_t depth) {
        conditions.push_back(&condition);
        Explanation::Part part;
        part.text = TextOf(condition);
        part.depth = depth;
        part.parts = condition.subConditions.size();
        explanation.parts.push_back(std::move(part));
        for (const Condition* sub : condition.subConditions) Add(*sub, depth + 1);
    }

    // Stands before the implementation of each CODE that the rule asks.
    void Listen() {
        for (const Condition* condition : conditions) {
            const auto* definition = dynamic_cast<const Function*>(condition->model);
            if (IsJunction(*condition) || !definition || definition->codeNumber < 0) continue;
            const auto code = static_cast<std::size_t>(definition->codeNumber);
            std::vector<ConditionEntry>& table = ConditionTable();
            if (code >= table.size() || !table[code] || former.count(code) != 0) continue;
            former[code] = table[code];
            table[code] = [this, entry = table[code]](const ParameterValues& arguments) {
                const auto part = std::find(conditions.begin(), conditions.end(), CallUnderWay());
                if (part != conditions.end()) Note(static_cast<std::size_t>(part - conditions.begin()), arguments);
                return entry(arguments);
            };
        }
    }

    void Note(std::size_t part, const ParameterValues& arguments) {
        values[part] = arguments;
        asked[part] = wasAsked = true;
        // A reference says nothing; what it refers to does.
        const std::vector<Parameter*>& parameters = conditions[part]->parameters;
        for (std::size_t i = 0; i < parameters.size() && i < arguments.size(); ++i) {
            if (arguments[i].tag != TagString || parameters[i]->valueKind != "VARIABLE") continue;
            const auto* definition = dynamic_cast<const Parameter*>(parameters[i]->model);
            const Variable* variable =
                definition && definition->usage == "BY_ADDRESS" ? ReferencedVariable(i) : nullptr;
            if (variable) values[part][i].text = variable->value;
        }
    }

    std::vector<std::string> ValuesOf(std::size_t part) const {
        std::vector<std::string> texts;
        if (!asked[part]) return texts;
        for (std::size_t i = 0; i < conditions[part]->parameters.size() && i < values[part].size(); ++i) {
            const ParameterValue& value = values[part][i];
            texts.push_back(value.tag == TagFloat ? NumberText(value.number) : ArgumentText(value));
        }
        return texts;
    }

    // Gathers the parts that keep a condition from holding: within a junction those that do not hold, else itself.
    void Blame(const Condition& condition, double time, std::vector<std::size_t>& parts) const {
        if (Holds(condition, time)) return;
        const std::size_t before = parts.size();
        if (condition.state == 0)
            for (const Condition* sub : condition.subConditions) Blame(*sub, time, parts);
        if (parts.size() > before) return;
        const auto self = std::find(conditions.begin(), conditions.end(), &condition);
        parts.push_back(static_cast<std::size_t>(self - conditions.begin()));
    }

    void NoteNearest(std::size_t part) {
        const Condition& condition = *conditions[part];
        const bool compares = std::any_of(std::begin(kComparisons), std::end(kComparisons),
                                          [&](const char* name) { return condition.name == name; });
        if (!compares || !asked[part] || values[part][0].tag == TagString || values[part][1].tag == TagString) return;
        const double distance = std::abs(static_cast<double>(values[part][0].number) - values[part][1].number);
        std::optional<double>& nearest = explanation.parts[part].nearest;
        if (!nearest || distance < *nearest) nearest = distance;
    }
};

Explainer::Explainer(const ScenarioLib::Scenario& scenario, const std::string& name)
    : watched(std::make_unique<Watched>()) {
    const std::string path = RuleNamed(name, NamesOf(scenario));
    watched->rule = FindRule(scenario, path);
    watched->explanation.rule = path;
    watched->explanation.label = watched->rule->label;
    watched->explanation.isDisabled = watched->rule->disabled != 0;
    if (!watched->rule->conditions.empty()) watched->Add(*watched->rule->conditions.front(), 0);
    watched->values.resize(watched->conditions.size());
    watched->asked.resize(watched->conditions.size());
    watched->Listen();
}

Explainer::~Explainer() {
    for (auto& [code, entry] : watched->former) ConditionTable()[code] = std::move(entry);
}

void Explainer::AfterStep(double time) {
    Watched& w = *watched;
    const double span = w.lastTime ? time - *w.lastTime : 0;
    w.explanation.seconds += span;
    if (w.lastLookedAt) w.explanation.lookedAt += span;
    for (const std::size_t part : w.holdingBack) w.explanation.parts[part].heldBack += span;

    Explanation::Look look;
    look.time = time;
    // Without a condition to ask, the count of changes is all that shows.
    look.isLookedAt = w.former.empty() ? w.rule->result != Rule::kNotEvaluated : w.wasAsked;
    look.value = w.rule->result == 1;
    if (w.rule->activationCount > w.lastCount)
        w.explanation.timesFired += static_cast<std::size_t>(w.rule->activationCount - w.lastCount);
    w.lastCount = w.rule->activationCount;
    w.holdingBack.clear();
    for (std::size_t part = 0; part < w.conditions.size(); ++part) {
        const Condition& condition = *w.conditions[part];
        look.holds.push_back(Holds(condition, time));
        look.values.push_back(w.ValuesOf(part));
        const auto held =
            static_cast<std::size_t>(std::count_if(condition.subConditions.begin(), condition.subConditions.end(),
                                                   [&](const Condition* sub) { return Holds(*sub, time); }));
        if (look.isLookedAt) w.explanation.parts[part].mostHeld = std::max(w.explanation.parts[part].mostHeld, held);
    }
    if (look.isLookedAt && !look.value && !w.conditions.empty()) {
        w.Blame(*w.conditions.front(), time, w.holdingBack);
        for (const std::size_t part : w.holdingBack) w.NoteNearest(part);
    }
    const bool changed =
        !w.last || w.last->isLookedAt != look.isLookedAt || w.last->value != look.value || w.last->holds != look.holds;
    if (changed) w.explanation.looks.push_back(look);
    w.last = std::move(look);
    w.lastTime = time;
    w.lastLookedAt = w.last->isLookedAt;
    w.wasAsked = false;
}

const Explanation& Explainer::Finish() {
    Watched& w = *watched;
    if (w.last && w.explanation.looks.back().time != w.last->time) w.explanation.looks.push_back(*w.last);
    return w.explanation;
}

} // namespace TavrelSimulation
