#include "TreeChecks.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include <lmkUtils/EnvConfig.h>
#include <scenario/NearestName.h>

namespace TavrelChecking {

namespace {

using lmkUtils::EnvConfig;

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates) {
    const std::string near = NearestName(name, candidates);
    return near.empty() ? near : ", did you mean " + Quoted(near);
}

bool AreNumbers(std::string_view a, std::string_view b) {
    return (a == "FLOAT" && b == "INTEGER") || (a == "INTEGER" && b == "FLOAT");
}

bool IsType(std::string_view word) {
    return word == "BOOL" || word == "FLOAT" || word == "INTEGER" || word == "STRING" || word == "VOID";
}

// Numbers of both types may stand for each other, and a text can be made of everything.
bool TypeFits(std::string_view given, std::string_view wanted) {
    return given == wanted || wanted == "STRING" || AreNumbers(given, wanted);
}

// Kinds whose items are passed over.
constexpr std::initializer_list<ScenarioItemKind> kNoItems = {
    KindNone, KindCatalog, KindExerciseLog, KindExerciseNdx, KindHistory, KindModifier, KindSessionLog, KindToken};

std::string FolderOfFiles(std::string_view fileDir) {
    struct Row {
        std::string_view key;
        const char* folder;
    };
    static constexpr Row kFolders[] = {{"IMAGES", "data/images"},
                                       {"SOUNDS", "data/sound"},
                                       {"SCRIPT", "data\\script\\python"},
                                       {"PROFILE", "data/script/profile"}};
    std::string key(fileDir);
    for (char& c : key)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    for (const Row& row : kFolders)
        if (key == row.key) return row.folder;
    return "data/" + std::string(fileDir);
}

} // namespace

TreeChecks::TreeChecks(const ScriptTree& script, const Surroundings& surroundings)
    : tree(script), around(surroundings), isWhole(script.Root() && script.Root()->kind == KindScenario) {}

std::vector<RelatedPlace> TreeChecks::PlacesOf(const Mount* mount) const {
    std::vector<RelatedPlace> places;
    for (; mount; mount = mount->outer) {
        const Attribute* file = mount->include->Find("FILE");
        const Text& text = *mount->include->text;
        const std::size_t begin = file ? file->valueBegin : mount->include->keywordBegin;
        const std::size_t end = file ? file->valueEnd : mount->include->headerEnd;
        places.push_back({text.File().path, text.SpanOf(begin, end), "it is included here"});
    }
    return places;
}

PlacedFault& TreeChecks::Add(const char* rule, const Item& item, const Mount* mount, std::size_t begin, std::size_t end,
                             std::string message) {
    PlacedFault placed;
    placed.fault.rule = rule;
    placed.fault.begin = begin;
    placed.fault.end = end;
    placed.fault.message = std::move(message);
    placed.fault.item = &item;
    placed.fault.isValidity = true;
    placed.text = item.text;
    placed.related = PlacesOf(mount);
    faults.push_back(std::move(placed));
    return faults.back();
}

PlacedFault& TreeChecks::AtValue(const char* rule, const Use& use, const char* key, std::string message) {
    const Item& item = *use.parameter;
    const Attribute* attribute = item.Find(key);
    if (!attribute) return Add(rule, item, use.mount, item.closing, item.closing, std::move(message));
    return Add(rule, item, use.mount, attribute->valueBegin, attribute->valueEnd, std::move(message));
}

PlacedFault& TreeChecks::AtHeader(const char* rule, const Item& item, const Mount* mount, std::string message) {
    PlacedFault& placed = Add(rule, item, mount, item.keywordBegin, item.headerEnd, std::move(message));
    placed.fault.item = item.parent;
    return placed;
}

