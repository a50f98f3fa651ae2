#ifndef SCENARIO_ITEMMODEL_H
#define SCENARIO_ITEMMODEL_H

// Every item class, the reader and the writer.
#include <scenario/CallUnderWay.h>
#include <scenario/Condition.h>
#include <scenario/Criteria.h>
#include <scenario/DefinitionLists.h>
#include <scenario/IncludeRepository.h>
#include <scenario/ItemText.h>
#include <scenario/LoadDiagnostics.h>
#include <scenario/NearestName.h>
#include <scenario/Parameter.h>
#include <scenario/ParameterValue.h>
#include <scenario/ScenarioItem.h>
#include <scenario/WhyInvalid.h>
#include <scenario/action.h>
#include <scenario/config.h>
#include <scenario/evaluation.h>
#include <scenario/function.h>
#include <scenario/include.h>
#include <scenario/program.h>
#include <scenario/rule.h>
#include <scenario/scenario.h>
#include <scenario/task.h>
#include <scenario/token.h>
#include <scenario/variable.h>

#endif
