#ifndef SCENARIO_EVALUATION_H
#define SCENARIO_EVALUATION_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/include.h>

// The criteria of a scenario with their score table. Its criteria stand among its sub-tasks. As an index entry it loads
// them from its FILE, as an include does, but takes them over instead of copying them.
class TAVREL_MODEL_API Evaluation : public Include {
public:
    explicit Evaluation(ScenarioItemObserver* observer = nullptr);
    ~Evaluation() override;

    ScenarioLib::Scenario* owner = nullptr; // borrowed, set by the host: whose tables the texts below it are read from
    std::map<std::int32_t, float> scores{{0, 0.0F}, {1, 0.0F}}; // SCORE

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    bool LoadAttribute(ScenarioTextStream& stream) override;
    // FILE is read but never written.
    void SaveAttributes(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    void UpdateDisplayText() override;
    void UpdateValidity() override;
    void Init(const std::string& path, double time) override;

    // Null beyond the end.
    virtual Task* GetTask(std::size_t index) const;
    // Does nothing unless both are in range.
    virtual void SwapTasks(std::size_t i, std::size_t j);

    // Steps the own rules and the criteria; states play no part here, except that -3 and -4 stop it.
    void StepEvaluation(double time, ScenarioLib::Scenario* scenario);

private:
    void LoadReferenced();
};

// The companion of a scenario that lives in a file beside it and holds the scenario's description. Nothing of it stands
// in the script but the block itself.
class TAVREL_MODEL_API GeneralParameters : public ScenarioItem {
public:
    explicit GeneralParameters(ScenarioItem* parentItem = nullptr);
    ~GeneralParameters() override;

    double startTime = 0.0;  // seconds; time of the last Init
    std::string description; // entry "description" of the file

    // It has no children; a child that is offered stays the caller's.
    void DetachChildren() override;
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;

    using ScenarioItem::Save;
    // Stores the description in the parameters file, which is made if it is missing. A `path` that is not empty goes
    // through SetPath first. False if there is no path or the file cannot be written; a warning on the log says so.
    virtual bool Save(const std::string& path);
    // Reads the description; without a path nothing happens. A file that is missing or cannot be read gives the empty
    // text, and no exception.
    virtual void Load();
    virtual void Init(double time);
    virtual void Step();

    // Takes the parameters file beside the scenario `file` (its last two characters give way to "par") as the path,
    // unless `file` is empty, and then loads it if asked to.
    void SetPath(const std::string& file, bool load);
};

#endif
