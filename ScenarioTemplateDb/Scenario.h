#ifndef SCENARIO_TEMPLATE_DB_SCENARIO_H
#define SCENARIO_TEMPLATE_DB_SCENARIO_H

#include <cstddef>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/Export.h>

namespace ScenarioTemplateDb {

class ScenarioNode;
class ScenarioParameter;
class VariadicParameter;

// A scenario template. Making one reads nothing; the first operation that needs the content opens it, and then any
// of them can fail as the opening fails. Nodes, parameters and variadic parameters belong to the scenario and live
// as long as it does, or until it removes them: a host keeps the scenario, and deletes none of them.
class SCENARIO_TEMPLATE_DB_API Scenario {
public:
    virtual ~Scenario() = default;

    // The scenario's place in its database, by which DatabaseDriver::getScenario finds it.
    virtual std::string getPath() const = 0;
    // Never null. The same tree at each call.
    virtual ScenarioNode* getRootScenarioNode() const = 0;
    // Null when `id` has not the shape of a parameter's id; Exception by pointer when it has, and a step of it does
    // not exist.
    virtual ScenarioParameter* getParameterFromId(std::string id) const = 0;
    // The scenario's file, which may still hold variables of the installation.
    virtual std::string getFilePath() const = 0;
    // Moves nothing on disk: it says where the scenario stands from now on. Any text is taken.
    virtual void setPath(const std::string& path) = 0;

    virtual std::string getName() const = 0;
    virtual void setName(const std::string& name) = 0;
    virtual std::string getDescription() const = 0;
    virtual void setDescription(const std::string& description) = 0;

    // The file as it lies on disk, byte for byte; changes that were not saved are not in it. Throws Exception by
    // value (ExceptionCodeScenarioRead, or ExceptionCodeScenarioLoad when the scenario cannot even tell its name).
    virtual void fetch(std::vector<unsigned char>& bytes) const = 0;

    virtual std::size_t getVariadicParameterNumber() const = 0;
    // Never null. Throws Exception by value (ExceptionCodeInvalidIndex) beyond the end.
    virtual VariadicParameter* getVariadicParameter(std::size_t index) const = 0;
    // Drops what the vector held.
    virtual void getVariadicParameters(std::vector<VariadicParameter*>& parameters) const = 0;
};

} // namespace ScenarioTemplateDb

#endif
