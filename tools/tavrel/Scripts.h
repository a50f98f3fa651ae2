#ifndef TAVREL_COMMAND_SCRIPTS_H
#define TAVREL_COMMAND_SCRIPTS_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <TavrelScenarioTemplateDb/RootModel.h>
#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScenarioTables.h>
#include <cfg/ScenarioScript.h>
#include <checking/Check.h>
#include <scenario/ItemModel.h>

#include "Files.h"
#include "Installation.h"
#include "ScriptRows.h"

namespace cfg {
class CfgScenario;
class Section;
} // namespace cfg

namespace tavrel {

// Files on disk that the item model reads, with what they need around them.

using TavrelChecking::FileKind;
using TavrelChecking::KindOfFile;

// The installation that a file on disk belongs to: the one that the command line or TAVREL_CONFIG names, else the
// nearest "tavrel.xml" in the folders above the file, else the one in use.
std::string InstallationFileFor(const Context& context, const std::string& path);
// The configuration of the installation in use whose data path holds the file: the one that the command line names,
// else the first that holds it, else the first of all. Empty if there is none.
std::string ConfigurationFor(const Context& context, const std::string& path);

// Gathers what the model has against the texts that are read while this object lives.
class ProblemList : public ScopedLoadProblemListener {
public:
    void OnLoadProblem(const LoadProblem& problem) override;

    std::vector<LoadProblem> problems;
};

// Reads the root model of a configuration and makes it the one that scripts are linked to. Fails if it cannot be read.
void UseRootModel(const std::string& configuration);
// The same with a model file.
void UseRootModelFile(const std::string& path);

// A model, script or include from disk. Null if it cannot be read; a ProblemList then says why.
std::unique_ptr<ScenarioItem> ReadScriptFile(const std::string& path);
// A script in memory. `row` receives the row that the reader came to.
std::unique_ptr<ScenarioItem> ReadScriptText(const std::string& text, std::uint32_t& row);
// A file for those who want no more than one sentence if it cannot be read: fails with a Failure of that status. What
// else is wrong with it is told.
std::unique_ptr<ScenarioItem> ReadScriptFileOrFail(const std::string& path, ExitStatus status);

// The name of the script that is worked on while this object lives, for the message of a process that a broken
// expectation ends.
class ScriptUnderWay {
public:
    explicit ScriptUnderWay(const std::string& name);
    ~ScriptUnderWay();
    ScriptUnderWay(const ScriptUnderWay&) = delete;
    ScriptUnderWay& operator=(const ScriptUnderWay&) = delete;

private:
    const LoadTextName textName;
};

// From here on that message names file, script and row also where nobody gathers the problems of a text.
void ListenForAssertions();
// A sentence of the library about a script that it refused tells no cause, since a reader's log has none. The sentence
// with the cause in its place, or as it is where it tells of something else.
std::string WithCauseOfRefusal(const std::string& sentence, const std::string& subject);

// UpdateDisplayTextTree, call by call, so that the same message names the call.
void UpdateDisplayTexts(ScenarioItem& item);

// A problem as one sentence: "path:row: cause", with the line after it.
std::string ProblemSentence(const LoadProblem& problem, const std::string& place);
// The path of the file that a problem lies in, as a person would write it; empty for a text in memory.
std::string FileOf(const LoadProblem& problem);

// A template whose sections the command may look at.
class Template : public TavrelScenarioTemplateDb::TavrelScenario {
public:
    using TavrelScenario::TavrelScenario;
    cfg::CfgScenario& File() const { return *getCfgScenarioSection(); }
};

// A script that is to be run or drawn.
struct LoadedScript {
    std::size_t number = 0;           // of the script among those of its scenario file
    std::string title;                // for messages: the file or scenario, and the script
    std::string path;                 // of the scenario in the installation, or of the file
    std::string script;               // its name; empty for a script from disk
    std::string file;                 // that was read
    std::string installation;         // whose file it is
    std::string rootModel;            // the file of the root model
    std::unique_ptr<Template> opened; // null for a script from disk
    std::unique_ptr<TavrelScenarioTemplateDb::ScenarioTables> tables = // what the scenario borrows
        std::make_unique<TavrelScenarioTemplateDb::ScenarioTables>();
    std::unique_ptr<ScenarioItem> root;        // the top item
    ScenarioLib::Scenario* scenario = nullptr; // the top item as a scenario, null if it is none
};

// Where the items of a script stand in its file, as it is on disk now.
ScriptRows RowsOf(const LoadedScript& loaded);

// Opens the file and its root model. A declaration that leads nowhere, at which the library gives up, is told; all else
// can be used.
void OpenDespiteDeclarations(Template& scenario);

// Reads what the operand names: a script on disk, or a script of a scenario (by path in the tree or on disk), the one
// that --script names or else the first that is a whole scenario. With --all a scenario without a script answers with
// nothing but its path.
// A scenario is handed to `prepare`, if there is one, before its script is read.
LoadedScript LoadScript(Context& context, const std::string& operand,
                        const std::function<void(Template&)>& prepare = {});

} // namespace tavrel

#endif
