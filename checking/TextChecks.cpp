#include "TextChecks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include <scenario/NearestName.h>

namespace TavrelChecking {

namespace {

// As the writer prints a definition.
constexpr std::string_view kWrittenOrder[] = {"UNIT",    "TYPE",     "USAGE",    "ENUMTAB", "FILEDIR",
                                              "FILEEXT", "KINDLIST", "MINVALUE", "MAXVALUE"};

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string Joined(const std::vector<std::string_view>& words) {
    std::string joined;
    for (const std::string_view word : words) joined += (joined.empty() ? "" : " ") + std::string(word);
    return joined;
}

const std::initializer_list<std::string_view> kModifiers = {"IS_TRUE",           "IS_FALSE",          "BECOMES_TRUE",
                                                            "BECOMES_FALSE",     "HAS_BEEN_TRUE",     "HAS_BEEN_FALSE",
                                                            "HAS_BEEN_TRUE_FOR", "HAS_BEEN_FALSE_FOR"};

// Keys are written in capitals; one in small letters is meant for its like.
std::string NearestKey(std::string_view word, const std::vector<std::string>& candidates) {
    std::string capitals(word);
    for (char& c : capitals)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    const bool isSame = std::find(candidates.begin(), candidates.end(), capitals) != candidates.end();
    return isSame ? capitals : NearestName(capitals, candidates);
}

std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates) {
    const std::string near = NearestName(name, candidates);
    return near.empty() ? near : ", did you mean " + Quoted(near);
}

// As boost::lexical_cast takes them, in the classic locale.
bool IsStrictNumber(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789+-.eE") != std::string_view::npos) {
        std::string_view word = text;
        if (word.starts_with('+') || word.starts_with('-')) word.remove_prefix(1);
        std::string lower(word);
        for (char& c : lower)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        // One case throughout, or the usual one of capitals.
        return lower == "inf" || lower == "infinity" || lower == "nan" ||
               (lower.starts_with("nan(") && lower.ends_with(')'));
    }
    std::size_t at = text[0] == '+' || text[0] == '-' ? 1 : 0;
    std::size_t digits = 0;
    const auto skipDigits = [&] {
        std::size_t count = 0;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) ++count;
        return count;
    };
    digits += skipDigits();
    if (at < text.size() && text[at] == '.') {
        ++at;
        digits += skipDigits();
    }
    if (digits == 0) return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
        if (skipDigits() == 0) return false;
    }
    return at == text.size() && std::isfinite(NumberOf(text));
}

bool IsStrictBool(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (text.starts_with('+') || isNegative) text.remove_prefix(1);
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) return false;
    const std::size_t first = std::min(text.find_first_not_of('0'), text.size());
    return first == text.size() || (text.substr(first) == "1" && !isNegative);
}

bool IsStrictWhole(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-") && text.size() > 1) text.remove_prefix(1);
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return false;
    return std::abs(NumberOf(text) + 0.5) <= 2147483648.0;
}

// "%d %f".
bool IsScore(std::string_view text) {
    if (!BeginsWithWholeNumber(text)) return false;
    std::size_t rest = text.find_first_not_of(" \t\n\v\f\r");
    if (text[rest] == '+' || text[rest] == '-') ++rest;
    rest = std::min(text.find_first_not_of("0123456789", rest), text.size());
    return BeginsWithNumber(text.substr(rest));
}

// The place of a call in a call, without scripts of before.
struct Upgrade {
    std::string_view name;
    void (*apply)(std::vector<std::string_view>& given, const std::vector<std::string_view>& wanted);
};

bool HasName(const std::vector<std::string_view>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Calls of older scripts are brought up to their definitions when they are read.
void UpgradeNames(std::string_view call, std::vector<std::string_view>& given,
                  const std::vector<std::string_view>& wanted) {
    const auto append = [&](std::size_t index) {
        if (index < wanted.size()) given.push_back(wanted[index]);
    };
    if (call == "GET_EXPORTED_CHANNEL") {
        if (HasName(given, "USER_DATA_ID") && HasName(wanted, "CHANNEL_ID"))
            *std::find(given.begin(), given.end(), "USER_DATA_ID") = "CHANNEL_ID";
    } else if (call == "IS_VHL_AT_POSITION") {
        if (!HasName(given, "MAP_RADIUS") && HasName(wanted, "MAP_RADIUS")) given.push_back("MAP_RADIUS");
    } else if (call == "SET_IMAGE") {
        if (!HasName(given, "DISPLAY_TIME") && HasName(wanted, "CHANNEL_NAME")) append(6);
    } else if (call == "SNAPSHOT") {
        if (!HasName(given, "SUFFIX") && HasName(wanted, "CHANNEL_NAME")) append(1);
    } else if (call == "ADD_TIME_MARKER") {
        if (!HasName(given, "MARKER_KEYWORDS") && HasName(wanted, "MARKER_NOTE") && wanted.size() > 1)
            given.push_back("MARKER_KEYWORDS");
    } else if (call == "INIT_ANIMATION") {
        const auto vehicle = std::find(given.begin(), given.end(), "VHL_NUMBER_PLUS");
        if (vehicle == given.end() || given.size() < 4 || wanted.size() < 5) return;
        given.erase(given.begin() + 1, given.begin() + 4);
        const auto left = std::find(given.begin(), given.end(), "VHL_NUMBER_PLUS");
        if (left != given.end()) given.erase(left);
        given.insert(given.begin() + (given.empty() ? 0 : 1), wanted[1]);
        append(3);
        append(4);
    }
}

} // namespace

struct TextChecks::Key {
    enum Opens { WhileEmpty, Always, UntilSet, Once };
    std::string_view word;
    Opens opens = WhileEmpty;
};

const std::vector<std::string>& ValueKinds() {
    static const std::vector<std::string> words = {"ENUM",
                                                   "FILE",
                                                   "FUNCTION",
                                                   "TASK",
                                                   "USER",
                                                   "VARIABLE",
                                                   "VEHICLE",
                                                   "PICK",
                                                   "TRAFFIC_LIGHT",
                                                   "BARRIER",
                                                   "ROADSIGN",
                                                   "OBJECT",
                                                   "VHC_INPUT",
                                                   "VHC_OUTPUT",
                                                   "EXPORT_CHANNEL",
                                                   "EXPORT_CHANNEL_CATEGORY",
                                                   "EXPORT_CHANNEL_NAME",
                                                   "TRIGGER",
                                                   "SOURCE",
                                                   "SINK",
                                                   "TRAJECTORY",
                                                   "DRIVER",
                                                   "IMAGE",
                                                   "SOUND"};
    return words;
}

bool IsValueKind(std::string_view word) {
    return std::find(ValueKinds().begin(), ValueKinds().end(), word) != ValueKinds().end();
}

bool IsOfItems(std::string_view valueKind) { return valueKind == "VARIABLE" || valueKind == "TASK"; }

TextChecks::TextChecks(const ScriptTree& scriptTree, const Definitions& knownDefinitions, TextRole textRole)
    : tree(scriptTree), definitions(knownDefinitions), role(textRole) {}

