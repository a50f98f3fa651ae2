#include <variation/Plan.h>

#include <algorithm>
#include <deque>
#include <limits>
#include <map>
#include <optional>

#include <nlohmann/json.hpp>
#include <scenario/NearestName.h>
#include <simulation/Criteria.h>
#include <variation/Constraint.h>
#include <variation/CoveringArray.h>
#include <variation/Distribution.h>
#include <variation/Domain.h>
#include <variation/Philox.h>
#include <variation/Refused.h>
#include <variation/Sobol.h>

#include "Units.h"

namespace TavrelVariation {

namespace {

constexpr std::uint64_t kNumbersEnd = std::uint64_t{1} << 53;
constexpr std::uint64_t kMostCounted = 10000000; // candidates that are looked at for a count
constexpr std::uint64_t kTriesForOne = 1000;     // candidates for each variant asked for
constexpr std::uint64_t kMostWholeValues = 16;   // that are taken without a step
constexpr int kDecimals = 3;                     // of spaced and sampled reals, if nothing else is said
constexpr std::uint64_t kNoIndex = ~std::uint64_t{0};

bool IsSampled(MethodKind kind) {
    return kind == MethodKind::Random || kind == MethodKind::LatinHypercube || kind == MethodKind::Sobol;
}

bool TakesLists(MethodKind kind) {
    return kind == MethodKind::OneAtATime || kind == MethodKind::Grid || kind == MethodKind::Cover;
}

bool IsNumber(ValueType type) { return type == ValueType::Integer || type == ValueType::Real; }

// Product of both, or the end of the numbers where it is not below it.
std::uint64_t Times(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a >= (kNumbersEnd + b - 1) / b ? kNumbersEnd : a * b;
}

// "60 km/h" as a number and a unit; the unit is empty where there is none.
std::pair<std::string, std::string> NumberAndUnit(const std::string& text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string::npos) return {text, ""};
    return {text.substr(0, blank), text.substr(blank + 1)};
}

// Below, above or 0, which it is for values that are equal.
int Order(const Value& a, const Value& b) {
    if (a.text && b.text) return a.text->compare(*b.text);
    if (a.text || b.text) return a.text ? 1 : -1;
    return Compare(a.number, b.number);
}

// Rows of as many values each, to keep each row once, or to find one: a real with a fine step has a million.
class ValueRows {
public:
    explicit ValueRows(std::size_t itsWidth = 1) : rows(Less{itsWidth}) {}
    // False for a row that is there already. The values must stay where they are.
    bool Add(const Value* row, std::size_t place = 0) { return rows.emplace(row, place).second; }
    bool Has(const Value* row) const { return rows.count(row) != 0; }
    // Where the first of those rows stands; none if it is not there.
    std::optional<std::size_t> PlaceOf(const Value* row) const {
        const auto found = rows.find(row);
        return found == rows.end() ? std::nullopt : std::optional(found->second);
    }

private:
    struct Less {
        std::size_t width;
        bool operator()(const Value* a, const Value* b) const {
            int order = 0;
            for (std::size_t i = 0; i < width && order == 0; ++i) order = Order(a[i], b[i]);
            return order < 0;
        }
    };
    std::map<const Value*, std::size_t, Less> rows;
};

} // namespace

// One parameter, or a linked set, which has the values of several at once.
struct Factor {
    std::vector<std::size_t> parameters;  // indexes in the plan, in a row
    std::vector<Value> levels;            // one after the other, each as long as `parameters`; of methods with lists
    std::vector<Value> defaults;          // where the method needs them
    std::uint64_t stream = 0;             // of its random numbers
    std::optional<IndexQuantile> byIndex; // over levels, of sampling methods
    std::optional<NumberQuantile> byNumber;
    int decimals = 0; // of what byNumber gives

    std::size_t Width() const { return parameters.size(); }
    std::size_t LevelCount() const { return Width() == 0 ? 0 : levels.size() / Width(); }
    const Value* Level(std::size_t index) const { return levels.data() + index * Width(); }
};

struct Plan::Parts {
    struct Bound {
        PlannedParameter told;
        std::size_t target = 0;
        std::optional<std::size_t> namedDeclaration; // by which the plan names it
        std::optional<std::size_t> declaration;      // whose ranges and default count
        lmk::t_unit targetUnit = lmk::UNIT_NONE;
        bool whole = false;
        std::optional<NumberDomain> declared; // what the declaration allows; of numbers
        std::optional<NumberDomain> domain;   // what the plan takes; of numbers with ranges
        std::vector<Value> listed;            // of texts, booleans and `values`
        bool hasList = false;
        std::optional<Value> byDefault;
        std::string noDefault; // why there is none
        const PlanFile::Parameter* entry = nullptr;
    };

    PlanFile file;
    std::deque<std::string> texts;
    std::map<std::string, const std::string*> textIndex;
    std::vector<Bound> bound;
    std::vector<PlannedParameter> parameters;
    std::vector<Factor> factors;
    std::vector<std::size_t> factorOf; // by parameter
    std::vector<Constraint> constraints;
    std::vector<std::vector<Value>> written;                  // include rows
    std::vector<std::vector<Value>> rows;                     // of `list`
    std::vector<std::vector<int>> covering;                   // of `cover`, after the written ones
    std::vector<std::pair<std::size_t, std::size_t>> changes; // one-at-a-time, boundary: factor and level; see At
    std::optional<Sobol> sobol;
    std::vector<std::uint64_t> scrambling; // key of each factor
    std::vector<Permutation> permutations; // of each factor
    std::vector<std::uint64_t> bases;      // of a grid: how many levels each factor has
    std::uint64_t candidates = 0;          // in the method's own order
    std::uint64_t numbersEnd = 0;          // all numbers are below
    bool gaps = false;                     // constraints may leave candidates out

    // `random` and `sobol` with constraints: of the candidates below `looked`, `found` are variants.
    mutable std::uint64_t looked = 0;
    mutable std::uint64_t found = 0;
    mutable std::vector<const Value*> scratch;
    // Of a grid, the candidate that was asked for last.
    struct GridPlace {
        std::uint64_t index = kNoIndex;
        std::vector<std::size_t> levels; // of each factor
        std::vector<Value> values;
    };
    mutable GridPlace grid;

    const std::string* Kept(const std::string& text) {
        const auto known = textIndex.find(text);
        if (known != textIndex.end()) return known->second;
        texts.push_back(text);
        return textIndex[text] = &texts.back();
    }

    bool Allows(const std::vector<Value>& values) const {
        if (constraints.empty()) return true;
        scratch.resize(values.size());
        for (std::size_t i = 0; i < values.size(); ++i) scratch[i] = &values[i];
        return std::all_of(constraints.begin(), constraints.end(),
                           [&](const Constraint& constraint) { return constraint.Of(scratch) == Truth::True; });
    }

    void Put(std::size_t factor, const Value* from, std::vector<Value>& values) const {
        const std::vector<std::size_t>& places = factors[factor].parameters;
        // Nearly every factor is one parameter.
        if (places.size() == 1) {
            values[places[0]] = *from;
            return;
        }
        for (const std::size_t place : places) values[place] = *from++;
    }

