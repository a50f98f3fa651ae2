// The main of every test program. A host may work in any folder and under any locale, and so may the tests:
// TAVREL_TEST_LOCALE and TAVREL_TEST_FOLDER say which, `scripts/test-matrix` sets them.

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <locale>

#include <unistd.h>

#include <gmock/gmock.h>

int main(int count, char** arguments) {
    testing::InitGoogleMock(&count, arguments);
    // What a shell starts in the background ignores an interrupt, and so would the programs that the tests interrupt.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    if (const char* name = std::getenv("TAVREL_TEST_LOCALE")) {
        std::locale::global(std::locale(name)); // throws for one that the system does not have
        if (!std::setlocale(LC_ALL, name)) return EXIT_FAILURE;
    }
    if (const char* folder = std::getenv("TAVREL_TEST_FOLDER")) {
        if (::chdir(folder) != 0) {
            std::perror(folder);
            return EXIT_FAILURE;
        }
    }
    return RUN_ALL_TESTS();
}
