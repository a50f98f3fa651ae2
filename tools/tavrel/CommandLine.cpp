#include "CommandLine.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "CommandTable.h"
#include "Failure.h"
#include "Spelling.h"

namespace tavrel {

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kColumn = 26; // where the explanation of an option begins

using Values = std::map<std::string, std::vector<std::string>>;

// Breaks `text` at blanks; every line but the first begins with `indent` blanks.
std::string Wrapped(const std::string& text, std::size_t indent) {
    std::istringstream words(text);
    std::string result, word;
    std::size_t column = indent;
    while (words >> word) {
        if (column > indent && column + 1 + word.size() > kWidth) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
    }
    return result;
}

std::string HelpLine(const std::string& subject, const std::string& explanation) {
    std::string line = "  " + subject;
    if (line.size() + 2 > kColumn)
        line += "\n" + std::string(kColumn, ' ');
    else
        line.resize(kColumn, ' ');
    return line + Wrapped(explanation, kColumn) + "\n";
}

std::string HelpLine(const OptionRow& row) {
    const std::string value = *row.value ? fmt::format(" {}", row.value) : "";
    std::string explanation = row.help;
    if (*row.words) explanation += fmt::format(" ({})", fmt::join(CLI::detail::split(row.words, ' '), ", "));
    return HelpLine(row.name + value, explanation);
}

std::string HelpBlock(const std::string& title, const std::vector<OptionRow>& rows) {
    std::string text;
    for (const OptionRow& row : rows) text += HelpLine(row);
    return text.empty() ? text : "\n" + title + ":\n" + text;
}

std::string HelpEnd() {
    std::string text = "\nExit status:\n";
    for (std::size_t status = 0; status < ExitStatusTexts().size(); ++status)
        text += HelpLine(std::to_string(status), ExitStatusTexts()[status]);
    return text;
}

bool IsOfGroup(const CommandRow& command, const std::string& group) {
    return std::string(command.name).rfind(group + " ", 0) == 0;
}

std::string HelpText(const GroupRow& group) {
    std::string text =
        fmt::format("Usage: tavrel {} COMMAND [OPTION]...\n\n{}\n\nCommands:\n", group.name, Wrapped(group.summary, 0));
    for (const CommandRow& command : Commands())
        if (IsOfGroup(command, group.name)) text += HelpLine(command.name, command.summary);
    return text + "\n'tavrel COMMAND --help' explains each of them.\n";
}

bool TakesAll(const CommandRow& command) {
    return std::any_of(command.options.begin(), command.options.end(),
                       [](const OptionRow& row) { return std::string(row.name) == "--all"; });
}

// An operand that --all may stand for is not required by itself.
std::string ComplaintOfAll(const Arguments& arguments) {
    const std::string operand = arguments.command->operands.front().name;
    if (arguments.Has("--all") && arguments.Has(operand)) return "--all and " + operand + " exclude each other";
    return arguments.Has("--all") || arguments.Has(operand) ? "" : operand + " or --all is required";
}

std::string ComplaintOfExtras(const std::vector<std::string>& extras, const CommandRow* command) {
    std::vector<std::string> options;
    for (const OptionRow& row : CommonOptions()) options.emplace_back(row.name);
    if (command)
        for (const OptionRow& row : command->options) options.emplace_back(row.name);
    std::string words, nearest;
    for (const std::string& extra : extras) {
        if (extra == "--") continue;
        words += fmt::format("{}\"{}\"", words.empty() ? "" : ", ", extra);
        if (nearest.empty() && extra[0] == '-') nearest = DidYouMean(extra.substr(0, extra.find('=')), options);
    }
    return "not expected: " + words + nearest;
}

// For a word in the place of a sub-command, or after that of a group, which is then compared with the group's alone.
std::string ComplaintOfName(const std::string& name, const GroupRow* group) {
    const std::string start = group ? std::string(group->name) + " " : "";
    std::vector<std::string> names;
    for (const CommandRow& command : Commands()) {
        const std::string known = command.name;
        if (known.rfind(start, 0) == 0) names.push_back(known.substr(start.size()));
    }
    if (!group)
        for (const GroupRow& row : Groups()) names.emplace_back(row.name);
    const std::string near = DidYouMean(name.substr(start.size()), names);
    return fmt::format("there is no command \"{}\"{}", name, near);
}

// Every option fills its own list in `values`, under its name, so that the sub-commands need no variable of their own.
void AddOption(CLI::App& app, const OptionRow& row, Values& values, bool required = true) {
    CLI::callback_t take = [&values, &row](const CLI::results_t& results) {
        values[row.name] = results;
        return true;
    };
    if (row.takes == Takes::Nothing) {
        app.add_flag_callback(row.name, [&values, &row] { values[row.name].clear(); });
        return;
    }
    CLI::Option* option = app.add_option(row.name, take);
    const bool several = row.takes == Takes::Many || row.takes == Takes::Any;
    option->expected(several && !*row.value ? -1 : 1);
    option->multi_option_policy(several ? CLI::MultiOptionPolicy::TakeAll : CLI::MultiOptionPolicy::TakeLast);
    // Brackets and commas belong to a value: parameter ids are full of them.
    if (*row.value) option->allow_extra_args(false);
    if (*row.words) {
        std::vector<std::string> words = CLI::detail::split(row.words, ' ');
        option->check(CLI::IsMember(std::move(words)));
    }
    const bool mayBeAbsent = row.takes == Takes::Any || row.takes == Takes::Optional;
    if (!*row.value) option->required(required && !mayBeAbsent);
}

const OptionRow* FindCommonOption(const std::string& word) {
    for (const OptionRow& row : CommonOptions())
        if (word == row.name) return &row;
    return nullptr;
}

// What stands on the line: the sub-command, or only its group, and all the rest.
struct Line {
    const CommandRow* command = nullptr;
    const GroupRow* group = nullptr;
    std::string unknown; // a word in the place of the sub-command that names none
    std::vector<std::string> rest;
    bool asksForHelp = false;
};

// Takes one word that may name a sub-command or a group, or the second word of a sub-command.
void TakeName(Line& line, const std::string& word) {
    const std::string name = line.group ? std::string(line.group->name) + " " + word : word;
    for (const CommandRow& command : Commands())
        if (name == command.name) line.command = &command;
    if (line.command) return;
    for (const GroupRow& group : Groups())
        if (name == group.name) {
            line.group = &group;
            return;
        }
    line.unknown = name;
}

// The sub-command is found here and not by CLI11, which would take any later word that happens to spell a sub-command,
// such as a folder with the name "run", for a further one.
Line SplitLine(int argc, const char* const* argv) {
    Line line;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const bool option = options && word.size() > 1 && word[0] == '-';
        if (options && word == "--help") line.asksForHelp = true;
        if (word == "--") options = false;
        if (option || line.command || !line.unknown.empty()) {
            line.rest.push_back(word);
            const OptionRow* common = option && !line.command ? FindCommonOption(word) : nullptr;
            if (common && common->takes != Takes::Nothing && i + 1 < argc) line.rest.emplace_back(argv[++i]);
        } else {
            TakeName(line, word);
        }
    }
    return line;
}

