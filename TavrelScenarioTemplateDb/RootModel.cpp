#include <TavrelScenarioTemplateDb/RootModel.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <streambuf>
#include <utility>
#include <vector>

#include <Commons/FileUtils.h>
#include <TavrelScenarioTemplateDb/ShareRootModels.h>
#include <TavrelScenarioTemplateDb/internal/FileBytes.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/LoadDiagnostics.h>
#include <scenario/ScenarioItem.h>
#include <scenario/program.h>

namespace TavrelScenarioTemplateDb {

namespace {

// The tree that openings share, and all that another reading of it would depend on or tell.
struct SharedModel {
    Folders* tree = nullptr; // never freed; null for one that others must not have
    std::vector<std::string> circumstances;
    std::string text;
    std::string log;
    std::vector<LoadProblem> problems;
};

// Writes to another stream, if there is one, and keeps what it wrote.
class KeptLog : private std::streambuf, public std::ostream {
public:
    KeptLog(std::ostream* log, std::string& text) : std::ostream(this), target(log), kept(text) {
        if (target) copyfmt(*target);
    }

private:
    using Traits = std::streambuf::traits_type; // both bases have one

    Traits::int_type overflow(Traits::int_type c) override {
        if (Traits::eq_int_type(c, Traits::eof())) return Traits::not_eof(c);
        const char sign = Traits::to_char_type(c);
        return xsputn(&sign, 1) == 1 ? c : Traits::eof();
    }
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        kept.append(text, static_cast<std::size_t>(size));
        if (target) target->write(text, size);
        return size;
    }
    int sync() override {
        if (target) target->flush();
        return 0;
    }

    std::ostream* target;
    std::string& kept;
};

// Keeps the problems that are told while it lives. They are composed even if nobody else listens: a listener may come
// before the next opening.
class KeptProblems : private ScopedLoadProblemListener {
public:
    explicit KeptProblems(std::vector<LoadProblem>& problems) : kept(problems) {}

private:
    void OnLoadProblem(const LoadProblem& problem) override {
        kept.push_back(problem);
        if (Former()) Former()->OnLoadProblem(problem);
    }

    std::vector<LoadProblem>& kept;
};

void tellProblem(const LoadProblem& problem) {
    LoadProblemListener* const listener = SetLoadProblemListener(nullptr);
    SetLoadProblemListener(listener);
    if (listener) listener->OnLoadProblem(problem);
}

// Whether an equal text gives an equal tree, whatever other files hold: a model of definitions alone does.
bool standsOnItsTextAlone(const ScenarioItem& item) {
    switch (item.kind) {
    case KindFolder:
    case KindGroup:
    case KindEnumTab:
    case KindEnum:
    case KindParameter:
    case KindFunction:
    case KindAction:
    case KindCondition:
        break;
    default:
        return false;
    }
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    return std::all_of(children.begin(), children.end(),
                       [](const ScenarioItem* child) { return standsOnItsTextAlone(*child); });
}

// Makes what `read` gives the root model.
template <typename Read>
RootModel::Outcome readModel(const Read& read) {
    static auto* const kept = new std::vector<std::unique_ptr<ScenarioItem>>(); // by which every model stays reachable
    struct Current {
        ~Current() { scenarioRootModel = model; }
        Folders* model = std::exchange(scenarioRootModel, nullptr);
    } current;
    std::unique_ptr<ScenarioItem> item(read());
    if (!item) return RootModel::Outcome::Unreadable;
    auto* model = dynamic_cast<Folders*>(item.get());
    if (!model) return RootModel::Outcome::NoFolder;
    kept->push_back(std::move(item));
    current.model = model;
    return RootModel::Outcome::InUse;
}

} // namespace

std::string RootModel::fileOf(const std::string& configuration) {
    const std::vector<std::string> candidates =
        lmkUtils::EnvConfig::getSeparatedPathForConfiguration(configuration, kPath);
    const auto candidate = std::find_if(candidates.begin(), candidates.end(), Commons::FileUtils::DoesFileExist);
    return candidate == candidates.end() ? std::string() : *candidate;
}

RootModel::Outcome RootModel::use(const std::string& file, std::ostream* log, const std::string& configuration) {
    const auto readAnew = [&] { return LoadScenarioFile(file.c_str(), log, false); };
    if (!ShareRootModels::areShared()) return readModel(readAnew);

    static auto* const shared = new SharedModel();
    SharedModel fresh;
    fresh.circumstances = {file, configuration, lmkUtils::EnvConfig::getCurrentConfiguration(),
                           lmkUtils::EnvConfig::ourConfigCfgFile};
    if (shared->tree && shared->tree == scenarioRootModel && shared->circumstances == fresh.circumstances &&
        internal::holdsExactly(file, shared->text)) {
        scenarioLog = log;
        if (log) log->write(shared->log.data(), static_cast<std::streamsize>(shared->log.size())).flush();
        for (const LoadProblem& problem : shared->problems) tellProblem(problem);
        return Outcome::InUse;
    }

    std::vector<unsigned char> bytes;
    if (!Commons::FileUtils::LoadFile(file, bytes)) return readModel(readAnew);
    fresh.text.assign(bytes.begin(), bytes.end());
    const Outcome outcome = readModel([&] {
        // The reading tells on the spot what it has to tell, and it is kept.
        struct LogInUse {
            ~LogInUse() { scenarioLog = log; }
            std::ostream* log;
        } const afterwards{log};
        KeptLog keptLog(log, fresh.log);
        const KeptProblems keptProblems(fresh.problems);
        return LoadScenarioFileText(file.c_str(), fresh.text, &keptLog, false);
    });
    if (outcome != Outcome::InUse) return outcome;
    if (standsOnItsTextAlone(*scenarioRootModel)) fresh.tree = scenarioRootModel;
    *shared = std::move(fresh);
    return outcome;
}

} // namespace TavrelScenarioTemplateDb
