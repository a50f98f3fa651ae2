#ifndef SCENARIO_VARIABLENAMES_H
#define SCENARIO_VARIABLENAMES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

class Parameter;
class ScenarioItem;
class Task;
class Variable;

// Makes the names and labels of a task's own variables unique, exactly as Token::MakeUniqueName and
// ScenarioItem::MakeUniqueLabel do one variable at a time, but with one walk over the tree for all of them.
class VariableNames {
public:
    explicit VariableNames(Task& renamedTask) : task(renamedTask) {}

    // Answers whether a name changed.
    bool MakeUnique();

private:
    // How often something stands in the tree. A search by name does not look into rules, a collection does.
    struct Places {
        std::int32_t all = 0;
        std::int32_t outsideRules = 0;
    };

    void IndexNames();
    void IndexLabels();
    void IndexParameters();
    void MakeNameUnique(Variable& variable);
    void MakeLabelUnique(Variable& variable);
    void RenameInParameters(const std::string& from, const std::string& to);
    std::string SmallestFreeNumber();

    Task& task;
    bool namesAreIndexed = false;
    bool labelsAreIndexed = false;
    bool parametersAreIndexed = false;
    std::unordered_map<std::string, Places> names;                         // of all variables of the tree
    std::unordered_map<const ScenarioItem*, Places> own;                   // the task's own variables
    std::unordered_map<std::string, std::int32_t> labels;                  // of the variables that the task sees
    std::unordered_map<const ScenarioItem*, std::int32_t> visible;         // how often each of them is seen
    std::unordered_map<std::string, std::vector<Parameter*>> parametersOf; // by the variable that they name
    std::int32_t firstPossible = 0;                                        // all smaller numbers are taken
    // By label: so many underscores and fewer, but at least one, are taken.
    std::unordered_map<std::string, std::size_t> takenUnderscores;
};

#endif
