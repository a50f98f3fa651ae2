// Definitions and instances: the link by name, model and user attributes, validity, unique names.
#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <optional>
#include <random>
#include <set>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/ModelText.h>
#include <support/RandomTest.h>

namespace {

using testing::ElementsAre;

// A root model in which "Go" stands once directly and once in a sub-folder.
constexpr const char* kModel = R"(
    TYPEOF FOLDER (model)
        TYPEOF FOLDER (PARAMETER_LIST)
        TYPEOF FOLDER (lists)
            TYPEOF FOLDER (ACTION_LIST)
                TYPEOF FOLDER (basic)
                    TYPEOF ACTION (Stop) LABEL="in the sub-folder"
                TYPEOF ACTION (Go) LABEL="first"
                TYPEOF FOLDER (later)
                    TYPEOF ACTION (Go)
            TYPEOF FOLDER (CONDITION_LIST)
                TYPEOF CONDITION (Go)
)";

Token* FirstToken(ScenarioItem& root, ScenarioItemKind kind) {
    return dynamic_cast<Token*>(root.FindFirstOfKind(kind));
}

TEST(Link, FindsTheFirstDefinitionOfItsKindAndName) {
    const RootModel model(kModel);
    ASSERT_TRUE(model.Get());
    const ScenarioItem* actions = model.Get()->FindItem(KindFolder, "ACTION_LIST", "");
    struct {
        const char* why;
        const char* call;
        const char* label; // of the definition; null for a refused text
    } const rows[] = {
        {"directly in the list", "TYPEOF ACTION (Go)", "first"},
        {"in a sub-folder", "TYPEOF ACTION (Stop)", "in the sub-folder"},
        {"an ELSE_ACTION is an ACTION in the list", "TYPEOF ELSE_ACTION (Go)", "first"},
        {"the kind counts", "TYPEOF CONDITION (Go)", ""},
        {"the kind counts, to no avail", "TYPEOF CONDITION (Stop)", nullptr},
        {"upper and lower case count", "TYPEOF ACTION (go)", nullptr},
    };
    for (const auto& row : rows) {
        const ReadResult read = ReadExactly(std::string("TYPEOF FOLDER (script)\n{\n") + row.call + "\n{\n}\n}\n");
        ASSERT_EQ(read.item != nullptr, row.label != nullptr) << Why(row);
        if (!read.item) {
            EXPECT_EQ(read.row, 5u) << Why(row);
            continue;
        }
        const auto* call = static_cast<const Token*>(read.item->GetFirstChild());
        EXPECT_NE(call->model, call) << Why(row);
        EXPECT_EQ(call->model->label, row.label) << Why(row);
        EXPECT_EQ(call->label, "") << Why(row);
    }

    // An item in a sub-folder finds itself, unless an earlier one has its name: then it is an instance of that one.
    std::vector<const ScenarioItem*> all;
    actions->CollectItemsOfKind(all, KindAction, false, true);
    for (const ScenarioItem* item : all) {
        const auto* token = static_cast<const Token*>(item);
        EXPECT_EQ(token->model == token, token->parent->name != "later") << token->parent->name;
    }
}

TEST(Link, AFolderOfTheListsNameMakesDefinitionsAnywhere) {
    const RootModel model(kModel);
    const OwnedItem script = ReadScript(R"(
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (Unheard) LABEL="mine"
    )");
    ASSERT_TRUE(script);
    EXPECT_EQ(FirstToken(*script, KindAction)->model, FirstToken(*script, KindAction));
}

TEST(Link, AnInstanceTakesNoLabel) {
    const RootModel model(kModel);
    const ReadResult read = ReadExactly("TYPEOF FOLDER (s)\n{\nTYPEOF ACTION (Go)\n{\nLABEL=\"x\"\n}\n}\n");
    EXPECT_FALSE(read.item);
    EXPECT_EQ(read.row, 5u);
}