// Puts the files that are meant into the place of those that are written. What is to be written gets the name that it
// is given, so that no other file is replaced.
void FindMeantFiles(const std::vector<OptionRow>& rows, Values& values) {
    for (const OptionRow& row : rows) {
        const bool isRead =
            std::string_view(row.name) != "--output" && std::string_view(row.name) != "--write-baseline";
        const auto given = values.find(row.name);
        if (given == values.end() || !isRead || (row.offers != Offers::Files && row.offers != Offers::Scenarios))
            continue;
        for (std::string& value : given->second) value = MeantOnDisk(value);
    }
}

} // namespace

std::string HelpText() {
    std::string text =
        "Usage: tavrel COMMAND [OPTION]...\n\n" +
        Wrapped(
            "Browses, checks and edits the scenario templates of a driving-simulation installation. Without --config "
            "and TAVREL_CONFIG it works on the sample installation that came with it, so 'tavrel tree' is a good "
            "beginning.",
            0) +
        "\n\nCommands:\n";
    for (const CommandRow& command : Commands()) text += HelpLine(command.name, command.summary);
    text += HelpBlock("Options of every command", CommonOptions());
    return text + HelpEnd() + "\n'tavrel COMMAND --help' explains each command, with an example.\n";
}

std::string HelpText(const CommandRow& command) {
    std::string text = fmt::format("Usage: tavrel {}", command.name);
    for (const OptionRow& row : command.operands) text += " " + UsageOf(row);
    text += fmt::format(" [OPTION]...\n\n{}\n", Wrapped(command.description, 0));
    text += HelpBlock("Operands", command.operands) + HelpBlock("Options", command.options) +
            HelpBlock("Options of every command", CommonOptions()) + HelpEnd();
    text += command.examples.size() > 1 ? "\nExamples:\n" : "\nExample:\n";
    for (const char* example : command.examples) text += fmt::format("  {}\n", example);
    return text;
}

Arguments ReadCommandLine(int argc, const char* const* argv, std::string& answer) {
    Line line = SplitLine(argc, argv);
    // Help answers whatever else is missing or wrong on the line.
    if (line.asksForHelp) {
        answer = line.command ? HelpText(*line.command) : line.group ? HelpText(*line.group) : HelpText();
        return {};
    }
    Arguments arguments;
    CLI::App app;
    app.set_help_flag();
    for (const OptionRow& row : CommonOptions()) AddOption(app, row, arguments.values);
    if (line.command) {
        arguments.command = line.command;
        for (const OptionRow& row : line.command->operands)
            AddOption(app, row, arguments.values, !TakesAll(*line.command));
        for (const OptionRow& row : line.command->options) AddOption(app, row, arguments.values);
    }
    std::string complaint;
    if (!line.unknown.empty()) {
        complaint = ComplaintOfName(line.unknown, line.group);
    } else {
        try {
            std::reverse(line.rest.begin(), line.rest.end()); // the order that CLI11 wants
            app.parse(line.rest);
        } catch (const CLI::ExtrasError&) {
            complaint = ComplaintOfExtras(app.remaining(), line.command);
        } catch (const CLI::ArgumentMismatch& error) {
            const std::string what = OneLine(error.what());
            complaint = what.substr(0, what.find(':')) + " needs a value";
        } catch (const CLI::ParseError& error) {
            complaint = OneLine(error.what());
        }
    }
    if (arguments.Has("--version")) {
        answer = "tavrel " TAVREL_COMMAND_VERSION "\n";
        return arguments;
    }
    if (complaint.empty() && !line.command) complaint = "a command is missing";
    if (complaint.empty() && TakesAll(*line.command)) complaint = ComplaintOfAll(arguments);
    if (complaint.empty()) {
        FindMeantFiles(CommonOptions(), arguments.values);
        FindMeantFiles(line.command->operands, arguments.values);
        FindMeantFiles(line.command->options, arguments.values);
        return arguments;
    }
    const std::string subject = line.command ? std::string(line.command->name) + " "
                                : line.group ? std::string(line.group->name) + " "
                                             : std::string();
    throw Failure{ExitUsage, fmt::format("{}; see 'tavrel {}--help'", complaint, subject)};
}

} // namespace tavrel