std::vector<PlacedFault> TreeChecks::Run(std::vector<Fault> ownFaults) {
    for (Fault& fault : ownFaults) faults.push_back({std::move(fault), &tree.Source(), {}});
    if (!tree.Root()) return std::move(faults);
    const Item& root = *tree.Root();
    rootFile = root.Value("FILE");
    // It has its own finding, and those who name the file as it is meant have none.
    if (const Attribute* file = root.Find("FILE"); file && file->isBroken) missingFiles.insert(rootFile);
    auto own = std::make_unique<Mount>();
    own->path = std::filesystem::weakly_canonical(tree.Source().File().path).string();
    mounts.push_back(std::move(own));
    scores = {0, 1}; // an EVALUATION has these without a word
    Enter(root, nullptr);
    for (std::size_t at = 0; at < variables.size(); ++at) variablesByName[variables[at].item->name].push_back(at);
    for (const Use& use : uses) LookAt(use);
    if (isWhole) LookAtVariables();
    // A line that is read, and not as it is meant, is an error where what is read is not valid.
    for (PlacedFault& placed : faults)
        if (placed.fault.isTaken && misread.count({placed.text, placed.fault.key}) > 0) {
            placed.fault.isTaken = placed.fault.isNote = false;
            placed.fault.isValidity = true;
        }
    return std::move(faults);
}

void TreeChecks::AddScores(const Item& evaluation) {
    for (const Attribute& attribute : evaluation.attributes)
        if (attribute.key == "SCORE" || attribute.meant == "SCORE") {
            if (BeginsWithWholeNumber(attribute.value))
                scores.insert(WholeNumberOf(attribute.value));
            else
                ++unreadScores;
        }
}

// FILE of the outermost include; empty in the script itself.
std::string TreeChecks::ScopeOf(const Mount* mount) {
    while (mount && mount->outer) mount = mount->outer;
    return mount ? mount->file : "";
}

// In the order in which a search of the tree meets the items.
void TreeChecks::Enter(const Item& item, const Mount* mount) {
    if (item.kind == KindVariable) {
        variables.push_back({&item, ScopeOf(mount)});
    }
    const bool isRead = !item.isMalformed || (!item.name.empty() && item.seenName == item.name);
    const bool isNamed = item.kind == KindVariable || item.kind == KindTask;
    if (item.isDropped || (isNamed && (item.isMalformed || item.name.empty()))) lostItems.push_back(&item);
    if (item.kind == KindTask && isRead) tasks.insert(item.name);
    if (item.kind == KindEvaluation || item.isDropped) AddScores(item); // one whose kind is misspelt has scores, too
    if (IsCall(item.kind) && item.model && item.model != &item) GatherUnnamed(item);
    if (IsParameter(item.kind) && item.model && item.model != &item && item.parent && IsCall(item.parent->kind) &&
        item.parent->model != item.parent)
        uses.push_back({&item, mount});
    else if (IsParameter(item.kind) || item.isDropped)
        MayUse(item);
    const bool isReference = item.kind == KindInclude || item.kind == KindEvaluation || item.kind == KindScenario;
    // One whose kind is misspelt may be an include.
    if (item.isDropped && item.Find("FILE")) missingFiles.insert(std::string(item.Value("FILE")));
    if (item.kind == KindInclude && item.parent) files.insert(std::string(item.Value("FILE")));
    if (isReference && item.IsIndexEntry() && !item.isDropped) {
        EnterFile(item, mount);
        return;
    }
    EnterChildren(item, mount);
}

namespace {

// At which step a search visits the children of that kind; after all others those that it passes over.
std::size_t StepOf(ScenarioItemKind kind, bool isFile) {
    constexpr std::size_t kOfNoItems = 5;
    constexpr std::size_t kNever = 6;
    switch (kind) {
    case KindInclude:
    case KindScenario:
        return isFile ? 0 : kNever;
    case KindVariable:
        return 1;
    case KindRule:
        return 2;
    case KindTask:
        return 3;
    case KindCriteria:
        return isFile ? 3 : kNever;
    case KindEvaluation:
    case KindGeneralParameters:
        return isFile ? 4 : kNever;
    default:
        return std::find(kNoItems.begin(), kNoItems.end(), kind) != kNoItems.end() ? kOfNoItems : kNever;
    }
}

} // namespace

