#include "run/TreeWatch.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

#include <scenario/Condition.h>
#include <scenario/Criteria.h>
#include <scenario/Parameter.h>
#include <scenario/action.h>
#include <scenario/evaluation.h>
#include <scenario/program.h>
#include <scenario/rule.h>
#include <scenario/scenario.h>
#include <scenario/variable.h>

#include "run/StepScope.h"

namespace {

using ScenarioLib::Scenario;

// A class whose type is told apart in vain, since it comes from another library, counts as one of the host.
template <class Class>
bool IsExactly(const ScenarioItem& item) {
    return &typeid(item) == &typeid(Class);
}
template <class Class>
bool IsNullOrExactly(const ScenarioItem* item) {
    return !item || IsExactly<Class>(*item);
}

// No sizes of names, which stand on top of the number of one.
constexpr std::uint64_t kLongName = ~std::uint64_t{0};
constexpr std::uint64_t kListEnds = kLongName - 1;

// A name as a number: its bytes and, on top, its size. All names longer than seven bytes have one number.
std::uint64_t NumberFor(const std::string& name) {
    const std::size_t size = name.size();
    const char* const text = name.data();
    const auto byte = [text](std::size_t at) { return std::uint64_t{static_cast<unsigned char>(text[at])}; };
    const std::uint64_t top = std::uint64_t{size} << 56;
    if (size - 1 < 3) return top | byte(0) << 16 | byte(size / 2) << 8 | byte(size - 1);
    if (size - 4 < 4) {
        std::uint32_t first;
        std::uint32_t last;
        std::memcpy(&first, text, sizeof first);
        std::memcpy(&last, text + size - sizeof last, sizeof last);
        // The last word overlaps the first.
        const std::size_t twice = 8 * (2 * sizeof last - size);
        const std::uint64_t rest = std::endian::native == std::endian::little
                                       ? std::uint64_t{last} >> twice
                                       : std::uint64_t{last} & ((std::uint64_t{1} << (32 - twice)) - 1);
        return top | rest << 32 | first;
    }
    return size == 0 ? 0 : kLongName;
}

// Of names of variables. One whose size nobody has asked for cannot be among what was found, whatever it is.
class Sizes {
public:
    bool Contain(std::size_t size) const { return size < kSizes && (bits >> size & 1) != 0; }
    void Add(std::size_t size) {
        if (size < kSizes) bits |= std::uint32_t{1} << size;
    }
    bool operator==(const Sizes&) const = default;

private:
    static constexpr std::size_t kSizes = 32; // what is asked for are the texts of numbers
    std::uint32_t bits = 0;
};

// What a walk came by, as it was the last time.
class Walk {
public:
    void Begin() {
        at = 0;
        longAt = 0;
        changed = false;
    }
    // Of a list, the names that may be asked for. As this is done after each action, it reads as little as it can: of
    // most variables the size of the name, and of those that are as they were nothing twice.
    void SeeAll(const std::vector<Variable*>& variables, Sizes asked) {
        const Entry* known = entries.data() + at;
        const Entry* const end = entries.data() + entries.size();
        auto next = variables.begin();
        for (; next != variables.end(); ++next) {
            const Variable* variable = *next;
            if (!variable || !asked.Contain(variable->name.size())) continue;
            if (known == end || known->item != variable) break;
            const std::uint64_t number = NumberFor(variable->name);
            if (known->number != number || number == kLongName) break;
            ++known;
        }
        at = static_cast<std::size_t>(known - entries.data());
        for (; next != variables.end(); ++next)
            if (*next && asked.Contain((*next)->name.size())) See(*next, (*next)->name);
    }
    void See(const ScenarioItem* item, const std::string& name) {
        const std::uint64_t number = NumberFor(name);
        See(item, number);
        if (number == kLongName) SeeLong(name);
    }
    void See(const ScenarioItem* item, std::uint64_t number) {
        if (at < entries.size() && entries[at].item == item && entries[at].number == number) {
            ++at;
            return;
        }
        // What follows a difference is taken down anew.
        entries.resize(at);
        entries.push_back({item, number});
        ++at;
        changed = true;
    }
    // Whether the walk differed from the one before.
    bool End() {
        if (at < entries.size()) changed = true;
        entries.resize(at);
        longNames.resize(longAt);
        return changed;
    }

private:
    void SeeLong(const std::string& name) {
        if (longAt == longNames.size()) longNames.emplace_back();
        std::string& known = longNames[longAt++];
        if (known == name) return;
        known = name;
        changed = true;
    }

