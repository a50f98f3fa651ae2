#include <TavrelScenarioTemplateDb/TavrelVariadicParameter.h>

#include <ScenarioTemplateDb/Exception.h>
#include <cfg/BooleanParameter.h>
#include <cfg/IntegerParameter.h>
#include <cfg/IntegerRange.h>
#include <cfg/LiteralParameter.h>
#include <cfg/LiteralRange.h>
#include <cfg/RealParameter.h>
#include <cfg/RealRange.h>
#include <cfg/VariadicParameter.h>
#include <lmk/units.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;
using ScenarioTemplateDb::ExceptionCodeParameterType;
using ScenarioTemplateDb::ParameterType;
using ScenarioTemplateDb::ParameterTypeBoolean;
using ScenarioTemplateDb::ParameterTypeInteger;
using ScenarioTemplateDb::ParameterTypeLiteral;
using ScenarioTemplateDb::ParameterTypeReal;
using ScenarioTemplateDb::ScenarioParameter;

namespace {

// The sub-section that makes a declaration one of this class; null if there is none, or one of another class.
template <typename TypedSection>
TypedSection* findTyped(cfg::VariadicParameter* section) {
    return dynamic_cast<TypedSection*>(section->getSubSection(TypedSection::sectionName()));
}

// The same for operations that cannot do without. A new declaration has no typed section before its first default.
template <typename TypedSection>
TypedSection& requireTyped(cfg::VariadicParameter* section) {
    auto* typed = findTyped<TypedSection>(section);
    if (!typed) throw new Exception("Variadic parameter has no section for its type", ExceptionCodeGeneric);
    return *typed;
}

template <typename TypedSection>
TypedSection& makeTyped(cfg::VariadicParameter* section) {
    section->getOrCreateSubsection(TypedSection::sectionName());
    return requireTyped<TypedSection>(section);
}

template <typename RangeSection, typename TypedSection, typename T>
void readRanges(TypedSection& typed, std::vector<TavrelRange<T>>& ranges) {
    std::vector<cfg::Section*> sections;
    typed.getSubSections(RangeSection::sectionName(), sections);
    for (cfg::Section* section : sections) ranges.emplace_back(dynamic_cast<RangeSection*>(section));
}

// A range that is asked for beyond the end comes first, not last. Hosts rely on it when they pass the largest index.
// The file gets the new section last in any case, so that the order may differ until the next load.
template <typename RangeSection, typename TypedSection, typename T>
TavrelRange<T>& insertRange(TypedSection& typed, std::vector<TavrelRange<T>>& ranges, std::size_t index) {
    const TavrelRange<T> range(typed.createSubSection(RangeSection::sectionName()));
    if (index >= ranges.size()) index = 0;
    return *ranges.insert(ranges.begin() + static_cast<std::ptrdiff_t>(index), range);
}

template <typename T>
void listRanges(const std::vector<TavrelRange<T>>& ranges,
                std::vector<const ScenarioTemplateDb::VariadicParameter::Range<T>*>& out) {
    out.clear();
    for (const TavrelRange<T>& range : ranges) out.push_back(&range);
}

// Without the typed section the ranges are no longer part of the file, and there is nothing to take out of it.
template <typename TypedSection, typename T>
void dropRanges(cfg::VariadicParameter* section, std::vector<TavrelRange<T>>& ranges) {
    if (auto* typed = findTyped<TypedSection>(section))
        for (const TavrelRange<T>& range : ranges) typed->removeSubSection(range.getSection());
    ranges.clear();
}

} // namespace

TavrelVariadicParameter::TavrelVariadicParameter(cfg::VariadicParameter* variadicSection) : section(variadicSection) {}

TavrelVariadicParameter::TavrelVariadicParameter(ScenarioParameter* targetParameter,
                                                 cfg::VariadicParameter* variadicSection)
    : target(targetParameter), section(variadicSection) {
    if (findTyped<cfg::BooleanParameter>(section)) {
        type = ParameterTypeBoolean;
    } else if (auto* integer = findTyped<cfg::IntegerParameter>(section)) {
        readRanges<cfg::IntegerRange>(*integer, integerRanges);
    } else if (auto* real = findTyped<cfg::RealParameter>(section)) {
        type = ParameterTypeReal;
        readRanges<cfg::RealRange>(*real, realRanges);
    } else if (auto* literal = findTyped<cfg::LiteralParameter>(section)) {
        type = ParameterTypeLiteral;
        std::vector<cfg::Section*> sections;
        literal->getSubSections(cfg::LiteralRange::sectionName(), sections);
        for (cfg::Section* entry : sections)
            if (auto* range = dynamic_cast<cfg::LiteralRange*>(entry)) literals.push_back(&range->literal);
    }
}

TavrelVariadicParameter::~TavrelVariadicParameter() = default;

std::string TavrelVariadicParameter::getName() const { return section->name; }

std::string TavrelVariadicParameter::getDescription() const { return section->description; }

std::string TavrelVariadicParameter::getParameterId() const { return section->parameterId; }

std::string TavrelVariadicParameter::getParameterUnit() const { return section->parameterUnit; }

bool TavrelVariadicParameter::hasParameterUnit() const { return lmk::toTUnit(section->parameterUnit.c_str()) > 1; }

ParameterType TavrelVariadicParameter::getType() const { return type; }

ScenarioParameter* TavrelVariadicParameter::getTargetParameter() const { return target; }

bool TavrelVariadicParameter::isInteger() const { return getType() == ParameterTypeInteger; }

bool TavrelVariadicParameter::isReal() const { return getType() == ParameterTypeReal; }

bool TavrelVariadicParameter::isBoolean() const { return getType() == ParameterTypeBoolean; }

