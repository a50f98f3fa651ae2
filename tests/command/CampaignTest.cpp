// Campaigns as a test manager works with them: begun, run in whatever parts and with whatever accidents, and merged.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandRunner.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::json;

constexpr const char* kResults[] = {"results.jsonl", "results.csv", "junit.xml", "report.html"};

class CampaignTest : public testing::Test {
protected:
    CampaignTest() {
        std::string pattern = (fs::temp_directory_path() / "campaign-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        run.common = {"--config", sample.file()};
        run.folder = folder;
        plan = {{"format", "tavrel-plan/1"},
                {"scenario", "motorway/Emergency braking.sce"},
                {"configuration", "Highway"},
                {"run", {{"until", 20}}},
                {"seed", 7},
                {"method", {{"name", "random"}, {"count", 24}}},
                {"parameters", {{"Gap", Json::object()}, {"Deceleration", Json::object()}}},
                {"criteria", {"always variable(\"Shortest headway\") >= 0.8"}}};
    }
    ~CampaignTest() override { fs::remove_all(folder); }

    void begin(const std::string& campaign) {
        std::ofstream(folder + "/plan.json") << plan.dump();
        const Result result = run({"campaign", "init", "plan.json", "--output", campaign});
        ASSERT_EQ(result.status, 0) << result;
    }
    // The merged files of a campaign, one behind the other.
    std::string merged(const std::string& campaign) {
        run({"campaign", "merge", campaign, "--output", campaign + "-results"});
        std::string bytes;
        for (const char* name : kResults) bytes += readFile(folder + "/" + campaign + "-results/" + name);
        return bytes;
    }
    Json record(const std::string& campaign, const std::string& number) {
        return Json::parse(readFile(folder + "/" + campaign + "/runs/" + number + ".json"));
    }

    static int fromEnvironment(const char* name, int otherwise) {
        const char* text = std::getenv(name);
        return text ? std::stoi(text) : otherwise;
    }
    // Which file stands there, and what is in it.
    static std::pair<ino_t, std::string> stateOf(const std::string& file) {
        struct stat about = {};
        stat(file.c_str(), &about);
        return {about.st_ino, readFile(file)};
    }

    // The command as a process that can be killed, in a group of its own.
    pid_t start(const std::vector<std::string>& arguments, const std::string& errors = "/dev/null") const {
        const pid_t child = fork();
        if (child != 0) {
            setpgid(child, child);
            return child;
        }
        setpgid(0, 0);
        std::vector<std::string> all = arguments;
        all.insert(all.end(), run.common.begin(), run.common.end());
        std::vector<char*> words{const_cast<char*>(TAVREL_COMMAND)};
        for (std::string& word : all) words.push_back(word.data());
        words.push_back(nullptr);
        if (chdir(folder.c_str()) != 0 || !freopen("/dev/null", "w", stdout) || !freopen(errors.c_str(), "w", stderr))
            _exit(9);
        execv(TAVREL_COMMAND, words.data());
        _exit(9);
    }

    SampleCopy sample;
    std::string folder;
    CommandRunner run;
    Json plan;
};

TEST_F(CampaignTest, TheResultsAreTheSameWhateverTheWayToThem) {
    plan["method"]["count"] = fromEnvironment("TAVREL_CAMPAIGN_RUNS", 60);
    begin("whole");
    const Result result = run({"campaign", "run", "whole", "--jobs", "1"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.out, HasSubstr(plan["method"]["count"].dump() + " variants: "));
    const std::string whole = merged("whole");
    EXPECT_GT(whole.size(), 10'000U);

    begin("jobs");
    run({"campaign", "run", "jobs", "--jobs", "4"});
    EXPECT_EQ(merged("jobs"), whole);

    begin("shards");
    std::vector<std::string> shards = {"0/7", "1/7", "2/7", "3/7", "4/7", "5/7", "6/7"};
    std::shuffle(shards.begin(), shards.end(), std::mt19937(std::random_device()()));
    for (const std::string& shard : shards)
        run({"campaign", "run", "shards", "--jobs", "2", "--shard", shard, "--traces", "none"});
    EXPECT_EQ(merged("shards"), whole);
}

// What is finished stays as it is, whoever is killed when: a run is neither lost nor done again.
TEST_F(CampaignTest, KillsLoseNothingAndRepeatNothing) {
    plan["method"]["count"] = fromEnvironment("TAVREL_CAMPAIGN_RUNS", 60);
    begin("whole");
    run({"campaign", "run", "whole"});
    begin("killed");
    std::map<std::string, std::pair<ino_t, std::string>> finished;
    std::mt19937 random(std::random_device{}());
    const int kills = fromEnvironment("TAVREL_CAMPAIGN_KILLS", 12);
    for (int kill = 0; kill < kills; ++kill) {
        const pid_t first = start({"campaign", "run", "killed", "--jobs", "2"});
        const pid_t second = start({"campaign", "run", "killed", "--jobs", "1", "--shard", "1/2"});
        std::this_thread::sleep_for(std::chrono::milliseconds(20 + random() % 180));
        ::kill(first, kill % 3 == 0 ? SIGTERM : SIGKILL);
        ::kill(second, SIGKILL);
        waitpid(first, nullptr, 0);
        waitpid(second, nullptr, 0);
        for (const auto& [file, was] : finished) EXPECT_EQ(stateOf(file), was) << file << " after kill " << kill;
        for (const auto& entry : fs::directory_iterator(folder + "/killed/runs"))
            if (entry.path().extension() == ".json") finished[entry.path()] = stateOf(entry.path());
    }
    const Result result = run({"campaign", "run", "killed"});
    EXPECT_EQ(result.status, 1) << result;
    for (const auto& [file, was] : finished) EXPECT_EQ(stateOf(file), was) << file;
    EXPECT_EQ(merged("killed"), merged("whole"));
    for (const auto& entry : fs::recursive_directory_iterator(folder + "/killed"))
        EXPECT_EQ(entry.path().string().find("under-way"), std::string::npos) << "left behind: " << entry.path();
}

TEST_F(CampaignTest, AnInterruptLeavesNothingHalfDoneAndSaysHowToGoOn) {
    plan.erase("criteria");
    begin("asked");
    const std::string slow =
        "sh -c '[ {number} -lt 2 ] && exit; echo > {folder}/begun; sleep 50 & echo $! > " + folder + "/sleeper; wait'";
    const std::string errors = folder + "/errors";
    const pid_t child =
        start({"campaign", "run", "asked", "--command", slow, "--jobs", "1", "--retry", "failed"}, errors);
    while (readFile(folder + "/sleeper").empty()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const pid_t sleeper = std::stoi(readFile(folder + "/sleeper"));
    EXPECT_GT(run({"campaign", "status", "asked", "--json"}).json()["runsPerSecond"], 0) << "while it is at work";
    ::kill(-child, SIGINT); // as a terminal does, all of the group
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_NE(::kill(sleeper, 0), 0) << "a program outlived its campaign";
    EXPECT_TRUE(fs::is_empty(folder + "/asked/work"));
    const Json left = run({"campaign", "status", "asked", "--json"}).json();
    EXPECT_EQ(left["verdicts"]["passed"], 2);
    EXPECT_EQ(left["missing"].size(), 22U);
    EXPECT_THAT(run({"campaign", "status", "asked"}).out,
                testing::ContainsRegex("\nmissing: 2-23\n[0-9.]+ runs a second, [0-9.]+ s for each\n"));
    EXPECT_THAT(readFile(errors), HasSubstr("To go on: tavrel campaign run asked"));
    EXPECT_THAT(readFile(errors), HasSubstr("--retry failed"));
}

TEST_F(CampaignTest, GnuParallelGivesTheSameResults) {
    if (std::system("parallel --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "GNU parallel is not installed";
    begin("one");
    run({"campaign", "run", "one"});
    const std::string name = "it's \"$many\" {}";
    begin(name);
    const std::string command = "cd '" + folder + "' && PATH=\"$(dirname '" + TAVREL_COMMAND +
                                "'):$PATH\" TAVREL_CONFIG='" + sample.file() +
                                "' sh " TAVREL_CAMPAIGNS "/parallel.sh 'it'\\''s \"$many\" {}' 3 >/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1) << "some failed";
    EXPECT_EQ(merged(name), merged("one"));
}

TEST_F(CampaignTest, TwoCommandsInOneFolderShareTheWork) {
    begin("shared");
    const pid_t other = start({"campaign", "run", "shared", "--jobs", "1"});
    EXPECT_EQ(run({"campaign", "run", "shared", "--jobs", "1"}).status, 1);
    int status = 0;
    waitpid(other, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 1);
    std::multiset<std::uint64_t> told;
    for (const auto& log : fs::directory_iterator(folder + "/shared/log")) {
        std::ifstream file(log.path());
        for (std::string line; std::getline(file, line);) told.insert(Json::parse(line)["number"].get<std::uint64_t>());
    }
    EXPECT_EQ(told.size(), 24U) << "each number was run once";
    EXPECT_EQ(std::set<std::uint64_t>(told.begin(), told.end()).size(), 24U);

    // What both are to do anew is done once, and what one of them did is not as it was for the other.
    plan["method"]["count"] = 6;
    plan.erase("criteria");
    begin("again");
    ASSERT_EQ(run({"campaign", "run", "again"}).status, 0);
    const std::vector<std::string> anew = {
        "campaign", "run",       "again",
        "--retry",  "all",       "--jobs",
        "1",        "--command", "sh -c 'echo >>" + folder + "/done-{number}; sleep 0.5'"};
    const pid_t second = start(anew);
    EXPECT_EQ(run(anew).status, 0);
    waitpid(second, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    for (int number = 0; number < 6; ++number)
        EXPECT_EQ(readFile(folder + "/done-" + std::to_string(number)), "\n") << number;
    const Json speed = run({"campaign", "status", "again", "--json"}).json();
    EXPECT_GT(speed["runsPerSecond"].get<double>() * speed["secondsPerRun"].get<double>(), 1.2) << "of both " << speed;
    EXPECT_EQ(run(anew).status, 0);
    EXPECT_EQ(readFile(folder + "/done-0"), "\n\n") << "a later command does it anew";
}

TEST_F(CampaignTest, ARunCanBeRepeatedByItsValues) {
    plan["repetitions"] = 2;
    begin("repeat");
    run({"campaign", "run", "repeat"});
    const Json kept = record("repeat", "000005");
    std::ofstream(folder + "/values.json") << kept["values"].dump();
    const Result again = run({"run", "motorway/Emergency braking.sce", "--configuration", "Highway", "--until", "20",
                              "--trace", "json", "--seed", std::to_string(kept["seed"].get<std::uint32_t>()),
                              "--set-file", "values.json", "--expect", plan["criteria"][0].get<std::string>()});
    EXPECT_EQ(again.out, readFile(folder + "/repeat/traces/000005.jsonl"));
    EXPECT_EQ(kept["events"], again.lines().size());
}

TEST_F(CampaignTest, WhatWasNotHadIsRunAgainAndWhatWasIsNot) {
    plan["method"]["count"] = 3;
    plan.erase("criteria");
    begin("verdicts");
    const auto runWith = [&](const std::string& command, const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments{"campaign", "run", "verdicts", "--command", command};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments).status;
    };
    // The number of a process that leaves the group and its parent; it must be gone when the command is.
    const std::string left = folder + "/left-{number}";
    EXPECT_EQ(runWith("sh -c 'setsid sleep 60 & echo $! >" + left + "; sleep 60'", {"--timeout", "1"}), 3);
    EXPECT_EQ(record("verdicts", "000000")["verdict"], "timeout");
    for (const char* number : {"0", "1", "2"}) {
        const std::string process = readFile(folder + "/left-" + number);
        ASSERT_FALSE(process.empty());
        EXPECT_NE(::kill(std::stoi(process), 0), 0) << process;
    }
    // Many of little memory are as bad as one of much; each has a copy of the text.
    const std::string eats = "import os,time\nb=bytearray(80<<20)\nif os.fork()==0: b[:]=bytes(80<<20)\ntime.sleep(20)";
    EXPECT_EQ(runWith("python3 -c '" + eats + "'", {"--memory", "150"}), 3);
    EXPECT_EQ(record("verdicts", "000002")["verdict"], "killed");
    EXPECT_THAT(record("verdicts", "000002")["message"], HasSubstr("150 MB"));
    EXPECT_EQ(runWith("true", {"--memory", "1"}), 3) << "of one variant, not of the command";
    EXPECT_EQ(record("verdicts", "000001")["verdict"], "killed");
    EXPECT_EQ(runWith("sh -c 'echo seen; sleep 60'", {"--timeout", "1"}), 3);
    EXPECT_EQ(readFile(folder + "/verdicts/log/000001.txt"), "seen\n");
    std::ofstream(folder + "/no-program") << "#!/no/such/interpreter\n";
    fs::permissions(folder + "/no-program", fs::perms::owner_all);
    EXPECT_EQ(runWith(folder + "/no-program"), 3);
    EXPECT_THAT(record("verdicts", "000001")["message"], HasSubstr("cannot be started"));
    std::ofstream(folder + "/no-program") << "exit 1\n"; // a shell would run it
    EXPECT_EQ(runWith(folder + "/no-program"), 3);
    EXPECT_THAT(record("verdicts", "000001")["message"], HasSubstr("cannot be started"));
    EXPECT_EQ(runWith("sh -c 'kill -SEGV $$'"), 3);
    EXPECT_EQ(record("verdicts", "000001")["verdict"], "killed");
    EXPECT_EQ(runWith("sh -c '[ {number} -ne 1 ]'"), 1);
    EXPECT_EQ(record("verdicts", "000001")["verdict"], "failed");
    EXPECT_EQ(record("verdicts", "000002")["verdict"], "passed");
    EXPECT_EQ(runWith("false"), 1) << "nothing is left to run";
    EXPECT_EQ(record("verdicts", "000002")["verdict"], "passed");
    EXPECT_EQ(runWith("true", {"--retry", "failed"}), 0);
    EXPECT_EQ(runWith("false", {"--retry", "all"}), 1);
    for (const char* refused : {"no-such-simulator", "true {scenari}", "true 'open", ""})
        EXPECT_EQ(runWith(refused), 2) << refused;
    const Result status = run({"campaign", "status", "verdicts", "--json"});
    EXPECT_EQ(status.json()["verdicts"]["failed"], 3);
    EXPECT_THAT(status.json()["missing"], ElementsAre());
}

// What is a finished record for one of the commands is one for all of them.
TEST_F(CampaignTest, ARecordThatIsNoneIsToldAndRunAgain) {
    plan["method"]["count"] = 6;
    begin("harmed");
    run({"campaign", "run", "harmed"});
    const std::string whole = merged("harmed"), runs = folder + "/harmed/runs/";
    const std::string record = readFile(runs + "000001.json");
    std::ofstream(runs + "000001.json") << record.substr(0, record.size() / 2);
    fs::copy(runs + "000000.json", runs + "000002.json", fs::copy_options::overwrite_existing);
    std::ofstream(runs + "000004.json") << record.substr(0, 100) << std::string(record.size() - 102, '\0') << "}\n";
    fs::copy(runs + "000003.json", runs + "3.json");
    fs::permissions(runs + "000005.json", fs::perms::none);
    run.heedsPermissions = true;
    const auto tellsAll = testing::AllOf(HasSubstr("000001.json: it is no whole record of run 1"),
                                         HasSubstr("000002.json: it is no whole record of run 2"),
                                         HasSubstr("000004.json: it is no whole record of run 4"),
                                         HasSubstr("000005.json: no permission"));
    Result result = run({"campaign", "status", "harmed", "--json"});
    EXPECT_THAT(result.json()["missing"], ElementsAre(1, 2, 4, 5));
    EXPECT_EQ(result.json()["finished"], 2);
    EXPECT_THAT(result.err, tellsAll);
    result = run({"campaign", "merge", "harmed"});
    EXPECT_EQ(result.status, 3) << result;
    EXPECT_THAT(result.err, tellsAll);
    EXPECT_THAT(result.out, HasSubstr("4 missing"));
    const std::string lines = readFile(folder + "/harmed/results.jsonl");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
    result = run({"campaign", "run", "harmed"});
    EXPECT_THAT(result.err, tellsAll);
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(merged("harmed"), whole);
    // Whatever another hand has written is a record, too.
    std::ofstream(runs + "000001.json") << Json::parse(record).dump(2);
    EXPECT_EQ(run({"campaign", "status", "harmed", "--json"}).json()["finished"], 6);

    fs::remove(folder + "/harmed/campaign.json");
    result = run({"campaign", "init", "plan.json", "--output", "harmed"});
    EXPECT_EQ(result.status, 2) << "these runs are of another campaign";
    EXPECT_THAT(result.err, HasSubstr("runs of another campaign"));
}

// It would count as a run of this campaign, and be read as one with the values that its number has here.
TEST_F(CampaignTest, ARecordOfAnotherPlanIsRefused) {
    plan["method"]["count"] = 6;
    begin("here");
    run({"campaign", "run", "here"});
    const std::string whole = merged("here"), file = folder + "/here/runs/000002.json", record = readFile(file);
    plan["seed"] = 8;
    begin("there");
    run({"campaign", "run", "there"});
    const Json kept = Json::parse(record);
    Json otherValue = kept, otherCriterion = kept, otherSeed = kept, noCriteria = kept;
    otherValue["values"].begin().value() = "1";
    otherCriterion["criteria"][0]["criterion"] = "always variable(\"Shortest headway\") >= 0.9";
    otherSeed["seed"] = 5;
    noCriteria["criteria"] = Json::array();
    const std::pair<std::string, const char*> cases[] = {
        {readFile(folder + "/there/runs/000002.json"), "its values or its seed"},
        {otherValue.dump(), "its values or its seed"},
        {otherSeed.dump(2), "its values or its seed"},
        {otherCriterion.dump(), "its criteria"},
        {noCriteria.dump(), "its criteria"}};
    std::vector<std::vector<std::string>> commands = {{"merge", "here", "--output", "nothing"},
                                                      {"run", "here"},
                                                      {"run", "here", "--retry", "all"},
                                                      {"status", "here"}};
    for (const auto& [other, what] : cases) {
        std::ofstream(file) << other;
        for (const std::vector<std::string>& command : commands) {
            std::vector<std::string> arguments{"campaign"};
            arguments.insert(arguments.end(), command.begin(), command.end());
            const Result result = run(arguments);
            EXPECT_EQ(result.status, 2) << result;
            EXPECT_THAT(result.err,
                        HasSubstr("here/runs/000002.json is the record of another plan: " + std::string(what)));
            EXPECT_THAT(result.err, HasSubstr("Move it out of runs/"));
        }
        commands.resize(1); // all look at records in one way
        EXPECT_EQ(readFile(file), other) << "it is not ours to overwrite";
    }
    EXPECT_FALSE(fs::exists(folder + "/nothing"));
    EXPECT_LT(run({"campaign", "run", "here", "--shard", "1/2"}).status, 2)
        << "another shard has nothing to do with it";
    fs::remove(file);
    EXPECT_LT(run({"campaign", "run", "here"}).status, 2);
    EXPECT_EQ(merged("here"), whole);

    // Another plan in the frozen file, and another way to make its variants, are found at the first of them.
    fs::remove(file);
    auto frozen = nlohmann::ordered_json::parse(readFile(folder + "/here/campaign.json"));
    frozen["plan"]["seed"] = 9;
    std::ofstream(folder + "/here/campaign.json") << frozen.dump();
    const Result result = run({"campaign", "run", "here"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("another variant 2 of the plan"));
}

TEST_F(CampaignTest, AnExternalSimulatorIsJudgedByItsTrace) {
    plan["method"]["count"] = 4;
    begin("external");
    const std::string simulator =
        std::string(TAVREL_HOSTS) + "/example-simulate '" + sample.file() + "' Highway {scenario} {trace}";
    const Result result = run({"campaign", "run", "external", "--command", simulator});
    EXPECT_EQ(result.status, 1) << result;
    for (const char* number : {"000000", "000001", "000002", "000003"}) {
        const Json kept = record("external", number);
        EXPECT_TRUE(kept["criteria"][0]["margin"].is_number()) << kept;
        EXPECT_GT(kept["events"], 2) << kept;
    }
    // The world's seed, which is another one in each repetition.
    plan["repetitions"] = 2;
    begin("seeds");
    run({"campaign", "run", "seeds", "--command", "sh -c 'echo \"$0\" >>" + folder + "/seed-{number}' {seed}"});
    for (const char* number : {"000000", "000001"})
        EXPECT_EQ(readFile(folder + "/seed-" + number[5]), record("seeds", number)["seed"].dump() + "\n");
    EXPECT_NE(readFile(folder + "/seed-0"), readFile(folder + "/seed-1"));
    // A trace that names its files is the same again.
    const std::string naming =
        R"(sh -c 'echo "{{\"time\":0,\"event\":\"start\",\"scenario\":\"$0\"}}" >$1' {scenario} {trace})";
    std::vector<std::string> records;
    for (const char* jobs : {"1", "3"}) {
        run({"campaign", "run", "external", "--retry", "all", "--command", naming, "--jobs", jobs});
        records.push_back(record("external", "000003").dump());
        EXPECT_THAT(readFile(folder + "/external/traces/000003.jsonl"), HasSubstr("000003.sce"));
    }
    EXPECT_EQ(records[0], records[1]);
    EXPECT_EQ(run({"campaign", "run", "external", "--retry", "all", "--command", "true"}).status, 3);
    EXPECT_EQ(record("external", "000000")["message"], "it left no trace");
    // Criteria hold over nothing, but that is no run.
    for (const auto& [command, message] : {std::pair{"touch {trace}", "there is no event of a run in it"},
                                           std::pair{"sh -c 'echo >$0' {trace}", "there is no event of a run in it"},
                                           std::pair{"mkdir {trace}", "it is a folder"}}) {
        EXPECT_EQ(run({"campaign", "run", "external", "--command", command}).status, 3) << command;
        EXPECT_EQ(record("external", "000001")["verdict"], "error") << command;
        EXPECT_THAT(record("external", "000001")["message"], HasSubstr(message)) << command;
    }
}

TEST_F(CampaignTest, TheFrozenPlanSaysAllThatThePlanLeftOpen) {
    for (const char* open : {"configuration", "run", "parameters", "seed"}) plan.erase(open);
    plan["linked"] = {{{"parameters", {"Language"}}, {"rows", {{"de"}, {"en"}}}}};
    begin("open");
    const auto frozen = nlohmann::ordered_json::parse(readFile(folder + "/open/campaign.json"));
    EXPECT_EQ(frozen["plan"]["configuration"], "Fahrschule S\u00FCd") << "the first one that has the scenario";
    EXPECT_EQ(frozen["plan"]["script"], "main");
    EXPECT_EQ(frozen["plan"]["run"], (nlohmann::ordered_json{{"from", 0.0}, {"until", 60.0}, {"step", 0.1}}));
    EXPECT_EQ(frozen["plan"]["parameters"].size(), 2U) << frozen["plan"]["parameters"];
    std::ofstream(folder + "/frozen.json") << frozen["plan"].dump();
    EXPECT_EQ(run({"vary", "list", "frozen.json", "--format", "jsonl"}).out,
              run({"vary", "list", "plan.json", "--format", "jsonl"}).out);
}

TEST_F(CampaignTest, AnotherPlanAndChangedInputsAreRefused) {
    begin("frozen");
    plan["seed"] = 8;
    std::ofstream(folder + "/other.json") << plan.dump();
    Result result = run({"campaign", "init", "other.json", "--output", "frozen"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("its plan is another one"));
    EXPECT_EQ(run({"campaign", "init", "plan.json", "--output", "frozen"}).status, 0)
        << "the same plan changes nothing";
    plan["criteria"].push_back("never fired(99999)");
    std::ofstream(folder + "/other.json") << plan.dump();
    result = run({"campaign", "init", "other.json", "--output", "lacking"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("other.json: criteria/1: criterion 'never fired(99999)'"));

    run({"campaign", "run", "frozen", "--shard", "0/3"});
    const Result edit = run({"set", "motorway/Emergency braking.sce", "--configuration", "Highway", "Gap=44"});
    ASSERT_EQ(edit.status, 0) << edit;
    result = run({"campaign", "run", "frozen", "--shard", "1/3"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("Emergency braking.sce has changed since the campaign began"));

    EXPECT_EQ(run({"campaign", "merge", "frozen"}).status, 3) << "some are missing";
    EXPECT_THAT(readFile(folder + "/frozen/junit.xml"), HasSubstr("this variant was not run"));
    EXPECT_EQ(run({"campaign", "run", "nowhere"}).status, 2);
}

TEST_F(CampaignTest, AChangedInputIsNamedWhateverItBreaks) {
    const std::string scenario = sample.path + "/packs/road/data/scenario/motorway/Emergency braking.sce";
    const std::string bytes = readFile(scenario);
    ASSERT_FALSE(bytes.empty());
    plan["configuration"] = "Fahrschule S\u00FCd"; // it has the include
    plan["method"]["count"] = 4;
    begin("inputs");
    const Json frozen = Json::parse(readFile(folder + "/inputs/campaign.json"));
    std::string model, include;
    for (const Json& input : frozen["inputs"]) {
        if (input["role"] == "rootModel") model = input["file"];
        if (input["role"] == "include") include = input["file"];
    }
    ASSERT_FALSE(model.empty() || include.empty());
    const auto refusedFor = [&](const std::string& file) {
        const Result result = run({"campaign", "run", "inputs"});
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr(file));
    };
    for (const auto& [from, to] :
         {std::pair{"<scriptName>main<", "<scriptName>Main<"}, std::pair{"<name>Gap<", "<name>Gab<"}}) {
        std::string renamed = bytes;
        const std::size_t at = renamed.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        std::ofstream(scenario) << renamed.replace(at, std::string(from).size(), to);
        refusedFor("Emergency braking.sce has changed");
    }
    std::ofstream(scenario) << bytes.substr(0, bytes.size() / 2);
    refusedFor("Emergency braking.sce has changed");
    fs::remove(scenario);
    refusedFor("Emergency braking.sce cannot be read any more");
    std::ofstream(scenario) << bytes;
    const std::string rootModel = readFile(sample.path + "/" + model);
    fs::remove(sample.path + "/" + model);
    refusedFor(model);
    std::ofstream(sample.path + "/" + model) << rootModel;
    EXPECT_LT(run({"campaign", "run", "inputs"}).status, 2) << "all is as it was";

    // Each run reads the includes anew, and so may a simulator.
    const std::string file = sample.path + "/" + include, before = readFile(file);
    Result result = run({"campaign", "run", "inputs", "--retry", "all", "--jobs", "1", "--command",
                         "sh -c 'echo >>\"$0\"; echo >$1' '" + file + "' {trace}"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr(include + " has changed since the campaign began"));
    std::ofstream(file) << before;
    plan["method"]["count"] = 2000;
    begin("edited");
    const std::string errors = folder + "/errors", runs = folder + "/edited/runs";
    const pid_t child = start({"campaign", "run", "edited", "--jobs", "2"}, errors);
    while (fs::is_empty(runs)) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    std::ofstream(file, std::ios::app) << "\n";
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 2);
    EXPECT_THAT(readFile(errors), HasSubstr(include + " has changed since the campaign began"));
    std::ofstream(file) << before;
    const Json state = run({"campaign", "status", "edited", "--json"}).json();
    EXPECT_EQ(state["verdicts"]["error"], 0) << "no record of a run with another include";
    EXPECT_GT(state["missing"].size(), 0U);
}

TEST_F(CampaignTest, EnginesTellTheirPart) {
    plan["method"]["count"] = 6;
    begin("engines");
    struct {
        std::map<std::string, std::string> environment;
        int status;
        std::size_t finished; // afterwards
    } const cases[] = {
        {{{"SLURM_ARRAY_TASK_ID", "12"},
          {"SLURM_ARRAY_TASK_MIN", "10"},
          {"SLURM_ARRAY_TASK_STEP", "2"},
          {"SLURM_ARRAY_TASK_COUNT", "3"}},
         0,
         2},
        {{{"SLURM_ARRAY_TASK_ID", "16"},
          {"SLURM_ARRAY_TASK_MIN", "10"},
          {"SLURM_ARRAY_TASK_STEP", "2"},
          {"SLURM_ARRAY_TASK_COUNT", "3"}},
         2,
         2},
        {{{"JOB_COMPLETION_INDEX", "0"}, {"TAVREL_SHARDS", "3"}}, 0, 4},
        {{{"JOB_COMPLETION_INDEX", "0"}}, 2, 4},
        {{{"PARALLEL_SEQ", "3"}, {"TAVREL_SHARDS", "3"}}, 0, 6},
        {{{"PARALLEL_SEQ", "4"}, {"TAVREL_SHARDS", "3"}}, 2, 6},
        {{}, 2, 6},
    };
    for (const auto& [environment, status, finished] : cases) {
        run.environment = environment;
        // Which verdicts they have is not the matter here.
        const Result result = run({"campaign", "run", "engines", "--shard", "auto"});
        EXPECT_EQ(result.status == 1 ? 0 : result.status, status) << result;
        run.environment = {};
        EXPECT_EQ(run({"campaign", "status", "engines", "--json"}).json()["finished"], finished) << result;
    }
    for (const char* shard : {"3/3", "1", "a/b", "-1/3", "0/0"})
        EXPECT_EQ(run({"campaign", "run", "engines", "--shard", shard}).status, 2) << shard;
}

TEST_F(CampaignTest, AFolderThatCannotBeWrittenToIsTold) {
    begin("closed");
    run.heedsPermissions = true;
    for (const char* below : {"/closed/runs", "/closed"})
        fs::permissions(folder + below, fs::perms::owner_read | fs::perms::owner_exec);
    const Result result = run({"campaign", "run", "closed"});
    EXPECT_EQ(result.status, 3) << result;
    EXPECT_THAT(result.err, HasSubstr("no permission"));
    for (const char* below : {"/closed", "/closed/runs"}) fs::permissions(folder + below, fs::perms::owner_all);
    // A trace that cannot be kept is no run without a trace.
    fs::permissions(folder + "/closed/traces", fs::perms::owner_read | fs::perms::owner_exec);
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{},
          {"--command", "sh -c 'echo {{\\\"time\\\":0,\\\"event\\\":\\\"x\\\"}} >{trace}'"}}) {
        std::vector<std::string> arguments{"campaign", "run", "closed"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Result kept = run(arguments);
        EXPECT_EQ(kept.status, 3) << kept;
        EXPECT_THAT(kept.err, HasSubstr("no permission"));
        EXPECT_TRUE(fs::is_empty(folder + "/closed/runs")) << kept;
    }
    fs::permissions(folder + "/closed/traces", fs::perms::owner_all);
}

TEST_F(CampaignTest, BisectionNarrowsTheFirstLimit) {
    plan["criteria"] = {"eventually[0,20] entered(TASK (3))"};
    std::ofstream(folder + "/plan.json") << plan.dump();
    Result result =
        run({"campaign", "bisect", "plan.json", "--parameter", "Deceleration", "--tolerance", "0.01", "--json"});
    ASSERT_EQ(result.status, 0) << result;
    const Json found = result.json();
    const double low = std::stod(found["low"]["value"].get<std::string>()),
                 high = std::stod(found["high"]["value"].get<std::string>());
    EXPECT_LE(high - low, 0.01 + 1e-9);
    EXPECT_EQ(found["low"]["verdict"], "failed");
    EXPECT_EQ(found["high"]["verdict"], "passed");
    EXPECT_LE(found["runs"], 13) << "2 + 4 + ceil(log2(6 / (5 * 0.01)))";
    EXPECT_LE(run({"campaign", "bisect", "plan.json", "--parameter", "Deceleration", "--tolerance", "0.0015", "--json"})
                  .json()["runs"],
              16)
        << "2 + 4 + ceil(log2(6 / (5 * 0.0015)))";
    // The limit is where it was found to be.
    for (const auto& [value, status] : {std::pair{found["low"]["value"], 1}, std::pair{found["high"]["value"], 0}})
        EXPECT_EQ(run({"run", "motorway/Emergency braking.sce", "--configuration", "Highway", "--until", "20", "--set",
                       "Deceleration=" + value.get<std::string>(), "--expect", "eventually[0,20] entered(TASK (3))"})
                      .status,
                  status);
    EXPECT_THAT(run({"campaign", "bisect", "plan.json", "--parameter", "Deceleration", "--tolerance", "0.1"}).out,
                testing::MatchesRegex("Deceleration: the limit lies between \\([0-9]+ runs\\)\n  [0-9.]+ failed\n"
                                      "    eventually.* does not hold\n  [0-9.]+ passed\n    eventually.* holds.*\n"));
    // At one of the probes alone, and from 8 on.
    plan["criteria"] = {R"(finally variable("Deceleration") != 6.4)", R"(finally variable("Deceleration") <= 8)"};
    std::ofstream(folder + "/plan.json") << plan.dump();
    EXPECT_THAT(run({"campaign", "bisect", "plan.json", "--parameter", "Deceleration", "--tolerance", "0.5"}).out,
                HasSubstr("\nThe verdict changes 3 times over the probes; this is the first limit.\n"));
    plan["criteria"] = {"never fired(10)"};
    std::ofstream(folder + "/plan.json") << plan.dump();
    result = run({"campaign", "bisect", "plan.json", "--parameter", "Deceleration", "--tolerance", "0.01"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("Deceleration: the ends do not differ, so there is no limit to look for ("));
}

TEST_F(CampaignTest, RefusalsNameWhatIsMissing) {
    begin("campaign");
    const struct {
        std::vector<std::string> arguments;
        const char* sentence;
    } rows[] = {
        {{"init", "plan.json"}, "campaign init needs --output DIR"},
        {{"run", "campaign", "--memory", "0"}, "--memory takes a number of megabytes, at least 1"},
        {{"bisect", "plan.json"}, "campaign bisect needs --parameter"},
        {{"bisect", "plan.json", "--parameter", "Gap"}, "campaign bisect needs --tolerance"},
        {{"bisect", "plan.json", "--parameter", "Gap", "--tolerance", "1", "--probes", "x"},
         "--probes takes a number of values from 0 on, not \"x\""},
        {{"bisect", "plan.json", "--parameter", "Gap", "--tolerance", "x"}, "tolerance"},
        {{"bisect", "plan.json", "--parameter", "Deceleration", "--tolerance", "0.0001"}, "tolerance"},
        {{"bisect", "plan.json", "--parameter", "Dezeleration", "--tolerance", "1"}, "did you mean"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments{"campaign"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 2) << row.sentence << result;
        EXPECT_THAT(result.err, HasSubstr(row.sentence));
    }
}

} // namespace
