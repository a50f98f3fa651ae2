#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/ScriptWorld.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// A parameter definition for each name, and a call for each pattern "NAME: parameter parameter", all of one form: what
// the upgrades need is the order of the parameters and their defaults.
std::string ModelText() {
    const std::vector<std::string> parameters = {"a",
                                                 "b",
                                                 "c",
                                                 "CHANNEL_ID",
                                                 "USER_DATA_ID",
                                                 "CHANNEL_NAME",
                                                 "MAP_RADIUS",
                                                 "DISPLAY_TIME",
                                                 "SUFFIX",
                                                 "MARKER_KEYWORDS",
                                                 "MARKER_NOTE",
                                                 "VHL_NUMBER_PLUS",
                                                 "TYPE",
                                                 "NUMBER",
                                                 "IMAGE"};
    const std::vector<std::pair<std::string, std::vector<std::string>>> calls = {
        {"NONE", {}},
        {"ONE", {"a"}},
        {"TWO", {"a", "b"}},
        {"PLUS", {"a", "b"}},
        {"DIVIDE", {"a", "b"}},
        {"GET_EXPORTED_CHANNEL", {"a", "CHANNEL_ID", "b"}},
        {"IS_VHL_AT_POSITION", {"a", "MAP_RADIUS"}},
        {"SET_IMAGE", {"a", "b", "c", "CHANNEL_NAME", "IMAGE", "NUMBER", "DISPLAY_TIME"}},
        {"INIT_ANIMATION", {"a", "b", "c", "TYPE", "NUMBER"}},
        {"SNAPSHOT", {"CHANNEL_NAME", "SUFFIX"}},
        {"ADD_TIME_MARKER", {"MARKER_NOTE", "MARKER_KEYWORDS"}},
        {"EVALUATION_SCORE", {"a"}},
        {"EVALUATIO", {"a"}},
    };
    std::string text = "TYPEOF FOLDER (model)\n{\nTYPEOF FOLDER (PARAMETER_LIST)\n{\n";
    for (const std::string& parameter : parameters)
        text += "TYPEOF PARAMETER (" + parameter + ")\n{\nTYPE=\"FLOAT\"\nKINDLIST=\"USER FUNCTION VARIABLE\"\n}\n";
    text += "TYPEOF PARAMETER (flag)\n{\nTYPE=\"BOOL\"\nKINDLIST=\"USER FUNCTION\"\n}\n"
            "TYPEOF PARAMETER (fixed)\n{\nTYPE=\"FLOAT\"\nKINDLIST=\"USER\"\n}\n"
            "TYPEOF PARAMETER (count)\n{\nTYPE=\"INTEGER\"\nKINDLIST=\"USER FUNCTION\"\n}\n";
    for (const char* list : {"FUNCTION", "ACTION", "CONDITION"}) {
        text += std::string("}\nTYPEOF FOLDER (") + list + "_LIST)\n{\n";
        if (list != std::string("FUNCTION")) continue;
        int code = 0;
        for (const auto& [name, names] : calls) {
            text += "TYPEOF FUNCTION (" + name + ")\n{\nLABEL=\"" + name + " label\"\nCODE=\"" +
                    std::to_string(++code) + "\"\n";
            for (std::size_t i = 0; i < names.size(); ++i)
                text +=
                    "TYPEOF PARAMETER (" + names[i] + ")\n{\nKIND=\"USER\"\nVALUE=\"10" + std::to_string(i) + "\"\n}\n";
            text += "}\n";
        }
        text += "TYPEOF FUNCTION (FREE)\n{\nIS_OVERLOADABLE=\"1\"\nCODE=\"1\"\n"
                "TYPEOF PARAMETER (a)\n{\nKIND=\"USER\"\nVALUE=\"0\"\n}\n}\n"
                "TYPEOF FUNCTION (COUNT)\n{\nCODE=\"1\"\nTYPEOF RETURN (count)\n{\nKIND=\"USER\"\nVALUE=\"0\"\n}\n}\n";
    }
    return text + "}\n}\n";
}

// "NAME(a=1 b=2)" as text; a value that begins with "@" is the name of a nested call of that form.
std::string Call(const std::string& name, const std::vector<std::pair<std::string, std::string>>& parameters,
                 const std::string& kind = "FUNCTION") {
    std::string text = "TYPEOF " + kind + " (" + name + ")\n{\n";
    for (const auto& [parameter, value] : parameters) {
        text += "TYPEOF PARAMETER (" + parameter + ")\n{\n";
        text += value.substr(0, 6) == "TYPEOF" ? "KIND=\"FUNCTION\"\n" + value + "}\n"
                                               : "KIND=\"USER\"\nVALUE=\"" + value + "\"\n}\n";
    }
    return text + "}\n";
}

