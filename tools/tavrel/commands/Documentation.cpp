#include <fmt/format.h>

#include "../CommandTable.h"
#include "../Context.h"
#include "Commands.h"

// The manual page and the completion, both written from the table that the command line is read with.

namespace tavrel {

namespace {

// Text for roff: a hyphen that may be copied, no escape, no line that begins with a request.
std::string Roff(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return !result.empty() && (result[0] == '.' || result[0] == '\'') ? "\\&" + result : result;
}

void PrintOptions(Output& out, const std::vector<OptionRow>& rows) {
    for (const OptionRow& row : rows) {
        out.Print(".TP\n\\fB{}\\fR", Roff(row.name));
        if (*row.value) out.Print(" \\fI{}\\fR", Roff(row.value));
        out.Print("\n{}", Roff(row.help));
        if (*row.words) out.Print(" (one of: {})", Roff(row.words));
        out.Print("\n");
    }
}

void PrintCommand(Output& out, const CommandRow& command) {
    out.Print(".SS \"tavrel {}", Roff(command.name));
    for (const OptionRow& row : command.operands) out.Print(" {}", Roff(UsageOf(row)));
    out.Print("\"\n{}\n", Roff(command.description));
    PrintOptions(out, command.operands);
    PrintOptions(out, command.options);
    out.Print(".PP\n.EX\n");
    for (const char* example : command.examples) out.Print("{}\n", Roff(example));
    out.Print(".EE\n");
}

bool IsForSeveral(const OptionRow& operand) { return operand.takes == Takes::Many || operand.takes == Takes::Any; }

std::string Names(const std::vector<OptionRow>& rows) {
    std::string names;
    for (const OptionRow& row : rows) names += std::string(names.empty() ? "" : " ") + row.name;
    return names;
}

// The line of a case statement of the shell that says what completes the value of an option.
std::string ValueCase(const std::string& pattern, const OptionRow& row) {
    switch (row.offers) {
    case Offers::Files:
        return fmt::format("    {}) COMPREPLY=($(compgen -f -- \"$current\")); compopt -o filenames; return ;;\n",
                           pattern);
    case Offers::Scenarios:
        return fmt::format("    {}) _tavrel_scenarios; return ;;\n", pattern);
    case Offers::Words:
        return fmt::format("    {}) COMPREPLY=($(compgen -W \"{}\" -- \"$current\")); return ;;\n", pattern, row.words);
    case Offers::Nothing:
        break;
    }
    return fmt::format("    {}) return ;;\n", pattern);
}

void PrintValueCases(Output& out, const std::string& command, const std::vector<OptionRow>& rows) {
    for (const OptionRow& row : rows)
        if (*row.value) out.Print(ValueCase(fmt::format("\"{} {}\"", command, row.name), row));
}

// clang-format off: it takes a brace of the script for the end of a namespace
constexpr const char* kCompletionHead = R"bash(# Completion of the command tavrel for bash.

# Scenarios of the installation that the line names. Their paths may hold blanks, so they are taken line by line.
_tavrel_scenarios() {
  local options=() i path
  for ((i = 1; i < COMP_CWORD; i++)); do
    case "${words[i]}" in
    --config | --configuration | --version-filter) options+=("${words[i]}" "${words[i + 1]}") ;;
    esac
  done
  while IFS= read -r path; do
    [[ $path == "$current"* ]] && COMPREPLY+=("$(printf '%q' "$path")")
  done < <("${words[0]}" list --paths "${options[@]}" 2>/dev/null)
}

_tavrel() {
  local words=("${COMP_WORDS[@]}") current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
  local command="" operands=0 i
  COMPREPLY=()
)bash";
// clang-format on

} // namespace

