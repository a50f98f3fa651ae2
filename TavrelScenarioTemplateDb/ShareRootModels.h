#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SHARE_ROOT_MODELS_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SHARE_ROOT_MODELS_H

#include <memory>

#include <TavrelScenarioTemplateDb/Export.h>

class RootModelUse;

namespace TavrelScenarioTemplateDb {

// Each template that is opened reads its root model anew, and the former trees stay for the life of the process, since
// scripts may point into them: a host that opens thousands pays for thousands of equal trees. While an object of this
// class lives, the openings of this process share a tree where they would make an equal one: an opening keeps the tree
// in `scenarioRootModel` if a former opening made it, from a model file of the same path and the same bytes, for the
// same configuration, installation file and current configuration, while sharing was on. Off by default; objects nest,
// and their order of destruction does not matter.
//
// The model file is still read at each opening and compared, so an edited model is seen at once, and what the reading
// of the model told on the log and to a LoadProblemListener is told again. A model that draws on other files (with an
// include, say) is never shared.
//
// What a host gives up by it: templates that are open at the same time have one root model in common, as has whatever
// points into it. So while one of these objects lives, the host must not change that tree, nor delete it or hand it to
// someone who does; and it must not expect a new tree at each opening, such as one without the observers that it added
// to the former. A host's own reading with LoadScenarioFile shares nothing.
class TAVREL_DRIVER_API ShareRootModels {
public:
    ShareRootModels();
    ~ShareRootModels();
    ShareRootModels(const ShareRootModels&) = delete;
    ShareRootModels& operator=(const ShareRootModels&) = delete;

    // Whether any such object lives.
    static bool areShared();

private:
    std::unique_ptr<RootModelUse> use; // the index of the model's definitions is shared, too
};

} // namespace TavrelScenarioTemplateDb

#endif
