#include <algorithm>
#include <map>

#include "CheckReport.h"

namespace tavrel {

using TavrelChecking::Finding;
using TavrelChecking::Rule;
using TavrelChecking::Span;

namespace {

constexpr const char* kBaseId = "%SRCROOT%";

bool IsUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~' || c == '/';
}

std::string PercentEncoded(const std::string& path) {
    std::string encoded;
    for (const char c : path)
        if (IsUnreserved(c))
            encoded += c;
        else
            encoded += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    return encoded;
}

Json ArtifactLocation(const CheckReport& report, const std::string& file) {
    const bool isBelow = !report.base.empty() && file.rfind(report.base, 0) == 0;
    if (isBelow) return {{"uri", PercentEncoded(file.substr(report.base.size()))}, {"uriBaseId", kBaseId}};
    return {{"uri", "file://" + PercentEncoded(file)}};
}

Json Region(const Span& span) {
    return {
        {"startLine", span.row}, {"startColumn", span.column}, {"endLine", span.endRow}, {"endColumn", span.endColumn}};
}

Json PhysicalLocation(const CheckReport& report, const std::string& file, const Span& span) {
    return {{"artifactLocation", ArtifactLocation(report, file)}, {"region", Region(span)}};
}

Json Text(const std::string& text) { return {{"text", text}}; }

Json RuleJson(const Rule& rule) {
    const std::string full = fmt::format("{} {}", rule.full, rule.why);
    std::string markdown = fmt::format("{}\n\n{}", full, rule.remedy);
    if (*rule.sample) markdown += fmt::format("\n\n```\n{}\n```", rule.sample);
    return {{"id", rule.id},
            {"name", rule.name},
            {"shortDescription", Text(rule.brief)},
            {"fullDescription", Text(full)},
            {"help", {{"text", rule.remedy}, {"markdown", markdown}}},
            {"defaultConfiguration", {{"level", TavrelChecking::WordOf(rule.severity)}}}};
}

Json FixesJson(const CheckReport& report, const Finding& finding) {
    Json fixes = Json::array();
    for (const TavrelChecking::Fix& fix : finding.fixes) {
        std::vector<std::string> files;
        std::map<std::string, Json> replacements;
        for (const TavrelChecking::Edit& edit : fix.edits) {
            if (replacements.count(edit.file) == 0) {
                files.push_back(edit.file);
                replacements[edit.file] = Json::array();
            }
            replacements[edit.file].push_back(
                {{"deletedRegion", Region(edit.span)}, {"insertedContent", Text(edit.replacement)}});
        }
        Json changes = Json::array();
        for (const std::string& file : files)
            changes.push_back(
                {{"artifactLocation", ArtifactLocation(report, file)}, {"replacements", replacements[file]}});
        if (!changes.empty()) fixes.push_back({{"description", Text(fix.title)}, {"artifactChanges", changes}});
    }
    return fixes;
}

// The scenario's script, if it stands in one, and the way in the tree.
Json LogicalLocations(const Finding& finding) {
    Json locations = Json::array();
    if (!finding.place.empty()) {
        const std::size_t slash = finding.place.rfind(" / ");
        locations.push_back({{"name", slash == std::string::npos ? finding.place : finding.place.substr(slash + 3)},
                             {"fullyQualifiedName", finding.place},
                             {"kind", "element"}});
    }
    if (finding.isInScript && !finding.script.empty())
        locations.push_back({{"name", finding.script}, {"kind", "module"}});
    return locations;
}

Json ResultJson(const CheckReport& report, const ToldFinding& told, const std::map<const Rule*, std::size_t>& indices) {
    const Finding& finding = told.finding;
    Json location = {{"physicalLocation", PhysicalLocation(report, finding.file, finding.span)}};
    if (!finding.line.empty()) location["physicalLocation"]["region"]["snippet"] = Text(finding.line);
    const Json logical = LogicalLocations(finding);
    if (!logical.empty()) location["logicalLocations"] = logical;
    const std::string message = finding.help.empty() ? finding.message : finding.message + ". " + finding.help;
    Json result = {{"ruleId", finding.rule->id},
                   {"ruleIndex", indices.at(finding.rule)},
                   {"level", TavrelChecking::WordOf(finding.severity)},
                   {"message", Text(message)},
                   {"locations", Json::array({location})},
                   {"partialFingerprints", {{"primaryLocationLineHash", told.fingerprint}}}};
    int id = 0;
    for (const TavrelChecking::RelatedPlace& place : finding.related)
        result["relatedLocations"].push_back({{"id", ++id},
                                              {"physicalLocation", PhysicalLocation(report, place.file, place.span)},
                                              {"message", Text(place.message)}});
    const Json fixes = FixesJson(report, finding);
    if (!fixes.empty()) result["fixes"] = fixes;
    // Where one result has the member, all have it.
    if (!report.baseline.empty()) {
        result["suppressions"] = Json::array();
        if (told.isHeld)
            result["suppressions"].push_back(
                Json({{"kind", "external"}, {"status", "accepted"}, {"justification", "The baseline holds it."}}));
    }
    return result;
}

Json InvocationJson(const CheckReport& report) {
    Json notifications = Json::array();
    for (const TavrelChecking::Omission& omission : report.omissions) {
        Json omitted;
        omitted["physicalLocation"]["artifactLocation"] = ArtifactLocation(report, omission.file);
        notifications.push_back({{"level", "error"},
                                 {"message", Text(fmt::format("{}: {}", omission.file, omission.reason))},
                                 {"locations", Json::array({omitted})}});
    }
    for (const std::string& note : report.notes) notifications.push_back({{"level", "note"}, {"message", Text(note)}});
    Json invocation = {{"executionSuccessful", report.omissions.empty()}};
    if (!notifications.empty()) invocation["toolExecutionNotifications"] = notifications;
    return invocation;
}

} // namespace

std::string SarifForm(const CheckReport& report) {
    Json rules = Json::array();
    std::map<const Rule*, std::size_t> indices;
    for (const Rule& rule : TavrelChecking::Rules()) {
        indices[&rule] = rules.size();
        rules.push_back(RuleJson(rule));
    }
    Json results = Json::array();
    for (const ToldFinding& told : report.findings) results.push_back(ResultJson(report, told, indices));
    const Json driver = {{"name", "tavrel"},
                         {"version", TAVREL_COMMAND_VERSION},
                         {"semanticVersion", TAVREL_COMMAND_VERSION},
                         {"rules", rules}};
    Json run = {{"tool", {{"driver", driver}}},
                {"invocations", Json::array({InvocationJson(report)})},
                {"columnKind", "unicodeCodePoints"}};
    if (!report.base.empty())
        run["originalUriBaseIds"] = {{kBaseId, {{"uri", "file://" + PercentEncoded(report.base)}}}};
    run["results"] = results;
    return DumpJson({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                     {"version", "2.1.0"},
                     {"runs", Json::array({run})}});
}

} // namespace tavrel
