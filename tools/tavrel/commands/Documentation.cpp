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

// What differs between the shells that take the same case statements.
struct Shell {
    const char* head;
    const char* files;
    const char* words; // completes to {}
    int first;         // index of the first word after the command
    const char* cursor;
    const char* tail;
};

// The call of the shell's function that offers the lines of a call of the command.
const char* LinesOf(Offers offers) {
    switch (offers) {
    case Offers::Scenarios:
        return "_tavrel_lines list --paths";
    case Offers::Ids:
        return "_tavrel_lines ids \"$subject\"";
    case Offers::Configurations:
        return "_tavrel_configurations";
    case Offers::Scripts:
        return "_tavrel_scripts \"$subject\"";
    case Offers::Nothing:
    case Offers::Files:
    case Offers::Words:
        break;
    }
    return "";
}

std::string WordsOf(const Shell& shell, const std::string& words) {
    return fmt::format(fmt::runtime(shell.words), words);
}

// The line of a case statement of the shell that says what completes the value of an option.
std::string ValueCase(const Shell& shell, const std::string& pattern, const OptionRow& row) {
    const std::string action = row.offers == Offers::Files   ? shell.files
                               : row.offers == Offers::Words ? WordsOf(shell, row.words)
                                                             : LinesOf(row.offers);
    return fmt::format("    {}) {}return ;;\n", pattern, action.empty() ? "" : action + "; ");
}

// clang-format off: it takes a brace of the script for the end of a namespace
constexpr Shell kBash = {R"sh(# Completion of the command tavrel for bash.

# The lines of a call for the installation that the line names. They may hold blanks.
_tavrel_offer() {
  local line
  while IFS= read -r line; do
    [[ $line == "${current//[\\\"\']/}"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
  done
}
_tavrel_call() {
  local options=() i
  for ((i = 1; i + 1 < COMP_CWORD; i++)); do
    case "${words[i]}" in
    --config | --configuration | --version-filter) options+=("${words[i]}" "${words[i + 1]//[\\\"\']/}") ;;
    esac
  done
  "${words[0]}" "$@" "${options[@]}" 2>/dev/null
}
_tavrel_lines() { _tavrel_offer < <(_tavrel_call "$@"); }
_tavrel_configurations() { _tavrel_offer < <(_tavrel_call tree | sed -n 's/^    \([^ ]\)/\1/p'); }
_tavrel_scripts() {
  _tavrel_offer < <(_tavrel_call show "$1" --json | sed -n 's/.*"nodeId": .*scriptName=\\"\(.*\)\\"\]".*/\1/p')
}

_tavrel() {
  local words=("${COMP_WORDS[@]}") current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
  local command="" subject="" operands=0 i
  COMPREPLY=()
)sh",
                         "COMPREPLY+=($(compgen -f -- \"$current\")); compopt -o filenames",
                         "COMPREPLY+=($(compgen -W \"{}\" -- \"$current\"))",
                         1,
                         "COMP_CWORD",
                         "complete -F _tavrel tavrel\n"};

constexpr Shell kZsh = {R"sh(#compdef tavrel
# Completion of the command tavrel for zsh.

_tavrel_call() {
  local -a options
  local i
  for ((i = 2; i + 1 < CURRENT; i++)); do
    case "${words[i]}" in
    --config | --configuration | --version-filter) options+=("${words[i]}" "${(Q)words[i + 1]}") ;;
    esac
  done
  "${(Q)words[1]}" "$@" "${options[@]}" 2>/dev/null
}
_tavrel_lines() { REPLY="$(_tavrel_call "$@")"; lines=(${(f)REPLY}); compadd -- "${lines[@]}"; }
_tavrel_configurations() {
  REPLY="$(_tavrel_call tree | sed -n 's/^    \([^ ]\)/\1/p')"; lines=(${(f)REPLY}); compadd -- "${lines[@]}"
}
_tavrel_scripts() {
  REPLY="$(_tavrel_call show "$1" --json | sed -n 's/.*"nodeId": .*scriptName=\\"\(.*\)\\"\]".*/\1/p')"
  lines=(${(f)REPLY}); compadd -- "${lines[@]}"
}

_tavrel() {
  local current="${words[CURRENT]}" previous="${words[CURRENT - 1]}" command="" subject="" operands=0 i REPLY
  local -a lines
)sh",
                        "_files",
                        "compadd -- {}",
                        2,
                        "CURRENT",
                        "if [[ $funcstack[1] == _tavrel ]]; then _tavrel \"$@\"; else compdef _tavrel tavrel; fi\n"};

