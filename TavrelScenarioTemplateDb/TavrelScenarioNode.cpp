#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <ScenarioTemplateDb/Exception.h>
#include <ScenarioTemplateDb/ScenarioParameter.h>
#include <TavrelScenarioTemplateDb/DriverNode.h>
#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScriptNode.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioParameter.h>
#include <TavrelScenarioTemplateDb/VehicleNode.h>
#include <cfg/Driver.h>
#include <cfg/ScenarioScript.h>
#include <cfg/Section.h>
#include <cfg/Vehicle.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;

namespace {

// Whether a sub-section is shown as a node of its own name. The others have nodes of their own classes, but for the
// template of the scenario, which a host never sees.
bool isPlainSection(std::string_view name) {
    return name != "Vehicle" && name != "Driver" && name != "ScenarioScript" && !isHiddenSection(name);
}

// The number in the id of a vehicle or driver, "Vehicle[id/@ScenarioTreeValue=3]"; none in any other text, nor in one
// that spells its number in another way than ids do.
std::optional<std::int32_t> numberOfId(std::string_view id, std::string_view word) {
    constexpr std::string_view kBegin = "[id/@ScenarioTreeValue=";
    if (!id.starts_with(word) || !id.substr(word.size()).starts_with(kBegin) || !id.ends_with(']')) return std::nullopt;
    id.remove_prefix(word.size() + kBegin.size());
    id.remove_suffix(1);
    std::int32_t number = 0;
    std::from_chars(id.data(), id.data() + id.size(), number);
    if (std::to_string(number) != id) return std::nullopt;
    return number;
}

} // namespace

TavrelScenarioNode::TavrelScenarioNode(cfg::Section* nodeSection, ScenarioNode* parentNode)
    : section(nodeSection), parent(parentNode) {
    if (!section) throw new Exception("Failed to initialize the scenario element", ExceptionCodeGeneric);

    const std::size_t subSectionNumber = section->getSubSectionCount();
    if (subSectionNumber > 0) {
        children.reserve(subSectionNumber);
        for (std::size_t index = 0; index < subSectionNumber; ++index) {
            cfg::Section* subSection = section->getSubSection(index);
            if (isPlainSection(subSection->getName()))
                children.push_back(std::make_unique<TavrelScenarioNode>(subSection, this));
        }
        vehiclesBegin = children.size();
        std::vector<cfg::Section*> vehicles;
        section->getSubSections(cfg::Vehicle::sectionName(), vehicles);
        for (cfg::Section* vehicle : vehicles)
            children.push_back(std::make_unique<VehicleNode>(dynamic_cast<cfg::Vehicle*>(vehicle), this));
        driversBegin = children.size();
        std::vector<cfg::Section*> drivers;
        section->getSubSections(cfg::Driver::sectionName(), drivers);
        for (cfg::Section* driver : drivers)
            children.push_back(std::make_unique<DriverNode>(dynamic_cast<cfg::Driver*>(driver), this));
        scriptsBegin = children.size();
        std::vector<cfg::Section*> scripts;
        section->getSubSections(cfg::ScenarioScript::sectionName(), scripts);
        for (cfg::Section* entry : scripts) {
            auto* script = dynamic_cast<cfg::ScenarioScript*>(entry);
            if (script && isItemModelScript(*script)) children.push_back(std::make_unique<ScriptNode>(script, this));
        }
    }

    parameters.reserve(TavrelScenarioNode::getParameterNumber());
    const cfg::Section::ParameterIterator end = section->endParameter();
    for (cfg::Section::ParameterIterator position = section->beginParameter(); position != end; ++position)
        parameters.emplace_back(&position, this);
}

TavrelScenarioNode::~TavrelScenarioNode() = default;

cfg::Section* TavrelScenarioNode::getSection() const { return section; }

std::string TavrelScenarioNode::getId() const { return section->getName(); }

std::string TavrelScenarioNode::getName() const { return section->getName(); }

std::string TavrelScenarioNode::getDescription() const { return std::string(); }

ScenarioNode* TavrelScenarioNode::getParent() const { return parent; }

std::size_t TavrelScenarioNode::getIndex() const { return parent ? parent->getChildIndex(this) : 0; }

