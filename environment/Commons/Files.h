#ifndef COMMONS_FILES_H
#define COMMONS_FILES_H

#include <string>
#include <vector>

#include <sys/types.h>

// What the environment's own libraries share about paths and files; nobody else sees it.
namespace Commons::detail {

// A descriptor that closes itself.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;

    explicit operator bool() const { return number >= 0; }
    int get() const { return number; }
    // Some file systems report a failed write only here.
    bool close();

private:
    int number = -1;
};

// An error of the system in words. The texts of the C library follow the locale of the host; these do not.
std::string SystemReason(int error);

// Paths come from items that keep backslashes, so every access turns them first.
std::string WithForwardSlashes(std::string path);

// Which file was opened, and where it stood then.
struct OpenedFile {
    std::string place; // absolute, without links; empty where the system does not tell
    dev_t device = 0;
    ino_t number = 0;
};

// Reads a plain file of up to kLargestFile bytes. False, with a reason, for anything else; a pipe or a device is
// refused without waiting for it.
bool ReadPlainFile(const std::string& path, std::string& content, std::string& reason, OpenedFile* opened = nullptr);
bool ReadPlainFile(const std::string& path, std::vector<unsigned char>& content, std::string& reason);

} // namespace Commons::detail

#endif
