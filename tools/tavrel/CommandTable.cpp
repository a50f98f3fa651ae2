#include "CommandTable.h"

#include "commands/Commands.h"

namespace tavrel {

namespace {

constexpr auto Flag = Takes::Nothing;
constexpr auto One = Takes::One;
constexpr auto Many = Takes::Many;
constexpr auto Any = Takes::Any;
constexpr auto Optional = Takes::Optional;
constexpr auto None = Offers::Nothing;
constexpr auto Files = Offers::Files;
constexpr auto Scenarios = Offers::Scenarios;
constexpr auto Words = Offers::Words;

// clang-format off
const OptionRow kScenario {"SCENARIO", "", One, Scenarios, "", "path of a scenario, as tree and list show it, or a file"};
const OptionRow kIndex    {"INDEX", "", One, None, "", "position of the declaration, as 'variadic list' shows it"};
const OptionRow kJson     {"--json", "", Flag, None, "", "write JSON instead of text"};
const OptionRow kSaveTo   {"--output", "FILE", One, Files, "", "save to FILE and leave the scenario as it is"};
const OptionRow kName     {"--name", "TEXT", One, None, "", "name that a user of the template sees"};
const OptionRow kDescribe {"--description", "TEXT", One, None, "", "what the parameter is good for"};
const OptionRow kUnit     {"--unit", "UNIT", One, None, "", "unit of the values, such as km/h"};
const OptionRow kDefault  {"--default", "VALUE", One, None, "", "value to use if the user chooses none"};
const OptionRow kRange    {"--range", "MIN:MAX", Many, None, "", "permitted numbers; give it again for a further range"};
const OptionRow kLiteral  {"--literal", "TEXT", Many, None, "", "permitted text; give it again for a further one"};
const OptionRow kSetScenario {"SCENARIO", "", One, Scenarios, "", "a scenario, as tree and list show it, or a file"};
const OptionRow kScript   {"SCRIPT", "", One, Scenarios, "", "a scenario, as tree and list show it, or a file"};
const OptionRow kScriptName {"--script", "NAME", One, Offers::Scripts, "", "which script of the scenario (default the first whole one)"};
const OptionRow kModel    {"--model", "FILE", One, Files, "", "root model for scripts, instead of that of the configuration"};
const OptionRow kJobs     {"--jobs", "N", One, None, "", "files that are looked at side by side (default as many as there are cores)"};
const OptionRow kCampaign {"DIR", "", One, Files, "", "folder of a campaign"};
const OptionRow kPlan     {"PLAN", "", One, Files, "", "a plan file"};
const OptionRow kFromVariant {"--from", "N", One, None, "", "number of the first variant (default 0)"};
const OptionRow kToVariant   {"--to", "N", One, None, "", "number of the last variant, which is included (default the last there is)"};
const OptionRow kAll      {"--all", "", Flag, None, "", "all scenarios that list shows, in the place of one; give a file up after --timeout"};
// clang-format on

} // namespace

std::string UsageOf(const OptionRow& operand) {
    const std::string name = operand.name;
    switch (operand.takes) {
    case Takes::Many:
        return name + "...";
    case Takes::Any:
        return "[" + name + "...]";
    case Takes::Optional:
        return "[" + name + "]";
    case Takes::One:
    case Takes::Nothing:
        break;
    }
    return name;
}

const std::vector<CommandRow>& Commands() {
    // clang-format off
    static const std::vector<CommandRow> rows = {
        {"tree", "show the installation as a tree",
         "Shows versions, configurations, scenario directories and scenarios. No scenario is opened.",
         {},
         {kJson},
         Runs::Here, RunTree,
         {"tavrel tree", "tavrel --config /srv/tavrel/tavrel.xml tree"}},

        {"list", "list the scenarios with their names",
         "Writes one scenario per line: configuration, path and name. The columns are aligned on a terminal and "
         "separated by one tab elsewhere.",
         {},
         {kJson,
          {"--paths", "", Flag, None, "", "write the paths alone and open no file"},
          kJobs},
         Runs::OverItsOwnChildren, RunList,
         {"tavrel list --configuration City", "tavrel list --json"}},

        {"show", "show a scenario: its nodes, parameters and declarations",
         "Shows the name and description of a scenario, its tree of nodes with the type, value and unit of each "
         "parameter, and the variadic parameters that it declares.",
         {kScenario},
         {kAll, kJobs, kJson},
         Runs::InOneChild, RunShow,
         {"tavrel show overtaking.sce", "tavrel show --all --json --configuration City"}},

        {"get", "write the value of one parameter",
         "Writes the value of the parameter with the full id ID, in the unit of the parameter. The sub-command ids "
         "tells the ids there are. Quote the id, since shells have a meaning for brackets.",
         {kScenario,
          {"ID", "", One, Offers::Ids, "", "full id of a parameter"}},
         {kJson},
         Runs::InOneChild, RunGet,
         {"tavrel get overtaking.sce '/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/name'"}},

        {"ids", "list the full ids of all parameters",
         "Writes the full id of each parameter of a scenario, one per line, in the order of the tree.",
         {kScenario},
         {},
         Runs::InOneChild, RunIds,
         {"tavrel ids overtaking.sce"}},

        {"set", "set values in a scenario file",
         "Writes values into a scenario file and touches nothing else in it: parameters, and the start values of script "
         "variables. It says so when a value leaves what a declaration allows, and writes it all the same.",
         {kSetScenario,
          {"ASSIGNMENT", "", Many, None, "",
           "NAME=VALUE; NAME is a parameter id, the name of a declaration, or #N, its position"}},
         {{"--output", "FILE", One, Files, "", "write to FILE and leave the scenario as it is"}},
         Runs::InOneChild, RunSet,
         {"tavrel set overtaking.sce 'Truck speed=70 km/h' /sce/Scenario/duration=120"}},

        {"variadic list", "list the declarations of a scenario",
         "Lists the variadic parameters that a scenario declares: which parameter may be varied, and over which values.",
         {kScenario},
         {kJson},
         Runs::InOneChild, RunVariadicList,
         {"tavrel variadic list overtaking.sce"}},

        {"variadic add", "declare that a parameter may be varied",
         "Declares that the parameter with the full id ID may be varied. What is not given comes from that parameter: "
         "its type, name, unit and value. The scenario is saved, read again, and the position of the new declaration "
         "written.",
         {kScenario,
          {"ID", "", One, Offers::Ids, "", "full id of the parameter that may be varied"}},
         {{"--type", "TYPE", One, Words, "integer real boolean literal", "type of the values"},
          kName, kDescribe, kUnit, kDefault, kRange, kLiteral, kSaveTo},
         Runs::InOneChild, RunVariadicAdd,
         {"tavrel variadic add overtaking.sce /sce/Scenario/duration --default 60 --range 30:90 --range 120:180"}},

        {"variadic set", "change a declaration",
         "Changes what is given and leaves the rest. Ranges or texts that are given take the place of all former ones. "
         "The type stays: to change it, remove the declaration and add it anew.",
         {kScenario, kIndex},
         {{"--target", "ID", One, Offers::Ids, "", "full id of the parameter that may be varied"},
          kName, kDescribe, kUnit, kDefault, kRange, kLiteral,
          {"--any", "", Flag, None, "", "take away all ranges or texts, so that any value is permitted"},
          kSaveTo},
         Runs::InOneChild, RunVariadicSet,
         {"tavrel variadic set overtaking.sce 0 --range 50:100"}},

        {"variadic remove", "take a declaration away",
         "Removes a declaration and saves the scenario.",
         {kScenario, kIndex},
         {kSaveTo},
         Runs::InOneChild, RunVariadicRemove,
         {"tavrel variadic remove overtaking.sce 0"}},

        {"fetch", "write the bytes of a scenario file",
         "Writes the file of a scenario, byte for byte.",
         {kScenario},
         {{"--output", "FILE", One, Files, "", "write to FILE instead of the standard output"}},
         Runs::InOneChild, RunFetch,
         {"tavrel fetch overtaking.sce --output copy.sce"}},

        {"uri", "write the URI of the installation",
         "Writes the text that identifies the installation and the filters given.",
         {},
         {},
         Runs::Here, RunUri,
         {"tavrel uri --configuration City"}},

        {"check", "find what is wrong with scenarios, models and scripts",
         "Looks at scenario files, root models, scripts and includes, at folders of them, at whole installations and at "
         "scenarios of the installation, and tells everything that is wrong with each, with its place in the file, its rule and "
         "its remedy; 'tavrel explain' tells what a rule means. A file that ends the process that reads it, or takes too long, is "
         "told by name, and the others are still looked at. Without --config, a file belongs to the tavrel.xml in the nearest "
         "folder above it. Without a PATH the installation in use is checked. The status is 1 if there is a finding of the "
         "severity of --fail-on or above, and 3 if something could not be looked at.",
         {{"PATH", "", Any, Scenarios, "", "a file, a folder, an installation file, or a scenario as list shows it"}},
         {{"--format", "FORM", One, Words, "text json jsonl sarif junit github", "form of the findings (default text)"},
          {"--json", "", Flag, None, "", "the same as --format json"},
          {"--output", "FILE", One, Files, "", "write to FILE instead of the standard output"},
          {"--select", "RULES", Many, None, "", "tell these rules alone: ids or beginnings of ids such as TV4, separated by commas"},
          {"--ignore", "RULES", Many, None, "", "do not tell these rules"},
          {"--fail-on", "SEVERITY", One, Words, "error warning note", "the mildest severity that makes the status 1 (default error)"},
          {"--exit-zero", "", Flag, None, "", "the status is 0 whatever is found; what could not be looked at makes it 3 still"},
          {"--max-findings", "N", One, None, "", "tell at most so many findings of each file (default 100)"},
          kJobs,
          {"--baseline", "FILE", One, Files, "", "neither tell nor count what this file holds"},
          {"--write-baseline", "FILE", One, Files, "", "write what is found now into FILE, as the baseline of later calls"},
          {"--fix", "", Flag, None, "", "make the changes that cannot be wrong"},
          {"--unsafe-fixes", "", Flag, None, "", "make the changes that are likely, too"},
          {"--diff", "", Flag, None, "", "only show what would be changed"},
          kModel},
         Runs::OverItsOwnChildren, RunCheck,
         {"tavrel check overtaking.sce", "tavrel check --format sarif --output findings.sarif packs/city",
          "tavrel check --select TV2,TV3 --fix pause.sc"}},

        {"format", "write models and scripts in their usual form",
         "Reads root models, scripts and includes, and the scripts inside scenario files, and writes them back in the form of "
         "the library's writer: order of attributes, indentation, empty lines. Line ends stay as they are, and so does all that "
         "stands around a script in a scenario file. One file is written to the standard output; several, and those below a "
         "folder, are written in their places. A line that is lost is told, and then the file itself is only written with "
         "--force. What could not be read again is never written.",
         {{"PATH", "", Many, Files, "", "a root model, script, include or scenario file, or a folder of them"}},
         {{"--output", "FILE", One, Files, "", "write to FILE, which may be the same file, instead of the standard output"},
          {"--in-place", "", Flag, None, "", "write the one file in its place"},
          {"--check", "", Flag, None, "", "write nothing; exit with 1 if a file has another form"},
          {"--force", "", Flag, None, "", "write the file itself also where lines of it are lost"},
          kJobs, kModel},
         Runs::OverItsOwnChildren, RunFormat,
         {"tavrel format pause.sc --output pause.sc", "tavrel format --check packs/city"}},

        {"run", "run a scenario and tell what happens",
         "Runs a scenario of the installation, or a script file, over a time of its own, and tells which rules fired, which "
         "states were entered, and how variables and scores changed. What stands behind the calls of the script is a small "
         "world of the command's own, in which vehicles are points on a road. The same run gives the same trace. Values that "
         "are set hold for the run alone. Exits with 0 for a run that passed, 1 for one that failed, 2 for what was refused "
         "before it began and 3 where there was no run.",
         {kScript},
         {kAll, kJobs, kScriptName,
          {"--from", "SECONDS", One, None, "", "time of the start (default 0)"},
          {"--until", "SECONDS", One, None, "", "time of the last step (default 60 after the start)"},
          {"--step", "SECONDS", One, None, "", "time between two steps (default 0.1)"},
          {"--set", "NAME=VALUE", Many, None, "",
           "run with that value of a parameter, which its declaration must allow; NAME is a parameter id, the name of a "
           "declaration, or #N, its position"},
          {"--set-file", "FILE", One, Files, "", "the same for an object of names and values in JSON; --set wins over it"},
          {"--seed", "NUMBER", One, None, "", "seed of the random numbers, in the place of the scenario's own"},
          {"--expect", "CRITERION", Many, None, "", "judge the run, such as by 'never fired(8)'"},
          {"--explain", "RULE", One, None, "", "tell why that rule did or did not fire, in the place of the trace"},
          {"--trace", "FORM", One, Words, "text json", "form of the trace; json has one event per line"},
          {"--output", "FILE", One, Files, "", "write the trace to FILE and show the summary alone"},
          {"--quiet", "", Flag, None, "", "show the summary alone"},
          kModel},
         Runs::InOneChildWithoutLimitOfTime, RunRun,
         {"tavrel run overtaking.sce --until 120", "tavrel run overtaking.sce --trace json --output trace.json",
          "tavrel run overtaking.sce --set 'Truck speed=70' --expect 'eventually[0,40] entered(TASK (3))'",
          "tavrel run --all --until 10"}},

        {"judge", "judge a run by its trace",
         "Reads a trace as 'run --trace json' writes it, or as anybody else does, and says which criteria hold in it and "
         "by how much. Exits with 0 if all hold and 1 if one does not.",
         {{"TRACE", "", One, Files, "", "a trace"}},
         {{"--expect", "CRITERION", Many, None, "", "what to judge by, such as 'never fired(8)'"},
          kJson},
         Runs::InOneChild, RunJudge,
         {"tavrel judge trace.json --expect 'always variable(\"Truck speed\") < 25'"}},

        {"graph", "draw the state machine of a script",
         "Writes the tasks, states and rules of a scenario or script as text for the program dot of Graphviz. An edge is a "
         "rule with an action that names the next state; what is disabled is dashed.",
         {kScript},
         {kScriptName,
          {"--trace", "FILE", One, Files, "", "colour what a run visited, by what 'run --trace json' wrote"},
          {"--output", "FILE", One, Files, "", "write to FILE instead of the standard output"},
          kModel},
         Runs::InOneChild, RunGraph,
         {"tavrel graph overtaking.sce | dot -Tsvg > overtaking.svg"}},

        {"find", "find the scenarios that answer a question",
         "Lists the scenarios of which all EXPRESSIONs hold. KEY=TEXT compares without regard to case; * and ? stand for any "
         "characters as in file names, and a text without them is looked for anywhere. The keys: parameter (id, name or long "
         "name of a parameter), unit and value (of that same parameter; value also with <, <=, >, >= and !=), varies (name or id "
         "of a declaration), calls (an action, condition or function), includes (a script file), file (a file that a script "
         "names), name (of the scenario), text (anything in the file that people read). A word without a key means text. The "
         "status is 1 if there is no such scenario.",
         {{"EXPRESSION", "", Any, None, "", "such as parameter=speed, value<50 or calls=SET_SPEED"}},
         {kJson, kJobs,
          {"--paths", "", Flag, None, "", "write the paths alone"},
          {"--places", "", Flag, None, "", "also tell what was found in each, with its row"}},
         Runs::OverItsOwnChildren, RunFind,
         {"tavrel find calls=SET_VHL_SPEED", "tavrel find parameter=initialSpeed 'value<50' unit=km/h",
          "tavrel find 'file=*.png' --places"}},

        {"diff", "compare two scenarios or scripts",
         "Compares two scenarios, scripts or models as trees and tells which parameters, declarations and items were added, "
         "removed, moved or changed, with their rows. Neither is linked to a root model. The status is 1 if they differ.",
         {{"A", "", One, Scenarios, "", "a scenario, as tree and list show it, or a file"},
          {"B", "", One, Scenarios, "", "what it is compared with"}},
         {kJson},
         Runs::InOneChild, RunDiff,
         {"tavrel diff overtaking.sce copy.sce", "tavrel diff old/nuro.mdl new/nuro.mdl --json"}},

        {"refs", "list where a variable, task, rule or include is used",
         "Lists where NAME stands in a script and in what it includes: where it is defined, used, written and entered. NAME is a "
         "number or a label; 'variable:3', 'task:3', 'rule:3' or 'include:school/keys.sc' says which of those with one name is "
         "meant. The status is 1 if nothing refers to it.",
         {kScript,
          {"NAME", "", One, None, "", "a variable, task, rule or include"}},
         {kScriptName, kModel, kJson},
         Runs::InOneChild, RunRefs,
         {"tavrel refs overtaking.sce variable:1", "tavrel refs overtaking.sce 'Overtake' --json"}},

        {"outline", "tell a script as a person reads it",
         "Tells a script in the words of its display texts: states, rules with IF, THEN and ELSE, includes and evaluation, each "
         "with its row.",
         {kScript},
         {kScriptName, kModel, kJson},
         Runs::InOneChild, RunOutline,
         {"tavrel outline overtaking.sce"}},

        {"words", "list what a root model offers to scripts",
         "Lists the conditions, actions and functions of the root model, with their parameters: types, units, limits and the "
         "entries of enumerations. PATTERN chooses by name or label, without regard to case; * and ? stand for any characters, "
         "and a text without them is looked for anywhere. The status is 1 if there is no such word.",
         {{"PATTERN", "", Optional, None, "", "part of a name or label, such as speed"}},
         {kModel, kJson},
         Runs::InOneChild, RunWords,
         {"tavrel words speed", "tavrel words 'SET_*' --configuration City --json"}},

        {"explain", "explain a rule of check",
         "Explains the rule of an id or name, as check tells them: what it means, why it matters, an example, the remedy. "
         "Without ID, lists all rules.",
         {{"ID", "", Optional, None, "", "id or name of a rule, such as TV2001"}},
         {{"--format", "FORM", One, Words, "text json", "form of the answer"}, kJson},
         Runs::Here, RunExplain,
         {"tavrel explain TV2001", "tavrel explain --format json"}},

        {"campaign init", "begin a campaign: a folder in which all variants of a plan are run",
         "Freezes a plan, with what it is made from, in the folder DIR. The same plan again changes nothing.",
         {{"PLAN", "", One, Files, "", "a plan file"}},
         {{"--output", "DIR", One, Files, "", "folder of the campaign, made if it is not there; needed"}},
         Runs::OverItsOwnChildren, RunCampaignInit,
         {"tavrel campaign init plan.json --output night"}},

        {"campaign run", "run the variants of a campaign that are not finished",
         "Runs each variant in a process of its own, judges it, and keeps the result in DIR/runs. Passed, failed and skipped "
         "runs are not run again without --retry. Any number of these commands may work in one folder, on any number of "
         "machines that see it; they share the work. Exit status 3 tells that some runs could not be had yet.",
         {kCampaign},
         {{"--shard", "I/N", One, None, "", "the variants whose number leaves the rest I when divided by N; auto: the part that "
           "Slurm, Kubernetes or GNU parallel gave this process"},
          kJobs,
          {"--retry", "WHICH", One, Words, "failed all", "also run again what failed, or everything"},
          {"--command", "TEXT", One, None, "", "run an external simulator: a program with arguments, in which {scenario}, "
           "{trace}, {number}, {seed} and {folder} are filled in"},
          {"--traces", "WHICH", One, Words, "all failed none", "which traces are kept in DIR/traces (default all)"},
          {"--memory", "MB", One, None, "", "memory that a run may take (default 4096)"}},
         Runs::OverItsOwnChildren, RunCampaignRun,
         {"tavrel campaign run night", "tavrel campaign run night --shard 0/4 --traces failed",
          "tavrel campaign run night --command 'mysim {scenario} --log {trace}'"}},

        {"campaign status", "tell how far a campaign is",
         "Writes how many variants have which verdict, which are missing, and how fast they are run.",
         {kCampaign},
         {kJson},
         Runs::OverItsOwnChildren, RunCampaignStatus,
         {"tavrel campaign status night"}},

        {"campaign merge", "write the results of a campaign",
         "Writes results.jsonl, results.csv, junit.xml and report.html from the finished runs. The same runs give the same "
         "bytes, wherever and in whatever order they were made.",
         {kCampaign},
         {{"--output", "DIR", One, Files, "", "folder to write to (default that of the campaign)"}},
         Runs::OverItsOwnChildren, RunCampaignMerge,
         {"tavrel campaign merge night --output results"}},

        {"campaign bisect", "look for the limit between passed and failed along one parameter",
         "Runs the ends of the parameter's range and some values between them, and halves the bracket between the first two "
         "that differ until it is small enough. The other parameters have their defaults. Exit status 1 tells that the ends "
         "do not differ.",
         {{"PLAN", "", One, Files, "", "a plan file"}},
         {{"--parameter", "NAME", One, None, "", "name or full id of a parameter of the plan; needed"},
          {"--tolerance", "X", One, None, "", "largest width of the bracket, in the unit of the parameter; needed"},
          {"--probes", "N", One, None, "", "values between the ends that are run first (default 4)"},
          kJson},
         Runs::OverItsOwnChildren, RunCampaignBisect,
         {"tavrel campaign bisect plan.json --parameter 'Truck speed' --tolerance 0.5"}},
        {"vary plan", "write a plan to begin with",
         "Writes a plan with all declarations of a scenario that have values to choose from. What a plan may hold is what "
         "'vary schema' writes.",
         {kScenario},
         {{"--expect", "CRITERION", Many, None, "", "what the runs are to be judged by, such as 'never fired(8)'"}},
         Runs::InOneChild, RunVaryPlan,
         {"tavrel vary plan overtaking.sce > plan.json",
          "tavrel vary plan overtaking.sce --expect 'never fired(8)' > plan.json"}},

        {"vary count", "tell how many variants a plan has",
         "Writes how many variants there are. A grid with constraints is counted up to ten million combinations; beyond "
         "that an upper bound is told, and that it is one.",
         {kPlan},
         {kJson},
         Runs::InOneChildWithoutLimitOfTime, RunVaryCount,
         {"tavrel vary count plan.json"}},

        {"vary list", "list the variants of a plan",
         "Writes one variant per line: its number and the value of each parameter. In jsonl and csv parameters are named by "
         "their full ids, and values are what an assignment takes.",
         {kPlan},
         {{"--format", "FORM", One, Words, "table jsonl csv", "form of the list (default table)"},
          kFromVariant, kToVariant},
         Runs::InOneChildWithoutLimitOfTime, RunVaryList,
         {"tavrel vary list plan.json", "tavrel vary list plan.json --format jsonl --from 100 --to 199"}},

        {"vary show", "show one variant of a plan",
         "Shows the values of a variant with names and units, and beside them what the scenario has.",
         {kPlan,
          {"N", "", One, None, "", "number of a variant"}},
         {kJson},
         Runs::InOneChildWithoutLimitOfTime, RunVaryShow,
         {"tavrel vary show plan.json 7"}},

        {"vary write", "write the variants of a plan as scenario files",
         "Writes a scenario file for each variant, named by its number, and variants.jsonl with what 'vary list --format "
         "jsonl' writes of them. A file differs from the scenario in the values alone.",
         {kPlan},
         {{"--output", "FOLDER", One, Files, "", "folder to write to, made if it is not there; needed"},
          kFromVariant, kToVariant},
         Runs::InOneChildWithoutLimitOfTime, RunVaryWrite,
         {"tavrel vary write plan.json --output variants"}},

        {"vary coverage", "tell which combinations of values the variants cover",
         "Counts the combinations of values of every few parameters that the constraints allow, and how many of them the "
         "variants of the plan have, or those of a file; the first missing ones are told.",
         {kPlan},
         {{"--strength", "T", One, None, "", "of how many parameters, 1 to 6 (default that of a cover plan, else 2)"},
          {"--runs", "FILE", One, Files, "", "count these variants: lines of JSON with \"values\""},
          kJson},
         Runs::InOneChildWithoutLimitOfTime, RunVaryCoverage,
         {"tavrel vary coverage plan.json --strength 3"}},

        {"vary schema", "write the JSON schema of a plan",
         "Writes the JSON schema that a plan file follows.",
         {},
         {},
         Runs::Here, RunVarySchema,
         {"tavrel vary schema > plan.schema.json"}},

        {"completion", "write the completion for a shell",
         "Writes a script that teaches the shell the sub-commands, options, scenarios, ids, configurations and scripts.",
         {{"SHELL", "", One, Words, "bash zsh fish", "the shell"}},
         {},
         Runs::Here, RunCompletion,
         {"source <(tavrel completion bash)", "tavrel completion fish | source"}},

        {"man", "write the manual page",
         "Writes the manual page in the form that man reads.",
         {},
         {},
         Runs::Here, RunMan,
         {"tavrel man | man -l -"}},
    };
    // clang-format on
    return rows;
}

const std::vector<OptionRow>& CommonOptions() {
    // clang-format off
    static const std::vector<OptionRow> rows = {
        {"--config", "FILE", One, Files, "",
         "the installation file; without it the environment variable TAVREL_CONFIG names one, and without that the "
         "tavrel.xml in this folder or the nearest above, or else the sample installation, is used"},
        {"--configuration", "NAME", One, Offers::Configurations, "", "see this configuration alone"},
        {"--version-filter", "VERSION", One, None, "", "see configurations of this version alone"},
        {"--timeout", "SECONDS", One, None, "", "give a file up after this time (default 60)"},
        {"--verbose", "", Flag, None, "", "also tell what the library logs while it reads"},
        {"--help", "", Flag, None, "", "explain the command, or the sub-command before it"},
        {"--version", "", Flag, None, "", "tell the version of the command"},
    };
    // clang-format on
    return rows;
}

const std::vector<const char*>& ExitStatusTexts() {
    static const std::vector<const char*> texts = {
        "all went well",
        "a check found something, a run failed, a search found nothing, or two files differ",
        "the command line makes no sense",
        "something could not be found, read, opened or written; the standard error stream says what",
    };
    return texts;
}

const std::vector<GroupRow>& Groups() {
    static const std::vector<GroupRow> rows = {
        {"campaign", "run all variants of a plan and judge them"},
        {"vary", "make variants of a scenario by a plan"},
        {"variadic", "list and edit the declarations of parameters that may be varied"},
    };
    return rows;
}

} // namespace tavrel
