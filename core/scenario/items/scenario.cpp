#include <scenario/scenario.h>

#include <algorithm>
#include <locale>
#include <memory>
#include <sstream>

#include <lmk/units.h>
#include <scenario/evaluation.h>
#include <scenario/include.h>
#include <scenario/rule.h>

#include "items/ChildStore.h"
#include "run/StepScope.h"
#include "text/FileUnderWay.h"
#include "text/HostCode.h"
#include "text/Problems.h"

VEHICLE::VEHICLE()
    : frontPoint(3.55, 0.0, 0.55), rearPoint(-0.75, 0.0, 0.55), maxSpeed(lmk::convToSI(lmk::UNIT_KM_H, 180.0)),
      wheelAngle(lmk::convToSI(lmk::UNIT_DEG, 45.0)), steeringAngle(lmk::convToSI(lmk::UNIT_DEG, 540.0)),
      driverPoint(1.4, 0.36, 1.25), enginePoint(2.65, 0.0, 0.5), maxEngineSpeed(lmk::convToSI(lmk::UNIT_RPM, 5000.0)),
      shiftDown(lmk::convToSI(lmk::UNIT_RPM, 1200.0)), shiftUp(lmk::convToSI(lmk::UNIT_RPM, 2000.0)),
      idleSpeed(lmk::convToSI(lmk::UNIT_RPM, 900.0)), axles(2, Axle{2, 0.24, 0.306, 1.55}) {}

VEHICLE::~VEHICLE() = default;

namespace ScenarioLib {

namespace {

constexpr const char* kDirectory = "data/scenario";

// Whichever way the step of an include ends, by what an action throws as well, it is no longer the one being stepped.
struct IncludeUnderWay {
    Include*& current;
    ~IncludeUnderWay() { current = nullptr; }
};

} // namespace

Scenario::Scenario(ScenarioItemObserver* observer) : Task(observer) {}

Scenario::~Scenario() {
    childStore::Destroy(includes);
    delete evaluation;
    delete generalParameters;
}

void Scenario::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == KindNone || kindFilter == KindInclude) childStore::Append(includes, out, KindNone);
    Task::GetChildren(out, kindFilter);
    if (evaluation && (kindFilter == KindNone || kindFilter == KindEvaluation)) out.push_back(evaluation);
    if (generalParameters && (kindFilter == KindNone || kindFilter == KindGeneralParameters))
        out.push_back(generalParameters);
}

void Scenario::DetachChildren() {
    includes.clear();
    evaluation = nullptr;
    generalParameters = nullptr;
    Task::DetachChildren();
}

void Scenario::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (!child) return;
    switch (child->kind) {
    case KindInclude:
        if (!FindIncludeByFile(child->fileName)) childStore::Place(this, includes, child, reference, after);
        break;
    case KindEvaluation:
        if (!FindIncludeByFile(child->fileName)) TakeEvaluation(static_cast<Evaluation*>(child));
        break;
    case KindGeneralParameters:
        TakeGeneralParameters(static_cast<GeneralParameters*>(child));
        break;
    default:
        Task::AddChild(child, reference, after);
        break;
    }
}

void Scenario::TakeEvaluation(Evaluation* added) {
    Evaluation* former = evaluation;
    evaluation = added;
    evaluation->parent = this;
    // It may have a new owner.
    if (former && former != added) former->parent = nullptr;
}

void Scenario::TakeGeneralParameters(GeneralParameters* added) {
    if (generalParameters != added) delete generalParameters;
    generalParameters = added;
    generalParameters->parent = this;
    generalParameters->resolvedPath = ParameterFileOf(resolvedPath);
    NormalizePath(generalParameters->resolvedPath);
    generalParameters->Load();
}

void Scenario::RemoveChild(ScenarioItem* child) {
    if (!child || childStore::Remove(this, includes, child)) return;
    if (child == evaluation || child == generalParameters) {
        if (child == evaluation)
            evaluation = nullptr;
        else
            generalParameters = nullptr;
        if (child->parent == this) child->parent = nullptr;
        return;
    }
    Task::RemoveChild(child);
}

void Scenario::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (!newChild) return;
    switch (newChild->kind) {
    case KindInclude:
        if (!FindIncludeByFile(newChild->fileName)) childStore::Replace(this, includes, newChild, oldChild);
        break;
    case KindEvaluation:
        if (oldChild && evaluation == oldChild) evaluation = static_cast<Evaluation*>(newChild);
        newChild->parent = this;
        break;
    case KindGeneralParameters:
        if (oldChild && generalParameters == oldChild) generalParameters = static_cast<GeneralParameters*>(newChild);
        newChild->parent = this;
        break;
    default:
        Task::ReplaceChild(newChild, oldChild);
        break;
    }
}

Include* Scenario::FindIncludeByFile(const std::string& file) const {
    if (file.empty()) return nullptr;
    for (Include* include : includes)
        if (include && include->fileName == file) return include;
    return evaluation && evaluation->fileName == file ? evaluation : nullptr;
}

bool Scenario::AcceptsChildKind(std::uint32_t childKind) const {
    if (IsIndexEntry()) return false;
    return childKind == KindEvaluation || childKind == KindGeneralParameters || childKind == KindInclude ||
           Task::AcceptsChildKind(childKind);
}

