// The item base on its own: kinds, stores, searches, clones, labels, paths.
#include <functional>
#include <typeinfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/DataPath.h>
#include <support/ModelText.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The least that a host must write to have an item of its own.
class Node : public ScenarioItem {
public:
    std::vector<ScenarioItem*> children;

    explicit Node(ScenarioItemKind nodeKind = KindFolder, const std::string& nodeName = "") {
        kind = nodeKind;
        name = nodeName;
    }
    ~Node() override {
        for (ScenarioItem* child : children) delete child;
    }
    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t) const override {
        out.insert(out.end(), children.begin(), children.end());
    }
    void DetachChildren() override { children.clear(); }
    void AddChild(ScenarioItem* child, ScenarioItem*, bool) override {
        children.push_back(child);
        child->parent = this;
    }
    void RemoveChild(ScenarioItem* child) override {
        std::erase(children, child);
        if (child->parent == this) delete child;
    }
    void ReplaceChild(ScenarioItem*, ScenarioItem*) override {}
    void SwapChildren(ScenarioItem*, ScenarioItem*) override {}
};

template <class Item>
std::vector<std::string> NamesOf(const std::vector<Item*>& items) {
    std::vector<std::string> names;
    for (const Item* item : items) names.push_back(item->name);
    return names;
}

std::vector<std::string> ChildNames(const ScenarioItem& item, std::uint32_t kind = 0) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children, kind);
    return NamesOf(children);
}

// A node of the tree by the names on the way down to it.
ScenarioItem* At(ScenarioItem* item, std::initializer_list<const char*> names) {
    for (const char* wanted : names) {
        std::vector<ScenarioItem*> children;
        item->GetChildren(children);
        item = nullptr;
        for (ScenarioItem* child : children)
            if (child->name == wanted) item = child;
        if (!item) return nullptr;
    }
    return item;
}

OwnedItem Make(ScenarioItemKind kind, const std::string& name) { return OwnedItem(CreateItem(kind, name, nullptr)); }

ScenarioItem* Grow(ScenarioItem* parent, ScenarioItemKind kind, const std::string& name,
                   const std::string& label = "") {
    ScenarioItem* item = CreateItem(kind, name, nullptr);
    item->label = label;
    parent->AddChild(item, nullptr, true);
    return item;
}

TEST(Kinds, KeywordsAndFactoryAgree) {
    for (std::uint32_t kind = 1; kind <= KindVariable; ++kind)
        EXPECT_EQ(KindFromKeyword(KindKeyword(kind)), kind) << KindKeyword(kind);
    EXPECT_STREQ(KindKeyword(KindModifier), "MODIFIER");
    EXPECT_STREQ(KindKeyword(KindNone), "");
    EXPECT_STREQ(KindKeyword(28), "");
    for (const char* unknown : {"", "action", "ACTIO", "ACTIONS", "0", "{", "\xFF"})
        EXPECT_EQ(KindFromKeyword(unknown), KindNone) << unknown;

    struct {
        ScenarioItemKind kind;
        const std::type_info& type;
    } const rows[] = {
        {KindAction, typeid(Action)},
        {KindElseAction, typeid(Action)},
        {KindCondition, typeid(Condition)},
        {KindConfig, typeid(Config)},
        {KindCriteria, typeid(Criteria)},
        {KindEnum, typeid(Enum)},
        {KindEnumTab, typeid(EnumTab)},
        {KindEvaluation, typeid(Evaluation)},
        {KindFolder, typeid(Folders)},
        {KindFunction, typeid(Function)},
        {KindGeneralParameters, typeid(GeneralParameters)},
        {KindGroup, typeid(Group)},
        {KindInclude, typeid(Include)},
        {KindParameter, typeid(Parameter)},
        {KindProgram, typeid(Program)},
        {KindReturn, typeid(Parameter)},
        {KindRule, typeid(Rule)},
        {KindScenario, typeid(ScenarioLib::Scenario)},
        {KindTask, typeid(Task)},
        {KindVariable, typeid(Variable)},
    };
    for (const auto& row : rows) {
        const OwnedItem item = Make(row.kind, "n");
        const ScenarioItem& made = *item;
        EXPECT_EQ(typeid(made), row.type) << KindKeyword(row.kind);
        EXPECT_EQ(item->kind, row.kind);
        EXPECT_EQ(item->name, "n");
    }
}

