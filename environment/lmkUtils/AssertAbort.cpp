#include <lmkUtils/AssertAbort.h>

#include <cstdio>
#include <cstdlib>

void AssertAbort(const char* source, int line) {
    std::fprintf(stderr, "Assertion failed: %s:%d\n", source, line);
    std::fflush(stderr);
    std::abort();
}