    struct Entry {
        const ScenarioItem* item;
        std::uint64_t number;
    };
    std::vector<Entry> entries;
    std::vector<std::string> longNames; // in the order of the walk
    std::size_t at = 0;
    std::size_t longAt = 0;
    bool changed = false;
};

// One place that was asked about.
struct Watch {
    Walk walk;
    const ScenarioItem* above = nullptr; // the next place whose variables are seen as well
    std::uint64_t versionAbove = 0;
    std::uint64_t moment = 0; // of the last walk
    std::uint64_t version = 0;
    Sizes asked; // in the last walk

    bool IsFresh(Sizes now) const { return moment == StepScope::Moment() && asked == now; }
};

struct Watches {
    std::unordered_map<const ScenarioItem*, Watch> variables;
    std::unordered_map<const ScenarioItem*, Watch> enumTabs;
    std::uint64_t lastVersion = 0;
    Sizes asked; // since the last step that forgot the dead
    // The last answers, as most parameters ask what the one before has asked.
    const ScenarioItem* lastPlace = nullptr;
    Watch* lastOfPlace = nullptr;
    const ScenarioItem* lastRoot = nullptr;
    const Watch* lastOfRoot = nullptr;
    std::uint64_t deaths = 0;
    std::uint64_t step = 0;

    // Places that are gone are not asked about again, so their watches go, with all others, at the next step.
    void ForgetTheDead() {
        if (step == StepScope::Step()) return;
        step = StepScope::Step();
        if (deaths == StepScope::Deaths()) return;
        deaths = StepScope::Deaths();
        variables.clear();
        enumTabs.clear();
        asked = {};
        lastPlace = lastRoot = nullptr;
    }

    // Repeats the walk of a watch. `look` answers false if only a search can tell what there is.
    template <class Look>
    std::uint64_t Renew(Watch& watch, bool changed, Look look) {
        watch.asked = asked;
        const std::uint64_t before = std::exchange(watch.version, 0); // should the walk not come back
        watch.walk.Begin();
        const bool isKnown = look(watch.walk);
        if (watch.walk.End()) changed = true;
        if (isKnown) watch.version = changed || before == 0 ? ++lastVersion : before;
        watch.moment = StepScope::Moment();
        return watch.version;
    }
};

Watches& TheWatches() {
    static Watches watches;
    return watches;
}

bool EndsTheWayUp(const ScenarioItem& item) {
    return item.kind == KindEvaluation || item.kind == KindGeneralParameters || item.kind == KindInclude;
}

// A call and a parameter show what their parents show, and so does a rule without variables.
const ScenarioItem* SkipTransparent(const ScenarioItem* item) {
    const auto isTransparent = [](const ScenarioItem& place) {
        if (IsExactly<Rule>(place)) return static_cast<const Rule&>(place).variables.empty();
        return IsExactly<Condition>(place) || IsExactly<Action>(place) || IsExactly<Function>(place) ||
               IsExactly<Parameter>(place);
    };
    while (item && !EndsTheWayUp(*item) && isTransparent(*item)) item = item->parent;
    return item;
}

bool IsFolder(const ScenarioItem& item) {
    return IsExactly<Folders>(item) || IsExactly<Group>(item) || IsExactly<Program>(item);
}

// The variables of one place; false for one that only a search can tell about.
bool SeeVariables(Walk& walk, const ScenarioItem& item, Sizes asked) {
    if (IsExactly<Rule>(item)) {
        walk.SeeAll(static_cast<const Rule&>(item).variables, asked);
    } else if (IsExactly<Task>(item) || IsExactly<Criteria>(item) || IsExactly<Include>(item) ||
               IsExactly<Evaluation>(item)) {
        walk.SeeAll(static_cast<const Task&>(item).variables, asked);
    } else if (IsExactly<Scenario>(item)) {
        const auto& scenario = static_cast<const Scenario&>(item);
        if (!IsNullOrExactly<Evaluation>(scenario.evaluation) ||
            !IsNullOrExactly<GeneralParameters>(scenario.generalParameters) ||
            !std::all_of(scenario.includes.begin(), scenario.includes.end(), IsNullOrExactly<Include>))
            return false;
        // The lists follow one another in another order than this, so it matters where each of them ends.
        walk.SeeAll(scenario.variables, asked);
        for (const Include* include : scenario.includes) {
            walk.See(include, kListEnds);
            if (include) walk.SeeAll(include->variables, asked);
        }
        walk.See(scenario.evaluation, kListEnds);
        if (scenario.evaluation) walk.SeeAll(scenario.evaluation->variables, asked);
    } else if (IsFolder(item)) {
        for (const ScenarioItem* child : static_cast<const Folders&>(item).children)
            if (child && child->kind == KindVariable && asked.Contain(child->name.size())) walk.See(child, child->name);
    } else {
        return false;
    }
    return true;
}

// What searches for enumerations ask of an item besides its name.
std::uint64_t Traits(const ScenarioItem& item, std::size_t depth, bool isEntry) {
    return std::uint64_t{depth} << 32 | std::uint64_t{item.kind} << 1 | (isEntry ? 1 : 0);
}

// The folder and all that stands below, each with its depth; false if a class of the host is among them.
bool SeeEnumTabs(Walk& walk, const ScenarioItem& item, std::size_t depth) {
    const bool isEntry = IsExactly<Enum>(item) || IsExactly<Variable>(item);
    if (!isEntry && !IsExactly<EnumTab>(item) && !IsFolder(item)) return false;
    walk.See(&item, item.name);
    walk.See(nullptr, Traits(item, depth, isEntry));
    if (isEntry) return true;
    for (const ScenarioItem* child : static_cast<const Folders&>(item).children)
        if (!child || !SeeEnumTabs(walk, *child, depth + 1)) return false;
    return true;
}

enum class Search { Found, NotHere, Unknown };

template <class Item>
Search SearchAll(const std::vector<Item*>& items, const ScenarioItem*& folder);

// What FindItem gives for the folder "ENUMTAB_LIST", unless a class of the host has a say in it.
Search FindEnumTabList(const ScenarioItem& item, const ScenarioItem*& folder) {
    if (item.kind == KindFolder && item.name == "ENUMTAB_LIST") {
        folder = &item;
        return Search::Found;
    }
    if (IsFolder(item) || IsExactly<EnumTab>(item))
        return SearchAll(static_cast<const Folders&>(item).children, folder);
    if (IsExactly<Enum>(item) || IsExactly<Variable>(item)) return Search::NotHere;
    if (IsExactly<Parameter>(item)) {
        const Function* call = static_cast<const Parameter&>(item).functionValue;
        return call ? FindEnumTabList(*call, folder) : Search::NotHere;
    }
    if (IsExactly<Condition>(item)) {
        const Search below = SearchAll(static_cast<const Condition&>(item).subConditions, folder);
        if (below != Search::NotHere) return below;
    } else if (!IsExactly<Action>(item) && !IsExactly<Function>(item)) {
        return Search::Unknown;
    }
    return SearchAll(static_cast<const Function&>(item).parameters, folder);
}

template <class Item>
Search SearchAll(const std::vector<Item*>& items, const ScenarioItem*& folder) {
    for (const ScenarioItem* item : items) {
        const Search result = item ? FindEnumTabList(*item, folder) : Search::Unknown;
        if (result != Search::NotHere) return result;
    }
    return Search::NotHere;
}

} // namespace

