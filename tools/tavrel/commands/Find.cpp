#include <algorithm>
#include <cmath>
#include <optional>

#include "../Describe.h"
#include "../Installation.h"
#include "../Progress.h"
#include "../ScenarioFile.h"
#include "../ScenarioLines.h"
#include "../TextPattern.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

constexpr const char* kKeys[] = {"parameter", "unit", "value", "varies", "calls", "includes", "file", "name", "text"};
constexpr const char* kOperators[] = {"<=", ">=", "!=", "<", ">", "="}; // the longer ones first

// One expression of the command line.
struct Question {
    std::string key;
    std::string sign;
    std::string operand;
    TextPattern pattern;
    std::optional<double> number; // the operand of `value`, if it is one
};

Question QuestionOf(const std::string& expression) {
    std::size_t place = std::string::npos;
    std::string sign;
    for (const char* candidate : kOperators) {
        const std::size_t found = expression.find(candidate);
        if (found >= place) continue;
        place = found;
        sign = candidate;
    }
    const std::string key = expression.substr(0, place);
    const bool isWord =
        place == std::string::npos || key.find_first_not_of("abcdefghijklmnopqrstuvwxyz") != std::string::npos;
    if (isWord) return {"text", "=", expression, TextPattern(expression), std::nullopt};
    const std::vector<std::string> keys(std::begin(kKeys), std::end(kKeys));
    if (std::find(keys.begin(), keys.end(), key) == keys.end())
        throw Failure{ExitUsage, fmt::format("\"{}\": nothing is looked for by \"{}\"{}; the keys are {}", expression,
                                             key, DidYouMean(key, keys), fmt::join(keys, ", "))};
    if (sign != "=" && key != "value")
        throw Failure{ExitUsage, fmt::format("\"{}\": only value is compared by {}", expression, sign)};
    const std::string operand = expression.substr(place + sign.size());
    Question question{key, sign, operand, TextPattern(operand), std::nullopt};
    double number = 0;
    if (ReadNumber(operand, number)) question.number = number;
    if (key == "value" && sign != "=" && sign != "!=" && !question.number)
        throw Failure{ExitUsage, fmt::format("\"{}\": {} compares with a number", expression, sign)};
    return question;
}

bool Compares(double left, const std::string& sign, double right) {
    // A value in its unit has been multiplied; what a person writes is meant nevertheless.
    const bool same = std::abs(left - right) <= 1e-9 * std::max(std::abs(left), std::abs(right));
    if (sign == "=") return same;
    if (sign == "!=") return !same;
    if (sign == "<=") return same || left < right;
    if (sign == ">=") return same || left > right;
    return !same && (sign == "<" ? left < right : left > right);
}

bool ValueFits(const Question& question, const std::string& value) {
    double number = 0;
    if (question.number && ReadNumber(value, number)) return Compares(number, question.sign, *question.number);
    if (question.sign == "=") return question.pattern.Fits(value);
    return question.sign == "!=" && !question.pattern.Fits(value);
}

// Where an answer stands.
Json Hit(std::uint32_t row, const std::string& what, const std::string& text) {
    return {{"row", row}, {"what", what}, {"text", OneLine(text)}};
}

// The answers of one scenario file.
class Answers {
public:
    explicit Answers(const std::string& path) : file(path) {
        for (FileParameter& parameter : file.Parameters()) parameters.push_back(std::move(parameter));
        for (const FileScript& script : file.Scripts()) {
            const std::vector<std::uint32_t> rows = file.RowsOf(script);
            try {
                scripts.push_back({ReadTextTree(script.text.Text(), path), rows});
            } catch (const Failure&) {
                continue; // a script that cannot be read calls nothing; check tells what is wrong with it
            }
            const std::string base = fmt::format("/sce/Scenario/ScenarioScript[scriptName=\"{}\"]", script.name);
            for (FileParameter& variable : VariablesOf(scripts.back().top, base)) {
                variable.row = RowIn(scripts.back(), variable.row);
                parameters.push_back(std::move(variable));
            }
        }
    }

