#include <algorithm>

#include <scenario/Parameter.h>
#include <scenario/action.h>
#include <scenario/include.h>
#include <scenario/rule.h>
#include <scenario/variable.h>
#include <simulation/Trace.h>

#include "../Describe.h"
#include "../ScriptRows.h"
#include "../Scripts.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

// What the user looks for: a kind, or any of the four, and a name.
struct Wanted {
    std::uint32_t kind = KindNone;
    std::string name;
};

struct KindWord {
    const char* word;
    ScenarioItemKind kind;
};
constexpr KindWord kKinds[] = {
    {"variable", KindVariable}, {"task", KindTask}, {"rule", KindRule}, {"include", KindInclude}};

Wanted WantedOf(const std::string& operand) {
    for (const KindWord& row : kKinds) {
        const std::string start = std::string(row.word) + ":";
        if (operand.rfind(start, 0) == 0) return {row.kind, operand.substr(start.size())};
    }
    return {KindNone, operand};
}

std::string WordOf(std::uint32_t kind) {
    for (const KindWord& row : kKinds)
        if (row.kind == kind) return row.word;
    return kind == KindEvaluation ? "include" : "task"; // states of other kinds
}

std::string WithSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

// Names under which an item may be asked for.
std::vector<std::string> NamesOf(const ScenarioItem& item) {
    std::vector<std::string> names{item.name, item.label};
    if (!item.fileName.empty() && dynamic_cast<const Include*>(&item)) {
        names.push_back(WithSlashes(item.fileName));
        names.push_back(FileNameOf(item.fileName));
    }
    names.erase(std::remove(names.begin(), names.end(), ""), names.end());
    return names;
}

// Where an item stands or is referred to.
struct Reference {
    std::string role; // "defined", "used", "written", "entered", "included"
    const ScenarioItem* item;
    const char* key;
    const ScenarioItem* target;
};

bool IsByAddress(const Parameter& parameter) {
    const Token* token = &parameter;
    while (token->model && token->model != token) token = token->model;
    const auto* definition = dynamic_cast<const Parameter*>(token);
    return definition && definition->usage == "BY_ADDRESS";
}

class Finder {
public:
    Finder(ScenarioItem& scriptRoot, Wanted what) : root(scriptRoot), wanted(std::move(what)) {
        CollectTargets(root);
        if (targets.empty()) return;
        for (const ScenarioItem* target : targets) references.push_back({DefinedAs(*target), target, "", target});
        Collect(root);
    }

    std::vector<Reference> references; // definitions first
    std::vector<const ScenarioItem*> targets;
    std::vector<std::string> known; // names that could have been meant

private:
    static std::string DefinedAs(const ScenarioItem& target) {
        return dynamic_cast<const Include*>(&target) && target.IsIndexEntry() ? "included" : "defined";
    }

    // A rule, a variable and so on below an item; variables of rules are among its children.
    void CollectTargets(const ScenarioItem& item) {
        const bool isInclude = item.kind == KindInclude || item.kind == KindEvaluation;
        const std::uint32_t kind = isInclude ? KindInclude : item.kind == KindCriteria ? KindTask : item.kind;
        const bool isOfKind = kind == KindVariable || kind == KindTask || kind == KindRule || kind == KindInclude;
        if (isOfKind && (wanted.kind == KindNone || wanted.kind == kind)) {
            const std::vector<std::string> names = NamesOf(item);
            known.insert(known.end(), names.begin(), names.end());
            if (std::find(names.begin(), names.end(), wanted.name) != names.end()) targets.push_back(&item);
        }
        std::vector<ScenarioItem*> children;
        item.GetChildren(children);
        for (const ScenarioItem* child : children) CollectTargets(*child);
    }

    bool IsTarget(const ScenarioItem* item) const {
        return item && std::find(targets.begin(), targets.end(), item) != targets.end();
    }

    void Collect(ScenarioItem& item) {
        if (const auto* parameter = dynamic_cast<const Parameter*>(&item)) Look(*parameter);
        std::vector<ScenarioItem*> children;
        item.GetChildren(children);
        for (ScenarioItem* child : children) Collect(*child);
    }

