#include <TavrelScenarioTemplateDb/ScriptNode.h>

#include <cstddef>
#include <exception>
#include <sstream>

#include <ScenarioTemplateDb/Exception.h>
#include <ScenarioTemplateDb/ScenarioParameter.h>
#include <TavrelScenarioTemplateDb/ScriptVariableParameter.h>
#include <TavrelScenarioTemplateDb/internal/StandardNumber.h>
#include <cfg/ScenarioScript.h>
#include <scenario/LoadDiagnostics.h>
#include <scenario/ScenarioItem.h>
#include <scenario/variable.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;

namespace {

constexpr char kErrorSeverity = 4; // the first character of an error on a log of the model

// A reader's log lives as long as the constructor of a node. Afterwards the model logs where it did before: to a stream
// that is gone it must not.
class LogGuard {
public:
    LogGuard() : before(scenarioLog) {}
    ~LogGuard() { scenarioLog = before; }
    LogGuard(const LogGuard&) = delete;
    LogGuard& operator=(const LogGuard&) = delete;

private:
    std::ostream* before;
};

// Variables that an included file brought along belong to that file. An evaluation, although an include by class, is a
// part of the script.
bool belongsToInclude(const ScenarioItem* variable) {
    const ScenarioItem* unit = FindOwningUnit(variable);
    return unit && unit->kind == KindInclude;
}

} // namespace

ScriptNode::ScriptNode(cfg::ScenarioScript* scriptSection, ScenarioNode* parentNode)
    : parent(parentNode), script(scriptSection) {
    const LogGuard logGuard;
    const LoadTextName textName(script->name);
    std::ostringstream log;
    std::unique_ptr<ScenarioItem> root;
    try {
        ScenarioTextStream stream(script->text.c_str(), script->text.size() + 1);
        ItemLoadContext context{nullptr, nullptr};
        root.reset(LoadScenarioVariables(stream, &context, &log));
        if (!root) log << kErrorSeverity << LoadFailureText(script->name, stream) << std::endl;
    } catch (const std::exception& error) {
        throw Exception("Unable to parse script " + script->name + " :\n" + error.what() + "\n" + log.str(),
                        ExceptionCodeGeneric);
    }
    if (!root) throw Exception("Unable to parse script " + script->name + " :\n" + log.str(), ExceptionCodeGeneric);

    std::vector<ScenarioItem*> variables;
    root->CollectItemsOfKind(variables, KindVariable, true, true);
    for (const ScenarioItem* item : variables) {
        if (belongsToInclude(item)) continue;
        const std::optional<std::int64_t> id = standardWholeNumber(item->name);
        if (!id)
            throw Exception("Unable to convert variable id : " + item->name + " in script " + script->name,
                            ExceptionCodeGeneric);
        const auto& variable = dynamic_cast<const Variable&>(*item);
        parameters.push_back(std::make_unique<ScriptVariableParameter>(*id, variable.label, variable.value,
                                                                       variable.interactiveType, this));
    }
}

ScriptNode::~ScriptNode() = default;

cfg::ScenarioScript* ScriptNode::getScript() const { return script; }

std::string ScriptNode::getId() const { return "ScenarioScript[scriptName=\"" + script->name + "\"]"; }

std::string ScriptNode::getName() const { return "ScenarioScript - " + script->name; }

std::string ScriptNode::getDescription() const { return std::string(); }

ScenarioNode* ScriptNode::getParent() const { return parent; }

std::size_t ScriptNode::getIndex() const { return getParent()->getChildIndex(this); }

std::size_t ScriptNode::getChildNumber() const { return 0; }

ScenarioNode* ScriptNode::getChild(const std::string&) const {
    throw new Exception("Scenario script <" + script->name + "> never has children node!", ExceptionCodeGeneric);
}

ScenarioNode* ScriptNode::getChild(std::size_t) const {
    throw new Exception("Scenario script <" + script->name + "> never has children node!", ExceptionCodeGeneric);
}

void ScriptNode::getChildren(std::vector<ScenarioNode*>&) const {
    throw new Exception("Scenario script <" + script->name + "> never has children node!", ExceptionCodeGeneric);
}

std::size_t ScriptNode::getChildIndex(const ScenarioNode*) const {
    throw new Exception("Script nodes cannot have children nodes.", ExceptionCodeGeneric);
}

std::size_t ScriptNode::getParameterNumber() const { return parameters.size(); }

ScenarioParameter* ScriptNode::getParameter(const std::string& id) const {
    for (const auto& parameter : parameters)
        if (parameter->getId() == id) return parameter.get();
    throw new Exception("No child parameter with id=" + id + " in scenario node : " + getName(), ExceptionCodeGeneric);
}

ScenarioParameter* ScriptNode::getParameter(std::size_t index) const {
    if (index >= parameters.size())
        throw new Exception("Out of bound child index of the scenario parameter : " + script->name,
                            ExceptionCodeGeneric);
    return parameters[index].get();
}

void ScriptNode::getParameters(std::vector<ScenarioParameter*>& out) const {
    out.clear();
    for (const auto& parameter : parameters) out.push_back(parameter.get());
}

std::size_t ScriptNode::getParameterIndex(const ScenarioParameter* parameter) const {
    for (std::size_t index = 0; index < parameters.size(); ++index)
        if (parameters[index].get() == parameter) return index;
    throw new Exception("The child node " + (parameter ? parameter->getName() : std::string()) +
                            " was not found in parent script node " + script->name,
                        ExceptionCodeGeneric);
}

std::string ScriptNode::getNodeId() const { return parent ? parent->getNodeId() + "/" + getId() : getId(); }

} // namespace TavrelScenarioTemplateDb
