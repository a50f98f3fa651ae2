#include <limits>
#include <locale>

#include <support/DriverTest.h>

namespace {

// The parameters of one section, whose values stand in SI units.
class ScenarioParameterTest : public testing::Test {
protected:
    void open(const SectionText& section) {
        installation.configuration("City", "1", {"pack"});
        installation.model("pack");
        installation.scenario("pack", "one.sce", SectionText("Scenario").section(section));
        installation.use();
        scenario = std::make_unique<TavrelScenario>("City", "one.sce", installation.path() + "/pack/data/scenario");
    }

    const TavrelScenarioParameter& parameter(const std::string& name) const {
        return dynamic_cast<const TavrelScenarioParameter&>(
            *scenario->getRootScenarioNode()->getChild(std::size_t(0))->getParameter(name));
    }

    InstallationBuilder installation;
    std::unique_ptr<TavrelScenario> scenario;

private:
    // Reals are shown as the global locale says, and the tests say what they expect in the classic one.
    struct ClassicLocale {
        ClassicLocale() : before(std::locale::global(std::locale::classic())) {}
        ~ClassicLocale() { std::locale::global(before); }
        std::locale before;
    } classicLocale;
};

TEST_F(ScenarioParameterTest, ValuesComeInTheirOwnTypeAndNoOther) {
    struct Row {
        const char* type;
        const char* value;
        const char* predicates;
        ParameterType parameterType;
        const char* text;
    };
    const Row rows[] = {
        {"boolean", "1", "b", ParameterTypeBoolean, "true"},
        {"integer", "-7", "i", ParameterTypeInteger, "-7"},
        {"real", "2", "r", ParameterTypeReal, "2.000000"},
        {"string", " two words ", "l", ParameterTypeLiteral, " two words "},
        {"", "untyped", "l", ParameterTypeLiteral, "untyped"},
    };
    SectionText section("Everything");
    for (const Row& row : rows) section.parameter(std::string("p") + row.type, row.value, row.type);
    open(section);
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string("type ") + row.type);
        const TavrelScenarioParameter& it = parameter(std::string("p") + row.type);
        EXPECT_EQ(std::string(it.isInteger() ? "i" : "") + (it.isReal() ? "r" : "") + (it.isLiteral() ? "l" : "") +
                      (it.isBoolean() ? "b" : ""),
                  row.predicates);
        EXPECT_EQ(it.getParameterType(), row.parameterType);
        EXPECT_EQ(it.getValueAsString(), row.text);
        const auto expected = [](bool isRight, const char* message) {
            return isRight ? Failure() : byPointer(32, message);
        };
        EXPECT_EQ(failureOf([&] { it.getLiteralValue(); }), expected(it.isLiteral(), "Parameter type is not a string"));
        EXPECT_EQ(failureOf([&] { it.getIntegerValue(); }),
                  expected(it.isInteger(), "Parameter type is not an integer"));
        EXPECT_EQ(failureOf([&] { it.getRealValue(); }), expected(it.isReal(), "Parameter type is not a real"));
        EXPECT_EQ(failureOf([&] { it.getBooleanValue(); }),
                  expected(it.isBoolean(), "Parameter type is not a boolean"));
    }
}

// The number of the type eats as many characters of the message.
TEST_F(ScenarioParameterTest, TypesOutsideTheInterfaceHaveNoValue) {
    open(SectionText("Everything")
             .parameter("v", "1 2 3", "vector")
             .parameter("l", "a b", "list")
             .parameter("e", "red", "enumeration", "", "Colour"));
    EXPECT_EQ(failureOf([&] { parameter("v").getValueAsString(); }),
              byValue(-1, "ble to get parameter value : Unkown parameter type : "));
    EXPECT_EQ(failureOf([&] { parameter("l").getValueAsString(); }),
              byValue(-1, "le to get parameter value : Unkown parameter type : "));
    EXPECT_EQ(failureOf([&] { parameter("e").getValueAsString(); }),
              byValue(-1, "e to get parameter value : Unkown parameter type : "));
    const TavrelScenarioParameter& it = parameter("e");
    EXPECT_FALSE(it.isInteger() || it.isReal() || it.isLiteral() || it.isBoolean());
    EXPECT_EQ(it.getParameterType(), ParameterTypeLiteral);
    EXPECT_EQ(it.getId(), "e");
    EXPECT_EQ(it.getName(), "e");
    EXPECT_EQ(it.getDescription(), "Colour");
    EXPECT_EQ(failureOf([&] { it.getLiteralValue(); }), byPointer(32, "Parameter type is not a string"));
}

