#include "Faults.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <environment/Environment.h>
#include <gtest/gtest.h>
#include <lmkUtils/AssertAbort.h>
#include <scenario/ItemModel.h>
#include <support/InstallationBuilder.h>

namespace {

namespace fs = std::filesystem;
using faults::Call;
using TavrelScenarioTemplateDb::TavrelScenario;
using TavrelScenarioTemplateDb::TavrelVariadicParameter;

constexpr const char* kScenario = R"(<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Overtaking</name>
    <duration type="real" unit="s" ScenarioTreeValue="90"/>
    <Vehicle>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Truck"/>
    </Vehicle>
    <VariadicParameter>
      <name>Duration</name>
      <description/>
      <parameterId>/sce/Scenario/duration</parameterId>
      <parameterUnit>s</parameterUnit>
      <RealParameter>
        <default>80</default>
        <RealRange><minimum>60</minimum><maximum>90</maximum></RealRange>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
)";
constexpr const char* kParameters = "# of the scenario\ndescription = as it was\nother = stays\n";

std::size_t EntriesOf(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::size_t OpenFiles() { return EntriesOf("/proc/self/fd"); }

bool Load(cfg::CfgScenario& scenario, const std::string& path) {
    return scenario.load(path.c_str(), Commons::Encoding::ModeUtf8, nullptr, nullptr, false, false, false);
}

enum class Told { Success, Failure, Nothing, End };

// Stands for the end of the process, which a root model brings about that cannot be held in memory or read to its end.
struct EndOfProcess {};

} // namespace

void AssertAbort(const char* source, int line) {
    EXPECT_TRUE(std::string(source) == "ScenarioItem" && (line == 487 || line == 488)) << source << ":" << line;
    throw EndOfProcess();
}

namespace {

// What is done while calls fail. It starts from the same file each time.
struct Operation {
    const char* why;
    std::string path; // of the file that it changes
    std::string old;
    std::function<Told(const std::string&)> run;
};

Told SaveScenario(const std::string& path) {
    cfg::CfgScenario scenario;
    if (!Load(scenario, path)) {
        EXPECT_NE(scenario.errorMessage, "");
        return Told::Failure;
    }
    try {
        scenario.getRootSection()->name = "A name that no short text buffer holds";
    } catch (const std::bad_alloc&) { // the host's own
        return Told::Failure;
    }
    const bool saved = scenario.save(path.c_str(), Commons::Encoding::ModeUtf8, false);
    EXPECT_EQ(saved, scenario.errorMessage.empty());
    return saved ? Told::Success : Told::Failure;
}

Told StoreParameters(const std::string& path) {
    static const std::string key = "description";
    static const std::string text = "a text that no short text buffer holds\n=";
    std::optional<Commons::ConfigFile> file;
    try {
        file.emplace(path);
    } catch (const std::bad_alloc&) { // the copy of the path
        return Told::Failure;
    }
    file->modifyEntry(key, text);
    return Told::Nothing;
}

Told EditDeclarations(const std::string& path) {
    const Told told = [&] {
        try {
            const fs::path file(path);
            TavrelScenario scenario("City", file.filename().string(), file.parent_path().string());
            TavrelVariadicParameter* const added = scenario.addNewVariadicParameter();
            added->setName("One more declaration than there were");
            added->setType(ScenarioTemplateDb::ParameterTypeInteger);
            added->setIntegerDefaultValue(3);
            added->insertIntegerRange(0).setMaximum(9);
            scenario.save();
            return Told::Nothing;
        } catch (const ScenarioTemplateDb::Exception& failure) {
            EXPECT_NE(failure.message, "");
        } catch (ScenarioTemplateDb::Exception* failure) {
            EXPECT_NE(failure->message, "");
            delete failure;
        } catch (const std::bad_alloc&) {
        } catch (const EndOfProcess&) {
            return Told::End;
        }
        return Told::Failure;
    }();
    delete scenarioRootModel; // it stays in a host; here nothing points into it any more
    scenarioRootModel = nullptr;
    return told;
}

class FaultsTest : public ::testing::Test {
protected:
    FaultsTest() {
        installation.configuration("City", "1.0", {"packs"});
        installation.model("packs");
        scenarioPath = installation.scenario("packs", "overtaking.sce", std::string(kScenario));
        parametersPath = installation.write("parameters/overtaking.par", kParameters);
        installation.use();
    }

    std::vector<Operation> Operations() const {
        return {
            {"save a scenario", scenarioPath, kScenario, SaveScenario},
            {"store a parameters file", parametersPath, kParameters, StoreParameters},
            {"edit declarations", scenarioPath, kScenario, EditDeclarations},
        };
    }

    static void Reset(const Operation& operation) {
        std::ofstream file(operation.path, std::ios::binary | std::ios::trunc);
        file << operation.old;
    }

