#ifndef SCENARIO_TEMPLATE_DB_SCENARIO_TEMPLATE_DB_H
#define SCENARIO_TEMPLATE_DB_SCENARIO_TEMPLATE_DB_H

// The whole interface.
#include <ScenarioTemplateDb/DatabaseDirectory.h>
#include <ScenarioTemplateDb/DatabaseDriver.h>
#include <ScenarioTemplateDb/Exception.h>
#include <ScenarioTemplateDb/ParameterType.h>
#include <ScenarioTemplateDb/Scenario.h>
#include <ScenarioTemplateDb/ScenarioNode.h>
#include <ScenarioTemplateDb/ScenarioParameter.h>
#include <ScenarioTemplateDb/VariadicParameter.h>

#endif
