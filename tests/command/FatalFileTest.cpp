#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>
#include <support/ScriptText.h>

#include "CommandRunner.h"

// What the library may not survive, the command does: among hundreds of good files each bad one is told by name and
// cause, and none of the others is left out.

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const std::string kModel = ScriptText(R"(
    TYPEOF FOLDER (nuro)
        TYPEOF FOLDER (ENUMTAB_LIST)
            TYPEOF ENUMTAB (COLOURS)
                TYPEOF ENUM (RED) TYPE="INTEGER" VALUE="1"
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (COLOUR) TYPE="INTEGER" ENUMTAB="COLOURS" KINDLIST="ENUM"
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (ALWAYS) CODE="0"
            TYPEOF CONDITION (IS_VHL_AT_POSITION) CODE="0"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (Paint) CODE="0"
                TYPEOF PARAMETER (COLOUR) KIND="ENUM" VALUE="RED"
)");

// A scenario of one rule: `condition`, and an action with a colour whose value line is `value`.
std::string Rule(const std::string& condition, const std::string& value) {
    return ScriptText("    TYPEOF SCENARIO (1)\n        TYPEOF RULE (1)\n            TYPEOF CONDITION (" + condition +
                      ")\n            TYPEOF ACTION (Paint)\n                TYPEOF PARAMETER (COLOUR) KIND=\"ENUM\" " +
                      value + "\n");
}

const std::string kGood = Rule("ALWAYS", "VALUE=\"RED\"");

std::string Scenario(const std::string& script) {
    return SectionText("Scenario").text("name", "One").script("main", script).file();
}

// Which commands come to the fault of a file.
enum Reach : unsigned { List = 1, Check = 2, Show = 4, Runs = 8, All = 15 };

struct FatalFile {
    std::string file; // in the folder of the scenarios
    std::string cause;
    unsigned reach = All;
    std::function<void(const std::string& path)> put;
};

std::function<void(const std::string&)> Text(std::string text) {
    return [text = std::move(text)](const std::string& path) { std::ofstream(path, std::ios::binary) << text; };
}

std::function<void(const std::string&)> Script(const std::string& text) { return Text(Scenario(text)); }

std::function<void(const std::string&)> Zeros(std::uintmax_t size) {
    return [size](const std::string& path) {
        std::ofstream(path).close();
        fs::resize_file(path, size);
    };
}

std::function<void(const std::string&)> LinkTo(const std::string& target) {
    return [target](const std::string& path) { fs::create_symlink(target, path); };
}

std::string Nested(std::size_t depth) {
    std::string text = "<sce version=\"1\"><Scenario>";
    for (std::size_t i = 0; i < depth; ++i) text += "<a>";
    for (std::size_t i = 0; i < depth; ++i) text += "</a>";
    return text + "</Scenario></sce>";
}

const std::vector<FatalFile>& FatalFiles() {
    static const std::vector<FatalFile> rows = {
        {"token", "assertion ScenarioItem:122", Check | Show | Runs, Script("TYPEOF TOKEN (t)\n{\n}\n")},
        {"nested token", "assertion ScenarioItem:122", Check | Show | Runs,
         Script("TYPEOF SCENARIO (1)\n{\n\tTYPEOF HISTORY (t)\n\t{\n\t}\n}\n")},
        {"no list", "assertion token:275", Check | Show | Runs, Script("TYPEOF FUNCTION (f)\n{\n}\n")},
        {"no radius", "assertion function:288", Check | Show | Runs,
         Script(Rule("IS_VHL_AT_POSITION", "VALUE=\"RED\""))},
        {"no entry", "assertion Parameter:885", Check | Runs, Script(Rule("ALWAYS", "IS_SELECTED=\"1\""))},
        {"action alone", "assertion action:74", Check,
         Script(
             ScriptText("    TYPEOF ACTION (Paint)\n        TYPEOF PARAMETER (COLOUR) KIND=\"ENUM\" VALUE=\"RED\"\n"))},
        {"condition alone", "assertion Condition:283", Check, Script("TYPEOF CONDITION (ALWAYS)\n{\n}\n")},
        {"endless script", "the text ends before", Check | Runs, Script("TYPEOF SCENARIO (1)\n{\n")},
        {"empty", "the file is empty", All, Text("")},
        {"torn", "not XML", All, Text("<sce version=\"1\"><Scenario>")},
        {"nested", "nested", All, Text(Nested(100000))},
        {"bytes", "not XML", All, Text(std::string("\xff\xfe\0<sce", 7))},
        {"large", "not XML", All, Zeros(std::uintmax_t(16) << 20)},
        {"huge", "with 1073741824 bytes it is larger than any file", All, Zeros(std::uintmax_t(1) << 30)},
        {"folder", "it is a folder", All, [](const std::string& path) { fs::create_directory(path); }},
        {"pipe", "it is no regular file", All, [](const std::string& path) { mkfifo(path.c_str(), 0600); }},
        {"device", "it is no regular file", All, LinkTo("/dev/zero")},
        {"link to nothing", "there is no such file", All, LinkTo("nothing")},
        {"link to itself", "symbolic links that lead in a circle", All,
         [](const std::string& path) { fs::create_symlink(fs::path(path).filename(), path); }},
        {"denied", "no permission", All,
         [](const std::string& path) {
             Script(kGood)(path);
             fs::permissions(path, fs::perms::none);
         }},
    };
    return rows;
}

