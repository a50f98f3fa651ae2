// The classes of the kinds.
#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include <scenario/ItemModel.h>

#include "text/Assertion.h"

namespace {

constexpr char kSource[] = "ScenarioItem";

using Maker = ScenarioItem* (*)(ItemLoadContext*);

template <class Item>
ScenarioItem* Make(ItemLoadContext*) {
    return new Item();
}

// The load context names one observer for tasks and all that derives from them, and another for rules.
template <class Item>
ScenarioItem* MakeWatchedByFirst(ItemLoadContext* context) {
    return new Item(context ? context->first : nullptr);
}
template <class Item>
ScenarioItem* MakeWatchedBySecond(ItemLoadContext* context) {
    return new Item(context ? context->second : nullptr);
}

// Null for a kind that has a word and no class.
constexpr auto kMakers = [] {
    std::array<Maker, KindVariable + 1> makers{};
    makers[KindAction] = Make<Action>;
    makers[KindElseAction] = Make<Action>;
    makers[KindCondition] = Make<Condition>;
    makers[KindConfig] = Make<Config>;
    makers[KindCriteria] = MakeWatchedByFirst<Criteria>;
    makers[KindEnum] = Make<Enum>;
    makers[KindEnumTab] = Make<EnumTab>;
    makers[KindEvaluation] = MakeWatchedByFirst<Evaluation>;
    makers[KindFolder] = Make<Folders>;
    makers[KindFunction] = Make<Function>;
    makers[KindGeneralParameters] = Make<GeneralParameters>;
    makers[KindGroup] = Make<Group>;
    makers[KindInclude] = MakeWatchedByFirst<Include>;
    makers[KindParameter] = Make<Parameter>;
    makers[KindProgram] = Make<Program>;
    makers[KindReturn] = Make<Parameter>;
    makers[KindRule] = MakeWatchedBySecond<Rule>;
    makers[KindScenario] = MakeWatchedByFirst<ScenarioLib::Scenario>;
    makers[KindTask] = MakeWatchedByFirst<Task>;
    makers[KindVariable] = Make<Variable>;
    return makers;
}();

} // namespace

ScenarioItem* CreateItem(std::uint32_t kind, const std::string& name, ItemLoadContext* context) {
    if (kind >= kMakers.size() || !kMakers[kind])
        AssertionFailed(kSource, 122, std::string(KindKeyword(kind)) + " is a kind that has a word and no items");
    std::unique_ptr<ScenarioItem> item(kMakers[kind](context));
    item->kind = static_cast<ScenarioItemKind>(kind);
    item->SetName(name);
    return item.release();
}
