#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_H

#include <cstddef>
#include <memory>
#include <queue>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/Scenario.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace cfg {
class CfgScenario;
}

namespace TavrelScenarioTemplateDb {

namespace internal {
struct ScenarioPlace;
}

class TavrelVariadicParameter;

// One scenario template. It opens its file at the first operation that needs the content, and tries that once: after a
// failed load every later operation works on the empty scenario that the load left, and only a new object tries again.
// What a host changes goes straight into the opened file's sections, from where `save` writes it.
//
// Its own failures leave as Exception by value. The operations that open the file throw
//   ExceptionCodeScenarioLoad  "Unable to load scenario PATH :\n" and the reason,
// or what reading the root model and looking up the targets of variadic parameters throws, the latter as Exception*.
class TAVREL_DRIVER_API TavrelScenario : public ScenarioTemplateDb::Scenario {
public:
    // `scenarioPath` is relative to `scenarioDirectory`, which may be in generic form. `configurationName` names the
    // configuration whose data path supplies the root model. Touches no file.
    TavrelScenario(const std::string& configurationName, const std::string& scenarioPath,
                   const std::string& scenarioDirectory);
    // For the listings of this library, whose scenarios have configuration and directory in common.
    TavrelScenario(std::shared_ptr<const internal::ScenarioPlace> sharedPlace, std::string scenarioPath);
    // For a file that the caller has opened and keeps for longer than this object. Path and directory are empty, the
    // configuration is the current one. Fails like the second half of a load.
    explicit TavrelScenario(cfg::CfgScenario* scenario);
    TavrelScenario(const TavrelScenario&) = delete;
    TavrelScenario& operator=(const TavrelScenario&) = delete;
    ~TavrelScenario() override;

    // The path relative to the scenario directory. Needs no file.
    std::string getPath() const override;
    // Opens the file. Builds the tree at the first call and keeps it.
    ScenarioTemplateDb::ScenarioNode* getRootScenarioNode() const override;
    // Null for an id that is empty, does not begin with the steps "sce" and "Scenario" (nothing is opened then), or
    // names the root. Any other id is followed step by step, and the first step that does not exist raises Exception*
    // as ScenarioNode does.
    ScenarioTemplateDb::ScenarioParameter* getParameterFromId(std::string id) const override;
    // Directory and path joined. Needs no file.
    std::string getFilePath() const override;
    // From now on `save` writes there.
    void setPath(const std::string& newPath) override;
    // These four open the file.
    std::string getName() const override;
    void setName(const std::string& name) override;
    std::string getDescription() const override;
    void setDescription(const std::string& description) override;
    // Does not open the scenario unless the bytes cannot be read: then the message needs its name, and a scenario that
    // cannot be opened either fails with ExceptionCodeScenarioLoad in place of ExceptionCodeScenarioRead.
    void fetch(std::vector<unsigned char>& bytes) const override;
    // Opens the file.
    std::size_t getVariadicParameterNumber() const override;
    // These do not open the file: before something else has, there is no variadic parameter.
    ScenarioTemplateDb::VariadicParameter* getVariadicParameter(std::size_t index) const override;
    void getVariadicParameters(std::vector<ScenarioTemplateDb::VariadicParameter*>& parameters) const override;
    // getVariadicParameters with the type that can be edited.
    void getTavrelVariadicParameters(std::vector<TavrelVariadicParameter*>& parameters) const;

    // Appends a declaration without target, of type integer. Opens the file. The scenario owns the result until it
    // removes it.
    TavrelVariadicParameter* addNewVariadicParameter();
    // Takes the declaration out of the scenario and destroys its object; an index beyond the end changes nothing.
    // Opens the file.
    void removeVariadicParameter(std::size_t index);
    // Empties the description and removes all variadic parameters; the name and the node tree stay. Does nothing on a
    // scenario that is not open.
    void clear();
    // Writes the scenario to its file path. Opens the file first. Throws nothing of its own: a save that fails leaves
    // the old file as it was, and getSaveFailure tells why. The file that this template was loaded from, or was saved
    // as before, is not replaced if someone else has changed it since.
    void save();
    // Why the last save failed, "path:row: reason", with row 0 where the file as a whole is meant. Empty if it
    // succeeded, and before the first one.
    const std::string& getSaveFailure() const;

protected:
    // Opens the file and runs loadCfgScenario.
    void loadScenario() const;
    // The second half of a load: what is read once the file is open.
    void loadCfgScenario() const;
    // The opened file; opens it if need be.
    cfg::CfgScenario* getCfgScenarioSection() const;

    // Appends the steps of a parameter id to `pieces`. Takes any text.
    static void splitId(const std::string& id, std::queue<std::string>& pieces);

private:
    std::string path; // relative to the scenario directory, with forward slashes
    std::shared_ptr<const internal::ScenarioPlace> place;
    // What comes with opening. Listings make thousands of templates of which few are opened, so it is made when it is
    // first asked for, also by const operations.
    struct Content;
    Content& content() const;
    mutable std::unique_ptr<Content> lazyContent;
};

} // namespace TavrelScenarioTemplateDb

#endif
