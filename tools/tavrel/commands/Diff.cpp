#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>

#include "../Describe.h"
#include "../Installation.h"
#include "../ScenarioFile.h"
#include "../Scripts.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

// One difference. A row is 0 where the thing is not there.
struct Difference {
    std::string change; // "added", "removed", "moved", "changed"
    std::string what;   // "name", "description", "parameter", "declaration", "script", "item"
    std::string name;   // id or way in the tree
    std::string script; // that holds it; empty outside of scenario files
    std::string before; // empty for what is only there or not
    std::string after;
    std::uint32_t rowBefore = 0;
    std::uint32_t rowAfter = 0;
};

using Rows = std::vector<std::uint32_t>; // of the file, by those of a text

// A text tree with what its comparison asks again and again.
struct Node {
    const TextItem* item;
    std::string way;
    std::string content; // all that stands in it, as one text
    std::vector<Node> children;
};

Node NodeOf(const TextItem& item, const std::string& above) {
    Node node{&item, above.empty() ? item.Title() : above + " / " + item.Title(), "", {}};
    std::string content = item.kind + '\n' + item.name + '\n';
    for (const TextAttribute& attribute : item.attributes) content += attribute.key + '=' + attribute.value + '\n';
    for (const TextItem& child : item.children) {
        node.children.push_back(NodeOf(child, node.way));
        content += node.children.back().content;
    }
    // The content of a deep tree would grow with each level.
    node.content = fmt::format("{:016x}{:08x}}}", std::hash<std::string>{}(content), content.size());
    return node;
}

// The positions of the longest run of `numbers` that grows: what stays, while the rest has moved.
std::set<std::size_t> LongestGrowing(const std::vector<std::size_t>& numbers) {
    std::vector<std::size_t> ends; // position of the smallest last number for each length
    std::vector<std::size_t> before(numbers.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto place = std::lower_bound(ends.begin(), ends.end(), numbers[i],
                                            [&](std::size_t end, std::size_t number) { return numbers[end] < number; });
        if (place != ends.begin()) before[i] = *(place - 1);
        if (place == ends.end())
            ends.push_back(i);
        else
            *place = i;
    }
    std::set<std::size_t> stay;
    for (std::size_t i = ends.empty() ? numbers.size() : ends.back(); i != numbers.size(); i = before[i])
        stay.insert(i);
    return stay;
}

// Compares two texts item by item.
class TreeComparison {
public:
    TreeComparison(const Node& a, const Rows* rowsOfA, const Node& b, const Rows* rowsOfB, std::string scriptName)
        : rowsA(rowsOfA), rowsB(rowsOfB), script(std::move(scriptName)) {
        if (a.item->kind == b.item->kind && a.item->name == b.item->name) {
            Compare(a, b);
        } else {
            removed.push_back(&a);
            added.push_back(&b);
        }
        PairMoved();
        for (const Node* node : removed) Add("removed", *node, "", "", node->item->row, 0);
        for (const Node* node : added) Add("added", *node, "", "", 0, node->item->row);
    }

    std::vector<Difference> differences;

private:
    static std::uint32_t RowIn(const Rows* rows, std::uint32_t row) {
        return row == 0 || !rows ? row : (*rows)[std::min<std::size_t>(row, rows->size()) - 1];
    }

    void Add(const std::string& change, const Node& node, const std::string& before, const std::string& after,
             std::uint32_t rowBefore, std::uint32_t rowAfter) {
        differences.push_back(
            {change, "item", node.way, script, before, after, RowIn(rowsA, rowBefore), RowIn(rowsB, rowAfter)});
    }

