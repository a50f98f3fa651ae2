#ifndef SCENARIO_INCLUDE_H
#define SCENARIO_INCLUDE_H

#include <memory>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/IncludeRepository.h>
#include <scenario/task.h>

// A task in a file of its own. Marked as an index entry it is a reference: its FILE is loaded when it is read, and only
// the reference is saved. Unmarked it holds its content inline, and FILE is no more than a name.
class TAVREL_MODEL_API Include : public Task {
public:
    // The folder of the data path in which FILE is searched.
    static constexpr const char* kDirectory = "data/script/include";

    explicit Include(ScenarioItemObserver* observer = nullptr);
    ~Include() override;

    std::vector<Include*> includes; // owned

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    // Of a scenario it takes over the children that it can hold; the scenario itself stays the caller's.
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    // A reference whose file cannot be had stays in the tree with the label "?"; that is no failure of the load.
    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    ScenarioItem* Clone() const override;
    void UpdateDisplayText() override;
    // A reference is valid while its file stands on the data path. One that a repository supplied is no exception.
    void UpdateValidity() override;
    void Init(const std::string& path, double time) override;

    // Whether the top of the tree is a scenario.
    virtual bool IsInsideScenario() const;

    // The text of an include by its FILE, from the repositories. Throws std::runtime_error if none contains it.
    static std::string ResolveInclude(const std::string& file);

protected:
    // Adds what this item can hold of the children of `from` and takes it out there.
    void TakeOver(Task& from, std::vector<Include*>& fromIncludes, ScenarioItem* reference, bool after);

private:
    void LoadReferenced();

    // The file as it was read, if it defines calls of its own: copies of them link to what they were copied from.
    std::shared_ptr<const ScenarioItem> definitions;
};

#endif
