#include "SectionClass.h"

#include <cfg/BooleanParameter.h>
#include <cfg/Driver.h>
#include <cfg/IntegerParameter.h>
#include <cfg/IntegerRange.h>
#include <cfg/LiteralParameter.h>
#include <cfg/LiteralRange.h>
#include <cfg/RealParameter.h>
#include <cfg/RealRange.h>
#include <cfg/Scenario.h>
#include <cfg/ScenarioScript.h>
#include <cfg/VariadicParameter.h>
#include <cfg/Vehicle.h>

// The destructors stand here, so that the type information of each class exists once and casts work everywhere.
#define SECTION_CLASS(Class)                                                                                           \
    const char* Class::sectionName() { return #Class; }                                                                \
    Class::Class(const detail::SectionSetup& setup) : Section(setup) {}                                                \
    Class::~Class() = default;

namespace cfg {

SECTION_CLASS(Scenario)
SECTION_CLASS(Vehicle)
SECTION_CLASS(Driver)
SECTION_CLASS(ScenarioScript)
SECTION_CLASS(VariadicParameter)
SECTION_CLASS(BooleanParameter)
SECTION_CLASS(IntegerParameter)
SECTION_CLASS(RealParameter)
SECTION_CLASS(LiteralParameter)
SECTION_CLASS(IntegerRange)
SECTION_CLASS(RealRange)
SECTION_CLASS(LiteralRange)

namespace detail {

namespace {

using Row = FieldRow;

// The order is that in which a new section is written and its parameters are counted off.
// clang-format off
constexpr Row kVehicleParameters[] = {
    Row::of<&Vehicle::id>("id"), Row::of<&Vehicle::driverId>("driverId"), Row::of<&Vehicle::name>("name")};
constexpr Row kDriverParameters[] = {
    Row::of<&Driver::id>("id"), Row::of<&Driver::name>("name"), Row::of<&Driver::label>("label")};

constexpr Row kScenarioFields[] = {
    Row::of<&Scenario::name>("name"), Row::of<&Scenario::description>("description")};
constexpr Row kScriptFields[] = {
    Row::of<&ScenarioScript::name>("scriptName"), Row::of<&ScenarioScript::scriptType>("scriptType"),
    Row::of<&ScenarioScript::text>("text")};
constexpr Row kVariadicFields[] = {
    Row::of<&VariadicParameter::name>("name"), Row::of<&VariadicParameter::description>("description"),
    Row::of<&VariadicParameter::parameterId>("parameterId"),
    Row::of<&VariadicParameter::parameterUnit>("parameterUnit")};
constexpr Row kBooleanFields[] = {Row::of<&BooleanParameter::defaultValue>("default")};
constexpr Row kIntegerFields[] = {Row::of<&IntegerParameter::defaultValue>("default")};
constexpr Row kRealFields[]    = {Row::of<&RealParameter::defaultValue>("default")};
constexpr Row kLiteralFields[] = {Row::of<&LiteralParameter::defaultValue>("default")};
constexpr Row kIntegerRangeFields[] = {
    Row::of<&IntegerRange::minimum>("minimum"), Row::of<&IntegerRange::maximum>("maximum")};
constexpr Row kRealRangeFields[] = {
    Row::of<&RealRange::minimum>("minimum"), Row::of<&RealRange::maximum>("maximum")};
constexpr Row kLiteralRangeFields[] = {Row::of<&LiteralRange::literal>("literal")};

template <typename Class>
constexpr SectionClass ClassRow(const char* name, std::span<const Row> parameters, std::span<const Row> fields) {
    static_assert(alignof(Class) <= alignof(std::max_align_t));
    return {name, sizeof(Class), [](void* room, const SectionSetup& setup) -> Section* { return new (room) Class(setup); },
            parameters, fields};
}

constexpr SectionClass kPlain = ClassRow<Section>("", {}, {});

constexpr SectionClass kClasses[] = {
    ClassRow<Scenario>("Scenario",                    {},                 kScenarioFields),
    ClassRow<Vehicle>("Vehicle",                      kVehicleParameters, {}),
    ClassRow<Driver>("Driver",                        kDriverParameters,  {}),
    ClassRow<ScenarioScript>("ScenarioScript",        {},                 kScriptFields),
    ClassRow<VariadicParameter>("VariadicParameter",  {},                 kVariadicFields),
    ClassRow<BooleanParameter>("BooleanParameter",    {},                 kBooleanFields),
    ClassRow<IntegerParameter>("IntegerParameter",    {},                 kIntegerFields),
    ClassRow<RealParameter>("RealParameter",          {},                 kRealFields),
    ClassRow<LiteralParameter>("LiteralParameter",    {},                 kLiteralFields),
    ClassRow<IntegerRange>("IntegerRange",            {},                 kIntegerRangeFields),
    ClassRow<RealRange>("RealRange",                  {},                 kRealRangeFields),
    ClassRow<LiteralRange>("LiteralRange",            {},                 kLiteralRangeFields),
};
// clang-format on

} // namespace

const SectionClass* SectionClassOf(std::string_view name) {
    for (const SectionClass& row : kClasses)
        if (name == row.name) return &row;
    return &kPlain;
}

} // namespace detail

} // namespace cfg
