#include <simulation/Criteria.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <set>
#include <string_view>
#include <variant>

#include <Commons/ShortestNumber.h>
#include <scenario/NearestName.h>

namespace TavrelSimulation {

namespace {

using Mode = Criterion::Mode;
using Subject = Criterion::Subject;
using Comparison = Criterion::Comparison;

constexpr std::string_view kStepSign = " / "; // between the steps of a path
constexpr std::string_view kBlanks = " \t";

[[noreturn]] void Fail(const std::string& text, std::size_t column, const std::string& reason) {
    throw CriterionError("criterion '" + text + "', column " + std::to_string(column) + ": " + reason, column);
}

template <typename Value>
struct Word {
    std::string_view text;
    Value value;
};

constexpr Word<Mode> kModes[] = {
    {"always", Mode::Always}, {"eventually", Mode::Eventually}, {"never", Mode::Never}, {"finally", Mode::Finally}};
constexpr Word<Subject> kSubjects[] = {{"variable", Subject::Variable}, {"score", Subject::Score},
                                       {"state", Subject::State},       {"time", Subject::Time},
                                       {"fired", Subject::Fired},       {"entered", Subject::Entered},
                                       {"stopped", Subject::Stopped}};
// The longer sign before the one that it begins with.
constexpr Word<Comparison> kComparisons[] = {{"<=", Comparison::AtMost},    {"<", Comparison::Less},
                                             {">=", Comparison::AtLeast},   {">", Comparison::More},
                                             {"!=", Comparison::Different}, {"=", Comparison::Equal}};

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// A decimal number from the begin of the text, and how many characters it has; 0 for none. Neither "inf" nor "nan".
std::size_t ReadNumber(std::string_view text, double& number) {
    std::size_t sign = 0;
    if (!text.empty() && text[0] == '+') sign = 1;
    const std::string_view digits = text.substr(sign);
    const std::size_t first = !digits.empty() && digits[0] == '-' && sign == 0 ? 1 : 0;
    if (digits.size() <= first || !((digits[first] >= '0' && digits[first] <= '9') || digits[first] == '.')) return 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::invalid_argument) return 0;
    if (error != std::errc() || !std::isfinite(number)) return 0;
    return static_cast<std::size_t>(end - text.data());
}

class Parser {
public:
    explicit Parser(const std::string& criterion) : text(criterion) { result.text = criterion; }

    Criterion Parse() {
        const std::optional<Mode> mode = ParseMode();
        ParseWindow();
        SkipBlanks();
        ParsePredicate();
        if (result.IsEvent() && mode && (*mode == Mode::Always || *mode == Mode::Finally))
            FailAt(modeColumn, "an event is a moment, so it takes 'eventually' or 'never', not '" +
                                   std::string(*mode == Mode::Always ? "always" : "finally") + "'");
        result.mode = mode.value_or(result.IsEvent() ? Mode::Eventually : Mode::Always);
        return std::move(result);
    }

private:
    [[noreturn]] void FailAt(std::size_t position, const std::string& reason) const {
        Fail(text, position + 1, reason);
    }
    [[noreturn]] void FailHere(const std::string& reason) const { FailAt(at, reason); }

    std::string_view Rest() const { return std::string_view(text).substr(at); }
    bool AtEnd() const { return at >= text.size(); }
    void SkipBlanks() { at = std::min(text.find_first_not_of(kBlanks, at), text.size()); }
    bool Take(std::string_view sign) {
        if (!Rest().starts_with(sign)) return false;
        at += sign.size();
        return true;
    }
    std::string_view TakeWord() {
        const std::size_t begin = at;
        while (!AtEnd() && IsLetter(text[at])) ++at;
        return std::string_view(text).substr(begin, at - begin);
    }

    std::optional<Mode> ParseMode() {
        SkipBlanks();
        modeColumn = at;
        const std::string_view word = TakeWord();
        for (const auto& row : kModes)
            if (row.text == word) return row.value;
        at = modeColumn;
        return std::nullopt;
    }