    // The candidate of an index in the method's own order.
    void Candidate(std::uint64_t index, std::vector<Value>& values) const;
    void GridCandidate(std::uint64_t index, std::vector<Value>& values) const;
    void Sample(std::size_t factor, double u, std::vector<Value>& values) const;
    // Whether it is a variant; `values` holds it then.
    bool Exists(std::uint64_t index, std::vector<Value>& values) const;
    // Looks at the candidates of `random` and `sobol` until `end` of them are known, or all variants are found.
    void LookUntil(std::uint64_t end) const;
    bool CountsFound() const {
        return gaps && (file.method.kind == MethodKind::Random || file.method.kind == MethodKind::Sobol);
    }
    std::uint64_t Bases() const { return written.size() + candidates; }
};

void Plan::Parts::Sample(std::size_t factor, double u, std::vector<Value>& values) const {
    const Factor& of = factors[factor];
    if (of.byIndex) return Put(factor, of.Level(of.byIndex->At(u)), values);
    values[of.parameters[0]] = Value{{of.byNumber->At(u), of.decimals}, nullptr};
}

void Plan::Parts::Candidate(std::uint64_t index, std::vector<Value>& values) const {
    values.resize(parameters.size());
    switch (file.method.kind) {
    case MethodKind::Defaults:
        for (std::size_t f = 0; f < factors.size(); ++f) Put(f, factors[f].defaults.data(), values);
        return;
    case MethodKind::OneAtATime:
    case MethodKind::Boundary: {
        for (std::size_t f = 0; f < factors.size(); ++f) Put(f, factors[f].defaults.data(), values);
        const auto [factor, level] = changes[index];
        if (factor < factors.size()) Put(factor, factors[factor].Level(level), values);
        return;
    }
    case MethodKind::Grid:
        GridCandidate(index, values);
        return;
    case MethodKind::List:
        values = rows[index];
        return;
    case MethodKind::Random:
        for (std::size_t f = 0; f < factors.size(); ++f)
            Sample(f, UnitNumber(RandomBits(file.seed, index, factors[f].stream)), values);
        return;
    case MethodKind::LatinHypercube:
        for (std::size_t f = 0; f < factors.size(); ++f) {
            // The place within the stratum in so few bits that no rounding leaves it.
            const double inside =
                file.method.count <= std::uint64_t{1} << 32
                    ? (static_cast<double>(RandomBits(file.seed, index, factors[f].stream) >> 44) + 0.5) / (1 << 20)
                    : 0.5;
            Sample(f, (static_cast<double>(permutations[f](index)) + inside) / static_cast<double>(file.method.count),
                   values);
        }
        return;
    case MethodKind::Sobol:
        for (std::size_t f = 0; f < factors.size(); ++f)
            Sample(f, UnitNumber(OwenScrambled(sobol->Coordinate(index, f), scrambling[f])), values);
        return;
    case MethodKind::Cover:
        for (std::size_t f = 0; f < factors.size(); ++f)
            Put(f, factors[f].Level(static_cast<std::size_t>(covering[index][f])), values);
        return;
    }
}

// The next one is mostly asked for, and differs from the one before in its last values.
void Plan::Parts::GridCandidate(std::uint64_t index, std::vector<Value>& values) const {
    if (index != 0 && index - 1 == grid.index) {
        for (std::size_t f = factors.size(); f-- > 0;) {
            const bool isLast = ++grid.levels[f] == bases[f];
            if (isLast) grid.levels[f] = 0;
            Put(f, factors[f].Level(grid.levels[f]), grid.values);
            if (!isLast) break;
        }
    } else {
        grid.levels.resize(factors.size());
        grid.values.resize(parameters.size());
        std::uint64_t rest = index;
        for (std::size_t f = factors.size(); f-- > 0; rest /= bases[f]) {
            grid.levels[f] = static_cast<std::size_t>(rest % bases[f]);
            Put(f, factors[f].Level(grid.levels[f]), grid.values);
        }
    }
    grid.index = index;
    values = grid.values;
}

bool Plan::Parts::Exists(std::uint64_t index, std::vector<Value>& values) const {
    if (index >= candidates) return false;
    Candidate(index, values);
    if (!gaps) return true;
    if (!Allows(values)) return false;
    if (!CountsFound() || index < file.method.count) return true;
    std::vector<Value> kept = values;
    LookUntil(index);
    values = std::move(kept);
    return found < file.method.count || looked > index;
}

void Plan::Parts::LookUntil(std::uint64_t end) const {
    std::vector<Value> values;
    while (looked < end && found < file.method.count) {
        if (looked >= candidates)
            throw Refused("method/count", "of " + std::to_string(candidates) + " draws only " + std::to_string(found) +
                                              " are such that the constraints allow them; " +
                                              std::to_string(file.method.count) + " were asked for");
        Candidate(looked, values);
        if (Allows(values)) ++found;
        ++looked;
    }
}

// Brings a plan and a scenario together.
class Plan::Builder {
public:
    Builder(Parts& plan, const Settable& scenario) : parts(plan), settable(scenario), file(plan.file) {}

    void Build() {
        BindParameters();
        BindLinked();
        for (const Parts::Bound& bound : parts.bound) parts.parameters.push_back(bound.told);
        ReadConstraints();
        const MethodKind kind = file.method.kind;
        if (kind == MethodKind::LatinHypercube && !parts.constraints.empty())
            throw Refused("constraints",
                          "latin-hypercube takes none, since its strata would have gaps; random, sobol and "
                          "cover do");
        ReadWritten();
        for (std::size_t f = 0; f < parts.factors.size(); ++f) {
            if (TakesLists(kind)) MakeLevels(f);
            if (kind == MethodKind::Boundary) MakeBoundary(f);
            if (IsSampled(kind)) MakeSampler(f);
            if (kind == MethodKind::Defaults || kind == MethodKind::OneAtATime || kind == MethodKind::Boundary)
                MakeDefaults(f);
        }
        MakeCandidates();
        CheckNumbers();
        for (std::size_t i = 0; i < file.criteria.size(); ++i) {
            try {
                TavrelSimulation::ParseCriterion(file.criteria[i]);
            } catch (const TavrelSimulation::CriterionError& refused) {
                throw Refused("criteria/" + std::to_string(i), refused.what());
            }
        }
    }

    // For the coverage of a plan whose method takes no lists.
    static void MakeLevelsOf(Parts& plan, std::vector<Factor>& factors) {
        for (std::size_t f = 0; f < factors.size(); ++f)
            if (factors[f].Width() == 1) factors[f].levels = LevelsOf(plan, plan.bound[factors[f].parameters[0]]);
    }

private:
    using Bound = Parts::Bound;

    // ---- parameters ----

    void BindParameters() {
        if (file.parameters) {
            for (const PlanFile::Parameter& entry : *file.parameters) {
                AddFactor({Bind(entry.name, "parameters/" + entry.name)});
                parts.bound.back().entry = &entry;
                MakeDomain(parts.bound.back());
            }
            return;
        }
        // All declarations, but those that are linked.
        std::vector<std::size_t> linked;
        for (std::size_t i = 0; i < file.linked.size(); ++i)
            for (const std::string& name : file.linked[i].parameters)
                linked.push_back(Find(name, "linked/" + std::to_string(i) + "/parameters").target);
        for (const Declaration& declaration : settable.Declarations()) {
            const std::string number = "#" + std::to_string(declaration.index);
            const auto alike = std::count_if(settable.Declarations().begin(), settable.Declarations().end(),
                                             [&](const Declaration& other) { return other.name == declaration.name; });
            const bool byName =
                alike == 1 && !declaration.name.empty() && declaration.name[0] != '/' && declaration.name[0] != '#';
            const std::string name = byName ? declaration.name : number;
            std::optional<Named> named;
            try {
                named = settable.Find(byName ? name : number);
            } catch (const AssignmentError& refused) {
                throw Refused("parameters", std::string("missing, and not every declaration can vary: ") +
                                                refused.what() + "; name those that are to vary");
            }
            if (std::count(linked.begin(), linked.end(), named->target) != 0) continue;
            AddFactor({Bind(number, "parameters/" + name)});
            parts.bound.back().told.name = name;
            MakeDomain(parts.bound.back());
        }
    }

