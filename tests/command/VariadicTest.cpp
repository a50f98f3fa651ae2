#include <chrono>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <set>
#include <thread>

#include <Commons/WholeFile.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

#include "CommandRunner.h"

namespace {

using testing::HasSubstr;

// One scenario with a parameter of each type, and no declaration.
class VariadicTest : public testing::Test {
protected:
    VariadicTest() {
        installation.configuration("Town", "1.0", {"town"});
        installation.model("town");
        file = installation.scenario("town", "über Land/a b.sce",
                                     SectionText("Scenario")
                                         .text("name", "One")
                                         .parameter("speed", "10", "real", "km/h", "Speed")
                                         .parameter("lane", "2", "integer", "", "Lane")
                                         .parameter("fog", "true", "boolean", "", "Fog")
                                         .parameter("road", "A \"1\"", "string", "", "Road"));
        run.common = {"--config", installation.file()};
    }

    nlohmann::json declarations(const std::string& path = kScenario) const {
        return run({"variadic", "list", path, "--json"}).json();
    }

    static constexpr const char* kScenario = "über Land/a b.sce";
    InstallationBuilder installation;
    CommandRunner run;
    std::string file;
};

TEST_F(VariadicTest, WhatIsNotGivenComesFromTheParameter) {
    const struct {
        const char* id;
        std::vector<std::string> options;
        const char* declaration;
    } rows[] = {
        {"speed",
         {"--range", "20:50", "--range", "70:90.5"},
         R"({"name":"Speed","description":"","parameterId":"/sce/Scenario/speed","unit":"km/h","type":"real",
             "default":36.0,"ranges":[{"minimum":20.0,"maximum":50.0},{"minimum":70.0,"maximum":90.5}]})"},
        {"lane",
         {"--range=-1:-1", "--range", "1:3", "--name", "Fahrspur", "--default", "-1"},
         R"({"name":"Fahrspur","description":"","parameterId":"/sce/Scenario/lane","unit":"","type":"integer",
             "default":-1,"ranges":[{"minimum":-1,"maximum":-1},{"minimum":1,"maximum":3}]})"},
        {"fog",
         {"--description", "Nebel\nja oder nein"},
         R"({"name":"Fog","description":"Nebel\nja oder nein","parameterId":"/sce/Scenario/fog","unit":"",
             "type":"boolean","default":true})"},
        {"road",
         {"--literal", "[a,b]", "--literal", "", "--literal", "ü"},
         R"({"name":"Road","description":"","parameterId":"/sce/Scenario/road","unit":"","type":"literal",
             "default":"A \"1\"","literals":["[a,b]","","ü"]})"},
    };
    std::size_t position = 0;
    for (const auto& row : rows) {
        std::vector<std::string> arguments{"variadic", "add", kScenario, std::string("/sce/Scenario/") + row.id};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Result result = run(arguments);
        EXPECT_EQ(result.out, std::to_string(position) + "\n") << row.id << result;
        EXPECT_EQ(declarations()[position], nlohmann::json::parse(row.declaration)) << row.id;
        ++position;
    }
    EXPECT_THAT(run({"show", kScenario}).out, HasSubstr("  1  Fahrspur  (integer, default -1, -1 to -1 or 1 to 3)\n"));
}