std::size_t TavrelScenarioNode::getChildNumber() const { return children.size(); }

ScenarioNode* TavrelScenarioNode::getChild(const std::string& id) const {
    // A scenario has thousands of vehicles and drivers. To compare the number that each has now does without the texts
    // of all their ids.
    const auto numbered = [&](std::size_t begin, std::size_t end, auto number) -> ScenarioNode* {
        for (std::size_t index = begin; index < end; ++index)
            if (number(static_cast<const TavrelScenarioNode&>(*children[index]).section)) return children[index].get();
        return nullptr;
    };
    const auto named = [&](std::size_t begin, std::size_t end) -> ScenarioNode* {
        for (std::size_t index = begin; index < end; ++index)
            if (children[index]->getId() == id) return children[index].get();
        return nullptr;
    };
    ScenarioNode* child = named(0, vehiclesBegin);
    if (const auto wanted = numberOfId(id, "Vehicle"); wanted && !child)
        child = numbered(vehiclesBegin, driversBegin, [wanted](const cfg::Section* vehicle) {
            return static_cast<const cfg::Vehicle*>(vehicle)->id == *wanted;
        });
    if (const auto wanted = numberOfId(id, "Driver"); wanted && !child)
        child = numbered(driversBegin, scriptsBegin, [wanted](const cfg::Section* driver) {
            return static_cast<const cfg::Driver*>(driver)->id == *wanted;
        });
    if (!child) child = named(scriptsBegin, children.size());
    if (child) return child;
    throw new Exception("No child element with id=" + id + " in scenario element : " + getName(), ExceptionCodeGeneric);
}

ScenarioNode* TavrelScenarioNode::getChild(std::size_t index) const {
    if (index >= children.size())
        throw new Exception(std::string("Out of bound child index of the scenario element : ") + section->getName(),
                            ExceptionCodeGeneric);
    return children[index].get();
}

void TavrelScenarioNode::getChildren(std::vector<ScenarioNode*>& out) const {
    out.clear();
    for (const auto& child : children) out.push_back(child.get());
}

std::size_t TavrelScenarioNode::getChildIndex(const ScenarioNode* child) const {
    for (std::size_t index = 0; index < children.size(); ++index)
        if (children[index].get() == child) return index;
    throw new Exception("The child element " + (child ? child->getName() : std::string()) +
                            " was not found in parent scenario element " + section->getName(),
                        ExceptionCodeGeneric);
}

std::size_t TavrelScenarioNode::getParameterNumber() const {
    std::size_t number = 0;
    const cfg::Section::ParameterIterator end = section->endParameter();
    for (cfg::Section::ParameterIterator position = section->beginParameter(); position != end; ++position) ++number;
    return number;
}

ScenarioParameter* TavrelScenarioNode::getParameter(const std::string& id) const {
    for (TavrelScenarioParameter& parameter : parameters)
        if (parameter.getId() == id) return &parameter;
    throw new Exception("No child parameter with id=" + id + " in scenario element : " + getName(),
                        ExceptionCodeGeneric);
}

ScenarioParameter* TavrelScenarioNode::getParameter(std::size_t index) const {
    if (index >= parameters.size())
        throw new Exception(std::string("Out of bound child index of the scenario parameter : ") + section->getName(),
                            ExceptionCodeGeneric);
    return &parameters[index];
}

void TavrelScenarioNode::getParameters(std::vector<ScenarioParameter*>& out) const {
    out.clear();
    for (TavrelScenarioParameter& parameter : parameters) out.push_back(&parameter);
}

std::size_t TavrelScenarioNode::getParameterIndex(const ScenarioParameter* parameter) const {
    for (std::size_t index = 0; index < parameters.size(); ++index)
        if (&parameters[index] == parameter) return index;
    throw new Exception("The child parameter " + (parameter ? parameter->getName() : std::string()) +
                            " was not found in parent element " + section->getName(),
                        ExceptionCodeGeneric);
}

std::string TavrelScenarioNode::getNodeId() const {
    return parent ? parent->getNodeId() + "/" + getId() : "/sce/" + getId();
}

} // namespace TavrelScenarioTemplateDb