    void BindLinked() {
        for (std::size_t i = 0; i < file.linked.size(); ++i) {
            const PlanFile::Linked& set = file.linked[i];
            const std::string place = "linked/" + std::to_string(i);
            std::vector<std::size_t> members;
            for (std::size_t j = 0; j < set.parameters.size(); ++j)
                members.push_back(Bind(set.parameters[j], place + "/parameters/" + std::to_string(j)));
            AddFactor(members);
            Factor& factor = parts.factors.back();
            for (std::size_t r = 0; r < set.rows.size(); ++r)
                for (std::size_t j = 0; j < members.size(); ++j)
                    factor.levels.push_back(Read(parts.bound[members[j]], NamedAs(members[j]), set.rows[r][j],
                                                 place + "/rows/" + std::to_string(r) + "/" + std::to_string(j)));
            // A row that comes twice counts once, but where the rows are the variants.
            if (file.method.kind != MethodKind::List) DropDoubles(factor.levels, factor.Width());
        }
    }

    // Keeps the first of rows that are equal.
    static void DropDoubles(std::vector<Value>& values, std::size_t width = 1) {
        std::vector<Value> kept;
        ValueRows known(width);
        for (auto row = values.cbegin(); row != values.cend(); row += static_cast<std::ptrdiff_t>(width))
            if (known.Add(&*row)) kept.insert(kept.end(), row, row + static_cast<std::ptrdiff_t>(width));
        values = std::move(kept);
    }

    void AddFactor(const std::vector<std::size_t>& parameters) {
        Factor factor;
        factor.parameters = parameters;
        std::string name;
        for (const std::size_t parameter : parameters) {
            name += (name.empty() ? "" : "\n") + parts.bound[parameter].told.id;
            parts.factorOf.push_back(parts.factors.size());
        }
        factor.stream = StreamOf(name);
        parts.factors.push_back(std::move(factor));
    }

    Named Find(const std::string& name, const std::string& place) const {
        try {
            return settable.Find(name);
        } catch (const AssignmentError& refused) {
            throw Refused(place, refused.what());
        }
    }

    Named NamedAs(std::size_t parameter) const {
        return {parts.bound[parameter].target, parts.bound[parameter].namedDeclaration};
    }

    std::size_t Bind(const std::string& name, const std::string& place) {
        const Named named = Find(name, place);
        for (const Bound& other : parts.bound)
            if (other.target == named.target) throw Refused(place, "is the same parameter as " + other.told.place);
        const Target& target = settable.Targets()[named.target];
        Bound bound;
        bound.target = named.target;
        bound.namedDeclaration = named.declaration;
        bound.declaration = named.declaration;
        if (!bound.declaration && !target.declarations.empty()) bound.declaration = target.declarations.front();
        bound.targetUnit = target.unit;
        bound.told.id = target.id;
        bound.told.name = name;
        bound.told.place = place;
        bound.told.type = target.type;
        bound.told.unit = settable.UnitOf(named);
        if (!IsSameUnit(bound.told.unit, target.unit)) bound.told.unitText = lmk::toText(bound.told.unit);
        bound.told.present = settable.Present(named.target);
        bound.whole = target.type == ValueType::Integer;
        if (bound.declaration) {
            const Declaration& declaration = settable.Declarations()[*bound.declaration];
            if (IsNumber(declaration.type) != IsNumber(target.type) ||
                (!IsNumber(target.type) && declaration.type != target.type))
                throw Refused(place, std::string("is declared as ") + WordOf(declaration.type) + ", but " + target.id +
                                         " is " + WordOf(target.type));
            bound.whole = bound.whole || declaration.type == ValueType::Integer;
        }
        ReadDeclared(bound);
        ReadDefault(bound, named);
        parts.bound.push_back(std::move(bound));
        return parts.bound.size() - 1;
    }

    void ReadDeclared(Bound& bound) {
        if (bound.told.type == ValueType::Boolean) {
            bound.listed = {{{}, parts.Kept("false")}, {{}, parts.Kept("true")}};
            bound.hasList = true;
        }
        if (!bound.declaration) return;
        // A parameter may be declared several times, and a run holds it to all of them.
        std::vector<std::size_t> all{*bound.declaration};
        for (const std::size_t other : settable.Targets()[bound.target].declarations)
            if (other != *bound.declaration) all.push_back(other);
        bool isBound = false;
        for (const std::size_t index : all) {
            if (bound.told.type == ValueType::Literal)
                isBound = Narrow(bound.listed, settable.Declarations()[index].literals, isBound);
            else
                isBound = Narrow(bound, index) || isBound;
            if (isBound && (bound.told.type == ValueType::Literal ? bound.listed.empty() : bound.declared->IsEmpty()))
                throw Refused(bound.told.place, "has no value that all declarations of it allow");
        }
        if (bound.told.type == ValueType::Literal) bound.hasList = isBound;
    }

    // Leaves of the values those that are among the literals, or takes these where nothing has bound them before.
    // Answers whether they are bound now.
    bool Narrow(std::vector<Value>& listed, const std::vector<std::string>& literals, bool isBound) {
        if (literals.empty()) return isBound;
        std::vector<Value> allowed, narrowed;
        for (const std::string& literal : literals) allowed.push_back({{}, parts.Kept(literal)});
        DropDoubles(allowed);
        if (isBound) {
            ValueRows known;
            for (const Value& value : allowed) known.Add(&value);
            for (const Value& value : listed)
                if (known.Has(&value)) narrowed.push_back(value);
        }
        listed = std::move(isBound ? narrowed : allowed);
        return true;
    }

    // Leaves of the declared numbers those that this declaration allows, too. Answers whether it has ranges.
    bool Narrow(Bound& bound, std::size_t index) {
        const Declaration& declaration = settable.Declarations()[index];
        const lmk::t_unit unit = settable.UnitOf({bound.target, index});
        std::vector<NumberRange> ranges;
        try {
            for (const auto& range : declaration.integerRanges)
                ranges.push_back({InUnit({range.minimum, 0}, unit, bound.told.unit),
                                  InUnit({range.maximum, 0}, unit, bound.told.unit)});
            for (const auto& range : declaration.realRanges)
                ranges.push_back({InUnit(Decimal::Shortest(range.minimum), unit, bound.told.unit),
                                  InUnit(Decimal::Shortest(range.maximum), unit, bound.told.unit)});
            if (bound.whole)
                for (NumberRange& range : ranges) range = WholePart(range);
            if (ranges.empty()) return false;
            const NumberDomain allowed(ranges, bound.whole, 0);
            bound.declared.emplace(bound.declared ? Common(*bound.declared, allowed) : allowed);
        } catch (const NoDecimal& refused) {
            throw Refused(bound.told.place, refused.what());
        } catch (const std::invalid_argument& refused) {
            throw Refused(bound.told.place, std::string(refused.what()) + " in the scenario");
        }
        return true;
    }

