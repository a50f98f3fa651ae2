#include <scenario/program.h>

#include <ostream>

#include "items/AttributeRow.h"
#include "items/ChildStore.h"
#include "link/Lookup.h"
#include "text/Assertion.h"

namespace {

constexpr char kSource[] = "program";
constexpr childStore::NullChildSite kNullChild{"core/include/scenario/ScenarioItem", 251};

using Row = AttributeRow<Folders>;

constexpr Row kReadOrder[] = {
    Row::text<&Folders::label>("LABEL"),
};

bool IsGroupMember(std::uint32_t kind) { return kind == KindGroup || kind == KindScenario; }

} // namespace

Folders::Folders() = default;

Folders::~Folders() {
    ForgetIndexOf(*this);
    childStore::Destroy(children);
}

void Folders::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    childStore::Append(children, out, kindFilter);
}

void Folders::DetachChildren() { children.clear(); }

void Folders::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    childStore::Place(this, children, child, reference, after, kNullChild);
}

void Folders::RemoveChild(ScenarioItem* child) { childStore::Remove(this, children, child); }

void Folders::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    childStore::Replace(this, children, newChild, oldChild);
}

void Folders::SwapChildren(ScenarioItem* a, ScenarioItem* b) { childStore::Swap(children, a, b); }

bool Folders::LoadAttribute(ScenarioTextStream& stream) {
    return ScenarioItem::LoadAttribute(stream) || LoadFromRows<kReadOrder>(*this, stream);
}

void Folders::SaveAttributes(std::ostream& out) const {
    ScenarioItem::SaveAttributes(out);
    WriteAttribute(out, "LABEL", label);
}

EnumTab::EnumTab() = default;

EnumTab::~EnumTab() = default;

bool EnumTab::AcceptsChildKind(std::uint32_t childKind) const { return childKind == KindEnum; }

void EnumTab::UpdateDisplayText() { displayText = name + "    (" + label + ")"; }

ScenarioItem* EnumTab::FindEntry(const std::string& entryName) const {
    for (ScenarioItem* entry : children) {
        if (entry && entry->name == entryName) return entry;
    }
    return nullptr;
}

Group::Group() = default;

Group::~Group() = default;

bool Group::AcceptsChildKind(std::uint32_t childKind) const { return IsGroupMember(childKind); }

Program::Program() = default;

Program::~Program() = default;

bool Program::LoadAttribute(ScenarioTextStream& stream) { return Folders::LoadAttribute(stream); }

void Program::SaveAttributes(std::ostream& out) const { Folders::SaveAttributes(out); }

bool Program::AcceptsChildKind(std::uint32_t childKind) const { return IsGroupMember(childKind); }

ScenarioItem* Program::Clone() const {
    ScenarioItem* copy = Folders::Clone();
    if (!copy) AssertionFailed(kSource, 73);
    return copy;
}
