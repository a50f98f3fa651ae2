#include <variation/Constraint.h>

#include <algorithm>
#include <cctype>
#include <set>

#include <variation/Refused.h>

#include "Units.h"

namespace TavrelVariation {

namespace {

// Of the letters of keywords, whatever the locale takes for the upper case of an i.
char UpperCase(char letter) { return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter; }

// So that no text ends the process: of parentheses and NOTs, and of terms and what joins them.
constexpr int kDeepest = 200;
constexpr std::size_t kMostNodes = 4000;

enum class Relation { Equal, NotEqual, Greater, GreaterOrEqual, Less, LessOrEqual };

bool Holds(Relation relation, int order) {
    switch (relation) {
    case Relation::Equal:
        return order == 0;
    case Relation::NotEqual:
        return order != 0;
    case Relation::Greater:
        return order > 0;
    case Relation::GreaterOrEqual:
        return order >= 0;
    case Relation::Less:
        return order < 0;
    case Relation::LessOrEqual:
        return order <= 0;
    }
    return false;
}

bool IsLetterStart(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

std::string_view NextLetter(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && !IsLetterStart(text[length])) ++length;
    return text.substr(0, length);
}

// Goes back to the last "*" alone where a later part does not fit, so that the time is at most length times length.
bool IsLike(std::string_view text, std::string_view pattern) {
    std::string_view textAtStar, patternAtStar;
    bool star = false;
    while (!text.empty()) {
        if (!pattern.empty() && pattern.front() == '*') {
            star = true;
            pattern.remove_prefix(1);
            textAtStar = text;
            patternAtStar = pattern;
            continue;
        }
        const std::string_view letter = NextLetter(text);
        if (!pattern.empty() && (pattern.front() == '?' || pattern.substr(0, letter.size()) == letter)) {
            pattern.remove_prefix(pattern.front() == '?' ? 1 : letter.size());
            text.remove_prefix(letter.size());
            continue;
        }
        if (!star) return false;
        textAtStar.remove_prefix(NextLetter(textAtStar).size());
        text = textAtStar;
        pattern = patternAtStar;
    }
    return pattern.find_first_not_of('*') == std::string_view::npos;
}

bool HaveOneDimension(lmk::t_unit a, lmk::t_unit b) { return a == b || lmk::sameDimension(a, b); }

std::string UnitText(lmk::t_unit unit) {
    const std::string text = lmk::toText(unit);
    return text.empty() ? "no unit" : text;
}

} // namespace

// Nodes refer to those before them by index; the last one is the whole.
struct Constraint::Tree {
    enum class Kind { Number, Text, TwoParameters, InNumbers, InTexts, Like, Not, And, Or, Given };
    struct Node {
        Kind kind = Kind::Not;
        Relation relation = Relation::Equal;
        ConstrainedParameter parameter;
        ConstrainedParameter other; // TwoParameters
        std::vector<Decimal> numbers;
        std::vector<std::string> texts;
        std::size_t first = 0;  // Not, And, Or; Given: the condition
        std::size_t second = 0; // And, Or; Given: what follows
        std::size_t third = 0;  // Given: what follows otherwise, 0 for none
    };

    Truth Of(const Node& node, const std::vector<const Value*>& values) const;