TEST(Kinds, TheContextWatchesTasksAndRules) {
    struct Watcher : ScenarioItemObserver {
        void OnItemEvent(ScenarioItemObservable*, std::uint32_t) override {}
    } first, second;
    ItemLoadContext context{&first, &second};
    for (std::uint32_t kind : {KindCriteria, KindEvaluation, KindInclude, KindScenario, KindTask}) {
        const OwnedItem item(CreateItem(kind, "", &context));
        EXPECT_THAT(item->observers, ElementsAre(&first)) << KindKeyword(kind);
    }
    EXPECT_THAT(OwnedItem(CreateItem(KindRule, "", &context))->observers, ElementsAre(&second));
    EXPECT_THAT(OwnedItem(CreateItem(KindVariable, "", &context))->observers, IsEmpty());
}

TEST(Observers, AreToldInOrderAndAsOftenAsTheyWereAdded) {
    struct Recorder : ScenarioItemObserver {
        std::vector<std::pair<const Recorder*, std::uint32_t>>* log = nullptr;
        void OnItemEvent(ScenarioItemObservable*, std::uint32_t event) override { log->emplace_back(this, event); }
    } a, b;
    std::vector<std::pair<const Recorder*, std::uint32_t>> log;
    a.log = b.log = &log;
    Node node;
    EXPECT_EQ(node.GetObservableId(), 0xFFFFFFFFu);
    for (Recorder* recorder : {&a, &b, &a}) node.AddObserver(recorder);
    node.RemoveObserver(&a);
    node.NotifyObservers(7);
    EXPECT_THAT(log, ElementsAre(std::pair(&b, 7u), std::pair(&a, 7u)));
}

TEST(ChildStore, PlacesBesideTheReferenceOrAtAnEnd) {
    struct {
        const char* why;
        const char* reference;
        bool after;
        std::vector<std::string> expected;
    } const rows[] = {
        {"behind the reference", "b", true, {"a", "b", "new", "c"}},
        {"before the reference", "b", false, {"a", "new", "b", "c"}},
        {"behind the last", "c", true, {"a", "b", "c", "new"}},
        {"no reference, after", nullptr, true, {"a", "b", "c", "new"}},
        {"no reference, not after", nullptr, false, {"new", "a", "b", "c"}},
        {"a stranger as reference, after", "?", true, {"a", "b", "c", "new"}},
        {"a stranger as reference, not after", "?", false, {"new", "a", "b", "c"}},
    };
    const std::pair<ScenarioItemKind, ScenarioItemKind> lists[] = {
        {KindFolder, KindFolder},      {KindConfig, KindFolder},       {KindTask, KindVariable},
        {KindTask, KindRule},          {KindTask, KindTask},           {KindRule, KindVariable},
        {KindRule, KindCondition},     {KindRule, KindAction},         {KindRule, KindElseAction},
        {KindFunction, KindParameter}, {KindCondition, KindCondition}, {KindEvaluation, KindCriteria},
    };
    for (const auto& [list, kind] : lists) {
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(KindKeyword(list)) + " " + KindKeyword(kind) + ": " + row.why);
            const OwnedItem parent = Make(list, "p");
            for (const char* name : {"a", "b", "c"}) Grow(parent.get(), kind, name);
            Node stranger;
            ScenarioItem* reference = row.reference ? At(parent.get(), {row.reference}) : nullptr;
            if (row.reference && !reference) reference = &stranger;
            ScenarioItem* added = CreateItem(kind, "new", nullptr);
            parent->AddChild(added, reference, row.after);
            EXPECT_EQ(ChildNames(*parent), row.expected);
            EXPECT_EQ(added->parent, parent.get());
            const OwnedItem old(At(parent.get(), {"b"}));
            parent->ReplaceChild(CreateItem(kind, "d", nullptr), old.get());
            parent->SwapChildren(added, At(parent.get(), {"d"}));
            std::vector<std::string> swapped = row.expected;
            for (std::string& name : swapped) name = name == "new" ? "d" : name == "b" ? "new" : name;
            EXPECT_EQ(ChildNames(*parent), swapped);
            parent->RemoveChild(added);
            std::erase(swapped, "new");
            EXPECT_EQ(ChildNames(*parent, kind), swapped);
            std::vector<OwnedItem> rest;
            for (const std::string& name : swapped) rest.emplace_back(At(parent.get(), {name.c_str()}));
            parent->DetachChildren();
            EXPECT_THAT(ChildNames(*parent), IsEmpty());
        }
    }
}

