#ifndef TAVREL_SCENARIO_TEMPLATE_DB_DRIVER_NODE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_DRIVER_NODE_H

#include <string>

#include <TavrelScenarioTemplateDb/Export.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>

namespace cfg {
class Driver;
}

namespace TavrelScenarioTemplateDb {

// The node of a driver. Its id shows the driver's id, its name the driver's label and the vehicle that it drives.
class TAVREL_DRIVER_API DriverNode : public TavrelScenarioNode {
public:
    // Neither is owned. Throws like TavrelScenarioNode.
    DriverNode(cfg::Driver* driverSection, ScenarioTemplateDb::ScenarioNode* parentNode);

    // "Driver[id/@ScenarioTreeValue=1]": a step of parameter ids, so a format.
    std::string getId() const override;
    // "Driver[D1] - Truck": the name of the last vehicle beside this driver that names it, or the driver's own where
    // none does. Throws Exception by value (ExceptionCodeGeneric) when the section stands in no parent; so does every
    // operation that puts this name into a message.
    std::string getName() const override;

private:
    cfg::Driver* driver; // the node's section by its own type
};

} // namespace TavrelScenarioTemplateDb

#endif
