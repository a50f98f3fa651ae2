#ifndef SUPPORT_MODELTEXT_H
#define SUPPORT_MODELTEXT_H

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <scenario/ScenarioItem.h>
#include <scenario/program.h>
#include <support/ScriptText.h>

// Items read from texts and written back, as tests need them.
using OwnedItem = std::unique_ptr<ScenarioItem>;

struct ReadResult {
    OwnedItem item;        // null for a refused text
    std::uint32_t row = 0; // of the cursor, where the read ended
};

inline ReadResult ReadExactly(const std::string& text, bool headerOnly = false) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ReadResult result;
    result.item.reset(LoadScenarioText(stream, nullptr, nullptr, nullptr, headerOnly));
    result.row = stream.line;
    return result;
}

// `raw` as ScriptText takes it.
inline OwnedItem ReadScript(std::string_view raw) { return std::move(ReadExactly(ScriptText(raw)).item); }

inline std::string SavedText(ScenarioItem& item) {
    std::ostringstream out;
    item.Save(out);
    return out.str();
}

// The children of a kind by their names, one blank after each.
inline std::string NamesOf(const ScenarioItem& item, std::uint32_t kind = 0) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children, kind);
    std::string names;
    for (const ScenarioItem* child : children) names += child->name + " ";
    return names;
}

// The same with the word of its kind before each name.
inline std::string BlocksOf(const ScenarioItem& item, std::uint32_t kind = 0) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children, kind);
    std::string blocks;
    for (const ScenarioItem* child : children) blocks += std::string(KindKeyword(child->kind)) + child->name + " ";
    return blocks;
}

template <class Item = ScenarioItem>
Item* AddNew(ScenarioItem& parent, std::uint32_t kind, const std::string& name, const std::string& label = "") {
    ScenarioItem* child = CreateItem(kind, name, nullptr);
    child->label = label;
    parent.AddChild(child, nullptr, true);
    return static_cast<Item*>(child);
}

// What is told of the texts that are read while it lives, as "row: cause".
class LoadProblems : public ScopedLoadProblemListener {
public:
    void OnLoadProblem(const LoadProblem& problem) override {
        told.push_back(std::to_string(problem.row) + (problem.isWarning ? " (warning): " : ": ") + problem.cause);
        last = problem;
    }
    std::vector<std::string> told;
    LoadProblem last;
};

// The root model of the process while it lives.
class RootModel {
public:
    explicit RootModel(std::string_view raw) : RootModel(ReadScript(raw)) {}
    explicit RootModel(OwnedItem item) : model(std::move(item)), before(scenarioRootModel) {
        scenarioRootModel = dynamic_cast<Folders*>(model.get());
    }
    ~RootModel() { scenarioRootModel = before; }
    RootModel(const RootModel&) = delete;
    RootModel& operator=(const RootModel&) = delete;

    ScenarioItem* Get() const { return model.get(); }

private:
    OwnedItem model;
    Folders* before;
};

// The row of a case table in the failure's text.
template <class Row>
std::string Why(const Row& row) {
    return std::string("case: ") + row.why;
}

#endif
