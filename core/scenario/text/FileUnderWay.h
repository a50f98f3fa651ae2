#ifndef SCENARIO_FILEUNDERWAY_H
#define SCENARIO_FILEUNDERWAY_H

#include <string>

// A file that an item loads while it is itself being loaded. Such loads lie within one another, and a file that leads
// back to itself would never end: each stands here under its name as long as it is being read.
class FileUnderWay {
public:
    explicit FileUnderWay(std::string name);
    ~FileUnderWay();
    FileUnderWay(const FileUnderWay&) = delete;
    FileUnderWay& operator=(const FileUnderWay&) = delete;

    // False for a file that is being read already, for one too deep within others, and for one too many of those that
    // a single one leads to. The cause is then told.
    bool MayBeRead() const { return isEntered; }

private:
    bool isEntered = false;
};

#endif
