#include <variation/Shard.h>

#include <charconv>

#include <variation/Refused.h>

namespace TavrelVariation {

namespace {

constexpr const char* kPlace = "shard";

std::optional<std::uint64_t> NumberOf(const std::string& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::uint64_t Variable(const Environment& environment, const std::string& name,
                       std::optional<std::uint64_t> otherwise = {}) {
    const auto text = environment(name);
    if (!text && otherwise) return *otherwise;
    if (!text) throw Refused(kPlace, name + " is not set, which the number of shards comes from");
    const auto number = NumberOf(*text);
    if (!number) throw Refused(kPlace, name + "=\"" + *text + "\" is no whole number");
    return *number;
}

Shard Checked(std::uint64_t index, std::uint64_t count, const std::string& source) {
    if (count == 0) throw Refused(kPlace, source + " asks for 0 shards");
    if (index >= count)
        throw Refused(kPlace, source + " asks for shard " + std::to_string(index) + " of " + std::to_string(count) +
                                  ", and the last one is " + std::to_string(count - 1));
    return {index, count};
}

Shard ShardOfSlurm(const Environment& environment) {
    const std::uint64_t id = Variable(environment, "SLURM_ARRAY_TASK_ID");
    const std::uint64_t least = Variable(environment, "SLURM_ARRAY_TASK_MIN");
    const std::uint64_t step = Variable(environment, "SLURM_ARRAY_TASK_STEP", 1);
    const std::uint64_t count = Variable(environment, "SLURM_ARRAY_TASK_COUNT");
    if (step == 0) throw Refused(kPlace, "SLURM_ARRAY_TASK_STEP is 0");
    if (id < least) throw Refused(kPlace, "SLURM_ARRAY_TASK_ID lies below SLURM_ARRAY_TASK_MIN");
    if ((id - least) % step != 0) throw Refused(kPlace, "SLURM_ARRAY_TASK_ID lies between two steps of the array");
    return Checked((id - least) / step, count, "the Slurm array");
}

} // namespace

Shard ShardOf(const std::string& text) {
    const std::size_t slash = text.find('/');
    const auto index = slash == std::string::npos ? std::nullopt : NumberOf(text.substr(0, slash));
    const auto count = slash == std::string::npos ? std::nullopt : NumberOf(text.substr(slash + 1));
    if (!index || !count) throw Refused(kPlace, "\"" + text + "\" is not of the form I/N, such as 0/4");
    return Checked(*index, *count, "\"" + text + "\"");
}

Shard ShardOfEngine(const Environment& environment) {
    if (environment("SLURM_ARRAY_TASK_ID")) return ShardOfSlurm(environment);
    if (environment("JOB_COMPLETION_INDEX"))
        return Checked(Variable(environment, "JOB_COMPLETION_INDEX"), Variable(environment, "TAVREL_SHARDS"),
                       "JOB_COMPLETION_INDEX");
    if (environment("PARALLEL_SEQ")) {
        const std::uint64_t sequence = Variable(environment, "PARALLEL_SEQ");
        if (sequence == 0) throw Refused(kPlace, "PARALLEL_SEQ is 0, and it counts from 1");
        return Checked(sequence - 1, Variable(environment, "TAVREL_SHARDS"), "PARALLEL_SEQ");
    }
    throw Refused(
        kPlace, "no engine tells its part: none of SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX and PARALLEL_SEQ is set");
}

} // namespace TavrelVariation
