#ifndef SCENARIO_ATTRIBUTEROW_H
#define SCENARIO_ATTRIBUTEROW_H

#include <cstddef>
#include <string>
#include <string_view>

#include "Refusal.h"
#include <scenario/ScenarioItem.h>

// ReadStringAttribute without the copy: the value lies in the text of the stream.
bool MatchAttribute(const ScenarioTextStream& stream, std::string_view key, std::string_view& value);
// Keeps, for the listener, that the line at the cursor gives `key` a second value.
void NoteSecondValue(const ScenarioTextStream& stream, std::string_view key);

// One attribute of a class: its key, whether the key is still open, and what happens to the value. Rows are tried from
// the top and the first open row whose key begins the line decides, so their order is the format.
template <class Item>
struct AttributeRow {
    std::string_view key;
    bool (*isOpen)(const Item&);
    // Stores the value; answers whether the line counts as taken.
    bool (*take)(Item&, std::string_view value);

    // Open while the field is empty; any value is taken.
    template <auto Field>
    static constexpr AttributeRow text(std::string_view key) {
        return {key, IsEmpty<Field>, Store<Field>};
    }
    // Open while the field is empty; any value is stored, but only one that passes the test is taken. An empty one is
    // always taken, since the writer prints it for a field that is not set.
    template <auto Field, bool (*IsAllowed)(std::string_view)>
    static constexpr AttributeRow word(std::string_view key) {
        return {key, IsEmpty<Field>, [](Item& item, std::string_view value) {
                    (item.*Field).assign(value);
                    return value.empty() || IsAllowed(value) || Refuse("\"", value, "\" is not a word known here");
                }};
    }
    // Always open; the last value stands.
    template <auto Field>
    static constexpr AttributeRow lastText(std::string_view key) {
        return {key, IsAlwaysOpen, Store<Field>};
    }
    // Open while false; only "1" is true.
    template <auto Field>
    static constexpr AttributeRow flag(std::string_view key) {
        return {key, [](const Item& item) { return !(item.*Field); },
                [](Item& item, std::string_view value) {
                    item.*Field = value == "1";
                    return true;
                }};
    }
    // Always open; the function does the rest.
    static constexpr AttributeRow custom(std::string_view key, bool (*take)(Item&, std::string_view)) {
        return {key, IsAlwaysOpen, take};
    }

private:
    static bool IsAlwaysOpen(const Item&) { return true; }
    template <auto Field>
    static bool IsEmpty(const Item& item) {
        return (item.*Field).empty();
    }
    template <auto Field>
    static bool Store(Item& item, std::string_view value) {
        (item.*Field).assign(value);
        return true;
    }
};

template <class Item, std::size_t Count>
bool LoadFromRows(Item& item, const ScenarioTextStream& stream, const AttributeRow<Item> (&rows)[Count]) {
    if (stream.cursor >= stream.end) return false;
    std::string_view value;
    for (const AttributeRow<Item>& row : rows) {
        // Nearly every row is for another key, and most of those begin with another letter.
        if (row.key.front() != *stream.cursor || !MatchAttribute(stream, row.key, value)) continue;
        if (row.isOpen(item)) return row.take(item, value);
        NoteSecondValue(stream, row.key);
    }
    return false;
}

#endif
