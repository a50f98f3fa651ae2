#ifndef TAVREL_VARIATION_SHARD_H
#define TAVREL_VARIATION_SHARD_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <variation/Export.h>

namespace TavrelVariation {

// A part of a campaign: the variants whose number leaves the rest `index` when it is divided by `count`. The shards of
// one count share nothing and are together the whole.
struct TAVREL_VARIATION_API Shard {
    std::uint64_t index = 0; // below `count`
    std::uint64_t count = 1;

    bool Has(std::uint64_t number) const { return number % count == index; }
};

// "I/N", I from 0 and below N. Throws Refused for any other text.
TAVREL_VARIATION_API Shard ShardOf(const std::string& text);

// A variable of the environment; none if it is not set.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;

// The shard that an engine gave this process by its environment: SLURM_ARRAY_TASK_ID with _MIN, _STEP and _COUNT (I is
// (ID - MIN) / STEP, N is COUNT), or JOB_COMPLETION_INDEX with TAVREL_SHARDS, or PARALLEL_SEQ (from 1) with
// TAVREL_SHARDS. The first of them that is set counts. Throws Refused where none is, where a companion is missing or no
// number, and where I is not below N.
TAVREL_VARIATION_API Shard ShardOfEngine(const Environment& environment);

} // namespace TavrelVariation

#endif