int RunMan(Context& context) {
    Output& out = context.out;
    out.Print(".TH TAVREL 1 \"\" \"tavrel {}\" \"User Commands\"\n", TAVREL_COMMAND_VERSION);
    out.Print(".SH NAME\ntavrel \\- browse, check and edit scenario templates\n");
    out.Print(".SH SYNOPSIS\n.B tavrel\n\\fICOMMAND\\fR [\\fIOPTION\\fR]...\n");
    out.Print(
        ".SH DESCRIPTION\nShows the scenario templates of a driving\\-simulation installation as a tree of versions, "
        "configurations, directories and scenarios; reads their parameters; edits which of them may be varied; and "
        "checks, formats and runs the scripts inside. Results go to the standard output and all else to the standard "
        "error stream.\n");
    out.Print(".SH COMMANDS\n");
    for (const CommandRow& command : Commands()) PrintCommand(out, command);
    out.Print(".SH OPTIONS OF EVERY COMMAND\n");
    PrintOptions(out, CommonOptions());
    out.Print(".SH EXIT STATUS\n");
    for (std::size_t status = 0; status < ExitStatusTexts().size(); ++status)
        out.Print(".TP\n{}\n{}\n", status, Roff(ExitStatusTexts()[status]));
    out.Print(".SH ENVIRONMENT\n.TP\nTAVREL_CONFIG\nThe installation file, unless \\fB\\-\\-config\\fR names one.\n"
              ".TP\nNO_COLOR\nIf set, no colours are used on a terminal.\n");
    return context.status;
}

int RunCompletion(Context& context) {
    Output& out = context.out;
    std::string first, groups;
    for (const GroupRow& group : Groups()) {
        first += std::string(first.empty() ? "" : " ") + group.name;
        groups += std::string(groups.empty() ? "" : " | ") + group.name;
    }
    for (const CommandRow& command : Commands())
        if (std::string(command.name).find(' ') == std::string::npos) first += std::string(" ") + command.name;

    out.Print(kCompletionHead);
    // Which sub-command the line has, and how many operands stand before the cursor.
    std::string valued;
    const auto addValued = [&](const std::vector<OptionRow>& rows) {
        for (const OptionRow& row : rows)
            if (*row.value && (valued + " | ").find(std::string(row.name) + " | ") == std::string::npos)
                valued += (valued.empty() ? "" : " | ") + std::string(row.name);
    };
    addValued(CommonOptions());
    for (const CommandRow& command : Commands()) addValued(command.options);
    out.Print(
        "  for ((i = 1; i < COMP_CWORD; i++)); do\n    case \"${{words[i]}}\" in\n    {}) ((i++)) ;;\n    -*) ;;\n"
        "    *)\n      case \"$command\" in\n      \"\") command=${{words[i]}} ;;\n"
        "      {}) command+=\" ${{words[i]}}\" ;;\n      *) ((operands++)) ;;\n      esac\n      ;;\n    esac\n  "
        "done\n",
        valued, groups);
    // What the word at the cursor may be: the value of the option before it, an option, an operand.
    out.Print("  case \"$command $previous\" in\n");
    for (const OptionRow& row : CommonOptions())
        if (*row.value) out.Print(ValueCase(fmt::format("*\" {}\"", row.name), row));
    for (const CommandRow& command : Commands()) PrintValueCases(out, command.name, command.options);
    out.Print("  esac\n  if [[ $current == -* ]]; then\n    case \"$command\" in\n");
    for (const CommandRow& command : Commands())
        if (!command.options.empty())
            out.Print("    \"{}\") COMPREPLY=($(compgen -W \"{}\" -- \"$current\")) ;;\n", command.name,
                      Names(command.options));
    out.Print("    esac\n    COMPREPLY+=($(compgen -W \"{}\" -- \"$current\"))\n    return\n  fi\n",
              Names(CommonOptions()));
    out.Print("  case \"$command\" in\n    \"\") COMPREPLY=($(compgen -W \"{}\" -- \"$current\")); return ;;\n", first);
    for (const GroupRow& group : Groups()) {
        std::string names;
        const std::string start = std::string(group.name) + " ";
        for (const CommandRow& command : Commands())
            if (std::string(command.name).rfind(start, 0) == 0)
                names += (names.empty() ? "" : " ") + std::string(command.name).substr(start.size());
        out.Print("    \"{}\") COMPREPLY=($(compgen -W \"{}\" -- \"$current\")); return ;;\n", group.name, names);
    }
    out.Print("  esac\n  case \"$command:$operands\" in\n");
    for (const CommandRow& command : Commands())
        for (std::size_t i = 0; i < command.operands.size(); ++i) {
            const std::string place = IsForSeveral(command.operands[i]) ? "*" : std::to_string(i);
            out.Print(ValueCase(fmt::format("\"{}:\"{}", command.name, place), command.operands[i]));
        }
    out.Print("  esac\n}\ncomplete -F _tavrel tavrel\n");
    return context.status;
}

} // namespace tavrel
