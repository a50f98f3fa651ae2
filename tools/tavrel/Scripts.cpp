#include "Scripts.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <utility>

#include <ScenarioTemplateDb/Exception.h>
#include <cfg/CfgScenario.h>
#include <fmt/format.h>
#include <lmkUtils/AssertAbort.h>
#include <lmkUtils/EnvConfig.h>
#include <simulation/Trace.h>

#include "ScenarioFile.h"
#include "Spelling.h"

namespace tavrel {

[[noreturn]] static void DieOf(const char* source, int line);

} // namespace tavrel

// A program's definition stands before the library's.
[[gnu::visibility("default")]] void AssertAbort(const char* source, int line) { tavrel::DieOf(source, line); }

namespace tavrel {

namespace {

using lmkUtils::EnvConfig;
using TavrelScenarioTemplateDb::RootModel;
using TavrelScenarioTemplateDb::scriptsOf;
namespace fs = std::filesystem;

constexpr const char* kRefusal = "Unable to parse script "; // how the library begins to tell of one

// What is being done, for the message of a process that an assertion ends.
std::string scriptUnderWay;
const ScenarioItem* itemUnderWay = nullptr; // whose texts are being made
LoadProblem fatalProblem;                   // the one that names an assertion
LoadProblem lastRefusal;                    // of a text that nobody gathers the problems of

template <class Value>
class ScopedValue {
public:
    ScopedValue(Value& where, Value value) : place(where), former(std::exchange(where, std::move(value))) {}
    ~ScopedValue() { place = std::move(former); }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    Value& place;
    Value former;
};

// Both paths absolute, with links resolved.
bool LiesIn(const fs::path& file, const std::string& folder) {
    std::error_code error;
    const fs::path root = fs::weakly_canonical(folder, error);
    const fs::path relative = file.lexically_relative(root);
    return !error && !relative.empty() && *relative.begin() != "..";
}

// A FILE may lead anywhere, also to what the author of a scenario cannot read and the user can. Causes quote the text,
// too.
bool MayBeShown(const LoadProblem& problem, const std::string& place) {
    const std::string path = problem.file.empty() ? place : FileOf(problem);
    if (path == place) return true; // a text in memory, or what the user named
    std::error_code error;
    const fs::path file = fs::weakly_canonical(path, error);
    try {
        for (const std::string& root :
             EnvConfig::getSeparatedPathForConfiguration(EnvConfig::getCurrentConfiguration(), "."))
            if (LiesIn(file, root)) return true;
    } catch (...) {
        CurrentFailure(); // a configuration without a data path
    }
    return false;
}

void NoteFatalProblem(const LoadProblem& problem) {
    if (!problem.assertion.empty()) fatalProblem = problem;
}

// What is wrong with a text that was read all the same, such as an include that is missing.
void TellProblems(const ProblemList& list, const std::string& place) {
    for (const LoadProblem& problem : list.problems) Report(ProblemSentence(problem, place));
}

// Fails with the last problem unless `read` answers true. What else is wrong with the file is told.
void ReadOrFail(const std::string& path, ExitStatus status, const std::function<bool()>& read) {
    ProblemList list;
    bool isRead = false;
    std::string cause = path + ": the text is refused";
    try {
        isRead = read();
    } catch (...) {
        cause = fmt::format("{}: {}", path, CurrentFailure().sentence); // a number that does not convert
    }
    for (const LoadProblem& problem : list.problems)
        if (!problem.isWarning) cause = ProblemSentence(problem, path);
    if (!isRead) throw Failure{status, cause};
    TellProblems(list, path);
}

LoadedScript LoadFromTemplate(Context& context, const OpenedScenario& found,
                              const std::function<void(Template&)>& prepare) {
    auto opened = std::make_unique<Template>(found.configuration.name, found.scenario->getPath(), found.directory);
    OpenDespiteDeclarations(*opened);
    if (prepare) prepare(*opened);
    const std::vector<cfg::ScenarioScript*> scripts = scriptsOf(opened->File());
    std::vector<std::string> names;
    for (const cfg::ScenarioScript* script : scripts) names.push_back(script->name);
    const std::string wanted = MeantOf(context.arguments.Text("--script"), names);
    std::string refusal;
    for (std::size_t number = 0; number < scripts.size(); ++number) {
        const cfg::ScenarioScript* const script = scripts[number];
        if (!wanted.empty() && script->name != wanted) continue;
        const ScriptUnderWay working(script->name);
        ProblemList list;
        std::uint32_t row = 1;
        std::string cause = "the text is refused";
        LoadedScript loaded;
        loaded.file = opened->getFilePath();
        loaded.number = number;
        loaded.title = fmt::format("{}, script {}", opened->getPath(), script->name);
        loaded.path = opened->getPath();
        loaded.script = script->name;
        loaded.installation = EnvConfig::ourConfigCfgFile;
        loaded.rootModel = RootModel::fileOf(found.configuration.name);
        try {
            loaded.root = ReadScriptText(script->text, row);
        } catch (...) {
            cause = CurrentFailure().sentence;
        }
        loaded.scenario = dynamic_cast<ScenarioLib::Scenario*>(loaded.root.get());
        if (loaded.scenario || (loaded.root && !wanted.empty())) {
            TellProblems(list, loaded.title);
            if (loaded.scenario) loaded.tables->fill(*loaded.scenario, opened->File());
            loaded.opened = std::move(opened);
            return loaded;
        }
        if (!loaded.root && refusal.empty())
            refusal = list.problems.empty() ? fmt::format("{}:{}: {}", loaded.title, row, cause)
                                            : ProblemSentence(list.problems.back(), loaded.title);
    }
    if (!refusal.empty()) throw Failure{ExitUnreadable, refusal};
    if (names.empty() && context.arguments.Has("--all")) {
        LoadedScript none;
        none.title = none.path = opened->getPath();
        return none;
    }
    if (names.empty()) throw Failure{ExitUnreadable, opened->getPath() + " has no script"};
    throw Failure{ExitUnreadable, wanted.empty()
                                      ? fmt::format("no script of {} is a whole scenario; it has {}", opened->getPath(),
                                                    fmt::join(names, ", "))
                                      : fmt::format("{} has no script \"{}\"{}; it has {}", opened->getPath(), wanted,
                                                    DidYouMean(wanted, names), fmt::join(names, ", "))};
}

LoadedScript LoadFromDisk(const std::string& path) {
    LoadedScript loaded;
    loaded.file = loaded.title = path;
    loaded.root = ReadScriptFileOrFail(path, ExitUnreadable);
    loaded.scenario = dynamic_cast<ScenarioLib::Scenario*>(loaded.root.get());
    return loaded;
}

} // namespace

void ProblemList::OnLoadProblem(const LoadProblem& problem) {
    NoteFatalProblem(problem);
    problems.push_back(problem);
}

ScriptUnderWay::ScriptUnderWay(const std::string& name) : textName(name) { scriptUnderWay = name; }
ScriptUnderWay::~ScriptUnderWay() { scriptUnderWay.clear(); }

void ListenForAssertions() {
    class Listener : public LoadProblemListener {
        void OnLoadProblem(const LoadProblem& problem) override {
            NoteFatalProblem(problem);
            if (!problem.isWarning) lastRefusal = problem;
        }
    };
    static Listener listener;
    SetLoadProblemListener(&listener);
}

std::string WithCauseOfRefusal(const std::string& sentence, const std::string& subject) {
    const std::size_t begin = sentence.find(kRefusal);
    if (begin == std::string::npos || lastRefusal.cause.empty()) return sentence;
    const std::string script = "script " + lastRefusal.script;
    return sentence.substr(0, begin) +
           ProblemSentence(lastRefusal, begin > 0 || subject.empty() ? script : subject + ", " + script);
}

void DieOf(const char* source, int line) {
    TavrelProcesses::Death death;
    death.script = scriptUnderWay;
    if (itemUnderWay) death.place = TavrelSimulation::PathOf(*itemUnderWay);
    const std::string assertion = fmt::format("{}:{}", source, line);
    if (fatalProblem.assertion == assertion) {
        death.file = FileOf(fatalProblem);
        death.script = fatalProblem.script;
        death.row = fatalProblem.row;
    }
    TavrelProcesses::DieOfAssertion(assertion, death);
}

void UpdateDisplayTexts(ScenarioItem& item) {
    if (dynamic_cast<const Function*>(&item) || dynamic_cast<const Parameter*>(&item)) {
        const ScopedValue<const ScenarioItem*> working(itemUnderWay, &item);
        return item.UpdateDisplayTextTree();
    }
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (ScenarioItem* child : children) UpdateDisplayTexts(*child);
    item.UpdateDisplayText();
}

std::string InstallationFileFor(const Context& context, const std::string& path) {
    const char* fromEnvironment = std::getenv("TAVREL_CONFIG");
    if (context.arguments.Has("--config")) return context.arguments.Text("--config");
    if (fromEnvironment && *fromEnvironment) return fromEnvironment;
    std::error_code error;
    const std::string above = InstallationFileFrom(fs::weakly_canonical(path, error).parent_path().string());
    return above.empty() ? InstallationFileInUse(context.arguments) : above;
}

std::string ConfigurationFor(const Context& context, const std::string& path) {
    const std::vector<std::string> names = EnvConfig::getConfigurationsList();
    if (context.arguments.Has("--configuration")) {
        const std::string name = ChosenConfiguration(context.arguments);
        if (std::find(names.begin(), names.end(), name) == names.end())
            throw Failure{ExitUnreadable,
                          fmt::format("there is no configuration \"{}\"{}; {} has {}", name, DidYouMean(name, names),
                                      EnvConfig::ourConfigCfgFile, fmt::join(names, ", "))};
        return name;
    }
    std::error_code error;
    const fs::path file = fs::weakly_canonical(path, error);
    for (const std::string& name : names)
        for (const std::string& root : EnvConfig::getSeparatedPathForConfiguration(name, "."))
            if (LiesIn(file, root)) return name;
    return names.empty() ? "" : names.front();
}

void UseRootModelFile(const std::string& path) {
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    RootModel::Outcome outcome{};
    ReadOrFail(path, ExitUnreadable, [&] {
        outcome = RootModel::use(path, nullptr);
        return outcome != RootModel::Outcome::Unreadable;
    });
    if (outcome == RootModel::Outcome::NoFolder)
        throw Failure{ExitUnreadable, path + " is no root model, since its top item is no FOLDER"};
}

void UseRootModel(const std::string& configuration) {
    const std::string file = RootModel::fileOf(configuration);
    if (file.empty())
        throw Failure{ExitUnreadable,
                      fmt::format("configuration \"{}\" has no root model {}", configuration, RootModel::kPath)};
    UseRootModelFile(file);
}

std::unique_ptr<ScenarioItem> ReadScriptFile(const std::string& path) {
    return std::unique_ptr<ScenarioItem>(LoadScenarioFile(path.c_str(), nullptr, false));
}

std::unique_ptr<ScenarioItem> ReadScriptText(const std::string& text, std::uint32_t& row) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    try {
        std::unique_ptr<ScenarioItem> root(LoadScenarioText(stream, nullptr, &context, nullptr, false));
        row = stream.line;
        return root;
    } catch (...) {
        row = stream.line; // a number that does not convert
        throw;
    }
}

