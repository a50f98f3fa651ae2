#include <scenario/config.h>

#include <ostream>

#include "items/AttributeRow.h"
#include "items/ChildStore.h"

namespace {

constexpr childStore::NullChildSite kNullChild{"core/include/scenario/ScenarioItem", 251};

using Row = AttributeRow<Config>;

// Tried from the top, and keys match by prefix: while EVALUATION is empty it also takes a line EVALUATION_ACTIVE.
// LABEL and the two flags are read but never written, so a load and a save lose them.
// clang-format off
constexpr Row kReadOrder[] = {
    Row::text<&Config::label>                  ("LABEL"),
    Row::text<&Config::requestDelay>           ("REQUEST_DELAY"),
    Row::text<&Config::updateDelay>            ("UPDATE_DELAY"),
    Row::text<&Config::waitMsgDelay>           ("WAITMSG_DELAY"),
    Row::text<&Config::numOfUndos>             ("NUMOF_UNDOS"),
    Row::text<&Config::student>                ("STUDENT"),
    Row::text<&Config::training>               ("TRAINING"),
    Row::text<&Config::evaluation>             ("EVALUATION"),
    Row::text<&Config::session>                ("SESSION"),
    Row::text<&Config::history>                ("HISTORY"),
    Row::flag<&Config::evaluationActive>       ("EVALUATION_ACTIVE"),
    Row::flag<&Config::generalParametersActive>("GENERAL_PARAMETERS_ACTIVE"),
};

struct Written {
    const char* key;
    std::string Config::*field;
};

constexpr Written kWriteOrder[] = {
    {"REQUEST_DELAY", &Config::requestDelay},
    {"WAITMSG_DELAY", &Config::waitMsgDelay},
    {"UPDATE_DELAY",  &Config::updateDelay},
    {"NUMOF_UNDOS",   &Config::numOfUndos},
    {"STUDENT",       &Config::student},
    {"TRAINING",      &Config::training},
    {"EVALUATION",    &Config::evaluation},
    {"SESSION",       &Config::session},
    {"HISTORY",       &Config::history},
};
// clang-format on

void FillDefault(std::string& field, const char* value) {
    if (field.empty()) field = value;
}

} // namespace

Config::Config(ScenarioItem* parentItem) : ScenarioItem(parentItem) {}

// Forgets the children without destroying them: they may have been handed to somebody else.
Config::~Config() = default;

void Config::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    childStore::Append(children, out, kindFilter);
}

void Config::DetachChildren() { children.clear(); }

void Config::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    childStore::Place(this, children, child, reference, after, kNullChild);
}

void Config::RemoveChild(ScenarioItem* child) { childStore::Remove(this, children, child); }

void Config::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    childStore::Replace(this, children, newChild, oldChild);
}

void Config::SwapChildren(ScenarioItem* a, ScenarioItem* b) { childStore::Swap(children, a, b); }

bool Config::LoadAttribute(ScenarioTextStream& stream) {
    return ScenarioItem::LoadAttribute(stream) || LoadFromRows<kReadOrder>(*this, stream);
}

void Config::SaveAttributes(std::ostream& out) const {
    ScenarioItem::SaveAttributes(out);
    for (const Written& row : kWriteOrder) WriteAttribute(out, row.key, this->*row.field);
}

bool Config::OnLoadEnd() {
    FillDefault(requestDelay, "1");
    FillDefault(waitMsgDelay, "500");
    FillDefault(updateDelay, "1");
    FillDefault(numOfUndos, "5");
    return true;
}
