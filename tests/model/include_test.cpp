#include <support/DataPath.h>
#include <support/RunningHost.h>

namespace {

// Texts by name, and which were asked for.
class Texts : public IncludeRepository {
public:
    Texts() { RegisterIncludeRepository(this); }
    ~Texts() override { UnregisterIncludeRepository(this); }
    bool Contains(const std::string& file) override { return texts.contains(file); }
    std::string Read(const std::string& file) override {
        if (isBroken) throw std::runtime_error("cannot read " + file);
        return texts.at(file);
    }

    std::map<std::string, std::string> texts;
    bool isBroken = false;
};

class IncludeTest : public RunningTest {
protected:
    static std::string Reference(const std::string& file) {
        return "TYPEOF INCLUDE (1)\n{\n\tISA_INDEX=\"1\"\n\tFILE=\"" + file + "\"\n}\n";
    }
    std::unique_ptr<Include> ReadReference(const std::string& file) {
        host.log.str("");
        output.str("");
        return host.ReadAs<Include>(Reference(file));
    }
    std::string DiskPath(const std::string& file) { return data.Normal("data/script/include/" + file); }
    void WriteInclude(const std::string& file, const std::string& text) {
        data.Write("data/script/include/" + file, text);
    }

    DataPath data;
};

const std::string kContent = ScriptText(R"(
    TYPEOF INCLUDE (5) LABEL="Monitor"
        TYPEOF VARIABLE (2) LABEL="limit" VALUE="50"
        TYPEOF RULE (7) LABEL="Watch"
        TYPEOF TASK (1) LABEL="Wait"
)");

TEST_F(IncludeTest, LoadsFromTheDisk) {
    WriteInclude("sub/monitor.sc", kContent);
    for (const char* file : {"sub/monitor.sc", "sub\\monitor.sc"}) {
        const auto include = ReadReference(file);
        ASSERT_TRUE(include) << file;
        EXPECT_EQ(include->label, "Monitor");
        EXPECT_EQ(include->name, "1") << "its own name stays";
        EXPECT_EQ(BlocksOf(*include), "VARIABLE2 RULE7 TASK1 ");
        EXPECT_EQ(include->fileName, file);
        EXPECT_EQ(include->resolvedPath, DiskPath("sub/monitor.sc"));
        EXPECT_EQ(include->subTasks.front()->parent, include.get());
        EXPECT_EQ(host.log.str(), std::string("\1include ") + file + " not found in repositories\n");
        EXPECT_EQ(output.str(), "\1" + DiskPath("sub/monitor.sc") + " loaded\n");
        EXPECT_EQ(SavedText(*include), "\nTYPEOF INCLUDE (1)\n{\n\tISA_INDEX=\"1\"\n\tTASK_KIND=\"0\"\n\tFILE=\"" +
                                           std::string(file) + "\"\n}\n")
            << "only the reference is saved";

        include->UpdateDisplayTextTree();
        EXPECT_TRUE(include->IsValid());
        EXPECT_EQ(include->displayText, std::string("Monitor    (") + file + ")");

        const std::unique_ptr<ScenarioItem> clone(include->Clone());
        EXPECT_EQ(clone->label, "Monitor");
        EXPECT_EQ(BlocksOf(*clone), "VARIABLE2 RULE7 TASK1 ");
        EXPECT_EQ(clone->resolvedPath, include->resolvedPath);
        EXPECT_EQ(SavedText(*clone), SavedText(*include));
    }
}

TEST_F(IncludeTest, LoadsFromRepositoriesFirst) {
    WriteInclude("a.sc", "TYPEOF INCLUDE (5)\n{\n\tLABEL=\"disk\"\n}\n");
    Texts first;
    {
        Texts second;
        second.texts["a.sc"] = "TYPEOF INCLUDE (5)\n{\n\tLABEL=\"second\"\n}\n";
        EXPECT_EQ(ReadReference("a.sc")->label, "second");
        EXPECT_EQ(host.log.str(), "\1a.sc loaded from scenario\n");
        EXPECT_EQ(output.str(), "");
        first.texts["a.sc"] = kContent;
        const auto include = ReadReference("a.sc");
        EXPECT_EQ(include->label, "Monitor");
        EXPECT_EQ(include->resolvedPath, "");
        EXPECT_EQ(BlocksOf(*include), "VARIABLE2 RULE7 TASK1 ");
    }
    first.isBroken = true;
    EXPECT_EQ(ReadReference("a.sc")->label, "disk") << "a repository that cannot read counts as one without the file";
    EXPECT_EQ(host.log.str(), "\1cannot read a.sc\n");
    UnregisterIncludeRepository(&first);
    EXPECT_THROW(Include::ResolveInclude("a.sc"), std::runtime_error);
}

TEST_F(IncludeTest, WhatCannotBeLoadedStays) {
    WriteInclude("task.sc", "TYPEOF TASK (5)\n{\n\tLABEL=\"no\"\n}\n");
    WriteInclude("cut.sc", "\nTYPEOF INCLUDE (5)\n{\n\tLABEL=\"x\"\n\tTYPEOF RULE (1)\n\t{\n");
    WriteInclude("empty.sc", "");
    WriteInclude("folder/x.sc", "");
    WriteInclude("self.sc", Reference("self.sc"));
    Texts texts;
    texts.texts["bad.sc"] = "TYPEOF INCLUDE (5)\n{\n\tNONSENSE=\"it's\"\n}\n";
    texts.texts["r-task.sc"] = "TYPEOF TASK (5)\n{\n}\n";
    texts.texts["r-self.sc"] = Reference("r-self.sc");
    texts.texts["ping.sc"] = Reference("pong.sc");
    texts.texts["pong.sc"] = Reference("ping.sc");
    const auto missing = [](const std::string& file) { return "\1include " + file + " not found in repositories\n"; };
    struct {
        const char* why;
        const char* file;
        std::string log;
        std::string output;
        bool onDisk;
        const char* label = "?";
    } rows[] = {
        {"missing", "none.sc", missing("none.sc"),
         "\1Unable to open file " + DiskPath("none.sc") + "\n\3none.sc not loaded\n", false},
        {"another kind", "task.sc", missing("task.sc"), "\1" + DiskPath("task.sc") + " loaded\n\3task.sc not loaded\n",
         true},
        {"cut short", "cut.sc", missing("cut.sc"), "\4" + DiskPath("cut.sc") + " - row 7:\n\n\3cut.sc not loaded\n",
         true},
        {"empty", "empty.sc", missing("empty.sc"),
         "\3File " + DiskPath("empty.sc") + " is empty.\n\3empty.sc not loaded\n", true},
        {"a folder", "folder", missing("folder"),
         "\1Unable to open file " + DiskPath("folder") + "\n\3folder not loaded\n", false},
        {"no parse in a repository", "bad.sc", "\4bad.sc - row 3:\nNONSENSE=\"it\n\3bad.sc not loaded\n", "", false},
        {"another kind in a repository", "r-task.sc", "\1r-task.sc loaded from scenario\n\3r-task.sc not loaded\n", "",
         false},
        {"includes itself", "self.sc", missing("self.sc"),
         missing("self.sc") + "\3self.sc not loaded\n\1" + DiskPath("self.sc") + " loaded\n", true},
        {"includes itself in a repository", "r-self.sc", "\3r-self.sc not loaded\n\1r-self.sc loaded from scenario\n",
         "", false},
        {"two that include one another", "ping.sc",
         "\3ping.sc not loaded\n\1pong.sc loaded from scenario\n\1ping.sc loaded from scenario\n", "", false},
    };
    for (const auto& row : rows) {
        const auto include = ReadReference(row.file);
        ASSERT_TRUE(include) << row.why;
        EXPECT_EQ(include->label, row.label) << row.why;
        EXPECT_EQ(BlocksOf(*include), "") << row.why;
        EXPECT_EQ(host.log.str(), row.log) << row.why;
        EXPECT_EQ(output.str(), row.output) << row.why;
        include->UpdateDisplayTextTree();
        EXPECT_EQ(include->IsValid(), row.onDisk) << row.why;
        EXPECT_EQ(include->displayText, std::string(row.label) + "    (" + row.file + ")" + (row.onDisk ? "" : "?"))
            << row.why;
    }
}

TEST_F(IncludeTest, NestingHasALimit) {
    Texts texts;
    constexpr int kFiles = 1500;
    for (int i = 0; i < kFiles; ++i) texts.texts["f" + std::to_string(i)] = Reference("f" + std::to_string(i + 1));
    texts.texts["f" + std::to_string(kFiles)] = kContent;
    EXPECT_EQ(ReadReference("f0")->label, "?");
    EXPECT_NE(host.log.str().find("\3f1000 not loaded\n"), std::string::npos);
    EXPECT_EQ(ReadReference("f" + std::to_string(kFiles - 998))->label, "Monitor") << "999 within one another";
}

TEST_F(IncludeTest, FilesThatDoubleWithEveryLevelEnd) {
    Texts texts;
    for (int i = 0; i < 40; ++i) {
        const std::string next = "\tISA_INDEX=\"1\"\n\tFILE=\"f" + std::to_string(i + 1) + "\"\n";
        const std::string include = "TYPEOF INCLUDE (1)\n{\n" + next + "}\n";
        texts.texts["f" + std::to_string(i)] =
            "TYPEOF INCLUDE (1)\n{\nTYPEOF SCENARIO (1)\n{\n" + include + include + "}\n}\n";
    }
    texts.texts["f40"] = "TYPEOF INCLUDE (1)\n{\n}\n";
    EXPECT_TRUE(ReadReference("f0"));
    std::size_t loaded = 0;
    const std::string log = host.log.str();
    for (std::size_t at = 0; (at = log.find(" loaded from", at)) != std::string::npos; ++at) ++loaded;
    EXPECT_EQ(loaded, 10000U);
}

// A rule may bear the name of a list of definitions; then what stands in it defines itself, and its copies link to it.
TEST_F(IncludeTest, KeepsWhatItsFileDefines) {
    Texts texts;
    texts.texts["own.sc"] = ScriptText(R"(
        TYPEOF INCLUDE (1)
            TYPEOF RULE (ACTION_LIST)
                TYPEOF ACTION (OWN) LABEL="Of its own" CODE="0"
    )");
    auto include = ReadReference("own.sc");
    ASSERT_TRUE(include);
    const std::unique_ptr<ScenarioItem> copy(include->Clone());
    include.reset();
    auto& action = *static_cast<Include&>(*copy).rules.at(0)->actions.at(0);
    action.UpdateDisplayTextTree();
    EXPECT_EQ(action.displayText, "THEN  Of its own  ()");
    action.Execute();
    EXPECT_EQ(SavedText(*copy).find("OWN"), std::string::npos);
    copy->kind = KindTask; // the class of a copy is that of its kind
    const std::unique_ptr<ScenarioItem> task(copy->Clone());
    EXPECT_FALSE(dynamic_cast<const Include*>(task.get()));
}

TEST_F(IncludeTest, GoesWithAllThatItIncludes) {
    static int destroyed;
    struct Counted : Include {
        explicit Counted(const std::string& number) {
            kind = KindInclude;
            name = number;
        }
        ~Counted() override { ++destroyed; }
    };
    destroyed = 0;
    {
        const auto outer = std::make_unique<Counted>("1");
        Include* innermost = outer.get();
        for (const char* number : {"2", "3", "4"}) {
            auto* below = new Counted(number);
            innermost->AddChild(below, nullptr, true);
            innermost = below;
        }
    }
    EXPECT_EQ(destroyed, 4);
    Counted holder("5"), lent("6");
    holder.AddChild(&lent, nullptr, true);
    holder.DetachChildren();
    EXPECT_EQ(BlocksOf(holder), "");
}

TEST_F(IncludeTest, ReadsInlineContentAndTheFileOnce) {
    struct {
        const char* why;
        const char* body;
        bool reads;
        const char* children;
    } rows[] = {
        {"without the mark FILE is only a name", "\tFILE=\"none.sc\"\n\tTYPEOF RULE (1)\n\t{\n\t}\n", true, "RULE1 "},
        {"FILE twice", "\tFILE=\"a.sc\"\n\tFILE=\"b.sc\"\n", false, ""},
        {"an empty FILE leaves the key open", "\tFILE=\"\"\n\tFILE=\"b.sc\"\n", true, ""},
        {"a reference takes no children", "\tISA_INDEX=\"1\"\n\tTYPEOF RULE (1)\n\t{\n\t}\n", false, ""},
        {"an include takes no include", "\tTYPEOF INCLUDE (1)\n\t{\n\t}\n", false, ""},
        {"nor a condition", "\tTYPEOF CONDITION (AND)\n\t{\n\t}\n", false, ""},
        {"a scenario is read, but has nothing yet to hand over",
         "\tTYPEOF SCENARIO (1)\n\t{\n\t\tTYPEOF RULE (1)\n\t\t{\n\t\t}\n\t}\n", true, ""},
    };
    for (const auto& row : rows) {
        const auto item = host.Read(std::string("TYPEOF INCLUDE (1)\n{\n") + row.body + "}\n");
        ASSERT_EQ(item != nullptr, row.reads) << row.why;
        EXPECT_EQ(item ? BlocksOf(*item) : "", row.children) << row.why;
    }
    EXPECT_EQ(output.str(), "");

    const auto include = host.Read(kContent);
    ASSERT_TRUE(include);
    const std::string saved = SavedText(*include);
    EXPECT_EQ(saved.substr(0, saved.find("\n\n")),
              "\nTYPEOF INCLUDE (5)\n{\n\tLABEL=\"Monitor\"\n\tTASK_KIND=\"0\"\n\tFILE=\"\"");
    const auto again = host.Read(saved);
    ASSERT_TRUE(again);
    EXPECT_EQ(SavedText(*again), saved);
}

TEST_F(IncludeTest, DisplayText) {
    const std::unique_ptr<ScenarioItem> scenario(CreateItem(KindScenario, "1", nullptr));
    struct {
        const char* why;
        ScenarioItem* parent;
        const char* label;
        const char* index;
        bool valid;
        const char* text;
    } rows[] = {
        {"inline", nullptr, "L", "", true, "L"},
        {"below a scenario", scenario.get(), "L", "", true, "L    (f.sc)"},
        {"a reference", nullptr, "L", "1", true, "L    (f.sc)"},
        {"no label", nullptr, "", "", true, "?"},
        {"not valid", scenario.get(), "L", "1", false, "L    (f.sc)?"},
    };
    for (const auto& row : rows) {
        Include include;
        include.parent = row.parent;
        include.label = row.label;
        include.isaIndex = row.index;
        include.fileName = "f.sc";
        include.valid = row.valid;
        include.UpdateDisplayText();
        EXPECT_EQ(include.displayText, row.text) << row.why;
        EXPECT_EQ(include.IsInsideScenario(), row.parent != nullptr) << row.why;
    }
}

TEST_F(IncludeTest, TakesOverWhatAScenarioHolds) {
    const auto scenario = host.ReadAs<ScenarioLib::Scenario>(R"(
        TYPEOF SCENARIO (1)
            TYPEOF INCLUDE (11)
            TYPEOF VARIABLE (2)
            TYPEOF RULE (3)
            TYPEOF TASK (4)
            TYPEOF EVALUATION (5)
            TYPEOF GENERAL_PARAMETERS (6)
    )");
    ASSERT_TRUE(scenario) << host.log.str();
    Include include;
    include.AddChild(scenario.get(), nullptr, true);
    EXPECT_EQ(BlocksOf(include), "INCLUDE11 VARIABLE2 RULE3 TASK4 ");
    EXPECT_EQ(include.includes.front()->parent, &include);
    EXPECT_EQ(BlocksOf(*scenario), "EVALUATION5 GENERAL_PARAMETERS6 ") << "what an include cannot hold stays";
    EXPECT_EQ(scenario->parent, nullptr);
}

TEST_F(IncludeTest, StartsDownItsFirstStates) {
    const auto include = host.ReadAs<Include>(R"(
        TYPEOF INCLUDE (1) LABEL="I"
            TYPEOF TASK (4) LABEL="a"
                TYPEOF TASK (6) LABEL="b"
            TYPEOF TASK (5) LABEL="c"
    )");
    ASSERT_TRUE(include) << host.log.str();
    const auto check = [&](const char* why) {
        EXPECT_EQ(include->currentState, 4) << why;
        EXPECT_EQ(include->nextState, 4) << why;
        EXPECT_EQ(include->transitionPending, 0) << why;
        EXPECT_EQ(include->subTasks[0]->currentState, 6) << why;
        EXPECT_EQ(include->subTasks[0]->nextState, 6) << why;
        EXPECT_EQ(include->subTasks[0]->subTasks[0]->nextState, -1) << why;
        EXPECT_EQ(include->workPath, "work") << why;
    };
    host.log.str("");
    include->Init("work", 0.0);
    check("with a log");
    EXPECT_EQ(host.log.str(), "\2Init task [I]\n\2Init task [a]\n\2Init task [b]\n\2Init task [c]\n"
                              "\2Init task [a]\n\2Init task [b]\n"
                              "\2Init task [b]\n")
        << "each level starts all that lies below it";

    // Without anybody who listens the repetitions are spared, which nothing may show.
    for (Task* task : {static_cast<Task*>(include.get()), include->subTasks[0]})
        task->currentState = task->nextState = -1;
    scenarioLog = nullptr;
    include->Init("work", 0.0);
    check("without a log");
}

} // namespace