    void Look(const Parameter& parameter) {
        if (parameter.valueKind == "VARIABLE") {
            std::vector<ScenarioItem*> visible;
            parameter.CollectVisibleItems(KindVariable, visible, parameter.value, parameter.ownerFile);
            // The innermost one is the last.
            const ScenarioItem* variable = visible.empty() ? nullptr : visible.back();
            if (IsTarget(variable))
                references.push_back({IsByAddress(parameter) ? "written" : "used", &parameter, "VALUE", variable});
        } else if (parameter.valueKind == "TASK") {
            const ScenarioItem* task = TaskOf(parameter);
            const bool enters =
                parameter.parent && (parameter.parent->kind == KindAction || parameter.parent->kind == KindElseAction);
            if (IsTarget(task)) references.push_back({enters ? "entered" : "used", &parameter, "VALUE", task});
        }
        if (parameter.ownerFile.empty()) return;
        for (const ScenarioItem* target : targets)
            if (dynamic_cast<const Include*>(target) &&
                WithSlashes(target->fileName) == WithSlashes(parameter.ownerFile))
                references.push_back({"used", &parameter, "OWNER_FILE", target});
    }

    // A state beside that of the rule, or one below it, else the first of that name.
    ScenarioItem* TaskOf(const Parameter& parameter) const {
        for (const ScenarioItem* item = parameter.parent; item; item = item->parent) {
            if (!dynamic_cast<const Task*>(item)) continue;
            for (const ScenarioItem* around : {static_cast<const ScenarioItem*>(item->parent), item}) {
                std::vector<ScenarioItem*> states;
                if (around) around->GetChildren(states, KindTask);
                for (ScenarioItem* state : states)
                    if (state->name == parameter.value) return state;
            }
        }
        return root.FindItem(KindTask, parameter.value, "");
    }

    ScenarioItem& root;
    const Wanted wanted;
};

std::string TitleOf(const ScenarioItem& item) {
    const std::string name =
        dynamic_cast<const Include*>(&item) && item.IsIndexEntry() ? WithSlashes(item.fileName) : item.name;
    return item.label.empty() || item.label == "?" ? fmt::format("{} {}", WordOf(item.kind), name)
                                                   : fmt::format("{} {} ({})", WordOf(item.kind), name, item.label);
}

// The call that a parameter fills tells more than the parameter.
std::string DisplayOf(const Reference& reference) {
    const ScenarioItem* item = reference.item;
    if (dynamic_cast<const Parameter*>(item) && item->parent) item = item->parent;
    return item == reference.target ? "" : item->displayText;
}

} // namespace

int RunRefs(Context& context) {
    const LoadedScript loaded = LoadScript(context, context.arguments.Text("SCRIPT"));
    UpdateDisplayTexts(*loaded.root);
    const std::string operand = context.arguments.Text("NAME");
    const Finder finder(*loaded.root, WantedOf(operand));
    if (finder.targets.empty())
        throw Failure{ExitUnreadable, fmt::format("{} has no variable, task, rule or include \"{}\"{}", loaded.title,
                                                  operand, DidYouMean(WantedOf(operand).name, finder.known))};
    const ScriptRows rows = RowsOf(loaded);
    Json all = Json::array();
    bool isUsed = false;
    for (const Reference& reference : finder.references) {
        const ScriptRows::Place place = rows.Of(*reference.item, reference.key);
        const std::string way = TavrelSimulation::PathOf(*reference.item);
        isUsed = isUsed || reference.item != reference.target;
        all.push_back({{"role", reference.role},
                       {"target", TitleOf(*reference.target)},
                       {"kind", WordOf(reference.target->kind)},
                       {"name", reference.target->name},
                       {"label", reference.target->label},
                       {"file", place.file},
                       {"row", place.row == 0 ? Json() : Json(place.row)},
                       {"place", way},
                       {"display", OneLine(DisplayOf(reference))}});
        if (context.arguments.Has("--json")) continue;
        context.out.Print("{}:{}: {} {}\n    in {}\n", context.out.Strong(ShownText(place.file)), place.row,
                          reference.role, OneLine(TitleOf(*reference.target)), OneLine(way));
        if (!DisplayOf(reference).empty()) context.out.Print("    {}\n", OneLine(DisplayOf(reference)));
    }
    if (context.arguments.Has("--json")) context.out.Print(DumpJson(all));
    return std::max<int>(context.status, isUsed ? ExitClean : ExitFindings);
}

} // namespace tavrel