    void Compare(const Node& a, const Node& b) {
        if (a.content == b.content) return;
        CompareAttributes(a, b);
        const std::vector<std::optional<std::size_t>> partners = Partners(a.children, b.children);
        std::vector<std::size_t> places, which;
        for (std::size_t i = 0; i < partners.size(); ++i)
            if (partners[i]) {
                places.push_back(*partners[i]);
                which.push_back(i);
            }
        const std::set<std::size_t> stay = LongestGrowing(places);
        for (std::size_t i = 0; i < which.size(); ++i) {
            const Node& before = a.children[which[i]];
            const Node& after = b.children[places[i]];
            if (stay.count(i) == 0) Add("moved", after, "", "", before.item->row, after.item->row);
            Compare(before, after);
        }
        std::set<std::size_t> taken(places.begin(), places.end());
        for (std::size_t i = 0; i < partners.size(); ++i)
            if (!partners[i]) removed.push_back(&a.children[i]);
        for (std::size_t i = 0; i < b.children.size(); ++i)
            if (taken.count(i) == 0) added.push_back(&b.children[i]);
    }

    void CompareAttributes(const Node& a, const Node& b) {
        const auto byKey = [](const TextItem& item) {
            std::map<std::string, const TextAttribute*> attributes;
            for (const TextAttribute& attribute : item.attributes) attributes.emplace(attribute.key, &attribute);
            return attributes;
        };
        const auto before = byKey(*a.item), after = byKey(*b.item);
        const auto add = [&](const std::string& key, const TextAttribute* one, const TextAttribute* other) {
            Difference difference{"changed",
                                  "item",
                                  b.way + " / " + key,
                                  script,
                                  one ? one->value : "",
                                  other ? other->value : "",
                                  RowIn(rowsA, one ? one->row : 0),
                                  RowIn(rowsB, other ? other->row : 0)};
            if (!one) difference.change = "added";
            if (!other) difference.change = "removed";
            differences.push_back(std::move(difference));
        };
        for (const TextAttribute& attribute : a.item->attributes) {
            const auto other = after.find(attribute.key);
            if (other == after.end())
                add(attribute.key, &attribute, nullptr);
            else if (other->second->value != attribute.value)
                add(attribute.key, &attribute, other->second);
        }
        for (const TextAttribute& attribute : b.item->attributes)
            if (before.count(attribute.key) == 0) add(attribute.key, nullptr, &attribute);
    }

    // For each item of `a` its partner in `b`: first those that are alike, then those of one kind and name, in order.
    static std::vector<std::optional<std::size_t>> Partners(const std::vector<Node>& a, const std::vector<Node>& b) {
        std::vector<std::optional<std::size_t>> partners(a.size());
        std::vector<bool> taken(b.size(), false);
        const auto pair = [&](const auto& keyOf) {
            std::map<std::string, std::vector<std::size_t>> places; // the last one first
            for (std::size_t i = b.size(); i-- > 0;)
                if (!taken[i]) places[keyOf(b[i])].push_back(i);
            for (std::size_t i = 0; i < a.size(); ++i) {
                if (partners[i]) continue;
                const auto found = places.find(keyOf(a[i]));
                if (found == places.end() || found->second.empty()) continue;
                partners[i] = found->second.back();
                taken[found->second.back()] = true;
                found->second.pop_back();
            }
        };
        pair([](const Node& node) { return node.content; });
        pair([](const Node& node) { return node.item->kind + '\n' + node.item->name; });
        return partners;
    }

    // What is gone here and the same there has moved.
    void PairMoved() {
        for (auto node = removed.begin(); node != removed.end();) {
            const auto other = std::find_if(added.begin(), added.end(), [&](const Node* candidate) {
                return candidate->content == (*node)->content;
            });
            if (other == added.end()) {
                ++node;
                continue;
            }
            differences.push_back({"moved", "item", (*other)->way, script, (*node)->way, (*other)->way,
                                   RowIn(rowsA, (*node)->item->row), RowIn(rowsB, (*other)->item->row)});
            added.erase(other);
            node = removed.erase(node);
        }
    }

    const Rows* rowsA;
    const Rows* rowsB;
    const std::string script;
    std::vector<const Node*> removed;
    std::vector<const Node*> added;
};