constexpr const char* kFishHead = R"sh(# Completion of the command tavrel for fish.

# Whether the line has that sub-command and, if a number is given, that many operands before the cursor.
function __tavrel_at
    set -l words (commandline -opc)
    set -l command ''
    set -l operands 0
    set -l skips 0
    set -g __tavrel_subject ''
    set -g __tavrel_options
    for i in (seq 2 (count $words))
        set -l word $words[$i]
        if test $skips = 1
            set skips 0
            continue
        end
        switch $word
            case --config --configuration --version-filter
                set skips 1
                test $i -lt (count $words); and set -a __tavrel_options $word $words[(math $i + 1)]
            case {}
                set skips 1
            case '-*'
            case '*'
                switch $command
                    case ''
                        set command $word
                    case {}
                        set command "$command $word"
                    case '*'
                        test $operands = 0; and set __tavrel_subject $word
                        set operands (math $operands + 1)
                end
        end
    end
    test "$command" = "$argv[1]"; or return 1
    test (count $argv) -lt 2; or test "$argv[2]" = any; or test "$argv[2]" = $operands
end
function _tavrel_lines
    tavrel $argv $__tavrel_options 2>/dev/null
end
function _tavrel_configurations
    _tavrel_lines tree | sed -n 's/^    \([^ ]\)/\1/p'
end
function _tavrel_scripts
    _tavrel_lines show $argv --json | sed -n 's/.*"nodeId": .*scriptName=\\\\"\(.*\)\\\\"\]".*/\1/p'
end
complete -c tavrel -f
)sh";
// clang-format on

std::string FishOffer(const OptionRow& row) {
    if (row.offers == Offers::Files) return "-F";
    if (row.offers == Offers::Words) return fmt::format("-f -a '{}'", row.words);
    std::string call = LinesOf(row.offers);
    if (call.empty()) return "-f";
    if (const std::size_t at = call.find("\"$subject\""); at != std::string::npos)
        call.replace(at, std::string("\"$subject\"").size(), "$__tavrel_subject");
    return fmt::format("-f -a '({})'", call);
}

void PrintFishOptions(Output& out, const std::string& condition, const std::vector<OptionRow>& rows) {
    for (const OptionRow& row : rows)
        out.Print("complete -c tavrel{} -l {}{} -d '{}'\n", condition, row.name + 2,
                  *row.value ? " -r " + FishOffer(row) : "", [&] {
                      std::string help;
                      for (const char* c = row.help; *c; ++c)
                          help += *c == '\'' ? std::string("\\'") : std::string(1, *c);
                      return help;
                  }());
}