    double ParseTime() {
        SkipBlanks();
        double number = 0;
        const std::size_t size = ReadNumber(Rest(), number);
        if (size == 0) FailHere("a time in seconds is expected");
        at += size;
        SkipBlanks();
        return number;
    }

    void ParseWindow() {
        SkipBlanks();
        const std::size_t begin = at;
        if (!Take("[")) return;
        const double from = ParseTime();
        if (!Take(",")) FailHere("\",\" and the end of the window are expected");
        const double to = ParseTime();
        if (!Take("]")) FailHere("\"]\" is expected");
        if (to < from) FailAt(begin, "the window ends before it begins");
        result.window.emplace(from, to);
    }

    void ParsePredicate() {
        const std::size_t begin = at;
        const std::string_view word = TakeWord();
        const auto* row = std::find_if(std::begin(kSubjects), std::end(kSubjects),
                                       [&](const auto& subject) { return subject.text == word; });
        if (row == std::end(kSubjects)) FailUnknown(begin, word);
        result.subject = row->value;
        if (result.subject != Subject::Time && result.subject != Subject::Stopped) ParseName(word);
        SkipBlanks();
        if (!result.IsEvent())
            ParseComparison();
        else if (!AtEnd())
            FailHere("nothing is expected after an event");
    }

    [[noreturn]] void FailUnknown(std::size_t begin, std::string_view word) const {
        if (word.empty()) FailAt(begin, begin < text.size() ? "a predicate is expected" : "a predicate is missing");
        std::vector<std::string> known;
        for (const auto& row : kSubjects) known.emplace_back(row.text);
        for (const auto& row : kModes) known.emplace_back(row.text);
        const std::string near = NearestName(word, known);
        FailAt(begin,
               "unknown word \"" + std::string(word) + "\"" + (near.empty() ? "" : ", did you mean \"" + near + "\""));
    }

    // What stands in the brackets. Names hold brackets of their own, but never a closing one that is followed by what
    // follows the outer one here.
    void ParseName(std::string_view word) {
        SkipBlanks();
        if (!Take("(")) FailHere("\"(\" is expected after \"" + std::string(word) + "\"");
        SkipBlanks();
        result.nameColumn = at + 1;
        if (result.subject == Subject::Score) return ParseScore();
        if (result.subject == Subject::Variable && Rest().starts_with("\"")) return ParseLabel();
        for (std::size_t close = text.find(')', at); close != std::string::npos; close = text.find(')', close + 1)) {
            const std::size_t next = text.find_first_not_of(kBlanks, close + 1);
            const bool ends = next == std::string::npos;
            if (result.IsEvent() ? !ends : !ends && !IsComparison(text[next])) continue;
            result.name = text.substr(at, close - at);
            result.name.erase(result.name.find_last_not_of(kBlanks) + 1);
            if (result.name.empty()) FailHere("a name is expected");
            at = close + 1;
            return;
        }
        FailAt(text.size(), "\")\" is missing");
    }

    static bool IsComparison(char c) { return c == '<' || c == '>' || c == '=' || c == '!'; }

    void ParseScore() {
        const char* const end = text.data() + text.size();
        const auto [next, error] = std::from_chars(text.data() + at, end, result.score);
        if (error != std::errc()) FailHere("the number of a score is expected");
        at = static_cast<std::size_t>(next - text.data());
        TakeClosing();
    }

    void ParseLabel() {
        const std::size_t close = text.find('"', at + 1);
        if (close == std::string::npos) FailAt(text.size(), "the label has no closing quote");
        result.name = text.substr(at + 1, close - at - 1);
        result.isLabel = true;
        at = close + 1;
        TakeClosing();
    }

    void TakeClosing() {
        SkipBlanks();
        if (!Take(")")) FailHere("\")\" is expected");
    }

