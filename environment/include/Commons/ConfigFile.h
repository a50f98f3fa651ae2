#ifndef COMMONS_CONFIGFILE_H
#define COMMONS_CONFIGFILE_H

#include <string>

#include <environment/Export.h>

namespace Commons {

// A file of named text entries, in the form of Java property files, in UTF-8. Keys and texts survive whatever they
// hold. The object is only a path: each operation reads the file at that moment, and none throws.
class TAVREL_ENVIRONMENT_API ConfigFile {
public:
    // Touches no file. Both separators are accepted.
    explicit ConfigFile(const std::string& path);
    ~ConfigFile();

    // The text of an entry, the last one of several; empty if there is none or the file cannot be read.
    std::string operator[](const std::string& key) const;

    // Makes an empty file if there is none; an existing one is left alone. True if the file is there afterwards.
    bool create();

    // Sets an entry and stores the file at once, or leaves it whole if that is not possible. Other entries, comments
    // and the order stay.
    void modifyEntry(const std::string& key, const std::string& value);

private:
    std::string path; // with forward slashes
};

} // namespace Commons

#endif
