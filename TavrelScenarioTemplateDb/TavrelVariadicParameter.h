#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_VARIADIC_PARAMETER_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_VARIADIC_PARAMETER_H

#include <cstddef>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/ParameterType.h>
#include <ScenarioTemplateDb/VariadicParameter.h>
#include <TavrelScenarioTemplateDb/Export.h>
#include <TavrelScenarioTemplateDb/TavrelRange.h>

namespace cfg {
class VariadicParameter;
}

namespace TavrelScenarioTemplateDb {

// The editable view of one declaration. Everything but the type and the target goes straight into the sections of the
// scenario file, and the scenario's save stores it. To build a new one: setType, the matching default setter (it makes
// the typed section in which the ranges stand), the inserts, then the ends of each range or the text of each literal.
//
// Two objects may view one declaration: a copy shares the sections, and a range that was removed through one is still
// listed by the other, on a section that is no longer part of the file.
//
// Failures leave as Exception*, deleted by the catcher: ExceptionCodeParameterType for an operation of another type,
// ExceptionCodeGeneric "Variadic parameter has no section for its type" where that section is missing. Only
// removeRange throws by value.
class TAVREL_DRIVER_API TavrelVariadicParameter : public ScenarioTemplateDb::VariadicParameter {
public:
    // A new declaration: type integer, no target, nothing read from the section, which is not owned.
    explicit TavrelVariadicParameter(cfg::VariadicParameter* variadicSection);
    // An existing one, whose typed sections decide the type: the boolean one before the integer one, then the real and
    // the literal one; integer without any. Neither argument is owned, the target may be null. Throws Exception by
    // value (ExceptionCodeGeneric), "section null", for a range that is none.
    TavrelVariadicParameter(ScenarioTemplateDb::ScenarioParameter* targetParameter,
                            cfg::VariadicParameter* variadicSection);
    TavrelVariadicParameter(const TavrelVariadicParameter& other) = default;
    TavrelVariadicParameter& operator=(const TavrelVariadicParameter& other) = default;
    // Leaves the sections and the target alone.
    ~TavrelVariadicParameter() override;

    std::string getName() const override;
    std::string getDescription() const override;
    std::string getParameterId() const override;
    std::string getParameterUnit() const override;
    // False for a unit text that is unknown, too.
    bool hasParameterUnit() const override;
    ScenarioTemplateDb::ParameterType getType() const override;
    // As found when the scenario was opened; setParameterId does not look it up again.
    ScenarioTemplateDb::ScenarioParameter* getTargetParameter() const override;

    bool isInteger() const override;
    bool isReal() const override;
    bool isBoolean() const override;
    bool isLiteral() const override;

    int getIntegerDefaultValue() const override;
    double getRealDefaultValue() const override;
    bool getBooleanDefaultValue() const override;
    std::string getLiteralDefaultValue() const override;

    void getIntegerRanges(std::vector<const Range<int>*>& ranges) const override;
    // Puts the new range before the one at `index`; an index beyond the last range puts it at the front. The reference
    // holds until the next insert or removal of a range, the section behind it as long as the file.
    TavrelRange<int>& insertIntegerRange(std::size_t index) override;
    void getRealRanges(std::vector<const Range<double>*>& ranges) const override;
    TavrelRange<double>& insertRealRange(std::size_t index) override;
    void getLiterals(std::vector<std::string>& out) const override;
    // Always appends, whatever `index` says. The reference is the text in the file's section and holds as long as the
    // file.
    std::string& insertLiteral(std::size_t index) override;

    cfg::VariadicParameter* getSection();

    // Any text is taken.
    void setName(const std::string& name);
    void setDescription(const std::string& description);
    void setParameterId(const std::string& parameterId);
    void setParameterUnit(const std::string& parameterUnit);
    // What a later load finds is decided by the typed sections, which this does not touch.
    void setType(ScenarioTemplateDb::ParameterType newType);
    // Make the typed section if it is missing, whatever getType says.
    void setIntegerDefaultValue(int value);
    void setRealDefaultValue(double value);
    void setBooleanDefaultValue(bool value);
    void setLiteralDefaultValue(const std::string& value);

    // For integers and reals; a literal cannot be removed alone. Throws Exception by value: ExceptionCodeParameterType
    // "Invalid type", ExceptionCodeInvalidIndex beyond the end.
    void removeRange(std::size_t index);
    // Removes all ranges and literals. The integer and real defaults stay; a literal's default goes with its section.
    void clearRanges();

private:
    ScenarioTemplateDb::ParameterType type = ScenarioTemplateDb::ParameterTypeInteger;
    std::vector<TavrelRange<int>> integerRanges;
    std::vector<TavrelRange<double>> realRanges;
    std::vector<std::string*> literals; // owned by their sections
    ScenarioTemplateDb::ScenarioParameter* target = nullptr;
    cfg::VariadicParameter* section;
};

} // namespace TavrelScenarioTemplateDb

#endif
