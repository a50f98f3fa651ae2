#include "CommandLine.h"
#include "CommandTable.h"
#include "Context.h"

namespace {

using namespace tavrel;

// What the sub-command works on: its first operand, if it has one.
std::string Subject(const Arguments& arguments) {
    const std::vector<OptionRow>& operands = arguments.command->operands;
    return operands.empty() ? "" : arguments.Text(operands.front().name);
}

// What the library says of a template does not always name it.
std::string WithSubject(const Context& context, const Failure& failure) {
    const std::string scenario = context.arguments.Text("SCENARIO");
    const bool named =
        scenario.empty() || failure.status == ExitUsage || failure.sentence.find(scenario) != std::string::npos;
    return named ? failure.sentence : scenario + ": " + failure.sentence;
}

// The sub-command with what it prints, and each of its failures as a sentence and a status.
int RunToEnd(Context& context) {
    int status = ExitClean;
    try {
        status = context.arguments.command->run(context);
        context.TellLog(status != ExitClean);
    } catch (...) {
        const Failure failure = CurrentFailure();
        Report(WithSubject(context, failure));
        context.TellLog(true);
        status = failure.status;
    }
    try {
        context.out.Flush();
    } catch (const Failure& failure) {
        Report(failure.sentence);
        status = failure.status;
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    Output out;
    try {
        std::string answer;
        const Arguments arguments = ReadCommandLine(argc, argv, answer);
        if (!answer.empty()) {
            out.Print(answer);
            out.Flush();
            return ExitClean;
        }
        Context context{arguments, out};
        const Runs runs = arguments.command->runs;
        if (runs == Runs::Here || runs == Runs::OverItsOwnChildren) return RunToEnd(context);
        ChildLimits limits = context.Limits();
        limits.timed = runs == Runs::InOneChild;
        return RunInChild(Subject(arguments), limits, [&] { return RunToEnd(context); });
    } catch (...) {
        const Failure failure = CurrentFailure();
        Report(failure.sentence);
        return failure.status;
    }
}