TEST(Link, HoldsWithinATextWhileNoRootModelIsSet) {
    const OwnedItem own = ReadScript(R"(
        TYPEOF FOLDER (script)
            TYPEOF FOLDER (ACTION_LIST)
                TYPEOF ACTION (Go)
            TYPEOF ACTION (Go)
    )");
    ASSERT_TRUE(own);
    EXPECT_EQ(static_cast<Token*>(own->FindItem(KindFolder, "script", "")->GetFirstChild()->GetFirstChild()),
              static_cast<Token*>((static_cast<Folders&>(*own)).children[1])->model);
    // What comes later in the same text is not known yet.
    EXPECT_FALSE(ReadScript(R"(
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF RULE (0)
                TYPEOF ELSE_ACTION (Go)
            TYPEOF ACTION (Go)
    )"));
}

// Trees of folders, lists, rules and calls, in which every reading refers to something that stands earlier.
class Generator {
public:
    explicit Generator(unsigned seed) : random(seed) {}

    std::string Model() {
        Begin("FOLDER", "root");
        for (int i = 0; i < 4; ++i) AddFolder(1, "x");
        for (std::size_t list = 0; list < 3; ++list)
            if (!isOpened[list]) AddFolder(1, kLists[list].name); // a missing list ends the process
        for (int i = 0; i < 10; ++i) AddCall("root");
        End();
        return std::move(text);
    }
    // Calls of what the model has.
    std::string Script() {
        Begin("FOLDER", "script");
        for (int i = 0; i < 20; ++i) AddRule("script");
        End();
        return std::move(text);
    }
    // Puts other names in their place, without regard to what is taken.
    void Rename(ScenarioItem& model) {
        for (std::size_t list = 0; list < 3; ++list) {
            std::vector<ScenarioItem*> calls;
            model.FindItem(KindFolder, kLists[list].name, "")
                ->CollectItemsOfKind(calls, KindFromKeyword(kLists[list].word), false, true);
            for (ScenarioItem* call : calls)
                if (Choose(3) == 0) call->name = Name();
        }
    }

private:
    struct List {
        const char* name;
        const char* word;
    };
    static constexpr List kLists[] = {
        {"ACTION_LIST", "ACTION"}, {"CONDITION_LIST", "CONDITION"}, {"FUNCTION_LIST", "FUNCTION"}};

    std::size_t Choose(std::size_t count) { return random() % count; }
    std::string Name() { return std::string(1, static_cast<char>('a' + Choose(12))); }
    void Begin(const std::string& word, const std::string& name) { text += "TYPEOF " + word + " (" + name + ")\n{\n"; }
    void End() { text += "}\n"; }

    void AddFolder(int depth, std::string name) {
        std::size_t list = 3;
        if (name == "x" && Choose(2) == 0) name = kLists[Choose(3)].name;
        for (std::size_t i = 0; i < 3; ++i)
            if (name == kLists[i].name) list = i;
        const bool isFirst = list < 3 && !isOpened[list];
        if (isFirst) isOpened[list] = isInside[list] = true;
        Begin("FOLDER", name);
        for (std::size_t i = Choose(6); i > 0; --i) {
            switch (depth < 6 ? Choose(3) : 1 + Choose(2)) {
            case 0:
                AddFolder(depth + 1, "x");
                break;
            case 1:
                AddCall(name);
                break;
            default:
                AddRule(name);
                break;
            }
        }
        End();
        if (isFirst) isInside[list] = false;
    }
    // A call where it may stand: below the first list, directly in any, or of a name that the first list has.
    void AddCall(const std::string& parent) {
        const std::size_t list = Choose(3);
        const std::string name = Name();
        if (!isInside[list] && parent != kLists[list].name && !known[list].contains(name)) return;
        if (isInside[list]) known[list].insert(name);
        Begin(kLists[list].word, name);
        End();
    }
    void AddRule(const std::string&) {
        Begin("RULE", "0");
        for (std::size_t i = Choose(4); i > 0; --i) {
            const std::size_t list = Choose(2);
            const std::string name = Name();
            const bool isElse = list == 0 && Choose(2) == 0;
            if (!known[list].contains(name) && (isElse || !isInside[list])) continue;
            if (isInside[list] && !isElse) known[list].insert(name);
            Begin(isElse ? "ELSE_ACTION" : kLists[list].word, name);
            End();
        }
        End();
    }

    std::mt19937 random;
    std::string text;
    bool isOpened[3] = {};
    bool isInside[3] = {};
    std::set<std::string> known[3];
};

const char* ListOfKind(std::uint32_t kind) {
    switch (kind) {
    case KindAction:
    case KindElseAction:
        return "ACTION_LIST";
    case KindCondition:
        return "CONDITION_LIST";
    case KindFunction:
        return "FUNCTION_LIST";
    default:
        return nullptr;
    }
}

// What the search of the tree gives for `item`.
const ScenarioItem* Definition(const ScenarioItem& item, const ScenarioItem& root) {
    const std::uint32_t kind = item.kind == KindElseAction ? static_cast<std::uint32_t>(KindAction) : item.kind;
    return root.FindItem(KindFolder, ListOfKind(item.kind), "")->FindItem(kind, item.name, "");
}

int CheckLinks(const ScenarioItem& item, const ScenarioItem& root) {
    int checked = 0;
    if (const char* list = ListOfKind(item.kind)) {
        const auto& token = static_cast<const Token&>(item);
        EXPECT_EQ(token.model, item.parent->name == list ? &token : Definition(item, root)) << item.name;
        ++checked;
    }
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (const ScenarioItem* child : children) checked += CheckLinks(*child, root);
    return checked;
}

// The links are found by an index; they have to be those of a search through the whole tree.
TEST(Link, FastAndPlainSearchAgree) {
    int checked = 0;
    int refused = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        Generator generator(seed);
        std::optional<RootModelUse> use;
        if (seed % 2 == 0) use.emplace();
        const std::string modelText = generator.Model();
        OwnedItem root = std::move(ReadExactly(modelText).item);
        ASSERT_TRUE(root) << "seed " << seed << "\n" << modelText;
        checked += CheckLinks(*root, *root);

        const RootModel model(std::move(root));
        const std::string scriptText = generator.Script();
        for (int round = 0; round < 3; ++round) {
            const ReadResult script = ReadExactly(scriptText);
            if (script.item) checked += CheckLinks(*script.item, *model.Get());
            if (!script.item) ++refused;
            ASSERT_TRUE(script.item || round > 0) << "seed " << seed << " row " << script.row;
            // Every other time with an index that all texts share, until a change ends it.
            use.reset();
            generator.Rename(*model.Get());
            if (seed % 2 == 0) use.emplace();
        }
    }
    EXPECT_GT(checked, 5000);
    EXPECT_GT(refused, 50); // a name that went with the renaming must not be found any more
}

