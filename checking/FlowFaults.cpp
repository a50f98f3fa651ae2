// How the states and rules of one text go together.
#include <algorithm>
#include <map>
#include <optional>
#include <unordered_set>
#include <utility>

#include "TreeChecks.h"

namespace TavrelChecking {

namespace {

bool IsTaskLike(ScenarioItemKind kind) {
    return kind == KindTask || kind == KindScenario || kind == KindInclude || kind == KindCriteria ||
           kind == KindEvaluation;
}

// An action's wish to go on to a state.
struct Transition {
    const Item* action;
    const Item* owner; // the task that the rule stands in
    std::string_view state;
};

struct Flow {
    explicit Flow(const Definitions& known) : definitions(known) {}

    const Definitions& definitions;
    std::vector<Transition> transitions;
    std::set<std::string_view> states;
    std::set<std::pair<const Item*, std::string_view>> statesOf; // with the item that they stand in
    std::map<std::string_view, std::vector<const Item*>> owners; // of the transitions, by their states
    std::set<std::string_view> mayBeEntered;
    std::set<const Item*> lost; // owners of transitions that lead nowhere
    std::vector<Fault> faults;

    Fault& AtHeader(const char* rule, const Item& item, std::string message) {
        Fault fault;
        fault.rule = rule;
        fault.begin = item.keywordBegin;
        fault.end = item.headerEnd;
        fault.message = std::move(message);
        fault.item = item.parent;
        fault.isTaken = true;
        faults.push_back(std::move(fault));
        return faults.back();
    }

    void Gather(const Item& item, const Item* owner) {
        if (item.kind == KindTask) {
            states.insert(item.name);
            statesOf.emplace(item.parent, item.name);
        }
        if (IsTaskLike(item.kind)) owner = &item;
        if (item.kind == KindAction || item.kind == KindElseAction) {
            for (const auto& parameter : item.children)
                if (IsParameter(parameter->kind) && parameter->Value("KIND") == "TASK" && parameter->Find("VALUE"))
                    transitions.push_back({&item, owner, parameter->Value("VALUE")});
            if (LacksState(item)) transitions.push_back({&item, owner, {}});
        }
        if ((item.isDropped || IsParameter(item.kind)) && MayEnterState(item)) mayBeEntered.insert(item.Value("VALUE"));
        for (const auto& child : item.children) Gather(*child, owner);
    }

    // What is not understood may enter the state that its value names.
    bool MayEnterState(const Item& item) const {
        const std::string_view kind = item.Value("KIND");
        const bool isUnderstood = IsParameter(item.kind) && item.parent && IsCall(item.parent->kind);
        if (!IsValueKind(kind) || (kind == "TASK" && !isUnderstood)) return true;
        return item.model && item.model != &item && !Holds(definitions.FactsOf(*item.model).kinds, kind);
    }

    // Whether the action goes on to a state, and which one is missing. That has its own finding.
    bool LacksState(const Item& action) const {
        if (!action.model || action.model == &action) return false;
        return std::any_of(action.model->children.begin(), action.model->children.end(), [&](const Item* state) {
            if (!IsParameter(state->kind) || !state->model || !Holds(definitions.FactsOf(*state->model).kinds, "TASK"))
                return false;
            const std::vector<const Item*> wanted = ParametersOf(*action.model); // a RETURN is none
            if (std::find(wanted.begin(), wanted.end(), state) == wanted.end()) return false;
            return std::none_of(action.children.begin(), action.children.end(), [&](const auto& given) {
                return (given->name == state->name || IsUnknownPart(*given)) && !given->Value("VALUE").empty();
            });
        });
    }

    bool HasState(const Item* task, std::string_view name) const { return task && statesOf.count({task, name}) > 0; }

    // Whether the action can enter the state that it names.
    bool Leads(const Transition& transition) const {
        return HasState(transition.owner, transition.state) ||
               (transition.owner && HasState(transition.owner->parent, transition.state));
    }

    static bool IsWithin(const Item* item, const Item& task) {
        while (item && item != &task) item = item->parent;
        return item != nullptr;
    }

    // Whether the state would be entered by an action that names one which is not there: from a state it is most
    // likely the next one that was meant.
    bool MayBeMeant(const Item& task, const Item* before) const {
        return before && std::any_of(transitions.begin(), transitions.end(), [&](const Transition& transition) {
                   return transition.owner == before && before->parent == &task && !Leads(transition);
               });
    }

    void LookAtStates(const Item& task) {
        if (task.kind == KindEvaluation) return;
        bool isFirst = true;
        const Item* before = nullptr;
        std::set<std::string_view> taken;
        for (const auto& state : task.children) {
            if (state->kind != KindTask) continue;
            // A second one of a number is told as that.
            const bool isRepeated = !taken.insert(state->name).second;
            const bool isEntered = isFirst || state->isDropped || state->isMisplaced || state->isMalformed ||
                                   state->name.empty() || isRepeated || mayBeEntered.count(state->name) > 0 ||
                                   IsEntered(state->name, task);
            isFirst = false;
            const Item* const previous = std::exchange(before, state);
            if (!isEntered && !MayBeMeant(task, previous))
                AtHeader("TV4001", *state, "nothing enters " + state->Title());
        }
    }

