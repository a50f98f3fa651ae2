// Variables and the entries of enumerations.
#include <cmath>
#include <limits>

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/ModelText.h>

namespace {

OwnedItem ReadVariable(const std::string& lines) {
    return std::move(ReadExactly("TYPEOF VARIABLE (7)\n{\n" + EntryLines(lines) + "\n}\n").item);
}

const Variable& AsVariable(const OwnedItem& item) { return static_cast<const Variable&>(*item); }

constexpr const char* kPlain = R"(
    TYPEOF VARIABLE (7) LABEL="" TYPE="" VALUE="" INTERACTIVE_TYPE="VOID" IS_INITIALIZATION_NEEDED_AT_START="0"
        INTERACTIVE_MIN_VALUE="0"
        INTERACTIVE_MAX_VALUE="9999"
        INTERACTIVE_STEP_VALUE="1"
        CATEGORY="INTERNAL"
)";

TEST(Variable, WithoutAttributesIsSavedWithItsDefaults) {
    const OwnedItem item = ReadVariable("");
    EXPECT_EQ(SavedText(*item), "\n" + ScriptText(kPlain));
    // The empty TYPE reads back as none, and a TYPE may follow.
    const OwnedItem again = ReadScript(kPlain);
    ASSERT_TRUE(again);
    EXPECT_EQ(SavedText(*again), SavedText(*item));
    EXPECT_EQ(AsVariable(ReadVariable("TYPE=\"\"\nTYPE=\"BOOL\"")).type, "BOOL");
    EXPECT_EQ(AsVariable(item).spare, "0");
}

TEST(Variable, TakesTheFirstTypeAndValueAndTheLastOfTheRest) {
    struct {
        const char* why;
        const char* lines;
        bool taken;
    } const rows[] = {
        {"each word of TYPE", "TYPE='VOID'", true},
        {"another word", "TYPE='REAL'", false},
        {"a second TYPE", "TYPE='BOOL' TYPE='BOOL'", false},
        {"a second VALUE", "VALUE='1' VALUE='1'", false},
        {"a VALUE behind an empty one", "VALUE='' VALUE='1'", true},
        {"a second CATEGORY", "CATEGORY='a' CATEGORY=''", true},
        {"a second INTERACTIVE_TYPE", "INTERACTIVE_TYPE='a' INTERACTIVE_TYPE='b'", true},
        {"a second limit", "INTERACTIVE_MIN_VALUE='1' INTERACTIVE_MIN_VALUE='2'", true},
        {"a block", "TYPEOF VARIABLE (8)\n{\n}", false},
        {"a block of any kind", "TYPEOF FOLDER (8)\n{\n}", false},
    };
    for (const auto& row : rows) EXPECT_EQ(ReadVariable(row.lines) != nullptr, row.taken) << Why(row);
    const OwnedItem item = ReadVariable("VALUE=\"a\"\nCATEGORY=\"b\"\nCATEGORY=\"c\"");
    EXPECT_EQ(AsVariable(item).value + AsVariable(item).initialValue + AsVariable(item).category, "aac");
}

TEST(Variable, ReadsNumbersStrictly) {
    const double inf = std::numeric_limits<double>::infinity();
    struct {
        const char* text;
        double number; // NaN: see below
        const char* saved;
    } const good[] = {
        {"0", 0.0, "0"},
        {"-0", -0.0, "-0"},
        {"0.1", 0.1, "0.10000000000000001"},
        {"+12.5", 12.5, "12.5"},
        {".5", 0.5, "0.5"},
        {"5.", 5.0, "5"},
        {"007", 7.0, "7"},
        {"1e3", 1000.0, "1000"},
        {"-1.5E-3", -0.0015, "-0.0015"},
        {"123456789012345678901234567890", 123456789012345678901234567890.0, "1.2345678901234568e+29"},
        {"1e-999", 0.0, "0"},
        {"1.7976931348623157e308", 1.7976931348623157e308, "1.7976931348623157e+308"},
        {"inf", inf, "inf"},
        {"-INFINITY", -inf, "-inf"},
        {"+inf", inf, "inf"},
    };
    for (const auto& row : good) {
        const OwnedItem item = ReadVariable(std::string("INTERACTIVE_MIN_VALUE=\"") + row.text + "\"");
        EXPECT_EQ(AsVariable(item).interactiveMinValue, row.number) << row.text;
        EXPECT_NE(SavedText(*item).find(std::string("INTERACTIVE_MIN_VALUE=\"") + row.saved + "\"\n"),
                  std::string::npos)
            << row.text;
    }
    for (const char* text : {"nan", "NAN", "-nan", "nan(1)"}) {
        const OwnedItem item = ReadVariable(std::string("INTERACTIVE_STEP_VALUE=\"") + text + "\"");
        EXPECT_TRUE(std::isnan(AsVariable(item).interactiveStepValue)) << text;
        const std::string sign = text[0] == '-' ? "-" : "";
        EXPECT_NE(SavedText(*item).find("INTERACTIVE_STEP_VALUE=\"" + sign + "nan\"\n"), std::string::npos) << text;
    }
    for (const char* text : {"",    " ",   "1 ",      " 1",   "1-",    "1+",  "1e", "1E+", "e5",    ".",  "-",
                             "+-1", "1,5", "1.000,5", "0x10", "1e999", "abc", "1f", "--1", "infin", "in", "n"}) {
        try {
            ReadVariable(std::string("INTERACTIVE_MAX_VALUE=\"") + text + "\"");
            ADD_FAILURE() << "taken: " << text;
        } catch (const boost::bad_lexical_cast& error) {
            EXPECT_STREQ(error.what(), "bad lexical cast: source type value could not be interpreted as target");
        }
    }
}