void TreeChecks::EnterChildren(const Item& item, const Mount* mount) {
    // One that is lost has its finding, and its scores not another one.
    for (const auto& child : item.children)
        if (child->isLost && child->kind == KindEvaluation) AddScores(*child);
    const bool isTask = item.kind == KindTask || item.kind == KindCriteria;
    const bool isFile = item.kind == KindScenario || item.kind == KindInclude || item.kind == KindEvaluation;
    if (!isTask && !isFile) {
        for (const auto& child : item.children)
            if (!child->isLost) Enter(*child, mount);
        return;
    }
    // A search goes through the kinds one after the other.
    constexpr std::size_t kSteps = 6;
    std::array<std::vector<const Item*>, kSteps> steps;
    for (const auto& child : item.children)
        if (const std::size_t step = StepOf(child->kind, isFile); step < kSteps && !child->isLost)
            steps[step].push_back(child);
    for (const auto& step : steps)
        for (const Item* child : step) Enter(*child, mount);
}

void TreeChecks::EnterFile(const Item& item, const Mount* mount) {
    const Attribute* attribute = item.Find("FILE");
    const std::string file(attribute ? attribute->value : std::string_view());
    const std::size_t begin = attribute ? attribute->valueBegin : item.closing;
    const std::size_t end = attribute ? attribute->valueEnd : item.closing;
    if (attribute && attribute->isBroken) { // it has its own finding
        missingFiles.insert(file);
        const auto seen = item.Seen(*attribute);
        const bool isFound = seen && around.includes->Find(std::string(*seen));
        if (item.kind == KindInclude && !isFound) misread.insert({item.text, attribute->keyBegin});
        return;
    }
    if (item.kind == KindScenario) {
        if (EnvConfig::findInPath("data/scenario", file).empty())
            Add("TV6009", item, mount, begin, end, "there is no scenario " + Quoted(file)).fault.isTaken = true;
        return;
    }
    const IncludedFile* included = around.includes->Find(file);
    if (!included) {
        missingFiles.insert(file);
        const std::vector<std::string>& names = around.includes->Names();
        PlacedFault& placed = Add("TV6009", item, mount, begin, end,
                                  "the data path has no script " + Quoted(file) + DidYouMean(file, names));
        // Only an INCLUDE is asked for its file when it is looked at whether it is valid.
        placed.fault.isTaken = item.kind == KindEvaluation;
        hasLostScores = hasLostScores || item.kind == KindEvaluation;
        if (const std::string near = NearestName(file, names); attribute && !near.empty()) {
            placed.fault.fixTitle = "replace " + Quoted(file) + " by " + Quoted(near);
            placed.fault.fixBegin = begin;
            placed.fault.fixEnd = end;
            placed.fault.fixText = near;
            placed.fault.fixIsSafe = OnlyOneLetterAway(file, names) == near;
        }
        return;
    }
    if (included->isOutside) {
        missingFiles.insert(file);
        Add("TV6014", item, mount, begin, end, Quoted(file) + " leads out of the data path").fault.isTaken =
            item.kind == KindEvaluation;
        return;
    }
    std::error_code error;
    const std::string path = std::filesystem::weakly_canonical(included->path, error).string();
    bool isCycle = path == mounts.front()->path;
    unsigned depth = 0;
    for (const Mount* outer = mount; outer; outer = outer->outer, ++depth) isCycle = isCycle || outer->path == path;
    constexpr unsigned kDeepest = 1000;
    if (isCycle || depth > kDeepest) {
        Add("TV6010", item, mount, begin, end, Quoted(file) + " leads back to itself").fault.isTaken = true;
        return;
    }
    // Files that include one another twice at each level are 2^n mounts. In one scope they all show the same.
    const std::string scope = mount ? ScopeOf(mount) : file;
    constexpr unsigned kMostMounts = 10;
    if (++mountCounts[{path, file, scope}] > kMostMounts) return;
    auto inner = std::make_unique<Mount>();
    inner->outer = mount;
    inner->include = &item;
    inner->path = path;
    inner->file = file;
    const Mount* const place = inner.get();
    mounts.push_back(std::move(inner));
    if (included->isRefused) {
        missingFiles.insert(file);
        Add("TV6009", item, mount, begin, end,
            "the file " + Quoted(file) + " is there and cannot be read" +
                (included->reason.empty() ? "" : ": " + included->reason))
            .fault.isTaken = true;
    }
    const std::size_t before = faults.size();
    // What is wrong with the file itself stands in the file.
    for (const Fault& fault : included->faults) faults.push_back({fault, &included->tree->Source(), PlacesOf(place)});
    if (!included->tree || !included->tree->Root()) return;
    const Item& top = *included->tree->Root();
    if (top.kind != item.kind) {
        // What the file holds is lost, and has its finding there.
        missingFiles.insert(file);
        hasLostScores = hasLostScores || item.kind == KindEvaluation;
        const auto told =
            std::find_if(faults.begin() + static_cast<std::ptrdiff_t>(before), faults.end(),
                         [](const PlacedFault& placed) { return std::string_view(placed.fault.rule) == "TV1021"; });
        if (!top.isDropped) wrongTops.emplace(file, static_cast<std::size_t>(told - faults.begin()));
        if (told != faults.end() || top.isDropped) return;
        const std::size_t wordEnd = top.keywordBegin + top.keyword.size();
        Add("TV1021", top, place, top.keywordBegin, wordEnd,
            "the file of an " + std::string(item.keyword) + " begins with one, not with " + std::string(top.keyword));
        faults.back().fault.item = nullptr;
        faults.back().fault.isTaken = true;
        return;
    }
    // A file may hold no more than a reference to another.
    if (top.IsIndexEntry() && !top.isDropped)
        EnterFile(top, place);
    else
        EnterChildren(top, place);
}

