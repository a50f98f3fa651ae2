#ifndef SCENARIO_CONFIG_H
#define SCENARIO_CONFIG_H

#include <scenario/ScenarioItem.h>

// A block of settings, kept as text for consumers outside this library. Unlike a folder it does not destroy its
// children when it dies: only RemoveChild does.
class TAVREL_MODEL_API Config : public ScenarioItem {
public:
    std::vector<ScenarioItem*> children;  // destroyed by RemoveChild alone
    std::string updateDelay;              // UPDATE_DELAY; "1" after a load that gave none
    std::string waitMsgDelay;             // WAITMSG_DELAY; "500"
    std::string requestDelay;             // REQUEST_DELAY; "1"
    std::string numOfUndos;               // NUMOF_UNDOS; "5"
    std::string student;                  // STUDENT
    std::string training;                 // TRAINING
    std::string evaluation;               // EVALUATION
    std::string session;                  // SESSION
    std::string history;                  // HISTORY
    bool evaluationActive = false;        // EVALUATION_ACTIVE; read, never written
    bool generalParametersActive = false; // GENERAL_PARAMETERS_ACTIVE; read, never written

    explicit Config(ScenarioItem* parentItem = nullptr);
    ~Config() override;

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    // Fills the four defaults.
    bool OnLoadEnd() override;
};

#endif