TEST(Variable, ReadsFlagsStrictly) {
    for (const auto& [text, flag] : {std::pair("0", false), {"1", true}, {"+1", true}, {"-0", false}, {"0001", true}})
        EXPECT_EQ(AsVariable(ReadVariable(std::string("IS_INITIALIZATION_NEEDED_AT_START=\"") + text + "\""))
                      .isInitializationNeededAtStart,
                  flag)
            << text;
    for (const char* text : {"", "2", "-1", "true", "1 ", "0.0", "+"})
        EXPECT_THROW(ReadVariable(std::string("IS_INITIALIZATION_NEEDED_AT_START=\"") + text + "\""),
                     boost::bad_lexical_cast)
            << text;
}

TEST(Variable, ClonesKeepWhatIsNotWritten) {
    const OwnedItem item =
        ReadVariable("LABEL='l' TYPE='FLOAT' VALUE='1' INTERACTIVE_TYPE='t' IS_INITIALIZATION_NEEDED_AT_START='1' "
                     "INTERACTIVE_MIN_VALUE='2' INTERACTIVE_MAX_VALUE='3' INTERACTIVE_STEP_VALUE='4' CATEGORY='c'");
    auto& variable = static_cast<Variable&>(*item);
    variable.value = "now";
    variable.spare = "s";
    const OwnedItem copy(variable.Clone());
    EXPECT_EQ(SavedText(*copy), SavedText(variable));
    EXPECT_EQ(AsVariable(copy).initialValue, "1");
    EXPECT_EQ(AsVariable(copy).spare, "s");
    EXPECT_EQ(AsVariable(copy).model, copy.get());

    const OwnedItem entry(CreateItem(KindEnum, "2", nullptr));
    const OwnedItem entryCopy(entry->Clone());
    EXPECT_NE(dynamic_cast<Enum*>(entryCopy.get()), nullptr);
}

TEST(Variable, ShowsLabelAndValue) {
    Variable variable;
    variable.label = "speed";
    variable.value = "3";
    variable.UpdateDisplayText();
    EXPECT_EQ(variable.displayText, "speed=3");
    Enum entry;
    entry.name = "2";
    entry.label = "left";
    entry.UpdateDisplayText();
    EXPECT_EQ(entry.displayText, "2    (left)");
}

TEST(Variable, FillsARecordOfItsOwnTypeOrAText) {
    struct {
        const char* why;
        const char* type;
        const char* value;
        int tag;
        float number;
        const char* text;
        const char* log;
    } const rows[] = {
        {"its own type", "FLOAT", "2.5", 1, 2.5F, "", ""},
        {"any type is a text", "FLOAT", "2.5", 3, 0.0F, "2.5", ""},
        {"another type", "FLOAT", "2.5", 0, 0.0F, "", "\x03Var v: types INTEGER and FLOAT are different\n"},
        {"a whole number", "INTEGER", "12abc", 0, 12.0F, "", ""},
        {"a flag is a number", "BOOL", "true", 2, 0.0F, "", ""},
        {"nothing for nothing", "VOID", "1", 4, 0.0F, "", ""},
        {"nor for an unknown type", "?", "1", 4, 0.0F, "", ""},
        {"an unknown tag", "FLOAT", "1", 9, 0.0F, "", "\x03Var v: types  and FLOAT are different\n"},
    };
    for (const auto& row : rows) {
        Variable variable;
        variable.name = "v";
        variable.type = row.type;
        variable.value = row.value;
        std::ostringstream log;
        scenarioLog = &log;
        ParameterValue record;
        record.tag = row.tag;
        variable.FillValue(record);
        scenarioLog = nullptr;
        EXPECT_EQ(record.tag, row.tag) << Why(row);
        EXPECT_EQ(record.number, row.number) << Why(row);
        EXPECT_EQ(record.text, row.text) << Why(row);
        EXPECT_EQ(log.str(), row.log) << Why(row);
    }
    for (int tag = 0; tag <= 4; ++tag) EXPECT_EQ(Variable::TypeTagOf(Variable::TypeNameOf(tag)), tag);
    EXPECT_EQ(Variable::TypeTagOf("float"), 4);
    EXPECT_EQ(Variable::TypeNameOf(-1) + Variable::TypeNameOf(5), "");
}

TEST(VariableDeathTest, ACloneOfAnotherClass) {
    Variable variable;
    variable.kind = KindTask;
    EXPECT_DEATH(variable.Clone(), "Assertion failed: variable:101\n");
}

} // namespace
