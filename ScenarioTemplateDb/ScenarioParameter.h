#ifndef SCENARIO_TEMPLATE_DB_SCENARIO_PARAMETER_H
#define SCENARIO_TEMPLATE_DB_SCENARIO_PARAMETER_H

#include <cstddef>
#include <cstdint>
#include <string>

#include <ScenarioTemplateDb/Export.h>

namespace ScenarioTemplateDb {

class ScenarioNode;

// A typed, read-only value of a node, which owns it. At most one of the four predicates is true; a value of a kind
// that the interface does not know has none.
class SCENARIO_TEMPLATE_DB_API ScenarioParameter {
public:
    virtual ~ScenarioParameter() = default;

    // Position among the node's parameters.
    virtual std::size_t getIndex() const = 0;
    virtual ScenarioNode* getParentNode() const = 0;

    // Names the parameter among those of its node and forms the last step of its full id.
    virtual std::string getId() const = 0;
    virtual std::string getName() const = 0;
    virtual std::string getDescription() const = 0;
    // The full id, which Scenario::getParameterFromId leads back here.
    virtual std::string getParameterId() const = 0;
    // The unit in which the value is given; means nothing where hasParameterUnit says no.
    virtual std::string getParameterUnit() const = 0;
    virtual bool hasParameterUnit() const = 0;
    virtual std::string getValueAsString() const = 0;

    virtual bool isInteger() const = 0;
    virtual bool isReal() const = 0;
    virtual bool isLiteral() const = 0;
    virtual bool isBoolean() const = 0;

    // Throw Exception* (ExceptionCodeParameterType), deleted by the catcher, for a value of another type.
    virtual std::string getLiteralValue() const = 0;
    virtual std::int64_t getIntegerValue() const = 0;
    virtual double getRealValue() const = 0;
    virtual bool getBooleanValue() const = 0;
};

} // namespace ScenarioTemplateDb

#endif
