#ifndef SUPPORT_DRIVERTEST_H
#define SUPPORT_DRIVERTEST_H

// What the tests of the driver stand on: its interface, the files and items below it, and the tools of the tests.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <TavrelScenarioTemplateDb/ScriptVariableParameter.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <environment/Environment.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/FailureOf.h>
#include <support/InstallationBuilder.h>
#include <support/ScriptText.h>

namespace fs = std::filesystem;
using namespace ScenarioTemplateDb;
using namespace TavrelScenarioTemplateDb;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

#endif
