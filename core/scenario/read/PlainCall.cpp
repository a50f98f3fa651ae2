#include "read/PlainCall.h"

#include <algorithm>
#include <string>
#include <string_view>

#include <scenario/DefinitionLists.h>
#include <scenario/Parameter.h>
#include <scenario/function.h>

#include "items/CallUpgrades.h"
#include "items/ValueKinds.h"
#include "link/ListNumbers.h"
#include "link/Lookup.h"
#include "text/Kinds.h"
#include "text/ShortText.h"
#include "text/TextFormat.h"
#include "text/TextUnderWay.h"

namespace {

constexpr unsigned kLevels = 2; // of blocks, with the parameters

// Reads along a text as the reader does, line by line; each answer is false at anything but what is looked for.
class PlainCall {
public:
    PlainCall(const ScenarioTextStream& text, DefinitionIndex& modelIndex) : stream(text), definitions(modelIndex) {}

    const ScenarioTextStream& Stream() const { return stream; }

    bool Read(const ScenarioItem& rule) {
        std::string_view keyword;
        std::string_view name;
        if (!MatchHeader(stream, keyword, name)) return false;
        const ScenarioItemKind kind = KindOfKeyword(keyword);
        if (kind != KindAction && kind != KindElseAction && kind != KindCondition) return false;
        const ScenarioItemKind definitionKind = kind == KindCondition ? KindCondition : KindAction;
        // In an item of such a name, what looks like a call or a parameter of one is a definition.
        if (rule.name == DefinitionListOf(definitionKind) || name == DefinitionListOf(KindParameter)) return false;
        const auto* definition = static_cast<const Function*>(Find(definitionKind, name));
        if (!definition || IsUpgraded(name)) return false;
        const std::vector<Parameter*>& parameters = definition->parameters;
        if (!parameters.empty() && !definition->AcceptsChildKind(KindParameter)) return false;
        return OpenBlock() &&
               std::all_of(parameters.begin(), parameters.end(),
                           [this](const Parameter* wanted) { return wanted && ReadParameter(wanted->name); }) &&
               CloseBlock();
    }

private:
    bool ReadParameter(const std::string& wanted) {
        std::string_view keyword;
        std::string_view name;
        if (!MatchHeader(stream, keyword, name) || !SameText(name, wanted) || KindOfKeyword(keyword) != KindParameter)
            return false;
        const auto* definition = static_cast<const Parameter*>(Find(KindParameter, name));
        std::string_view kind;
        std::string_view value;
        std::string_view ownerFile;
        return definition && OpenBlock() && ReadAttribute("KIND=\"", kind) && Allows(*definition, kind) &&
               ReadAttribute("VALUE=\"", value) && Takes(*definition, kind, value) &&
               (CharAt(stream) == '}' || ReadAttribute("OWNER_FILE=\"", ownerFile)) && CloseBlock();
    }

    static bool Allows(const Parameter& definition, std::string_view kind) {
        return !kind.empty() && std::any_of(definition.kindList.begin(), definition.kindList.end(),
                                            [kind](const std::string& word) { return SameText(word, kind); });
    }

    bool Takes(const Parameter& definition, std::string_view kind, std::string_view value) {
        if (value.empty()) return false;
        const auto accepts = ValueKindOf(kind).accepts;
        if (accepts == valueKinds::AnyValue) return true;
        if (accepts != valueKinds::LiteralOfType || definition.model != &definition) return false;
        literal = value;
        return valueKinds::IsLiteralOf(definition.type, literal);
    }

    ScenarioItem* Find(ScenarioItemKind kind, std::string_view name) {
        return definitions.Find(kListOfKind[kind], name);
    }

    bool OpenBlock() {
        NextLineAfterReading(stream);
        return StepOver('{');
    }
    bool CloseBlock() { return StepOver('}'); }
    bool StepOver(char brace) {
        if (CharAt(stream) != brace) return false;
        NextLineFrom(stream, stream.cursor);
        return true;
    }

    // `begin` is the key with what stands between it and the value.
    bool ReadAttribute(std::string_view begin, std::string_view& value) {
        constexpr std::size_t kBetween = 2; // characters
        const std::string_view rest(stream.cursor, static_cast<std::size_t>(stream.end - stream.cursor));
        if (!SameText(rest.substr(0, begin.size()), begin)) return false;
        // A long one counts for the text, and must not count twice.
        if (!FindValue(stream, begin.size() - kBetween, value) || TextUnderWay::IsLong(value.size())) return false;
        NextLineAfterReading(stream);
        return true;
    }

    ScenarioTextStream stream;
    DefinitionIndex& definitions;
    std::string literal;
};

} // namespace

bool PassOverPlainCall(Load& load, const ScenarioItem& rule) {
    if (load.IsTooDeep(kLevels)) return false;
    DefinitionIndex* const definitions = load.tree.IndexOf(GetModelRoot(&rule));
    if (!definitions) return false;
    PlainCall call(load.text.stream, *definitions);
    if (!call.Read(rule)) return false;
    load.text.stream = call.Stream();
    return true;
}
