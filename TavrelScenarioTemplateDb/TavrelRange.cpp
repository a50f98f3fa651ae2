#include <TavrelScenarioTemplateDb/TavrelRange.h>

#include <ScenarioTemplateDb/Exception.h>
#include <cfg/IntegerRange.h>
#include <cfg/RealRange.h>

namespace TavrelScenarioTemplateDb {

namespace {

template <typename T>
struct RangeSection;
template <>
struct RangeSection<int> {
    using Type = cfg::IntegerRange;
};
template <>
struct RangeSection<double> {
    using Type = cfg::RealRange;
};

// The section by the class that has the fields. As a reference, so that a section of another class is told.
template <typename T>
typename RangeSection<T>::Type& fieldsOf(cfg::Section* section) {
    return dynamic_cast<typename RangeSection<T>::Type&>(*section);
}

} // namespace

template <typename T>
TavrelRange<T>::TavrelRange(cfg::Section* rangeSection) : section(rangeSection) {
    if (!section) throw ScenarioTemplateDb::Exception("section null", ScenarioTemplateDb::ExceptionCodeGeneric);
}

template <typename T>
T TavrelRange<T>::getMinimum() const {
    return fieldsOf<T>(section).minimum;
}

template <typename T>
T TavrelRange<T>::getMaximum() const {
    return fieldsOf<T>(section).maximum;
}

template <typename T>
void TavrelRange<T>::setMinimum(T minimum) {
    fieldsOf<T>(section).minimum = minimum;
}

template <typename T>
void TavrelRange<T>::setMaximum(T maximum) {
    fieldsOf<T>(section).maximum = maximum;
}

template <typename T>
cfg::Section* TavrelRange<T>::getSection() const {
    return section;
}

template class TavrelRange<int>;
template class TavrelRange<double>;

} // namespace TavrelScenarioTemplateDb