bool TavrelVariadicParameter::isLiteral() const { return getType() == ParameterTypeLiteral; }

int TavrelVariadicParameter::getIntegerDefaultValue() const {
    if (!isInteger()) throw new Exception("Variadic parameter type is not an integer", ExceptionCodeParameterType);
    return requireTyped<cfg::IntegerParameter>(section).defaultValue;
}

double TavrelVariadicParameter::getRealDefaultValue() const {
    // Shorter than the other messages; hosts know it so.
    if (!isReal()) throw new Exception("Variadic parameter is not a real", ExceptionCodeParameterType);
    return requireTyped<cfg::RealParameter>(section).defaultValue;
}

bool TavrelVariadicParameter::getBooleanDefaultValue() const {
    if (!isBoolean()) throw new Exception("Variadic parameter type is not a boolean", ExceptionCodeParameterType);
    return requireTyped<cfg::BooleanParameter>(section).defaultValue;
}

std::string TavrelVariadicParameter::getLiteralDefaultValue() const {
    if (!isLiteral()) throw new Exception("Variadic parameter type is not a literal", ExceptionCodeParameterType);
    return requireTyped<cfg::LiteralParameter>(section).defaultValue;
}

void TavrelVariadicParameter::getIntegerRanges(std::vector<const Range<int>*>& ranges) const {
    if (!isInteger()) throw new Exception("Variadic parameter type is not an integer", ExceptionCodeParameterType);
    listRanges(integerRanges, ranges);
}

TavrelRange<int>& TavrelVariadicParameter::insertIntegerRange(std::size_t index) {
    if (!isInteger()) throw new Exception("Variadic parameter type is not an integer", ExceptionCodeParameterType);
    return insertRange<cfg::IntegerRange>(requireTyped<cfg::IntegerParameter>(section), integerRanges, index);
}

void TavrelVariadicParameter::getRealRanges(std::vector<const Range<double>*>& ranges) const {
    if (!isReal()) throw new Exception("Variadic parameter type is not a real", ExceptionCodeParameterType);
    listRanges(realRanges, ranges);
}

TavrelRange<double>& TavrelVariadicParameter::insertRealRange(std::size_t index) {
    if (!isReal()) throw new Exception("Variadic parameter type is not a real", ExceptionCodeParameterType);
    return insertRange<cfg::RealRange>(requireTyped<cfg::RealParameter>(section), realRanges, index);
}

void TavrelVariadicParameter::getLiterals(std::vector<std::string>& out) const {
    if (!isLiteral()) throw new Exception("Variadic parameter type is not a literal", ExceptionCodeParameterType);
    out.clear();
    for (const std::string* literal : literals) out.push_back(*literal);
}

// The index is ignored on purpose: the order of literals is that of their making, unlike that of ranges.
std::string& TavrelVariadicParameter::insertLiteral(std::size_t) {
    if (!isLiteral()) throw new Exception("Variadic parameter type is not a literal", ExceptionCodeParameterType);
    auto& typed = requireTyped<cfg::LiteralParameter>(section);
    auto& range = dynamic_cast<cfg::LiteralRange&>(*typed.createSubSection(cfg::LiteralRange::sectionName()));
    literals.push_back(&range.literal);
    return range.literal;
}

cfg::VariadicParameter* TavrelVariadicParameter::getSection() { return section; }

void TavrelVariadicParameter::setName(const std::string& name) { section->name = name; }

void TavrelVariadicParameter::setDescription(const std::string& description) { section->description = description; }

void TavrelVariadicParameter::setParameterId(const std::string& parameterId) { section->parameterId = parameterId; }

void TavrelVariadicParameter::setParameterUnit(const std::string& parameterUnit) {
    section->parameterUnit = parameterUnit;
}

void TavrelVariadicParameter::setType(ParameterType newType) { type = newType; }

void TavrelVariadicParameter::setIntegerDefaultValue(int value) {
    makeTyped<cfg::IntegerParameter>(section).defaultValue = value;
}

void TavrelVariadicParameter::setRealDefaultValue(double value) {
    makeTyped<cfg::RealParameter>(section).defaultValue = value;
}

void TavrelVariadicParameter::setBooleanDefaultValue(bool value) {
    makeTyped<cfg::BooleanParameter>(section).defaultValue = value;
}

void TavrelVariadicParameter::setLiteralDefaultValue(const std::string& value) {
    makeTyped<cfg::LiteralParameter>(section).defaultValue = value;
}

void TavrelVariadicParameter::removeRange(std::size_t index) {
    const auto place = static_cast<std::ptrdiff_t>(index);
    if (getType() == ParameterTypeInteger) {
        if (index >= integerRanges.size())
            throw Exception("Integer range index is out of range", ExceptionCodeInvalidIndex);
        requireTyped<cfg::IntegerParameter>(section).removeSubSection(integerRanges[index].getSection());
        integerRanges.erase(integerRanges.begin() + place);
    } else if (getType() == ParameterTypeReal) {
        if (index >= realRanges.size()) throw Exception("Real range index is out of range", ExceptionCodeInvalidIndex);
        requireTyped<cfg::RealParameter>(section).removeSubSection(realRanges[index].getSection());
        realRanges.erase(realRanges.begin() + place);
    } else {
        throw Exception("Invalid type", ExceptionCodeParameterType);
    }
}

// Whatever the type. Coarser for literals than for ranges: their whole section goes, with the default.
void TavrelVariadicParameter::clearRanges() {
    dropRanges<cfg::IntegerParameter>(section, integerRanges);
    dropRanges<cfg::RealParameter>(section, realRanges);
    section->removeSubSections("LiteralParameter");
    literals.clear();
}

} // namespace TavrelScenarioTemplateDb
