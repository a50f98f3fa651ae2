#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_NODE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_NODE_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/ScenarioNode.h>
#include <TavrelScenarioTemplateDb/Export.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioParameter.h>

namespace cfg {
class Section;
}

namespace TavrelScenarioTemplateDb {

// The view of one section of a scenario file. The constructor builds the whole subtree: first the plain sub-sections,
// then vehicles, drivers and scripts, whatever their order in the file; a sub-section "ScenarioTemplate" gets no node.
// From then on the tree stays as it is, while names, ids and values are read from the sections at each call.
// Destroying a node touches no section, so the tree may outlive the file.
class TAVREL_DRIVER_API TavrelScenarioNode : public ScenarioTemplateDb::ScenarioNode {
public:
    // Neither is owned; `parentNode` is null at the root. Throws Exception* (ExceptionCodeGeneric) without a section,
    // and whatever building a parameter or a script below throws.
    TavrelScenarioNode(cfg::Section* nodeSection, ScenarioTemplateDb::ScenarioNode* parentNode);
    TavrelScenarioNode(const TavrelScenarioNode&) = delete;
    TavrelScenarioNode& operator=(const TavrelScenarioNode&) = delete;
    ~TavrelScenarioNode() override;

    // The name of the section, as id and as name.
    std::string getId() const override;
    std::string getName() const override;
    // Empty.
    std::string getDescription() const override;
    ScenarioTemplateDb::ScenarioNode* getParent() const override;
    std::size_t getIndex() const override;
    std::size_t getChildNumber() const override;
    ScenarioTemplateDb::ScenarioNode* getChild(const std::string& id) const override;
    ScenarioTemplateDb::ScenarioNode* getChild(std::size_t index) const override;
    void getChildren(std::vector<ScenarioTemplateDb::ScenarioNode*>& out) const override;
    std::size_t getChildIndex(const ScenarioTemplateDb::ScenarioNode* child) const override;
    // The number of parameters that the section has now, which is not that of the objects in this node once a
    // parameter was added to the section.
    std::size_t getParameterNumber() const override;
    ScenarioTemplateDb::ScenarioParameter* getParameter(const std::string& id) const override;
    ScenarioTemplateDb::ScenarioParameter* getParameter(std::size_t index) const override;
    void getParameters(std::vector<ScenarioTemplateDb::ScenarioParameter*>& out) const override;
    std::size_t getParameterIndex(const ScenarioTemplateDb::ScenarioParameter* parameter) const override;
    // "/sce/" and the id at the root; below it the parent's, "/" and the id.
    std::string getNodeId() const override;

    // The section that it shows, of the file that the tree was built from. Its parameters stand in the order of this
    // node's. Never null.
    cfg::Section* getSection() const;

private:
    cfg::Section* section; // not owned, never null
    ScenarioTemplateDb::ScenarioNode* parent;
    // Sections, then a VehicleNode for each vehicle, a DriverNode for each driver, and scripts.
    std::vector<std::unique_ptr<ScenarioTemplateDb::ScenarioNode>> children;
    std::size_t vehiclesBegin = 0;
    std::size_t driversBegin = 0;
    std::size_t scriptsBegin = 0;
    // Destroyed before the children. Its size is set once, so that a parameter keeps its address; mutable because a
    // node hands its parameters out of const operations.
    mutable std::vector<TavrelScenarioParameter> parameters;
};

} // namespace TavrelScenarioTemplateDb

#endif