    void ParseComparison() {
        const std::size_t begin = at;
        const auto* row = std::find_if(std::begin(kComparisons), std::end(kComparisons),
                                       [&](const auto& comparison) { return Rest().starts_with(comparison.text); });
        if (row == std::end(kComparisons)) FailHere("a comparison is expected: < <= > >= = !=");
        result.comparison = row->value;
        at += row->text.size();
        SkipBlanks();
        if (Rest().starts_with("\"")) {
            if (result.comparison != Comparison::Equal && result.comparison != Comparison::Different)
                FailAt(begin, "texts are compared with = and != alone");
            if (text.find_last_not_of(kBlanks) == at || text[text.find_last_not_of(kBlanks)] != '"')
                FailAt(text.size(), "the text has no closing quote");
            const std::size_t close = text.find_last_not_of(kBlanks);
            result.quoted = text.substr(at + 1, close - at - 1);
            return;
        }
        double number = 0;
        const std::size_t size = ReadNumber(Rest(), number);
        if (size == 0) FailHere("a number or a quoted text is expected");
        at += size;
        result.number = number;
        SkipBlanks();
        if (!AtEnd()) FailHere("nothing is expected after the number");
    }

    const std::string& text;
    std::size_t at = 0;
    std::size_t modeColumn = 0;
    Criterion result;
};

bool EndsWithStep(std::string_view path, std::string_view step) {
    return path == step || (path.size() > step.size() + kStepSign.size() && path.ends_with(step) &&
                            path.substr(0, path.size() - step.size()).ends_with(kStepSign));
}

// The last step of a path, and what stands before it. A name may hold the sign between steps, a kind may not.
std::pair<std::string, std::string> SplitPath(const std::string& path) {
    for (std::size_t sign = path.rfind(kStepSign); sign != std::string::npos;
         sign = sign == 0 ? std::string::npos : path.rfind(kStepSign, sign - 1)) {
        const std::string last = path.substr(sign + kStepSign.size());
        const std::size_t word = std::min(last.find(' '), last.size());
        if (std::all_of(last.begin(), last.begin() + static_cast<std::ptrdiff_t>(word),
                        [](char c) { return (c >= 'A' && c <= 'Z') || c == '_'; }) &&
            word > 0)
            return {path.substr(0, sign), last};
    }
    return {"", path};
}

// What stands in the brackets of a step: "8" of "RULE (8)".
std::string NameOfStep(const std::string& step) {
    const std::size_t open = step.find(" (");
    return open == std::string::npos || step.back() != ')' ? "" : step.substr(open + 2, step.size() - open - 3);
}

std::string Joined(const std::string& place, const std::string& last) {
    return place.empty() ? last : place + std::string(kStepSign) + last;
}

// A rule is meant by its path, by the end of it, or by either with the number in place of the last step.
bool MeansRule(const std::string& wanted, const std::string& path) {
    if (EndsWithStep(path, wanted)) return true;
    const auto [place, last] = SplitPath(path);
    const std::string name = NameOfStep(last);
    return !name.empty() && EndsWithStep(Joined(place, name), wanted);
}

std::string PathOfRule(const RuleChange& change) {
    return Joined(change.place, change.rule.empty() ? "RULE" : "RULE (" + change.rule + ")");
}

bool MeansVariable(const std::string& wanted, const std::string& place, const std::string& name) {
    return EndsWithStep(Joined(place, name), wanted) || EndsWithStep(Joined(place, "VARIABLE (" + name + ")"), wanted);
}

using Value = std::variant<double, std::string>;

std::optional<double> NumberOf(const Value& value) {
    if (const double* number = std::get_if<double>(&value)) return *number;
    std::string_view text = std::get<std::string>(value);
    while (!text.empty() && kBlanks.find(text.front()) != std::string_view::npos) text.remove_prefix(1);
    while (!text.empty() && kBlanks.find(text.back()) != std::string_view::npos) text.remove_suffix(1);
    double number = 0;
    const std::size_t size = ReadNumber(text, number);
    return size > 0 && size == text.size() ? std::optional(number) : std::nullopt;
}

std::string TextOf(const Value& value) {
    if (const std::string* text = std::get_if<std::string>(&value)) return *text;
    return Commons::ShortestNumber(std::get<double>(value));
}

bool Holds(Comparison comparison, double value, double limit) {
    switch (comparison) {
    case Comparison::Less:
        return value < limit;
    case Comparison::AtMost:
        return value <= limit;
    case Comparison::More:
        return value > limit;
    case Comparison::AtLeast:
        return value >= limit;
    case Comparison::Equal:
        return value == limit;
    case Comparison::Different:
        break;
    }
    return value != limit;
}

bool HasDistance(Comparison comparison) {
    return comparison != Comparison::Equal && comparison != Comparison::Different;
}

// How far a value is on the right side of the limit; negative on the wrong one.
double Distance(Comparison comparison, double value, double limit) {
    return comparison == Comparison::Less || comparison == Comparison::AtMost ? limit - value : value - limit;
}

// A comparison at one moment.
struct Look {
    bool holds;
    std::optional<double> distance;
};

Look LookAt(const Criterion& criterion, const Value& value) {
    if (!criterion.number) {
        const bool equal = TextOf(value) == criterion.quoted;
        return {equal == (criterion.comparison == Comparison::Equal), std::nullopt};
    }
    const std::optional<double> number = NumberOf(value);
    if (!number) return {criterion.comparison == Comparison::Different, std::nullopt};
    Look look{Holds(criterion.comparison, *number, *criterion.number), std::nullopt};
    if (HasDistance(criterion.comparison)) look.distance = Distance(criterion.comparison, *number, *criterion.number);
    return look;
}

// One zero for all.
std::optional<double> Plain(std::optional<double> margin) {
    if (margin && *margin == 0) return 0.0;
    return margin && !std::isfinite(*margin) ? std::nullopt : margin;
}

} // namespace

