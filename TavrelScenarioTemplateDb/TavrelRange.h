#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_RANGE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_RANGE_H

#include <ScenarioTemplateDb/VariadicParameter.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace cfg {
class Section;
}

namespace TavrelScenarioTemplateDb {

// The view of one range section of a variadic parameter, for T int (cfg::IntegerRange) and double (cfg::RealRange).
// Reads and writes go to the section at each call; a copy views the same section. Nothing ties the two ends together:
// a minimum above the maximum is kept as written.
template <typename T>
class TAVREL_DRIVER_API TavrelRange : public ScenarioTemplateDb::VariadicParameter::Range<T> {
public:
    // The section is not owned. Throws Exception by value (ExceptionCodeGeneric), "section null". A section of another
    // class than T asks for makes the accessors throw std::bad_cast.
    explicit TavrelRange(cfg::Section* rangeSection);
    TavrelRange(const TavrelRange& other) = default;
    TavrelRange& operator=(const TavrelRange& other) = default;

    T getMinimum() const override;
    T getMaximum() const override;
    // Behind the operations of the interface, which has none.
    virtual ~TavrelRange() = default;

    void setMinimum(T minimum);
    void setMaximum(T maximum);
    cfg::Section* getSection() const;

private:
    cfg::Section* section; // never null
};

extern template class TavrelRange<int>;
extern template class TavrelRange<double>;

} // namespace TavrelScenarioTemplateDb

#endif