// Finds by another name what it holds.
struct AliasFolder : Folders {
    AliasFolder() { kind = KindFolder; }
    ScenarioItem* FindItem(std::uint32_t itemKind, const std::string& itemName, const std::string& scope) override {
        return const_cast<ScenarioItem*>(std::as_const(*this).FindItem(itemKind, itemName, scope));
    }
    const ScenarioItem* FindItem(std::uint32_t itemKind, const std::string& itemName,
                                 const std::string& scope) const override {
        return Folders::FindItem(itemKind, itemName == "a" ? "b" : itemName, scope);
    }
};

// A repository that, when it is asked, changes the root model and reads texts, some of them into the model.
class MeddlingRepository : public IncludeRepository {
public:
    MeddlingRepository(Folders& rootModel, unsigned seed) : model(rootModel), random(seed) {
        RegisterIncludeRepository(this);
    }
    ~MeddlingRepository() override { UnregisterIncludeRepository(this); }

    int asked = 0;
    bool Contains(const std::string&) override {
        ++asked;
        if (Choose(2) == 0) Meddle();
        return true;
    }
    std::string Read(const std::string&) override {
        for (std::size_t left = Choose(3); left > 0; --left) Meddle();
        return "TYPEOF INCLUDE (i)\n{\nFILE=\"f\"\n}\n";
    }
    std::size_t Choose(std::size_t count) { return random() % count; }
    // A rule of calls.
    std::string Rule() {
        std::string text = "TYPEOF RULE (0)\n{\n";
        calls.clear();
        for (int left = 2; left > 0; --left) {
            calls.push_back({Choose(2) == 0 ? KindAction : KindCondition, Name()});
            text += "TYPEOF " + std::string(KindKeyword(calls.back().kind)) + " (" + calls.back().name + ")\n{\n}\n";
        }
        return text + "}\n";
    }
    struct Call {
        ScenarioItemKind kind;
        std::string name;
    };
    std::vector<Call> calls; // of the last rule
    // `rule` is that of the calls, or null if its text was refused, as it has to be when a definition is missing.
    void Check(const ScenarioItem* rule, const std::vector<Call>& of) {
        const bool isRight = std::all_of(of.begin(), of.end(), [this](const Call& call) {
            return model.FindItem(KindFolder, ListOfKind(call.kind), "")->FindItem(call.kind, call.name, "");
        });
        EXPECT_EQ(rule != nullptr, isRight);
        rule ? checked += CheckLinks(*rule, model) : ++refused;
    }

    int changes = 0;
    int checked = 0;
    int refused = 0;

private:
    std::string Name() { return std::string(1, static_cast<char>('a' + Choose(8))); }
    Folders& AnyList() {
        return static_cast<Folders&>(
            *model.FindItem(KindFolder, Choose(2) == 0 ? "ACTION_LIST" : "CONDITION_LIST", ""));
    }
    ScenarioItem* NewDefinition(const Folders& list) {
        return CreateItem(list.name == "ACTION_LIST" ? KindAction : KindCondition, Name(), nullptr);
    }
    void ReadAndCheck() {
        const std::string text = Rule();
        const OwnedItem rule = std::move(ReadExactly(text).item);
        Check(rule.get(), calls);
    }
    void Meddle() {
        ++changes;
        Folders& list = AnyList();
        ScenarioItem* any = list.children.empty() ? nullptr : list.children[Choose(list.children.size())];
        switch (Choose(8)) {
        case 0:
            list.AddChild(NewDefinition(list), any, Choose(2) == 0);
            break;
        case 1:
            if (any) list.RemoveChild(any);
            break;
        case 2:
            if (any) any->name = Name();
            break;
        case 3:
            if (any) {
                list.ReplaceChild(NewDefinition(list), any);
                delete any;
            }
            break;
        case 4: {
            const std::string text = "TYPEOF " + std::string(list.name == "ACTION_LIST" ? "ACTION" : "CONDITION") +
                                     " (" + Name() + ")\n{\n}\n";
            ScenarioTextStream stream(text.c_str(), text.size());
            LoadScenarioText(stream, &list, nullptr, nullptr, false);
            break;
        }
        case 5: {
            // A list that comes before the one that was found so far.
            ScenarioItem* first = CreateItem(KindFolder, list.name, nullptr);
            first->AddChild(NewDefinition(list), nullptr, true);
            model.AddChild(first, nullptr, false);
            break;
        }
        case 6:
            if (Choose(4) == 0) {
                auto* alias = new AliasFolder;
                alias->AddChild(NewDefinition(list), nullptr, true);
                list.AddChild(alias, nullptr, false);
            } else if (any) {
                taken.emplace_back(list.children.back());
                list.children.pop_back(); // the vector is a public field
            }
            break;
        default:
            ReadAndCheck();
            break;
        }
        if (Choose(2) == 0) ReadAndCheck();
    }

    Folders& model;
    std::mt19937 random;
    std::vector<OwnedItem> taken;
};