std::string Parameters(const Function& call) {
    std::string text;
    for (const Parameter* parameter : call.parameters)
        text += (text.empty() ? "" : " ") + parameter->name + "=" + parameter->value;
    return text;
}

class FunctionTest : public testing::Test {
protected:
    ~FunctionTest() override { FunctionTable().resize(1); }
    std::unique_ptr<Function> Read(const std::string& text) {
        std::unique_ptr<ScenarioItem> item = world.ReadText(text);
        auto* call = dynamic_cast<Function*>(item.get());
        if (!call) return nullptr;
        item.release();
        return std::unique_ptr<Function>(call);
    }
    Function& Definition(const std::string& name) { return world.Find<Function>(*world.root, KindFunction, name); }

    ScriptWorld world{ModelText()};
};

TEST_F(FunctionTest, AttributesOfADefinition) {
    scenarioRootModel = nullptr;
    const std::string frame = "TYPEOF FOLDER (FUNCTION_LIST)\n{\nTYPEOF FUNCTION (f)\n{\n";
    struct Case {
        const char* why;
        const char* lines;
        std::uint32_t row; // of the refusal below the frame, 0 if taken
        const char* cause;
        std::int32_t code;
        const char* saved;
    };
    const Case cases[] = {
        {"nothing", "", 0, "", -1, "LABEL=\"\" CODE=\"\" WIZARD=\"\" SEE_ALSO=\"\" "},
        {"all", "SEE_ALSO='g  h' WIZARD='MAPTOOL' CODE='12x' IS_OVERLOADABLE='1' LABEL='F'", 0, "", 12,
         "LABEL=\"F\" IS_OVERLOADABLE=\"1\" CODE=\"12x\" WIZARD=\"MAPTOOL\" SEE_ALSO=\"g h\" "},
        {"empty code stays open", "CODE='' CODE='3'", 0, "", 3, "LABEL=\"\" CODE=\"3\" WIZARD=\"\" SEE_ALSO=\"\" "},
        {"word for a code", "CODE='three'", 0, "", 0, "LABEL=\"\" CODE=\"three\" WIZARD=\"\" SEE_ALSO=\"\" "},
        {"code out of range", "CODE='99999999999'", 0, "", 2147483647,
         "LABEL=\"\" CODE=\"99999999999\" WIZARD=\"\" SEE_ALSO=\"\" "},
        {"second code", "CODE='3' CODE='4'", 2, "", 0, ""},
        {"only 1 overloads", "IS_OVERLOADABLE='true'", 0, "", -1, "LABEL=\"\" CODE=\"\" WIZARD=\"\" SEE_ALSO=\"\" "},
        {"unknown wizard", "WIZARD='MAP'", 1, "WIZARD \"MAP\"", 0, ""},
        {"empty wizard", "WIZARD='' WIZARD='MAPTOOLRECT'", 0, "", -1,
         "LABEL=\"\" CODE=\"\" WIZARD=\"MAPTOOLRECT\" SEE_ALSO=\"\" "},
        {"user attribute of a parameter", "KIND='USER'", 1, "", 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.why);
        const auto folder = world.ReadText(frame + EntryLines(c.lines) + "}\n}\n");
        ASSERT_EQ(folder == nullptr, c.row != 0) << world.cause;
        if (!folder) {
            EXPECT_EQ(world.row, 4 + c.row);
            EXPECT_THAT(world.cause, HasSubstr(c.cause));
            continue;
        }
        Function& call = world.Find<Function>(*folder, KindFunction, "f");
        EXPECT_EQ(call.codeNumber, c.code);
        EXPECT_EQ(call.returnType, "FLOAT");
        std::string saved = SavedText(call);
        saved = saved.substr(saved.find("{\n") + 2);
        saved.erase(saved.find('}'));
        for (std::size_t at = 0; (at = saved.find_first_of("\t\n", at)) != std::string::npos;)
            saved[at] == '\t' ? saved.erase(at, 1) : saved.replace(at, 1, " ");
        EXPECT_EQ(saved, c.saved);
    }
}

