#ifndef SUPPORT_SCRIPTWORLD_H
#define SUPPORT_SCRIPTWORLD_H

#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <scenario/ItemModel.h>
#include <support/ModelText.h>

// A root model in use and the scripts read against it. Whatever was read has to go before the world does.
class ScriptWorld : private ScopedLoadProblemListener {
public:
    explicit ScriptWorld(std::string_view model) {
        scenarioRootModel = nullptr;
        root = Read(model);
        if (!root) throw std::runtime_error("model refused in row " + std::to_string(row) + ": " + cause);
        scenarioRootModel = static_cast<Folders*>(root.get());
    }
    ~ScriptWorld() override {
        scenarioRootModel = nullptr;
        scenarioLog = nullptr;
    }

    // Null for a text that is refused; `row` and `cause` then say where and why.
    std::unique_ptr<ScenarioItem> Read(std::string_view raw) { return ReadText(ScriptText(raw)); }
    std::unique_ptr<ScenarioItem> ReadText(const std::string& text) {
        cause.clear();
        ScenarioTextStream stream(text.c_str(), text.size());
        std::unique_ptr<ScenarioItem> item(LoadScenarioText(stream, nullptr, nullptr, &log, false));
        row = stream.line;
        return item;
    }

    // What stands on the log, and empties it.
    std::string TakeLog() {
        const std::string text = log.str();
        log.str("");
        return text;
    }

    template <class Item>
    Item& Find(ScenarioItem& in, ScenarioItemKind kind, const std::string& name) {
        auto* item = dynamic_cast<Item*>(in.FindItem(kind, name, ""));
        if (!item) throw std::runtime_error("no " + name);
        return *item;
    }

    std::unique_ptr<ScenarioItem> root;
    std::uint32_t row = 0;
    std::string cause; // the first one since the last read
    std::ostringstream log;

private:
    void OnLoadProblem(const LoadProblem& problem) override {
        if (cause.empty()) cause = problem.cause;
    }
};

#endif
