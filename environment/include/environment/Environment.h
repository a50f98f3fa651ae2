#ifndef ENVIRONMENT_ENVIRONMENT_H
#define ENVIRONMENT_ENVIRONMENT_H

// All of the environment: the installation, files and encodings, scenario files, units.

#include <Commons/CodePoint.h>
#include <Commons/ConfigFile.h>
#include <Commons/Encoding.h>
#include <Commons/FileUtils.h>
#include <Commons/ShortestNumber.h>
#include <Commons/System.h>
#include <Commons/TextPlaces.h>
#include <Commons/WholeFile.h>
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
#include <cfg/ScenarioText.h>
#include <cfg/Section.h>
#include <cfg/VariadicParameter.h>
#include <cfg/Vehicle.h>
#include <cfg/t_ParameterType.h>
#include <environment/Export.h>
#include <lmk/Vector3.h>
#include <lmk/units.h>
#include <lmkUtils/AssertAbort.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <lmkUtils/InstallationMoment.h>
#include <lmkUtils/paths.h>

#endif