TEST_F(FunctionTest, CallIsComparedWithItsDefinition) {
    struct Case {
        const char* why;
        std::string text;
        const char* cause; // empty if it is taken
    };
    const std::string user = "\n{\nKIND=\"USER\"\nVALUE=\"0\"\n}\n";
    const Case cases[] = {
        {"same", Call("TWO", {{"a", "1"}, {"b", "2"}}), ""},
        {"none", Call("NONE", {}), ""},
        {"too few", Call("TWO", {{"a", "1"}}), "\"TWO\" has 1 parameters, its definition has 2"},
        {"too many", Call("ONE", {{"a", "1"}, {"b", "2"}}), "\"ONE\" has 2 parameters, its definition has 1"},
        {"wrong order", Call("TWO", {{"b", "1"}, {"a", "2"}}),
         "parameter 1 of \"TWO\" is \"b\", its definition has \"a\""},
        {"other name in an overloadable call", Call("FREE", {{"b", "1"}}), ""},
        {"wrong count in an overloadable call", Call("FREE", {}), "\"FREE\" has 0 parameters"},
        {"unknown call", Call("TOW", {}), "unknown function \"TOW\", did you mean \"TWO\""},
        {"result", "TYPEOF FUNCTION (ONE)\n{\nTYPEOF PARAMETER (a)" + user + "TYPEOF RETURN (flag)" + user + "}\n", ""},
        {"second result", "TYPEOF FUNCTION (NONE)\n{\nTYPEOF RETURN (a)" + user + "TYPEOF RETURN (b)" + user + "}\n",
         "\"NONE\" has a second RETURN \"b\""},
        {"label of an instance", "TYPEOF FUNCTION (NONE)\n{\nLABEL=\"x\"\n}\n", "LABEL"},
        {"condition in a call", "TYPEOF FUNCTION (NONE)\n{\nTYPEOF CONDITION (c)\n{\n}\n}\n", "CONDITION"},
        {"call directly in a call", "TYPEOF FUNCTION (NONE)\n{\nTYPEOF FUNCTION (NONE)\n{\n}\n}\n", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.why);
        const auto call = Read(c.text);
        EXPECT_EQ(call == nullptr, *c.cause != '\0') << world.cause;
        if (!call) {
            EXPECT_THAT(world.cause, HasSubstr(c.cause));
        }
    }
    const auto overloaded = Read(Call("FREE", {{"b", "1"}}));
    EXPECT_TRUE(overloaded->parameters[0]->isReturn);
    EXPECT_EQ(overloaded->returnParameter, nullptr);
    const auto result =
        Read("TYPEOF FUNCTION (ONE)\n{\nTYPEOF RETURN (flag)" + user + "TYPEOF PARAMETER (a)" + user + "}\n");
    EXPECT_EQ(result->returnType, "BOOL");
    EXPECT_EQ(result->returnParameter->name, "flag");
    EXPECT_EQ(Parameters(*result), "a=0");
    EXPECT_EQ(Definition("COUNT").returnType, "INTEGER");
    EXPECT_EQ(Read(Call("ONE", {{"a", "1"}}))->returnType, "");
}

