#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_PARAMETER_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_PARAMETER_H

#include <cstddef>
#include <cstdint>
#include <string>

#include <ScenarioTemplateDb/ParameterType.h>
#include <ScenarioTemplateDb/ScenarioParameter.h>
#include <TavrelScenarioTemplateDb/Export.h>
#include <cfg/Section.h>

namespace TavrelScenarioTemplateDb {

// The read-only view of one parameter of a section. Nothing is kept: each call reads the section, and numbers are
// converted from the stored unit system to the unit that the parameter declares.
class TAVREL_DRIVER_API TavrelScenarioParameter : public ScenarioTemplateDb::ScenarioParameter {
public:
    // Copies the position; the parent is not owned. Throws Exception* (ExceptionCodeGeneric) if either is null.
    TavrelScenarioParameter(const cfg::Section::ParameterIterator* position,
                            ScenarioTemplateDb::ScenarioNode* parentNode);
    // Another view of the same parameter, one that its node does not know: getIndex of a copy throws.
    TavrelScenarioParameter(const TavrelScenarioParameter& other) = default;
    TavrelScenarioParameter& operator=(const TavrelScenarioParameter& other) = default;
    ~TavrelScenarioParameter() override;

    std::size_t getIndex() const override;
    ScenarioTemplateDb::ScenarioNode* getParentNode() const override;
    // The parameter's short name, as id and as name.
    std::string getId() const override;
    std::string getName() const override;
    // The parameter's long name, which may be empty.
    std::string getDescription() const override;
    std::string getParameterId() const override;
    std::string getParameterUnit() const override;
    bool hasParameterUnit() const override;
    // Integers in decimal, reals in fixed point with six digits in the global locale of the program, booleans as "true"
    // and "false", texts as they are. Throws Exception by value (ExceptionCodeGeneric) for any other type.
    std::string getValueAsString() const override;

    bool isInteger() const override;
    bool isReal() const override;
    bool isLiteral() const override;
    bool isBoolean() const override;

    std::string getLiteralValue() const override;
    // Converted to the parameter's unit and then cut off toward zero, so the result may differ from the stored number
    // and be larger than it.
    std::int64_t getIntegerValue() const override;
    double getRealValue() const override;
    bool getBooleanValue() const override;

    // Answers literal for every type that the interface does not know, although isLiteral says no to them.
    virtual ScenarioTemplateDb::ParameterType getParameterType() const;

private:
    // A copy of its own, so that it stays on its entry while whoever built it moves on. Mutable because it hands out
    // the values by reference, for writing; nothing here writes.
    mutable cfg::Section::ParameterIterator iterator;
    ScenarioTemplateDb::ScenarioNode* parent;
};

} // namespace TavrelScenarioTemplateDb

#endif
