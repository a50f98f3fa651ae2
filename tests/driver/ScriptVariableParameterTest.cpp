#include <clocale>

#include <support/DriverTest.h>

namespace {

ScriptVariableParameter variable(const std::string& type, const std::string& value, std::int64_t id = 12) {
    return ScriptVariableParameter(id, "Speed", value, type, nullptr);
}

// "i", "r", "l", "b" for the predicates that hold.
std::string predicates(const ScriptVariableParameter& parameter) {
    return std::string(parameter.isInteger() ? "i" : "") + (parameter.isReal() ? "r" : "") +
           (parameter.isLiteral() ? "l" : "") + (parameter.isBoolean() ? "b" : "");
}

TEST(ScriptVariableParameter, WordsOfTheScriptDecideThePredicates) {
    const std::pair<const char*, const char*> rows[] = {
        {"INTEGER", "i"}, {"FLOAT", "r"},  {"VOID", "r"},  {"STRING", "l"},
        {"BOOL", "b"},    {"integer", ""}, {"FLOAT ", ""}, {"", ""},
    };
    for (const auto& [word, expected] : rows) EXPECT_EQ(predicates(variable(word, "1")), expected) << word;
}

TEST(ScriptVariableParameter, IdsShowTheBitsOfTheNumberUnsigned) {
    EXPECT_EQ(variable("VOID", "", 12).getId(), "Variable[name=12]/value");
    EXPECT_EQ(variable("VOID", "", -1).getId(), "Variable[name=18446744073709551615]/value");
    EXPECT_EQ(variable("VOID", "", std::numeric_limits<std::int64_t>::min()).getId(),
              "Variable[name=9223372036854775808]/value");
    EXPECT_EQ(variable("VOID", "", 12).getParameterId(), "Variable[name=12]/value") << "without a parent";
}

TEST(ScriptVariableParameter, WholeNumbersAreReadAsStollDoes) {
    struct Row {
        const char* why;
        const char* value;
        std::int64_t expected;
    };
    const Row rows[] = {
        {"plain", "42", 42},
        {"blanks and a sign before", " \t\r\n\v\f-42", -42},
        {"a plus", "+7", 7},
        {"anything behind", "12abc", 12},
        {"cut at the point", "1.9", 1},
        {"base ten alone", "0x10", 0},
        {"no octal", "010", 10},
        {"largest", "9223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"smallest", "-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
    };
    for (const Row& row : rows) EXPECT_EQ(variable("STRING", row.value).getIntegerValue(), row.expected) << row.why;
    for (const char* none : {"", " ", "abc", "-", "+-1", ".5", "- 1"})
        EXPECT_EQ(failureOf([&] { variable("INTEGER", none).getIntegerValue(); }),
                  byPointer(32, "Parameter type is not an integer"))
            << '"' << none << '"';
}

TEST(ScriptVariableParameter, NumbersAreReadAsStodDoes) {
    struct Row {
        const char* why;
        const char* value;
        double expected;
    };
    const Row rows[] = {
        {"plain", "1.50", 1.5},
        {"blanks before, text behind", "  -2.5e1km", -25.0},
        {"only a fraction", ".5", 0.5},
        {"a comma ends it", "3,7", 3.0},
        {"an exponent broken off", "4e", 4.0},
        {"hexadecimal", "0x1p4", 16.0},
        {"infinity", "inf", std::numeric_limits<double>::infinity()},
    };
    for (const Row& row : rows) EXPECT_EQ(variable("BOOL", row.value).getRealValue(), row.expected) << row.why;
    EXPECT_TRUE(std::isnan(variable("BOOL", "nan").getRealValue()));
    for (const char* none : {"", "abc", "-", ".", "e5"})
        EXPECT_EQ(failureOf([&] { variable("FLOAT", none).getRealValue(); }),
                  byPointer(32, "Parameter type is not a real"))
            << '"' << none << '"';
}

TEST(ScriptVariableParameter, NumbersThatDoNotFitAreOutOfRange) {
    const auto textOf = [](auto call) {
        try {
            call();
        } catch (const std::out_of_range& error) {
            return std::string(error.what());
        }
        return std::string("nothing thrown");
    };
    for (const char* value : {"9223372036854775808", "-9223372036854775809", " 99999999999999999999999x"})
        EXPECT_EQ(textOf([&] { variable("INTEGER", value).getIntegerValue(); }), "stoll argument out of range");
    for (const char* value : {"1e309", "-1e309"})
        EXPECT_EQ(textOf([&] { variable("FLOAT", value).getRealValue(); }), "stod argument out of range");
}

// Hosts set the locale of their users; scripts are written with a point.
TEST(ScriptVariableParameter, TheLocaleOfTheHostDoesNotMatter) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    bool isAnyWithComma = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
        if (!isAnyWithComma && std::setlocale(LC_ALL, name))
            isAnyWithComma = std::string(std::localeconv()->decimal_point) == ",";
    const double read = variable("FLOAT", "1.5").getRealValue();
    std::setlocale(LC_ALL, before.c_str());
    if (!isAnyWithComma) GTEST_SKIP() << "no locale with a decimal comma is installed";
    EXPECT_EQ(read, 1.5);
}

TEST(ScriptVariableParameter, BooleansAndTextsAskForTheirType) {
    for (const auto& [value, expected] : {std::pair("1", true), {"0", false}, {"no", true}, {"", true}, {"00", true}})
        EXPECT_EQ(variable("BOOL", value).getBooleanValue(), expected) << value;
    EXPECT_EQ(variable("STRING", " 0 ").getLiteralValue(), " 0 ");
    for (const char* word : {"INTEGER", "FLOAT", "VOID", "STRING", ""})
        EXPECT_EQ(failureOf([&] { variable(word, "1").getBooleanValue(); }),
                  byPointer(32, "Parameter type is not a boolean"));
    for (const char* word : {"INTEGER", "FLOAT", "VOID", "BOOL", ""})
        EXPECT_EQ(failureOf([&] { variable(word, "1").getLiteralValue(); }),
                  byPointer(32, "Parameter type is not a string"));
    EXPECT_EQ(variable("FLOAT", "1.50").getValueAsString(), "1.50") << "the text of the script, not a number";
    EXPECT_EQ(variable("ANY", "x").getValueAsString(), "x");
    EXPECT_FALSE(variable("FLOAT", "1").hasParameterUnit());
    EXPECT_EQ(variable("FLOAT", "1").getParameterUnit(), "");
}

} // namespace
