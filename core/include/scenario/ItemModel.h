#ifndef SCENARIO_ITEMMODEL_H
#define SCENARIO_ITEMMODEL_H

// Every item class, the reader and the writer.
#include <scenario/LoadDiagnostics.h>
#include <scenario/ParameterValue.h>
#include <scenario/ScenarioItem.h>
#include <scenario/config.h>
#include <scenario/program.h>
#include <scenario/token.h>
#include <scenario/variable.h>

#endif
