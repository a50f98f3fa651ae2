#include <TavrelScenarioTemplateDb/VehicleNode.h>

#include <cfg/Vehicle.h>

namespace TavrelScenarioTemplateDb {

VehicleNode::VehicleNode(cfg::Vehicle* vehicleSection, ScenarioTemplateDb::ScenarioNode* parentNode)
    : TavrelScenarioNode(vehicleSection, parentNode), vehicle(vehicleSection) {}

std::string VehicleNode::getId() const { return "Vehicle[id/@ScenarioTreeValue=" + std::to_string(vehicle->id) + "]"; }

std::string VehicleNode::getName() const { return "Vehicle[" + std::to_string(vehicle->id) + "] - " + vehicle->name; }

} // namespace TavrelScenarioTemplateDb
