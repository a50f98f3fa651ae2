#ifndef TAVREL_SCENARIO_TEMPLATE_DB_ROOT_MODEL_H
#define TAVREL_SCENARIO_TEMPLATE_DB_ROOT_MODEL_H

#include <iosfwd>
#include <string>

#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

// The root model of an installation: which file it is, and how it becomes the one that scripts are linked to.
class TAVREL_DRIVER_API RootModel {
public:
    // Where it lies below a root of the data path.
    static constexpr const char* kPath = "data/tools/nuro/nuro.mdl";

    // The first such file in the data path of that configuration, as an absolute path; empty if there is none, and for
    // a configuration that the installation in use does not name.
    static std::string fileOf(const std::string& configuration);

    enum class Outcome {
        InUse,
        Unreadable, // as LoadScenarioFile says on the log, and as a LoadProblemListener is told
        NoFolder    // the top item of the file is another one
    };
    // Reads the file anew and makes it `scenarioRootModel`. It is never freed, since scripts may point into it. While
    // it is being read there is no root model, so that it links within itself; the one before is back unless the new
    // one is in use. `log` may be null. What the reading throws passes through. While models are shared, the tree in
    // use may be kept instead, as ShareRootModels says; `configuration` is the one that the model is read for.
    static Outcome use(const std::string& file, std::ostream* log, const std::string& configuration = std::string());
};

} // namespace TavrelScenarioTemplateDb

#endif
