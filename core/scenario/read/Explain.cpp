#include "read/Explain.h"

#include <algorithm>
#include <string_view>

#include "read/Load.h"
#include "text/TextFormat.h"

namespace {

std::string NameOfItem(const ScenarioItem* item) {
    if (!item) return "the text";
    return std::string(KindKeyword(item->kind)) + " (" + item->name + ")";
}

std::string ExplainNoHeader(const ScenarioTextStream& stream, const ScenarioItem* item) {
    const std::string_view line = RestOfLine(stream);
    const std::string owner = NameOfItem(item);
    if (line.empty() && IsUsedUp(stream)) {
        if (stream.end - stream.cursor > 1) return "a NUL character stands in the text";
        return item ? "the text ends before the closing brace of " + owner : "there is no item in the text";
    }
    if (line.front() == ' ') return "the line begins with a blank; only tabs may stand before a line";
    if (line.substr(0, 6) == "TYPEOF") {
        return "the header cannot be read: it needs one blank, a known word and a name in brackets, or a carriage "
               "return behind the word";
    }
    if (const auto key = KeyOf(line)) {
        const std::string keyText(*key);
        if (std::count(line.begin(), line.end(), '"') < 2) return "the value of " + keyText + " has no closing quote";
        return owner + (item ? " has no attribute " : " begins with the attribute ") + keyText;
    }
    return item ? "the line is neither an attribute of " + owner + " nor the header of an item"
                : "the text does not begin with the header of an item";
}

} // namespace

std::string Explain(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item) {
    std::string_view keyword;
    std::string_view name;
    switch (cause) {
    case Cause::NoHeader:
        return ExplainNoHeader(stream, item);
    case Cause::UnknownKind:
        MatchHeader(stream, keyword, name);
        return "\"" + std::string(keyword) + "\" is no kind of item";
    case Cause::TooDeep:
        return "blocks are nested more than " + std::to_string(kMaxNesting) + " deep";
    case Cause::NoBrace:
        return "the opening brace of " + NameOfItem(item) + " is missing";
    case Cause::ItemRefused:
        return NameOfItem(item) + " is not possible here";
    case Cause::ItemIncomplete:
        return NameOfItem(item) + " is not complete";
    case Cause::TextEnds:
        return "the text ends before the closing brace of " + NameOfItem(item);
    case Cause::NoNumber:
        return "the value is not a number of the form that its key needs";
    }
    return {};
}
