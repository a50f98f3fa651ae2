#include <scenario/include.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <stdexcept>

#include <lmkUtils/EnvConfig.h>
#include <scenario/rule.h>
#include <scenario/scenario.h>
#include <scenario/variable.h>

#include "items/ChildStore.h"
#include "items/IncludeRepositories.h"
#include "text/FileUnderWay.h"
#include "text/HostCode.h"
#include "text/Kinds.h"
#include "text/Log.h"
#include "text/Problems.h"

namespace {

constexpr const char* kNotLoadedLabel = "?";

using OwnedItem = std::unique_ptr<ScenarioItem>;

OwnedItem LoadFromRepository(const std::string& file, const std::string& text) {
    const FileUnderWay underWay("repository: " + file);
    if (!underWay.MayBeRead()) return nullptr;
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    OwnedItem root(LoadScenarioText(stream, nullptr, &context, scenarioLog, false));
    if (root)
        LogMessage(LogSeverity::Information, file + " loaded from scenario");
    else
        LogMessage(LogSeverity::Error, LoadFailureText(file, stream));
    return root;
}

OwnedItem LoadFromDisk(const std::string& path) {
    const FileUnderWay underWay(path);
    if (!underWay.MayBeRead()) return nullptr;
    OwnedItem root(LoadScenarioFile(path.c_str(), &std::cout, false));
    if (root) LogMessage(LogSeverity::Information, path + " loaded");
    return root;
}

// A call in a parent that bears the name of a list of definitions is its own definition, in an include as well.
bool HoldsDefinitions(const ScenarioItem& item) {
    if (KindIsIn(item.kind, kCallable) || item.kind == KindParameter) {
        if (static_cast<const Token&>(item).model == &item) return true;
    }
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    return std::any_of(children.begin(), children.end(),
                       [](const ScenarioItem* child) { return HoldsDefinitions(*child); });
}

} // namespace

Include::Include(ScenarioItemObserver* observer) : Task(observer) {}

Include::~Include() { childStore::DestroyAllLevels<&Include::includes>(includes); }

void Include::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == KindNone || kindFilter == KindInclude) childStore::Append(includes, out, KindNone);
    Task::GetChildren(out, kindFilter);
}

void Include::DetachChildren() {
    includes.clear();
    Task::DetachChildren();
}

void Include::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (!child) return;
    if (child->kind == KindInclude) {
        childStore::Place(this, includes, child, reference, after);
    } else if (child->kind == KindScenario) {
        auto& scenario = static_cast<ScenarioLib::Scenario&>(*child);
        TakeOver(scenario, scenario.includes, reference, after);
    } else {
        Task::AddChild(child, reference, after);
    }
}

void Include::TakeOver(Task& from, std::vector<Include*>& fromIncludes, ScenarioItem* reference, bool after) {
    std::vector<ScenarioItem*> children;
    from.GetChildren(children);
    for (ScenarioItem* child : children) AddChild(child, reference, after);
    // Only now, since an item that is added looks around in the tree that it comes from.
    const auto isMine = [this](const ScenarioItem* item) { return item && item->parent == this; };
    std::erase_if(fromIncludes, isMine);
    std::erase_if(from.variables, isMine);
    std::erase_if(from.rules, isMine);
    std::erase_if(from.subTasks, isMine);
}

void Include::RemoveChild(ScenarioItem* child) {
    if (!childStore::Remove(this, includes, child)) Task::RemoveChild(child);
}

void Include::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (newChild && newChild->kind == KindInclude)
        childStore::Replace(this, includes, newChild, oldChild);
    else
        Task::ReplaceChild(newChild, oldChild);
}

bool Include::AcceptsChildKind(std::uint32_t childKind) const {
    if (IsIndexEntry()) return false;
    return childKind == KindRule || childKind == KindScenario || childKind == KindTask || childKind == KindVariable;
}

bool Include::LoadAttribute(ScenarioTextStream& stream) {
    // The flags stand before FILE, so it is known by now whether this is a reference.
    if (Token::LoadAttribute(stream)) return true;
    if (!fileName.empty() || !ReadStringAttribute(stream, "FILE", fileName)) return false;
    if (IsIndexEntry()) LoadReferenced();
    return true;
}

std::string Include::ResolveInclude(const std::string& file) {
    // By index, as a repository may register another one when it is asked.
    const std::vector<IncludeRepository*>& repositories = IncludeRepositories();
    for (std::size_t i = 0; i < repositories.size(); ++i) {
        const HostCode hostCode;
        if (repositories[i]->Contains(file)) return repositories[i]->Read(file);
    }
    throw std::runtime_error("include " + file + " not found in repositories");
}

void Include::LoadReferenced() {
    OwnedItem root;
    std::string text;
    bool inRepository = true;
    try {
        text = ResolveInclude(fileName);
    } catch (const std::runtime_error& error) {
        LogMessage(LogSeverity::Information, error.what());
        inRepository = false;
    }
    if (inRepository) {
        root = LoadFromRepository(fileName, text);
    } else {
        resolvedPath = kDirectory;
        ResolveDataPath(fileName, resolvedPath);
        root = LoadFromDisk(resolvedPath);
    }

    if (!root || root->kind != KindInclude) {
        label = kNotLoadedLabel;
        LogMessage(LogSeverity::Warning, fileName + " not loaded");
        TellLoadWarning(root ? "the include \"" + fileName + "\" holds something else than an include"
                             : "the include \"" + fileName + "\" could not be loaded");
        return;
    }
    label = root->label;
    std::vector<ScenarioItem*> children;
    root->GetChildren(children);
    for (const ScenarioItem* child : children) {
        ScenarioItem* clone = child->Clone();
        clone->parent = this;
        AddChild(clone, nullptr, true);
    }
    if (HoldsDefinitions(*root)) definitions = std::move(root);
}

ScenarioItem* Include::Clone() const {
    ScenarioItem* copy = Token::Clone();
    // The copy is of the class that the kind has, and a host may have changed the kind.
    if (auto* include = dynamic_cast<Include*>(copy)) include->definitions = definitions;
    return copy;
}

void Include::SaveAttributes(std::ostream& out) const {
    Token::SaveAttributes(out);
    WriteAttribute(out, "FILE", fileName);
}

void Include::UpdateDisplayText() {
    displayText = label;
    if (IsIndexEntry() || (parent && parent->kind == KindScenario)) displayText += "    (" + fileName + ")";
    if (label.empty() || !IsValid()) displayText += "?";
}

void Include::UpdateValidity() {
    valid = !IsIndexEntry() || (!fileName.empty() && !lmkUtils::EnvConfig::findInPath(kDirectory, fileName).empty());
}

bool Include::IsInsideScenario() const {
    const ScenarioItem* top = parent ? GetTreeRoot(parent) : this;
    return top->kind == KindScenario;
}

void Include::Init(const std::string& path, double time) {
    workPath = path;
    InitDownward(this, path, time, true);
}