    // False if one of the questions has no answer; `hits` then means nothing.
    bool To(const std::vector<Question>& questions, Json& hits) const {
        hits = Json::array();
        std::vector<const Question*> ofParameter;
        for (const Question& question : questions)
            if (question.key == "parameter" || question.key == "unit" || question.key == "value")
                ofParameter.push_back(&question);
            else if (!Answer(question, hits))
                return false;
        return ofParameter.empty() || AnswerByParameter(ofParameter, hits);
    }

    std::string Name() const { return file.Name(); }
    std::string Description() const { return file.Description(); }

private:
    struct Script {
        TextItem top;
        std::vector<std::uint32_t> rows;
    };

    static std::uint32_t RowIn(const Script& script, std::uint32_t row) {
        return script.rows[std::min<std::size_t>(std::max(row, 1U), script.rows.size()) - 1];
    }

    // One and the same parameter answers them all.
    bool AnswerByParameter(const std::vector<const Question*>& questions, Json& hits) const {
        const std::size_t before = hits.size();
        for (const FileParameter& parameter : parameters) {
            const bool fits = std::all_of(questions.begin(), questions.end(), [&](const Question* question) {
                if (question->key == "unit") return question->pattern.Fits(parameter.unit) && !parameter.unit.empty();
                if (question->key == "value") return ValueFits(*question, parameter.value);
                return question->pattern.Fits(parameter.id) || question->pattern.Fits(parameter.name) ||
                       question->pattern.Fits(parameter.longName);
            });
            if (fits)
                hits.push_back(Hit(parameter.row, "parameter",
                                   fmt::format("{} = {}{}{}", parameter.id, parameter.value,
                                               parameter.unit.empty() ? "" : " ", parameter.unit)));
        }
        return hits.size() > before;
    }

    bool Answer(const Question& question, Json& hits) const {
        const std::size_t before = hits.size();
        const TextPattern& pattern = question.pattern;
        if (question.key == "name" || question.key == "text") {
            if (pattern.Fits(file.Name())) hits.push_back(Hit(1, "name", file.Name()));
        }
        if (question.key == "varies" || question.key == "text")
            for (const FileDeclaration& declaration : file.Declarations())
                if (pattern.Fits(declaration.name) || pattern.Fits(declaration.parameterId) ||
                    (question.key == "text" && pattern.Fits(declaration.description)))
                    hits.push_back(
                        Hit(declaration.row, "declaration",
                            fmt::format("{}: {} ({})", declaration.name, declaration.parameterId, declaration.domain)));
        if (question.key == "text") {
            if (pattern.Fits(file.Description())) hits.push_back(Hit(1, "description", file.Description()));
            for (const FileParameter& parameter : parameters)
                if (pattern.Fits(parameter.name) || pattern.Fits(parameter.longName) || pattern.Fits(parameter.value))
                    hits.push_back(
                        Hit(parameter.row, "parameter", fmt::format("{} = {}", parameter.id, parameter.value)));
        }
        for (const Script& script : scripts)
            ForEachItem(script.top, [&](const TextItem& item, const std::string& way) {
                AnswerByItem(question, item, way, script, hits);
            });
        return hits.size() > before;
    }

    static void AnswerByItem(const Question& question, const TextItem& item, const std::string& way,
                             const Script& script, Json& hits) {
        const TextPattern& pattern = question.pattern;
        const auto hit = [&](std::uint32_t row, const char* what) {
            hits.push_back(Hit(RowIn(script, row), what, way));
        };
        const bool isCall =
            item.kind == "ACTION" || item.kind == "ELSE_ACTION" || item.kind == "CONDITION" || item.kind == "FUNCTION";
        const bool isInclude = item.kind == "INCLUDE" || (item.kind == "EVALUATION" && item.Value("ISA_INDEX") == "1");
        if (question.key == "calls" && isCall && pattern.Fits(item.name)) hit(item.row, "call");
        if (question.key == "includes" && isInclude && !item.Value("FILE").empty() && pattern.Fits(item.Value("FILE")))
            hit(item.RowOf("FILE"), "include");
        if (question.key == "file" && item.Value("KIND") == "FILE" && pattern.Fits(item.Value("VALUE")))
            hit(item.RowOf("VALUE"), "file");
        if (question.key != "text") return;
        if (pattern.Fits(item.name)) hit(item.row, "item");
        for (const TextAttribute& attribute : item.attributes)
            if (pattern.Fits(attribute.value)) hit(attribute.row, "item");
    }