TEST_F(FunctionTest, OldCallsAreUpgraded) {
    struct Case {
        const char* why;
        std::string text;
        const char* expected; // empty for a refusal
    };
    const std::string nested = Call("ONE", {{"a", "5"}});
    const Case cases[] = {
        {"channel by its id", Call("GET_EXPORTED_CHANNEL", {{"a", "1"}, {"USER_DATA_ID", "7"}, {"b", "2"}}),
         "a=1 CHANNEL_ID=7 b=2"},
        {"channel as it is", Call("GET_EXPORTED_CHANNEL", {{"a", "1"}, {"CHANNEL_ID", "7"}, {"b", "2"}}),
         "a=1 CHANNEL_ID=7 b=2"},
        {"position gets a radius", Call("IS_VHL_AT_POSITION", {{"a", "1"}}), "a=1 MAP_RADIUS=101"},
        {"position has a radius", Call("IS_VHL_AT_POSITION", {{"a", "1"}, {"MAP_RADIUS", "3"}}), "a=1 MAP_RADIUS=3"},
        {"image gets a time",
         Call("SET_IMAGE",
              {{"a", "1"}, {"b", "2"}, {"c", "3"}, {"CHANNEL_NAME", "4"}, {"IMAGE", "5"}, {"NUMBER", "6"}}),
         "a=1 b=2 c=3 CHANNEL_NAME=4 IMAGE=5 NUMBER=6 DISPLAY_TIME=106"},
        {"animation of a vehicle",
         Call("INIT_ANIMATION",
              {{"VHL_NUMBER_PLUS", "12"}, {"b", "1"}, {"c", "2"}, {"NUMBER", "3"}, {"a", "4"}, {"c", "5"}}),
         "a=4 b=3 c=5 TYPE=ANIMATED_OBJECT_TYPE_VEHICLE NUMBER=12"},
        {"animation of the database",
         Call("INIT_ANIMATION",
              {{"VHL_NUMBER_PLUS", "-1"}, {"b", "1"}, {"c", "2"}, {"NUMBER", "3"}, {"a", "4"}, {"c", "5"}}),
         "a=4 b=3 c=5 TYPE=ANIMATED_OBJECT_TYPE_DATABASE NUMBER=0"},
        {"animation too short", Call("INIT_ANIMATION", {{"VHL_NUMBER_PLUS", "-1"}, {"b", "1"}}), ""},
        {"vehicle among those removed",
         Call("INIT_ANIMATION", {{"a", "4"}, {"VHL_NUMBER_PLUS", "12"}, {"c", "2"}, {"NUMBER", "3"}, {"c", "5"}}),
         "a=4 b=3 c=5 TYPE=ANIMATED_OBJECT_TYPE_VEHICLE NUMBER=12"},
        {"snapshot gets a suffix", Call("SNAPSHOT", {{"CHANNEL_NAME", "1"}}), "CHANNEL_NAME=1 SUFFIX=101"},
        {"snapshot without anything", Call("SNAPSHOT", {}), ""},
        {"marker gets keywords", Call("ADD_TIME_MARKER", {{"MARKER_NOTE", "1"}}), "MARKER_NOTE=1 MARKER_KEYWORDS=101"},
        {"found in a nested call, so nothing is missing",
         Call("SNAPSHOT", {{"CHANNEL_NAME", Call("SNAPSHOT", {{"CHANNEL_NAME", "1"}})}}), ""},
        {"other calls stay", Call("ONE", {{"a", nested}}), "a="},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.why);
        const auto call = Read(c.text);
        EXPECT_EQ(call ? Parameters(*call) : "", c.expected) << world.cause;
    }
    // The keywords are a copy of the second parameter of the definition, whatever that is called.
    Definition("ADD_TIME_MARKER").parameters[1]->SetName("a");
    EXPECT_EQ(Read(Call("ADD_TIME_MARKER", {{"MARKER_NOTE", "1"}})), nullptr);
    EXPECT_THAT(world.cause, HasSubstr("is \"MARKER_KEYWORDS\", its definition has \"a\""));
    // A definition without what an upgrade looks for, or too short for it, leaves the call alone.
    Function& snapshot = Definition("SNAPSHOT");
    snapshot.RemoveChild(snapshot.parameters[1]);
    const auto call = Read(Call("SNAPSHOT", {{"CHANNEL_NAME", "1"}}));
    ASSERT_TRUE(call) << world.cause;
    EXPECT_EQ(Parameters(*call), "CHANNEL_NAME=1");
}