// Things that are told apart by a key: parameters by id, declarations by what they vary. Several of one key are taken
// in their order.
struct Keyed {
    std::string key;
    std::string value;
    std::uint32_t row;
};

void CompareKeyed(const std::string& what, const std::vector<Keyed>& a, const std::vector<Keyed>& b,
                  std::vector<Difference>& out) {
    std::map<std::string, std::vector<const Keyed*>> left;
    for (auto entry = b.rbegin(); entry != b.rend(); ++entry) left[entry->key].push_back(&*entry);
    std::vector<const Keyed*> fromA, fromB;
    std::set<const Keyed*> known;
    for (const Keyed& before : a) {
        std::vector<const Keyed*>& candidates = left[before.key];
        if (candidates.empty()) {
            out.push_back({"removed", what, before.key, "", before.value, "", before.row, 0});
            continue;
        }
        const Keyed* after = candidates.back();
        candidates.pop_back();
        known.insert(after);
        fromA.push_back(&before);
        fromB.push_back(after);
        if (before.value != after->value)
            out.push_back({"changed", what, before.key, "", before.value, after->value, before.row, after->row});
    }
    for (const Keyed& after : b)
        if (known.count(&after) == 0) out.push_back({"added", what, after.key, "", "", after.value, 0, after.row});
    std::vector<std::size_t> places;
    for (const Keyed* after : fromB) places.push_back(static_cast<std::size_t>(after - b.data()));
    const std::set<std::size_t> stay = LongestGrowing(places);
    for (std::size_t i = 0; i < places.size(); ++i)
        if (stay.count(i) == 0) out.push_back({"moved", what, fromA[i]->key, "", "", "", fromA[i]->row, fromB[i]->row});
}

std::vector<Keyed> ParametersOf(const ScenarioFile& file) {
    std::vector<Keyed> keyed;
    for (const FileParameter& parameter : file.Parameters())
        keyed.push_back(
            {parameter.id,
             fmt::format("{}{}{} ({}{}{})", parameter.value, parameter.unit.empty() ? "" : " ", parameter.unit,
                         parameter.type, parameter.longName.empty() ? "" : ", ", parameter.longName),
             parameter.row});
    return keyed;
}

std::vector<Keyed> DeclarationsOf(const ScenarioFile& file) {
    std::vector<Keyed> keyed;
    for (const FileDeclaration& declaration : file.Declarations())
        keyed.push_back({declaration.parameterId,
                         fmt::format("{}{}{}: {}", declaration.name, declaration.description.empty() ? "" : ", ",
                                     declaration.description, declaration.domain),
                         declaration.row});
    return keyed;
}

void CompareScripts(const ScenarioFile& a, const ScenarioFile& b, std::vector<Difference>& out) {
    const std::vector<FileScript> before = a.Scripts(), after = b.Scripts();
    std::vector<bool> taken(after.size(), false);
    for (const FileScript& script : before) {
        const Rows rowsA = a.RowsOf(script);
        std::size_t other = 0;
        while (other < after.size() && (taken[other] || after[other].name != script.name)) ++other;
        if (other == after.size()) {
            out.push_back({"removed", "script", script.name, "", "", "", rowsA.front(), 0});
            continue;
        }
        taken[other] = true;
        if (script.text.Text() == after[other].text.Text()) continue;
        const Rows rowsB = b.RowsOf(after[other]);
        const TextItem topA = ReadTextTree(script.text.Text(), fmt::format("{}, script {}", a.Path(), script.name));
        const TextItem topB =
            ReadTextTree(after[other].text.Text(), fmt::format("{}, script {}", b.Path(), script.name));
        const Node nodeA = NodeOf(topA, ""), nodeB = NodeOf(topB, "");
        const TreeComparison comparison(nodeA, &rowsA, nodeB, &rowsB, script.name);
        out.insert(out.end(), comparison.differences.begin(), comparison.differences.end());
    }
    for (std::size_t i = 0; i < after.size(); ++i)
        if (!taken[i]) out.push_back({"added", "script", after[i].name, "", "", "", 0, b.RowsOf(after[i]).front()});
}