    InstallationBuilder installation;
    std::string scenarioPath;
    std::string parametersPath;
};

struct Fault {
    const char* why;
    Call call;
    bool lasting;
};

constexpr Fault kFaults[] = {
    {"an open fails", Call::Open, false},
    {"no more opens", Call::Open, true},
    {"a read fails", Call::Read, false},
    {"a write fails", Call::Write, false},
    {"the disk is full", Call::Write, true},
    {"a write takes one byte", Call::ShortWrite, false},
    {"writes take one byte each", Call::ShortWrite, true},
    {"a flush fails", Call::Flush, false},
    {"a rename fails", Call::Rename, false},
    {"memory is short once", Call::Allocation, false},
};

// Every call in turn, until the operation needs no further one.
TEST_F(FaultsTest, LeaveTheOldFileOrTheNewOne) {
    for (const Operation& operation : Operations()) {
        Reset(operation);
        operation.run(operation.path);
        const std::string changed = contentOf(operation.path);
        ASSERT_NE(changed, operation.old) << operation.why;
        const std::string folder = fs::path(operation.path).parent_path().string();
        const std::size_t entries = EntriesOf(folder);
        const std::size_t descriptors = OpenFiles();

        for (const Fault& fault : kFaults) {
            constexpr std::size_t kMostCalls = 100000;
            std::size_t turn = 1;
            for (; turn < kMostCalls; ++turn) {
                Reset(operation);
                faults::Arm(fault.call, turn, fault.lasting);
                const Told told = operation.run(operation.path);
                const bool hasFailed = faults::Disarm();
                const std::string after = contentOf(operation.path);
                const auto where = [&] {
                    return std::string(operation.why) + ", " + fault.why + ", call " + std::to_string(turn);
                };
                ASSERT_TRUE(after == operation.old || after == changed) << where() << ":\n" << after;
                if (told == Told::Success || !hasFailed) {
                    ASSERT_EQ(after, changed) << where();
                }
                ASSERT_EQ(EntriesOf(folder), entries) << where();
                ASSERT_TRUE(told == Told::End || OpenFiles() == descriptors) << where();
                if (!hasFailed) break;
            }
            EXPECT_LT(turn, kMostCalls) << operation.why << ", " << fault.why;
        }
    }
}

// The same fault twice leaves no more blocks than once: what stays was made for good at the first time.
TEST_F(FaultsTest, LeaveNoMemoryBehind) {
    for (const Operation& operation : Operations()) {
        for (const Fault& fault : kFaults) {
            for (std::size_t turn = 1;; ++turn) {
                std::size_t live[3];
                bool hasFailed = false;
                bool hasEnded = false;
                for (std::size_t& blocks : live) {
                    Reset(operation);
                    faults::Arm(fault.call, turn, fault.lasting);
                    hasEnded = operation.run(operation.path) == Told::End;
                    hasFailed = faults::Disarm();
                    blocks = faults::LiveBlocks();
                }
                ASSERT_TRUE(live[1] == live[2] || hasEnded) << operation.why << ", " << fault.why << ", call " << turn;
                if (!hasFailed) break;
            }
        }
    }
}

// A text that memory ran out for spoils nothing for the next one that shares its index.
TEST(Reading, FindsAllDefinitionsAfterMemoryWasShort) {
    std::string model = "TYPEOF FOLDER (m)\n{\nTYPEOF FOLDER (ENUMTAB_LIST)\n{\nTYPEOF ENUMTAB (tab)\n{\n";
    for (int i = 0; i < 40; ++i) model += "TYPEOF ENUM (e" + std::to_string(i) + ")\n{\nVALUE=\"1\"\n}\n";
    model += "}\n}\nTYPEOF FOLDER (PARAMETER_LIST)\n{\nTYPEOF PARAMETER (p)\n{\nTYPE=\"INTEGER\"\nUSAGE=\"BY_VALUE\"\n"
             "ENUMTAB=\"tab\"\nKINDLIST=\"ENUM\"\n}\n}\n}\n";
    const std::string script = "TYPEOF FOLDER (s)\n{\nTYPEOF PARAMETER (p)\n{\nKIND=\"ENUM\"\nVALUE=\"e39\"\n}\n}\n";
    const auto read = [](const std::string& text) {
        ScenarioTextStream stream(text.c_str(), text.size() + 1);
        return std::unique_ptr<ScenarioItem>(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    };
    const std::unique_ptr<ScenarioItem> root = read(model);
    ASSERT_TRUE(root);
    scenarioRootModel = static_cast<Folders*>(root.get());
    bool hasFailed = true;
    for (std::size_t turn = 1; hasFailed; ++turn) {
        const RootModelUse use;
        faults::Arm(Call::Allocation, turn, false);
        try {
            read(script);
        } catch (const std::bad_alloc&) {
        }
        hasFailed = faults::Disarm();
        EXPECT_TRUE(read(script)) << "call " << turn;
    }
    scenarioRootModel = nullptr;
}

// Neither at one moment nor from one moment on. Names are long, so that each has memory of its own.
TEST(Reading, LeavesNothingOfATextThatMemoryRanOutFor) {
    const struct {
        std::string text;
        bool isGood;
    } rows[] = {
        {"TYPEOF SCENARIO (a scenario with a name)\n{\nFILE=\"a folder with a long name/s.sc\"\nTYPEOF "
         "GENERAL_PARAMETERS (1)\n{\n}\nTYPEOF TASK (1)\n{\n}\n}\n",
         true},
        // What a CONFIG holds is not its own. The last line refuses the text.
        {"TYPEOF FOLDER (a folder with a name)\n{\nTYPEOF CONFIG (c)\n{\nTYPEOF FOLDER (one that is in it)\n{\nTYPEOF "
         "CONFIG (d)\n{\nTYPEOF FOLDER (innermost of all)\n{\n}\n}\n}\nTYPEOF FOLDER (f)\n{\n}\n}\n?\n}\n",
         false},
    };
    for (const auto& row : rows) {
        for (const bool isLasting : {false, true}) {
            bool hasFailed = true;
            for (std::size_t turn = 1; hasFailed; ++turn) {
                ScenarioTextStream stream(row.text.c_str(), row.text.size() + 1);
                std::unique_ptr<ScenarioItem> item;
                faults::Arm(Call::Allocation, turn, isLasting);
                try {
                    item.reset(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
                } catch (const std::bad_alloc&) {
                }
                hasFailed = faults::Disarm();
                EXPECT_TRUE(hasFailed || (item != nullptr) == row.isGood) << row.text << "call " << turn;
            }
        }
    }
}

TEST(Items, AreDestroyedWhereMemoryIsShort) {
    for (const ScenarioItemKind kind : {KindTask, KindInclude}) {
        for (const std::size_t turn : {1U, 2U}) {
            std::unique_ptr<ScenarioItem> root(CreateItem(kind, "0", nullptr));
            ScenarioItem* parent = root.get();
            for (int level = 0; level < 4; ++level) {
                for (const char* name : {"1", "2", "3"})
                    parent->AddChild(CreateItem(kind, name, nullptr), nullptr, true);
                parent = parent->GetFirstChild();
            }
            faults::Arm(Call::Allocation, turn, true);
            root.reset();
            EXPECT_TRUE(faults::Disarm()) << KindKeyword(kind) << ", call " << turn;
        }
    }
}

class Reloadable : public TavrelScenario {
public:
    using TavrelScenario::loadScenario;
    using TavrelScenario::TavrelScenario;
};

TEST_F(FaultsTest, LeaveAnOpenedFileToItsOwner) {
    lmkUtils::EnvConfig::setConfig("City", false);
    bool isShort = true;
    for (std::size_t turn = 1; isShort; ++turn) {
        cfg::CfgScenario opened;
        ASSERT_TRUE(Load(opened, scenarioPath));
        const Reloadable scenario(&opened);
        isShort = false;
        faults::Arm(Call::Allocation, turn);
        try {
            scenario.loadScenario();
        } catch (const std::bad_alloc&) {
            isShort = true;
        } catch (const ScenarioTemplateDb::Exception&) { // it has no path of its own
        }
        faults::Disarm();
    }
    scenarioRootModel = nullptr;
}

// A scenario and a parameters file are stored over and over, until the process is killed in the middle of it.
TEST_F(FaultsTest, SurviveAKill) {
    constexpr int kKills = 500;
    const std::vector<std::string> texts = {"short", std::string(40000, 'x')};
    const auto store = [&](const std::string& text) {
        cfg::CfgScenario scenario;
        Load(scenario, scenarioPath);
        scenario.getRootSection()->name = text;
        scenario.save(scenarioPath.c_str(), Commons::Encoding::ModeUtf8, false);
        Commons::ConfigFile(parametersPath).modifyEntry("description", text);
    };
    std::vector<std::string> scenarios;
    std::vector<std::string> parameters;
    for (const std::string& text : texts) {
        store(text);
        scenarios.push_back(contentOf(scenarioPath));
        parameters.push_back(contentOf(parametersPath));
    }
    ASSERT_NE(scenarios[0], scenarios[1]);

    std::mt19937 random(7);
    std::uniform_int_distribution<int> delays(0, 4000);
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (std::size_t i = 0;; ++i) store(texts[i % texts.size()]);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(delays(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ASSERT_EQ(std::count(scenarios.begin(), scenarios.end(), contentOf(scenarioPath)), 1) << "kill " << kill;
        ASSERT_EQ(std::count(parameters.begin(), parameters.end(), contentOf(parametersPath)), 1) << "kill " << kill;
    }
}

} // namespace