// A parameter that is not understood may use the variable that its value names.
void TreeChecks::MayUse(const Item& item) {
    if (!item.Value("VALUE").empty()) mayBeUsed.insert(item.Value("VALUE"));
}

// A call that lacks a parameter which can be nothing but a variable, or the name in it, has its own finding.
void TreeChecks::GatherUnnamed(const Item& call) {
    if (IsJunction(call)) return;
    // What is not understood names it all the same.
    auto standIns = std::count_if(call.children.begin(), call.children.end(), [](const Item* given) {
        return IsUnknownPart(*given) && !given->Value("VALUE").empty();
    });
    for (const Item* wanted : ParametersOf(*call.model)) {
        if (!wanted->model || WordsOf(wanted->model->Value("KINDLIST")) != std::vector<std::string_view>{"VARIABLE"})
            continue;
        const bool isNamed = std::any_of(call.children.begin(), call.children.end(), [&](const auto& given) {
            return given->name == wanted->name && !given->Value("VALUE").empty();
        });
        if (!isNamed && standIns-- <= 0) unnamed.push_back(TypeOf(*wanted));
    }
}

// Whether a variable of that type may be one of those; each of them is one variable.
bool TreeChecks::IsUnnamed(std::string_view type) {
    const auto found =
        std::find_if(unnamed.begin(), unnamed.end(), [&](std::string_view wanted) { return TypeFits(type, wanted); });
    if (found == unnamed.end()) return false;
    unnamed.erase(found);
    return true;
}

// Whether an item that was passed over, or is read by another name, may be the one that is asked for: one whose name
// is that, else one whose name is lost.
bool TreeChecks::IsHeldByLost(ScenarioItemKind kind, std::string_view name) {
    const auto isOfKind = [&](const Item& item) {
        return item.kind == kind || std::find(kNoItems.begin(), kNoItems.end(), item.kind) != kNoItems.end();
    };
    const auto isNameless = [&](const Item& item) {
        if (!item.name.empty()) return false;
        return kind == KindVariable ? IsLostVariable(item) : item.kind == kind || item.Find("TASK_KIND");
    };
    for (const bool byName : {true, false})
        for (const Item* item : lostItems) {
            if (!isOfKind(*item) || !(byName ? item->name == name : isNameless(*item))) continue;
            NeedsHeader(*item);
            return true;
        }
    return false;
}

// A header that is read with another name is an error where somebody asks for that which is meant.
void TreeChecks::NeedsHeader(const Item& item) {
    if (item.name.empty() || (item.isMalformed && item.seenName != item.name)) misread.insert({item.text, item.begin});
}

