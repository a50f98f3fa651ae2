#include <map>
#include <set>
#include <string_view>

#include "CheckReport.h"
#include "ShownText.h"

namespace tavrel {

using TavrelChecking::Finding;
using TavrelChecking::Rule;

namespace {

constexpr std::string_view kUnreadable = "TV6001";

// What the cases of one file came to.
struct Suite {
    std::map<const Rule*, std::vector<const ToldFinding*>> findings;
    std::string omission; // why it could not be looked at
};

struct Counts {
    std::size_t tests = 0, failures = 0, errors = 0, skipped = 0;

    Counts& operator+=(const Counts& other) {
        tests += other.tests;
        failures += other.failures;
        errors += other.errors;
        skipped += other.skipped;
        return *this;
    }
    std::string Attributes() const {
        return fmt::format("tests=\"{}\" failures=\"{}\" errors=\"{}\" skipped=\"{}\"", tests, failures, errors,
                           skipped);
    }
};

std::string Sentence(const Finding& finding) {
    return fmt::format("{}:{}:{}: {}: {}", finding.file, finding.span.row, finding.span.column,
                       TavrelChecking::WordOf(finding.severity), finding.message);
}

std::string Lines(const std::vector<const ToldFinding*>& findings) {
    std::string text;
    for (const ToldFinding* told : findings) {
        text += Sentence(told->finding) + "\n";
        if (!told->finding.help.empty()) text += "    help: " + told->finding.help + "\n";
    }
    return text;
}

// One rule in one file. It fails over what makes the command fail; what is milder stands in its output.
std::string CaseXml(const CheckReport& report, const std::string& file, const Rule& rule, const Suite& suite,
                    Counts& counts) {
    ++counts.tests;
    const std::string head =
        fmt::format("    <testcase name=\"{} {}\" classname=\"{}\"", rule.id, rule.name, XmlText(file));
    const auto found = suite.findings.find(&rule);
    std::vector<const ToldFinding*> failing, mild;
    bool held = false;
    if (found != suite.findings.end())
        for (const ToldFinding* told : found->second) {
            held = held || told->isHeld;
            if (!told->isHeld) (told->finding.severity >= report.failOn ? failing : mild).push_back(told);
        }
    if (!suite.omission.empty()) {
        // The rule that says why the file could not be looked at stands for the file as a whole.
        const bool says =
            found != suite.findings.end() || (suite.findings.empty() && std::string_view(rule.id) == kUnreadable);
        ++(says ? counts.errors : counts.skipped);
        return head + fmt::format(">\n      <{0} message=\"{1}\"{2}/>\n    </testcase>\n", says ? "error" : "skipped",
                                  XmlText(suite.omission), says ? " type=\"unreadable\"" : "");
    }
    if (!failing.empty()) {
        ++counts.failures;
        return head + fmt::format(">\n      <failure message=\"{}\" type=\"{}\">{}</failure>\n    </testcase>\n",
                                  XmlText(failing.front()->finding.message),
                                  TavrelChecking::WordOf(failing.front()->finding.severity), XmlText(Lines(failing)));
    }
    if (!mild.empty())
        return head + fmt::format(">\n      <system-out>{}</system-out>\n    </testcase>\n", XmlText(Lines(mild)));
    if (held) {
        ++counts.skipped;
        return head + fmt::format(">\n      <skipped message=\"{}\"/>\n    </testcase>\n", "held by the baseline");
    }
    return head + "/>\n";
}

} // namespace

std::string JunitForm(const CheckReport& report) {
    std::map<std::string, Suite> suites;
    for (const std::string& file : report.files) suites[file];
    for (const ToldFinding& told : report.findings)
        suites[told.finding.file].findings[told.finding.rule].push_back(&told);
    for (const TavrelChecking::Omission& omission : report.omissions) suites[omission.file].omission = omission.reason;

    std::string body;
    Counts all;
    for (const auto& [file, suite] : suites) {
        Counts counts;
        std::string cases;
        std::set<const Rule*> known(report.rules.begin(), report.rules.end());
        for (const Rule* rule : report.rules) cases += CaseXml(report, file, *rule, suite, counts);
        for (const auto& [rule, findings] : suite.findings)
            if (known.count(rule) == 0) cases += CaseXml(report, file, *rule, suite, counts);
        body +=
            fmt::format("  <testsuite name=\"{}\" {}>\n{}  </testsuite>\n", XmlText(file), counts.Attributes(), cases);
        all += counts;
    }
    return fmt::format(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"tavrel check\" {}>\n{}</testsuites>\n",
        all.Attributes(), body);
}

} // namespace tavrel