// What a repository does while it is asked is seen by all that is read after it, in the text under way as well.
TEST(Link, WhatARepositoryChangesIsFoundAtOnce) {
    RandomDuration duration(1000);
    int changes = 0;
    int checked = 0;
    int refused = 0;
    for (unsigned seed = RandomSeed(); !duration.IsOver() && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("TAVREL_RANDOM_SEED=" + std::to_string(seed));
        const RootModel model(R"(
            TYPEOF FOLDER (m)
                TYPEOF FOLDER (FUNCTION_LIST)
                TYPEOF FOLDER (ACTION_LIST)
                    TYPEOF ACTION (a)
                    TYPEOF ACTION (b)
                    TYPEOF FOLDER (more)
                        TYPEOF ACTION (c)
                TYPEOF FOLDER (CONDITION_LIST)
                    TYPEOF CONDITION (a)
                    TYPEOF CONDITION (d)
        )");
        std::optional<RootModelUse> use;
        if (seed % 2 == 0) use.emplace();
        MeddlingRepository repository(*scenarioRootModel, seed);
        for (int text = 0; text < 4; ++text) {
            const std::string rule = repository.Rule();
            const auto calls = repository.calls;
            const int before = repository.asked;
            const std::string first = "TYPEOF RULE (1)\n{\nTYPEOF ACTION (b)\n{\n}\n}\n";
            const OwnedItem item =
                std::move(ReadExactly("TYPEOF SCENARIO (s)\n{\nFILE=\"f\"\n" + first +
                                      "TYPEOF INCLUDE (i)\n{\nISA_INDEX=\"1\"\nFILE=\"g\"\n}\n" + rule + "}\n")
                              .item);
            if (repository.asked == before) continue; // "b" is missing by now
            repository.Check(item ? static_cast<Task&>(*item).rules.back() : nullptr, calls);
        }
        changes += repository.changes;
        checked += repository.checked;
        refused += repository.refused;
    }
    EXPECT_GT(changes, 1000);
    EXPECT_GT(checked, 500);
    EXPECT_GT(refused, 50);
}

TEST(Link, AFolderOfTheHostFindsInItsOwnWay) {
    const RootModel model("TYPEOF FOLDER (m)\n    TYPEOF FOLDER (ACTION_LIST)\n        TYPEOF ACTION (c)");
    auto* alias = new AliasFolder;
    AddNew(*alias, KindAction, "b");
    model.Get()->FindItem(KindFolder, "ACTION_LIST", "")->AddChild(alias, nullptr, true);
    for (const bool isInUse : {false, true}) {
        std::optional<RootModelUse> use;
        if (isInUse) use.emplace();
        const OwnedItem item = std::move(ReadExactly(ScriptText("TYPEOF ACTION (a)")).item);
        ASSERT_TRUE(item);
        EXPECT_EQ(static_cast<Token&>(*item).model, alias->children[0]);
    }
}

TEST(Link, TheIndexOfAUseEndsWithIt) {
    std::optional<RootModelUse> use(std::in_place);
    const RootModel model(kModel);
    const auto isFound = [](const std::string& name) {
        return ReadExactly(ScriptText("TYPEOF ACTION (" + name + ")")).item != nullptr;
    };
    EXPECT_TRUE(isFound("Stop"));
    use.reset();
    model.Get()->FindItem(KindAction, "Stop", "")->SetName("Halt");
    use.emplace();
    EXPECT_TRUE(isFound("Halt"));
    EXPECT_FALSE(isFound("Stop"));
}

TEST(Link, AnIndexIsNotTakenForThatOfALaterModelInTheSamePlace) {
    const RootModelUse use;
    {
        const RootModel model("TYPEOF FOLDER (m)\n    TYPEOF FOLDER (ACTION_LIST)\n        TYPEOF ACTION (Old)");
        ASSERT_TRUE(ReadExactly(ScriptText("TYPEOF ACTION (Old)")).item);
    }
    OwnedItem made(CreateItem(KindFolder, "m", nullptr)); // where the other one stood
    ScenarioItem* list = AddNew(*made, KindFolder, "ACTION_LIST");
    AddNew(*list, KindAction, "Go");
    scenarioRootModel = static_cast<Folders*>(made.get());
    EXPECT_TRUE(ReadExactly(ScriptText("TYPEOF ACTION (Go)")).item);
    EXPECT_FALSE(ReadExactly(ScriptText("TYPEOF ACTION (Old)")).item);
    scenarioRootModel = nullptr;
}

TEST(Link, ADefinitionAddedToTheModelByATextIsFoundInTheNextTextOfAUse) {
    const RootModel model(kModel);
    const RootModelUse use;
    EXPECT_FALSE(ReadExactly(ScriptText("TYPEOF ACTION (New)")).item);
    const std::string text = "TYPEOF ACTION (New)\n{\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ASSERT_TRUE(
        LoadScenarioText(stream, model.Get()->FindItem(KindFolder, "ACTION_LIST", ""), nullptr, nullptr, false));
    EXPECT_TRUE(ReadExactly(ScriptText("TYPEOF ACTION (New)")).item);
}