// Values.

void TreeChecks::LookAt(const Use& use) {
    const Item& item = *use.parameter;
    const Attribute* kindLine = item.Find("KIND");
    const Attribute* valueLine = item.Find("VALUE");
    if (!kindLine || kindLine->isBroken || !Holds(around.definitions->FactsOf(*item.model).kinds, kindLine->value))
        return MayUse(item);
    if (kindLine->value == "FUNCTION") return LookAtCall(use);
    if (!valueLine || !valueLine->isBroken)
        return LookAtValue(use, kindLine->value, valueLine ? valueLine->value : std::string_view());
    // The line has its own finding. What it names as it is meant is used all the same.
    const std::size_t count = faults.size();
    LookAtValue(use, kindLine->value, valueLine->value);
    faults.erase(faults.begin() + static_cast<std::ptrdiff_t>(count), faults.end());
    if (const auto seen = item.Seen(*valueLine)) LookAtValue(use, kindLine->value, *seen);
    const bool isValid = std::all_of(faults.begin() + static_cast<std::ptrdiff_t>(count), faults.end(),
                                     [](const PlacedFault& placed) { return placed.fault.isTaken; });
    faults.erase(faults.begin() + static_cast<std::ptrdiff_t>(count), faults.end());
    if (!isValid) misread.insert({item.text, valueLine->keyBegin});
}

void TreeChecks::LookAtValue(const Use& use, std::string_view kind, std::string_view value) {
    const Item& item = *use.parameter;
    const std::string_view type = around.definitions->FactsOf(*item.model).type;
    const bool isNumeric = type == "FLOAT" || type == "INTEGER";
    const bool isNamed = kind == "ENUM" || kind == "FILE";
    const bool isInScene = kind == "TASK" || kind == "VARIABLE" || kind == "TRIGGER" || kind == "DRIVER" ||
                           kind == "IMAGE" || kind == "SOUND";
    const bool isNumber = kind == "VEHICLE" || kind == "VHC_INPUT" || kind == "VHC_OUTPUT";
    if (value.empty() && (isNamed || isInScene || isNumber || (kind == "USER" && isNumeric))) {
        PlacedFault& placed = AtValue("TV3011", use, "VALUE", "parameter " + Quoted(item.name) + " has no VALUE");
        placed.fault.isTaken = isNumber || (isInScene && !(isWhole && (around.tables || IsOfItems(kind))));
        if (kind == "ENUM" && item.Find("VALUE")) placed.fault.isTaken = false;
        return;
    }
    if (kind == "FILE") return LookAtFile(use, value);
    if (!isWhole) return;
    if (kind == "VARIABLE") return LookAtVariable(use, value);
    if (kind == "TASK") {
        if (!tasks.count(value) && !IsHeldByLost(KindTask, value))
            AtValue("TV3005", use, "VALUE", "there is no TASK (" + std::string(value) + ")");
        return;
    }
    if (kind == "USER" && item.name == "SCORE_NUMBER" && IsWholeNumber(value)) {
        if (hasLostScores || scores.count(WholeNumberOf(value)) > 0) return;
        // A number that no score can have is told as that.
        const auto isLimit = [&](const char* key) { return !item.model->Value(key).empty(); };
        const double number = NumberOf(value);
        if ((isLimit("MINVALUE") && number < NumberOf(item.model->Value("MINVALUE"))) ||
            (isLimit("MAXVALUE") && number > NumberOf(item.model->Value("MAXVALUE"))))
            return;
        // A line that is no score has its own finding, and may be meant for one number.
        if (unreadScores > 0) {
            --unreadScores;
            scores.insert(WholeNumberOf(value));
            return;
        }
        AtHeader("TV4010", item, use.mount, "no EVALUATION has a SCORE " + std::string(value)).fault.isTaken = true;
        return;
    }
    if (!around.tables) return;
    if (kind == "VEHICLE") return LookAtVehicle(use, value);
    if (kind == "VHC_INPUT" || kind == "VHC_OUTPUT") return LookAtChannel(use, value, kind == "VHC_INPUT");
    struct Table {
        std::string_view kind;
        const std::set<std::string>* names;
        const char* word;
    };
    const Table tables[] = {{"DRIVER", &around.tables->drivers, "driver"},
                            {"TRIGGER", &around.tables->triggers, "trigger"},
                            {"IMAGE", &around.tables->images, "image"},
                            {"SOUND", &around.tables->sounds, "sound"}};
    for (const Table& table : tables) {
        if (kind != table.kind || table.names->count(std::string(value)) || around.tables->hasLostElements) continue;
        const std::vector<std::string> names(table.names->begin(), table.names->end());
        AtValue("TV3008", use, "VALUE",
                std::string("the scenario has no ") + table.word + " " + Quoted(value) + DidYouMean(value, names));
    }
}

