#include <csignal>

#include "CommandLine.h"
#include "Context.h"
#include "Runner.h"
#include "Scripts.h"

using namespace tavrel;

namespace {

// One of the libraries blocks it as it is loaded. Whoever reads the first lines alone, as head does, wants no
// complaint.
void EndWithTheReader() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace

int main(int argc, char** argv) {
    EndWithTheReader();
    ListenForAssertions();
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