    bool IsEntered(std::string_view state, const Item& task) const {
        const auto named = owners.find(state);
        return named != owners.end() && std::any_of(named->second.begin(), named->second.end(),
                                                    [&](const Item* owner) { return IsWithin(owner, task); });
    }

    void LookAtNumbers(const Item& parent) {
        if (!IsTaskLike(parent.kind)) return;
        std::map<ScenarioItemKind, std::unordered_set<std::string_view>> taken;
        for (const auto& child : parent.children) {
            const bool isNumbered = child->kind == KindTask || child->kind == KindCriteria || child->kind == KindRule ||
                                    child->kind == KindVariable;
            if (!isNumbered || child->name.empty() || child->isDropped || child->isMisplaced) continue;
            // One with a header of its own finding has its number all the same.
            if (taken[child->kind].insert(child->name).second || child->isMalformed) continue;
            AtHeader("TV4003", *child, parent.Title() + " holds another " + child->Title());
        }
    }

    void LookAtIncludes(const Item& parent) {
        std::set<std::string_view> taken;
        for (const auto& child : parent.children) {
            if (child->kind != KindInclude) continue;
            const std::string_view file = child->Value("FILE");
            if (file.empty() || taken.insert(file).second) continue;
            AtHeader("TV4007", *child, parent.Title() + " includes \"" + std::string(file) + "\" already");
        }
    }

    // What a condition is, if its literals alone decide; as its MODIFIER reads it.
    static std::optional<bool> ResultOf(const Item& condition) {
        std::optional<bool> result;
        if (IsJunction(condition)) {
            const bool isOr = condition.name == "OR";
            bool isKnown = true;
            for (const auto& part : condition.children) {
                if (part->kind != KindCondition) continue;
                const std::optional<bool> one = ResultOf(*part);
                if (one && *one == isOr) result = isOr;
                isKnown = isKnown && one;
            }
            if (!result && isKnown && !condition.children.empty()) result = !isOr;
        } else {
            const std::vector<const Item*> sides = ParametersOf(condition);
            if (sides.size() != 2) return std::nullopt;
            double number[2] = {};
            for (std::size_t side = 0; side < 2; ++side) {
                const std::string_view value = sides[side]->Value("VALUE");
                if (sides[side]->Value("KIND") != "USER" || !IsNumber(value)) return std::nullopt;
                number[side] = static_cast<double>(static_cast<float>(NumberOf(value)));
            }
            const std::string_view name = condition.name;
            if (name == "EQUAL") result = number[0] == number[1];
            if (name == "NOTEQUAL") result = number[0] != number[1];
            if (name == "INFERIOR") result = number[0] < number[1];
            if (name == "INFEQUAL") result = number[0] <= number[1];
            if (name == "SUPERIOR") result = number[0] > number[1];
            if (name == "SUPEQUAL") result = number[0] >= number[1];
        }
        const std::string_view modifier = condition.Value("MODIFIER");
        const bool isNegated = modifier == "IS_FALSE" || modifier == "BECOMES_FALSE" || modifier == "HAS_BEEN_FALSE" ||
                               modifier == "HAS_BEEN_FALSE_FOR";
        if (result && isNegated) result = !*result;
        return result;
    }

    void LookAtRule(const Item& rule) {
        if (rule.Value("IS_DISABLED") == "1") {
            Fault& fault = AtHeader("TV4004", rule, rule.Title() + " is disabled");
            fault.isNote = true;
            fault.help = "Remove its line IS_DISABLED, or the rule if nobody needs it.";
            return;
        }
        for (const auto& child : rule.children) {
            if (child->kind != KindCondition) continue;
            if (ResultOf(*child) == false)
                AtHeader("TV4004", rule,
                         rule.Title() + " can never fire: its condition compares literals and is false");
            return;
        }
    }

    void Visit(const Item& item) {
        LookAtNumbers(item);
        LookAtIncludes(item);
        if (IsTaskLike(item.kind)) LookAtStates(item);
        if (item.kind == KindRule && !item.isDropped) LookAtRule(item);
        for (const auto& child : item.children) Visit(*child);
    }
};

} // namespace

std::vector<Fault> FlowFaults(const ScriptTree& tree, const Definitions& definitions) {
    Flow flow(definitions);
    if (!tree.Root()) return {};
    flow.Gather(*tree.Root(), nullptr);
    std::set<const Item*> told;
    for (const Transition& transition : flow.transitions) {
        flow.owners[transition.state].push_back(transition.owner);
        if (flow.Leads(transition)) continue;
        flow.lost.insert(transition.owner);
        // A state that is nowhere is an unknown task.
        if (!flow.states.count(transition.state) || !told.insert(transition.action).second) continue;
        flow.AtHeader("TV4002", *transition.action,
                      transition.action->Title() + " names TASK (" + std::string(transition.state) +
                          "), which is no state beside or within its own");
    }
    flow.Visit(*tree.Root());
    return std::move(flow.faults);
}

} // namespace TavrelChecking
