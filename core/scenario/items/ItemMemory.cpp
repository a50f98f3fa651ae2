// The memory of items. A script is thousands of items that come and go together, and a root model as many that stay, so
// what an item costs beyond its own construction is the way to its memory: it is taken from slabs of equal slots, and
// the slabs from regions.
//
// A region lies at a multiple of its size and a slab at a multiple of its own, so the address of an item tells both.
// Memory goes back to the system by the region, but for a few that are kept for the next script. Items of hosts that
// are larger than the largest slot, or aligned more strictly than a slot, are left to the ordinary allocator, whose
// delete is asked without a size, since not every compiler declares the one with it.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <sys/mman.h>

#include <scenario/ScenarioItem.h>

// A checker must see each item as an allocation of its own.
#if defined(__SANITIZE_ADDRESS__)
#define TAVREL_PLAIN_ITEM_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define TAVREL_PLAIN_ITEM_MEMORY 1
#endif
#endif

#ifdef TAVREL_PLAIN_ITEM_MEMORY

void* ScenarioItem::operator new(std::size_t size) { return ::operator new(size); }
void ScenarioItem::operator delete(void* memory, std::size_t) { ::operator delete(memory); }

#else

namespace {

constexpr std::size_t kRegionSize = std::size_t{2} << 20;
constexpr std::size_t kKeptRegions = 16; // without any slab in use
constexpr std::size_t kSlabSize = std::size_t{64} << 10;
constexpr std::size_t kSlabsInRegion = kRegionSize / kSlabSize;
constexpr std::size_t kSlotUnit = alignof(std::max_align_t);
constexpr std::size_t kLargestSlot = 2048;

struct Slot {
    Slot* next;
};

// Stands at the start of its own memory.
struct Slab {
    Slab* next; // among the slabs of this slot size with room, or among the empty ones of its region
    Slab* previous;
    Slot* freed;        // slots that were used before
    std::size_t unused; // offset of the first slot that never was, or beyond the last
    std::size_t slot;   // size of a slot
    std::size_t inUse;  // slots
    bool isListed;      // among those with room
};
constexpr std::size_t kFirstSlot = (sizeof(Slab) + kSlotUnit - 1) / kSlotUnit * kSlotUnit;

// Stands after the header of the first slab of its memory, which has that much less room.
struct Region {
    Region* next; // among the regions with an empty slab
    Region* previous;
    Slab* empty;        // slabs that were used before
    std::size_t unused; // index of the first slab that never was
    std::size_t inUse;  // slabs
    bool isListed;
};
constexpr std::size_t kFirstSlotOfRegion = (kFirstSlot + sizeof(Region) + kSlotUnit - 1) / kSlotUnit * kSlotUnit;

template <class Node>
void Link(Node*& head, Node* node) {
    node->previous = nullptr;
    node->next = head;
    if (head) head->previous = node;
    head = node;
    node->isListed = true;
}

template <class Node>
void Unlink(Node*& head, Node* node) {
    (node->previous ? node->previous->next : head) = node->next;
    if (node->next) node->next->previous = node->previous;
    node->isListed = false;
}

std::byte* StartOf(void* memory, std::size_t size) {
    return reinterpret_cast<std::byte*>(reinterpret_cast<std::uintptr_t>(memory) & ~(size - 1));
}

Region* RegionOf(void* memory) { return reinterpret_cast<Region*>(StartOf(memory, kRegionSize) + kFirstSlot); }

// One for the process, as all of the model; never destroyed, because items may outlive every static object.
struct Memory {
    std::array<Slab*, kLargestSlot / kSlotUnit + 1> withRoom{}; // by slot size in units
    Region* regions = nullptr;                                  // those with an empty slab
    std::size_t emptyRegions = 0;                               // those of them without any slab in use

    Region* NewRegion() {
        void* memory = std::aligned_alloc(kRegionSize, kRegionSize);
        if (!memory) throw std::bad_alloc();
        Region* region = RegionOf(memory);
        *region = {};
        Link(regions, region);
        ++emptyRegions;
        return region;
    }

    Slab* NewSlab(std::size_t slot) {
        Region* region = regions ? regions : NewRegion();
        std::byte* start = StartOf(region, kRegionSize);
        Slab* slab = region->empty;
        if (slab) {
            region->empty = slab->next;
        } else {
            slab = reinterpret_cast<Slab*>(start + region->unused++ * kSlabSize);
#ifdef MADV_POPULATE_WRITE
            // All pages at once, which costs a third of one after the other. A system that cannot does not matter.
            ::madvise(slab, kSlabSize, MADV_POPULATE_WRITE);
#endif
        }
        if (region->inUse++ == 0) --emptyRegions;
        if (!region->empty && region->unused == kSlabsInRegion) Unlink(regions, region);
        const bool isFirst = reinterpret_cast<std::byte*>(slab) == start;
        *slab = {nullptr, nullptr, nullptr, isFirst ? kFirstSlotOfRegion : kFirstSlot, slot, 0, false};
        Link(withRoom[slot / kSlotUnit], slab);
        return slab;
    }

    void DropSlab(Slab* slab) {
        Region* region = RegionOf(slab);
        slab->next = region->empty;
        region->empty = slab;
        if (!region->isListed) Link(regions, region);
        if (--region->inUse > 0) return;
        if (emptyRegions < kKeptRegions) {
            ++emptyRegions;
            return;
        }
        Unlink(regions, region);
        std::free(StartOf(region, kRegionSize));
    }

    void* Take(std::size_t size) {
        const std::size_t slot = (size + kSlotUnit - 1) / kSlotUnit * kSlotUnit;
        Slab*& first = withRoom[slot / kSlotUnit];
        Slab* slab = first ? first : NewSlab(slot);
        void* memory = slab->freed;
        if (memory) {
            slab->freed = slab->freed->next;
        } else {
            memory = reinterpret_cast<std::byte*>(slab) + slab->unused;
            slab->unused += slot;
        }
        ++slab->inUse;
        if (!slab->freed && slab->unused + slot > kSlabSize) Unlink(first, slab);
        return memory;
    }

    void Give(void* memory) {
        Slab* slab = reinterpret_cast<Slab*>(StartOf(memory, kSlabSize));
        slab->freed = ::new (memory) Slot{slab->freed};
        Slab*& first = withRoom[slab->slot / kSlotUnit];
        if (!slab->isListed) Link(first, slab);
        if (--slab->inUse > 0) return;
        Unlink(first, slab);
        DropSlab(slab);
    }
};

constinit Memory itemMemory;

} // namespace

void* ScenarioItem::operator new(std::size_t size) {
    return size > kLargestSlot ? ::operator new(size) : itemMemory.Take(size);
}

void ScenarioItem::operator delete(void* memory, std::size_t size) {
    if (!memory) return;
    if (size > kLargestSlot) {
        ::operator delete(memory);
    } else {
        itemMemory.Give(memory);
    }
}

#endif

void* ScenarioItem::operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
}

void ScenarioItem::operator delete(void* memory, std::size_t, std::align_val_t alignment) {
    ::operator delete(memory, alignment);
}

// Named here because the other forms hide those of the language.
void* ScenarioItem::operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* ScenarioItem::operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return ::operator new(size, alignment, std::nothrow);
}