// Takes a file away as soon as another one is opened.
class Vanishing {
public:
    Vanishing(const std::string& opened, std::string goes) : file(std::move(goes)), watch(inotify_init1(IN_NONBLOCK)) {
        inotify_add_watch(watch, opened.c_str(), IN_OPEN);
        thread = std::thread([this] {
            pollfd end{watch, POLLIN, 0};
            while (!over)
                if (poll(&end, 1, 100) > 0) {
                    unlink(file.c_str());
                    return;
                }
        });
    }
    ~Vanishing() {
        over = true;
        thread.join();
        close(watch);
    }
    Vanishing(const Vanishing&) = delete;
    Vanishing& operator=(const Vanishing&) = delete;

private:
    const std::string file;
    const int watch;
    std::atomic<bool> over{false};
    std::thread thread;
};

constexpr std::size_t kGoodFiles = 600;

class FatalFileTest : public testing::Test {
protected:
    FatalFileTest() {
        installation.configuration("Town", "1.0", {"town"});
        installation.model("town", kModel);
        run.common = {"--config", installation.file()};
        run.heedsPermissions = true;
        folder = installation.path() + "/town/data/scenario";
        fs::create_directories(folder);
        for (std::size_t i = 0; i < kGoodFiles; ++i) {
            good.insert("good " + std::to_string(i) + ".sce");
            Script(kGood)(folder + "/good " + std::to_string(i) + ".sce");
        }
        for (const FatalFile& fatal : FatalFiles())
            for (const char* place : {"a ", "z "}) // before the good files and after them
                fatal.put(folder + "/" + place + fatal.file + ".sce");
    }

    // One more file goes while the command is at work on the others.
    Result RunWhileOneVanishes(const std::vector<std::string>& arguments) const {
        const std::string vanished = folder + "/z vanished.sce";
        Script(kGood)(vanished);
        const Vanishing vanishing(folder + "/a condition alone.sce", vanished);
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, HasSubstr("z vanished.sce: there is no such file\n"));
        return result;
    }

    // What the command wrote has a line for each fatal file that it reads, with its name and cause.
    static void ExpectTold(const std::string& text, Reach command) {
        for (const FatalFile& fatal : FatalFiles())
            for (const char* place : {"a ", "z "}) {
                if (!(fatal.reach & command)) continue;
                const std::string name = place + fatal.file + ".sce";
                bool told = false;
                for (std::size_t at = 0; !told && (at = text.find(name, at)) != std::string::npos; ++at)
                    told = text.substr(at, text.find('\n', at) - at).find(fatal.cause) != std::string::npos;
                EXPECT_TRUE(told) << name << ": " << fatal.cause;
            }
    }

    InstallationBuilder installation;
    CommandRunner run;
    std::string folder;
    std::set<std::string> good;
};