bool Scenario::LoadModelAttribute(ScenarioTextStream& stream) {
    if (Task::LoadModelAttribute(stream)) return true;
    if (!fileName.empty() || !ReadStringAttribute(stream, "FILE", fileName)) return false;
    // What the writer prints for a scenario without a file. A reference has to have one, and is marked below.
    if (fileName.empty() && !IsIndexEntry()) return true;
    resolvedPath = kDirectory;
    ResolveDataPath(fileName, resolvedPath);
    if (IsIndexEntry()) LoadReferencedLabel();
    return true;
}

void Scenario::LoadReferencedLabel() {
    const FileUnderWay underWay(resolvedPath);
    std::unique_ptr<ScenarioItem> root;
    if (underWay.MayBeRead()) root.reset(LoadScenarioFile(resolvedPath.c_str(), scenarioLog, true));
    const bool isScenario = root && root->kind == KindScenario;
    label = isScenario ? root->label : "?";
    if (isScenario) return;
    TellLoadWarning(root ? "the scenario \"" + fileName + "\" holds something else than a scenario"
                         : "the scenario \"" + fileName + "\" could not be loaded");
}

void Scenario::SaveModelAttributes(std::ostream& out) const {
    Task::SaveModelAttributes(out);
    WriteAttribute(out, "FILE", fileName);
}

ScenarioItem* Scenario::Clone() const {
    ScenarioItem* clone = Task::Clone();
    auto& scenario = static_cast<Scenario&>(*clone);
    scenario.vehicleKindName = vehicleKindName;
    scenario.stateNames = stateNames;
    return clone;
}

void Scenario::UpdateDisplayText() {
    displayText = label;
    if (IsIndexEntry()) displayText += "    (" + FileNameOf(resolvedPath) + ")";
}

void Scenario::CollectVisibleItems(std::uint32_t itemKind, std::vector<ScenarioItem*>& out, const std::string& itemName,
                                   const std::string& scope) const {
    Task::CollectVisibleItems(itemKind, out, itemName, scope);
    for (const Include* include : includes)
        if (include) include->CollectVisibleItems(itemKind, out, itemName, scope);
    if (evaluation) evaluation->CollectVisibleItems(itemKind, out, itemName, scope);
    if (generalParameters) generalParameters->CollectVisibleItems(itemKind, out, itemName, scope);
}

bool Scenario::HasVehicle(std::int32_t id) const { return vehicles.contains(id); }

VEHICLE& Scenario::GetVehicle(std::int32_t id) { return vehicles[id]; }

std::int32_t Scenario::ChannelNumber(const std::string& channelName) const {
    const auto found = channelNumbers.find(channelName);
    return found == channelNumbers.end() ? -1 : found->second;
}

std::string Scenario::NameAt(std::int32_t index) const {
    if (!nameList || index < 0 || static_cast<std::size_t>(index) >= nameList->size()) return {};
    const ScenarioItem* item = (*nameList)[static_cast<std::size_t>(index)];
    return item ? item->name : std::string();
}

std::string Scenario::PointText(const std::string& pointText) const {
    const std::string pointName = pointText.substr(0, pointText.find('#'));
    if (!pointList) return pointName;
    const auto found = std::find_if(pointList->begin(), pointList->end(),
                                    [&](const Point& point) { return point.item && point.item->name == pointName; });
    if (found == pointList->end() || found->hasPosition == 0) return pointName;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << pointName << ' ' << found->x << ',' << found->y << ',' << found->z;
    return text.str();
}

void Scenario::Init(const std::string& path, double time) {
    workPath = path;
    stopped = 0;
    paused = 0;
    highestLevel = 0;
    for (std::size_t i = 0; i < includes.size(); ++i)
        if (includes[i]) includes[i]->Init(path, time);
    Task::Init(path, time);
    // The first step of each level enters its first state.
    for (Task* task = this; !task->subTasks.empty() && task->subTasks.front(); task = task->subTasks.front()) {
        task->currentState = task->nextState = task->FirstState();
        task->transitionPending = 1;
    }
    if (evaluation) evaluation->Init(path, time);
    if (generalParameters) generalParameters->Init(time);
}

void Scenario::StepScenario(double time) {
    const StepScope scope;
    for (std::size_t i = 0; i < includes.size(); ++i) {
        if (!includes[i]) continue;
        const IncludeUnderWay underWay{currentInclude};
        currentInclude = includes[i];
        const HostCode hostCode; // of a class that steps in another way, here and below
        currentInclude->Step(time, this, true);
        if (stopped != 0 || paused != 0) return;
    }
    currentInclude = nullptr;
    Task::Step(time, this, true);
    if (stopped != 0 || paused != 0) {
        ++stepCount;
        return;
    }
    const HostCode hostCode;
    if (evaluation) evaluation->StepEvaluation(time, this);
    if (generalParameters) generalParameters->Step();
}

std::int32_t Scenario::HighestLevel() const { return std::max(highestLevel, MaxRuleLevel()); }

} // namespace ScenarioLib
