#include <support/DriverTest.h>

namespace {

cfg::Vehicle* addVehicle(cfg::Section* parent, int id, int driverId, const std::string& name) {
    auto* vehicle = dynamic_cast<cfg::Vehicle*>(parent->createSubSection("Vehicle"));
    vehicle->id = id;
    vehicle->driverId = driverId;
    vehicle->name = name;
    return vehicle;
}

cfg::Driver* addDriver(cfg::Section* parent, int id, const std::string& name, const std::string& label) {
    auto* driver = dynamic_cast<cfg::Driver*>(parent->createSubSection("Driver"));
    driver->id = id;
    driver->name = name;
    driver->label = label;
    return driver;
}

std::vector<std::string> childIds(const ScenarioNode& node) {
    std::vector<ScenarioNode*> children{nullptr}; // something to be dropped
    node.getChildren(children);
    std::vector<std::string> ids;
    for (const ScenarioNode* child : children) ids.push_back(child->getId());
    return ids;
}

class ScenarioNodeTest : public testing::Test {
protected:
    cfg::CfgScenario file;
    cfg::Section* root = file.getRootSection();
};

TEST_F(ScenarioNodeTest, ChildrenComeByTheirSortNotInTheOrderOfTheFile) {
    addVehicle(root, 2, 0, "Truck");
    root->createSubSection("Weather");
    addDriver(root, 1, "Anna", "D1");
    root->createSubSection("ScenarioTemplate")->createSubSection("Hidden");
    root->createSubSection("VariadicParameter");
    addVehicle(root, 1, 0, "Car")->createSubSection("Load")->createSubSection("ScenarioTemplate");
    root->createSubSection("Weather");

    const TavrelScenarioNode node(root, nullptr);
    EXPECT_THAT(childIds(node),
                ElementsAre("Weather", "VariadicParameter", "Weather", "Vehicle[id/@ScenarioTreeValue=2]",
                            "Vehicle[id/@ScenarioTreeValue=1]", "Driver[id/@ScenarioTreeValue=1]"));
    for (std::size_t index = 0; index < node.getChildNumber(); ++index) {
        ScenarioNode* child = node.getChild(index);
        EXPECT_EQ(child->getIndex(), index);
        EXPECT_EQ(node.getChildIndex(child), index);
        EXPECT_EQ(child->getParent(), &node);
        EXPECT_EQ(child->getDescription(), "");
    }
    EXPECT_EQ(node.getChild("Weather"), node.getChild(0)) << "the first of that name";
    const ScenarioNode* load = node.getChild("Vehicle[id/@ScenarioTreeValue=1]")->getChild("Load");
    EXPECT_EQ(load->getNodeId(), "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=1]/Load");
    EXPECT_EQ(load->getChildNumber(), 0U) << "a template is hidden at every level";
    EXPECT_EQ(node.getNodeId(), "/sce/Scenario");
    EXPECT_EQ(node.getParent(), nullptr);
    EXPECT_EQ(node.getIndex(), 0U);
}

// The number is compared, but the text must be that of the id.
TEST_F(ScenarioNodeTest, AVehicleIsFoundByTheIdThatItHasNow) {
    cfg::Vehicle* first = addVehicle(root, 3, 7, "Truck");
    addVehicle(root, 3, 7, "Bus");
    cfg::Vehicle* last = addVehicle(root, std::numeric_limits<std::int32_t>::min(), 7, "Tram");
    addDriver(root, 9, "Anna", "D1");
    const TavrelScenarioNode node(root, nullptr);
    const auto child = [&](const std::string& id) { return node.getChild(id); };
    EXPECT_EQ(child("Vehicle[id/@ScenarioTreeValue=3]"), node.getChild(std::size_t(0))) << "of two the first";
    EXPECT_EQ(child("Vehicle[id/@ScenarioTreeValue=-2147483648]"), node.getChild(std::size_t(2)));
    first->id = 9;
    last->id = 0;
    EXPECT_EQ(child("Vehicle[id/@ScenarioTreeValue=3]"), node.getChild(std::size_t(1)));
    EXPECT_EQ(child("Vehicle[id/@ScenarioTreeValue=9]"), node.getChild(std::size_t(0)));
    EXPECT_EQ(child("Driver[id/@ScenarioTreeValue=9]"), node.getChild(std::size_t(3)));
    for (const char* number : {"03", "+3", " 3", "3 ", "3x", "-0", "00", "", "9999999999", "-2147483648"})
        EXPECT_EQ(failureOf([&] { child("Vehicle[id/@ScenarioTreeValue=" + std::string(number) + "]"); }).form,
                  Failure::ByPointer)
            << number;
    EXPECT_EQ(failureOf([&] { child("Vehicle[id/@ScenarioTreeValue=3"); }).form, Failure::ByPointer);
    EXPECT_EQ(failureOf([&] { child("Driver[id/@ScenarioTreeValue=3]"); }).form, Failure::ByPointer);
}

TEST_F(ScenarioNodeTest, VehiclesAndDriversReadTheirSectionsAtEachCall) {
    cfg::Vehicle* vehicle = addVehicle(root, 3, 7, "Truck");
    cfg::Driver* driver = addDriver(root, 7, "Anna", "D1");
    const TavrelScenarioNode node(root, nullptr);
    const ScenarioNode* vehicleNode = node.getChild(0);
    const ScenarioNode* driverNode = node.getChild(1);
    EXPECT_EQ(vehicleNode->getName(), "Vehicle[3] - Truck");
    EXPECT_EQ(driverNode->getName(), "Driver[D1] - Truck");

    vehicle->id = -4;
    driver->id = 8;
    EXPECT_EQ(vehicleNode->getId(), "Vehicle[id/@ScenarioTreeValue=-4]");
    EXPECT_EQ(driverNode->getName(), "Driver[D1] - Anna") << "no vehicle names driver 8";
    EXPECT_EQ(node.getChild("Driver[id/@ScenarioTreeValue=8]"), driverNode);

    addVehicle(root, 5, 8, "Bus");
    addVehicle(root, 6, 8, "Tram");
    EXPECT_EQ(driverNode->getName(), "Driver[D1] - Tram") << "the last of several, although they got no node";
    EXPECT_EQ(node.getChildNumber(), 2U);
}

TEST_F(ScenarioNodeTest, LookupsThrowPointers) {
    addVehicle(root, 3, 0, "Truck");
    root->createSubSection("Weather");
    const TavrelScenarioNode node(root, nullptr);
    const ScenarioNode* weather = node.getChild("Weather");
    const ScenarioNode* vehicle = node.getChild(1);
    const ScenarioParameter* vehicleId = vehicle->getParameter("id");

    EXPECT_EQ(failureOf([&] { weather->getChild(std::size_t(0)); }),
              byPointer(-1, "Out of bound child index of the scenario element : Weather"));
    EXPECT_EQ(failureOf([&] { node.getChild("Vehicle[3] - Truck"); }),
              byPointer(-1, "No child element with id=Vehicle[3] - Truck in scenario element : Scenario"))
        << "a name is no id";
    EXPECT_EQ(failureOf([&] { vehicle->getChild(""); }),
              byPointer(-1, "No child element with id= in scenario element : Vehicle[3] - Truck"));
    EXPECT_EQ(failureOf([&] { weather->getChildIndex(vehicle); }),
              byPointer(-1, "The child element Vehicle[3] - Truck was not found in parent scenario element Weather"));
    EXPECT_EQ(failureOf([&] { vehicle->getParameter(std::size_t(3)); }),
              byPointer(-1, "Out of bound child index of the scenario parameter : Vehicle"));
    EXPECT_EQ(failureOf([&] { vehicle->getParameter("ID"); }),
              byPointer(-1, "No child parameter with id=ID in scenario element : Vehicle[3] - Truck"));
    EXPECT_EQ(failureOf([&] { weather->getParameterIndex(vehicleId); }),
              byPointer(-1, "The child parameter id was not found in parent element Weather"));
    EXPECT_EQ(failureOf([] { TavrelScenarioNode none(nullptr, nullptr); }),
              byPointer(-1, "Failed to initialize the scenario element"));
    EXPECT_EQ(failureOf([] { VehicleNode none(nullptr, nullptr); }),
              byPointer(-1, "Failed to initialize the scenario element"));
}

// Its name goes into the messages of its look-ups, so these fail as the name fails.
TEST_F(ScenarioNodeTest, ADriverWithoutParentSectionFailsByValueInPlaceOfTheLookup) {
    cfg::Driver* driver = addDriver(root, 1, "Anna", "D1");
    const TavrelScenarioNode node(root, nullptr);
    const ScenarioNode* driverNode = node.getChild(0);
    root->removeSubSection(driver);
    const Failure expected = byValue(-1, "Unable to get vehicle for driver Anna : no parent section");
    EXPECT_EQ(failureOf([&] { driverNode->getName(); }), expected);
    EXPECT_EQ(failureOf([&] { driverNode->getChild("x"); }), expected);
    EXPECT_EQ(failureOf([&] { driverNode->getParameter("x"); }), expected);
    EXPECT_EQ(failureOf([&] { node.getChild(std::size_t(0))->getParameter(std::size_t(9)); }),
              byPointer(-1, "Out of bound child index of the scenario parameter : Driver"));
    EXPECT_EQ(driverNode->getId(), "Driver[id/@ScenarioTreeValue=1]");
}

TEST_F(ScenarioNodeTest, DeclaredParametersAreThoseOfTheFields) {
    addVehicle(root, 3, 7, "Truck");
    const TavrelScenarioNode node(root, nullptr);
    const ScenarioNode* vehicle = node.getChild(0);
    ASSERT_EQ(vehicle->getParameterNumber(), 3U);
    std::vector<ScenarioParameter*> parameters{nullptr};
    vehicle->getParameters(parameters);
    std::vector<std::string> texts;
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        EXPECT_EQ(parameters[index]->getIndex(), index);
        EXPECT_EQ(parameters[index]->getParentNode(), vehicle);
        texts.push_back(parameters[index]->getParameterId() + "=" + parameters[index]->getValueAsString());
    }
    EXPECT_THAT(texts, ElementsAre("/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/id=3",
                                   "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/driverId=7",
                                   "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/name=Truck"));
}

// The host drops a scenario whose file object goes first.
TEST(ScenarioNodeLifetime, ATreeMayOutliveItsSections) {
    auto file = std::make_unique<cfg::CfgScenario>();
    addDriver(file->getRootSection(), 1, "Anna", "D1");
    addVehicle(file->getRootSection(), 1, 1, "Truck");
    auto node = std::make_unique<TavrelScenarioNode>(file->getRootSection(), nullptr);
    file.reset();
    EXPECT_EQ(node->getChildNumber(), 2U);
    node.reset();
}

} // namespace