void TreeChecks::LookAtVariable(const Use& use, std::string_view value) {
    const Item& item = *use.parameter;
    const Attribute* ownerLine = item.Find("OWNER_FILE");
    const bool isOwnerBroken = ownerLine && ownerLine->isBroken; // and has its own finding
    std::string_view owner = ownerLine ? ownerLine->value : std::string_view();
    if (isOwnerBroken) owner = item.Seen(*ownerLine).value_or(owner);
    if (!owner.empty() && owner != rootFile) {
        const bool isKnown =
            files.count(std::string(owner)) > 0 ||
            std::any_of(tree.Root()->children.begin(), tree.Root()->children.end(), [&](const auto& child) {
                return child->kind == KindEvaluation && child->Value("FILE") == owner;
            });
        if (!isKnown) {
            MayUse(item); // whichever file was meant
            if (isOwnerBroken) {
                misread.insert({item.text, ownerLine->keyBegin});
                return;
            }
            const bool isMissing = std::any_of(missingFiles.begin(), missingFiles.end(), [&](const std::string& file) {
                return NearestName(owner, {file}) == file;
            });
            if (isMissing) return;
            const std::vector<std::string> names(files.begin(), files.end());
            AtValue("TV3009", use, "OWNER_FILE",
                    Quoted(owner) + " is no file of the scenario" + DidYouMean(owner, names));
            return;
        }
    }
    const Mount* innermost = use.mount;
    const std::string scope = !owner.empty() ? std::string(owner) : innermost ? innermost->file : rootFile;
    Variable* variable = nullptr;
    if (const auto named = variablesByName.find(value); named != variablesByName.end())
        for (const std::size_t at : named->second) {
            Variable& candidate = variables[at];
            if (!scope.empty() && !candidate.scope.empty() && candidate.scope != scope) continue;
            variable = &candidate;
            break;
        }
    if (!variable) {
        // What a file that could not be had holds counts as present.
        if (const auto top = wrongTops.find(scope); top != wrongTops.end()) {
            // The library takes the file for one without variables.
            faults[top->second].fault.isTaken = false;
            faults[top->second].fault.isValidity = true;
        }
        if (isOwnerBroken)
            misread.insert({item.text, ownerLine->keyBegin});
        else if (missingFiles.count(scope) == 0 && !IsHeldByLost(KindVariable, value))
            AtValue("TV3004", use, "VALUE",
                    "there is no VARIABLE (" + std::string(value) + ")" +
                        (owner.empty() ? "" : " in " + Quoted(owner)));
        return;
    }
    NeedsHeader(*variable->item);
    const ParameterFacts& facts = around.definitions->FactsOf(*item.model);
    const std::string_view wanted = facts.type;
    const Attribute* typeLine = variable->item->Find("TYPE");
    const std::string_view type = typeLine ? typeLine->value : std::string_view();
    // A type that is none, of the variable or of the parameter, has its own finding.
    const bool isWord = (type.empty() || IsType(type)) && IsType(wanted);
    const bool isByAddress = facts.isByAddress;
    variable->isRead = true;
    // A word that is none has its own finding in the model.
    const std::string_view usage = item.model->Value("USAGE");
    const bool isUsageKnown = usage.empty() || usage == "BY_VALUE" || usage == "BY_ADDRESS";
    if (isByAddress || !isUsageKnown) variable->isWritten = true;
    if (!isByAddress && item.parent && item.parent->kind == KindCondition) variable->isCompared = true;
    if (!isWord || (typeLine && typeLine->isBroken)) return;
    if (!TypeFits(type, wanted)) {
        PlacedFault& placed =
            AtValue("TV3004", use, "VALUE",
                    variable->item->Title() + " is of TYPE " + Quoted(type) + ", not " + Quoted(wanted));
        placed.related.push_back({variable->item->text->File().path,
                                  variable->item->text->SpanOf(variable->item->keywordBegin, variable->item->headerEnd),
                                  "the variable"});
        return;
    }
    const bool isNumeric = wanted == "FLOAT" || wanted == "INTEGER" || wanted == "BOOL";
    if (isNumeric && !isByAddress && isUsageKnown && type != "FLOAT")
        AtHeader("TV4011", item, use.mount,
                 variable->item->Title() + " is of TYPE " + Quoted(type) +
                     ", and by value only a FLOAT is read; it gives 0")
            .fault.isTaken = true;
}

