#include <cstdlib>
#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandRunner.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Options ("--json") that a text names.
std::set<std::string> optionsIn(const std::string& text) {
    std::set<std::string> options;
    const std::regex pattern("(--[a-z][a-z-]*)");
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
        options.insert(match->str());
    return options;
}

// Sub-commands that the help lists.
std::vector<std::string> commands(const CommandRunner& run) {
    std::istringstream help(run({"--help"}).out);
    std::vector<std::string> names;
    bool listed = false;
    for (std::string line; std::getline(help, line);) {
        if (line == "Commands:") listed = true;
        if (line.empty()) listed = false;
        std::smatch match;
        if (listed && std::regex_match(line, match, std::regex("  (\\S+(?: \\S+)?)  .*"))) names.push_back(match[1]);
    }
    return names;
}

TEST(UsageTest, HelpManualAndCompletionNameTheSame) {
    const CommandRunner run;
    std::string manual = run({"man"}).out;
    manual = std::regex_replace(manual, std::regex("\\\\-"), "-");
    const std::string completion = run({"completion", "bash"}).out;
    const std::vector<std::string> names = commands(run);
    EXPECT_GE(names.size(), 17U);
    std::set<std::string> all;
    for (const std::string& name : names) {
        std::vector<std::string> arguments{"--help"};
        std::istringstream words(name);
        for (std::string word; words >> word;) arguments.insert(arguments.end() - 1, word);
        const Result help = run(arguments);
        EXPECT_EQ(help.status, 0) << name;
        EXPECT_THAT(help.out, StartsWith("Usage: tavrel " + name)) << name;
        EXPECT_THAT(manual, HasSubstr(".SS \"tavrel " + name));
        for (const std::string& option : optionsIn(help.out.substr(0, help.out.find("\nExample")))) {
            all.insert(option);
            EXPECT_THAT(manual, HasSubstr(option)) << name;
            EXPECT_THAT(completion, HasSubstr(option)) << name;
        }
    }
    EXPECT_EQ(optionsIn(completion), all) << "the completion offers nothing that the help does not know";
}

TEST(UsageTest, TheCompletionOffersCommandsOptionsAndScenarios) {
    const CommandRunner run;
    const auto complete = [&](const std::string& line) {
        // What bash does at the tab key behind `line`.
        const std::string script =
            "source <(" TAVREL_COMMAND " completion bash)\nCOMP_WORDS=(" TAVREL_COMMAND " " + line +
            ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tavrel\nprintf '%s\\n' \"${COMPREPLY[@]}\"";
        setenv("COMPLETE", script.c_str(), 1);
        FILE* pipe = popen("bash -c \"$COMPLETE\"", "r");
        std::string out;
        for (int c; (c = fgetc(pipe)) != EOF;) out += static_cast<char>(c);
        pclose(pipe);
        return out;
    };
    EXPECT_EQ(complete("sh"), "show\n");
    EXPECT_EQ(complete("variadic re"), "remove\n");
    EXPECT_EQ(complete("list --pa"), "--paths\n");
    EXPECT_EQ(complete("run --trace j"), "json\n");
    EXPECT_EQ(complete("variadic add a b --type re"), "real\n");
    EXPECT_EQ(complete("show --configuration City orientation/F"), "orientation/First\\ minutes.sce\n");
}

TEST(UsageTest, WrongUseIsStatusTwoAndOneSentence) {
    const CommandRunner run;
    const struct {
        std::vector<std::string> arguments;
        const char* sentence;
    } rows[] = {
        {{}, "tavrel: a command is missing; see 'tavrel --help'\n"},
        {{"shwo"}, "tavrel: there is no command \"shwo\"; see 'tavrel --help'\n"},
        {{"variadic"}, "tavrel: a command is missing; see 'tavrel variadic --help'\n"},
        {{"variadic", "drop"}, "tavrel: there is no command \"variadic drop\"; see 'tavrel variadic --help'\n"},
        {{"show"}, "tavrel: SCENARIO is required; see 'tavrel show --help'\n"},
        {{"tree", "x"}, "tavrel: The following argument was not expected: x; see 'tavrel tree --help'\n"},
        {{"run", "a", "--step", "0"}, "tavrel: --step takes a number of seconds above 0\n"},
        {{"run", "a", "--until", "soon"}, "tavrel: --until takes a number, not \"soon\"\n"},
        {{"run", "a", "--until=-1"}, "tavrel: --until lies before --from\n"},
        {{"list", "--timeout", "0"}, "tavrel: --timeout takes a number of seconds above 0\n"},
    };
    for (const auto& row : rows) {
        const Result result = run(row.arguments);
        EXPECT_EQ(result.err, row.sentence);
        EXPECT_EQ(result.status, 2) << row.sentence;
        EXPECT_EQ(result.out, "") << row.sentence;
    }
}

TEST(UsageTest, CommonOptionsMayStandAnywhere) {
    const CommandRunner run;
    const std::string expected = run({"list", "--configuration", "City"}).out;
    EXPECT_NE(expected, run({"list"}).out);
    EXPECT_EQ(run({"--configuration", "City", "list"}).out, expected);
    EXPECT_EQ(run({"--configuration=City", "list"}).out, expected);
    EXPECT_THAT(run({"--version"}).out, StartsWith("tavrel "));
}

TEST(UsageTest, AFullDiskIsTold) {
    setenv("COMPLETE", TAVREL_COMMAND " list > /dev/full 2>/dev/null", 1);
    EXPECT_EQ(WEXITSTATUS(std::system("bash -c \"$COMPLETE\"")), 3);
}

} // namespace
