#include <simulation/Calls.h>

namespace TavrelSimulation {

namespace {

constexpr std::size_t kHighestCode = 1000000; // a table beyond it would be a slip in the root model

// The definition in the root model, complete with a CODE.
std::size_t CodeOf(ScenarioItemKind kind, const char* word, const std::string& name) {
    if (!scenarioRootModel) throw UnknownCall("no root model is in use, so no " + std::string(word) + " has a CODE");
    const ScenarioItem* folder = scenarioRootModel->FindItem(KindFolder, DefinitionListOf(kind), "");
    auto* definition = folder ? dynamic_cast<const Function*>(folder->FindItem(kind, name, std::string())) : nullptr;
    if (!definition) {
        std::vector<std::string> known;
        std::vector<const ScenarioItem*> items;
        if (folder) folder->CollectItemsOfKind(items, kind, false, true);
        for (const ScenarioItem* item : items) known.push_back(item->name);
        const std::string near = NearestName(name, known);
        throw UnknownCall("the root model has no " + std::string(word) + " \"" + name + "\"" +
                          (near.empty() ? "" : ", did you mean \"" + near + "\""));
    }
    if (definition->codeNumber < 0 || static_cast<std::size_t>(definition->codeNumber) > kHighestCode)
        throw UnknownCall("the root model gives the " + std::string(word) + " \"" + name + "\" no CODE");
    return static_cast<std::size_t>(definition->codeNumber);
}

// An implementation as the tables hold it. An entry is only called for a call under way.
template <typename Entry, typename Body>
void Put(std::vector<Entry>& table, std::size_t code, Body body) {
    if (table.size() <= code) table.resize(code + 1);
    table[code] = [body = std::move(body)](const ParameterValues& values) {
        return body(Call{*CallUnderWay(), values});
    };
}

} // namespace

void ProvideAction(const std::string& name, std::function<void(const Call&)> body) {
    Put(ActionTable(), CodeOf(KindAction, "action", name), std::move(body));
}

void ProvideCondition(const std::string& name, std::function<bool(const Call&)> body) {
    Put(ConditionTable(), CodeOf(KindCondition, "condition", name), std::move(body));
}

void ProvideFunction(const std::string& name, std::function<float(const Call&)> body) {
    Put(FunctionTable(), CodeOf(KindFunction, "function", name), std::move(body));
}

} // namespace TavrelSimulation