std::vector<Fault> TextChecks::Run() {
    faults = tree.Faults();
    for (std::size_t at = 0; at < faults.size(); ++at)
        if (faults[at].key != Fault::kNoKey) faultsByKey[faults[at].key].push_back(at);
    if (!tree.Root()) return std::move(faults);
    LookAtTop();
    Visit(*tree.Root());
    if (role == TextRole::Model && tree.Root()->kind == KindFolder) LookAtLists();
    LookAtUnknownLines();
    return std::move(faults);
}

// Whether a value that a line is taken for leaves the reader no room for the line of that key which follows.
bool TextChecks::ShutsOut(const Key& key, std::string_view value, const Item& item, std::size_t at) {
    const bool isClosed = (key.opens == Key::WhileEmpty || key.opens == Key::Once) ? !value.empty()
                          : key.opens == Key::UntilSet                             ? value == "1"
                                                                                   : false;
    return isClosed && std::any_of(item.attributes.begin(), item.attributes.end(), [&](const Attribute& attribute) {
               return attribute.key == key.word && attribute.keyBegin > at;
           });
}

// A line that only begins with a key of its item is taken all the same: two signs are passed over, and all up to the
// next quote is the value.
void TextChecks::LookAtUnknownLines() {
    const std::string_view text = tree.Source().View();
    for (std::size_t at = 0; at < faults.size(); ++at) {
        const Item* const item = faults[at].item;
        if (std::string_view(faults[at].rule) != "TV1001" || !item || item->isDropped) continue;
        const std::string_view line = text.substr(faults[at].begin, faults[at].end - faults[at].begin);
        for (const Key& key : KeysOf(*item)) {
            if (!line.starts_with(key.word)) continue;
            if (key.opens == Key::WhileEmpty && !item->Value(key.word).empty() &&
                item->Find(key.word)->keyBegin < faults[at].begin)
                continue;
            const std::size_t after = std::min(faults[at].begin + key.word.size() + 2, text.size());
            const std::size_t quote = text.find('"', after);
            if (quote == std::string_view::npos) break;
            Attribute seen;
            seen.key = key.word;
            seen.keyBegin = faults[at].begin;
            const std::string_view value = text.substr(after, quote - after);
            const bool isTaken = LookAtValue(*item, seen, value, false) && !ShutsOut(key, value, *item, seen.keyBegin);
            faults[at].isTaken = isTaken;
            break;
        }
    }
}

// Where faults stand.

Fault& TextChecks::Add(const char* rule, const Item* item, std::size_t begin, std::size_t end, std::string message) {
    Fault fault;
    fault.rule = rule;
    fault.begin = begin;
    fault.end = end;
    fault.message = std::move(message);
    fault.item = item;
    faults.push_back(std::move(fault));
    return faults.back();
}

Fault& TextChecks::AtName(const char* rule, const Item& item, std::string message) {
    return Add(rule, item.parent, item.nameBegin, item.nameBegin + item.name.size(), std::move(message));
}

Fault& TextChecks::AtHeader(const char* rule, const Item& item, std::string message) {
    return Add(rule, item.parent, item.keywordBegin, item.headerEnd, std::move(message));
}

Fault& TextChecks::AtValue(const char* rule, const Item& item, const Attribute& attribute, std::string message) {
    return Add(rule, &item, attribute.valueBegin, attribute.valueEnd, std::move(message));
}

Fault& TextChecks::AtKey(const char* rule, const Item& item, const Attribute& attribute, std::string message) {
    return Add(rule, &item, attribute.keyBegin, attribute.KeyEnd(), std::move(message));
}

Fault& TextChecks::AtEnd(const char* rule, const Item& item, std::string message) {
    return Add(rule, &item, item.closing, item.closing, std::move(message));
}

void TextChecks::SuggestWord(Fault& fault, std::string_view word, const std::vector<std::string>& candidates) {
    const std::string near = NearestName(word, candidates);
    if (near.empty()) return;
    fault.fixTitle = "replace " + Quoted(word) + " by " + Quoted(near);
    fault.fixBegin = fault.begin;
    fault.fixEnd = fault.end;
    fault.fixText = near;
    fault.fixIsSafe = OnlyOneLetterAway(word, candidates) == near;
}

// Items.

// The header cannot be read as it is meant, and what is read in its place will not do.
void TextChecks::RefuseHeader(const Item& item) { SetTaken(item.begin, false); }

void TextChecks::SetTaken(std::size_t key, bool isTaken) {
    const auto found = faultsByKey.find(key);
    if (found == faultsByKey.end()) return;
    for (const std::size_t at : found->second) faults[at].isTaken = isTaken;
}

void TextChecks::LookAtTop() {
    const Item& root = *tree.Root();
    if (root.isDropped) return;
    const bool isLikeFolder =
        root.kind == KindFolder || root.kind == KindEnumTab || root.kind == KindGroup || root.kind == KindProgram;
    const auto atWord = [&](const std::string& message) -> Fault& {
        isTopWrong = true;
        return Add("TV1021", nullptr, root.keywordBegin, root.keywordBegin + root.keyword.size(), message);
    };
    if (role == TextRole::Model) {
        if (root.kind != KindFolder)
            atWord("a root model is a FOLDER, not a " + std::string(root.keyword)).isTaken = isLikeFolder;
        return;
    }
    if (role == TextRole::SceneScript) {
        if (root.kind != KindScenario)
            atWord("a script of a scenario is a SCENARIO, not a " + std::string(root.keyword)).isTaken = true;
        return;
    }
    if (root.kind != KindInclude && root.kind != KindScenario && root.kind != KindEvaluation)
        atWord("a script file is an INCLUDE, an EVALUATION or a SCENARIO, not a " + std::string(root.keyword)).isTaken =
            true;
}

void TextChecks::Visit(const Item& item) {
    const Item* const parent = item.parent;
    if (parent && !parent->isDropped && item.kind != KindNone && !(item.isDropped && !item.isMalformed)) {
        const Attribute* index = parent->Find("ISA_INDEX");
        const bool isIndexEntry = index && index->value == "1" && index->keyBegin < item.begin;
        item.isMisplaced = !Accepts(parent->kind, isIndexEntry, IsJunction(*parent), item.kind);
        // A condition of a name that is not known may be meant for AND or OR.
        if (parent->kind == KindCondition && !parent->model && item.kind == KindCondition) item.isMisplaced = false;
        if (isTopWrong && parent == tree.Root()) item.isMisplaced = false;
        if (item.isMisplaced)
            AtHeader("TV1014", item, parent->Title() + " takes no item of kind " + std::string(item.keyword));
    }
    if (!item.isDropped) {
        Link(item);
        if (item.depth <= kDeepestItem) {
            LookAtAttributes(item);
            LookAtOrder(item);
            LookAtLosses(item);
        }
    }
    if (item.depth > kDeepestItem) return;
    for (const auto& child : item.children) Visit(*child);
    if (item.isDropped) return;
    if (IsParameter(item.kind)) LookAtParameter(item);
    if (IsCall(item.kind)) LookAtCall(item);
    LookAtChildren(item);
}