    static NumberDomain Common(const NumberDomain& a, const NumberDomain& b) {
        std::vector<NumberRange> ranges;
        for (const auto& one : a.Ranges())
            for (const auto& other : b.Ranges()) {
                const Decimal minimum = std::max(a.At(one.minimum), b.At(other.minimum));
                const Decimal maximum = std::min(a.At(one.maximum), b.At(other.maximum));
                if (minimum <= maximum) ranges.push_back({minimum, maximum});
            }
        return {ranges, a.IsWhole(), 0};
    }

    // The whole numbers of a range; of one that has none the ends are the wrong way round, which is then told.
    static NumberRange WholePart(const NumberRange& range) {
        Decimal minimum = range.minimum.WithDecimals(0), maximum = range.maximum.WithDecimals(0);
        if (minimum < range.minimum) ++minimum.units;
        if (range.maximum < maximum) --maximum.units;
        return {minimum, maximum};
    }

    void ReadDefault(Bound& bound, const Named& named) {
        const Named declared{bound.target, bound.declaration};
        std::string text = bound.told.present;
        Named as{bound.target, std::nullopt};
        if (bound.declaration) {
            const std::optional<std::string>& said = settable.Declarations()[*bound.declaration].defaultText;
            if (!said) {
                bound.noDefault = "its declaration has no default";
                return;
            }
            text = *said;
            as = declared;
        }
        (void)named;
        try {
            bound.byDefault =
                Read(bound, as, text, bound.told.place, bound.declaration ? Ranges::Bind : Ranges::AreTold);
        } catch (const Refused& refused) {
            bound.noDefault = (bound.declaration ? "its default: " : "the value in the scenario: ") + refused.Reason();
        }
    }

    // The declared end where that is what was given, in digits that lie just outside when they are converted.
    static Decimal Inwards(const Decimal& converted, const Decimal& given, lmk::t_unit unit, const Bound& bound) {
        const NumberDomain& declared = *bound.declared;
        if (IsSameUnit(unit, bound.told.unit) || declared.Contains(converted)) return converted;
        const Decimal near = declared.At(declared.Nearest(converted.WithDecimals(declared.Decimals()).units));
        return InUnit(near, bound.told.unit, unit) == given ? near : converted;
    }

    // Reads what an assignment under that name takes. The scenario says whether it can be had.
    Value Read(const Bound& bound, const Named& named, const std::string& text, const std::string& place,
               Ranges ranges = Ranges::Bind) {
        try {
            settable.Read(named, text, ranges);
            if (!IsNumber(bound.told.type)) return {{}, parts.Kept(text)};
            const auto [number, unitText] = NumberAndUnit(text);
            const lmk::t_unit unit = unitText.empty() ? settable.UnitOf(named) : lmk::toTUnit(unitText.c_str());
            const Decimal given = Decimal::Read(number), converted = InUnit(given, unit, bound.told.unit);
            return {bound.declared ? Inwards(converted, given, unit, bound) : converted, nullptr};
        } catch (const AssignmentError& refused) {
            throw Refused(place, refused.what());
        } catch (const NoDecimal& refused) {
            throw Refused(place, refused.what());
        }
    }

    // ---- domains ----

    void MakeDomain(Bound& bound) {
        const PlanFile::Parameter* entry = bound.entry;
        const std::string& place = bound.told.place;
        const Named named{bound.target, bound.namedDeclaration};
        if (entry && !IsNumber(bound.told.type)) {
            const char* word = WordOf(bound.told.type);
            if (entry->range) throw Refused(place + "/range", std::string("has no meaning for a ") + word);
            if (entry->step) throw Refused(place + "/step", std::string("has no meaning for a ") + word);
            if (entry->count) throw Refused(place + "/count", std::string("has no meaning for a ") + word);
            if (entry->decimals) throw Refused(place + "/decimals", std::string("has no meaning for a ") + word);
        }
        if (entry && entry->decimals && *entry->decimals > 0 && bound.whole)
            throw Refused(place + "/decimals", "has no meaning for an integer");
        if (entry && entry->values) {
            bound.listed.clear();
            for (std::size_t i = 0; i < entry->values->size(); ++i)
                bound.listed.push_back(Read(bound, named, (*entry->values)[i], place + "/values/" + std::to_string(i)));
            DropDoubles(bound.listed);
            bound.hasList = true;
            return;
        }
        if (!IsNumber(bound.told.type)) return;

        std::vector<NumberRange> ranges;
        if (entry && entry->range) {
            const NumberRange range{
                Read(bound, named, entry->range->first, place + "/range/0", Ranges::AreTold).number,
                Read(bound, named, entry->range->second, place + "/range/1", Ranges::AreTold).number};
            if (range.maximum < range.minimum)
                throw Refused(place + "/range", "the range from " + range.minimum.Text() + " to " +
                                                    range.maximum.Text() + " has its ends the wrong way round");
            if (bound.declared && !bound.declared->Contains(range))
                throw Refused(place + "/range", "the range from " + range.minimum.Text() + " to " +
                                                    range.maximum.Text() + " does not lie within what is declared, " +
                                                    bound.declared->Text());
            ranges.push_back(range);
        } else if (bound.declared) {
            for (const auto& range : bound.declared->Ranges())
                ranges.push_back({bound.declared->At(range.minimum), bound.declared->At(range.maximum)});
        }
        try {
            int decimals = 0;
            if (entry && entry->step) {
                const Decimal step = Decimal::Read(*entry->step);
                if (bound.whole && !step.IsWhole())
                    throw Refused(place + "/step", "must be a whole number for an integer");
                decimals = std::max(decimals, step.decimals);
            }
            const bool spaced = (entry && entry->count) || IsSampled(file.method.kind);
            decimals = std::max(decimals, entry && entry->decimals ? *entry->decimals : spaced ? kDecimals : 0);
            bound.domain.emplace(ranges, bound.whole, decimals);
        } catch (const NoDecimal& refused) {
            throw Refused(place, refused.what());
        }
    }

    static Refused NoValues(const Bound& bound, const std::string& reason) { return Refused(bound.told.place, reason); }

    static std::int64_t StepOf(const Bound& bound) {
        if (!bound.entry || !bound.entry->step) return 1;
        return Decimal::Read(*bound.entry->step).WithDecimals(bound.domain->Decimals()).units;
    }

    // The values of a parameter for a method that needs a list of them.
    static std::vector<Value> LevelsOf(const Parts& plan, const Bound& bound) {
        (void)plan;
        if (bound.hasList) return bound.listed;
        if (!IsNumber(bound.told.type)) throw NoValues(bound, "has no declared literals; add values");
        const bool ranged = bound.domain && !bound.domain->IsEmpty();
        if (!ranged) throw NoValues(bound, "has no declared range; add values, or range with step or count");
        const NumberDomain& domain = *bound.domain;
        std::vector<std::int64_t> numbers;
        try {
            if (bound.entry && bound.entry->step)
                numbers = domain.Steps(StepOf(bound));
            else if (bound.entry && bound.entry->count)
                numbers = domain.Spaced(static_cast<std::size_t>(*bound.entry->count));
            else if (!domain.IsWhole())
                throw NoValues(bound, "is real; add step, count or values");
            else if (domain.Count() > kMostWholeValues)
                throw NoValues(bound, "has " + std::to_string(domain.Count()) + " values, more than " +
                                          std::to_string(kMostWholeValues) + "; add step, count or values");
            else
                numbers = domain.All();
        } catch (const std::length_error& refused) {
            throw NoValues(bound, refused.what());
        } catch (const NoDecimal& refused) {
            throw NoValues(bound, refused.what());
        }
        std::vector<Value> values;
        for (const std::int64_t number : numbers) values.push_back({domain.At(number), nullptr});
        return values;
    }

