#include <TavrelScenarioTemplateDb/ShareRootModels.h>

#include <scenario/ScenarioItem.h>

namespace TavrelScenarioTemplateDb {

namespace {

int sharings = 0;

} // namespace

ShareRootModels::ShareRootModels() : use(std::make_unique<RootModelUse>()) { ++sharings; }

ShareRootModels::~ShareRootModels() { --sharings; }

bool ShareRootModels::areShared() { return sharings > 0; }

} // namespace TavrelScenarioTemplateDb
