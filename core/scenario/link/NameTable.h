#ifndef SCENARIO_NAMETABLE_H
#define SCENARIO_NAMETABLE_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class ScenarioItem;

// First item of each name; a name that comes again is ignored. Names must not change meanwhile.
class NameTable {
public:
    // The beginning and the end of a name, which is all of it up to sixteen bytes. Kept beside the item, whose own
    // memory is far from that of the next one: a search would wait for it longer than for all the rest.
    struct Key {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::size_t size = 0;
        explicit Key(std::string_view name);
        bool operator==(const Key&) const = default;
    };
    struct Entry {
        Key key;
        ScenarioItem* named;
        ScenarioItem* unit; // what the table is asked for: the item itself or one around it
    };
    // Makes room for so many names at once.
    void Reserve(std::size_t names);
    void InsertIfAbsent(ScenarioItem* named, ScenarioItem* unit);
    // The entry of that name, or null.
    const Entry* Find(std::string_view name) const;

private:
    // Small, since a search hops through them and every name of a script is searched for.
    struct Place {
        std::uint32_t hash = 0;
        std::uint32_t entry = 0; // counted from one; 0 is empty
    };
    // The place of that name, or the empty one where it belongs.
    std::size_t PlaceOf(std::string_view name, const Key& key, std::uint32_t hash) const;
    void Resize(std::size_t size);

    std::vector<Place> places; // a power of two, at most half full
    std::vector<Entry> entries;
};

#endif
