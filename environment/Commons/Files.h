#ifndef COMMONS_FILES_H
#define COMMONS_FILES_H

#include <string>
#include <vector>

// What the environment's own libraries share about paths and files; nobody else sees it.
namespace Commons::detail {

// Paths come from items that keep backslashes, so every access turns them first.
std::string WithForwardSlashes(std::string path);

// Reads a plain file of up to 256 MiB. False, with a reason, for anything else; a pipe or a device is refused without
// waiting for it.
bool ReadPlainFile(const std::string& path, std::string& content, std::string& reason);
bool ReadPlainFile(const std::string& path, std::vector<unsigned char>& content, std::string& reason);

// Replaces or makes a file, whole or not at all: the content is written beside it, flushed and moved over it. The
// target of a symbolic link is replaced, not the link; permissions stay. False, with a reason, if that cannot be done,
// a write-protected file included.
bool WriteFileWhole(const std::string& path, const std::string& content, std::string& reason);

} // namespace Commons::detail

#endif