// The index of a tree is made when it is read, which is before it becomes the root model.
TEST(Link, ADefinitionAddedByATextToAModelToBeIsFoundWithinAUse) {
    const RootModelUse use;
    OwnedItem folder = ReadScript(kModel);
    ASSERT_TRUE(folder);
    const std::string text = "TYPEOF ACTION (New)\n{\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ASSERT_TRUE(LoadScenarioText(stream, folder->FindItem(KindFolder, "ACTION_LIST", ""), nullptr, nullptr, false));
    const RootModel model(std::move(folder));
    EXPECT_TRUE(ReadExactly(ScriptText("TYPEOF ACTION (New)")).item);
}

TEST(Variables, AreReadWhereARuleHoldsTheDefinitionOfACall) {
    const std::string text = ScriptText(R"(
        TYPEOF FOLDER (script)
            TYPEOF FOLDER (ACTION_LIST)
                TYPEOF RULE (0)
                    TYPEOF ACTION (Go)
            TYPEOF RULE (1)
                TYPEOF ACTION (Go)
    )");
    ASSERT_TRUE(ReadExactly(text).item);
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    EXPECT_TRUE(OwnedItem(LoadScenarioVariables(stream, nullptr, nullptr)));
}

// Rules are read and checked like all else, and are gone afterwards.
TEST(Variables, AreReadWithoutTheRules) {
    const RootModel model(kModel);
    const auto script = [](const std::string& action) {
        return ScriptText(R"(
            TYPEOF SCENARIO (1)
                TYPEOF VARIABLE (1) LABEL="one"
                TYPEOF TASK (2)
                    TYPEOF VARIABLE (3) LABEL="two"
                    TYPEOF RULE (4) LABEL="a rule"
                        TYPEOF CONDITION (Go)
                        TYPEOF ACTION (Stop)
                        TYPEOF ELSE_ACTION ()" +
                          action + R"()
                    TYPEOF RULE (5)
                TYPEOF RULE (6)
                    TYPEOF ACTION (Go)
        )");
    };
    const auto read = [](const std::string& text, std::uint32_t& row) {
        ScenarioTextStream stream(text.c_str(), text.size() + 1);
        OwnedItem item(LoadScenarioVariables(stream, nullptr, nullptr));
        row = stream.line;
        return item;
    };
    std::uint32_t row = 0;
    const std::int32_t rules = Task::RuleCount();
    const OwnedItem item = read(script("Go"), row);
    EXPECT_EQ(Task::RuleCount(), rules);
    ASSERT_TRUE(item);
    std::vector<ScenarioItem*> all;
    item->CollectItemsOfKind(all, KindNone, true, true);
    std::vector<std::string> names;
    for (const ScenarioItem* one : all) names.push_back(KindKeyword(one->kind) + (" " + one->name));
    EXPECT_THAT(names, ElementsAre("SCENARIO 1", "TASK 2", "VARIABLE 3", "VARIABLE 1"));

    const std::string wrong = script("Fly");
    EXPECT_FALSE(read(wrong, row));
    EXPECT_EQ(row, ReadExactly(wrong).row);
}

// What stands in rules is checked without items where it can be, and nobody may notice.
class RandomRules {
public:
    explicit RandomRules(unsigned seed) : random(seed) {}

