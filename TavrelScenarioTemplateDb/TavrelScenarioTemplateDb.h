#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_TEMPLATE_DB_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_TEMPLATE_DB_H

// The driver together with the interface that it implements.
#include <ScenarioTemplateDb/ScenarioTemplateDb.h>
#include <TavrelScenarioTemplateDb/DriverNode.h>
#include <TavrelScenarioTemplateDb/RootModel.h>
#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScenarioTables.h>
#include <TavrelScenarioTemplateDb/ScriptNode.h>
#include <TavrelScenarioTemplateDb/ScriptVariableParameter.h>
#include <TavrelScenarioTemplateDb/SectionValues.h>
#include <TavrelScenarioTemplateDb/ShareRootModels.h>
#include <TavrelScenarioTemplateDb/SharedStateGuard.h>
#include <TavrelScenarioTemplateDb/TavrelConfigurationDirectory.h>
#include <TavrelScenarioTemplateDb/TavrelConfigurationRootDirectory.h>
#include <TavrelScenarioTemplateDb/TavrelConfigurationScenarioDirectory.h>
#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>
#include <TavrelScenarioTemplateDb/TavrelRange.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioParameter.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>
#include <TavrelScenarioTemplateDb/TavrelVariadicParameter.h>
#include <TavrelScenarioTemplateDb/TavrelVersionDirectory.h>
#include <TavrelScenarioTemplateDb/VehicleNode.h>

// The file and the sections that some operations take or hand out.
#include <cfg/BooleanParameter.h>
#include <cfg/CfgScenario.h>
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

#endif
