#include "CommandLine.h"
#include "Context.h"
#include "Runner.h"

using namespace tavrel;

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
        return RunCommand(context);
    } catch (...) {
        const Failure failure = CurrentFailure();
        Report(failure.sentence);
        return failure.status;
    }
}