TEST(ChildStore, RemovingDestroysOnlyItsOwn) {
    static int destroyed;
    destroyed = 0;
    struct Counted : Node {
        ~Counted() override { ++destroyed; }
    };
    const OwnedItem parent = Make(KindFolder, "p");
    auto* own = new Counted;
    Counted lent;
    parent->AddChild(own, nullptr, true);
    parent->AddChild(&lent, nullptr, true);
    lent.parent = nullptr;
    parent->RemoveChild(&lent);
    EXPECT_EQ(destroyed, 0);
    parent->RemoveChild(own);
    EXPECT_EQ(destroyed, 1);
    parent->RemoveChild(&lent); // no longer here
    EXPECT_EQ(destroyed, 1);

    for (int i = 0; i < 3; ++i) parent->AddChild(new Counted, nullptr, true);
    parent->RemoveAllChildren();
    EXPECT_EQ(destroyed, 4);
}

TEST(ChildStore, ReplacesEveryPositionAndSwapsTwo) {
    const OwnedItem owned = Make(KindFolder, "p");
    auto& parent = static_cast<Folders&>(*owned);
    ScenarioItem* a = Grow(&parent, KindFolder, "a");
    ScenarioItem* b = Grow(&parent, KindFolder, "b");
    parent.children.push_back(a);
    parent.SwapChildren(a, b);
    EXPECT_THAT(ChildNames(parent), ElementsAre("b", "a", "a"));
    const OwnedItem stranger = Make(KindFolder, "s");
    parent.SwapChildren(a, stranger.get());
    EXPECT_THAT(ChildNames(parent), ElementsAre("b", "a", "a"));

    ScenarioItem* c = CreateItem(KindFolder, "c", nullptr);
    parent.ReplaceChild(c, a);
    EXPECT_THAT(ChildNames(parent), ElementsAre("b", "c", "c"));
    EXPECT_EQ(c->parent, &parent);
    EXPECT_EQ(a->parent, &parent); // not destroyed, and not told
    delete a;

    parent.ReplaceChild(stranger.get(), a);
    EXPECT_EQ(stranger->parent, &parent); // even without a position
    parent.DetachChildren();
    delete b;
    delete c;
}

// A scenario with two includes, and beside it a file that nobody includes.
OwnedItem FileTree() {
    return ReadScript(R"(
        TYPEOF SCENARIO (main) FILE="main.sc"
            TYPEOF INCLUDE (one) FILE="one.sc"
                TYPEOF VARIABLE (5) LABEL="one's"
                TYPEOF TASK (0)
                    TYPEOF VARIABLE (6)
            TYPEOF INCLUDE (two) FILE="two.sc"
                TYPEOF VARIABLE (5) LABEL="two's"
            TYPEOF VARIABLE (1)
            TYPEOF TASK (0)
                TYPEOF VARIABLE (7)
                TYPEOF RULE (0)
    )");
}

TEST(FindItem, ObeysTheScope) {
    const OwnedItem tree = FileTree();
    ASSERT_TRUE(tree);
    ScenarioItem* rule = At(tree.get(), {"0"})->FindFirstOfKind(KindRule);
    static_cast<Rule*>(rule)->variables.push_back(static_cast<Variable*>(CreateItem(KindVariable, "9", nullptr)));

    struct {
        const char* why;
        std::initializer_list<const char*> from;
        const char* name;
        const char* scope;
        const char* found; // label, or null for nothing
    } const rows[] = {
        {"the first in document order", {}, "5", "", "one's"},
        {"only the file of that name", {}, "5", "two.sc", "two's"},
        {"deep inside the file", {}, "6", "one.sc", ""},
        {"not in another file", {}, "6", "two.sc", nullptr},
        {"a scenario is open to every scope", {}, "7", "two.sc", ""},
        {"from within the file", {"one", "0"}, "6", "one.sc", ""},
        {"from within another file", {"one", "0"}, "6", "two.sc", nullptr},
        {"from a task of the scenario", {"0"}, "7", "nowhere", ""},
        {"the variables of a rule are hidden", {}, "9", "", nullptr},
        {"upper and lower case, and blanks, count", {}, "5 ", "", nullptr},
    };
    for (const auto& row : rows) {
        ScenarioItem* from = At(tree.get(), row.from);
        const ScenarioItem* constFrom = from;
        ScenarioItem* hit = from->FindItem(KindVariable, row.name, row.scope);
        EXPECT_EQ(hit, constFrom->FindItem(KindVariable, row.name, row.scope)) << Why(row);
        ASSERT_EQ(hit != nullptr, row.found != nullptr) << Why(row);
        if (hit) {
            EXPECT_EQ(hit->label, row.found) << Why(row);
        }
    }
    // Without a file scope above, a scoped search finds nothing, not even the item itself.
    Node lone(KindTask, "t");
    EXPECT_EQ(lone.FindItem(KindTask, "t", "f"), nullptr);
    EXPECT_EQ(lone.FindItem(KindTask, "t", ""), &lone);
}