const Item* TextChecks::Definition(std::size_t list, std::string_view name, const Item& from, bool& isLater) const {
    const Item* found = definitions.Find(list, name);
    isLater = false;
    if (found && role == TextRole::Model && found != &from && found->begin > from.begin) {
        isLater = true;
        return nullptr;
    }
    return found;
}

void TextChecks::Link(const Item& item) {
    if (item.isMalformed && item.kind == KindFolder && item.seenName != item.name) {
        // A list that goes by another name is none.
        const bool isList = std::any_of(kListRows.begin(), kListRows.end(),
                                        [&](const ListRow& row) { return row.folder == item.name; });
        if (isList && role == TextRole::Model) RefuseHeader(item);
    }
    const std::size_t list = ListOf(item.kind);
    if (list >= kEnumTabs) {
        if (item.kind == KindVariable && role != TextRole::Model) {
            // Its number is what hosts know it by.
            if (!item.isMalformed && !BeginsWithWholeNumber(item.name)) {
                const bool isOfScript = role == TextRole::SceneScript;
                AtName("TV1018", item, "the name of a VARIABLE is a whole number").isTaken = !isOfScript;
            }
            if (item.isMalformed && !BeginsWithWholeNumber(item.seenName) && role == TextRole::SceneScript)
                RefuseHeader(item);
        }
        return;
    }
    const Item* const folder = definitions.Folder(list);
    if (item.parent && (item.parent->name == kListRows[list].folder || item.parent == folder)) {
        item.model = &item;
        return;
    }
    if (definitions.NeedsList(list) && (!folder || definitions.IsMisspelt(list)) && role != TextRole::Model) {
        item.model = definitions.Find(list, item.name); // the model cannot be read, and that is told there
        return;
    }
    if (!folder || (role == TextRole::Model && folder->begin > item.begin)) {
        if (isListTold[list] || item.isMisplaced) return;
        isListTold[list] = true;
        if (folder)
            AtHeader("TV2011", item,
                     item.Title() + " needs the folder " + std::string(kListRows[list].folder) +
                         ", which stands after it");
        else
            AtHeader("TV9001", item,
                     "the root model has no folder " + std::string(kListRows[list].folder) +
                         ", and without it the reader ends its process (token:275)")
                .help = "Add the folder to the root model, with the definition.";
        item.model = definitions.Find(list, item.name);
        return;
    }
    bool isLater = false;
    item.model = Definition(list, item.name, item, isLater);
    if (item.isMalformed) {
        bool isSeenLater = false;
        if (!Definition(list, item.seenName, item, isSeenLater)) RefuseHeader(item);
        return;
    }
    if (item.model) return;
    if (isLater) {
        if (!item.isMisplaced) AtName("TV2011", item, Quoted(item.name) + " is defined after this place");
        item.model = definitions.Find(list, item.name);
        return;
    }
    const std::vector<std::string> names = definitions.Names(list);
    Fault& fault =
        AtName(kListRows[list].unknown, item,
               std::string("unknown ") + kListRows[list].word + " " + Quoted(item.name) + DidYouMean(item.name, names));
    SuggestWord(fault, item.name, names);
}

// Attributes.

std::vector<TextChecks::Key> TextChecks::MakeKeys(ScenarioItemKind kind, bool isDefinition) {
    std::vector<Key> keys = {
        {"IS_SELECTED", Key::WhileEmpty}, {"IS_EXPANDED", Key::WhileEmpty}, {"ISA_INDEX", Key::WhileEmpty}};
    const auto add = [&](std::initializer_list<Key> more) { keys.insert(keys.end(), more); };
    switch (kind) {
    case KindFolder:
    case KindEnumTab:
    case KindGroup:
    case KindProgram:
        add({{"LABEL"}});
        break;
    case KindConfig:
        add({{"LABEL"},
             {"REQUEST_DELAY"},
             {"UPDATE_DELAY"},
             {"WAITMSG_DELAY"},
             {"NUMOF_UNDOS"},
             {"STUDENT"},
             {"TRAINING"},
             {"EVALUATION"},
             {"SESSION"},
             {"HISTORY"},
             {"EVALUATION_ACTIVE", Key::UntilSet},
             {"GENERAL_PARAMETERS_ACTIVE", Key::UntilSet}});
        break;
    case KindVariable:
    case KindEnum:
        add({{"LABEL"},
             {"TYPE"},
             {"VALUE"},
             {"INTERACTIVE_TYPE", Key::Always},
             {"IS_INITIALIZATION_NEEDED_AT_START", Key::Always},
             {"INTERACTIVE_MIN_VALUE", Key::Always},
             {"INTERACTIVE_MAX_VALUE", Key::Always},
             {"INTERACTIVE_STEP_VALUE", Key::Always},
             {"CATEGORY", Key::Always}});
        break;
    case KindParameter:
    case KindReturn:
        if (isDefinition)
            add({{"LABEL"},
                 {"UNIT"},
                 {"TYPE"},
                 {"USAGE"},
                 {"ENUMTAB"},
                 {"FILEDIR"},
                 {"FILEEXT"},
                 {"KINDLIST"},
                 {"MINVALUE"},
                 {"MAXVALUE"}});
        add({{"KIND"}, {"VALUE"}, {"OWNER_FILE"}});
        break;
    case KindAction:
    case KindElseAction:
    case KindFunction:
    case KindCondition:
        if (isDefinition) add({{"LABEL"}, {"IS_OVERLOADABLE"}, {"CODE"}, {"WIZARD"}, {"SEE_ALSO"}});
        if (kind == KindCondition) add({{"MODIFIER"}, {"DURATION", Key::Once}});
        break;
    case KindRule:
        add({{"LABEL"}, {"IS_DISABLED", Key::UntilSet}, {"EVALUATION"}});
        break;
    case KindTask:
        add({{"LABEL"}, {"TASK_KIND", Key::Always}});
        break;
    case KindCriteria:
        add({{"LABEL"},
             {"TASK_KIND", Key::Always},
             {"IS_DISABLED", Key::Always},
             {"CATEGORY"},
             {"CRITICITY", Key::Always},
             {"ATTRIBUTE_CRITERIA_TYPE", Key::Always},
             {"TEXT"},
             {"SOUND"}});
        break;
    case KindInclude:
        add({{"LABEL"}, {"TASK_KIND", Key::Always}, {"FILE"}});
        break;
    case KindEvaluation:
        add({{"LABEL"}, {"TASK_KIND", Key::Always}, {"SCORE", Key::Always}, {"FILE", Key::Always}});
        break;
    case KindScenario:
        add({{"LABEL"}, {"FILE"}, {"TASK_KIND", Key::Always}});
        break;
    default:
        break;
    }
    return keys;
}

