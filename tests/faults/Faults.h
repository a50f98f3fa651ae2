#ifndef FAULTS_FAULTS_H
#define FAULTS_FAULTS_H

#include <cstddef>

// Calls of this process to the system and to the allocator, made to fail on demand. The program defines the functions
// itself, in front of those of the C library.
namespace faults {

enum class Call { Open, Read, Write, ShortWrite, Flush, Rename, Allocation };

// From now on, the `turn`-th call of that sort fails, counted from 1; a short write takes one byte instead. With
// `lasting` every later one fails, too, as on a full disk.
void Arm(Call call, std::size_t turn, bool lasting = false);
// Ends it. Whether a call has failed.
bool Disarm();

// Blocks allocated and not freed since the process began. Zero where the checkers count on their own.
std::size_t LiveBlocks();

} // namespace faults

#endif
