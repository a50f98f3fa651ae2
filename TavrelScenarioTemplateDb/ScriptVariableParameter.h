#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SCRIPT_VARIABLE_PARAMETER_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SCRIPT_VARIABLE_PARAMETER_H

#include <cstddef>
#include <cstdint>
#include <string>

#include <ScenarioTemplateDb/ScenarioParameter.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

// A variable of a script as it was when the tree was built. All of it is text; the type only says which of the four
// predicates is true, and the number getters do not ask for it.
class TAVREL_DRIVER_API ScriptVariableParameter : public ScenarioTemplateDb::ScenarioParameter {
public:
    // `variableType` is the word of the script: INTEGER, FLOAT or VOID (both real), STRING, BOOL; any other makes all
    // predicates false. The parent is not owned.
    ScriptVariableParameter(std::int64_t variableId, const std::string& variableName, const std::string& variableValue,
                            const std::string& variableType, ScenarioTemplateDb::ScenarioNode* parentNode);

    std::size_t getIndex() const override;
    ScenarioTemplateDb::ScenarioNode* getParentNode() const override;
    // "Variable[name=12]/value". Only digits may follow "name=", so a negative id shows as the large unsigned number of
    // the same bits.
    std::string getId() const override;
    std::string getName() const override;
    // Empty.
    std::string getDescription() const override;
    std::string getParameterId() const override;
    // The text of "no unit".
    std::string getParameterUnit() const override;
    bool hasParameterUnit() const override;
    // The text of the script as it stands, whatever the type.
    std::string getValueAsString() const override;

    bool isInteger() const override;
    bool isReal() const override;
    bool isLiteral() const override;
    bool isBoolean() const override;

    std::string getLiteralValue() const override;
    // The number at the beginning of the value, after blanks; what follows it is ignored. Throw Exception*
    // (ExceptionCodeParameterType) when there is none, std::out_of_range when it does not fit.
    std::int64_t getIntegerValue() const override;
    double getRealValue() const override;
    // False for "0", true for every other text, the empty one too.
    bool getBooleanValue() const override;

private:
    std::int64_t id;
    std::string name;
    std::string value;
    std::string type;
    ScenarioTemplateDb::ScenarioNode* parent;
};

} // namespace TavrelScenarioTemplateDb

#endif