const std::vector<TextChecks::Key>& TextChecks::KeysOf(const Item& item) {
    static const auto kTable = [] {
        std::array<std::array<std::vector<Key>, 2>, KindVariable + 1> table;
        for (std::size_t kind = 0; kind < table.size(); ++kind)
            for (const bool isDefinition : {false, true})
                table[kind][isDefinition ? 1 : 0] = MakeKeys(static_cast<ScenarioItemKind>(kind), isDefinition);
        return table;
    }();
    return kTable[item.kind][item.model == &item ? 1 : 0];
}

void TextChecks::LookAtAttributes(const Item& item) {
    // An item whose definition is not known says nothing about its attributes.
    const std::size_t list = ListOf(item.kind);
    const bool isLinked = list < kEnumTabs;
    // In a folder below its list an item of a taken name becomes a call of the first one.
    const bool isRepeated = role == TextRole::Model && isLinked && item.model && item.model != &item && item.parent &&
                            item.parent->kind == KindFolder;
    const std::vector<Key>& keys = KeysOf(item);
    given.clear();
    for (const Attribute& attribute : item.attributes) {
        if (attribute.isLost) {
            FindMeant(item, attribute, keys);
            continue;
        }
        const auto key =
            std::find_if(keys.begin(), keys.end(), [&](const Key& row) { return row.word == attribute.key; });
        if (key == keys.end()) {
            if (isRepeated || (isLinked && !item.model)) continue;
            LookAtUnknown(item, attribute, keys);
            continue;
        }
        const bool isSecond = HasName(given, attribute.key);
        given.push_back(attribute.key);
        if (isSecond && attribute.key == "SCORE") {
            const bool isSame =
                std::any_of(item.attributes.begin(), item.attributes.end(), [&](const Attribute& other) {
                    return other.key == "SCORE" && other.keyBegin < attribute.keyBegin &&
                           WholeNumberOf(other.value) == WholeNumberOf(attribute.value);
                });
            if (isSame && IsScore(attribute.value))
                AtKey("TV1010", item, attribute, "a second SCORE of one number").isTaken = true;
        } else if (isSecond) {
            const Attribute& first = *item.Find(attribute.key);
            bool isTaken = key->opens == Key::Always;
            if (key->opens == Key::WhileEmpty) isTaken = first.value.empty();
            if (key->opens == Key::UntilSet) isTaken = first.value != "1";
            if (key->opens == Key::Once) isTaken = first.value.empty() || NumberOf(first.value) == -1.0;
            if (attribute.key == "KINDLIST") isTaken = WordsOf(first.value).empty();
            Fault& fault =
                AtKey("TV1010", item, attribute, "a second " + std::string(attribute.key) + " of " + item.Title());
            fault.isTaken = isTaken;
            if (first.value == attribute.value && !attribute.isBroken) {
                fault.fixTitle = "remove the second line, which says the same";
                fault.fixBegin = attribute.keyBegin;
                fault.fixEnd = attribute.valueEnd + 1;
                fault.fixIsSafe = true;
            }
            continue;
        }
        if (attribute.isBroken) {
            // The line is an error of its own only if the reader stumbles over what it takes for the value.
            const auto seen = item.Seen(attribute);
            const bool isTaken = seen && LookAtValue(item, attribute, *seen, false);
            SetTaken(attribute.keyBegin, isTaken);
            continue;
        }
        LookAtValue(item, attribute, attribute.value, true);
    }
}

// The candidates for the keys that an item does not know.
std::vector<std::string>& TextChecks::MissingKeys(const Item& item, const std::vector<Key>& keys) {
    if (missingOf == &item) return missingKeys;
    missingOf = &item;
    missingKeys.clear();
    for (const Key& key : keys)
        if (!item.Find(key.word)) missingKeys.emplace_back(key.word);
    return missingKeys;
}

// What is missing for a misspelt key alone has its finding at the key.
void TextChecks::FindMeant(const Item& item, const Attribute& attribute, const std::vector<Key>& keys) {
    std::string_view word = attribute.key;
    if (attribute.isLost) {
        word = tree.Source().View().substr(attribute.keyBegin, attribute.valueBegin - attribute.keyBegin);
        word = word.substr(0, word.find_first_of(" \t=:\""));
    }
    std::vector<std::string>& candidates = MissingKeys(item, keys);
    std::string near = NearestKey(word, candidates);
    if (near.empty()) {
        // Some other sign stands in the key or before it.
        const std::string_view text = tree.Source().View();
        std::string letters;
        const std::size_t quote = std::min(text.find("=\"", attribute.keyBegin), std::size_t(attribute.valueEnd));
        for (const char c : text.substr(attribute.keyBegin, quote - attribute.keyBegin))
            if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_') letters += c;
        near = NearestKey(letters, candidates);
    }
    for (const Key& key : keys)
        if (key.word == near) attribute.meant = key.word;
    std::erase(candidates, near);
}

void TextChecks::LookAtUnknown(const Item& item, const Attribute& attribute, const std::vector<Key>& keys) {
    std::vector<std::string> candidates = MissingKeys(item, keys);
    const bool hasScore = std::find(candidates.begin(), candidates.end(), "SCORE") != candidates.end();
    for (const Key& key : keys)
        if (key.word == "SCORE" && !hasScore) candidates.emplace_back(key.word);
    const std::string what = item.Title() + " has no attribute " + std::string(attribute.key);
    const std::string near = NearestKey(attribute.key, candidates);
    Fault& fault = AtKey("TV1011", item, attribute, what + (near.empty() ? "" : ", did you mean " + Quoted(near)));
    if (!near.empty()) {
        fault.fixTitle = "replace " + Quoted(attribute.key) + " by " + Quoted(near);
        fault.fixBegin = fault.begin;
        fault.fixEnd = fault.end;
        fault.fixText = near;
        fault.fixIsSafe = OnlyOneLetterAway(attribute.key, candidates) == near;
    }
    FindMeant(item, attribute, keys);
    // A key that begins with a known one is taken for it, with what stands after the next two signs as its value.
    for (const Key& key : keys) {
        if (!attribute.key.starts_with(key.word)) continue;
        if (key.opens == Key::WhileEmpty && HasName(given, key.word) && !item.Value(key.word).empty()) continue;
        const std::size_t after = attribute.keyBegin + key.word.size() + 2;
        const std::string_view text = tree.Source().View();
        const std::size_t quote = text.find('"', std::min(after, text.size()));
        if (quote == std::string_view::npos) return;
        Attribute seen = attribute;
        seen.key = key.word;
        fault.isTaken = true;
        const std::size_t place = faults.size() - 1;
        const std::string_view value = text.substr(after, quote - after);
        const bool isTaken = LookAtValue(item, seen, value, false) && !ShutsOut(key, value, item, seen.keyBegin);
        faults[place].isTaken = isTaken;
        return;
    }
    SetTaken(attribute.keyBegin, true); // the key is the fault that is told
}

