#include <simulation/Scene.h>

#include <algorithm>
#include <cmath>

#include <TavrelScenarioTemplateDb/SectionValues.h>
#include <cfg/CfgScenario.h>
#include <cfg/Driver.h>
#include <cfg/Section.h>
#include <cfg/Vehicle.h>

namespace TavrelSimulation {

namespace {

using cfg::Section;
using TavrelScenarioTemplateDb::numberOf;
using TavrelScenarioTemplateDb::textOf;

std::vector<Section*> Below(Section* section, const char* name) {
    std::vector<Section*> sections;
    if (section) section->getSubSections(name, sections);
    return sections;
}

int WholeNumber(Section* section, const char* name, int fallback) {
    return static_cast<int>(std::clamp(numberOf(section, name, fallback), -1e9, 1e9));
}

// A word of an enumeration in the file as the number that the root model gives it; 0 for one that is not listed.
int NumberOfWord(const std::string& word, std::initializer_list<const char*> words) {
    const auto found = std::find(words.begin(), words.end(), word);
    return found == words.end() ? 0 : static_cast<int>(found - words.begin());
}

std::vector<VEHICLE::Channel> Channels(Section* vehicle, const char* name) {
    std::vector<VEHICLE::Channel> channels;
    for (Section* section : Below(vehicle, name)) channels.push_back({textOf(section, "name")});
    return channels;
}

Vehicle Standing(Section* section) {
    Vehicle vehicle;
    vehicle.roadPosition = numberOf(section, "roadPosition", 0);
    vehicle.x = numberOf(section, "x", vehicle.roadPosition);
    vehicle.y = numberOf(section, "y", 0);
    vehicle.heading = numberOf(section, "heading", 0);
    vehicle.speed = vehicle.targetSpeed = std::max(0.0, numberOf(section, "initialSpeed", 0));
    vehicle.lane = WholeNumber(section, "lane", 1);
    vehicle.model = textOf(section, "model");
    for (const VEHICLE::Channel& output : Channels(section, "Output")) vehicle.outputNames.push_back(output.name);
    return vehicle;
}

void FillWeather(World& world, Section* weather) {
    world.visibility = numberOf(weather, "visibility", world.visibility);
    world.rain = numberOf(weather, "rain", world.rain);
    world.windSpeed = numberOf(weather, "windSpeed", world.windSpeed);
    world.friction = numberOf(weather, "friction", world.friction);
    world.dayHour = numberOf(weather, "hour", world.dayHour);
    world.weather = NumberOfWord(textOf(weather, "kind"), {"clear", "cloudy", "rain", "fog", "snow"});
}

void FillRoad(World& world, Section* road) {
    for (Section* light : Below(road, "TrafficLight"))
        world.trafficLights[WholeNumber(light, "number", 0)] =
            NumberOfWord(textOf(light, "colour"), {"off", "green", "amber", "red", "redAmber", "flashing"});
    for (Section* barrier : Below(road, "Barrier"))
        world.barriers[WholeNumber(barrier, "number", 0)] = numberOf(barrier, "closed", 0) != 0;
    for (Section* sign : Below(road, "RoadSign"))
        world.signs[WholeNumber(sign, "number", 0)] = numberOf(sign, "position", 0);
}

} // namespace

void Scene::FillWorld(World& world, cfg::CfgScenario& file) {
    Section& root = *file.getRootSection();
    for (Section* section : Below(&root, cfg::Driver::sectionName()))
        if (const auto* driver = dynamic_cast<cfg::Driver*>(section)) {
            world.driverStyles[driver->name] =
                NumberOfWord(textOf(section, "style"), {"calm", "normal", "hasty", "reckless"});
            world.attention[driver->name] = numberOf(section, "attention", 1);
        }
    for (Section* section : Below(&root, cfg::Vehicle::sectionName()))
        if (const auto* vehicle = dynamic_cast<cfg::Vehicle*>(section))
            world.vehicles.emplace(vehicle->id, Standing(section));
    FillWeather(world, root.getSubSection("Weather"));
    FillRoad(world, root.getSubSection("Road"));
    for (Section* object : Below(&root, "Object"))
        world.objects[textOf(object, "name")] = {numberOf(object, "x", 0), numberOf(object, "y", 0)};
}

std::uint32_t Scene::SeedOf(cfg::CfgScenario& file) {
    return static_cast<std::uint32_t>(WholeNumber(file.getRootSection(), "randomSeed", 0));
}

} // namespace TavrelSimulation