TEST(FindItemUpward, SeesSiblingsAndNothingBesideTheParent) {
    Node root(KindFolder, "root");
    ScenarioItem* beside = Grow(&root, KindFolder, "beside parent");
    ScenarioItem* parent = Grow(&root, KindFolder, "parent");
    ScenarioItem* self = Grow(parent, KindFolder, "self");
    ScenarioItem* sibling = Grow(parent, KindFolder, "sibling");
    ScenarioItem* nephew = Grow(sibling, KindFolder, "nephew");
    ScenarioItem* child = Grow(self, KindFolder, "child");
    const ScenarioItem* constSelf = self;
    EXPECT_EQ(self->FindItemUpward(KindFolder, "self"), self);
    EXPECT_EQ(self->FindItemUpward(KindFolder, "nephew"), nephew);
    EXPECT_EQ(constSelf->FindItemUpward(KindFolder, "nephew"), nephew);
    EXPECT_EQ(self->FindItemUpward(KindFolder, "beside parent"), nullptr);
    EXPECT_EQ(self->FindItemUpward(KindFolder, "child"), nullptr);
    EXPECT_EQ(self->FindItemUpward(KindFolder, "parent"), nullptr);
    EXPECT_EQ(parent->FindItemUpward(KindFolder, "beside parent"), beside);
    EXPECT_EQ(child->FindItemUpward(KindFolder, "sibling"), nullptr);
    EXPECT_EQ(root.FindItemUpward(KindFolder, "self"), nullptr);
}

TEST(Collecting, KeepsDuplicatesAndStopsAtIncludes) {
    const OwnedItem tree = FileTree();
    const ScenarioItem& constTree = *tree;
    const auto collect = [&](bool includeSelf, bool cross) {
        std::vector<ScenarioItem*> out;
        std::vector<const ScenarioItem*> constOut;
        tree->CollectItems(KindVariable, "5", out, includeSelf, cross);
        constTree.CollectItems(KindVariable, "5", constOut, includeSelf, cross);
        EXPECT_EQ(NamesOf(out), NamesOf(constOut));
        return out.size();
    };
    EXPECT_EQ(collect(true, true), 2u);
    EXPECT_EQ(collect(true, false), 0u);

    std::vector<ScenarioItem*> self;
    tree->CollectItems(KindScenario, "main", self, false, true);
    EXPECT_THAT(self, IsEmpty());
    tree->CollectItemsOfKind(self, KindScenario, false, true);
    EXPECT_THAT(self, ElementsAre(tree.get())); // of its own kind it is always appended

    std::vector<const ScenarioItem*> all;
    constTree.CollectItemsOfKind(all, KindNone, false, false);
    EXPECT_THAT(NamesOf(all), testing::UnorderedElementsAre("1", "0", "7", "0"));
    all.clear();
    constTree.CollectItemsOfKind(all, KindNone, true, true);
    EXPECT_EQ(all.size(), 11u);
}

TEST(Collecting, GoesByLabelAmongSiblings) {
    Node root;
    // Some are alike in their first eight bytes, some in their first sixteen.
    for (const char* label : {"b", "rule number 2", "B", "rule number 1 of more", "", "\xC3\xA4", "rule number 10",
                              "rule number 1 of many", "a", "rule number 1"})
        Grow(&root, KindVariable, label, label);
    std::vector<ScenarioItem*> out;
    root.CollectItemsOfKind(out, KindVariable, true, true);
    EXPECT_THAT(NamesOf(out), ElementsAre("", "B", "a", "b", "rule number 1", "rule number 1 of many",
                                          "rule number 1 of more", "rule number 10", "rule number 2", "\xC3\xA4"));
}

