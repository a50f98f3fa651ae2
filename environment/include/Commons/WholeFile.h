#ifndef COMMONS_WHOLEFILE_H
#define COMMONS_WHOLEFILE_H

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include <environment/Export.h>

// Files that are there whole or not at all, and programs that replace the same file at the same time. Concrete paths
// only; both separators are accepted. Nothing here throws but std::bad_alloc.
namespace Commons {

// No file of an installation comes near it. What is larger was not meant, and might take all the memory there is: such
// a file is not read, and who saves what is to be read again refuses it.
inline constexpr std::size_t kLargestFile = std::size_t{256} << 20;

// An error of the system in words, as they go on after a colon: "no permission". The texts of the C library follow the
// locale of the host; these do not.
TAVREL_ENVIRONMENT_API std::string WordsOf(const std::error_code& error);

// Why a file is not to be opened, in such words: it does not exist, is no regular file (a pipe would block the reader
// for ever), may not be read, or is larger than any that is read, which `isTooLarge` tells where it is given. Empty if
// it may be opened.
TAVREL_ENVIRONMENT_API std::string ReasonNotToOpen(const std::string& path, bool* isTooLarge = nullptr);

// Replaces or makes a file, whole or not at all: the bytes are written beside it, flushed and moved over it. False,
// with a reason ("no permission"), if that cannot be done; what stood there is then untouched.
//
// The target of a symbolic link is replaced, not the link; another hard link keeps the former file. Access rights,
// group, access control list and extended attributes stay, and the owner where this process may give a file away. Where
// the group or the list cannot be kept, rights are taken away, so that nobody can do more with the file than before. An
// attribute of the user that cannot be kept refuses the save, and so do a write-protected file, a folder, a pipe and a
// device.
//
// Waits for a FileLock that another program keeps on the file, and refuses if that does not end. What a save that was
// killed has left beside this file is removed, if this user may.
TAVREL_ENVIRONMENT_API bool WriteFileWhole(const std::string& path, std::string_view bytes, std::string& reason);

// The same for a file that was read before: refuses, too, if it exists and does not hold the `expected` bytes any more,
// so that the work of someone else is not lost. No other program that saves in this way comes between look and move.
TAVREL_ENVIRONMENT_API bool ReplaceFileWhole(const std::string& path, std::string_view expected, std::string_view bytes,
                                             std::string& reason);

// Whether a file of that name (without folders) is one that a save writes beside its target, or has left there when it
// was killed. It may vanish at any time, and belongs in no listing.
TAVREL_ENVIRONMENT_API bool IsSaveUnderWay(std::string_view fileName);

// Keeps other programs from replacing a file while this object lives, so that they read it after what is done here, and
// not before: from before the file is read until it is saved or left. It binds only those who take such a lock, as the
// saves above do, in another program or in another thread of this one. It stays on the file when the thread that made
// it replaces the file in that time. Several of one thread on one file count as one; they end in the reverse order.
class TAVREL_ENVIRONMENT_API FileLock {
public:
    // How long a lock of someone else is waited for, counted anew each time that the file has been replaced.
    static constexpr std::chrono::milliseconds kPatience{10'000};

    explicit FileLock(const std::string& path, std::chrono::milliseconds patience = kPatience);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // False if another program or thread kept its lock for longer than that, and only then: where there is no file
    // yet, where it cannot be opened, and where the file system knows no locks, there is nothing to wait for.
    bool isFree() const;

    struct State;

private:
    std::unique_ptr<State> state;
};

} // namespace Commons

#endif