TEST_F(FunctionTest, TextsOfCalls) {
    struct Case {
        std::string text;
        const char* expected;
    };
    const Case cases[] = {
        {Call("NONE", {}), "NONE label  ()"},
        {Call("ONE", {{"a", "1"}}), "ONE label  (1)"},
        {Call("TWO", {{"a", "1"}, {"b", Call("NONE", {})}}), "TWO label  (1,  NONE label  ())"},
        {Call("PLUS", {{"a", "1"}, {"b", "2"}}), "1 + 2"},
        {Call("DIVIDE", {{"a", Call("PLUS", {{"a", "1"}, {"b", "2"}})}, {"b", "3"}}), "1 + 2 / 3"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const auto call = Read(c.text);
        ASSERT_TRUE(call) << world.cause;
        call->UpdateDisplayTextTree();
        EXPECT_EQ(call->displayText, c.expected);
        EXPECT_TRUE(call->IsValid());
    }
    Definition("PLUS").UpdateDisplayText();
    EXPECT_EQ(Definition("PLUS").displayText, "PLUS    (PLUS label)    (4)");
    const auto broken = Read(Call("DIVIDE", {{"a", "1"}, {"b", "2"}}));
    broken->RemoveChild(broken->parameters[1]);
    broken->UpdateDisplayText();
    EXPECT_EQ(broken->displayText, " / ");
}

TEST_F(FunctionTest, ValidityOfCalls) {
    const auto call = Read(Call("TWO", {{"a", "1"}, {"b", Call("ONE", {{"a", "x"}})}}));
    EXPECT_EQ(call, nullptr);
    const auto outer = Read(Call("TWO", {{"a", "1"}, {"b", Call("ONE", {{"a", "1"}})}}));
    ASSERT_TRUE(outer);
    outer->UpdateDisplayTextTree();
    EXPECT_TRUE(outer->valid);
    // A fault deep below shows at the top.
    Function& inner = *outer->parameters[1]->functionValue;
    inner.parameters[0]->value = "x";
    outer->UpdateDisplayTextTree();
    EXPECT_FALSE(inner.valid);
    EXPECT_EQ(outer->displayText, "TWO label  (1,  ONE label  (x?))");
    EXPECT_TRUE(outer->valid);
    inner.parameters[0]->value = "1";

    // Whoever takes parameters, a folder among them, asks for a bound parameter.
    Definition("ONE").UpdateDisplayTextTree();
    EXPECT_FALSE(Definition("ONE").valid);

    for (const char* name : {"EVALUATION_SCORE", "EVALUATIO"}) {
        const auto measured = Read(Call(name, {{"a", "1"}}));
        ASSERT_TRUE(measured);
        measured->UpdateValidity();
        EXPECT_EQ(measured->valid, name == std::string("EVALUATIO"));
        Criteria criteria;
        criteria.kind = KindCriteria;
        Rule rule;
        rule.kind = KindRule;
        rule.parent = &criteria;
        measured->parent = &rule;
        measured->UpdateValidity();
        EXPECT_TRUE(measured->valid);
    }
}

// Only a condition has calls among its children. They find the parameter they fill by its KIND, else by its type.
TEST_F(FunctionTest, NestedCallsArePlacedIntoParameters) {
    struct Placing {
        const char* why;
        std::vector<std::string> parameters; // definition, or definition! with KIND FUNCTION
        std::vector<std::string> results;    // of the nested calls
        const char* expected;                // for each nested call the index of its parameter
    };
    const Placing cases[] = {
        {"by kind before by type", {"a", "fixed!"}, {"FLOAT"}, "1"},
        {"by type", {"fixed", "a"}, {"FLOAT"}, "1"},
        {"numbers of both types", {"count"}, {"FLOAT"}, "0"},
        {"numbers of both types", {"a"}, {"INTEGER"}, "0"},
        {"no truth value for a number", {"a"}, {"BOOL"}, "-"},
        {"kind does not look at the type", {"a!"}, {"BOOL"}, "0"},
        {"nothing that may hold a call", {"fixed"}, {"FLOAT"}, "-"},
    };
    for (const Placing& p : cases) {
        SCOPED_TRACE(p.why);
        Condition outer;
        outer.kind = KindCondition;
        Condition definition;
        definition.kind = KindCondition;
        outer.Token::SetModel(&definition);
        Rule rule;
        rule.kind = KindRule;
        outer.parent = &rule;
        for (const std::string& name : p.parameters) {
            auto* parameter =
                static_cast<Parameter*>(world.Find<ScenarioItem>(*world.root, KindFolder, "PARAMETER_LIST")
                                            .FindItem(KindParameter, name.substr(0, name.find('!')), "")
                                            ->Clone());
            parameter->SetKind(name.back() == '!' ? "FUNCTION" : "VARIABLE");
            parameter->SetOwnerFile("x.sc");
            outer.AddChild(parameter, nullptr, true);
        }
        std::vector<std::unique_ptr<Condition>> definitions;
        for (const std::string& result : p.results) {
            definitions.push_back(std::make_unique<Condition>());
            definitions.back()->kind = KindCondition;
            definitions.back()->returnType = result;
            auto* nested = new Condition;
            nested->kind = KindCondition;
            nested->Token::SetModel(definitions.back().get());
            nested->boundParameter = outer.parameters[0];
            outer.AddChild(nested, nullptr, true);
        }
        outer.UpdateDisplayTextTree();
        std::string bound;
        for (const Condition* nested : outer.subConditions) {
            const auto at = std::find(outer.parameters.begin(), outer.parameters.end(), nested->boundParameter);
            bound += at == outer.parameters.end() ? "-" : std::to_string(at - outer.parameters.begin());
            if (at == outer.parameters.end()) continue;
            EXPECT_EQ((*at)->valueKind, "FUNCTION");
            EXPECT_EQ((*at)->ownerFile, "");
        }
        EXPECT_EQ(bound, p.expected);
    }
}

std::string Received(const ParameterValues& values) {
    std::string text;
    for (const ParameterValue& value : values) text += std::to_string(value.tag) + value.text + " ";
    return text;
}

TEST_F(FunctionTest, EvaluateHandsTheArgumentsToTheEntry) {
    FunctionTable().resize(8);
    std::vector<std::string> received;
    FunctionTable()[1] = [](const ParameterValues&) { return 2.5F; };
    FunctionTable()[3] = [&](const ParameterValues& values) {
        received.push_back(Received(values));
        return values[0].number + values[1].number;
    };
    const auto call = Read(Call(
        "TWO", {{"a", Call("TWO", {{"a", Call("NONE", {})}, {"b", "1"}})}, {"b", "7 long text that needs memory"}}));
    ASSERT_TRUE(call) << world.cause;
    for (int i = 0; i < 2; ++i) EXPECT_EQ(call->Evaluate(), 10.5F);
    const std::string rest = "4 4 4 4 4 4 4 4 4 4 ";
    EXPECT_THAT(received, ElementsAre("1 11 " + rest, "1 17 long text that needs memory " + rest, "1 11 " + rest,
                                      "1 17 long text that needs memory " + rest));

    // A clone is not touched by what happens to the code of an instance; the definition decides.
    call->codeNumber = 99;
    EXPECT_EQ(call->Evaluate(), 10.5F);
    Definition("TWO").codeNumber = -1;
    EXPECT_EQ(call->Evaluate(), 0.0F);
    Definition("TWO").codeNumber = 0;
    EXPECT_EQ(call->Evaluate(), 0.0F);
    world.TakeLog();
    for (const std::int32_t code : {2, 8, -2}) {
        Definition("TWO").codeNumber = code;
        EXPECT_EQ(call->Evaluate(), 0.0F);
        // Once for the call and once for the one within it.
        const std::string line = "\004FUNCTION [TWO]: no implementation for CODE " + std::to_string(code) + "\n";
        EXPECT_EQ(world.TakeLog(), line + line);
    }
}

TEST_F(FunctionTest, WhatAnEntryThrowsLeavesNothingBehind) {
    FunctionTable().resize(4);
    FunctionTable()[1] = [](const ParameterValues&) -> float { throw std::runtime_error("broken"); };
    std::string received;
    FunctionTable()[3] = [&](const ParameterValues& values) {
        received = Received(values);
        return 0.0F;
    };
    const auto failing = Read(Call("TWO", {{"a", "1"}, {"b", Call("NONE", {})}}));
    const auto call = Read(Call("TWO", {{"a", "1"}, {"b", "2"}}));
    EXPECT_THROW(failing->Evaluate(), std::runtime_error);
    call->Evaluate();
    EXPECT_EQ(received, "11 12 4 4 4 4 4 4 4 4 4 4 ");
}

TEST_F(FunctionTest, ThirteenthParameterIsNotHandedOn) {
    FunctionTable().resize(4);
    int count = 0;
    FunctionTable()[3] = [&](const ParameterValues& values) {
        for (const ParameterValue& value : values) count += value.tag == 1;
        return 0.0F;
    };
    const auto call = Read(Call("TWO", {{"a", "1"}, {"b", "2"}}));
    for (int i = 0; i < 11; ++i) call->AddChild(call->parameters[0]->Clone(), nullptr, true);
    world.TakeLog();
    call->Evaluate();
    call->Evaluate();
    EXPECT_EQ(count, 24);
    EXPECT_EQ(world.TakeLog(), "\004FUNCTION [TWO]: an implementation receives twelve parameters, not 13\n");
}

TEST_F(FunctionTest, ChildrenAreTheParameters) {
    const auto call = Read(Call("TWO", {{"a", "1"}, {"b", "2"}}));
    auto* added = AddNew(*call, KindReturn, "c");
    std::unique_ptr<ScenarioItem> other(CreateItem(KindFunction, "f", nullptr));
    call->AddChild(other.get(), nullptr, true);
    call->SwapChildren(added, other.get());
    EXPECT_EQ(Parameters(*call), "a=1 b=2 c=");
    EXPECT_EQ(other->parent, nullptr);
    EXPECT_EQ(NamesOf(*call, KindParameter), "a b c ");
    EXPECT_EQ(NamesOf(*call, KindFunction), "");
    // A child that belongs elsewhere by now is forgotten.
    std::unique_ptr<ScenarioItem> moved(added);
    added->parent = nullptr;
    call->RemoveChild(added);
    EXPECT_EQ(Parameters(*call), "a=1 b=2");

    const auto result = Read("TYPEOF FUNCTION (NONE)\n{\nTYPEOF RETURN (a)\n{\nKIND=\"USER\"\n}\n}\n");
    result->RemoveChild(result->returnParameter);
    EXPECT_EQ(result->returnParameter, nullptr);
}

TEST_F(FunctionTest, SearchesAndCollections) {
    const auto script =
        world.ReadText("TYPEOF SCENARIO (s)\n{\nFILE=\"main.sc\"\nTYPEOF INCLUDE (i)\n{\nFILE=\"other.sc\"\n"
                       "TYPEOF RULE (r)\n{\nTYPEOF ACTION (go)\n{\n}\n}\n}\n}\n");
    const auto call = Read(Call("TWO", {{"a", Call("TWO", {{"a", "1"}, {"b", "2"}})}, {"b", "3"}}));
    Function& inner = *call->parameters[0]->functionValue;
    const Function& constant = *call;
    EXPECT_EQ(call->FindItem(KindParameter, "b", ""), inner.parameters[1]);
    EXPECT_EQ(constant.FindItem(KindParameter, "b", ""), inner.parameters[1]);
    EXPECT_EQ(call->FindItem(KindFunction, "TWO", ""), call.get());
    EXPECT_EQ(call->FindItem(KindParameter, "x", ""), nullptr);
    EXPECT_EQ(call->FindItem(KindParameter, "b", "main.sc"), nullptr);

    // Within a file a search goes by the file, and anywhere below a scenario.
    Include include;
    include.kind = KindInclude;
    include.fileName = "other.sc";
    call->parent = &include;
    EXPECT_EQ(call->FindItem(KindParameter, "b", "other.sc"), inner.parameters[1]);
    EXPECT_EQ(constant.FindItem(KindParameter, "b", "other.sc"), inner.parameters[1]);
    EXPECT_EQ(call->FindItem(KindParameter, "b", "main.sc"), nullptr);
    EXPECT_EQ(constant.FindItem(KindParameter, "b", "main.sc"), nullptr);
    include.kind = KindScenario;
    EXPECT_EQ(call->FindItem(KindParameter, "b", "elsewhere.sc"), inner.parameters[1]);
    call->parent = nullptr;

    std::vector<ScenarioItem*> items;
    call->CollectAllItems(KindParameter, "ignored below", items);
    std::string names;
    for (const ScenarioItem* item : items) names += item->name + (item->parent == &inner ? "' " : " ");
    std::vector<const ScenarioItem*> constants;
    constant.CollectAllItems(KindParameter, "ignored below", constants);
    EXPECT_EQ(std::vector<const ScenarioItem*>(items.begin(), items.end()), constants);
    // Twice, as the parameters are children, and the inner ones once more each time, as those of a callable child.
    EXPECT_EQ(names, "a a' b' a' b' b a a' b' a' b' b ");

    items.clear();
    call->CollectAllItems(KindFunction, "ONE", items);
    EXPECT_THAT(items, ElementsAre(&inner, &inner));
    items.clear();
    call->CollectAllItems(KindFunction, "TWO", items);
    EXPECT_THAT(items, ElementsAre(call.get(), &inner, &inner));
    items.clear();
    call->CollectAllItemsOfKind(KindFunction, items);
    EXPECT_THAT(items, ElementsAre(call.get(), &inner, &inner));
    constants.clear();
    constant.CollectAllItemsOfKind(KindFunction, constants);
    EXPECT_THAT(constants, ElementsAre(call.get(), &inner, &inner));
}

// A search that doubled at each level would not come back from this one.
TEST_F(FunctionTest, SearchThroughDeepCallsIsLinear) {
    std::string text = Call("ONE", {{"a", "1"}});
    for (int i = 0; i < 60; ++i) text = Call("ONE", {{"a", text}});
    const auto call = Read(text);
    ASSERT_TRUE(call) << world.cause;
    const Function& constant = *call;
    EXPECT_EQ(call->FindItem(KindParameter, "x", ""), nullptr);
    Include include;
    include.kind = KindScenario;
    include.fileName = "main.sc";
    call->parent = &include;
    EXPECT_EQ(constant.FindItem(KindParameter, "x", "main.sc"), nullptr);
    call->parent = nullptr;
}

TEST_F(FunctionTest, CopiesOfAttributes) {
    Function& definition = Definition("COUNT");
    definition.wizard = "MAPTOOL";
    definition.seeAlso = {"TWO"};
    definition.weight = 3.0;
    Function target;
    target.kind = KindFunction;
    definition.CopyModelAttributes(&target);
    definition.CopyModelAttributes(&target);
    EXPECT_EQ(target.code + target.wizard + target.overloadable + target.returnType, "1MAPTOOL0INTEGER");
    EXPECT_EQ(target.codeNumber, 1);
    EXPECT_TRUE(target.seeAlso.empty());
    ASSERT_NE(target.returnParameter, nullptr);
    EXPECT_NE(target.returnParameter, definition.returnParameter);
    EXPECT_EQ(target.returnParameter->parent, &target);
    EXPECT_EQ(target.model, &target);

    std::unique_ptr<ScenarioItem> item(definition.Clone());
    auto& clone = static_cast<Function&>(*item);
    EXPECT_EQ(clone.model, &definition);
    EXPECT_EQ(clone.weight, 3.0);
    EXPECT_EQ(clone.code + clone.wizard, "");
    EXPECT_EQ(clone.returnParameter, nullptr);
}

TEST_F(FunctionTest, BrokenExpectationsEndTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Function loose;
    loose.kind = KindFunction;
    Folders folder;
    folder.kind = KindFolder;
    Parameter parameter;
    parameter.kind = KindParameter;
    struct Case {
        const char* why;
        const char* site;
        std::function<void()> provoke;
    };
    const auto withNull = [&](std::function<void(Function&)> act) {
        return [&loose, act = std::move(act)] {
            loose.parameters = {nullptr};
            act(loose);
        };
    };
    std::vector<ScenarioItem*> out;
    std::vector<const ScenarioItem*> constOut;
    const Case cases[] = {
        {"null child", "function:118", [&] { loose.AddChild(nullptr, nullptr, true); }},
        {"load without a model", "function:214", [&] { loose.SetModel(nullptr), loose.OnLoadEnd(); }},
        {"load with a model of another kind", "function:215", [&] { loose.SetModel(&parameter), loose.OnLoadEnd(); }},
        {"evaluation without a model", "function:622", [&] { loose.SetModel(nullptr), loose.Evaluate(); }},
        {"text without a model", "function:379", [&] { loose.SetModel(nullptr), loose.UpdateDisplayText(); }},
        {"copy to nothing", "function:301", [&] { loose.CopyModelAttributes(nullptr); }},
        {"copy to another kind", "function:322", [&] { loose.CopyUserAttributes(&parameter); }},
        {"copy to a plain item", "function:302", [&] { loose.CopyModelAttributes(&parameter); }},
        {"null parameter saved", "function:171", withNull([](Function& call) { SavedText(call); })},
        {"in a search", "function:412", withNull([](Function& call) { call.FindItem(KindTask, "", ""); })},
        {"in a search, const", "function:437",
         withNull([](Function& call) { std::as_const(call).FindItem(KindTask, "", ""); })},
        {"in a collection by name", "function:468",
         withNull([&](Function& call) { call.CollectAllItems(KindTask, "", out); })},
        {"in a collection by name, const", "function:491",
         withNull([&](Function& call) { std::as_const(call).CollectAllItems(KindTask, "", constOut); })},
        {"in a collection by kind", "function:514",
         withNull([&](Function& call) { call.CollectAllItemsOfKind(KindTask, out); })},
        {"in a collection by kind, const", "function:537",
         withNull([&](Function& call) { std::as_const(call).CollectAllItemsOfKind(KindTask, constOut); })},
        {"null parameter in an evaluation", "function:633",
         withNull([](Function& call) { call.codeNumber = 0, call.Evaluate(); })},
        {"null parameter in the tree", "function:341", withNull([](Function& call) { call.UpdateDisplayTextTree(); })},
        {"no radius to be had", "function:288",
         [&] {
             Function& definition = Definition("IS_VHL_AT_POSITION");
             definition.RemoveChild(definition.parameters[1]);
             Read(Call("IS_VHL_AT_POSITION", {{"a", "1"}}));
         }},
    };
    for (const Case& c : cases) {
        EXPECT_DEATH(c.provoke(), std::string("Assertion failed: ") + c.site + "\n") << c.why;
    }
}

} // namespace