    ScenarioFile file;
    std::vector<FileParameter> parameters; // those of scripts, too
    std::vector<Script> scripts;
};

struct Entry {
    const ScenarioDirectory* directory;
    std::string path;
    Json found; // name, description and hits; null for a scenario that is no answer
};

Json Look(const std::string& file, const std::vector<Question>& questions) {
    const Answers answers(file);
    Json hits;
    if (!answers.To(questions, hits)) return Json::object();
    return {{"name", answers.Name()}, {"description", answers.Description()}, {"places", hits}};
}

void PrintEntries(Context& context, const std::vector<Entry>& entries) {
    Output& out = context.out;
    if (context.arguments.Has("--json")) {
        Json list = Json::array();
        for (const Entry& entry : entries)
            list.push_back({{"configuration", entry.directory->configuration.name},
                            {"version", entry.directory->configuration.version},
                            {"directory", entry.directory->path},
                            {"path", entry.path},
                            {"file", entry.directory->FileOf(entry.path)},
                            {"name", entry.found["name"]},
                            {"description", entry.found["description"]},
                            {"places", entry.found["places"]}});
        return out.Print(DumpJson(list));
    }
    ScenarioLines lines(out);
    for (const Entry& entry : entries)
        lines.Add(entry.directory->configuration.name, entry.path, entry.found["name"].get<std::string>());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Entry& entry = entries[i];
        if (context.arguments.Has("--paths"))
            out.Print("{}\n", ShownText(entry.path));
        else
            lines.Print(i);
        if (!context.arguments.Has("--places")) continue;
        for (const Json& hit : entry.found["places"])
            out.Print("    {}:{}: {} {}\n", ShownText(entry.directory->FileOf(entry.path)),
                      hit["row"].get<std::uint32_t>(), hit["what"].get<std::string>(),
                      OneLine(hit["text"].get<std::string>()));
    }
}

} // namespace

int RunFind(Context& context) {
    std::vector<Question> questions;
    for (const std::string& expression : context.arguments.Texts("EXPRESSION"))
        questions.push_back(QuestionOf(expression));
    Installation installation(context);
    const std::vector<ScenarioDirectory> directories = installation.AllDirectories();
    std::vector<Entry> all, found;
    for (const ScenarioDirectory& directory : directories)
        for (const std::string& scenario : directory.scenarios) all.push_back({&directory, scenario, Json()});

    Progress progress(static_cast<double>(all.size()), "scenarios");
    const auto tell = [&](const std::string& sentence) {
        progress.Hide();
        context.Tell({ExitUnreadable, sentence});
    };
    TavrelProcesses::ForEachInChildren(
        all.size(), context.Children(),
        [&](std::size_t item) {
            try {
                return DumpJsonLine(Look(all[item].directory->FileOf(all[item].path), questions));
            } catch (...) {
                return DumpJsonLine({{"fault", CurrentFailure().sentence}});
            }
        },
        [&](std::size_t item, const std::string& answer) {
            progress.Reach(static_cast<double>(item));
            Json json = Json::parse(answer);
            if (json.contains("fault")) return tell(json["fault"].get<std::string>());
            if (json.empty()) return;
            found.push_back(std::move(all[item]));
            found.back().found = std::move(json);
        },
        [&](std::size_t item, const TavrelProcesses::Death& death) {
            tell(TavrelProcesses::DeathSentence(all[item].directory->FileOf(all[item].path), death));
        });
    PrintEntries(context, found);
    return std::max<int>(context.status, found.empty() ? ExitFindings : ExitClean);
}

} // namespace tavrel