TEST(Collecting, GivesTheParametersOfACallTwice) {
    Node root;
    ScenarioItem* call = Grow(&root, KindFunction, "f");
    Grow(call, KindParameter, "x");
    Grow(call, KindParameter, "y");
    std::vector<ScenarioItem*> out;
    root.CollectItemsOfKind(out, KindParameter, true, true);
    EXPECT_THAT(NamesOf(out), testing::UnorderedElementsAre("x", "x", "y", "y"));
    out.clear();
    call->CollectItemsOfKind(out, KindParameter, true, true);
    EXPECT_THAT(NamesOf(out), testing::UnorderedElementsAre("x", "y"));
}

TEST(CollectVisibleItems, PutsTheOutermostLevelFirst) {
    Node root(KindFolder, "root");
    Grow(&root, KindVariable, "r1");
    Grow(&root, KindVariable, "r2");
    ScenarioItem* include = Grow(&root, KindInclude, "i");
    include->fileName = "i.sc";
    ScenarioItem* task = Grow(&root, KindTask, "t");
    Grow(task, KindVariable, "t1");
    ScenarioItem* inner = Grow(task, KindTask, "u");
    Grow(inner, KindVariable, "u1");
    Grow(inner, KindVariable, "u2");
    ScenarioItem* inside = Grow(include, KindTask, "v");
    Grow(inside, KindVariable, "v1");

    const auto visible = [](const ScenarioItem* from, const char* name, const char* scope) {
        std::vector<ScenarioItem*> out;
        from->CollectVisibleItems(KindVariable, out, name, scope);
        return NamesOf(out);
    };
    // The root is a host's item that ignores the filter, so its other children come along.
    EXPECT_THAT(visible(inner, "", ""), ElementsAre("r1", "r2", "i", "t", "t1", "u1", "u2"));
    EXPECT_THAT(visible(inner, "u2", ""), ElementsAre("u2"));
    EXPECT_THAT(visible(inside, "", ""), ElementsAre("v1")); // an include is a border
    EXPECT_THAT(visible(inside, "", "i.sc"), ElementsAre("v1"));
    EXPECT_THAT(visible(inside, "", "other.sc"), IsEmpty());
    EXPECT_THAT(visible(inner, "t1", "i.sc"), IsEmpty()); // no file scope above
}

TEST(Labels, AreMadeUniqueByUnderscoresInFront) {
    struct {
        const char* why;
        std::vector<const char*> others;
        const char* label;
        const char* expected;
    } const rows[] = {
        {"free", {"b"}, "a", "a"},
        {"taken once", {"a"}, "a", "_a"},
        {"the next one taken too", {"a", "_a"}, "a", "__a"},
        {"a gap is used", {"a", "__a"}, "a", "_a"},
        {"an empty label counts", {""}, "", "_"},
    };
    for (const auto& row : rows) {
        const OwnedItem task = Make(KindTask, "0");
        for (const char* other : row.others) Grow(task.get(), KindVariable, "1", other);
        ScenarioItem* variable = Grow(task.get(), KindVariable, "2", row.label);
        EXPECT_EQ(variable->MakeUniqueLabel(), std::string(row.label) == row.expected) << Why(row);
        EXPECT_EQ(variable->label, row.expected) << Why(row);
    }
}

TEST(Walks, FirstHitInDocumentOrder) {
    const OwnedItem tree = FileTree();
    EXPECT_EQ(tree->FindFirstOfKind(KindVariable)->label, "one's");
    EXPECT_EQ(tree->FindFirstOfKind(KindScenario), tree.get());
    EXPECT_EQ(tree->FindFirstOfKind(KindAction), nullptr);
    EXPECT_EQ(tree->FindByLabel("two's")->parent->name, "two");
    EXPECT_EQ(tree->FindByLabel("two"), nullptr);
    EXPECT_EQ(tree->GetFirstChild()->name, "one");
    EXPECT_EQ(tree->FindFirstOfKind(KindVariable)->GetFirstChild(), nullptr);
    ScenarioItem* deep = At(tree.get(), {"one", "0", "6"});
    EXPECT_TRUE(tree->ContainsItem(deep));
    EXPECT_FALSE(At(tree.get(), {"two"})->ContainsItem(deep));
    EXPECT_TRUE(deep->ContainsItem(deep));

    EXPECT_EQ(FindFileScope(deep)->name, "one");
    EXPECT_EQ(FindFileScope(tree.get()), tree.get());
    EXPECT_EQ(GetTreeRoot(deep), tree.get());
    EXPECT_EQ(GetModelRoot(deep), tree.get());
    EXPECT_EQ(FindOwningUnit(deep)->name, "one");
    EXPECT_EQ(FindOwningUnit(nullptr), nullptr);
    Node lone;
    EXPECT_EQ(FindFileScope(&lone), nullptr);
    EXPECT_EQ(GetModelRoot(&lone), &lone);
    EXPECT_EQ(FindOwningUnit(&lone), nullptr);
    const RootModel model(R"(
        TYPEOF FOLDER (model)
    )");
    EXPECT_EQ(GetModelRoot(deep), model.Get());
}