std::unique_ptr<ScenarioItem> ReadScriptFileOrFail(const std::string& path, ExitStatus status) {
    std::unique_ptr<ScenarioItem> root;
    ReadOrFail(path, status, [&] {
        root = ReadScriptFile(path);
        return root != nullptr;
    });
    return root;
}

std::string FileOf(const LoadProblem& problem) {
    // The library stores the paths of includes with backslashes.
    std::error_code error;
    std::string file = problem.file;
    if (!fs::exists(file, error)) std::replace(file.begin(), file.end(), '\\', '/');
    return file;
}

std::string ProblemSentence(const LoadProblem& problem, const std::string& place) {
    if (!MayBeShown(problem, place))
        return fmt::format("{}:{}: it is refused, and lies outside of the data path, so nothing of it is shown",
                           FileOf(problem), problem.row);
    const std::string line = OneLine(problem.line);
    return fmt::format("{}:{}: {}{}", problem.file.empty() ? place : FileOf(problem), problem.row,
                       OneLine(problem.cause), line.empty() ? "" : fmt::format(" ({})", line));
}

ScriptRows RowsOf(const LoadedScript& loaded) {
    if (loaded.opened) {
        const ScenarioFile file(loaded.file);
        const std::vector<FileScript> scripts = file.Scripts();
        if (loaded.number >= scripts.size()) throw Failure{ExitUnreadable, loaded.file + " has changed meanwhile"};
        const FileScript& script = scripts[loaded.number];
        const std::vector<std::uint32_t> rowsInFile = file.RowsOf(script);
        return {*loaded.root, script.text.Text(), loaded.file, [rowsInFile](std::uint32_t row) {
                    return rowsInFile[std::min<std::size_t>(std::max(row, 1U), rowsInFile.size()) - 1];
                }};
    }
    std::ifstream bytes(loaded.file, std::ios::binary);
    return {*loaded.root, std::string{std::istreambuf_iterator<char>(bytes), {}}, loaded.file,
            [](std::uint32_t row) { return row; }};
}

