// A whole template opened through the driver from a file: read, walked, its declarations edited, saved, opened again.

#include <stdexcept>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <environment/Environment.h>

#include "../Items.h"
#include "../Support.h"
#include "../Templates.h"

namespace {

using namespace TavrelScenarioTemplateDb;
using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;

constexpr const char* kRootModel = R"(
TYPEOF FOLDER (nuro)
{
	TYPEOF FOLDER (ENUMTAB_LIST)
	{
		TYPEOF ENUMTAB (T)
		{
			TYPEOF ENUM (E)
			{
				TYPE="FLOAT"
				VALUE="1"
			}
		}
	}
	TYPEOF FOLDER (PARAMETER_LIST)
	{
		TYPEOF PARAMETER (A)
		{
			TYPE="FLOAT"
			USAGE="BY_VALUE"
			ENUMTAB="T"
			KINDLIST="USER VARIABLE FUNCTION ENUM"
		}
	}
	TYPEOF FOLDER (FUNCTION_LIST)
	{
	}
	TYPEOF FOLDER (ACTION_LIST)
	{
	}
	TYPEOF FOLDER (CONDITION_LIST)
	{
	}
}
)";

void ReadParameter(const ScenarioTemplateDb::Scenario& scenario, const ScenarioParameter& parameter) {
    parameter.getIndex();
    parameter.getId();
    parameter.getName();
    parameter.getDescription();
    parameter.getParameterUnit();
    parameter.hasParameterUnit();
    parameter.getParentNode();
    if (const auto* stored = dynamic_cast<const TavrelScenarioParameter*>(&parameter)) stored->getParameterType();
    Answers([&] { parameter.getValueAsString(); });
    Demand(parameter.isInteger() + parameter.isReal() + parameter.isLiteral() + parameter.isBoolean() <= 1,
           "a parameter is of one type at most");
    Answers([&] { parameter.getLiteralValue(); });
    Answers([&] { parameter.getIntegerValue(); });
    Answers([&] { parameter.getRealValue(); });
    Answers([&] { parameter.getBooleanValue(); });
    Answers([&] { scenario.getParameterFromId(parameter.getParameterId()); });
}

void ReadNode(const ScenarioTemplateDb::Scenario& scenario, const ScenarioNode& node) {
    node.getId();
    node.getName();
    node.getNodeId();
    node.getDescription();
    std::vector<ScenarioParameter*> parameters;
    node.getParameters(parameters);
    Demand(parameters.size() == node.getParameterNumber(), "all parameters are listed");
    for (std::size_t i = 0; i < parameters.size() && i < 20; ++i) {
        Demand(node.getParameterIndex(parameters[i]) == i && node.getParameter(i) == parameters[i],
               "a parameter knows its place");
        ReadParameter(scenario, *parameters[i]);
    }
    Answers([&] { node.getParameter(parameters.size()); });
    Answers([&] { node.getChild(node.getChildNumber()); });
    std::vector<ScenarioNode*> children;
    Answers([&] { node.getChildren(children); });
    for (std::size_t i = 0; i < children.size(); ++i) {
        Demand(children[i]->getParent() == &node && children[i]->getIndex() == i, "a node knows its place");
        Answers([&] { node.getChild(children[i]->getId()); });
        ReadNode(scenario, *children[i]);
    }
}

void ReadVariadics(const ScenarioTemplateDb::Scenario& scenario) {
    std::vector<ScenarioTemplateDb::VariadicParameter*> parameters;
    scenario.getVariadicParameters(parameters);
    Demand(parameters.size() == scenario.getVariadicParameterNumber(), "all declarations are listed");
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const ScenarioTemplateDb::VariadicParameter& parameter = *parameters[i];
        Demand(scenario.getVariadicParameter(i) == &parameter, "a declaration has one place");
        parameter.getName();
        parameter.getDescription();
        parameter.getParameterId();
        parameter.getParameterUnit();
        parameter.hasParameterUnit();
        if (const auto* target = parameter.getTargetParameter()) target->getParameterId();
        Answers([&] { parameter.getIntegerDefaultValue(); });
        Answers([&] { parameter.getRealDefaultValue(); });
        Answers([&] { parameter.getBooleanDefaultValue(); });
        Answers([&] { parameter.getLiteralDefaultValue(); });
        Answers([&] {
            std::vector<const ScenarioTemplateDb::VariadicParameter::Range<int>*> ranges;
            parameter.getIntegerRanges(ranges);
            for (const auto* range : ranges) {
                range->getMinimum();
                range->getMaximum();
            }
        });
        Answers([&] {
            std::vector<const ScenarioTemplateDb::VariadicParameter::Range<double>*> ranges;
            parameter.getRealRanges(ranges);
            for (const auto* range : ranges) {
                range->getMinimum();
                range->getMaximum();
            }
        });
    }
    Answers([&] { scenario.getVariadicParameter(parameters.size()); });
}