TEST(Clone, CopiesTheTreeAndMakesFlagsPlain) {
    const OwnedItem root = Make(KindFolder, "root");
    root->label = "L";
    root->isSelected = "1";
    root->isExpanded = "yes";
    root->fileName = "f";
    root->resolvedPath = "/a//b/c";
    root->hostWord = 42;
    root->hostWordBefore = root->hostWordAfter = 43;
    root->displayText = "old";
    Grow(root.get(), KindGroup, "g", "M");
    const OwnedItem copy(root->Clone());
    EXPECT_EQ(copy->isSelected, "1");
    EXPECT_EQ(copy->isExpanded, "0");
    EXPECT_EQ(copy->isaIndex, "0");
    EXPECT_EQ(copy->fileName, "f");
    EXPECT_EQ(copy->resolvedPath, "/a\\b\\c");
    EXPECT_EQ(copy->hostWord, 42u);
    EXPECT_EQ(copy->hostWordBefore + copy->hostWordAfter, 0u);
    EXPECT_EQ(copy->displayText, "");
    EXPECT_EQ(copy->parent, nullptr);
    EXPECT_EQ(copy->GetFirstChild()->parent, copy.get());
    EXPECT_EQ(SavedText(*copy), SavedText(*root)); // "0" is not written
}

TEST(Display, ChildrenComeFirst) {
    struct Recorder : Node {
        std::vector<std::string>* log;
        Recorder(const char* nodeName, std::vector<std::string>* nameLog) : Node(KindFolder, nodeName), log(nameLog) {}
        void UpdateDisplayText() override {
            Node::UpdateDisplayText();
            log->push_back(name);
        }
    };
    std::vector<std::string> log;
    Recorder root("root", &log);
    root.label = "text";
    auto* child = new Recorder("child", &log);
    root.AddChild(child, nullptr, true);
    child->AddChild(new Recorder("grandchild", &log), nullptr, true);
    root.UpdateDisplayTextTree();
    EXPECT_THAT(log, ElementsAre("grandchild", "child", "root"));
    EXPECT_EQ(root.displayText, "text");
}

TEST(Paths, AreNormalised) {
    struct {
        const char* in;
        const char* out;
    } const rows[] = {
        {"", ""},
        {"a/b\\c", "a\\b\\c"},
        {"/a/b", "/a\\b"},
        {"//a", "/\\a"},
        {"\\\\server//share", "\\\\server\\share"},
        {"\\\\\\\\a", "\\\\a"},
        {"a\\\\\\b//", "a\\b\\"},
        {"/", "/"},
        {"\\/", "\\\\"},
    };
    for (const auto& row : rows) {
        std::string path = row.in;
        NormalizePath(path);
        EXPECT_EQ(path, row.out) << row.in;
    }
    std::string deep(5000, '/');
    NormalizePath(deep);
    EXPECT_EQ(deep, "/\\");

    EXPECT_EQ(FileNameOf("a\\b/c.sc"), "c.sc");
    EXPECT_EQ(FileNameOf("c.sc"), "c.sc");
    EXPECT_EQ(FileNameOf("a/"), "");
    EXPECT_EQ(FileNameOf(nullptr), "");
    EXPECT_EQ(ParameterFileOf("x.sc"), "x.par");
    EXPECT_EQ(ParameterFileOf("scene.xyz"), "scene.xpar");
    EXPECT_EQ(ParameterFileOf("x"), "par");
    EXPECT_EQ(ParameterFileOf(""), "");
}