bool TextChecks::LookAtWord(const Item& item, const Attribute& attribute, std::string_view value,
                            std::initializer_list<std::string_view> words, bool isTold) {
    const bool isKnown = std::find(words.begin(), words.end(), value) != words.end();
    if (isKnown || !isTold) return isKnown;
    const std::vector<std::string> candidates(words.begin(), words.end());
    std::string list;
    for (const std::string_view word : words) list += (list.empty() ? "" : ", ") + std::string(word);
    Fault& fault = AtValue("TV1019", item, attribute,
                           std::string(attribute.key) + " " + Quoted(value) + " is none of " + list +
                               DidYouMean(value, candidates));
    SuggestWord(fault, value, candidates);
    return false;
}

bool TextChecks::LookAtValue(const Item& item, const Attribute& attribute, std::string_view value, bool isTold) {
    const std::string_view key = attribute.key;
    const auto needsNumber = [&](bool isNumber, const char* what) {
        if (!isNumber && isTold)
            AtValue("TV1018", item, attribute, std::string(key) + " " + Quoted(value) + " is no " + what);
        return isNumber;
    };
    const auto wantsNumber = [&](bool isNumber, const char* what) {
        if (!isNumber && isTold)
            AtValue("TV1018", item, attribute, std::string(key) + " " + Quoted(value) + " is no " + what).isTaken =
                true;
        return true;
    };
    switch (item.kind) {
    case KindVariable:
    case KindEnum:
        if (key == "TYPE")
            return value.empty() ||
                   LookAtWord(item, attribute, value, {"BOOL", "FLOAT", "INTEGER", "STRING", "VOID"}, isTold);
        if (key == "VALUE") {
            const std::string_view type = item.Value("TYPE");
            if (isTold && !value.empty() && !IsOfType(value, type))
                AtValue("TV3001", item, attribute, "VALUE " + Quoted(value) + " is no " + std::string(type)).isTaken =
                    true;
            return true;
        }
        if (key == "IS_INITIALIZATION_NEEDED_AT_START") return needsNumber(IsStrictBool(value), "0 or 1");
        if (key == "INTERACTIVE_MIN_VALUE" || key == "INTERACTIVE_MAX_VALUE" || key == "INTERACTIVE_STEP_VALUE")
            return needsNumber(IsStrictNumber(value), "number");
        return true;
    case KindTask:
    case KindCriteria:
    case KindInclude:
    case KindEvaluation:
    case KindScenario:
        if (key == "TASK_KIND") return needsNumber(IsStrictWhole(value), "whole number of 32 bits");
        if (key == "SCORE") return needsNumber(IsScore(value), "whole number followed by a number");
        return true;
    case KindRule:
        if (key == "EVALUATION")
            return value.empty() || LookAtWord(item, attribute, value, {"NORMAL", "WARNING", "ERROR"}, isTold);
        return true;
    case KindCondition:
        if (key == "MODIFIER") return LookAtWord(item, attribute, value, kModifiers, isTold);
        if (key == "DURATION") return wantsNumber(value.empty() || IsNumber(value), "number of seconds");
        [[fallthrough]];
    case KindAction:
    case KindElseAction:
    case KindFunction:
        if (key == "CODE") return wantsNumber(value.empty() || IsWholeNumber(value), "whole number");
        if (key == "WIZARD")
            return value.empty() || LookAtWord(item, attribute, value, {"MAPTOOL", "MAPTOOLRECT"}, isTold);
        return true;
    case KindParameter:
    case KindReturn:
        if (item.model == &item && key != "KIND" && key != "VALUE" && key != "OWNER_FILE")
            return LookAtDefinitionValue(item, attribute, value, isTold);
        return LookAtUserValue(item, attribute, value, isTold);
    default:
        return true;
    }
}

// The writer prints all lines of a definition, also those that are not set; among them these may be empty.
bool TextChecks::IsUnset(const Item& item, const Attribute& attribute) const {
    if (!attribute.value.empty()) return false;
    const auto row = std::find(std::begin(kWrittenOrder), std::end(kWrittenOrder), attribute.key);
    const std::ptrdiff_t place = row - std::begin(kWrittenOrder);
    const std::ptrdiff_t number = &attribute - item.attributes.data() - place;
    if (number < 0 || number + std::ssize(kWrittenOrder) > std::ssize(item.attributes)) return false;
    for (std::size_t at = 0; at < std::size(kWrittenOrder); ++at)
        if (item.attributes[static_cast<std::size_t>(number) + at].key != kWrittenOrder[at]) return false;
    return true;
}

bool TextChecks::LookAtDefinitionValue(const Item& item, const Attribute& attribute, std::string_view value,
                                       bool isTold) {
    const std::string_view key = attribute.key;
    if (key == "TYPE")
        return LookAtWord(item, attribute, value, {"BOOL", "FLOAT", "INTEGER", "STRING", "VOID"}, isTold);
    if (key == "USAGE")
        return (isTold && IsUnset(item, attribute)) ||
               LookAtWord(item, attribute, value, {"BY_VALUE", "BY_ADDRESS"}, isTold);
    if (key == "ENUMTAB") {
        if (isTold && IsUnset(item, attribute)) return true;
        // A list that asks for one tells that there is none.
        if (isTold && value.empty() && Holds(WordsOf(item.Value("KINDLIST")), "ENUM")) return false;
        bool isLater = false;
        if (Definition(kEnumTabs, value, item, isLater)) return true;
        if (!isTold || !definitions.Folder(kEnumTabs)) return false; // that there is no list is told once
        if (isLater) {
            AtValue("TV2011", item, attribute, "the enumeration " + Quoted(value) + " stands after this definition");
            return false;
        }
        const std::vector<std::string> names = definitions.Names(kEnumTabs);
        Fault& fault =
            AtValue("TV2007", item, attribute, "unknown enumeration " + Quoted(value) + DidYouMean(value, names));
        SuggestWord(fault, value, names);
        return false;
    }
    if (key == "KINDLIST") {
        bool isTaken = true;
        const std::vector<std::string_view> words = WordsOf(value);
        for (const std::string_view word : words) {
            if (IsValueKind(word)) continue;
            isTaken = false;
            if (!isTold) break;
            const auto begin = attribute.valueBegin + static_cast<std::size_t>(word.data() - value.data());
            Fault& fault = Add("TV1019", &item, begin, begin + word.size(),
                               Quoted(word) + " in KINDLIST is no kind of value" + DidYouMean(word, ValueKinds()));
            SuggestWord(fault, word, ValueKinds());
        }
        const auto needs = [&](std::string_view word, std::string_view needed) {
            if (!Holds(words, word) || item.Value(needed).size() > 0) return;
            isTaken = false;
            const Attribute* line = item.Find(needed);
            if (isTold && !(line && line->isBroken))
                AtEnd("TV2015", item,
                      item.Title() + " allows " + std::string(word) + " and has no " + std::string(needed));
        };
        needs("FILE", "FILEDIR");
        needs("ENUM", "ENUMTAB");
        const Attribute* usage = item.Find("USAGE");
        if (usage && usage->value == "BY_ADDRESS" && usage->keyBegin < attribute.keyBegin &&
            !(words.size() == 1 && words[0] == "VARIABLE")) {
            isTaken = false;
            // A word that is none has its own finding.
            if (isTold && std::all_of(words.begin(), words.end(), IsValueKind))
                AtValue("TV1019", item, attribute, "USAGE \"BY_ADDRESS\" allows no other KINDLIST than \"VARIABLE\"");
        }
        return isTaken;
    }
    if (key == "MINVALUE" || key == "MAXVALUE") {
        if (isTold && !value.empty() && !IsNumber(value)) {
            AtValue("TV1018", item, attribute, std::string(key) + " " + Quoted(value) + " is no number").isTaken = true;
            if (key == "MINVALUE") return true;
        }
        if (key == "MINVALUE") return true;
        if (isTold && IsUnset(item, attribute)) return true;
        const Attribute* least = item.Find("MINVALUE");
        if (!least || least->value.empty() || least->keyBegin > attribute.keyBegin) return true;
        if (NumberOf(value) > NumberOf(least->value)) return true;
        if (isTold && !(least->isBroken || !IsNumber(least->value) || (!value.empty() && !IsNumber(value))))
            AtValue("TV2016", item, attribute,
                    "MAXVALUE " + Quoted(value) + " is not above MINVALUE " + Quoted(least->value));
        else if (isTold) // a number that is none is the reason, and an error then
            for (Fault& fault : faults)
                if (std::string_view(fault.rule) == "TV1018" && fault.item == &item) fault.isTaken = false;
        return false;
    }
    return true;
}

