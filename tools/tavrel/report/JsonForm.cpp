#include "CheckReport.h"

namespace tavrel {

using TavrelChecking::Finding;
using TavrelChecking::Span;

namespace {

void AddSpan(Json& json, const Span& span) {
    json["row"] = span.row;
    json["column"] = span.column;
    json["endRow"] = span.endRow;
    json["endColumn"] = span.endColumn;
}

Json FixesJson(const Finding& finding) {
    Json fixes = Json::array();
    for (const TavrelChecking::Fix& fix : finding.fixes) {
        Json edits = Json::array();
        for (const TavrelChecking::Edit& edit : fix.edits) {
            Json json = {{"file", edit.file}};
            AddSpan(json, edit.span);
            json["begin"] = edit.begin;
            json["end"] = edit.end;
            json["replacement"] = edit.replacement;
            edits.push_back(json);
        }
        fixes.push_back({{"title", fix.title}, {"safe", fix.isSafe}, {"edits", edits}});
    }
    return fixes;
}

Json FindingJson(const ToldFinding& told) {
    const Finding& finding = told.finding;
    Json json = {{"rule", finding.rule->id},
                 {"name", finding.rule->name},
                 {"severity", TavrelChecking::WordOf(finding.severity)},
                 {"file", finding.file}};
    AddSpan(json, finding.span);
    json["script"] = finding.isInScript ? Json(finding.script) : Json();
    json["scriptRow"] = finding.isInScript ? Json(finding.scriptRow) : Json();
    json["place"] = finding.place;
    json["message"] = finding.message;
    json["help"] = finding.help;
    json["line"] = finding.line;
    json["related"] = Json::array();
    for (const TavrelChecking::RelatedPlace& place : finding.related) {
        Json related = {{"file", place.file}};
        AddSpan(related, place.span);
        related["message"] = place.message;
        json["related"].push_back(related);
    }
    json["fixes"] = FixesJson(finding);
    json["fingerprint"] = told.fingerprint;
    json["cause"] = finding.message;
    json["display"] = finding.display;
    return json;
}

} // namespace

std::string JsonForm(const CheckReport& report) {
    Json all = Json::array();
    for (const ToldFinding& told : report.findings)
        if (!told.isHeld) all.push_back(FindingJson(told));
    return DumpJson(all);
}

std::string JsonLinesForm(const CheckReport& report) {
    std::string text;
    for (const ToldFinding& told : report.findings)
        if (!told.isHeld) text += DumpJsonLine(FindingJson(told));
    return text;
}

} // namespace tavrel
