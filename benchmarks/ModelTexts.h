#ifndef BENCHMARKS_MODELTEXTS_H
#define BENCHMARKS_MODELTEXTS_H

#include <cstddef>
#include <string>

class ScenarioItem;

// Root models and scripts of any size, the same for the same numbers, and trees as XML to compare with.
namespace modelTexts {

// Calls over the three lists, each of two parameters that stand in the parameter list too; an enumeration in twenty.
std::string Model(std::size_t calls);
// Tasks of rules, each of a condition and two actions of two parameters, over the calls of Model(calls).
std::string Script(std::size_t calls, std::size_t bytes);

// The tree of a text as XML: an element for an item, an attribute for a line.
std::string AsXml(const std::string& text);

// All items of a tree, the top one included.
std::size_t CountItems(const ScenarioItem& item);

} // namespace modelTexts

#endif