Criterion ParseCriterion(const std::string& text) { return Parser(text).Parse(); }

struct Judge::Change {
    double time;
    Value value;
};

// A criterion with what it watches, as the names of the script have it, and what was seen of that so far.
struct Judge::Watched {
    Criterion criterion;
    bool resolved = false;   // whether the names of the script said what is meant
    std::string path;        // of the rule or task; of what the entered task stands in
    std::int32_t number = 0; // of the entered task
    std::string variable;    // its name alone
    std::string place;       // of the variable; empty where its name alone says which
    Value start = 0.0;       // before the first change
    bool hasStart = false;
    std::vector<Change> changes;
    std::vector<double> times; // of the events

    void Resolve(const Names& names);
    void ResolvePath(const std::vector<std::string>& paths, const char* word);
    void ResolveVariable(const Names& names);
    void ResolveEntered();
    void Hear(const Event& event);
    Outcome OutcomeIn(double begin, double end, double until) const;

private:
    [[noreturn]] void Refuse(const std::string& reason) const { Fail(criterion.text, criterion.nameColumn, reason); }
    void Note(double time, Value value) {
        if (!changes.empty() && changes.back().time == time)
            changes.back().value = std::move(value);
        else
            changes.push_back({time, std::move(value)});
    }
    bool IsEntered(const StateChange& change) const;
    Outcome OutcomeOfEvent(double begin, double end, double until) const;
    Outcome OutcomeOfTime(double begin, double end) const;
    Outcome OutcomeOfSignal(double begin, double end) const;
    std::vector<Look> LooksIn(double begin, double end) const;
};

void Judge::Watched::Resolve(const Names& names) {
    resolved = true;
    switch (criterion.subject) {
    case Subject::Fired:
        return ResolvePath(names.rules, "rule");
    case Subject::State:
        return ResolvePath(names.tasks, "task");
    case Subject::Entered:
        ResolvePath(names.tasks, "task");
        return ResolveEntered();
    case Subject::Variable:
        return ResolveVariable(names);
    case Subject::Score: {
        std::string known;
        for (const Names::Score& score : names.scores) {
            if (score.number == criterion.score) {
                start = score.start;
                return;
            }
            known += (known.empty() ? "" : ", ") + std::to_string(score.number);
        }
        Refuse("the script has no score " + std::to_string(criterion.score) +
               (known.empty() ? " and no evaluation" : "; it has " + known));
    }
    default:
        return;
    }
}

