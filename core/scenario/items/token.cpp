#include <scenario/token.h>

#include <limits>
#include <unordered_set>

#include "items/AttributeRow.h"
#include "link/Definitions.h"
#include "text/Assertion.h"
#include "text/Kinds.h"

namespace {

constexpr char kSource[] = "token";

using Row = AttributeRow<Token>;

constexpr Row kModelAttributes[] = {
    Row::text<&Token::label>("LABEL"),
};

std::vector<ScenarioItem*> ChildrenOf(const ScenarioItem& item) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    return children;
}

void CheckTokenChild(const ScenarioItem* child, int nullLine, int kindLine) {
    if (!child) AssertionFailed(kSource, nullLine);
    if (!KindIsIn(child->kind, kTokenKind)) AssertionFailed(kSource, kindLine);
}

// The names that a search from `item` finds for that kind. It does not see the variables of a rule.
void CollectFindableNames(const ScenarioItem& item, std::uint32_t kind, std::unordered_set<std::string>& names) {
    if (kind == KindVariable && item.kind == KindRule) return;
    if (item.kind == kind) names.insert(item.name);
    for (const ScenarioItem* child : ChildrenOf(item)) CollectFindableNames(*child, kind, names);
}

} // namespace

Token::Token(ScenarioItem* parentItem) : ScenarioItem(parentItem) {}

Token::~Token() = default;

// Reading and writing.

bool Token::LoadAttribute(ScenarioTextStream& stream) {
    if (ScenarioItem::LoadAttribute(stream)) return true;
    if (model == this && LoadModelAttribute(stream)) return true;
    return LoadUserAttribute(stream);
}

bool Token::LoadModelAttribute(ScenarioTextStream& stream) { return LoadFromRows<kModelAttributes>(*this, stream); }

bool Token::LoadUserAttribute(ScenarioTextStream&) { return false; }

void Token::SaveAttributes(std::ostream& out) const {
    ScenarioItem::SaveAttributes(out);
    if (model == this) SaveModelAttributes(out);
    SaveUserAttributes(out);
}

void Token::SaveModelAttributes(std::ostream& out) const {
    if (!IsIndexEntry()) WriteAttribute(out, "LABEL", label);
}

void Token::SaveUserAttributes(std::ostream&) const {}

// Copying.

void Token::CopyModelAttributes(Token*) const {}

void Token::CopyUserAttributes(Token*) const {}

ScenarioItem* Token::Clone() const {
    auto* copy = dynamic_cast<Token*>(ScenarioItem::Clone());
    if (!copy) AssertionFailed(kSource, 160);
    CopyUserAttributes(copy);
    return copy;
}

// Definitions.

void Token::SetModel(Token* item) { model = item; }

void Token::LinkModel(Token* item, const char* listName) { LinkModelIn(*item, listName); }

void Token::MakeUniqueName() {
    ScenarioItem* root = parent ? GetTreeRoot(parent) : this;
    if (!root) AssertionFailed(kSource, 325);
    std::vector<ScenarioItem*> namesakes;
    root->CollectItems(kind, name, namesakes, true, true);
    if (model != this || namesakes.size() < 2) return;

    // One walk for all the names spares one search for each number that is taken.
    std::unordered_set<std::string> taken;
    CollectFindableNames(*root, kind, taken);
    for (std::int32_t number = 0; number < std::numeric_limits<std::int32_t>::max(); ++number) {
        const std::string candidate = std::to_string(number);
        if (taken.contains(candidate)) continue;
        // Asked again, since a class of the host may find more than its children.
        if (root->FindItem(kind, candidate, std::string())) continue;
        SetName(candidate);
        return;
    }
    AssertionFailed(kSource, 348);
}

void Token::ResetMarks(Token* item) {
    item->mark = false;
    for (ScenarioItem* child : ChildrenOf(*item)) {
        CheckTokenChild(child, 364, 365);
        if (auto* token = dynamic_cast<Token*>(child)) ResetMarks(token);
    }
}

// Display and validity.

void Token::UpdateDisplayTextTree() {
    for (ScenarioItem* child : ChildrenOf(*this)) {
        if (!child) AssertionFailed(kSource, 193);
        child->UpdateDisplayTextTree();
    }
    UpdateValidity();
    UpdateDisplayText();
}

bool Token::IsValid() const { return valid; }

void Token::UpdateValidity() {
    bool isValid = true;
    for (const ScenarioItem* child : ChildrenOf(*this)) {
        CheckTokenChild(child, 221, 222);
        isValid = child->IsValid();
        if (!isValid) break;
    }
    valid = isValid;
}