bool TextChecks::LookAtUserValue(const Item& item, const Attribute& attribute, std::string_view value, bool isTold) {
    if (!item.model) return true; // an unknown parameter has its own finding
    const std::string_view key = attribute.key;
    // Of a model the lines are just being looked at.
    const bool isKnown = role != TextRole::Model && item.model != &item;
    std::optional<ParameterFacts> read;
    if (!isKnown) read = definitions.ReadFacts(*item.model);
    const ParameterFacts& facts = isKnown ? definitions.FactsOf(*item.model) : *read;
    const std::vector<std::string_view>& kinds = facts.kinds;
    if (key == "KIND") {
        if (value.empty()) {
            if (isTold) AtValue("TV3011", item, attribute, "parameter " + Quoted(item.name) + " has no KIND");
            return false;
        }
        // A definition without words, or with one that is none, has its own finding.
        if (facts.isListBroken || (kinds.empty() && item.model != &item)) return true;
        if (item.model == &item && item.Find("KINDLIST") && item.Find("KINDLIST")->keyBegin > attribute.keyBegin)
            return true; // told by the order
        if (Holds(kinds, value)) return true;
        if (!isTold) return false;
        const std::vector<std::string> candidates(kinds.begin(), kinds.end());
        Fault& fault =
            AtValue("TV3003", item, attribute,
                    "KIND " + Quoted(value) + " is not among " + Quoted(Joined(kinds)) + DidYouMean(value, candidates));
        SuggestWord(fault, value, candidates);
        return false;
    }
    if (key != "VALUE") return true;
    const Attribute* kind = item.Find("KIND");
    if (!isTold && kind && role != TextRole::Model) {
        // What a line without its quote runs into is the name of nothing, and so is nothing.
        static constexpr std::string_view kNamed[] = {"ENUM",    "FILE",   "TASK",  "VARIABLE",
                                                      "TRIGGER", "DRIVER", "IMAGE", "SOUND"};
        const bool isNamed = std::find(std::begin(kNamed), std::end(kNamed), kind->value) != std::end(kNamed);
        if (isNamed && (value.empty() || value.find('\n') != std::string_view::npos)) return false;
        if (value.empty() && kind->value == "USER" && (facts.type == "FLOAT" || facts.type == "INTEGER")) return false;
    }
    if (value.empty()) return true;
    if (!kind || (kind->isBroken && isTold) || !Holds(kinds, kind->value)) return true;
    if (kind->value == "ENUM") {
        if (!facts.tab) return true; // the definition has its own finding
        const auto& entries = facts.tab->children;
        if (std::any_of(entries.begin(), entries.end(), [&](const Item* entry) { return entry->name == value; }))
            return true;
        if (!isTold) return false;
        std::vector<std::string> names;
        for (const Item* entry : entries) names.emplace_back(entry->name);
        const std::string_view tabName = item.model->Value("ENUMTAB");
        Fault& fault =
            AtValue("TV2008", item, attribute,
                    Quoted(value) + " is no entry of the enumeration " + Quoted(tabName) + DidYouMean(value, names));
        SuggestWord(fault, value, names);
        return false;
    }
    if (kind->value != "USER") return true;
    const std::string_view type = facts.type;
    const bool isRead = type == "FLOAT"     ? BeginsWithNumber(value)
                        : type == "INTEGER" ? BeginsWithWholeNumber(value)
                                            : true;
    const bool isTaken = isRead || kind->keyBegin > attribute.keyBegin;
    if (!isTold && !isRead) return false;
    if (isTold && !IsOfType(value, type)) {
        Fault& fault = AtValue("TV3001", item, attribute, "VALUE " + Quoted(value) + " is no " + std::string(type));
        fault.isTaken = isRead;
        fault.isValidity = !isRead && isTaken;
        return isRead;
    }
    const std::string_view least = facts.least;
    const std::string_view most = facts.most;
    // Limits that are none have their own finding.
    const bool areBroken =
        facts.areLimitsReversed || (!least.empty() && !IsNumber(least)) || (!most.empty() && !IsNumber(most));
    if ((least.empty() && most.empty()) || (isTold && areBroken)) return true;
    const double number = NumberOf(value);
    const bool isBelow = !least.empty() && !(number >= facts.leastNumber);
    const bool isAbove = !most.empty() && !(facts.mostNumber >= number);
    if (!isBelow && !isAbove) return true;
    if (!isTold) return false;
    Fault& fault = AtValue("TV3002", item, attribute,
                           isBelow ? "VALUE " + Quoted(value) + " is below MINVALUE " + Quoted(least)
                                   : "VALUE " + Quoted(value) + " is above MAXVALUE " + Quoted(most));
    // The reader tests the defaults of a model alone; a script is read and not valid.
    fault.isValidity = role != TextRole::Model;
    // The default of a parameter's own definition is tested by nobody.
    if (role == TextRole::Model && !(item.parent && IsCall(item.parent->kind) && item.parent->model == item.parent))
        fault.isTaken = true;
    return false;
}

