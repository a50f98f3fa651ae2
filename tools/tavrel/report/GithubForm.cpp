#include "CheckReport.h"
#include "ShownText.h"

namespace tavrel {

using TavrelChecking::Severity;

namespace {

// The message of a workflow command, or with `property` one of its properties.
std::string Escaped(const std::string& text, bool property) {
    std::string result;
    for (const char c : text)
        if (c == '%' || c == '\r' || c == '\n' || (property && (c == ':' || c == ',')))
            result += fmt::format("%{:02X}", static_cast<unsigned char>(c));
        else
            result += c;
    return result;
}

const char* CommandOf(Severity severity) {
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "notice";
}

} // namespace

std::string GithubForm(const CheckReport& report) {
    std::string text;
    for (const auto& [finding, fingerprint, isHeld] : report.findings) {
        if (isHeld) continue;
        const std::string message =
            ShownText(finding.message) + (finding.help.empty() ? "" : "\n" + ShownText(finding.help));
        text += fmt::format("::{} file={},line={},col={},endLine={},endColumn={},title={}::{}\n",
                            CommandOf(finding.severity), Escaped(finding.file, true), finding.span.row,
                            finding.span.column, finding.span.endRow, finding.span.endColumn,
                            Escaped(fmt::format("{} {}", finding.rule->id, finding.rule->name), true),
                            Escaped(message, false));
    }
    return text;
}

} // namespace tavrel
