#include <TavrelScenarioTemplateDb/ScenarioTables.h>

#include <cstdint>
#include <map>
#include <string>

#include <TavrelScenarioTemplateDb/SectionValues.h>
#include <cfg/CfgScenario.h>
#include <cfg/Driver.h>
#include <cfg/Scenario.h>
#include <cfg/Vehicle.h>
#include <scenario/evaluation.h>

namespace TavrelScenarioTemplateDb {

namespace {

std::vector<cfg::Section*> below(cfg::Section& section, const char* name) {
    std::vector<cfg::Section*> sections;
    section.getSubSections(name, sections);
    return sections;
}

std::vector<VEHICLE::Channel> channels(cfg::Section& vehicle, const char* name) {
    std::vector<VEHICLE::Channel> channels;
    for (cfg::Section* section : below(vehicle, name)) channels.push_back({textOf(section, "name")});
    return channels;
}

// Name to position among its like.
void fillNames(cfg::Section& root, const char* sectionName, std::map<std::string, std::int32_t>& table) {
    std::int32_t position = 0;
    for (cfg::Section* section : below(root, sectionName)) table.emplace(textOf(section, "name"), position++);
}

} // namespace

ScenarioTables::ScenarioTables() = default;

ScenarioTables::~ScenarioTables() = default;

void ScenarioTables::fill(ScenarioLib::Scenario& scenario, cfg::CfgScenario& file) {
    cfg::Section& root = *file.getRootSection();
    for (cfg::Section* section : below(root, cfg::Vehicle::sectionName())) {
        const auto* vehicle = dynamic_cast<cfg::Vehicle*>(section);
        if (!vehicle) continue;
        VEHICLE& entry = scenario.GetVehicle(vehicle->id);
        entry.id = vehicle->id;
        entry.name = vehicle->name;
        entry.inputs = channels(*section, "Input");
        entry.outputs = channels(*section, "Output");
    }
    for (cfg::Section* section : below(root, cfg::Driver::sectionName()))
        if (const auto* driver = dynamic_cast<cfg::Driver*>(section))
            scenario.channelNumbers.emplace(driver->name, driver->id);
    fillNames(root, "Trigger", scenario.triggers);
    fillNames(root, "Image", scenario.images);
    fillNames(root, "Sound", scenario.sounds);
    for (cfg::Section* object : below(root, "Object")) {
        items.emplace_back(CreateItem(KindFolder, textOf(object, "name"), nullptr));
        points.push_back({items.back().get(), 1, numberOf(object, "x", 0), numberOf(object, "y", 0), 0});
    }
    scenario.pointList = &points;
    if (scenario.evaluation) scenario.evaluation->owner = &scenario;
}

} // namespace TavrelScenarioTemplateDb
