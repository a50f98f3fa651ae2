#include <algorithm>
#include <cstdlib>
#include <map>
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
    for (std::size_t i = 0; (i = text.find("--", i)) != std::string::npos;) {
        const std::size_t end = std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", i), text.size());
        if (end > i + 2 && text[i + 2] != '-') options.insert(text.substr(i, end - i));
        i = end;
    }
    return options;
}

// Sub-commands that the help lists: lines of two blanks, the name, and at least two blanks more.
std::vector<std::string> commands(const CommandRunner& run) {
    std::istringstream help(run({"--help"}).out);
    std::vector<std::string> names;
    bool listed = false;
    for (std::string line; std::getline(help, line);) {
        if (line == "Commands:") listed = true;
        if (line.empty()) listed = false;
        const std::size_t end = line.find("  ", 2);
        if (listed && line.starts_with("  ") && line[2] != ' ' && end != std::string::npos)
            names.push_back(line.substr(2, end - 2));
    }
    return names;
}

// The text of a manual page without the marks of roff for a hyphen.
std::string plain(std::string manual) {
    for (std::size_t i = 0; (i = manual.find("\\-", i)) != std::string::npos; ++i) manual.erase(i, 1);
    return manual;
}

TEST(UsageTest, HelpManualAndCompletionNameTheSame) {
    const CommandRunner run;
    const std::string manual = plain(run({"man"}).out);
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

std::string outputOf(const std::string& shell, const std::string& script) {
    setenv("COMPLETE", script.c_str(), 1);
    FILE* pipe = popen((shell + " -c \"$COMPLETE\" 2>&1").c_str(), "r");
    std::string out;
    for (int c; (c = fgetc(pipe)) != EOF;) out += static_cast<char>(c);
    return pclose(pipe) == 0 ? out : "failed: " + out;
}

TEST(UsageTest, TheCompletionOffersCommandsOptionsAndScenarios) {
    const struct {
        const char* line; // with a part of what is offered at its end
        const char* offer;
    } rows[] = {
        {"sh", "show"},
        {"variadic re", "remove"},
        {"list --pa", "--paths"},
        {"run --trace j", "json"},
        {"show --configuration Ci", "City"},
        {"get --configuration City orientation/First\\ minutes.sce /sce/Scenario/dur", "/sce/Scenario/duration"},
        {"run --configuration Highway rural/Überholen\\ auf\\ der\\ Landstraße.sce --script ma", "main"},
        {"show --config /dev/nul", "/dev/null"},
        {"variadic add a b --type re", "real"},
        {"show --configuration City orientation/F", "orientation/First minutes.sce"},
    };
    // What each shell does at the tab key after the line. Where zsh keeps what fits, all offers are printed.
    const std::string bash =
        "compopt() { :; }\nsource <(" TAVREL_COMMAND " completion bash)\nCOMP_WORDS=(" TAVREL_COMMAND " $LINE)\n"
        "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tavrel\n"
        "for reply in \"${COMPREPLY[@]}\"; do eval \"printf '%s\\n' $reply\"; done";
    const std::string zsh = "compdef() { : }\n_files() { print -r -l -- /dev/* }\n"
                            "compadd() { shift; print -r -l -- \"$@\" }\n"
                            "source <(" TAVREL_COMMAND " completion zsh)\nwords=(" TAVREL_COMMAND " $LINE)\n"
                            "CURRENT=${#words}\n_tavrel";
    const std::string fish = "set PATH (dirname " TAVREL_COMMAND ") $PATH\n" TAVREL_COMMAND
                             " completion fish | source\ncomplete -C \"tavrel $LINE\"";
    const auto with = [](std::string script, const std::string& line) {
        return script.replace(script.find("$LINE"), 5, line);
    };
    for (const auto& [line, offer] : rows) {
        EXPECT_EQ(outputOf("bash", with(bash, line)), std::string(offer) + "\n") << line;
        EXPECT_THAT("\n" + outputOf("zsh -f", with(zsh, line)), HasSubstr("\n" + std::string(offer) + "\n")) << line;
        // A description may stand behind the offer.
        EXPECT_THAT(outputOf("fish -N", with(fish, line)), testing::MatchesRegex(std::string(offer) + "(\t[^\n]*)?\n"))
            << line;
    }
}

TEST(UsageTest, WrongUseIsStatusTwoAndOneSentence) {
    const CommandRunner run;
    const struct {
        std::vector<std::string> arguments;
        const char* sentence;
    } rows[] = {
        {{}, "tavrel: a command is missing; see 'tavrel --help'\n"},
        {{"shwo"}, "tavrel: there is no command \"shwo\", did you mean \"show\"; see 'tavrel --help'\n"},
        {{"variadic"}, "tavrel: a command is missing; see 'tavrel variadic --help'\n"},
        {{"variadic", "drop"}, "tavrel: there is no command \"variadic drop\"; see 'tavrel variadic --help'\n"},
        {{"ids"}, "tavrel: SCENARIO is required; see 'tavrel ids --help'\n"},
        {{"show"}, "tavrel: SCENARIO or --all is required; see 'tavrel show --help'\n"},
        {{"run", "a", "--all"}, "tavrel: --all and SCRIPT exclude each other; see 'tavrel run --help'\n"},
        {{"tree", "x", "--jsn"},
         "tavrel: not expected: \"x\", \"--jsn\", did you mean \"--json\"; see 'tavrel tree --help'\n"},
        {{"get", "--", "a", "--b", "c"}, "tavrel: not expected: \"c\"; see 'tavrel get --help'\n"},
        {{"run", "a", "--until"}, "tavrel: --until needs a value; see 'tavrel run --help'\n"},
        {{"run", "a", "--step", "0"}, "tavrel: --step takes a number of seconds above 0\n"},
        {{"run", "--all", "--step", "0"}, "tavrel: --step takes a number of seconds above 0\n"},
        {{"run", "a", "--until", "soon"}, "tavrel: --until takes a number, not \"soon\"\n"},
        {{"run", "a", "--until=-1"}, "tavrel: --until lies before --from\n"},
        {{"list", "--timeout", "0"}, "tavrel: --timeout takes a number of seconds above 0\n"},
        {{"list", "--jobs", "0"}, "tavrel: --jobs takes a number of processes from 1 on, not \"0\"\n"},
        {{"show", "--all", "--jobs", "x"}, "tavrel: --jobs takes a number of processes from 1 on, not \"x\"\n"},
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

// A shell's pipe and the terminal of `script` stand for what a person has.
TEST(UsageTest, ReadersThatGoAndTerminals) {
    EXPECT_EQ(outputOf("bash", TAVREL_COMMAND " show --all --json | head -c 1; echo \" ${PIPESTATUS[0]}\""), "[ 141\n")
        << "the end of a pipe is no failure to write";
    const std::string bold = "\x1b[1m";
    for (const auto& [settings, isBold] : std::map<std::string, bool>{
             {"TERM=xterm", true}, {"TERM=dumb", false}, {"TERM=", false}, {"TERM=xterm NO_COLOR=1", false}}) {
        const std::string out =
            outputOf("bash", "env -u NO_COLOR " + settings + " script -qec '" TAVREL_COMMAND " tree' /dev/null");
        EXPECT_THAT(out, HasSubstr("City")) << settings;
        EXPECT_EQ(out.find(bold) != std::string::npos, isBold) << settings;
    }
}

TEST(UsageTest, AFullDiskIsTold) {
    EXPECT_EQ(outputOf("bash", TAVREL_COMMAND " list > /dev/full; echo $?"),
              "tavrel: cannot write the results: No space left on device\n3\n");
}

} // namespace
