#ifndef SCENARIO_NEARESTNAME_H
#define SCENARIO_NEARESTNAME_H

#include <string>
#include <string_view>
#include <vector>

#include <scenario/Export.h>

// For a name that is not known, the one of `candidates` that its writer most likely meant: the one with the fewest
// letters put in, left out or changed, bytes compared as they are, the first of several. Empty when none is near, which
// is when more than a third of the letters of `name` and one more would have to change; empty candidates are answered
// like any other.
TAVREL_MODEL_API std::string NearestName(std::string_view name, const std::vector<std::string>& candidates);

#endif
