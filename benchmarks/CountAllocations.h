#ifndef BENCHMARKS_COUNTALLOCATIONS_H
#define BENCHMARKS_COUNTALLOCATIONS_H

#include <cstdint>

// How often this process has asked for memory with `new` so far. A unit of its own, linked by who wants to count: it
// replaces the operators of the whole program, those of the shared libraries included.
std::uint64_t allocationsSoFar();

#endif
