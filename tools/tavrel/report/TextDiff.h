#ifndef TAVREL_COMMAND_TEXTDIFF_H
#define TAVREL_COMMAND_TEXTDIFF_H

#include <string>
#include <string_view>

namespace tavrel {

// The lines that differ, in the unified form that patch reads, with three lines around them; empty for texts that are
// alike.
std::string UnifiedDiff(const std::string& path, std::string_view before, std::string_view after);

} // namespace tavrel

#endif