void Judge::Watched::ResolvePath(const std::vector<std::string>& paths, const char* word) {
    const bool isRule = criterion.subject == Subject::Fired;
    std::set<std::string> found;
    for (const std::string& candidate : paths) {
        if (candidate == criterion.name) {
            path = candidate;
            return;
        }
        if (isRule ? MeansRule(criterion.name, candidate) : EndsWithStep(candidate, criterion.name))
            found.insert(candidate);
    }
    if (found.size() == 1) {
        path = *found.begin();
        return;
    }
    if (found.empty()) {
        std::vector<std::string> known = paths;
        for (const std::string& candidate : paths) known.push_back(SplitPath(candidate).second);
        if (isRule)
            for (const std::string& candidate : paths) known.push_back(NameOfStep(SplitPath(candidate).second));
        const std::string near = NearestName(criterion.name, known);
        Refuse("the script has no " + std::string(word) + " \"" + criterion.name + "\"" +
               (near.empty() ? "" : ", did you mean \"" + near + "\""));
    }
    std::string places;
    for (const std::string& candidate : found) places += (places.empty() ? "" : ", ") + candidate;
    Refuse("the script has several of the " + std::string(word) + " \"" + criterion.name + "\": " + places);
}

// The event is that of what the task stands in, which goes to its number.
void Judge::Watched::ResolveEntered() {
    const auto [outer, last] = SplitPath(path);
    if (outer.empty() || !last.starts_with("TASK"))
        Refuse("\"" + path + "\" is no state of another task, so nothing ever enters it");
    path = outer;
    number = static_cast<std::int32_t>(std::strtol(NameOfStep(last).c_str(), nullptr, 10));
}

void Judge::Watched::ResolveVariable(const Names& names) {
    const Names::Variable* meant = nullptr;
    std::set<std::string> found;
    std::vector<std::string> known;
    for (const Names::Variable& candidate : names.variables) {
        const std::size_t sign = candidate.name.rfind(kStepSign);
        const bool isPlaced = sign != std::string::npos;
        const std::string where = isPlaced ? candidate.name.substr(0, sign) : candidate.place;
        const std::string name = isPlaced ? candidate.name.substr(sign + kStepSign.size()) : candidate.name;
        known.push_back(criterion.isLabel ? candidate.label : candidate.name);
        // A trace tells the place of a name only where it needs one, so a place that stands before another name cannot
        // be held against it.
        const std::size_t wantedSign = criterion.name.rfind(kStepSign);
        const bool isMeant = criterion.isLabel ? candidate.label == criterion.name
                             : where.empty()   ? MeansVariable(wantedSign == std::string::npos
                                                                   ? criterion.name
                                                                   : criterion.name.substr(wantedSign + kStepSign.size()),
                                                             "", name)
                                             : MeansVariable(criterion.name, where, name);
        if (!isMeant) continue;
        found.insert(candidate.name);
        meant = &candidate;
        variable = name;
        place = isPlaced ? where : "";
    }
    if (found.size() == 1) {
        if (!meant->start.empty()) start = meant->start;
        hasStart = true;
        return;
    }
    const std::string quoted = "\"" + criterion.name + "\"";
    const std::string what = (criterion.isLabel ? "variable with the label " : "variable ") + quoted;
    if (found.empty()) {
        const std::string near = NearestName(criterion.name, known);
        Refuse("the script has no " + what + (near.empty() ? "" : ", did you mean \"" + near + "\""));
    }
    std::string places;
    for (const std::string& candidate : found) places += (places.empty() ? "" : ", ") + candidate;
    Refuse("the script has several of the " + what + ": " + places);
}