    std::vector<Node> nodes{1}; // the first is none
    std::vector<std::size_t> parameters;
    std::string place;
};

Truth Constraint::Tree::Of(const Node& node, const std::vector<const Value*>& values) const {
    const auto known = [](bool truth) { return truth ? Truth::True : Truth::False; };
    switch (node.kind) {
    case Kind::Not: {
        const Truth truth = Of(nodes[node.first], values);
        return truth == Truth::Unknown ? truth : known(truth == Truth::False);
    }
    case Kind::And:
        return std::min(Of(nodes[node.first], values), Of(nodes[node.second], values));
    case Kind::Or:
        return std::max(Of(nodes[node.first], values), Of(nodes[node.second], values));
    case Kind::Given: {
        const Truth condition = Of(nodes[node.first], values);
        const Truth then = condition == Truth::False ? Truth::True : Of(nodes[node.second], values);
        const Truth otherwise =
            condition == Truth::True || node.third == 0 ? Truth::True : Of(nodes[node.third], values);
        if (condition == Truth::Unknown) return then == otherwise ? then : Truth::Unknown;
        return std::min(then, otherwise);
    }
    default:
        break;
    }

    const Value* value = values[node.parameter.index];
    if (!value) return Truth::Unknown;
    switch (node.kind) {
    case Kind::Number:
        return known(Holds(node.relation, Compare(value->number, node.numbers[0])));
    case Kind::Text:
        return known(Holds(node.relation, value->text->compare(node.texts[0])));
    case Kind::InNumbers:
        return known(std::find(node.numbers.begin(), node.numbers.end(), value->number) != node.numbers.end());
    case Kind::InTexts:
        return known(std::find(node.texts.begin(), node.texts.end(), *value->text) != node.texts.end());
    case Kind::Like:
        return known(IsLike(*value->text, node.texts[0]));
    default:
        break;
    }
    const Value* other = values[node.other.index];
    if (!other) return Truth::Unknown;
    if (value->text) return known(Holds(node.relation, value->text->compare(*other->text)));
    return known(
        Holds(node.relation, Compare(value->number, InUnit(other->number, node.other.unit, node.parameter.unit))));
}

// A reader like its grammar: one operation for each rule.
class Constraint::Reader {
public:
    Reader(const std::string& constraints, const std::string& itsPlace, const Resolver& resolver)
        : text(constraints), place(itsPlace), resolve(resolver) {}

    std::vector<Constraint> ReadAll() {
        std::vector<Constraint> all;
        Skip();
        if (at == text.size()) Refuse(at, "a constraint is missing");
        while (at < text.size()) {
            tree = std::make_shared<Tree>();
            tree->place = place;
            ReadConstraint();
            std::set<std::size_t> named;
            for (const Tree::Node& node : tree->nodes) {
                if (node.kind >= Tree::Kind::Not) continue;
                named.insert(node.parameter.index);
                if (node.kind == Tree::Kind::TwoParameters) named.insert(node.other.index);
            }
            tree->parameters.assign(named.begin(), named.end());
            Constraint constraint;
            constraint.tree = tree;
            all.push_back(constraint);
            Skip();
        }
        return all;
    }

private:
    using Node = Tree::Node;

    [[noreturn]] void Refuse(std::size_t where, const std::string& reason) const {
        std::size_t column = 1;
        for (std::size_t i = 0; i < where && i < text.size(); ++i)
            if (IsLetterStart(text[i])) ++column;
        throw Refused(place, "column " + std::to_string(column) + ": " + reason);
    }

    void Skip() {
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t' || text[at] == '\n' || text[at] == '\r')) ++at;
    }