    // ---- what the method makes of a factor ----

    void RefuseDistribution(const Bound& bound) const {
        if (bound.entry && bound.entry->distribution)
            throw Refused(bound.told.place + "/distribution",
                          std::string(WordOf(file.method.kind)) +
                              " takes a list of values; random, latin-hypercube and sobol take a distribution");
    }

    void MakeLevels(std::size_t index) {
        Factor& factor = parts.factors[index];
        if (factor.Width() != 1 || IsLinked(index)) return;
        const Bound& bound = parts.bound[factor.parameters[0]];
        RefuseDistribution(bound);
        factor.levels = LevelsOf(parts, bound);
        CheckStored(bound, factor.levels);
    }

    // Integers are stored in SI units, and few of a smaller unit are whole there.
    void CheckStored(const Bound& bound, const std::vector<Value>& values) const {
        const auto isStored = [](lmk::t_unit unit) { return lmk::convToSI(unit, 1) == 1; };
        if (bound.told.type != ValueType::Integer || (isStored(bound.told.unit) && isStored(bound.targetUnit))) return;
        for (const Value& value : values) {
            std::string text = value.number.Text();
            if (!bound.told.unitText.empty()) text += " " + bound.told.unitText;
            try {
                settable.Read({bound.target, std::nullopt}, text, Ranges::AreTold);
            } catch (const AssignmentError& refused) {
                throw Refused(bound.told.place,
                              std::string(refused.what()) + "; add values that do, or range and step to them");
            }
        }
    }

    // Neighbours are enough: where a unit is too small, one of a few does not come back.
    void CheckStored(const Bound& bound, const NumberDomain& domain) const {
        constexpr std::int64_t kNeighbours = 1000;
        std::vector<Value> values;
        for (const NumberDomain::Range& range : domain.Ranges()) {
            for (std::int64_t i = 0; i < kNeighbours && i <= Difference(range.maximum, range.minimum); ++i)
                values.push_back({domain.At(range.minimum + i), nullptr});
            values.push_back({domain.At(range.maximum), nullptr});
        }
        CheckStored(bound, values);
    }

    // Linked sets have their rows from the beginning.
    bool IsLinked(std::size_t factor) const { return factor >= parts.factors.size() - file.linked.size(); }

    void MakeBoundary(std::size_t index) {
        Factor& factor = parts.factors[index];
        if (IsLinked(index)) return;
        const Bound& bound = parts.bound[factor.parameters[0]];
        RefuseDistribution(bound);
        if (bound.hasList || !IsNumber(bound.told.type) || bound.domain->IsEmpty()) {
            factor.levels = LevelsOf(parts, bound);
            return;
        }
        try {
            for (const std::int64_t number : bound.domain->Boundary(StepOf(bound)))
                factor.levels.push_back({bound.domain->At(number), nullptr});
            CheckStored(bound, factor.levels);
        } catch (const NoDecimal& refused) {
            throw NoValues(bound, refused.what());
        }
    }

    void MakeDefaults(std::size_t index) {
        Factor& factor = parts.factors[index];
        factor.defaults.clear();
        if (IsLinked(index)) {
            // The row that equals the defaults, else the first.
            std::size_t chosen = 0;
            for (std::size_t r = factor.LevelCount(); r-- > 0;) {
                bool equal = true;
                for (std::size_t j = 0; j < factor.Width(); ++j) {
                    const auto& byDefault = parts.bound[factor.parameters[j]].byDefault;
                    equal = equal && byDefault && factor.Level(r)[j] == *byDefault;
                }
                if (equal) chosen = r;
            }
            factor.defaults.assign(factor.Level(chosen), factor.Level(chosen) + factor.Width());
            return;
        }
        const Bound& bound = parts.bound[factor.parameters[0]];
        if (!bound.byDefault) throw Refused(bound.told.place, bound.noDefault);
        factor.defaults = {*bound.byDefault};
    }

    void MakeSampler(std::size_t index) {
        Factor& factor = parts.factors[index];
        if (IsLinked(index)) {
            factor.byIndex.emplace(factor.LevelCount());
            return;
        }
        const Bound& bound = parts.bound[factor.parameters[0]];
        const PlanFile::Sampling* sampling =
            bound.entry && bound.entry->distribution ? &*bound.entry->distribution : nullptr;
        const std::string place = bound.told.place + "/distribution";
        const DistributionKind kind = sampling ? sampling->distribution.kind : DistributionKind::Uniform;
        try {
            if (kind == DistributionKind::ProbabilitySet) return MakeElements(factor, bound, *sampling, place);
            if (bound.hasList || !IsNumber(bound.told.type)) {
                if (kind != DistributionKind::Uniform)
                    throw Refused(place, bound.hasList && IsNumber(bound.told.type)
                                             ? "needs ranges, not values; a list takes uniform or probability-set"
                                             : std::string("a ") + WordOf(bound.told.type) +
                                                   " takes uniform or probability-set");
                factor.levels = LevelsOf(parts, bound);
                factor.byIndex.emplace(factor.LevelCount());
                return;
            }
            if (bound.domain->IsEmpty() && kind == DistributionKind::Uniform)
                throw NoValues(bound, "has no declared range; add range or values");
            factor.byNumber.emplace(*bound.domain, sampling ? sampling->distribution : Distribution());
            factor.decimals = bound.domain->Decimals();
            CheckStored(bound, *bound.domain);
            if (bound.domain->IsEmpty()) // the far ends are asked for once, so that no number fails later
                for (const double u : {UnitNumber(0), UnitNumber(~std::uint64_t{0})})
                    CheckStored(bound, {{{factor.byNumber->At(u), factor.decimals}, nullptr}});
        } catch (const std::invalid_argument& refused) {
            throw Refused(place, refused.what());
        } catch (const NoDecimal& refused) {
            throw Refused(place, refused.what());
        }
    }

    void MakeElements(Factor& factor, const Bound& bound, const PlanFile::Sampling& sampling,
                      const std::string& place) {
        const Named named{bound.target, bound.namedDeclaration};
        std::vector<std::pair<Value, double>> elements;
        ValueRows listed;
        for (const Value& value : bound.listed) listed.Add(&value);
        for (std::size_t i = 0; i < sampling.elements.size(); ++i) {
            const std::string at = place + "/elements/" + std::to_string(i) + "/value";
            // Numbers outside are cut away like the tails of the others; a text outside is a slip of the pen.
            const Value value = Read(bound, named, sampling.elements[i].value, at,
                                     IsNumber(bound.told.type) ? Ranges::AreTold : Ranges::Bind);
            const bool inside = bound.hasList
                                    ? listed.Has(&value)
                                    : value.text || bound.domain->IsEmpty() || bound.domain->Contains(value.number);
            if (inside) elements.emplace_back(value, sampling.elements[i].weight);
        }
        if (elements.empty()) throw Refused(place, "no element lies within the values of the parameter");
        if (IsNumber(bound.told.type))
            std::stable_sort(elements.begin(), elements.end(),
                             [](const auto& a, const auto& b) { return a.first.number < b.first.number; });
        std::vector<double> weights;
        for (const auto& [value, weight] : elements) {
            factor.levels.push_back(value);
            weights.push_back(weight);
        }
        factor.byIndex.emplace(weights);
    }

    // ---- constraints and written rows ----

