#ifndef SCENARIO_ATTRIBUTEROW_H
#define SCENARIO_ATTRIBUTEROW_H

#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <scenario/ScenarioItem.h>

#include "text/Refusal.h"
#include "text/TextFormat.h"

// Keeps, for the listener, that the line at the cursor gives `key` a second value.
[[gnu::cold]] void NoteSecondValue(const ScenarioTextStream& stream, std::string_view key);

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
                    item.*Field = value;
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
        item.*Field = value;
        return true;
    }
};

// Whether the row decides what becomes of the line; then `isTaken` says what.
template <const auto& Rows, std::size_t At, class Item>
bool RowDecides(Item& item, const ScenarioTextStream& stream, bool& isTaken) {
    constexpr const auto& row = Rows[At];
    constexpr std::string_view key = row.key;
    // Nearly every row is for another key, and most of those begin with another letter.
    if (*stream.cursor != key.front()) return false;
    if (static_cast<std::size_t>(stream.end - stream.cursor) < key.size()) return false;
    if (std::memcmp(stream.cursor, key.data(), key.size()) != 0) return false;
    std::string_view value;
    if (!MatchValue(stream, key.size(), value)) return false;
    if (!row.isOpen(item)) {
        NoteSecondValue(stream, key);
        return false;
    }
    isTaken = row.take(item, value);
    return true;
}

// Each table makes a reader of its own, in which the keys are numbers to compare with and the functions no calls.
template <const auto& Rows, class Item>
bool LoadFromRows(Item& item, const ScenarioTextStream& stream) {
    if (stream.cursor >= stream.end) return false;
    bool isTaken = false;
    [&]<std::size_t... At>(std::index_sequence<At...>) { (RowDecides<Rows, At>(item, stream, isTaken) || ...); }
    (std::make_index_sequence<std::size(Rows)>());
    return isTaken;
}

#endif
