#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SCRIPT_NODE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SCRIPT_NODE_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/ScenarioNode.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace cfg {
class ScenarioScript;
}

namespace TavrelScenarioTemplateDb {

// The node of a script; its parameters are the script's own variables. The constructor reads the script once and keeps
// only texts: a later change of the script shows in the node's ids, if it is the name that changed, and nowhere else.
// It has no child and refuses to be asked for one: test getChildNumber first.
class TAVREL_DRIVER_API ScriptNode : public ScenarioTemplateDb::ScenarioNode {
public:
    // Neither is owned. Throws Exception by value (ExceptionCodeGeneric) for a script that cannot be read, with the log
    // of the reader, and for a variable whose name is no number; std::out_of_range for one that is too large.
    ScriptNode(cfg::ScenarioScript* scriptSection, ScenarioTemplateDb::ScenarioNode* parentNode);
    ScriptNode(const ScriptNode&) = delete;
    ScriptNode& operator=(const ScriptNode&) = delete;
    ~ScriptNode() override;

    // "ScenarioScript[scriptName="main"]", with the quotes: a step of parameter ids, so a format.
    std::string getId() const override;
    // "ScenarioScript - main".
    std::string getName() const override;
    // Empty.
    std::string getDescription() const override;
    ScenarioTemplateDb::ScenarioNode* getParent() const override;
    // A script always has a parent; without one the call is an error of the caller.
    std::size_t getIndex() const override;
    // 0.
    std::size_t getChildNumber() const override;
    // All four throw Exception* (ExceptionCodeGeneric), getChildren too.
    ScenarioTemplateDb::ScenarioNode* getChild(const std::string& id) const override;
    ScenarioTemplateDb::ScenarioNode* getChild(std::size_t index) const override;
    void getChildren(std::vector<ScenarioTemplateDb::ScenarioNode*>& out) const override;
    std::size_t getChildIndex(const ScenarioTemplateDb::ScenarioNode* child) const override;
    std::size_t getParameterNumber() const override;
    ScenarioTemplateDb::ScenarioParameter* getParameter(const std::string& id) const override;
    ScenarioTemplateDb::ScenarioParameter* getParameter(std::size_t index) const override;
    void getParameters(std::vector<ScenarioTemplateDb::ScenarioParameter*>& out) const override;
    std::size_t getParameterIndex(const ScenarioTemplateDb::ScenarioParameter* parameter) const override;
    // The parent's, "/" and the id; without a parent the id alone.
    std::string getNodeId() const override;

    // The script that it was built from, in its file.
    cfg::ScenarioScript* getScript() const;

private:
    ScenarioTemplateDb::ScenarioNode* parent;
    std::vector<std::unique_ptr<ScenarioTemplateDb::ScenarioParameter>> parameters; // in the order of the script
    cfg::ScenarioScript* script;                                                    // not owned
};

} // namespace TavrelScenarioTemplateDb

#endif
