#include <TavrelScenarioTemplateDb/TavrelScenario.h>

#include <iostream>
#include <map>
#include <string_view>
#include <utility>

#include <Commons/Encoding.h>
#include <Commons/FileUtils.h>
#include <Commons/System.h>
#include <ScenarioTemplateDb/Exception.h>
#include <ScenarioTemplateDb/ScenarioNode.h>
#include <TavrelScenarioTemplateDb/RootModel.h>
#include <TavrelScenarioTemplateDb/TavrelConfigurationScenarioDirectory.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>
#include <TavrelScenarioTemplateDb/TavrelVariadicParameter.h>
#include <TavrelScenarioTemplateDb/internal/ScenarioPlace.h>
#include <cfg/CfgScenario.h>
#include <cfg/Scenario.h>
#include <cfg/VariadicParameter.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <lmkUtils/InstallationMoment.h>
#include <scenario/ScenarioItem.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;
using ScenarioTemplateDb::ExceptionCodeScenarioLoad;
using ScenarioTemplateDb::ExceptionCodeScenarioRead;
using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;

namespace {

constexpr auto kPathMode = static_cast<Commons::Encoding::Mode>(1);

// A path in generic form as the system opens it. An unknown variable stays in the text, which then names no file.
std::string expandedPath(const std::string& path) {
    std::string expanded;
    Commons::System::ExpandLocalEnvironmentVariables(path, expanded, Commons::System::DaemonVariableMatchingPattern,
                                                     std::map<std::string, std::string>());
    return expanded;
}

// Whether `text` is the step of a script's variable, ^Variable\[name=\d+\]/value$. Written out, because an expression
// of the standard library recurses once per digit and ids may be as long as anyone likes.
bool isScriptVariableStep(std::string_view text) {
    constexpr std::string_view kBegin = "Variable[name=";
    constexpr std::string_view kEnd = "]/value";
    if (text.size() <= kBegin.size() + kEnd.size() || !text.starts_with(kBegin) || !text.ends_with(kEnd)) return false;
    text.remove_prefix(kBegin.size());
    text.remove_suffix(kEnd.size());
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

// On destruction the members go in reverse: the variadic parameters, then the node tree, both after the sections that
// they point to.
struct TavrelScenario::Content {
    Content() = default;
    ~Content() {
        if (!isExternal) delete file;
    }
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;

    bool isExternal = false;          // the file is the host's
    cfg::CfgScenario* file = nullptr; // null until the first load
    std::unique_ptr<ScenarioNode> root;
    std::vector<std::unique_ptr<TavrelVariadicParameter>> variadicParameters; // in the order of their sections
    std::string saveFailure;
};

TavrelScenario::TavrelScenario(const std::string& configurationName, const std::string& scenarioPath,
                               const std::string& scenarioDirectory)
    : TavrelScenario(std::make_shared<const internal::ScenarioPlace>(
                         internal::ScenarioPlace{configurationName, scenarioDirectory}),
                     scenarioPath) {}

TavrelScenario::TavrelScenario(std::shared_ptr<const internal::ScenarioPlace> sharedPlace, std::string scenarioPath)
    : path(std::move(scenarioPath)), place(std::move(sharedPlace)) {}

// By way of the other constructor, so that the destructor cleans up when the load fails.
TavrelScenario::TavrelScenario(cfg::CfgScenario* scenario)
    : TavrelScenario(lmkUtils::EnvConfig::getCurrentConfiguration(), std::string(), std::string()) {
    content().isExternal = scenario != nullptr;
    content().file = scenario;
    loadCfgScenario();
}

TavrelScenario::~TavrelScenario() = default;

TavrelScenario::Content& TavrelScenario::content() const {
    if (!lazyContent) lazyContent = std::make_unique<Content>();
    return *lazyContent;
}

std::string TavrelScenario::getPath() const { return path; }

ScenarioNode* TavrelScenario::getRootScenarioNode() const {
    auto& root = content().root;
    if (root) return root.get();
    const lmkUtils::InstallationMoment moment;
    const RootModelUse modelUse; // for the root model and all scripts of the tree
    // The load comes first: it may look up the target of a variadic parameter and so build the tree itself. A second
    // tree would leave those targets behind.
    if (!content().file) loadScenario();
    if (!root) root = std::make_unique<TavrelScenarioNode>(content().file->getRootSection(), nullptr);
    return root.get();
}

ScenarioParameter* TavrelScenario::getParameterFromId(std::string id) const {
    std::queue<std::string> steps;
    splitId(id, steps);
    for (const char* first : {"sce", "Scenario"}) {
        if (steps.empty() || steps.front() != first) return nullptr;
        steps.pop();
    }
    const ScenarioNode* node = getRootScenarioNode();
    while (!steps.empty()) {
        const std::string step = std::move(steps.front());
        steps.pop();
        if (steps.empty()) return node->getParameter(step);
        node = node->getChild(step);
    }
    return nullptr; // the root itself
}

std::string TavrelScenario::getFilePath() const {
    return TavrelConfigurationScenarioDirectory::getFilePathFromDataBasePath(path, place->directory);
}

void TavrelScenario::setPath(const std::string& newPath) { path = newPath; }

std::string TavrelScenario::getName() const { return getCfgScenarioSection()->getRootSection()->name; }

void TavrelScenario::setName(const std::string& name) { getCfgScenarioSection()->getRootSection()->name = name; }

std::string TavrelScenario::getDescription() const { return getCfgScenarioSection()->getRootSection()->description; }

void TavrelScenario::setDescription(const std::string& description) {
    getCfgScenarioSection()->getRootSection()->description = description;
}

void TavrelScenario::fetch(std::vector<unsigned char>& bytes) const {
    if (Commons::FileUtils::LoadFile(expandedPath(getFilePath()), bytes)) return;
    throw Exception("Unable to load scenario " + getName(), ExceptionCodeScenarioRead);
}

std::size_t TavrelScenario::getVariadicParameterNumber() const {
    getCfgScenarioSection();
    return content().variadicParameters.size();
}

ScenarioTemplateDb::VariadicParameter* TavrelScenario::getVariadicParameter(std::size_t index) const {
    const auto& parameters = content().variadicParameters;
    if (index >= parameters.size()) throw Exception("Invalid variadic parameter index", ExceptionCodeInvalidIndex);
    return parameters[index].get();
}

void TavrelScenario::getVariadicParameters(std::vector<ScenarioTemplateDb::VariadicParameter*>& parameters) const {
    parameters.clear();
    for (const auto& parameter : content().variadicParameters) parameters.push_back(parameter.get());
}

void TavrelScenario::getTavrelVariadicParameters(std::vector<TavrelVariadicParameter*>& parameters) const {
    parameters.clear();
    for (const auto& parameter : content().variadicParameters) parameters.push_back(parameter.get());
}

TavrelVariadicParameter* TavrelScenario::addNewVariadicParameter() {
    cfg::Section* section =
        getCfgScenarioSection()->getRootSection()->createSubSection(cfg::VariadicParameter::sectionName());
    auto& parameters = content().variadicParameters;
    parameters.push_back(std::make_unique<TavrelVariadicParameter>(dynamic_cast<cfg::VariadicParameter*>(section)));
    return parameters.back().get();
}

void TavrelScenario::removeVariadicParameter(std::size_t index) {
    if (index >= getVariadicParameterNumber()) return;
    auto& parameters = content().variadicParameters;
    cfg::VariadicParameter* section = parameters[index]->getSection();
    parameters.erase(parameters.begin() + static_cast<std::ptrdiff_t>(index));
    content().file->getRootSection()->removeSubSection(section);
}

void TavrelScenario::clear() {
    if (!content().file) return;
    cfg::Scenario* root = content().file->getRootSection();
    root->description.clear();
    content().variadicParameters.clear();
    root->removeSubSections(cfg::VariadicParameter::sectionName());
}

void TavrelScenario::save() {
    const std::string target =
        expandedPath(TavrelConfigurationScenarioDirectory::getFilePathFromDataBasePath(path, place->directory));
    cfg::CfgScenario* file = getCfgScenarioSection();
    const bool isSaved = file->save(target.c_str(), kPathMode, false);
    content().saveFailure = isSaved ? std::string() : file->errorMessage;
}

const std::string& TavrelScenario::getSaveFailure() const { return content().saveFailure; }

void TavrelScenario::loadScenario() const {
    const lmkUtils::InstallationMoment moment;
    const std::string expanded = expandedPath(getFilePath());
    // A subclass may load again. What points into the sections of before goes with them.
    Content& loaded = content();
    loaded.variadicParameters.clear();
    loaded.root.reset();
    if (!loaded.isExternal) delete loaded.file;
    loaded.file = nullptr;
    loaded.isExternal = false;
    // Stays, whatever becomes of the load: one attempt per object, and what is asked later has an answer.
    loaded.file = new cfg::CfgScenario();
    if (!loaded.file->load(expanded.c_str(), kPathMode, nullptr, nullptr, false, true, true))
        throw Exception("Unable to load scenario " + expanded + " :\n" + loaded.file->errorMessage,
                        ExceptionCodeScenarioLoad);
    loadCfgScenario();
}

void TavrelScenario::loadCfgScenario() const {
    const lmkUtils::InstallationMoment moment;
    if (!content().file) {
        loadScenario(); // which comes back here
        return;
    }

    std::string modelFile;
    try {
        modelFile = RootModel::fileOf(place->configuration);
    } catch (const lmkUtils::ConfigurationError& error) {
        throw Exception(error.what(), ExceptionCodeGeneric);
    }
    if (modelFile.empty())
        throw Exception("Unable to find scenario root model file '" + std::string(RootModel::kPath) +
                            "' for configuration " + place->configuration + " : check your Tavrel installation!",
                        ExceptionCodeGeneric);
    if (RootModel::use(modelFile, &std::cout, place->configuration) != RootModel::Outcome::InUse)
        throw Exception("Unable to get initialize scenario root model " + modelFile, ExceptionCodeGeneric);

    std::vector<cfg::Section*> sections;
    content().file->getRootSection()->getSubSections(cfg::VariadicParameter::sectionName(), sections);
    for (cfg::Section* section : sections) {
        auto* declaration = dynamic_cast<cfg::VariadicParameter*>(section);
        if (!declaration) continue;
        // A target that does not exist ends the load here, with the parameters made so far: an author has to see that
        // a declaration leads nowhere.
        ScenarioParameter* target = getParameterFromId(declaration->parameterId);
        content().variadicParameters.push_back(std::make_unique<TavrelVariadicParameter>(target, declaration));
    }
}

cfg::CfgScenario* TavrelScenario::getCfgScenarioSection() const {
    if (!content().file) loadScenario();
    return content().file;
}

// Steps end at a "/", but not at one inside brackets: a vehicle's step holds one, and a script's variable has one
// after its bracket. The positions of the next bracket and slash are kept from step to step, so that an id of any
// length takes linear time.
void TavrelScenario::splitId(const std::string& id, std::queue<std::string>& pieces) {
    constexpr std::size_t kNone = std::string::npos;
    const auto searchFrom = [&id](std::size_t begin, char sign, std::size_t known) {
        return known != kNone && known < begin ? id.find(sign, begin) : known;
    };
    std::size_t opening = id.find('[');
    std::size_t closing = id.find(']');
    std::size_t slash = id.find('/');
    std::size_t begin = 0;
    while (begin < id.size()) {
        const std::string_view rest = std::string_view(id).substr(begin);
        if (isScriptVariableStep(rest)) {
            pieces.emplace(rest);
            return;
        }
        opening = searchFrom(begin, '[', opening);
        closing = searchFrom(begin, ']', closing);
        slash = searchFrom(begin, '/', slash);
        std::size_t end = slash;
        std::size_t next = slash + 1;
        if (slash >= opening) { // also where there is neither
            if (closing == kNone) {
                pieces.emplace(rest); // an open bracket, or the last plain step
                return;
            }
            // The first bracket that closes counts, wherever it stands; the sign after it is taken for a slash.
            end = closing + 1;
            next = closing + 2;
        }
        if (end > begin) pieces.push(id.substr(begin, end - begin));
        begin = next;
    }
}

} // namespace TavrelScenarioTemplateDb