    ConstrainedParameter Resolve(const std::string& name) const {
        std::optional<Named> named;
        try {
            named = settable.Find(name);
        } catch (const AssignmentError&) {
            // Told below: for the plan it is a name like any other that is not in it.
        }
        std::vector<std::string> names;
        for (std::size_t i = 0; i < parts.bound.size(); ++i) {
            const Bound& bound = parts.bound[i];
            if (named && bound.target == named->target)
                return {i, IsNumber(bound.told.type), bound.told.unit, settable.UnitOf(*named)};
            names.push_back(bound.told.name);
        }
        for (const Bound& bound : parts.bound) names.push_back(bound.told.id);
        const std::string near = NearestName(name, names);
        throw std::runtime_error("[" + name + "] is no parameter of the plan" +
                                 (near.empty() ? "" : ", did you mean [" + near + "]"));
    }

    void ReadConstraints() {
        for (std::size_t i = 0; i < file.constraints.size(); ++i) {
            const auto read = Constraint::Read(file.constraints[i], "constraints/" + std::to_string(i),
                                               [&](const std::string& name) { return Resolve(name); });
            parts.constraints.insert(parts.constraints.end(), read.begin(), read.end());
        }
    }

    // A row that is written out, with what it names; the others are null.
    std::vector<std::optional<Value>> ReadRow(const PlanFile::Row& row, const std::string& place) {
        std::vector<std::optional<Value>> values(parts.bound.size());
        for (const auto& [name, text] : row) {
            const std::string at = place + "/" + name;
            std::size_t index = 0;
            std::optional<Named> named;
            try {
                named = settable.Find(name);
                index = Resolve(name).index;
            } catch (const std::runtime_error& refused) {
                throw Refused(at, refused.what());
            }
            if (values[index]) throw Refused(at, "is named twice");
            values[index] = Read(parts.bound[index], *named, text, at);
        }
        return values;
    }

    // Parameters that the row leaves out have their defaults; of a linked set that it names in part, the first row of
    // the set that agrees counts.
    std::vector<Value> WithDefaults(const std::vector<std::optional<Value>>& row, const std::string& place) {
        std::vector<Value> values(parts.bound.size());
        for (std::size_t f = 0; f < parts.factors.size(); ++f) {
            const Factor& factor = parts.factors[f];
            const Value* rest = nullptr;
            if (std::any_of(factor.parameters.begin(), factor.parameters.end(),
                            [&](std::size_t p) { return !row[p]; })) {
                try {
                    MakeDefaults(f);
                } catch (const Refused& refused) {
                    throw Refused(refused.Place(), refused.Reason() + "; " + place + " needs it");
                }
                rest = factor.defaults.data();
                if (IsLinked(f))
                    for (std::size_t r = factor.LevelCount(); r-- > 0;)
                        if (Agrees(factor, r, row)) rest = factor.Level(r);
            }
            for (std::size_t j = 0; j < factor.Width(); ++j) {
                const std::size_t p = factor.parameters[j];
                values[p] = row[p] ? *row[p] : rest[j];
            }
        }
        return values;
    }

    static bool Agrees(const Factor& factor, std::size_t level, const std::vector<std::optional<Value>>& row) {
        bool any = false;
        for (std::size_t j = 0; j < factor.Width(); ++j) {
            const auto& value = row[factor.parameters[j]];
            if (value && !(*value == factor.Level(level)[j])) return false;
            any = any || value;
        }
        return any;
    }

    void ReadWritten() {
        for (std::size_t i = 0; i < file.include.size(); ++i) {
            const std::string place = "include/" + std::to_string(i);
            included.push_back(ReadRow(file.include[i], place));
            if (file.method.kind != MethodKind::Cover) parts.written.push_back(WithDefaults(included.back(), place));
        }
        if (file.method.kind != MethodKind::List) return;
        if (file.method.rows) {
            for (std::size_t i = 0; i < file.method.rows->size(); ++i) {
                const std::string place = "method/rows/" + std::to_string(i);
                parts.rows.push_back(WithDefaults(ReadRow((*file.method.rows)[i], place), place));
            }
            return;
        }
        if (file.linked.size() != 1)
            throw Refused("method/rows", file.linked.empty()
                                             ? "missing, and there is no linked set whose rows could be taken"
                                             : "missing, and there are several linked sets whose rows could be taken");
        const Factor& set = parts.factors.back();
        for (std::size_t r = 0; r < set.LevelCount(); ++r) {
            std::vector<std::optional<Value>> row(parts.bound.size());
            for (std::size_t j = 0; j < set.Width(); ++j) row[set.parameters[j]] = set.Level(r)[j];
            parts.rows.push_back(WithDefaults(row, "method"));
        }
    }

    // ---- candidates ----

    void MakeCandidates() {
        const std::uint64_t count = file.method.count;
        parts.gaps = !parts.constraints.empty();
        switch (file.method.kind) {
        case MethodKind::Defaults:
            parts.candidates = 1;
            break;
        case MethodKind::OneAtATime:
        case MethodKind::Boundary:
            MakeChanges();
            break;
        case MethodKind::Grid:
            parts.candidates = 1;
            for (const Factor& factor : parts.factors) {
                parts.bases.push_back(factor.LevelCount());
                parts.candidates = Times(parts.candidates, factor.LevelCount());
            }
            break;
        case MethodKind::List:
            parts.candidates = parts.rows.size();
            parts.gaps = false;
            break;
        case MethodKind::Random:
            parts.candidates = parts.gaps ? Times(count, kTriesForOne) : count;
            break;
        case MethodKind::LatinHypercube:
            parts.candidates = count;
            for (const Factor& factor : parts.factors)
                parts.permutations.emplace_back(count, RandomBits(file.seed, kNoIndex, factor.stream));
            break;
        case MethodKind::Sobol:
            parts.candidates = parts.gaps ? Times(count, kTriesForOne) : count;
            if (parts.factors.size() > Sobol::MaximumDimensions())
                throw Refused("method", "sobol takes up to " + std::to_string(Sobol::MaximumDimensions()) +
                                            " parameters, not " + std::to_string(parts.factors.size()));
            parts.sobol.emplace(parts.factors.size());
            for (const Factor& factor : parts.factors)
                parts.scrambling.push_back(RandomBits(file.seed, kNoIndex, factor.stream));
            break;
        case MethodKind::Cover:
            MakeCovering();
            break;
        }
    }

    // The defaults, then one value of one parameter at a time. The default itself came first.
    void MakeChanges() {
        std::vector<std::pair<std::size_t, std::size_t>> all{{parts.factors.size(), 0}};
        for (std::size_t f = 0; f < parts.factors.size(); ++f)
            for (std::size_t level = 0; level < parts.factors[f].LevelCount(); ++level)
                if (!std::equal(parts.factors[f].defaults.begin(), parts.factors[f].defaults.end(),
                                parts.factors[f].Level(level)))
                    all.emplace_back(f, level);
        parts.changes = all;
        if (parts.gaps) {
            std::vector<std::pair<std::size_t, std::size_t>> allowed;
            std::vector<Value> values;
            for (std::size_t i = 0; i < all.size(); ++i) {
                parts.Candidate(i, values);
                if (parts.Allows(values)) allowed.push_back(all[i]);
            }
            parts.changes = allowed;
            parts.gaps = false;
        }
        parts.candidates = parts.changes.size();
    }

    void MakeCovering();

