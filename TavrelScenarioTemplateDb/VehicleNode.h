#ifndef TAVREL_SCENARIO_TEMPLATE_DB_VEHICLE_NODE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_VEHICLE_NODE_H

#include <string>

#include <TavrelScenarioTemplateDb/Export.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>

namespace cfg {
class Vehicle;
}

namespace TavrelScenarioTemplateDb {

// The node of a vehicle, told from its siblings by the vehicle's id.
class TAVREL_DRIVER_API VehicleNode : public TavrelScenarioNode {
public:
    // Neither is owned. Throws like TavrelScenarioNode.
    VehicleNode(cfg::Vehicle* vehicleSection, ScenarioTemplateDb::ScenarioNode* parentNode);

    // "Vehicle[id/@ScenarioTreeValue=3]": a step of parameter ids, so a format.
    std::string getId() const override;
    // "Vehicle[3] - Truck".
    std::string getName() const override;

private:
    cfg::Vehicle* vehicle; // the node's section by its own type
};

} // namespace TavrelScenarioTemplateDb

#endif
