#include "link/Lookup.h"

#include <utility>

#include <scenario/program.h>

#include "text/HostCode.h"

namespace {

TreeUnderWay* currentTree = nullptr;

// One index for all texts read while a RootModelUse lives.
int rootModelUses = 0;
ModelIndex shared;

ScenarioItem* SearchFolder(const ScenarioItem* root, std::string_view listName) {
    return const_cast<ScenarioItem*>(root->FindItem(KindFolder, std::string(listName), std::string()));
}

} // namespace

TreeUnderWay::TreeUnderWay(ScenarioItem* parent)
    : outer(currentTree), outermost(outer ? outer->outermost : this), isRooted(parent == nullptr),
      modelIsStill(!outer || outer->modelIsStill) {
    if (parent) {
        root = GetTreeRoot(parent);
        if (root == GetTreeRoot(scenarioRootModel)) modelIsStill = false;
        // That of a tree which is no root model yet, or no longer, as well.
        if (shared.index && root == GetTreeRoot(shared.index->Root())) shared.index.reset();
    }
    HostCode::Enter();
    currentTree = this;
}

TreeUnderWay::~TreeUnderWay() {
    currentTree = outer;
    // A text that was read whole may become the root model of the next one, and its index is that of the model then.
    if (isComplete && ownIndex && rootModelUses > 0 && root->kind == KindFolder)
        shared = {std::move(ownIndex), HostCode::Changes()};
}

TreeUnderWay* TreeUnderWay::Current() { return currentTree; }

void TreeUnderWay::Open(ScenarioItem* item, bool isInTree) {
    if (!root) {
        root = item;
        if (!scenarioRootModel) ownIndex = std::make_unique<DefinitionIndex>(item, DefinitionIndex::Form::Growing);
    }
    current = item;
    if (!isInTree) ++itemsOutsideTree;
    if (ownIndex && itemsOutsideTree == 0) ownIndex->Open(item);
}

void TreeUnderWay::Close(ScenarioItem* item, bool isInTree) {
    current = item->parent;
    if (ownIndex && itemsOutsideTree == 0) ownIndex->Close(item);
    isComplete = item == root;
    if (!isInTree) --itemsOutsideTree;
}

DefinitionIndex* TreeUnderWay::IndexOf(const ScenarioItem* modelRoot) {
    if (!modelRoot) return nullptr;
    if (modelRoot == scenarioRootModel) {
        if (!modelIsStill) return nullptr;
        ModelIndex& known = rootModelUses > 0 ? shared : outermost->modelIndex;
        if (!known.index || known.index->Root() != modelRoot || known.changes != HostCode::Changes())
            known = {std::make_unique<DefinitionIndex>(scenarioRootModel, DefinitionIndex::Form::Whole),
                     HostCode::Changes()};
        return known.index->IsUseless() ? nullptr : known.index.get();
    }
    return modelRoot == root && isRooted ? ownIndex.get() : nullptr;
}

void ForgetIndexOf(const Folders& root) {
    if (shared.index && shared.index->Root() == &root) shared.index.reset();
}

RootModelUse::RootModelUse() { ++rootModelUses; }

RootModelUse::~RootModelUse() {
    if (--rootModelUses == 0) shared.index.reset();
}

ScenarioItem* RootOfItemBeingRead(const ScenarioItem* item) {
    return currentTree && item && item == currentTree->current ? currentTree->root : nullptr;
}

ScenarioItem* FindDefinitionFolder(const ScenarioItem* root, std::string_view listName) {
    const std::size_t list = ListOf(listName);
    DefinitionIndex* index = currentTree && list < kListCount ? currentTree->IndexOf(root) : nullptr;
    return index ? index->Folder(list) : SearchFolder(root, listName);
}

DefinitionPlace FindDefinitionPlace(ScenarioItem* root, std::string_view listName, std::uint32_t kind,
                                    const std::string& name) {
    if (currentTree) {
        const std::size_t list = ListOf(listName, kind);
        DefinitionIndex* index = list < kListCount ? currentTree->IndexOf(root) : nullptr;
        if (index) return {index->Find(list, name), index->Folder(list) != nullptr};
    }
    ScenarioItem* folder = SearchFolder(root, listName);
    return {folder ? folder->FindItem(kind, name, std::string()) : nullptr, folder != nullptr};
}

ScenarioItem* FindDefinition(ScenarioItem* root, std::string_view listName, std::uint32_t kind,
                             const std::string& name) {
    return FindDefinitionPlace(root, listName, kind, name).definition;
}

ScenarioItem* FindEnumEntryIn(ScenarioItem* enumTab, const std::string& name) {
    DefinitionIndex* index = currentTree ? currentTree->IndexOf(GetModelRoot(currentTree->current)) : nullptr;
    return index ? index->FindEntry(enumTab, name) : enumTab->FindItem(KindEnum, name, std::string());
}