    void CheckNumbers() {
        const std::uint64_t all = Times(parts.Bases(), file.repetitions);
        const bool bounded = parts.CountsFound(); // how far it goes is seen when it is counted
        if (all >= kNumbersEnd && !bounded)
            throw Refused("method", "makes 2^53 variants or more, which is too many to number");
        if (bounded) {
            const std::uint64_t most = (kNumbersEnd - 1) / file.repetitions;
            if (most <= parts.written.size() ||
                Times(file.method.count + parts.written.size(), file.repetitions) >= kNumbersEnd)
                throw Refused("method", "makes 2^53 variants or more, which is too many to number");
            parts.candidates = std::min(parts.candidates, most - parts.written.size());
        }
        if (!parts.written.empty()) return;
        if (parts.candidates == 0)
            throw Refused(parts.constraints.empty() ? "method" : "constraints", "no variant is allowed");
        if (!parts.gaps) return;
        std::vector<Value> values;
        const std::uint64_t end = std::min(parts.candidates, kMostCounted);
        for (std::uint64_t i = 0; i < end; ++i) {
            parts.Candidate(i, values);
            if (parts.Allows(values)) return;
        }
        if (end == parts.candidates) throw Refused("constraints", "no variant is allowed");
    }

    Parts& parts;
    const Settable& settable;
    const PlanFile& file;
    std::vector<std::vector<std::optional<Value>>> included;

    friend class Plan;
};

namespace {

// The constraints as rules on rows of levels.
std::vector<CoverRule> RulesOf(const std::vector<Constraint>& constraints, const std::vector<Factor>& factors,
                               const std::vector<std::size_t>& factorOf) {
    std::vector<CoverRule> rules;
    for (const Constraint& constraint : constraints) {
        CoverRule rule;
        for (const std::size_t parameter : constraint.Parameters()) rule.factors.push_back(factorOf[parameter]);
        std::sort(rule.factors.begin(), rule.factors.end());
        rule.factors.erase(std::unique(rule.factors.begin(), rule.factors.end()), rule.factors.end());
        std::vector<const Value*> values(factorOf.size());
        rule.holds = [constraint, values, ruled = rule.factors, &factors](const std::vector<int>& row) mutable {
            for (const std::size_t f : ruled)
                for (std::size_t j = 0; j < factors[f].Width(); ++j)
                    values[factors[f].parameters[j]] =
                        row[f] < 0 ? nullptr : factors[f].Level(static_cast<std::size_t>(row[f])) + j;
            return constraint.Of(values);
        };
        rules.push_back(std::move(rule));
    }
    return rules;
}

// Finds the level that the values of a variant are.
class LevelIndex {
public:
    explicit LevelIndex(const Factor& itsFactor) : parameters(itsFactor.parameters), levels(itsFactor.Width()) {
        for (std::size_t level = 0; level < itsFactor.LevelCount(); ++level) levels.Add(itsFactor.Level(level), level);
    }

    int Find(const std::vector<Value>& values) const {
        std::vector<Value> row;
        for (const std::size_t parameter : parameters) row.push_back(values[parameter]);
        const auto level = levels.PlaceOf(row.data());
        return level ? static_cast<int>(*level) : kOtherLevel;
    }

private:
    const std::vector<std::size_t>& parameters;
    ValueRows levels;
};

std::vector<int> LevelCounts(const std::vector<Factor>& factors) {
    std::vector<int> counts;
    for (const Factor& factor : factors) counts.push_back(static_cast<int>(factor.LevelCount()));
    return counts;
}

void CheckStrength(int strength, std::size_t factors, const std::string& place) {
    if (static_cast<std::size_t>(strength) > factors)
        throw Refused(place, "is " + std::to_string(strength) + ", and the plan has " +
                                 (factors == 0   ? std::string("no parameter")
                                  : factors == 1 ? "only 1 parameter"
                                                 : "only " + std::to_string(factors) + " parameters"));
}

} // namespace

void Plan::Builder::MakeCovering() {
    CheckStrength(file.method.strength, parts.factors.size(), "method/strength");
    CoverProblem problem;
    problem.levels = LevelCounts(parts.factors);
    problem.strength = file.method.strength;
    problem.effort = file.method.effort;
    problem.rules = RulesOf(parts.constraints, parts.factors, parts.factorOf);
    for (const auto& row : included) {
        std::vector<int> given(parts.factors.size(), kOpenLevel);
        for (std::size_t f = 0; f < parts.factors.size(); ++f) {
            const Factor& factor = parts.factors[f];
            if (std::none_of(factor.parameters.begin(), factor.parameters.end(), [&](std::size_t p) { return row[p]; }))
                continue;
            given[f] = kOtherLevel;
            for (std::size_t level = factor.LevelCount(); level-- > 0;)
                if (Agrees(factor, level, row)) given[f] = static_cast<int>(level);
        }
        problem.given.push_back(std::move(given));
    }
    try {
        const std::vector<std::vector<int>> rows = CoveringArray(problem);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i >= included.size()) {
                parts.covering.push_back(rows[i]);
                continue;
            }
            std::vector<Value> values(parts.bound.size());
            for (std::size_t f = 0; f < parts.factors.size(); ++f) {
                const Factor& factor = parts.factors[f];
                for (std::size_t j = 0; j < factor.Width(); ++j) {
                    const std::size_t p = factor.parameters[j];
                    // A value beside the list stays as it is written.
                    if (included[i][p])
                        values[p] = *included[i][p];
                    else if (rows[i][f] >= 0)
                        values[p] = factor.Level(static_cast<std::size_t>(rows[i][f]))[j];
                    else
                        values[p] = factor.Level(0)[j];
                }
            }
            parts.written.push_back(std::move(values));
        }
    } catch (const CoverFailure& failed) {
        throw Refused("method", failed.what());
    }
    parts.candidates = parts.covering.size();
    parts.gaps = false;
}

Plan::Plan(const PlanFile& file, const Settable& settable) : parts(std::make_unique<Parts>()) {
    parts->file = file;
    Builder(*parts, settable).Build();
    parts->numbersEnd = Times(parts->Bases(), file.repetitions);
}

Plan::~Plan() = default;
Plan::Plan(Plan&&) noexcept = default;
Plan& Plan::operator=(Plan&&) noexcept = default;

const PlanFile& Plan::File() const { return parts->file; }
const std::vector<PlannedParameter>& Plan::Parameters() const { return parts->parameters; }
const NumberDomain* Plan::DomainOf(std::size_t parameter) const {
    const Parts::Bound& bound = parts->bound[parameter];
    return bound.domain && !bound.domain->IsEmpty() ? &*bound.domain : nullptr;
}

VariantCount Plan::Count() const {
    const std::uint64_t repetitions = parts->file.repetitions;
    const std::uint64_t written = parts->written.size();
    if (parts->CountsFound()) {
        parts->LookUntil(std::min(parts->candidates + 1, kMostCounted));
        return {(written + parts->file.method.count) * repetitions, parts->found == parts->file.method.count};
    }
    if (!parts->gaps) return {parts->Bases() * repetitions, true};
    if (parts->candidates > kMostCounted) return {parts->Bases() * repetitions, false};
    std::uint64_t count = 0;
    std::vector<Value> values;
    for (std::uint64_t i = 0; i < parts->candidates; ++i) {
        parts->Candidate(i, values);
        if (parts->Allows(values)) ++count;
    }
    return {(written + count) * repetitions, true};
}

std::uint64_t Plan::End() const { return parts->numbersEnd; }

