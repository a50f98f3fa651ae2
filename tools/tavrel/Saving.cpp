#include "Saving.h"

#include <chrono>
#include <filesystem>

#include <fmt/format.h>

#include "Failure.h"

namespace tavrel {

EditLock::EditLock(const std::string& path) {
    constexpr std::chrono::seconds kQuietly{2};
    constexpr std::chrono::minutes kAtMost{1};
    lock.emplace(path, kQuietly);
    if (lock->isFree()) return;
    Report(fmt::format("{}: another program is editing it; waiting", path));
    lock.reset();
    lock.emplace(path, kAtMost);
    if (!lock->isFree())
        throw Failure{ExitUnreadable, fmt::format("{} could not be edited: another program keeps it locked", path)};
}

std::string SaveTarget(const Context& context, const OpenedScenario& opened) {
    if (!context.arguments.Has("--output")) return opened.scenario->getFilePath();
    std::string target = context.arguments.Text("--output");
    const std::filesystem::path above = std::filesystem::absolute(target).parent_path();
    if (!std::filesystem::is_directory(above))
        throw Failure{ExitUnreadable, fmt::format("{} could not be saved: {} is no folder", target, above.string())};
    return target;
}

void SaveScenario(OpenedScenario& opened, const std::string& target) {
    TavrelScenarioTemplateDb::TavrelScenario& scenario = *opened.scenario;
    if (target != scenario.getFilePath()) {
        // A template saves into its own directory; the way from there to the file leads anywhere.
        const std::filesystem::path folder = std::filesystem::canonical(opened.directory);
        scenario.setPath(std::filesystem::weakly_canonical(std::filesystem::absolute(target))
                             .lexically_relative(folder)
                             .generic_string());
    }
    scenario.save();
    std::string reason = scenario.getSaveFailure();
    if (reason.empty()) return;
    // The path stands in the sentence already.
    const std::string whole = scenario.getFilePath() + ":0: ";
    if (reason.starts_with(whole)) reason.erase(0, whole.size());
    const std::string notSaved = "not saved: ";
    if (reason.starts_with(notSaved)) reason.erase(0, notSaved.size());
    throw Failure{ExitUnreadable, fmt::format("{} could not be saved: {}", target, reason)};
}

} // namespace tavrel