// An attribute after one that has to follow it.
void TextChecks::LookAtOrder(const Item& item) {
    const auto follows = [&](std::string_view later, std::string_view earlier) -> Fault* {
        const Attribute* after = item.Find(later);
        const Attribute* first = item.Find(earlier);
        if (!after || !first || after->keyBegin < first->keyBegin) return nullptr;
        Fault& fault = AtKey("TV1012", item, *after,
                             std::string(later) + " stands after " + std::string(earlier) + ", which has to follow it");
        fault.isTaken = true;
        return &fault;
    };
    switch (item.kind) {
    case KindParameter:
    case KindReturn: {
        if (item.model != &item && !follows("KIND", "VALUE") && !item.Value("OWNER_FILE").empty())
            follows("KIND", "OWNER_FILE");
        if (item.model != &item) break;
        const std::vector<std::string_view> kinds = WordsOf(item.Value("KINDLIST"));
        if (Fault* fault = follows("FILEDIR", "KINDLIST"); fault && Holds(kinds, "FILE")) fault->isTaken = false;
        if (Fault* fault = follows("ENUMTAB", "KINDLIST"); fault && Holds(kinds, "ENUM")) fault->isTaken = false;
        follows("USAGE", "KINDLIST");
        follows("MINVALUE", "MAXVALUE");
        if (Fault* fault = follows("KINDLIST", "KIND")) fault->isTaken = false;
        break;
    }
    case KindInclude:
    case KindEvaluation:
    case KindScenario:
        if (item.IsIndexEntry()) follows("ISA_INDEX", "FILE");
        break;
    case KindConfig:
        if (Fault* fault = follows("EVALUATION", "EVALUATION_ACTIVE"))
            fault->isTaken = item.Value("EVALUATION").empty();
        break;
    default:
        break;
    }
}

// What is read and not written.
void TextChecks::LookAtLosses(const Item& item) {
    const auto isLost = [&](std::string_view key, const char* why) {
        const Attribute* attribute = item.Find(key);
        if (!attribute || attribute->value.empty() || attribute->isBroken) return;
        AtKey("TV1013", item, *attribute, std::string(key) + " is lost when the item is saved: " + why).isTaken = true;
    };
    switch (item.kind) {
    case KindConfig:
        isLost("LABEL", "settings have no label");
        isLost("EVALUATION_ACTIVE", "it is read only");
        isLost("GENERAL_PARAMETERS_ACTIVE", "it is read only");
        break;
    case KindInclude:
    case KindEvaluation:
    case KindScenario:
    case KindTask:
    case KindRule:
    case KindVariable:
        if (item.IsIndexEntry()) isLost("LABEL", "an item with ISA_INDEX has that of its file");
        break;
    case KindParameter:
    case KindReturn: {
        const std::string_view kind = item.Value("KIND");
        // A kind that cannot stand here is the fault that is told.
        const bool isMeant = !item.model || item.model == &item || Holds(WordsOf(item.model->Value("KINDLIST")), kind);
        if (kind.empty() || !isMeant) break;
        if (kind != "VARIABLE" && IsValueKind(kind)) isLost("OWNER_FILE", "only a VARIABLE has one");
        if (kind == "FUNCTION") isLost("VALUE", "a FUNCTION stands in its place");
        break;
    }
    case KindCondition: {
        const std::string_view modifier = item.Value("MODIFIER");
        // A word that is none has its own finding, and may be meant for one of these.
        const bool isWord =
            modifier.empty() || std::find(kModifiers.begin(), kModifiers.end(), modifier) != kModifiers.end();
        if (isWord && modifier != "HAS_BEEN_TRUE_FOR" && modifier != "HAS_BEEN_FALSE_FOR")
            isLost("DURATION", "its MODIFIER has no duration");
        break;
    }
    default:
        break;
    }
    for (const std::string_view key : {"IS_SELECTED", "IS_EXPANDED"}) {
        const std::string_view value = item.Value(key);
        if (value != "1" && value != "0") isLost(key, "only \"1\" is kept");
    }
}

// What is complete.

void TextChecks::LookAtParameter(const Item& item) {
    if (item.model == &item) {
        const auto needs = [&](std::string_view key) {
            const Attribute* attribute = item.Find(key);
            if (attribute && (!attribute->value.empty() || attribute->isBroken)) return;
            if (attribute && key == "TYPE") return; // an empty word, which is told
            AtEnd("TV2015", item, item.Title() + " has no " + std::string(key));
        };
        needs("KINDLIST");
        needs("TYPE");
        return;
    }
    if (!item.model || (item.parent && item.parent->kind == KindFolder)) return; // a repeated definition
    if (!item.Find("KIND")) AtEnd("TV3011", item, "parameter " + Quoted(item.name) + " has no KIND");
}

void TextChecks::LookAtCall(const Item& item) {
    bool hasReturn = false;
    for (const auto& child : item.children) {
        if (child->kind != KindReturn) continue;
        if (hasReturn && !IsJunction(item)) AtName("TV2017", *child, item.Title() + " has a second RETURN");
        hasReturn = true;
    }
    if (!item.model || item.model == &item || IsJunction(item) || HaveSameParameters(item, *item.model)) return;
    const std::vector<const Item*> parameters = ParametersOf(item);
    const std::vector<const Item*> wanted = ParametersOf(*item.model);
    std::vector<std::string_view> givenNames;
    std::vector<std::string_view> wantedNames;
    for (const Item* parameter : parameters) givenNames.push_back(parameter->name);
    for (const Item* parameter : wanted) wantedNames.push_back(parameter->name);
    std::vector<std::string_view> upgraded = givenNames;
    UpgradeNames(item.name, upgraded, wantedNames);
    if (upgraded == wantedNames) return;
    // Which parameters a definition has is not known where one of them is lost, or is a second RETURN.
    const auto& inModel = item.model->children;
    const bool isLost =
        std::any_of(inModel.begin(), inModel.end(),
                    [](const auto& child) {
                        return child->isDropped || (child->isMalformed && child->name != child->seenName) ||
                               (IsParameter(child->kind) && !child->model);
                    }) ||
        std::count_if(inModel.begin(), inModel.end(), [](const auto& child) { return child->kind == KindReturn; }) > 1;
    if (isLost) return;
    const bool isOverloadable = item.model->Value("IS_OVERLOADABLE") == "1";
    if (isOverloadable && upgraded.size() == wantedNames.size()) return;

    std::vector<std::string_view> missing = wantedNames;
    std::vector<const Item*> surplus;
    std::size_t unknown = 0; // what has its own finding may be any of those that are missing
    for (const Item* parameter : parameters) {
        const auto found = std::find(missing.begin(), missing.end(), parameter->name);
        if (found != missing.end())
            missing.erase(found);
        else if (!parameter->model || parameter->isMalformed || parameter->isDropped)
            ++unknown;
        else if (!HasName(upgraded, parameter->name) || !HasName(wantedNames, parameter->name))
            surplus.push_back(parameter);
        else
            surplus.push_back(parameter);
    }
    // Items whose headers are lost count as well.
    for (const auto& child : item.children)
        if (child->isDropped && !IsParameter(child->kind)) ++unknown;
    // What an upgrade adds is not missing.
    for (const std::string_view name : upgraded) {
        if (HasName(givenNames, name)) continue;
        const auto found = std::find(missing.begin(), missing.end(), name);
        if (found != missing.end()) missing.erase(found);
    }
    if (isOverloadable) {
        // Their number counts, not their names.
        const std::size_t paired = std::min(missing.size(), surplus.size());
        missing.erase(missing.begin(), missing.begin() + static_cast<std::ptrdiff_t>(paired));
        surplus.erase(surplus.begin(), surplus.begin() + static_cast<std::ptrdiff_t>(paired));
    }
    for (const Item* parameter : surplus)
        AtName("TV2006", *parameter, Quoted(item.name) + " has no parameter " + Quoted(parameter->name));
    if (missing.size() > unknown) {
        for (std::size_t at = unknown; at < missing.size(); ++at)
            AtEnd("TV2005", item, Quoted(item.name) + " lacks its parameter " + Quoted(missing[at]));
    }
    if (!surplus.empty() || !missing.empty() || unknown > 0 || isOverloadable) return;
    for (std::size_t at = 0; at < parameters.size() && at < wantedNames.size(); ++at)
        if (givenNames[at] != wantedNames[at]) {
            AtName("TV2014", *parameters[at],
                   "parameter " + std::to_string(at + 1) + " of " + Quoted(item.name) + " is " +
                       Quoted(wantedNames[at]) + ", not " + Quoted(givenNames[at]));
            return;
        }
}