    std::string Text() {
        lines = {"TYPEOF SCENARIO (1)", "{", "TYPEOF VARIABLE (1)", "{", R"(LABEL="one")", R"(VALUE="1")", "}"};
        // An item that passes over what it holds.
        if (Below(12) == 0) {
            Add({"TYPEOF GENERAL_PARAMETERS (1)", "{"});
            for (int rules = 2; rules > 0; --rules) Add({"TYPEOF RULE (1)", "{", "}"});
            Add({"}"});
        }
        for (int rules = 1 + Below(3); rules > 0; --rules) {
            Add({"TYPEOF RULE (" + OneOf({"1", "2", "3", "ACTION_LIST", "CONDITION_LIST"}, 3) + ")", "{"});
            const std::size_t first = lines.size();
            for (int calls = Below(4); calls > 0; --calls) AddCall();
            if (Below(3) == 0) Spoil(first);
            Add({"}"});
        }
        Add({"TYPEOF VARIABLE (2)", "{", R"(LABEL="two")", "}", "}"});
        const std::string end = OneOf({"\n", "\r\n", "\n\n\t"}, 1);
        std::string text;
        for (const std::string& line : lines) text += line + end;
        return text;
    }

private:
    int Below(int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); }
    // One of the first few, nearly always.
    std::string OneOf(const std::vector<std::string>& all, int usual) {
        return all[static_cast<std::size_t>(Below(Below(20) == 0 ? static_cast<int>(all.size()) : usual))];
    }
    void Add(const std::vector<std::string>& more) { lines.insert(lines.end(), more.begin(), more.end()); }
    void AddParameter(const std::string& name) {
        Add({"TYPEOF " + OneOf({"PARAMETER", "RETURN"}, 1) + " (" + name + ")", "{"});
        const std::string kind = OneOf({"USER", "USER", "VARIABLE", "ENUM", "FILE", "FUNCTION", "TASK", ""}, 3);
        Add({"KIND=\"" + kind + "\""});
        Add({"VALUE=\"" + OneOf({"1", "-2.5", "3", "LEFT", "text", "", " 7", "0x", std::string(5000, '7')}, 3) + "\""});
        if (Below(3) > 0) Add({"OWNER_FILE=\"" + OneOf({"", "main"}, 2) + "\""});
        Add({"}"});
    }
    void AddCall() {
        const std::string call =
            OneOf({"ACTION (Go)", "ELSE_ACTION (Go)", "CONDITION (Is)", "ACTION (Turn)", "CONDITION (AND)",
                   "ACTION (Wide)", "ACTION (SNAPSHOT)", "ACTION (PARAMETER_LIST)", "ACTION (Is)", "FUNCTION (Go)"},
                  8);
        Add({"TYPEOF " + call, "{"});
        if (call.find("Is") != std::string::npos && Below(4) == 0) Add({R"(MODIFIER="IS_FALSE")"});
        if (call.find("(Go)") != std::string::npos || call.find("Wide") != std::string::npos) AddParameter("SPEED");
        if (call.find("(Go)") != std::string::npos || call.find("Is") != std::string::npos ||
            call.find("LIST") != std::string::npos)
            AddParameter("COUNT");
        if (call.find("Turn") != std::string::npos) AddParameter("SIDE");
        if (call.find("SNAPSHOT") != std::string::npos) {
            AddParameter("CHANNEL_NAME");
            if (Below(2) == 0) AddParameter("COUNT");
        }
        Add({"}"});
    }
    void Spoil(std::size_t first) {
        if (first == lines.size()) return;
        const auto at =
            lines.begin() + static_cast<std::ptrdiff_t>(first) + Below(static_cast<int>(lines.size() - first));
        const std::vector<std::string> odd = {"{",
                                              "}",
                                              R"(KIND="USER")",
                                              R"(KINDLIST="USER")",
                                              R"(VALUE="1")",
                                              R"(VALUE="2"x)",
                                              R"(VALUE="3)",
                                              R"("VALUE="4")",
                                              R"( VALUE="5")",
                                              R"(VALUE:"6")",
                                              "VALUE=",
                                              R"(OWNER_FILE="a")",
                                              R"(LABEL="x")",
                                              R"(IS_SELECTED="1")",
                                              R"(MODIFIER="IS_TRUE")",
                                              R"(MODIFIER="NEVER")",
                                              "VALUE=\"" + std::string(300, '7') + "\"",
                                              "VALUE=\"" + std::string(5000, '7') + "\"",
                                              "TYPEOF PARAMETER (SPEED)",
                                              "TYPEOF PARAMETER SPEED)",
                                              "TYPEOF PARAMETER (none)",
                                              "TYPEOF ACTION (Go)",
                                              "TYPEOF ACTION\r",
                                              "TYPEOF NONE (Go)",
                                              "VALUE=\"a\tb\""};
        switch (Below(4)) {
        case 0:
            lines.erase(at);
            break;
        case 1:
            lines.insert(at, std::string(*at));
            break;
        case 2:
            std::iter_swap(at, lines.end() - 1);
            break;
        default:
            *at = odd[static_cast<std::size_t>(Below(static_cast<int>(odd.size())))];
            break;
        }
    }

    std::mt19937 random;
    std::vector<std::string> lines;
};

struct VariablesRead {
    std::string saved; // empty for a refused text
    std::uint32_t row = 0;
    std::vector<std::string> told;
    std::string log;
    bool operator==(const VariablesRead&) const = default;
};

VariablesRead ReadWith(decltype(LoadScenarioVariables)* load, const std::string& text) {
    VariablesRead result;
    LoadProblems problems;
    std::ostringstream log;
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    const OwnedItem item(load(stream, &context, &log));
    result.row = stream.line;
    result.told = problems.told;
    result.log = log.str();
    scenarioLog = nullptr;
    if (!item) return result;
    std::vector<ScenarioItem*> rules;
    item->CollectItemsOfKind(rules, KindRule, true, true);
    for (ScenarioItem* rule : rules) rule->parent->RemoveChild(rule);
    result.saved = SavedText(*item);
    return result;
}