void EditVariadics(TavrelScenario& scenario) {
    std::vector<TavrelVariadicParameter*> parameters;
    scenario.getTavrelVariadicParameters(parameters);
    for (TavrelVariadicParameter* parameter : parameters) {
        const std::string text = parameter->getDescription();
        parameter->setName(text + "\r\n<");
        parameter->setDescription(parameter->getParameterId());
        parameter->setParameterUnit(text.substr(0, 3));
        Answers([&] { parameter->insertRealRange(1).setMaximum(1.5); });
        Answers([&] { parameter->insertIntegerRange(1).setMinimum(-1); });
        Answers([&] {
            std::vector<std::string> literals;
            parameter->getLiterals(literals);
            parameter->insertLiteral(0) = text;
        });
        Answers([&] { parameter->removeRange(0); });
        const TavrelVariadicParameter copy(*parameter);
        if (parameter->isInteger()) parameter->setIntegerDefaultValue(7);
        if (parameter->isBoolean()) parameter->setBooleanDefaultValue(true);
        if (parameter->isLiteral()) parameter->setLiteralDefaultValue(text);
        if (text.size() % 2 == 0) Answers([&] { parameter->clearRanges(); });
        copy.getName();
    }
    TavrelVariadicParameter* added = scenario.addNewVariadicParameter();
    added->setType(ScenarioTemplateDb::ParameterTypeReal);
    added->setRealDefaultValue(2.5);
    added->insertRealRange(0).setMinimum(1.0);
    added->setParameterId("/sce/Scenario/duration");
    if (!parameters.empty()) scenario.removeVariadicParameter(0);
    scenario.setName(scenario.getDescription());
}

// Reads, edits and saves; false for a file that cannot be opened.
bool UseScenario(TavrelScenario& scenario) {
    const bool opened = Answers([&] { scenario.getName(); });
    Answers([&] { scenario.getDescription(); });
    try {
        Answers([&] { ReadNode(scenario, *scenario.getRootScenarioNode()); });
    } catch (const std::out_of_range&) {
        // A variable whose name is too large a number.
    }
    if (!opened) return false;
    ReadVariadics(scenario);
    EditVariadics(scenario);
    scenario.save();
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Workplace place;
    static const bool prepared = [] {
        place.Write("tavrel.xml", "<tavrel><configuration name=\"C\" path=\"c\"/></tavrel>");
        place.Write("c/configuration.xml",
                    "<configuration version=\"1.0\"><dataPath><root>.</root></dataPath></configuration>");
        place.Write("c/data/tools/nuro/nuro.mdl", kRootModel);
        place.Write("c/data/scenario/s.sce", "<sce><Scenario><name>n</name></Scenario></sce>");
        lmkUtils::EnvConfig::setTavrelConfigFilePath(place.Path("tavrel.xml"));
        return Answers([] { TavrelScenario("C", "s.sce", place.Path("c/data/scenario")).getName(); });
    }();
    Demand(prepared, "the installation is prepared");
    const std::string bytes = Input(data, size).Rest();
    place.Write("c/data/scenario/s.sce", bytes);
    Outlives([&] {
        ResetModel(nullptr);
        Answers([&] {
            const TavrelDatabaseDriver driver(place.Path("tavrel.xml"), "*", "C");
            const auto scenario = std::dynamic_pointer_cast<TavrelScenario>(driver.getScenario("s.sce"));
            Demand(scenario != nullptr, "the scenario is listed");
            std::vector<unsigned char> fetched;
            scenario->fetch(fetched);
            Demand(std::string(fetched.begin(), fetched.end()) == bytes, "the bytes are those of the file");
            if (!UseScenario(*scenario)) return;
            // A file may hold what is read and may not be written.
            if (!scenario->getSaveFailure().empty()) return;
            const std::string name = scenario->getName();
            // A declared target need not exist in this file.
            TavrelScenario again("C", "s.sce", place.Path("c/data/scenario"));
            if (Answers([&] { again.getName(); })) Demand(again.getName() == name, "what was saved comes back", name);
            again.clear();
        });
        delete scenarioRootModel; // stays in a host; here nothing points to it any more
        scenarioRootModel = nullptr;
    });
    return 0;
}