// What is lost, ignored or repeated among the children of an item.
void TextChecks::LookAtChildren(const Item& item) {
    const auto isKind = [](const Item& child, std::initializer_list<ScenarioItemKind> kinds) {
        return std::find(kinds.begin(), kinds.end(), child.kind) != kinds.end();
    };
    const auto passedOver = [&](const Item& child) {
        child.isLost = true;
        AtHeader("TV4014", child, item.Title() + " does not take " + child.Title() + " in, and it is lost").isTaken =
            true;
    };
    // The last one stands in place of those before it.
    const auto keepsLast = [&](ScenarioItemKind kind) {
        const Item* last = nullptr;
        for (const auto& child : item.children)
            if (child->kind == kind && !child->isDropped) {
                if (last) passedOver(*last);
                last = child;
            }
    };
    switch (item.kind) {
    case KindScenario:
        keepsLast(KindEvaluation);
        keepsLast(KindGeneralParameters);
        break;
    case KindParameter:
    case KindReturn:
        keepsLast(KindFunction);
        break;
    case KindAction:
    case KindElseAction:
    case KindFunction:
    case KindCondition:
        for (const auto& child : item.children)
            if (child->kind == KindFunction && !IsJunction(item)) passedOver(*child);
        break;
    case KindGeneralParameters:
        for (const auto& child : item.children)
            if (child->kind != KindNone) passedOver(*child);
        break;
    default:
        break;
    }
    if (item.kind == KindRule) {
        bool hasCondition = false;
        for (const auto& child : item.children) {
            if (child->kind != KindCondition && child->kind != KindNone) continue;
            if (child->keyword.empty() && child->children.empty()) continue; // a brace without a header
            if (hasCondition && child->kind == KindCondition)
                AtHeader("TV4009", *child, "a rule looks at its first condition alone").isValidity = true;
            hasCondition = true;
        }
        for (const auto& child : item.children) {
            if (hasCondition || !isKind(*child, {KindAction, KindElseAction})) continue;
            AtHeader("TV4012", *child, item.Title() + " has no condition, so its actions are not valid").isValidity =
                true;
            break;
        }
    }
    if (IsJunction(item) && item.model != &item) {
        const bool isEmpty = std::none_of(item.children.begin(), item.children.end(), [](const auto& child) {
            return child->kind == KindCondition || child->kind == KindNone;
        });
        if (isEmpty) AtHeader("TV4008", item, item.Title() + " has no parts").isValidity = true;
    }
    if (IsCall(item.kind) && item.model != &item && item.name.starts_with("EVALUATION")) {
        const Item* above = item.parent;
        while (above && above->kind != KindCriteria && above->kind != KindNone) above = above->parent;
        if (!above && role != TextRole::Model)
            AtHeader("TV4013", item, item.Title() + " stands outside of a CRITERIA").isValidity = true;
    }
}

// A root model as a whole.
void TextChecks::LookAtLists() {
    for (std::size_t list = 0; list < kListCount; ++list) {
        const std::string folder(kListRows[list].folder);
        const Item* const found = definitions.Folder(list);
        if (!found) {
            // Without the list the reader ends its process where it first needs it, which is told there, or refuses.
            if (isListTold[list]) continue;
            Fault& fault = Add("TV2009", nullptr, 0, 0, "the root model has no FOLDER (" + folder + ")");
            fault.isRefused = definitions.NeedsList(list);
            continue;
        }
        if (definitions.IsMisspelt(list)) {
            const bool isNeeded = definitions.NeedsList(list);
            const bool endsProcess = isNeeded && list < kEnumTabs;
            Fault& fault = AtName(endsProcess ? "TV9001" : "TV2009", *found,
                                  "the root model has no FOLDER (" + folder + "), and " + Quoted(found->name) +
                                      " is likely meant for it" +
                                      (endsProcess ? "; without it the reader ends its process (token:275)" : ""));
            fault.isRefused = isNeeded;
            SuggestWord(fault, found->name, {folder});
        }
        std::unordered_map<int, const Item*> codes;
        for (const Item* item : definitions.All(list)) {
            if (const Item* first = definitions.Find(list, item->name); first != item && !item->isMalformed) {
                Fault& fault = AtName("TV2010", *item,
                                      Quoted(item->name) + " is defined already, and this definition is never found");
                // Below its list it is read as a call of the first one, which has no label of its own.
                const bool isDirect = item->parent && item->parent->name == folder;
                const auto isModelKey = [](const Attribute& attribute) {
                    return attribute.key != "KIND" && attribute.key != "VALUE" && attribute.key != "OWNER_FILE" &&
                           attribute.key != "MODIFIER" && attribute.key != "DURATION";
                };
                fault.isRefused = !isDirect && list != kEnumTabs &&
                                  std::any_of(item->attributes.begin(), item->attributes.end(), isModelKey);
                continue;
            }
            const Attribute* code = item->Find("CODE");
            if (!code || code->isBroken || item->model != item) continue;
            if (!IsWholeNumber(code->value)) continue; // it has its own finding, if it is not empty
            // As the program that acts on it reads it.
            const auto [known, isNew] = codes.emplace(WholeNumberOf(code->value), item);
            if (!isNew)
                AtValue("TV2012", *item, *code, "CODE " + Quoted(code->value) + " is that of " + known->second->Title())
                    .isTaken = true;
        }
    }
    for (const Item* tab : definitions.All(kEnumTabs)) {
        std::vector<std::string_view> names;
        for (const auto& entry : tab->children) {
            if (entry->kind != KindEnum || entry->isMalformed) continue;
            if (HasName(names, entry->name))
                AtName("TV2010", *entry, Quoted(entry->name) + " is an entry already, and this one is never found")
                    .isTaken = true;
            names.push_back(entry->name);
        }
    }
}

} // namespace TavrelChecking
