#include "Faults.h"

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define FAULTS_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FAULTS_CHECKED 1
#endif
#endif

namespace faults {

namespace {

Call armed = Call::Open;
std::size_t turnsLeft = 0; // 0 when disarmed
bool isLasting = false;
bool hasFailed = false;
std::size_t liveBlocks = 0;

bool IsDue(Call call) {
    if (turnsLeft == 0 || call != armed) return false;
    if (turnsLeft > 1) {
        --turnsLeft;
        return false;
    }
    if (!isLasting) turnsLeft = 0;
    hasFailed = true;
    return true;
}

int FailWith(int error) {
    errno = error;
    return -1;
}

// The definition behind ours.
template <class Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

#ifndef FAULTS_CHECKED
// What a caller for memory gets: nothing when its turn has come, else what `take` gives.
template <class Take>
void* Allocate(Take take) {
    if (IsDue(Call::Allocation)) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const block = take();
    if (block) ++liveBlocks;
    return block;
}
#endif

bool IsOutput(int flags) { return (flags & (O_WRONLY | O_RDWR)) != 0; }

} // namespace

void Arm(Call call, std::size_t turn, bool lasting) {
    armed = call;
    isLasting = lasting;
    hasFailed = false;
    turnsLeft = turn;
}

bool Disarm() {
    turnsLeft = 0;
    return hasFailed;
}

std::size_t LiveBlocks() { return liveBlocks; }

} // namespace faults

using faults::Call;

// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

[[gnu::visibility("default")]] int open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if (flags & O_CREAT) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    static auto* const next = faults::Next<int(const char*, int, ...)>("open");
    if (faults::IsDue(Call::Open)) return faults::FailWith(faults::IsOutput(flags) ? ENOSPC : EMFILE);
    return next(path, flags, mode);
}

[[gnu::visibility("default")]] int open64(const char* path, int flags, ...) {
    mode_t mode = 0;
    if (flags & O_CREAT) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return open(path, flags, mode);
}

[[gnu::visibility("default")]] ssize_t read(int file, void* bytes, size_t count) {
    static auto* const next = faults::Next<ssize_t(int, void*, size_t)>("read");
    if (faults::IsDue(Call::Read)) return faults::FailWith(EIO);
    return next(file, bytes, count);
}

[[gnu::visibility("default")]] ssize_t write(int file, const void* bytes, size_t count) {
    static auto* const next = faults::Next<ssize_t(int, const void*, size_t)>("write");
    if (faults::IsDue(Call::Write)) return faults::FailWith(ENOSPC);
    if (count > 1 && faults::IsDue(Call::ShortWrite)) return next(file, bytes, 1);
    return next(file, bytes, count);
}

[[gnu::visibility("default")]] int fsync(int file) {
    static auto* const next = faults::Next<int(int)>("fsync");
    if (faults::IsDue(Call::Flush)) return faults::FailWith(EIO);
    return next(file);
}

[[gnu::visibility("default")]] int rename(const char* from, const char* to) noexcept {
    static auto* const next = faults::Next<int(const char*, const char*)>("rename");
    if (faults::IsDue(Call::Rename)) return faults::FailWith(EACCES);
    return next(from, to);
}

#ifndef FAULTS_CHECKED
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);

[[gnu::visibility("default")]] void* malloc(size_t size) {
    return faults::Allocate([=] { return __libc_malloc(size); });
}

[[gnu::visibility("default")]] void* calloc(size_t count, size_t size) {
    return faults::Allocate([=] { return __libc_calloc(count, size); });
}

[[gnu::visibility("default")]] void* realloc(void* block, size_t size) {
    if (size > 0 && faults::IsDue(Call::Allocation)) {
        errno = ENOMEM;
        return nullptr;
    }
    if (!block && size > 0) ++faults::liveBlocks;
    return __libc_realloc(block, size);
}

[[gnu::visibility("default")]] void* aligned_alloc(size_t alignment, size_t size) {
    return faults::Allocate([=] { return __libc_memalign(alignment, size); });
}

[[gnu::visibility("default")]] int posix_memalign(void** block, size_t alignment, size_t size) {
    *block = aligned_alloc(alignment, size);
    return *block ? 0 : ENOMEM;
}

[[gnu::visibility("default")]] void free(void* block) {
    if (block) --faults::liveBlocks;
    __libc_free(block);
}
#endif

} // extern "C"
// NOLINTEND(readability-identifier-naming)

#ifdef FAULTS_CHECKED
// The checkers need their own allocator, so only the allocations of C++ fail.
[[gnu::visibility("default")]] void* operator new(std::size_t size) {
    if (faults::IsDue(Call::Allocation)) throw std::bad_alloc();
    void* const block = std::malloc(size > 0 ? size : 1);
    if (!block) throw std::bad_alloc();
    return block;
}
[[gnu::visibility("default")]] void* operator new[](std::size_t size) { return operator new(size); }
// A sort of the standard library takes its buffer so, and gives it back like any other.
[[gnu::visibility("default")]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return faults::IsDue(Call::Allocation) ? nullptr : std::malloc(size > 0 ? size : 1);
}
[[gnu::visibility("default")]] void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}
[[gnu::visibility("default")]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::visibility("default")]] void operator delete(void* block, std::size_t) noexcept { std::free(block); }
[[gnu::visibility("default")]] void operator delete[](void* block) noexcept { std::free(block); }
[[gnu::visibility("default")]] void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
#endif