TEST(Variables, ComeWithTheSameAnswersAsAWholeText) {
    const RootModel model(R"(
        TYPEOF FOLDER (model)
            TYPEOF FOLDER (ENUMTAB_LIST)
                TYPEOF ENUMTAB (SIDES)
                    TYPEOF ENUM (LEFT)
            TYPEOF FOLDER (PARAMETER_LIST)
                TYPEOF PARAMETER (SPEED) TYPE="FLOAT" KINDLIST="USER VARIABLE FUNCTION"
                TYPEOF PARAMETER (COUNT) TYPE="INTEGER" KINDLIST="USER VARIABLE TASK" MINVALUE="2"
                TYPEOF PARAMETER (SIDE) TYPE="STRING" ENUMTAB="SIDES" KINDLIST="USER ENUM"
                TYPEOF PARAMETER (CHANNEL_NAME) TYPE="STRING" KINDLIST="USER"
            TYPEOF FOLDER (ACTION_LIST)
                TYPEOF ACTION (Go)
                    TYPEOF PARAMETER (SPEED) KIND="USER" VALUE="1"
                    TYPEOF PARAMETER (COUNT) KIND="USER" VALUE="3"
                TYPEOF ACTION (Turn)
                    TYPEOF PARAMETER (SIDE) KIND="ENUM" VALUE="LEFT"
                TYPEOF ACTION (Wide) IS_OVERLOADABLE="1"
                    TYPEOF PARAMETER (COUNT) KIND="USER" VALUE="3"
                TYPEOF ACTION (SNAPSHOT)
                    TYPEOF PARAMETER (CHANNEL_NAME) KIND="USER" VALUE="1"
                    TYPEOF PARAMETER (COUNT) KIND="USER" VALUE="3"
                TYPEOF ACTION (PARAMETER_LIST)
                    TYPEOF PARAMETER (COUNT) TYPE="INTEGER" KINDLIST="USER"
            TYPEOF FOLDER (CONDITION_LIST)
                TYPEOF CONDITION (Is)
                    TYPEOF PARAMETER (COUNT) KIND="USER" VALUE="3"
                TYPEOF CONDITION (AND)
            TYPEOF FOLDER (FUNCTION_LIST)
                TYPEOF FUNCTION (Now)
    )");
    ASSERT_TRUE(model.Get());
    const auto whole = [](ScenarioTextStream& stream, ItemLoadContext* context, std::ostream* log) {
        return LoadScenarioText(stream, nullptr, context, log, false);
    };
    RandomDuration duration(4000);
    int rounds = 0, taken = 0;
    for (unsigned seed = RandomSeed(); !duration.IsOver() && !testing::Test::HasFailure(); ++seed) {
        const std::string text = RandomRules(seed).Text();
        const VariablesRead expected = ReadWith(whole, text);
        const VariablesRead found = ReadWith(LoadScenarioVariables, text);
        EXPECT_TRUE(found == expected) << "seed " << seed << ", row " << found.row << " in place of " << expected.row
                                       << "\n"
                                       << testing::PrintToString(found.told) << " in place of "
                                       << testing::PrintToString(expected.told) << "\n"
                                       << text;
        ++rounds;
        if (!expected.saved.empty()) ++taken;
    }
    EXPECT_GT(taken * 10, rounds * 2) << "the texts are nearly all wrong";
    EXPECT_LT(taken * 10, rounds * 8) << "the texts are nearly all right";
}

TEST(Link, ADefinitionAddedToTheModelByATextIsFoundInTheSameText) {
    const RootModel model(kModel);
    ScenarioItem* actions = model.Get()->FindItem(KindFolder, "ACTION_LIST", "");
    const std::string text = "TYPEOF FOLDER (new)\n{\nTYPEOF ACTION (Turn)\n{\n}\n"
                             "TYPEOF RULE (0)\n{\nTYPEOF ACTION (Turn)\n{\n}\nTYPEOF ELSE_ACTION (Go)\n{\n}\n}\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size());
    ScenarioItem* added = LoadScenarioText(stream, actions, nullptr, nullptr, false);
    ASSERT_TRUE(added);
    CheckLinks(*added, *model.Get());
}

TEST(Attributes, AreSplitBetweenDefinitionAndUser) {
    struct User : Task {
        std::vector<std::string> asked;
        bool LoadModelAttribute(ScenarioTextStream& stream) override {
            asked.push_back("model");
            return Task::LoadModelAttribute(stream);
        }
        bool LoadUserAttribute(ScenarioTextStream& stream) override {
            asked.push_back("user");
            return Task::LoadUserAttribute(stream);
        }
    } token;
    const auto load = [&](const char* line) {
        ScenarioTextStream stream(line, std::string(line).size());
        token.asked.clear();
        return token.LoadAttribute(stream);
    };
    EXPECT_TRUE(load("IS_SELECTED=\"1\""));
    EXPECT_THAT(token.asked, ElementsAre());
    EXPECT_TRUE(load("LABEL=\"x\""));
    EXPECT_THAT(token.asked, ElementsAre("model"));
    EXPECT_TRUE(load("TASK_KIND=\"1\""));
    EXPECT_THAT(token.asked, ElementsAre("model", "user"));
    Task definition;
    token.SetModel(&definition);
    token.label.clear();
    EXPECT_FALSE(load("LABEL=\"x\""));
    EXPECT_THAT(token.asked, ElementsAre("user"));
    EXPECT_EQ(SavedText(token), "\nTYPEOF \n{\n\tIS_SELECTED=\"1\"\n\tTASK_KIND=\"1\"\n}\n");
}

TEST(Validity, ComesFromTheChildrenBottomUp) {
    const OwnedItem tree = ReadScript(R"(
        TYPEOF TASK (0) LABEL="top"
            TYPEOF TASK (1)
                TYPEOF TASK (2)
            TYPEOF TASK (3)
    )");
    auto& top = static_cast<Task&>(*tree);
    Task* leaf = top.subTasks[0]->subTasks[0];
    EXPECT_TRUE(top.IsValid());
    leaf->valid = false;
    EXPECT_TRUE(top.IsValid()); // as of the last update
    top.subTasks[0]->UpdateValidity();
    top.UpdateValidity();
    EXPECT_FALSE(top.IsValid());
    top.UpdateDisplayTextTree(); // refreshes the leaf first
    EXPECT_TRUE(top.IsValid());
    EXPECT_EQ(top.displayText, "top");

    top.mark = leaf->mark = true;
    ResetMarks(&top);
    EXPECT_FALSE(top.mark || leaf->mark);
}