void TreeChecks::LookAtVehicle(const Use& use, std::string_view value) {
    // The library takes what begins with no number for 0.
    const int number = WholeNumberOf(value);
    if (around.tables->vehicles.count(number)) {
        if (!IsOfType(value, "INTEGER"))
            AtValue("TV3001", use, "VALUE", "VALUE " + Quoted(value) + " is no number of a vehicle").fault.isTaken =
                true;
        return;
    }
    if (around.tables->hasLostVehicle) return;
    // The one parameter that may mean the environment in place of a vehicle.
    if (number == -1 && use.parameter->model->name == "VHL_NUMBER_PLUS") return;
    AtValue("TV3006", use, "VALUE", "the scenario has no vehicle " + std::string(value));
}

void TreeChecks::LookAtChannel(const Use& use, std::string_view value, bool isInput) {
    const Item& call = *use.parameter->parent;
    const Item* vehicle = nullptr;
    for (const Item* parameter : ParametersOf(call))
        if (parameter->model && Holds(WordsOf(parameter->model->Value("KINDLIST")), "VEHICLE")) {
            vehicle = parameter;
            break;
        }
    const int number = vehicle ? WholeNumberOf(vehicle->Value("VALUE")) : -1;
    const char* word = isInput ? "input " : "output ";
    const auto known = around.tables->vehicles.find(number);
    if (number != -1 && known == around.tables->vehicles.end()) {
        if (vehicle->Value("KIND") == "VEHICLE" || around.tables->hasLostVehicle) return; // it has its own finding
        AtValue("TV3006", use, "VALUE", "the scenario has no vehicle " + std::to_string(number));
        return;
    }
    // One that is not understood, and has its own finding, may name the vehicle.
    // So may one of whose definition the KINDLIST is not understood.
    const bool isLost = !vehicle && std::any_of(call.children.begin(), call.children.end(), [&](const Item* child) {
        if (IsUnknownPart(*child)) return true;
        if (!IsParameter(child->kind)) return false;
        const ParameterFacts& facts = around.definitions->FactsOf(*child->model);
        return facts.isListBroken || facts.kinds.empty();
    });
    if (isLost) return;
    if (number == -1) {
        AtValue("TV3006", use, "VALUE", "the call names no vehicle whose " + std::string(word) + "this could be");
        return;
    }
    if (!IsOfType(value, "INTEGER"))
        AtValue("TV3001", use, "VALUE",
                "VALUE " + Quoted(value) + " is no number of an " + (isInput ? "input" : "output"))
            .fault.isTaken = true;
    const std::size_t count = isInput ? known->second.inputs : known->second.outputs;
    if (static_cast<std::uint32_t>(WholeNumberOf(value)) >= count)
        AtValue("TV3006", use, "VALUE", "vehicle " + std::to_string(number) + " has no " + word + std::string(value));
}

