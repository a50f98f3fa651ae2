#ifndef SCENARIO_TEMPLATE_DB_VARIADIC_PARAMETER_H
#define SCENARIO_TEMPLATE_DB_VARIADIC_PARAMETER_H

#include <cstddef>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/Export.h>
#include <ScenarioTemplateDb/ParameterType.h>

namespace ScenarioTemplateDb {

class ScenarioParameter;

// A scenario's declaration that one of its parameters may be varied, and over which values. The type decides which
// of the operations below apply; the others throw Exception* (ExceptionCodeParameterType), deleted by the catcher.
class SCENARIO_TEMPLATE_DB_API VariadicParameter {
public:
    // One interval of permitted values, both ends included; nothing promises that the minimum is the smaller end.
    // Ranges are held by value in the variadic parameter and are never deleted through this type. Hence no virtual
    // destructor, which would also stand first among the operations; being protected, the destructor cannot be
    // called by mistake.
    template <typename T>
    struct SCENARIO_TEMPLATE_DB_API Range {
        Range() = default;
        Range(const Range&) = default;
        Range& operator=(const Range&) = default;

        virtual T getMinimum() const = 0;
        virtual T getMaximum() const = 0;

    protected:
        ~Range() = default;
    };

    virtual ~VariadicParameter() = default;

    virtual std::string getName() const = 0;
    virtual std::string getDescription() const = 0;
    // The full id of the parameter that may be varied.
    virtual std::string getParameterId() const = 0;
    virtual std::string getParameterUnit() const = 0;
    virtual bool hasParameterUnit() const = 0;
    virtual ParameterType getType() const = 0;
    // Owned by the scenario's node tree. Null where the id named nothing when the scenario was opened.
    virtual ScenarioParameter* getTargetParameter() const = 0;

    // The order differs from that of ScenarioParameter. Both orders are part of the interface.
    virtual bool isInteger() const = 0;
    virtual bool isReal() const = 0;
    virtual bool isBoolean() const = 0;
    virtual bool isLiteral() const = 0;

    virtual int getIntegerDefaultValue() const = 0;
    virtual double getRealDefaultValue() const = 0;
    virtual bool getBooleanDefaultValue() const = 0;
    virtual std::string getLiteralDefaultValue() const = 0;

    // The vectors lose what they held. A range belongs to this object; its address holds until the next range is
    // inserted or removed. Where an insert puts the new element is said by the implementation.
    virtual void getIntegerRanges(std::vector<const Range<int>*>& ranges) const = 0;
    virtual Range<int>& insertIntegerRange(std::size_t index) = 0;
    virtual void getRealRanges(std::vector<const Range<double>*>& ranges) const = 0;
    virtual Range<double>& insertRealRange(std::size_t index) = 0;
    virtual void getLiterals(std::vector<std::string>& literals) const = 0;
    // Refers to the new literal itself: what is assigned to it is stored.
    virtual std::string& insertLiteral(std::size_t index) = 0;
};

} // namespace ScenarioTemplateDb

#endif
