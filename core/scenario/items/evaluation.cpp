#include <scenario/evaluation.h>

#include <algorithm>
#include <iostream>
#include <memory>

#include <Commons/ConfigFile.h>
#include <scenario/Criteria.h>
#include <scenario/rule.h>
#include <scenario/scenario.h>

#include "items/ChildStore.h"
#include "run/StepScope.h"
#include "text/FileUnderWay.h"
#include "text/HostCode.h"
#include "text/Log.h"
#include "text/NumberText.h"
#include "text/Problems.h"
#include "text/Refusal.h"

namespace {

constexpr const char* kNotLoadedLabel = "?";
constexpr const char* kDescriptionEntry = "description";

// As "%d %f": a whole number and a number with any white space, or none, between them. False unless both are there.
bool ReadScore(const std::string& text, std::int32_t& number, float& score) {
    if (!BeginsWithWholeNumber(text)) return false;
    std::size_t rest = text.find_first_not_of(" \t\n\v\f\r");
    if (text[rest] == '+' || text[rest] == '-') ++rest;
    rest = std::min(text.find_first_not_of("0123456789", rest), text.size());
    const std::string second = text.substr(rest);
    if (!BeginsWithNumber(second)) return false;
    number = WholeNumberOf(text);
    score = static_cast<float>(NumberOf(second));
    return true;
}

} // namespace

Evaluation::Evaluation(ScenarioItemObserver* observer) : Include(observer) {}

Evaluation::~Evaluation() = default;

void Evaluation::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == KindCriteria)
        childStore::Append(subTasks, out, KindCriteria);
    else
        Include::GetChildren(out, kindFilter);
}

void Evaluation::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (child && child->kind == KindCriteria)
        childStore::Place(this, subTasks, child, reference, after);
    else
        Include::AddChild(child, reference, after);
}

void Evaluation::RemoveChild(ScenarioItem* child) {
    // Whatever its kind: criteria stand among the sub-tasks, which is where the base looks.
    Include::RemoveChild(child);
}

void Evaluation::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (newChild && newChild->kind == KindCriteria)
        childStore::Replace(this, subTasks, newChild, oldChild);
    else
        Include::ReplaceChild(newChild, oldChild);
}

bool Evaluation::AcceptsChildKind(std::uint32_t childKind) const {
    return Include::AcceptsChildKind(childKind) || (!IsIndexEntry() && childKind == KindCriteria);
}

bool Evaluation::LoadAttribute(ScenarioTextStream& stream) {
    if (Token::LoadAttribute(stream)) return true;
    std::string value;
    if (ReadStringAttribute(stream, "SCORE", value)) {
        std::int32_t number = 0;
        float score = 0.0F;
        if (!ReadScore(value, number, score))
            return Refuse("SCORE \"", value, "\" is no whole number followed by a number");
        scores[number] = score;
        return true;
    }
    // Unlike that of an include, this FILE may come again.
    if (!ReadStringAttribute(stream, "FILE", fileName)) return false;
    resolvedPath = kDirectory;
    ResolveDataPath(fileName, resolvedPath);
    if (IsIndexEntry()) LoadReferenced();
    return true;
}

void Evaluation::LoadReferenced() {
    const FileUnderWay underWay(resolvedPath);
    std::unique_ptr<ScenarioItem> root;
    if (underWay.MayBeRead()) root.reset(LoadScenarioFile(resolvedPath.c_str(), &std::cout, false));
    if (!root || root->kind != KindEvaluation) {
        label = kNotLoadedLabel;
        TellLoadWarning(root ? "the evaluation \"" + fileName + "\" holds something else than an evaluation"
                             : "the evaluation \"" + fileName + "\" could not be loaded");
        return;
    }
    label = root->label;
    auto& loaded = static_cast<Evaluation&>(*root);
    TakeOver(loaded, loaded.includes, nullptr, true);
}

void Evaluation::SaveAttributes(std::ostream& out) const {
    Token::SaveAttributes(out);
    for (const auto& [number, score] : scores)
        WriteAttribute(out, "SCORE", std::to_string(number) + " " + SixDecimals(static_cast<double>(score)));
}

void Evaluation::UpdateDisplayText() { displayText = label; }

void Evaluation::UpdateValidity() { Token::UpdateValidity(); }

Task* Evaluation::GetTask(std::size_t index) const { return index < subTasks.size() ? subTasks[index] : nullptr; }

void Evaluation::SwapTasks(std::size_t i, std::size_t j) {
    if (i < subTasks.size() && j < subTasks.size()) std::swap(subTasks[i], subTasks[j]);
}

void Evaluation::Init(const std::string& path, double time) {
    Task::Init(path, time);
    for (std::size_t i = 0; i < subTasks.size(); ++i)
        if (subTasks[i]) InitDownward(subTasks[i], path, time, false);
}

void Evaluation::StepEvaluation(double time, ScenarioLib::Scenario* scenario) {
    const StepScope scope;
    const auto ends = [](std::int32_t state) { return state == kStateEnd || state == kStateKeepPause; };
    if (scenario) scenario->currentTask = this;
    if (ends(currentState)) return;
    for (std::size_t i = 0; i < rules.size() && (i == 0 || !ends(nextState)); ++i)
        if (rules[i]) rules[i]->Step(time);
    if (!ends(nextState)) {
        for (std::size_t i = 0; i < subTasks.size(); ++i) {
            const HostCode hostCode; // of a class that steps in another way
            auto* criteria = dynamic_cast<Criteria*>(subTasks[i]);
            if (criteria) {
                if (criteria->disabled == 0) criteria->StepCriteria(time, scenario);
            } else if (subTasks[i]) {
                subTasks[i]->Step(time, scenario, true);
            }
        }
    }
    ++stepCount;
}

GeneralParameters::GeneralParameters(ScenarioItem* parentItem) : ScenarioItem(parentItem) { name = "0"; }

GeneralParameters::~GeneralParameters() = default;

void GeneralParameters::DetachChildren() {}

void GeneralParameters::AddChild(ScenarioItem*, ScenarioItem*, bool) {}

void GeneralParameters::RemoveChild(ScenarioItem*) {}

void GeneralParameters::ReplaceChild(ScenarioItem*, ScenarioItem*) {}

void GeneralParameters::SwapChildren(ScenarioItem*, ScenarioItem*) {}

void GeneralParameters::SetPath(const std::string& file, bool load) {
    if (!file.empty()) {
        resolvedPath = ParameterFileOf(file);
        NormalizePath(resolvedPath);
    }
    if (load) Load();
}

void GeneralParameters::Load() {
    if (!resolvedPath.empty()) description = Commons::ConfigFile(resolvedPath)[kDescriptionEntry];
}

bool GeneralParameters::Save(const std::string& path) {
    if (!path.empty()) SetPath(path, false);
    if (resolvedPath.empty()) {
        LogMessage(LogSeverity::Warning, "General Parameters have no path");
        return false;
    }
    Commons::ConfigFile file(resolvedPath);
    if (!file.create()) {
        LogMessage(LogSeverity::Warning, "Unable to write file " + resolvedPath);
        return false;
    }
    file.modifyEntry(kDescriptionEntry, description);
    return true;
}

void GeneralParameters::Init(double time) {
    LogMessage(LogSeverity::Progress, "Init General Parameters");
    startTime = time;
}

void GeneralParameters::Step() {}
