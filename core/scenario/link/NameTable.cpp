#include "link/NameTable.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include <scenario/ScenarioItem.h>

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

template <class Word>
std::uint64_t WordAt(const char* at) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Each item of a script is looked up by its name, so names are mixed by words of eight bytes.
std::uint32_t HashOf(std::string_view name, const NameTable::Key& key) {
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;
    std::uint64_t hash = key.size;
    const auto add = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * kMix;
        hash ^= hash >> 32; // a product carries upwards only
    };
    add(key.first);
    for (std::size_t at = kWord; at + kWord < name.size(); at += kWord) add(WordAt<std::uint64_t>(name.data() + at));
    add(key.last);
    return static_cast<std::uint32_t>((hash * kMix) >> 32);
}

} // namespace

void NameTable::Reserve(std::size_t names) {
    entries.reserve(names);
    if (names * 2 > places.size()) Resize(std::bit_ceil(names * 2));
}

NameTable::Key::Key(std::string_view name) : size(name.size()) {
    constexpr std::size_t kHalf = kWord / 2;
    const char* const begin = name.data();
    if (size >= kWord) {
        first = WordAt<std::uint64_t>(begin);
        last = WordAt<std::uint64_t>(begin + size - kWord); // may overlap the first
    } else if (size >= kHalf) {
        first = WordAt<std::uint32_t>(begin);
        last = WordAt<std::uint32_t>(begin + size - kHalf);
    } else {
        for (const char c : name) first = first << 8 | static_cast<unsigned char>(c);
    }
}

void NameTable::InsertIfAbsent(ScenarioItem* named, ScenarioItem* unit) {
    if ((entries.size() + 1) * 2 > places.size()) {
        Resize(std::max<std::size_t>(64, places.size() * 4));
        entries.reserve(places.size() / 4);
    }
    const Key key(named->name);
    const std::uint32_t hash = HashOf(named->name, key);
    Place& place = places[PlaceOf(named->name, key, hash)];
    if (place.entry != 0) return;
    entries.push_back({key, named, unit});
    place = {hash, static_cast<std::uint32_t>(entries.size())};
}

const NameTable::Entry* NameTable::Find(std::string_view name) const {
    if (places.empty()) return nullptr;
    const Key key(name);
    const std::uint32_t entry = places[PlaceOf(name, key, HashOf(name, key))].entry;
    return entry != 0 ? &entries[entry - 1] : nullptr;
}

std::size_t NameTable::PlaceOf(std::string_view name, const Key& key, std::uint32_t hash) const {
    const auto isThere = [&](const Place& place) {
        if (place.hash != hash) return false;
        const Entry& entry = entries[place.entry - 1];
        return entry.key == key && (key.size <= 2 * kWord || entry.named->name == name);
    };
    const std::size_t mask = places.size() - 1;
    std::size_t at = hash & mask;
    while (places[at].entry != 0 && !isThere(places[at])) at = (at + 1) & mask;
    return at;
}

void NameTable::Resize(std::size_t size) {
    std::vector<Place> old(size);
    old.swap(places);
    const std::size_t mask = size - 1;
    for (const Place& place : old) {
        if (place.entry == 0) continue;
        std::size_t at = place.hash & mask;
        while (places[at].entry != 0) at = (at + 1) & mask;
        places[at] = place;
    }
}