void OpenDespiteDeclarations(Template& scenario) {
    using ScenarioTemplateDb::Exception;
    try {
        scenario.getName();
    } catch (Exception* declaration) { // everything else is thrown by value
        const std::unique_ptr<Exception> owned(declaration);
        Report(fmt::format("{}: a declaration leads nowhere: {}", scenario.getPath(), OneLine(owned->message)));
    }
}

LoadedScript LoadScript(Context& context, const std::string& operand, const std::function<void(Template&)>& prepare) {
    const bool isScript =
        !context.arguments.Has("--all") && KindOfFile(operand) != FileKind::Scenario && IsFileOnDisk(context, operand);
    if (!isScript) return LoadFromTemplate(context, OpenScenario(context, operand), prepare);
    const std::string reason = ReasonNotToOpen(operand);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", operand, reason)};
    const Installation installation(context, InstallationFileFor(context, operand));
    const std::string configuration = ConfigurationFor(context, operand);
    EnvConfig::setConfig(configuration, false);
    const std::string model =
        context.arguments.Has("--model") ? context.arguments.Text("--model") : RootModel::fileOf(configuration);
    if (context.arguments.Has("--model"))
        UseRootModelFile(model);
    else
        UseRootModel(configuration);
    LoadedScript loaded = LoadFromDisk(operand);
    loaded.path = operand;
    loaded.installation = installation.File();
    loaded.rootModel = model;
    return loaded;
}

} // namespace tavrel
