#include <TavrelScenarioTemplateDb/DriverNode.h>

#include <vector>

#include <ScenarioTemplateDb/Exception.h>
#include <cfg/Driver.h>
#include <cfg/Vehicle.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;

DriverNode::DriverNode(cfg::Driver* driverSection, ScenarioTemplateDb::ScenarioNode* parentNode)
    : TavrelScenarioNode(driverSection, parentNode), driver(driverSection) {}

std::string DriverNode::getId() const { return "Driver[id/@ScenarioTreeValue=" + std::to_string(driver->id) + "]"; }

std::string DriverNode::getName() const {
    cfg::Section* parentSection = driver->getParentSection();
    if (!parentSection)
        throw Exception("Unable to get vehicle for driver " + driver->name + " : no parent section",
                        ExceptionCodeGeneric);
    const std::string* shownName = &driver->name;
    std::vector<cfg::Section*> vehicles;
    parentSection->getSubSections(cfg::Vehicle::sectionName(), vehicles);
    // From the end, since of several vehicles with this driver the last one gives the name.
    for (auto candidate = vehicles.rbegin(); candidate != vehicles.rend(); ++candidate) {
        const auto* vehicle = dynamic_cast<const cfg::Vehicle*>(*candidate);
        if (!vehicle || vehicle->driverId != driver->id) continue;
        shownName = &vehicle->name;
        break;
    }
    return "Driver[" + driver->label + "] - " + *shownName;
}

} // namespace TavrelScenarioTemplateDb