TEST_F(FatalFileTest, ListTellsEachAndNamesTheOthers) {
    const Result result = RunWhileOneVanishes({"list", "--json"});
    ExpectTold(result.err, List);
    std::set<std::string> done;
    for (const auto& entry : result.json())
        if (entry["name"] == "One") done.insert(entry["path"]);
    for (const std::string& path : good) EXPECT_EQ(done.count(path), 1U) << path;
}

TEST_F(FatalFileTest, CheckTellsEachAndFindsNothingInTheOthers) {
    const std::string scripts = installation.path() + "/town/data/script/include/";
    fs::create_directories(scripts);
    Zeros(std::uintmax_t(1) << 30)(scripts + "huge.sc");
    mkfifo((scripts + "pipe.sc").c_str(), 0600);
    fs::create_symlink("self.mdl", scripts + "self.mdl");
    Text(kGood)(scripts + "good.sc");
    Text("TYPEOF SCENARIO (1)\n{\n\tTYPEOF TOKEN (t)\n\t{\n\t}\n}\n")(scripts + "token.sc");
    const Result result = RunWhileOneVanishes({"check", installation.path(), "--json"});
    EXPECT_THAT(result.err, HasSubstr(scripts + "huge.sc: with 1073741824 bytes"));
    EXPECT_THAT(result.err, HasSubstr(scripts + "pipe.sc: it is no regular file"));
    EXPECT_THAT(result.err, HasSubstr(scripts + "self.mdl: symbolic links that lead in a circle"));
    std::set<std::string> wrong;
    for (const auto& finding : result.json())
        if (finding["severity"] == "error") wrong.insert(fs::path(finding["file"].get<std::string>()).filename());
    for (const FatalFile& fatal : FatalFiles())
        for (const char* place : {"a ", "z "})
            EXPECT_EQ(wrong.count(place + fatal.file + ".sce") != 0, (fatal.reach & Check) != 0) << fatal.file;
    EXPECT_EQ(wrong.count("token.sc"), 1U);
    for (const std::string& path : good) EXPECT_EQ(wrong.count(path), 0U) << path;
}

TEST_F(FatalFileTest, ShowAndRunTellEachAndDoTheOthers) {
    const Result shown = RunWhileOneVanishes({"show", "--all", "--json"});
    ExpectTold(shown.err, Show);
    std::set<std::string> done;
    for (const auto& scenario : shown.json()) done.insert(scenario["path"]);
    for (const std::string& path : good) EXPECT_EQ(done.count(path), 1U) << path;

    const Result traced = RunWhileOneVanishes({"run", "--all", "--until", "0.1", "--trace", "json"});
    ExpectTold(traced.err, Runs);
    done.clear();
    std::string started;
    for (const std::string& line : traced.lines()) {
        const auto event = nlohmann::json::parse(line);
        if (event["event"] == "start") started = event["scenario"];
        if (event["event"] == "end") done.insert(started.substr(0, started.find(", script")));
    }
    for (const std::string& path : good) EXPECT_EQ(done.count(path), 1U) << path;
}

TEST_F(FatalFileTest, AnyNumberOfJobsGivesTheSame) {
    const std::vector<std::string> commands[] = {{"list"}, {"show", "--all"}, {"run", "--all", "--until", "0.1"}};
    for (std::vector<std::string> command : commands) {
        command.insert(command.end(), {"--jobs", "1"});
        const Result one = run(command);
        command.back() = "5";
        const Result five = run(command);
        EXPECT_EQ(five.out, one.out);
        EXPECT_EQ(five.err, one.err);
        EXPECT_EQ(five.status, one.status);
    }
}

