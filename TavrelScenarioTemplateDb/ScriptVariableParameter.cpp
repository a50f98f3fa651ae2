#include <TavrelScenarioTemplateDb/ScriptVariableParameter.h>

#include <ScenarioTemplateDb/Exception.h>
#include <ScenarioTemplateDb/ScenarioNode.h>
#include <TavrelScenarioTemplateDb/internal/StandardNumber.h>
#include <lmk/units.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeParameterType;
using ScenarioTemplateDb::ScenarioNode;

ScriptVariableParameter::ScriptVariableParameter(std::int64_t variableId, const std::string& variableName,
                                                 const std::string& variableValue, const std::string& variableType,
                                                 ScenarioNode* parentNode)
    : id(variableId), name(variableName), value(variableValue), type(variableType), parent(parentNode) {}

std::size_t ScriptVariableParameter::getIndex() const { return getParentNode()->getParameterIndex(this); }

ScenarioNode* ScriptVariableParameter::getParentNode() const { return parent; }

std::string ScriptVariableParameter::getId() const {
    return "Variable[name=" + std::to_string(static_cast<std::uint64_t>(id)) + "]/value";
}

std::string ScriptVariableParameter::getName() const { return name; }

std::string ScriptVariableParameter::getDescription() const { return std::string(); }

std::string ScriptVariableParameter::getParameterId() const {
    return parent ? parent->getNodeId() + "/" + getId() : getId();
}

std::string ScriptVariableParameter::getParameterUnit() const { return lmk::toText(static_cast<lmk::t_unit>(1)); }

bool ScriptVariableParameter::hasParameterUnit() const { return false; }

std::string ScriptVariableParameter::getValueAsString() const { return value; }

bool ScriptVariableParameter::isInteger() const { return type == "INTEGER"; }

// VOID is what a variable has that says nothing of its type.
bool ScriptVariableParameter::isReal() const { return type == "FLOAT" || type == "VOID"; }

bool ScriptVariableParameter::isLiteral() const { return type == "STRING"; }

bool ScriptVariableParameter::isBoolean() const { return type == "BOOL"; }

std::string ScriptVariableParameter::getLiteralValue() const {
    if (!isLiteral()) throw new Exception("Parameter type is not a string", ExceptionCodeParameterType);
    return value;
}

std::int64_t ScriptVariableParameter::getIntegerValue() const {
    const std::optional<std::int64_t> number = standardWholeNumber(value);
    if (!number) throw new Exception("Parameter type is not an integer", ExceptionCodeParameterType);
    return *number;
}

double ScriptVariableParameter::getRealValue() const {
    const std::optional<double> number = standardNumber(value);
    if (!number) throw new Exception("Parameter type is not a real", ExceptionCodeParameterType);
    return *number;
}

bool ScriptVariableParameter::getBooleanValue() const {
    if (!isBoolean()) throw new Exception("Parameter type is not a boolean", ExceptionCodeParameterType);
    return value != "0";
}

} // namespace TavrelScenarioTemplateDb