bool Plan::At(std::uint64_t number, Variant& variant) const {
    const std::uint64_t base = parts->file.repetitions == 1 ? number : number / parts->file.repetitions;
    variant.number = number;
    variant.seed.reset();
    if (parts->file.repetitions > 1) {
        // A permutation, so that no two of 2^31 - 1 numbers share a seed; not 0, which stands for none, and small
        // enough for any integer of a scenario.
        constexpr std::uint64_t kSeeds = (std::uint64_t{1} << 31) - 1;
        variant.seed = 1 + Permutation(kSeeds, parts->file.seed)(number % kSeeds);
    }
    if (base >= parts->written.size()) return parts->Exists(base - parts->written.size(), variant.values);
    variant.values = parts->written[static_cast<std::size_t>(base)];
    return true;
}

bool Plan::NextFrom(std::uint64_t number, Variant& variant, std::uint64_t last) const {
    const std::uint64_t repetitions = parts->file.repetitions;
    // What does not exist does not in any of its repetitions.
    for (; number < parts->numbersEnd; number = (number / repetitions + 1) * repetitions) {
        if (number > last) return false;
        if (At(number, variant)) return true;
        if (parts->CountsFound() && parts->found >= parts->file.method.count &&
            number / repetitions >= parts->written.size() + parts->looked)
            return false;
    }
    // Behind all candidates; whether that were enough is told here.
    if (parts->CountsFound()) parts->LookUntil(parts->candidates + 1);
    return false;
}

void Plan::AppendText(std::size_t parameter, const Value& value, std::string& text) const {
    if (value.text) {
        text += *value.text;
        return;
    }
    value.number.AppendTo(text);
    const std::string& unit = parts->parameters[parameter].unitText;
    if (unit.empty()) return;
    text += ' ';
    text += unit;
}

std::string Plan::TextOf(std::size_t parameter, const Value& value) const {
    std::string text;
    AppendText(parameter, value, text);
    return text;
}

std::vector<AssignmentText> Plan::Assignments(const Variant& variant) const {
    std::vector<AssignmentText> assignments;
    for (std::size_t i = 0; i < variant.values.size(); ++i)
        assignments.push_back({parts->parameters[i].id, TextOf(i, variant.values[i])});
    return assignments;
}

bool Plan::ReadValue(std::size_t parameter, const std::string& text, Value& value) const {
    const PlannedParameter& of = parts->parameters[parameter];
    if (!IsNumber(of.type)) {
        value = {{}, parts->Kept(text)};
        return true;
    }
    try {
        const auto [number, unitText] = NumberAndUnit(text);
        const lmk::t_unit unit = unitText.empty() ? parts->bound[parameter].targetUnit : lmk::toTUnit(unitText.c_str());
        if (!unitText.empty() && unit == lmk::UNIT_UNDEFINED) return false;
        if (!IsSameUnit(unit, of.unit) && !lmk::sameDimension(unit, of.unit)) return false;
        value = {InUnit(Decimal::Read(number), unit, of.unit), nullptr};
        return true;
    } catch (const NoDecimal&) {
        return false;
    }
}

PlanCoverage Plan::Coverage(int strength, const NextValues& next, std::size_t mostMissing) const {
    std::vector<Factor> factors = parts->factors;
    // A boundary or a sample has other levels than the list that is to be covered.
    std::size_t linked = parts->file.linked.size();
    for (std::size_t f = 0; f < factors.size() - linked; ++f) factors[f].levels.clear();
    std::vector<Factor> single(factors.begin(), factors.end() - static_cast<std::ptrdiff_t>(linked));
    Builder::MakeLevelsOf(*parts, single);
    std::copy(single.begin(), single.end(), factors.begin());
    CheckStrength(strength, factors.size(), "strength");
    try {
        CoverageCounter counter(LevelCounts(factors), RulesOf(parts->constraints, factors, parts->factorOf), strength);
        std::vector<Value> values;
        std::vector<int> row(factors.size());
        const std::vector<LevelIndex> levels(factors.begin(), factors.end());
        PlanCoverage coverage;
        while (next(values)) {
            for (std::size_t f = 0; f < factors.size(); ++f) row[f] = levels[f].Find(values);
            counter.Add(row);
            ++coverage.variants;
        }
        const CoverageCounter::Result result = counter.Count(mostMissing);
        coverage.possible = result.possible;
        coverage.covered = result.covered;
        for (const std::vector<int>& missing : result.missing) {
            std::vector<AssignmentText> combination;
            for (std::size_t f = 0; f < factors.size(); ++f) {
                if (missing[f] < 0) continue;
                for (std::size_t j = 0; j < factors[f].Width(); ++j) {
                    const std::size_t p = factors[f].parameters[j];
                    combination.push_back({parts->parameters[p].id,
                                           TextOf(p, factors[f].Level(static_cast<std::size_t>(missing[f]))[j])});
                }
            }
            coverage.missing.push_back(std::move(combination));
        }
        return coverage;
    } catch (const CoverFailure& failed) {
        throw Refused("", failed.what());
    }
}

std::string StarterPlan(const std::string& scenario, const std::string& configuration, const Settable& settable,
                        std::vector<std::string>* leftOut) {
    using Json = nlohmann::ordered_json;
    Json json;
    json["format"] = "tavrel-plan/1";
    json["scenario"] = scenario;
    if (!configuration.empty()) json["configuration"] = configuration;
    json["method"] = Json::object();
    Json parameters = Json::object();
    std::vector<std::size_t> targets;
    for (const Declaration& declaration : settable.Declarations()) {
        const auto alike = std::count_if(settable.Declarations().begin(), settable.Declarations().end(),
                                         [&](const Declaration& other) { return other.name == declaration.name; });
        const std::string number = "#" + std::to_string(declaration.index);
        const bool byName =
            alike == 1 && !declaration.name.empty() && declaration.name[0] != '/' && declaration.name[0] != '#';
        const std::string name = byName ? declaration.name : number;
        Json entry = Json::object();
        const bool ranged = !declaration.integerRanges.empty() || !declaration.realRanges.empty();
        if (declaration.type == ValueType::Real && ranged) entry["count"] = 3;
        if (declaration.type == ValueType::Integer && ranged) {
            std::int64_t count = 0;
            for (const auto& range : declaration.integerRanges)
                count += std::int64_t{range.maximum} - range.minimum + 1;
            if (count > static_cast<std::int64_t>(kMostWholeValues)) entry["count"] = 3;
        }
        // What a plan of this one parameter refuses would be refused in the starter plan, too.
        PlanFile trial;
        trial.scenario = scenario;
        trial.method.kind = MethodKind::Grid;
        trial.parameters.emplace();
        PlanFile::Parameter parameter;
        parameter.name = name;
        if (entry.contains("count")) parameter.count = 3;
        trial.parameters->push_back(parameter);
        try {
            const Plan plan(trial, settable);
            const std::size_t target = settable.Find(name).target;
            if (std::count(targets.begin(), targets.end(), target) != 0)
                throw Refused("parameters/" + name, "is the same parameter as one before");
            targets.push_back(target);
        } catch (const Refused& refused) {
            if (leftOut) leftOut->push_back(name + " is left out: " + refused.Reason());
            continue;
        }
        parameters[name] = entry;
    }
    if (parameters.size() >= 2)
        json["method"] = {{"name", "cover"}, {"strength", 2}};
    else
        json["method"] = {{"name", "grid"}};
    json["parameters"] = parameters;
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace TavrelVariation