TEST_F(ScenarioParameterTest, NumbersAreShownInTheirUnit) {
    struct Row {
        const char* why;
        const char* type;
        const char* unit;
        const char* value;
        const char* text;
        bool hasUnit;
    };
    const Row rows[] = {
        {"real, m/s to km/h", "real", "km/h", "22.5", "81.000000", true},
        {"real, no unit", "real", "", "0.1234567", "0.123457", false},
        {"real, large ones without an exponent", "real", "", "1e15", "1000000000000000.000000", false},
        {"a unit that nobody knows is none", "real", "parsec", "1", "1.000000", false},
        {"integer, cut off toward zero", "integer", "km", "2999", "2", true},
        {"negative integer, cut off toward zero", "integer", "km", "-2999", "-2", true},
        {"integer that leaves 32 bits", "integer", "mm", "2147483647", "2147483647000", true},
        {"literals are not converted", "string", "km/h", "36", "36", true},
    };
    SectionText section("Everything");
    for (std::size_t row = 0; row < std::size(rows); ++row)
        section.parameter("p" + std::to_string(row), rows[row].value, rows[row].type, rows[row].unit);
    open(section);
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        SCOPED_TRACE(rows[row].why);
        const TavrelScenarioParameter& it = parameter("p" + std::to_string(row));
        EXPECT_EQ(it.getValueAsString(), rows[row].text);
        EXPECT_EQ(it.hasParameterUnit(), rows[row].hasUnit);
        EXPECT_EQ(it.getParameterUnit(), rows[row].hasUnit ? rows[row].unit : "");
    }
    EXPECT_EQ(parameter("p4").getIntegerValue(), 2);
    EXPECT_DOUBLE_EQ(parameter("p0").getRealValue(), 81.0);
}

// The text is for people, so it follows the locale of the program; integers do not.
TEST_F(ScenarioParameterTest, RealsAreWrittenInTheGlobalLocale) {
    class Comma : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    open(SectionText("Everything").parameter("r", "1234.5", "real").parameter("i", "1234", "integer"));
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    const std::string real = parameter("r").getValueAsString();
    const std::string integer = parameter("i").getValueAsString();
    std::locale::global(before);
    EXPECT_EQ(real, "1.234,500000");
    EXPECT_EQ(integer, "1234");
}

TEST_F(ScenarioParameterTest, RealsInTheClassicLocaleAreThoseOfAStream) {
    open(SectionText("Everything").parameter("r", "0", "real"));
    auto& section = const_cast<cfg::Section&>(
        *dynamic_cast<const TavrelScenarioNode&>(*parameter("r").getParentNode()).getSection());
    using Limits = std::numeric_limits<double>;
    for (const double value :
         {0.0, -0.0, 0.0000005, 0.0000015, -2.5e-7, 0.1, 1e21, -1e22 / 3, Limits::max(), Limits::lowest(),
          Limits::denorm_min(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -Limits::quiet_NaN()}) {
        section.beginParameter().getDouble() = value;
        std::ostringstream text;
        text << std::fixed << value;
        EXPECT_EQ(parameter("r").getValueAsString(), text.str());
    }
}

TEST(ScenarioParameter, IsAViewOfItsEntry) {
    cfg::CfgScenario file;
    auto* vehicle = dynamic_cast<cfg::Vehicle*>(file.getRootSection()->createSubSection("Vehicle"));
    cfg::Section::ParameterIterator position = vehicle->beginParameter();
    const Failure none = byPointer(-1, "Failed to initialize the scenario parameter");
    EXPECT_EQ(failureOf([] { TavrelScenarioParameter parameter(nullptr, nullptr); }), none);
    EXPECT_EQ(failureOf([&] { TavrelScenarioParameter parameter(&position, nullptr); }),
              byPointer(-1, "The parameter (id) has no parent element"));

    const TavrelScenarioNode tree(file.getRootSection(), nullptr);
    const TavrelScenarioParameter parameter(&position, tree.getChild(std::size_t(0)));
    ++position;
    vehicle->id = 5;
    EXPECT_EQ(parameter.getValueAsString(), "5") << "stays on its entry and reads it now";
    EXPECT_EQ(parameter.getParameterId(), "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=5]/id");
    EXPECT_FALSE(parameter.hasParameterUnit());
}

} // namespace