// What stands in the place of a root model, an include, an evaluation or a parameters file is told by its name, and
// does not hold up those who do without it.
TEST(FatalRolesTest, EachIsToldWhateverItsRole) {
    const std::pair<const char*, const char*> roles[] = {
        {"data/tools/nuro/nuro.mdl", "nuro.mdl"},
        {"data/script/include/i.sc", "i.sc"},
        {"data/script/include/e.sc", "e.sc"},
        {"data/scenario/p.par", "p.par"},
    };
    const std::string script = ScriptText(R"(
        TYPEOF SCENARIO (1) FILE="p.sc"
            TYPEOF INCLUDE (1) ISA_INDEX="1" FILE="i.sc"
            TYPEOF EVALUATION (1) ISA_INDEX="1" FILE="e.sc"
            TYPEOF GENERAL_PARAMETERS (1)
            TYPEOF RULE (1) LABEL="Here"
                TYPEOF CONDITION (ALWAYS)
    )");
    std::string model = kModel; // whole, so that nothing else is told
    model.insert(model.rfind('}'), "\tTYPEOF FOLDER (FUNCTION_LIST)\n\t{\n\t}\n");
    const std::pair<const char*, std::function<void(const std::string&)>> fatals[] = {
        {"huge", Zeros(std::uintmax_t(1) << 30)},
        {"pipe", [](const std::string& path) { mkfifo(path.c_str(), 0600); }},
        {"folder", [](const std::string& path) { fs::create_directory(path); }},
        {"device", LinkTo("/dev/zero")},
    };
    for (const auto& [role, name] : roles)
        for (const auto& [why, put] : fatals) {
            SCOPED_TRACE(std::string(name) + ", " + why);
            InstallationBuilder installation;
            for (const char* town : {"Town", "Village"}) {
                installation.configuration(town, "1.0", {town});
                installation.model(town, model);
                installation.scenario(town, town + std::string(".sce"), Scenario(script));
                installation.write(town + std::string("/data/script/include/i.sc"), "TYPEOF INCLUDE (1)\n{\n}\n");
                installation.write(town + std::string("/data/script/include/e.sc"), "TYPEOF EVALUATION (1)\n{\n}\n");
            }
            const std::string place = installation.path() + "/Town/" + role;
            fs::remove(place);
            put(place);
            CommandRunner run;
            run.common = {"--config", installation.file()};
            const Result checked = run({"check", installation.file(), "--ignore", "TV20", "--fail-on", "warning"});
            EXPECT_NE(checked.status, 0);
            EXPECT_THAT(checked.out + checked.err, HasSubstr(name));
            EXPECT_THAT(checked.out + checked.err, testing::Not(HasSubstr("Village")));
            EXPECT_THAT(run({"list", "--paths"}).lines(), testing::ElementsAre("Town.sce", "Village.sce"));
            const bool isModel = std::string(name) == "nuro.mdl";
            for (const std::vector<std::string>& command :
                 {std::vector<std::string>{"show", "--all"}, {"run", "--all", "--until", "1"}}) {
                const Result result = run(command);
                EXPECT_EQ(result.status, isModel ? 3 : 0) << result;
                EXPECT_THAT(result.out, HasSubstr("Village.sce"));
                EXPECT_EQ(result.out.find("Town.sce") == std::string::npos, isModel);
                // Includes are shown by run alone, and nothing but check reads a parameters file for its own sake.
                const bool isTold = isModel || (command[0] == "run" && std::string(name) != "p.par");
                EXPECT_EQ(result.err.find(name) != std::string::npos, isTold) << result;
            }
        }
}

// Fuzzing found these, or began with them. Some are whole; all are answered.
TEST_F(FatalFileTest, EveryFuzzedFileIsAnswered) {
    std::set<std::string> files;
    for (const char* inputs : {TAVREL_FUZZ_CORPUS, TAVREL_FUZZ_LEARNT}) {
        for (const auto& entry : fs::recursive_directory_iterator(inputs)) {
            if (!entry.is_regular_file()) continue;
            const std::string name =
                entry.path().parent_path().filename().string() + "-" + entry.path().filename().string();
            for (const char* extension : {".sce", ".sc", ".mdl"})
                fs::copy_file(entry.path(), installation.path() + "/fuzzed-" + name + extension);
            files.insert(name);
        }
    }
    ASSERT_GE(files.size(), 400U);
    const Result result = run({"check", installation.path(), "--json", "--timeout", "20"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out.find("given up after"), std::string::npos);
    EXPECT_EQ(result.out.find("ended the process"), std::string::npos);
    std::set<std::string> told;
    for (const auto& finding : result.json()) told.insert(finding["file"]);
    EXPECT_THAT(told, testing::Contains(HasSubstr("fuzzed-script-found-parameter-alone.sc")));
    EXPECT_THAT(told, testing::Contains(HasSubstr("fuzzed-template-found-script-ends-behind-its-nul.sce")));
}

} // namespace