TEST(UniqueNames, AreTheSmallestFreeNumbers) {
    const auto named = [](std::initializer_list<const char*> names) {
        OwnedItem folder(CreateItem(KindFolder, "root", nullptr));
        for (const char* name : names) folder->AddChild(CreateItem(KindTask, name, nullptr), nullptr, true);
        return folder;
    };
    struct {
        const char* why;
        std::initializer_list<const char*> names;
        const char* expected; // of the last one
    } const rows[] = {
        {"unique", {"a", "speed"}, "speed"},
        {"taken", {"speed", "speed"}, "0"},
        {"numbers are taken", {"0", "1", "3", "speed", "speed"}, "2"},
        {"another spelling of a number is none", {"00", "speed", "speed"}, "0"},
        {"a number that is shared", {"0", "0"}, "1"},
    };
    for (const auto& row : rows) {
        const OwnedItem folder = named(row.names);
        auto* last = static_cast<Token*>(static_cast<Folders&>(*folder).children.back());
        last->MakeUniqueName();
        EXPECT_EQ(last->name, row.expected) << Why(row);
    }
    // One after the other, and an instance not at all.
    const OwnedItem folder = named({"speed", "speed", "speed", "speed"});
    const auto& items = static_cast<Folders&>(*folder).children;
    static_cast<Token*>(items[3])->SetModel(static_cast<Token*>(items[0]));
    for (ScenarioItem* item : items) static_cast<Token*>(item)->MakeUniqueName();
    EXPECT_EQ(items[0]->name + items[1]->name + items[2]->name + items[3]->name, "012speed");
}

TEST(UniqueNames, MayRepeatTheHiddenVariableOfARule) {
    Task root;
    root.kind = KindTask;
    auto* rule = new Rule;
    rule->kind = KindRule;
    root.AddChild(rule, nullptr, true);
    for (const char* name : {"0", "a"}) {
        rule->variables.push_back(static_cast<Variable*>(CreateItem(KindVariable, name, nullptr)));
        rule->variables.back()->parent = rule;
    }
    auto* variable = static_cast<Variable*>(CreateItem(KindVariable, "a", nullptr));
    root.AddChild(variable, nullptr, true);
    // "a" is taken by the rule's variable; "0" is taken too, but no search sees it.
    variable->MakeUniqueName();
    EXPECT_EQ(variable->name, "0");
}

TEST(TokenDeathTest, BrokenExpectationsEndTheProcess) {
    const auto withChild = [](ScenarioItem* child, const std::function<void(Task&)>& act) {
        return [child, act] {
            Task task;
            task.subTasks.push_back(static_cast<Task*>(child));
            act(task);
        };
    };
    // A folder among tasks: a host that writes the public fields can bring it about.
    Folders folder;
    folder.kind = KindFolder;
    struct Misfit : Task {
        Misfit() { kind = KindFolder; }
    };
    struct {
        const char* site;
        std::function<void()> act;
    } const rows[] = {
        {"token:160", [] { Misfit().Clone(); }},
        {"token:193", withChild(nullptr, [](Task& task) { task.UpdateDisplayTextTree(); })},
        {"token:221", withChild(nullptr, [](Task& task) { task.UpdateValidity(); })},
        {"token:364", withChild(nullptr, [](Task& task) { Token::ResetMarks(&task); })},
        {"token:275", [] { ReadExactly("TYPEOF RULE (0)\n{\nTYPEOF ACTION (x)\n{\n}\n}\n"); }},
    };
    for (const auto& row : rows) EXPECT_DEATH(row.act(), std::string("Assertion failed: ") + row.site + "\n");

    struct Holder : Task {
        ScenarioItem* odd;
        explicit Holder(ScenarioItem* oddItem) : odd(oddItem) {}
        void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t) const override { out.push_back(odd); }
    };
    EXPECT_DEATH(Holder(&folder).UpdateValidity(), "Assertion failed: token:222\n");
    EXPECT_DEATH(
        {
            Holder holder(&folder);
            Token::ResetMarks(&holder);
        },
        "Assertion failed: token:365\n");
}

TEST(TokenDeathTest, AListenerIsToldOfTheAssertionFirst) {
    struct Printer : ScopedLoadProblemListener {
        void OnLoadProblem(const LoadProblem& problem) override {
            std::cerr << problem.file << "|" << problem.script << "|" << problem.row << "|" << problem.line << "|"
                      << problem.cause << "|" << problem.assertion << std::endl;
        }
    };
    const Printer printer;
    const std::string noList = "TYPEOF RULE (0)\n{\nTYPEOF ACTION (x)\n{\n}\n}\n";
    const std::string file = testing::TempDir() + "no_list.sc";
    std::ofstream(file) << noList;
    EXPECT_DEATH(
        LoadScenarioFile(file.c_str(), nullptr, false),
        "no_list.sc\\|\\|5\\|\\}\\|the model has no folder ACTION_LIST\\|token:275\nAssertion failed: token:275");
    EXPECT_DEATH(
        {
            const LoadTextName name("main");
            ReadExactly("TYPEOF RULE (0)\n{\nTYPEOF TOKEN (x)\n{\n}\n}\n");
        },
        "\\|main\\|4\\|\\{\\|TOKEN is a kind that has a word and no items\\|ScenarioItem:122\n");
}

} // namespace
