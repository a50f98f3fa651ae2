#include "Fixes.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

namespace tavrel {

using TavrelChecking::Edit;
using TavrelChecking::Finding;
using TavrelChecking::Fix;
using TavrelChecking::Job;
using TavrelChecking::Options;
using TavrelChecking::Severity;

namespace {

constexpr int kMostRounds = 10; // a fix may bring a further fault to light, which has a fix of its own
constexpr std::size_t kMostFindings = 10000;

using ErrorCounts = std::map<std::tuple<std::string, std::string, std::string, std::string>, int>;

ErrorCounts ErrorsIn(const std::vector<Finding>& findings) {
    ErrorCounts counts;
    for (const Finding& finding : findings)
        if (finding.severity == Severity::Error)
            ++counts[{finding.file, finding.rule->id, finding.place, finding.message}];
    return counts;
}

// An error of a rule that nobody asked for is one all the same, and so is one beyond those that are told.
Options WithAllRules(Options options) {
    options.select.clear();
    options.ignore.clear();
    options.mostFindings = kMostFindings;
    return options;
}

bool HasNewError(const ErrorCounts& before, const ErrorCounts& after) {
    return std::any_of(after.begin(), after.end(), [&](const auto& entry) {
        const auto former = before.find(entry.first);
        return former == before.end() || former->second < entry.second;
    });
}

// Those that may be made together: in the order of their first edits, and none that touches what an earlier one does.
std::vector<const Fix*> FixesFor(const std::string& path, const std::vector<Finding>& findings, std::size_t size,
                                 const Options& options, bool unsafe) {
    std::vector<const Fix*> fixes;
    for (const Finding& finding : findings)
        for (const Fix& fix : finding.fixes) {
            if (!TavrelChecking::IsAskedFor(*finding.rule, options)) break;
            const bool fits =
                !fix.edits.empty() && std::all_of(fix.edits.begin(), fix.edits.end(), [&](const Edit& edit) {
                    return edit.file == path && edit.begin <= edit.end && edit.end <= size;
                });
            if (!fits || !(fix.isSafe || unsafe)) continue;
            fixes.push_back(&fix);
            break; // one of them mends the fault
        }
    std::vector<const Fix*> chosen;
    std::vector<const Edit*> taken;
    for (const Fix* fix : fixes) {
        const bool free = std::all_of(fix->edits.begin(), fix->edits.end(), [&](const Edit& edit) {
            return std::all_of(taken.begin(), taken.end(),
                               [&](const Edit* other) { return edit.end < other->begin || edit.begin > other->end; });
        });
        if (!free) continue;
        for (const Edit& edit : fix->edits) taken.push_back(&edit);
        chosen.push_back(fix);
    }
    return chosen;
}

std::string WithFixes(const std::string& text, const std::vector<const Fix*>& fixes) {
    std::vector<const Edit*> edits;
    for (const Fix* fix : fixes)
        for (const Edit& edit : fix->edits) edits.push_back(&edit);
    std::sort(edits.begin(), edits.end(), [](const Edit* one, const Edit* other) { return one->begin < other->begin; });
    std::string result;
    std::size_t done = 0;
    for (const Edit* edit : edits) {
        result.append(text, done, edit->begin - done).append(edit->replacement);
        done = edit->end;
    }
    return result.append(text, done);
}

// One file, round by round.
class Fixer {
public:
    Fixer(const Job& fileJob, const Options& checkOptions, bool withUnsafe)
        : job(fileJob), options(checkOptions), allRules(WithAllRules(checkOptions)), unsafe(withUnsafe) {
        std::ifstream bytes(job.path, std::ios::binary);
        file.path = job.path;
        file.before = file.after = {std::istreambuf_iterator<char>(bytes), {}};
    }

    FixedFile Run() {
        findings = FindingsOf(file.after);
        for (int round = 0; round < kMostRounds; ++round) {
            const std::vector<const Fix*> fixes = FixesFor(job.path, findings, file.after.size(), options, unsafe);
            if (fixes.empty() || !MakeAll(fixes)) break;
        }
        return std::move(file);
    }

private:
    std::vector<Finding> FindingsOf(const std::string& text) const {
        return TavrelChecking::CheckText(text, job, allRules).findings;
    }

    // All at once, and one after the other where that makes a new error. Answers whether there may be more to do: what
    // was taken back once would be proposed again for ever.
    bool MakeAll(const std::vector<const Fix*>& fixes) {
        const ErrorCounts errors = ErrorsIn(findings);
        const auto isGood = [&](const std::vector<const Fix*>& chosen) {
            std::string text = WithFixes(file.after, chosen);
            std::vector<Finding> next = FindingsOf(text);
            if (HasNewError(errors, ErrorsIn(next))) return false;
            best = {std::move(text), std::move(next)};
            return true;
        };
        std::vector<const Fix*> good = fixes;
        const bool all = isGood(good);
        if (!all) {
            best = {file.after, findings};
            good.clear();
            for (const Fix* fix : fixes) {
                good.push_back(fix);
                if (fixes.size() == 1 || !isGood(good)) good.pop_back();
            }
        }
        file.fixes += good.size();
        file.takenBack += fixes.size() - good.size();
        file.after = std::move(best.text);
        // The fixes point into what was found before.
        findings = std::move(best.findings);
        return all;
    }

    struct State {
        std::string text;
        std::vector<Finding> findings;
    };

    const Job& job;
    const Options& options;
    const Options allRules;
    const bool unsafe;
    FixedFile file;
    std::vector<Finding> findings; // in file.after
    State best;
};

} // namespace

std::vector<FixedFile> FixFiles(const std::vector<Job>& jobs, const TavrelChecking::Result& found,
                                const Options& options, bool unsafe) {
    std::map<std::string, Job> toFix; // by path, so in the same order always
    for (const Finding& finding : found.findings)
        for (const Fix& fix : finding.fixes)
            for (const Edit& edit : fix.edits)
                if (fix.isSafe || unsafe) toFix[edit.file].path = edit.file;
    // A file that others include is fixed in the configuration in which it is looked at, if it is looked at itself.
    for (auto& entry : toFix) {
        Job& job = entry.second;
        const auto own =
            std::find_if(jobs.begin(), jobs.end(), [&](const Job& other) { return other.path == job.path; });
        if (own != jobs.end())
            job = *own;
        else
            job.kind = TavrelChecking::KindOfFile(job.path);
    }
    std::vector<FixedFile> fixed;
    for (const auto& [path, job] : toFix) {
        FixedFile file = Fixer(job, options, unsafe).Run();
        if (file.after != file.before || file.takenBack > 0) fixed.push_back(std::move(file));
    }
    return fixed;
}

} // namespace tavrel