    // Takes a word of letters in any case if it stands here.
    bool Word(std::string_view word) {
        Skip();
        if (text.size() - at < word.size()) return false;
        for (std::size_t i = 0; i < word.size(); ++i)
            if (UpperCase(text[at + i]) != word[i]) return false;
        const std::size_t end = at + word.size();
        if (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_'))
            return false;
        at = end;
        return true;
    }

    bool Sign(std::string_view sign) {
        Skip();
        if (text.compare(at, sign.size(), sign) != 0) return false;
        at += sign.size();
        return true;
    }

    std::string Here() const {
        return at < text.size() ? "\"" + std::string(NextLetter(std::string_view(text).substr(at))) + "\"" : "the end";
    }

    void Demand(std::string_view sign) {
        if (!Sign(sign)) Refuse(at, "\"" + std::string(sign) + "\" was expected, not " + Here());
    }

    std::size_t Add(Node node) {
        if (tree->nodes.size() > kMostNodes) Refuse(at, "the constraint has too many terms");
        tree->nodes.push_back(std::move(node));
        return tree->nodes.size() - 1;
    }

    std::size_t Join(Tree::Kind kind, std::size_t first, std::size_t second = 0, std::size_t third = 0) {
        Node node;
        node.kind = kind;
        node.first = first;
        node.second = second;
        node.third = third;
        return Add(std::move(node));
    }

    void ReadConstraint() {
        if (!Word("IF")) {
            ReadOr(0);
            Demand(";");
            return;
        }
        const std::size_t condition = ReadOr(0);
        if (!Word("THEN")) Refuse(at, "THEN was expected, not " + Here());
        const std::size_t then = ReadOr(0);
        const std::size_t otherwise = Word("ELSE") ? ReadOr(0) : 0;
        Join(Tree::Kind::Given, condition, then, otherwise);
        Demand(";");
    }

    std::size_t ReadOr(int depth) {
        std::size_t left = ReadAnd(depth);
        while (Word("OR")) left = Join(Tree::Kind::Or, left, ReadAnd(depth));
        return left;
    }

    std::size_t ReadAnd(int depth) {
        std::size_t left = ReadNot(depth);
        while (Word("AND")) left = Join(Tree::Kind::And, left, ReadNot(depth));
        return left;
    }

    std::size_t ReadNot(int depth) {
        if (depth > kDeepest) Refuse(at, "nested too deep");
        if (Word("NOT")) return Join(Tree::Kind::Not, ReadNot(depth + 1));
        if (!Sign("(")) return ReadTerm();
        const std::size_t inside = ReadOr(depth + 1);
        Demand(")");
        return inside;
    }

    ConstrainedParameter ReadName(std::string& name) {
        Skip();
        const std::size_t start = at;
        Demand("[");
        const std::size_t from = at;
        for (int open = 1; at < text.size(); ++at) {
            if (text[at] == '[') ++open;
            if (text[at] == ']' && --open == 0) break;
        }
        if (at == text.size()) Refuse(start, "the bracket is not closed");
        name = text.substr(from, at - from);
        ++at;
        try {
            return resolve(name);
        } catch (const Refused&) {
            throw;
        } catch (const std::runtime_error& refused) {
            Refuse(start, refused.what());
        }
    }

    std::string ReadText() {
        const std::size_t start = at;
        Demand("\"");
        std::string read;
        for (; at < text.size() && text[at] != '"'; ++at) {
            if (text[at] == '\\' && at + 1 < text.size() && (text[at + 1] == '"' || text[at + 1] == '\\')) ++at;
            read += text[at];
        }
        if (at == text.size()) Refuse(start, "the text is not closed");
        ++at;
        return read;
    }

    // A number with its unit, as one of the parameter's unit.
    Decimal ReadNumber(const ConstrainedParameter& parameter, const std::string& name) {
        const std::size_t start = at;
        while (at < text.size() &&
               (std::isalnum(static_cast<unsigned char>(text[at])) || text[at] == '.' ||
                ((text[at] == '-' || text[at] == '+') && (at == start || text[at - 1] == 'e' || text[at - 1] == 'E'))))
            ++at;
        lmk::t_unit unit = parameter.plainUnit;
        try {
            Decimal number = Decimal::Read(std::string_view(text).substr(start, at - start));
            std::size_t unitEnd = at;
            while (unitEnd < text.size() && text[unitEnd] == ' ') ++unitEnd;
            const std::size_t unitStart = unitEnd;
            while (unitEnd < text.size() && !std::isspace(static_cast<unsigned char>(text[unitEnd])) &&
                   std::string_view(";,)}").find(text[unitEnd]) == std::string_view::npos)
                ++unitEnd;
            const std::string word = text.substr(unitStart, unitEnd - unitStart);
            if (unitStart > at && !word.empty() && !IsWordOfLanguage(word)) {
                unit = lmk::toTUnit(word.c_str());
                if (unit == lmk::UNIT_UNDEFINED) Refuse(unitStart, "\"" + word + "\" is no unit");
                at = unitEnd;
            }
            if (!HaveOneDimension(unit, parameter.unit))
                Refuse(start, "[" + name + "] is in " + UnitText(parameter.unit) +
                                  " and is not compared with a number in " + UnitText(unit));
            return InUnit(number, unit, parameter.unit);
        } catch (const NoDecimal& refused) {
            Refuse(start, refused.what());
        }
    }

    static bool IsWordOfLanguage(std::string word) {
        for (char& letter : word) letter = UpperCase(letter);
        return word == "AND" || word == "OR" || word == "THEN" || word == "ELSE" || word == "NOT" || word == "IF";
    }

    void ReadValue(Node& node, const std::string& name) {
        Skip();
        const char first = at < text.size() ? text[at] : '\0';
        if (first == '"') {
            if (node.parameter.isNumber) Refuse(at, "[" + name + "] is a number and is not compared with a text");
            node.texts.push_back(ReadText());
            return;
        }
        if (!std::isdigit(static_cast<unsigned char>(first)) && first != '-' && first != '+' && first != '.')
            Refuse(at, "a number, a text in quotes or a name in brackets was expected, not " + Here());
        if (!node.parameter.isNumber)
            Refuse(at, "[" + name + "] is a text and is not compared with a number; write it in quotes");
        node.numbers.push_back(ReadNumber(node.parameter, name));
    }

    std::size_t ReadTerm() {
        Node node;
        std::string name;
        Skip();
        if (at == text.size() || text[at] != '[') Refuse(at, "a name in brackets was expected, not " + Here());
        node.parameter = ReadName(name);
        if (Word("IN")) {
            node.kind = node.parameter.isNumber ? Tree::Kind::InNumbers : Tree::Kind::InTexts;
            Demand("{");
            do ReadValue(node, name);
            while (Sign(","));
            Demand("}");
            return Add(std::move(node));
        }
        Skip();
        const std::size_t start = at;
        if (Word("LIKE")) {
            if (node.parameter.isNumber) Refuse(start, "[" + name + "] is a number, and LIKE compares texts");
            Skip();
            node.kind = Tree::Kind::Like;
            node.texts.push_back(ReadText());
            return Add(std::move(node));
        }
        node.relation = ReadRelation();
        Skip();
        if (at < text.size() && text[at] == '[') {
            const std::size_t otherStart = at;
            std::string otherName;
            node.kind = Tree::Kind::TwoParameters;
            node.other = ReadName(otherName);
            if (node.parameter.isNumber != node.other.isNumber)
                Refuse(otherStart, "[" + name + "] is a " + (node.parameter.isNumber ? "number" : "text") + " and [" +
                                       otherName + "] is a " + (node.other.isNumber ? "number" : "text") +
                                       "; they are not compared");
            if (node.parameter.isNumber && !HaveOneDimension(node.parameter.unit, node.other.unit))
                Refuse(otherStart, "[" + name + "] is in " + UnitText(node.parameter.unit) + " and [" + otherName +
                                       "] in " + UnitText(node.other.unit) + "; they are not compared");
            return Add(std::move(node));
        }
        ReadValue(node, name);
        node.kind = node.parameter.isNumber ? Tree::Kind::Number : Tree::Kind::Text;
        return Add(std::move(node));
    }

    Relation ReadRelation() {
        // The longer sign first.
        static constexpr std::pair<std::string_view, Relation> kSigns[] = {
            {"<>", Relation::NotEqual}, {">=", Relation::GreaterOrEqual}, {"<=", Relation::LessOrEqual},
            {"=", Relation::Equal},     {">", Relation::Greater},         {"<", Relation::Less}};
        for (const auto& [sign, relation] : kSigns)
            if (Sign(sign)) return relation;
        Refuse(at, "one of = <> > >= < <= IN LIKE was expected, not " + Here());
    }

    const std::string& text;
    const std::string& place;
    const Resolver& resolve;
    std::size_t at = 0;
    std::shared_ptr<Tree> tree;
};

std::vector<Constraint> Constraint::Read(const std::string& text, const std::string& place, const Resolver& resolve) {
    return Reader(text, place, resolve).ReadAll();
}

Truth Constraint::Of(const std::vector<const Value*>& values) const { return tree->Of(tree->nodes.back(), values); }

const std::vector<std::size_t>& Constraint::Parameters() const { return tree->parameters; }

const std::string& Constraint::Place() const { return tree->place; }

} // namespace TavrelVariation