TEST_F(VariadicTest, SetChangesWhatIsGivenAndRemoveTakesOneAway) {
    run({"variadic", "add", kScenario, "/sce/Scenario/speed", "--range", "20:50"});
    run({"variadic", "add", kScenario, "/sce/Scenario/road", "--literal", "a", "--literal", "b"});
    EXPECT_EQ(run({"variadic", "set", kScenario, "0", "--range", "1:2", "--unit", "m/s", "--default", "1.5"}).status,
              0);
    EXPECT_EQ(run({"variadic", "set", kScenario, "1", "--literal", "c"}).status, 0);
    nlohmann::json found = declarations();
    EXPECT_EQ(found[0]["ranges"], nlohmann::json::parse(R"([{"minimum":1.0,"maximum":2.0}])"));
    EXPECT_EQ(found[0]["unit"], "m/s");
    EXPECT_EQ(found[0]["name"], "Speed");
    EXPECT_EQ(found[1]["literals"], nlohmann::json({"c"}));
    EXPECT_EQ(found[1]["default"], "A \"1\"") << "the default of a literal survives new texts";

    EXPECT_EQ(run({"variadic", "set", kScenario, "1", "--any", "--target", "/sce/Scenario/lane"}).status, 0);
    EXPECT_EQ(run({"variadic", "remove", kScenario, "0"}).status, 0);
    found = declarations();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0]["parameterId"], "/sce/Scenario/lane");
    EXPECT_TRUE(found[0]["literals"].empty());
}

TEST_F(VariadicTest, OutputLeavesTheScenarioAlone) {
    const std::string before = readFile(file);
    for (const std::string& target : {installation.path() + "/kopie ä.sce", std::string("relative.sce")}) {
        CommandRunner there = run;
        there.folder = installation.path();
        const Result result = there({"variadic", "add", kScenario, "/sce/Scenario/fog", "--output", target});
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(readFile(file), before);
        EXPECT_THAT(readFile((std::filesystem::path(installation.path()) / target).string()),
                    HasSubstr("<parameterId>/sce/Scenario/fog</parameterId>"));
    }
}