bool Judge::Watched::IsEntered(const StateChange& change) const {
    if (resolved) return change.task == path && change.to == number;
    const auto [outer, last] = SplitPath(criterion.name);
    return change.to == static_cast<std::int32_t>(std::strtol(NameOfStep(last).c_str(), nullptr, 10)) &&
           (outer.empty() || EndsWithStep(change.task, outer));
}

void Judge::Watched::Hear(const Event& event) {
    if (const auto* rule = std::get_if<RuleChange>(&event.what)) {
        if (criterion.subject != Subject::Fired || !rule->value) return;
        const std::string shown = PathOfRule(*rule);
        if (resolved ? shown == path : MeansRule(criterion.name, shown)) times.push_back(event.time);
    } else if (const auto* state = std::get_if<StateChange>(&event.what)) {
        if (criterion.subject == Subject::Entered && IsEntered(*state)) times.push_back(event.time);
        if (criterion.subject == Subject::State &&
            (resolved ? state->task == path : EndsWithStep(state->task, criterion.name)))
            Note(event.time, static_cast<double>(state->to));
    } else if (const auto* change = std::get_if<VariableChange>(&event.what)) {
        if (criterion.subject != Subject::Variable) return;
        const bool isMeant = resolved ? change->variable == variable && (place.empty() || change->place == place)
                             : criterion.isLabel ? change->label == criterion.name
                                                 : MeansVariable(criterion.name, change->place, change->variable);
        if (!isMeant) return;
        if (!hasStart && !change->from.empty()) start = change->from;
        hasStart = true;
        Note(event.time, change->to);
    } else if (const auto* score = std::get_if<ScoreChange>(&event.what)) {
        if (criterion.subject == Subject::Score && score->score == criterion.score) Note(event.time, score->to);
    } else if (std::holds_alternative<Stop>(event.what)) {
        if (criterion.subject == Subject::Stopped) times.push_back(event.time);
    }
}

Outcome Judge::Watched::OutcomeIn(double runBegin, double runEnd, double runUntil) const {
    const double begin = criterion.window ? std::max(criterion.window->first, runBegin) : runBegin;
    const double end = criterion.window ? std::min(criterion.window->second, runEnd) : runEnd;
    Outcome outcome;
    if (criterion.IsEvent())
        outcome = OutcomeOfEvent(begin, end, criterion.window ? criterion.window->second : runUntil);
    else if (begin > end) // the run has no moment in the window
        outcome.holds = criterion.mode == Mode::Always || criterion.mode == Mode::Never;
    else
        outcome = criterion.subject == Subject::Time ? OutcomeOfTime(begin, end) : OutcomeOfSignal(begin, end);
    outcome.criterion = criterion.text;
    outcome.margin = Plain(outcome.margin);
    return outcome;
}

Outcome Judge::Watched::OutcomeOfEvent(double begin, double end, double writtenEnd) const {
    Outcome outcome;
    const auto first =
        std::find_if(times.begin(), times.end(), [&](double time) { return begin <= time && time <= end; });
    const bool came = first != times.end();
    outcome.holds = came == (criterion.mode == Mode::Eventually);
    if (came) outcome.margin = criterion.mode == Mode::Eventually ? writtenEnd - *first : *first - writtenEnd;
    return outcome;
}