std::uint64_t treeWatch::VisibleVariables(const ScenarioItem* item, std::size_t nameSize) {
    Watches& watches = TheWatches();
    watches.ForgetTheDead();
    watches.asked.Add(nameSize);
    item = SkipTransparent(item);
    if (item && item == watches.lastPlace && watches.lastOfPlace->IsFresh(watches.asked))
        return watches.lastOfPlace->version;

    // States may be nested deeper than the stack would carry, so the way up is kept in a list.
    static std::vector<std::pair<const ScenarioItem*, Watch*>> way;
    way.clear();
    const ScenarioItem* above = nullptr;
    std::uint64_t version = 0;
    bool isWhole = true; // nothing above asks for a search
    for (const ScenarioItem* place = item; place;) {
        Watch& watch = place == watches.lastPlace ? *watches.lastOfPlace : watches.variables[place];
        if (watch.IsFresh(watches.asked)) {
            above = place;
            version = watch.version;
            isWhole = version != 0;
            break;
        }
        way.emplace_back(place, &watch);
        place = EndsTheWayUp(*place) ? nullptr : SkipTransparent(place->parent);
    }
    for (; !way.empty(); way.pop_back()) {
        const auto [place, watch] = way.back();
        const bool changed = watch->above != above || watch->versionAbove != version;
        watch->above = above;
        watch->versionAbove = version;
        version = watches.Renew(*watch, changed, [&, place = place](Walk& walk) {
            return SeeVariables(walk, *place, watches.asked) && isWhole;
        });
        isWhole = version != 0;
        above = place;
        watches.lastPlace = place;
        watches.lastOfPlace = watch;
    }
    return version;
}

std::uint64_t treeWatch::EnumTabs(const ScenarioItem* root) {
    if (!root) return 0;
    Watches& watches = TheWatches();
    watches.ForgetTheDead();
    if (root == watches.lastRoot && watches.lastOfRoot->moment == StepScope::Moment())
        return watches.lastOfRoot->version;
    Watch& watch = watches.enumTabs[root];
    watches.lastRoot = root;
    watches.lastOfRoot = &watch;
    if (watch.moment == StepScope::Moment()) return watch.version;
    return watches.Renew(watch, false, [root](Walk& walk) {
        const ScenarioItem* folder = nullptr;
        const Search result = FindEnumTabList(*root, folder);
        return result == Search::NotHere || (result == Search::Found && SeeEnumTabs(walk, *folder, 0));
    });
}
