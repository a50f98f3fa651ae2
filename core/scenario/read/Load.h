#ifndef SCENARIO_LOAD_H
#define SCENARIO_LOAD_H

#include <string>
#include <vector>

#include <scenario/ScenarioItem.h>

#include "link/Lookup.h"
#include "text/TextUnderWay.h"

class Config;

// One entry into the reader, from the first header to the last brace. Loads nest, since an include reads its file.
class Load {
public:
    Load(ScenarioTextStream& stream, ScenarioItem* parent);
    ~Load();
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    // Whether so many blocks more would be too deep, in this text or in all that are being read.
    bool IsTooDeep(unsigned more = 1) const;

    TextUnderWay text;
    TreeUnderWay tree;
    std::string name;             // of the header that is being read, to use one buffer for all
    std::vector<Config*> configs; // so far; they do not destroy their children
    bool leavesOutRules = false;  // the caller has no use for them, and nothing outside a rule refers to one
    unsigned depth = 0;           // blocks that are open

private:
    Load* outer;
    unsigned outerDepth; // the depth of the loads around this one
};

// Nested blocks of one text.
constexpr unsigned kMaxNesting = 1000;

#endif