// Time runs through every moment of the window, so its ends say all.
Outcome Judge::Watched::OutcomeOfTime(double begin, double end) const {
    Outcome outcome;
    const Comparison comparison = criterion.comparison;
    if (!criterion.number) {
        const bool equal = comparison == Comparison::Equal; // a text is never the time
        outcome.holds = criterion.mode == Mode::Never ? equal : !equal;
        return outcome;
    }
    const double limit = *criterion.number;
    if (criterion.mode == Mode::Finally) {
        outcome.holds = Holds(comparison, end, limit);
        if (HasDistance(comparison)) outcome.margin = Distance(comparison, end, limit);
        return outcome;
    }
    bool all = Holds(comparison, begin, limit) && Holds(comparison, end, limit);
    bool any = Holds(comparison, begin, limit) || Holds(comparison, end, limit);
    if (comparison == Comparison::Equal) any = begin <= limit && limit <= end;
    if (comparison == Comparison::Different) {
        all = limit < begin || end < limit;
        any = any || begin < end;
    }
    outcome.holds = criterion.mode == Mode::Always ? all : any == (criterion.mode == Mode::Eventually);
    if (!HasDistance(comparison)) return outcome;
    const double atBegin = Distance(comparison, begin, limit), atEnd = Distance(comparison, end, limit);
    outcome.margin = criterion.mode == Mode::Always ? std::min(atBegin, atEnd) : std::max(atBegin, atEnd);
    if (criterion.mode == Mode::Never) outcome.margin = -*outcome.margin;
    return outcome;
}

// The value at the begin of the window, and those that it takes within.
std::vector<Look> Judge::Watched::LooksIn(double begin, double end) const {
    const auto after =
        std::find_if(changes.begin(), changes.end(), [&](const Change& change) { return change.time > begin; });
    const Value initial = criterion.subject == Subject::State ? Value(-1.0) : start;
    std::vector<Look> looks{LookAt(criterion, after == changes.begin() ? initial : std::prev(after)->value)};
    for (auto change = after; change != changes.end() && change->time <= end; ++change)
        looks.push_back(LookAt(criterion, change->value));
    return looks;
}

Outcome Judge::Watched::OutcomeOfSignal(double begin, double end) const {
    const std::vector<Look> looks = LooksIn(begin, end);
    Outcome outcome;
    if (criterion.mode == Mode::Finally) {
        outcome.holds = looks.back().holds;
        outcome.margin = looks.back().distance;
        return outcome;
    }
    const bool all = std::all_of(looks.begin(), looks.end(), [](const Look& look) { return look.holds; });
    const bool any = std::any_of(looks.begin(), looks.end(), [](const Look& look) { return look.holds; });
    outcome.holds = criterion.mode == Mode::Always ? all : any == (criterion.mode == Mode::Eventually);
    for (const Look& look : looks) {
        if (!look.distance) {
            // A text is as far from the limit as can be, on the wrong side.
            if (criterion.mode != Mode::Always) continue;
            outcome.margin.reset();
            break;
        }
        if (!outcome.margin)
            outcome.margin = look.distance;
        else
            outcome.margin = criterion.mode == Mode::Always ? std::min(*outcome.margin, *look.distance)
                                                            : std::max(*outcome.margin, *look.distance);
    }
    if (criterion.mode == Mode::Never && outcome.margin) outcome.margin = -*outcome.margin;
    return outcome;
}

std::string RuleNamed(const std::string& rule, const Names& names) {
    // The words of a criterion about it, so that the refusals are the same.
    Judge::Watched watched;
    watched.criterion = ParseCriterion("fired(" + rule + ")");
    watched.Resolve(names);
    return watched.path;
}

Judge::Judge(std::vector<Criterion> all, const Names* names) {
    for (Criterion& criterion : all) {
        watched.push_back(std::make_unique<Watched>());
        watched.back()->criterion = std::move(criterion);
        if (names) watched.back()->Resolve(*names);
    }
}

Judge::~Judge() = default;

void Judge::Hear(const Event& event) {
    if (ended) return;
    if (!firstTime) firstTime = event.time;
    lastTime = event.time;
    if (const auto* start = std::get_if<RunStart>(&event.what)) until = start->until;
    ended = std::holds_alternative<RunEnd>(event.what);
    for (const auto& one : watched) one->Hear(event);
}

std::vector<Outcome> Judge::Outcomes() const {
    const double begin = firstTime.value_or(0), end = lastTime.value_or(begin);
    std::vector<Outcome> outcomes;
    for (const auto& one : watched) outcomes.push_back(one->OutcomeIn(begin, end, std::max(until.value_or(end), end)));
    return outcomes;
}

} // namespace TavrelSimulation