int PrintFish(Context& context, const std::string& first) {
    Output& out = context.out;
    std::string valued, groups;
    const auto addValued = [&](const std::vector<OptionRow>& rows) {
        for (const OptionRow& row : rows)
            if (*row.value && (valued + " ").find(std::string(row.name) + " ") == std::string::npos)
                valued += (valued.empty() ? "" : " ") + std::string(row.name);
    };
    addValued(CommonOptions());
    for (const CommandRow& command : Commands()) addValued(command.options);
    for (const GroupRow& group : Groups()) groups += (groups.empty() ? "" : " ") + std::string(group.name);
    std::string head = kFishHead;
    for (const std::string& words : {valued, groups}) head.replace(head.find("{}"), 2, words);
    out.Print(std::string_view(head));
    out.Print("complete -c tavrel -n \"__tavrel_at ''\" -a '{}'\n", first);
    PrintFishOptions(out, "", CommonOptions());
    for (const CommandRow& command : Commands()) {
        const std::string name = command.name;
        if (const std::size_t blank = name.find(' '); blank != std::string::npos)
            out.Print("complete -c tavrel -n \"__tavrel_at '{}'\" -a '{}'\n", name.substr(0, blank),
                      name.substr(blank + 1));
        PrintFishOptions(out, fmt::format(" -n \"__tavrel_at '{}'\"", name), command.options);
        for (std::size_t i = 0; i < command.operands.size(); ++i)
            out.Print("complete -c tavrel -n \"__tavrel_at '{}' {}\" {}\n", name,
                      IsForSeveral(command.operands[i]) ? "any" : std::to_string(i), FishOffer(command.operands[i]));
    }
    return context.status;
}

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

    const std::string word = context.arguments.Text("SHELL");
    if (word == "fish") return PrintFish(context, first);
    const Shell& shell = word == "zsh" ? kZsh : kBash;
    out.Print(std::string_view(shell.head));
    // Which sub-command the line has, and how many operands stand before the cursor.
    std::string valued;
    const auto addValued = [&](const std::vector<OptionRow>& rows) {
        for (const OptionRow& row : rows)
            if (*row.value && (valued + " | ").find(std::string(row.name) + " | ") == std::string::npos)
                valued += (valued.empty() ? "" : " | ") + std::string(row.name);
    };
    addValued(CommonOptions());
    for (const CommandRow& command : Commands()) addValued(command.options);
    out.Print("  for ((i = {}; i < {}; i++)); do\n    case \"${{words[i]}}\" in\n    {}) ((i++)) ;;\n    -*) ;;\n"
              "    *)\n      case \"$command\" in\n      \"\") command=${{words[i]}} ;;\n"
              "      {}) command+=\" ${{words[i]}}\" ;;\n      *) [[ -z $subject ]] && "
              "subject=${{words[i]//[\\\\\\\"\\']/}}; ((operands++)) ;;\n      esac\n      ;;\n    esac\n  "
              "done\n",
              shell.first, shell.cursor, valued, groups);
    // What the word at the cursor may be: the value of the option before it, an option, an operand.
    out.Print("  case \"$command $previous\" in\n");
    for (const OptionRow& row : CommonOptions())
        if (*row.value) out.Print(ValueCase(shell, fmt::format("*\" {}\"", row.name), row));
    for (const CommandRow& command : Commands())
        for (const OptionRow& row : command.options)
            if (*row.value) out.Print(ValueCase(shell, fmt::format("\"{} {}\"", command.name, row.name), row));
    out.Print("  esac\n  if [[ $current == -* ]]; then\n    case \"$command\" in\n");
    for (const CommandRow& command : Commands())
        if (!command.options.empty())
            out.Print("    \"{}\") {} ;;\n", command.name, WordsOf(shell, Names(command.options)));
    out.Print("    esac\n    {}\n    return\n  fi\n", WordsOf(shell, Names(CommonOptions())));
    out.Print("  case \"$command\" in\n    \"\") {}; return ;;\n", WordsOf(shell, first));
    for (const GroupRow& group : Groups()) {
        std::string names;
        const std::string start = std::string(group.name) + " ";
        for (const CommandRow& command : Commands())
            if (std::string(command.name).rfind(start, 0) == 0)
                names += (names.empty() ? "" : " ") + std::string(command.name).substr(start.size());
        out.Print("    \"{}\") {}; return ;;\n", group.name, WordsOf(shell, names));
    }
    out.Print("  esac\n  case \"$command:$operands\" in\n");
    for (const CommandRow& command : Commands())
        for (std::size_t i = 0; i < command.operands.size(); ++i) {
            const std::string place = IsForSeveral(command.operands[i]) ? "*" : std::to_string(i);
            out.Print(ValueCase(shell, fmt::format("\"{}:\"{}", command.name, place), command.operands[i]));
        }
    out.Print("  esac\n}}\n{}", shell.tail);
    return context.status;
}

} // namespace tavrel
