#ifndef SCENARIO_TEMPLATE_DB_SCENARIO_NODE_H
#define SCENARIO_TEMPLATE_DB_SCENARIO_NODE_H

#include <cstddef>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/Export.h>

namespace ScenarioTemplateDb {

class ScenarioParameter;

// One element of a scenario. A node owns its children and its parameters and lives as long as its scenario; the
// host deletes none of them. Look-ups never answer null: what is not there is thrown, as Exception*, to be deleted
// by the catcher, with ExceptionCodeGeneric.
class SCENARIO_TEMPLATE_DB_API ScenarioNode {
public:
    virtual ~ScenarioNode() = default;

    // Names the node among its siblings and forms one step of a parameter id, so its spelling is a format.
    virtual std::string getId() const = 0;
    // What a list shows; never a key.
    virtual std::string getName() const = 0;
    virtual std::string getDescription() const = 0;
    // Null at the root, and only there.
    virtual ScenarioNode* getParent() const = 0;
    // Position among the parent's children; 0 at the root.
    virtual std::size_t getIndex() const = 0;

    virtual std::size_t getChildNumber() const = 0;
    // The first child with this id.
    virtual ScenarioNode* getChild(const std::string& id) const = 0;
    virtual ScenarioNode* getChild(std::size_t index) const = 0;
    // Drops what the vector held. Where getChildNumber is 0 a node may throw instead.
    virtual void getChildren(std::vector<ScenarioNode*>& children) const = 0;
    virtual std::size_t getChildIndex(const ScenarioNode* child) const = 0;

    virtual std::size_t getParameterNumber() const = 0;
    // The first parameter with this id, which is the last step of its full id.
    virtual ScenarioParameter* getParameter(const std::string& id) const = 0;
    virtual ScenarioParameter* getParameter(std::size_t index) const = 0;
    // Drops what the vector held.
    virtual void getParameters(std::vector<ScenarioParameter*>& parameters) const = 0;
    virtual std::size_t getParameterIndex(const ScenarioParameter* parameter) const = 0;

    // The ids from the root down to this node, joined by "/".
    virtual std::string getNodeId() const = 0;
};

} // namespace ScenarioTemplateDb

#endif