TEST_F(VariadicTest, WhatMakesNoSenseChangesNothing) {
    run({"variadic", "add", kScenario, "/sce/Scenario/fog"});
    const std::string before = readFile(file);
    const struct {
        const char* why;
        std::vector<std::string> arguments;
        int status;
        const char* sentence;
    } rows[] = {
        {"an id that is not there would make the file unreadable",
         {"add", kScenario, "/sce/Scenario/x"},
         3,
         "No child parameter with id=x"},
        {"the same by set", {"set", kScenario, "0", "--target", "/sce/x"}, 3, "is no parameter id"},
        {"no number", {"add", kScenario, "/sce/Scenario/speed", "--default", "fast"}, 2, "\"fast\" is no number"},
        {"no integer", {"add", kScenario, "/sce/Scenario/lane", "--default", "1.5"}, 2, "is no integer of 32 bits"},
        {"too large", {"add", kScenario, "/sce/Scenario/lane", "--range", "0:2147483648"}, 2, "2147483648"},
        {"not finite", {"add", kScenario, "/sce/Scenario/speed", "--default", "inf"}, 2, "\"inf\" is no number"},
        {"no range", {"add", kScenario, "/sce/Scenario/speed", "--range", "5"}, 2, "a range is written MIN:MAX"},
        {"the wrong way round",
         {"add", kScenario, "/sce/Scenario/speed", "--range", "5:4"},
         2,
         "ends before it begins"},
        {"a range of truth", {"set", kScenario, "0", "--range", "0:1"}, 2, "of type boolean takes no --range"},
        {"texts of a number", {"add", kScenario, "/sce/Scenario/speed", "--literal", "x"}, 2, "takes no --literal"},
        {"no unit", {"set", kScenario, "0", "--unit", "parsec"}, 2, "\"parsec\" is no unit"},
        {"beyond the end", {"remove", kScenario, "1"}, 3, "has no declaration 1; it has 1"},
        {"no position", {"remove", kScenario, "-1"}, 2, ""},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments{"variadic"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Result result = run(arguments);
        EXPECT_EQ(result.status, row.status) << row.why << result;
        EXPECT_THAT(result.err, HasSubstr(row.sentence)) << row.why;
        EXPECT_EQ(readFile(file), before) << row.why;
    }
}

TEST_F(VariadicTest, ASaveThatFailsIsTold) {
    const std::string before = readFile(file);
    const std::string closed = installation.write("closed/a.sce", before);
    std::filesystem::permissions(closed, std::filesystem::perms::owner_read);
    std::filesystem::permissions(installation.path() + "/closed", static_cast<std::filesystem::perms>(0555));
    for (const auto& [target, cause] : std::map<std::string, std::string>{
             {"/missing folder/a.sce", ": /missing folder is no folder\n"},
             {"/dev/full", ": not a plain file\n"},
             {closed, ": no permission\n"},
             {installation.path() + "/closed/b.sce", ": no permission to make a file in its folder\n"}}) {
        CommandRunner user = run;
        user.heedsPermissions = true;
        const Result result = user({"variadic", "add", kScenario, "/sce/Scenario/fog", "--output", target});
        EXPECT_EQ(result.status, 3) << target;
        EXPECT_EQ(result.out, "") << target;
        EXPECT_EQ(result.err, "tavrel: über Land/a b.sce: " + target + " could not be saved" + cause) << target;
    }
    EXPECT_EQ(readFile(file), before);
}

TEST_F(VariadicTest, ManyAtTheSameTimeLoseNothing) {
    constexpr std::size_t kCommands = 6;
    const std::vector<std::string> values{"speed=20", "lane=3", "fog=false", "road=B"};
    std::vector<std::future<Result>> results, sets;
    for (std::size_t i = 0; i < kCommands; ++i)
        results.push_back(std::async(std::launch::async, [this, i] {
            return run({"variadic", "add", kScenario, "/sce/Scenario/fog", "--name", std::to_string(i)});
        }));
    for (const std::string& value : values)
        sets.push_back(std::async(std::launch::async, [this, value] {
            return run({"set", kScenario, "/sce/Scenario/" + value});
        }));
    std::set<std::string> indices;
    for (auto& result : results) {
        const Result done = result.get();
        EXPECT_EQ(done.status, 0) << done;
        indices.insert(done.out);
    }
    EXPECT_EQ(indices.size(), kCommands) << "each has told its own place";
    std::set<std::string> names;
    for (const auto& declaration : declarations()) names.insert(declaration["name"]);
    EXPECT_EQ(names.size(), kCommands);
    for (auto& result : sets) EXPECT_EQ(result.get().status, 0);
    for (const std::string& value : values) {
        const std::size_t sign = value.find('=');
        EXPECT_THAT(run({"get", kScenario, "/sce/Scenario/" + value.substr(0, sign)}).out,
                    testing::StartsWith(value.substr(sign + 1)));
    }
}

TEST_F(VariadicTest, ALongWaitForAnotherProgramIsTold) {
    auto lock = std::make_unique<Commons::FileLock>(file);
    auto result = std::async(std::launch::async, [this] { return run({"set", kScenario, "/sce/Scenario/lane=3"}); });
    std::this_thread::sleep_for(std::chrono::seconds(4)); // twice what is waited for in silence
    lock.reset();
    const Result done = result.get();
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.err, "tavrel: " + file + ": another program is editing it; waiting\n");
}

TEST_F(VariadicTest, OddDeclarationsOfOthersCanBeEdited) {
    const auto declaration = [](const std::string& target, const std::string& typed) {
        return "<VariadicParameter><name>n</name><parameterId>/sce/Scenario/" + target + "</parameterId>" + typed +
               "</VariadicParameter>";
    };
    std::string text = readFile(file);
    text.insert(text.find("</Scenario>"),
                declaration("speed", "<RealParameter><default>nan</default></RealParameter>") +
                    declaration("lane", ""));
    installation.write(std::filesystem::relative(file, installation.path()).string(), text);
    EXPECT_EQ(run({"variadic", "add", kScenario, "/sce/Scenario/fog"}).out, "2\n") << "beside a default that is nan";
    const Result result = run({"variadic", "set", kScenario, "1", "--range", "1:3"});
    EXPECT_EQ(result.status, 0) << "a declaration without a type" << result;
    EXPECT_EQ(declarations()[1]["ranges"], nlohmann::json::parse(R"([{"minimum":1,"maximum":3}])"));
    EXPECT_EQ(declarations()[1]["default"], 2) << "the value of the parameter";
}

} // namespace