std::vector<Difference> CompareScenarios(const std::string& pathA, const std::string& pathB) {
    const ScenarioFile a(pathA), b(pathB);
    std::vector<Difference> differences;
    if (a.Name() != b.Name()) differences.push_back({"changed", "name", "name", "", a.Name(), b.Name(), 1, 1});
    if (a.Description() != b.Description())
        differences.push_back({"changed", "description", "description", "", a.Description(), b.Description(), 1, 1});
    CompareKeyed("parameter", ParametersOf(a), ParametersOf(b), differences);
    CompareKeyed("declaration", DeclarationsOf(a), DeclarationsOf(b), differences);
    CompareScripts(a, b, differences);
    return differences;
}

std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Difference> CompareTexts(const std::string& pathA, const std::string& pathB) {
    const TextItem topA = ReadTextTree(BytesOf(pathA), pathA), topB = ReadTextTree(BytesOf(pathB), pathB);
    const Node a = NodeOf(topA, ""), b = NodeOf(topB, "");
    return TreeComparison(a, nullptr, b, nullptr, "").differences;
}

// The file that an operand names; no template is opened.
std::string FileOf(Context& context, const std::string& operand) {
    if (!IsFileOnDisk(context, operand)) return Installation(context).Open(operand).scenario->getFilePath();
    const std::string reason = ReasonNotToOpen(operand);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", operand, reason)};
    return operand;
}

void PrintText(Output& out, const std::string& fileA, const std::string& fileB,
               const std::vector<Difference>& differences) {
    for (const Difference& difference : differences) {
        std::string place;
        if (difference.rowBefore > 0) place += fmt::format(" {}:{}", ShownText(fileA), difference.rowBefore);
        if (difference.rowAfter > 0) place += fmt::format(" {}:{}", ShownText(fileB), difference.rowAfter);
        out.Print("{} {} {}{}\n   {}\n", out.Strong(difference.change), difference.what, OneLine(difference.name),
                  difference.script.empty() ? "" : fmt::format(" in script {}", OneLine(difference.script)), place);
        if (!difference.before.empty() || difference.change == "changed")
            out.Print("    - {}\n", OneLine(difference.before));
        if (!difference.after.empty() || difference.change == "changed")
            out.Print("    + {}\n", OneLine(difference.after));
    }
}

Json DifferencesJson(const std::string& fileA, const std::string& fileB, const std::vector<Difference>& differences) {
    Json list = Json::array();
    const auto row = [](std::uint32_t number) { return number == 0 ? Json() : Json(number); };
    for (const Difference& difference : differences)
        list.push_back({{"change", difference.change},
                        {"what", difference.what},
                        {"name", difference.name},
                        {"script", difference.script.empty() ? Json() : Json(difference.script)},
                        {"before", difference.before},
                        {"after", difference.after},
                        {"rowA", row(difference.rowBefore)},
                        {"rowB", row(difference.rowAfter)}});
    return {{"a", fileA}, {"b", fileB}, {"differences", list}};
}

} // namespace

int RunDiff(Context& context) {
    const std::string a = FileOf(context, context.arguments.Text("A"));
    const std::string b = FileOf(context, context.arguments.Text("B"));
    const bool scenarioA = KindOfFile(a) == FileKind::Scenario, scenarioB = KindOfFile(b) == FileKind::Scenario;
    if (scenarioA != scenarioB)
        throw Failure{ExitUsage,
                      fmt::format("{} and {} cannot be compared: one is a scenario file, the other is none", a, b)};
    const std::vector<Difference> differences = scenarioA ? CompareScenarios(a, b) : CompareTexts(a, b);
    if (context.arguments.Has("--json"))
        context.out.Print(DumpJson(DifferencesJson(a, b, differences)));
    else
        PrintText(context.out, a, b, differences);
    return differences.empty() ? context.status : std::max<int>(context.status, ExitFindings);
}

} // namespace tavrel