void TreeChecks::LookAtCall(const Use& use) {
    const Item& item = *use.parameter;
    const Item* call = nullptr;
    bool hasOther = false;
    for (const auto& child : item.children) {
        if (child->kind == KindFunction && !child->isLost) call = child;
        if (child->isDropped) hasOther = true;
    }
    if (!call) {
        if (!hasOther)
            Add("TV3012", item, use.mount, item.closing, item.closing,
                "parameter " + Quoted(item.name) + " is a FUNCTION and holds none");
        return;
    }
    if (!call->model || call->isDropped) return;
    // What a definition returns is not known where its RETURN may be lost.
    const bool isLost = std::any_of(call->model->children.begin(), call->model->children.end(), [](const auto& child) {
        return child->isDropped || (child->isMalformed && child->name != child->seenName) ||
               (child->kind == KindReturn && !child->model);
    });
    const std::string_view given = ReturnTypeOf(*call->model);
    const std::string_view wanted = TypeOf(item);
    if (isLost || !IsType(given) || !IsType(wanted) || TypeFits(given, wanted)) return;
    Add("TV3010", *call, use.mount, call->nameBegin, call->nameBegin + call->name.size(),
        Quoted(call->name) + " gives a " + std::string(given) + ", and " + Quoted(item.name) + " is a " +
            std::string(wanted))
        .fault.item = &item;
}

void TreeChecks::LookAtFile(const Use& use, std::string_view value) {
    const std::string_view fileDir = use.parameter->model->Value("FILEDIR");
    if (fileDir.empty()) return; // the definition has its own finding
    const std::string folder = FolderOfFiles(fileDir);
    if (!EnvConfig::findInPath(folder, std::string(value)).empty()) return;
    std::vector<std::string> names;
    std::string forward = folder;
    std::replace(forward.begin(), forward.end(), '\\', '/');
    for (const std::string& path : EnvConfig::getSeparatedPath(forward)) {
        std::error_code error;
        for (std::filesystem::directory_iterator entry(path, error), end; !error && entry != end;
             entry.increment(error))
            names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    PlacedFault& placed =
        AtValue("TV3007", use, "VALUE",
                "the data path has no file " + Quoted(value) + " in " + folder + DidYouMean(value, names));
    if (const std::string near = NearestName(value, names); !near.empty()) {
        placed.fault.fixTitle = "replace " + Quoted(value) + " by " + Quoted(near);
        placed.fault.fixBegin = placed.fault.begin;
        placed.fault.fixEnd = placed.fault.end;
        placed.fault.fixText = near;
        placed.fault.fixIsSafe = OnlyOneLetterAway(value, names) == near;
    }
}

// Those of the script itself: what a file of many scenarios holds may be used in another one.
void TreeChecks::LookAtVariables() {
    for (const Variable& variable : variables) {
        if (!variable.scope.empty() || variable.item->isMalformed || variable.item->isDropped ||
            variable.item->isMisplaced || mayBeUsed.count(variable.item->name) > 0)
            continue;
        // What a front end offers to its user is changed by him, and a host asks for it.
        const std::string_view offered = variable.item->Value("INTERACTIVE_TYPE");
        const bool isOffered = !offered.empty() && offered != "VOID";
        if (isOffered || variable.item->Value("TYPE") == "VOID") continue;
        const auto number = LongNumberOf(variable.item->name);
        if (number && around.declaredVariables.count(*number)) continue;
        // One that is not found is a second one of its number, whatever an include has of it.
        const std::vector<std::size_t>& named = variablesByName[variable.item->name];
        const auto first =
            std::find_if(named.begin(), named.end(), [&](std::size_t at) { return variables[at].scope.empty(); });
        if (&variables[*first] != &variable) continue;
        const bool isUnwritten = variable.isCompared && !variable.isWritten;
        if ((!variable.isRead || isUnwritten) && IsUnnamed(variable.item->Value("TYPE"))) continue;
        if (!variable.isRead)
            AtHeader("TV4005", *variable.item, nullptr, "nothing uses " + variable.item->Title()).fault.isTaken = true;
        else if (isUnwritten)
            AtHeader("TV4006", *variable.item, nullptr,
                     variable.item->Title() + " is compared, and nothing gives it another value")
                .fault.isTaken = true;
    }
}

} // namespace TavrelChecking