TEST(Paths, AreResolvedOnTheDataPath) {
    const DataPath data;
    data.Write("data/script/include/a b.sc", "x");
    const auto resolved = [](const char* file, std::string directory) {
        ResolveDataPath(file, directory);
        return directory;
    };
    EXPECT_EQ(resolved("a b.sc", "data/script/include"), data.Normal("data/script/include/a b.sc"));
    EXPECT_EQ(resolved("none.sc", "data/script/include"), data.Normal("data/script/include/none.sc"));
    EXPECT_EQ(resolved(nullptr, "data/script"), data.Normal("data/script"));
}

// What a caller can bring about, by the label under which people in the field know it.
TEST(ItemTreeDeathTest, BrokenExpectationsEndTheProcess) {
    const auto withNullChild = [](const std::function<void(ScenarioItem&)>& act) {
        return [act] {
            Node node(KindFolder, "n");
            node.children.push_back(nullptr);
            act(node);
        };
    };
    const auto besideNullChild = [](const std::function<void(ScenarioItem&)>& act) {
        return [act] {
            Node node(KindFolder, "n");
            ScenarioItem* child = Grow(&node, KindFolder, "c");
            node.children.push_back(nullptr);
            act(*child);
        };
    };
    std::vector<ScenarioItem*> out;
    std::vector<const ScenarioItem*> constOut;
    struct {
        const char* site;
        std::function<void()> act;
    } const rows[] = {
        {"ScenarioItem:122", [] { CreateItem(KindNone, "", nullptr); }},
        {"ScenarioItem:122", [] { CreateItem(KindModifier, "", nullptr); }},
        {"ScenarioItem:122", [] { CreateItem(28, "", nullptr); }},
        {"ScenarioItem:445", withNullChild([](ScenarioItem& n) { n.Clone(); })},
        {"ScenarioItem:757", withNullChild([](ScenarioItem& n) { SavedText(n); })},
        {"ScenarioItem:779", withNullChild([](ScenarioItem& n) { n.UpdateDisplayTextTree(); })},
        {"ScenarioItem:862", withNullChild([](ScenarioItem& n) { n.FindItem(KindTask, "x", ""); })},
        {"ScenarioItem:909", withNullChild([](const ScenarioItem& n) { n.FindItem(KindTask, "x", ""); })},
        {"ScenarioItem:957", besideNullChild([](ScenarioItem& n) { n.FindItemUpward(KindTask, "x"); })},
        {"ScenarioItem:996", besideNullChild([](const ScenarioItem& n) { n.FindItemUpward(KindTask, "x"); })},
        {"ScenarioItem:1050", withNullChild([&](ScenarioItem& n) { n.CollectItemsOfKind(out, KindTask, true, true); })},
        {"ScenarioItem:1086",
         withNullChild([&](const ScenarioItem& n) { n.CollectItemsOfKind(constOut, KindTask, true, true); })},
        {"ScenarioItem:1129", withNullChild([&](ScenarioItem& n) { n.CollectItems(KindTask, "x", out, true, true); })},
        {"ScenarioItem:1152",
         withNullChild([&](const ScenarioItem& n) { n.CollectItems(KindTask, "x", constOut, true, true); })},
        {"ScenarioItem:1183", withNullChild([](ScenarioItem& n) { n.FindFirstOfKind(KindTask); })},
        {"ScenarioItem:1366", withNullChild([](const ScenarioItem& n) { n.ContainsItem(nullptr); })},
        {"ScenarioItem:1422", withNullChild([](ScenarioItem& n) { n.FindByLabel("x"); })},
        {"ScenarioItem:1442",
         withNullChild([&](const ScenarioItem& n) { n.CollectVisibleItems(KindTask, out, "", ""); })},
        {"ScenarioItem:466", [] { LoadScenarioFile(nullptr, nullptr, false); }},
        {"core/include/scenario/ScenarioItem:394", [] { ScenarioTextStream stream(nullptr, 0); }},
        {"core/include/scenario/ScenarioItem:251", [] { Folders().AddChild(nullptr, nullptr, true); }},
        {"core/include/scenario/ScenarioItem:251", [] { Config().AddChild(nullptr, nullptr, true); }},
    };
    for (const auto& row : rows) EXPECT_DEATH(row.act(), std::string("Assertion failed: ") + row.site + "\n");
}

} // namespace
