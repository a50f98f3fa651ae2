#include <algorithm>

#include "../Output.h"
#include "CheckReport.h"
#include "ShownText.h"

namespace tavrel {

using TavrelChecking::Finding;
using TavrelChecking::Severity;

namespace {

constexpr std::size_t kWidest = 160; // columns of a row that are shown
constexpr std::size_t kBefore = 60;  // of them, before the place that is meant
constexpr const char* kIndent = "    ";

// The characters of `line` from one column on, as many as fit.
std::string Window(const std::string& line, std::size_t from, std::size_t width) {
    std::string window;
    std::size_t column = 0;
    for (const char c : line) {
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++column;
        if (column > from && column <= from + width) window += c;
    }
    return window;
}

// The row and, below it, marks under the span. A span that goes on in later rows is marked to the end of its first one.
std::string MarkedLine(const Finding& finding, const Output& out) {
    if (finding.line.empty()) return "";
    const ShownLine line = ShownLineOf(finding.line);
    const auto columnOf = [&](std::uint32_t column) {
        return line.columns[std::min<std::size_t>(std::max(column, 1U) - 1, line.columns.size() - 1)];
    };
    const std::size_t end = line.columns.back();
    std::size_t from = columnOf(finding.span.column);
    std::size_t to = finding.span.endRow > finding.span.row ? end : columnOf(finding.span.endColumn);
    std::string shown = line.text;
    if (end > kWidest) {
        const std::size_t cut = from > kBefore ? from - kBefore : 0;
        shown = (cut > 0 ? "…" : "") + Window(line.text, cut, kWidest) + (end > cut + kWidest ? "…" : "");
        const std::size_t shift = cut > 0 ? 1 : 0;
        from = from - cut + shift;
        to = std::min(to - cut, kWidest) + shift;
    }
    const std::string marks(std::max<std::size_t>(to > from ? to - from : 0, 1), '^');
    return fmt::format("{}{}\n{}{}{}\n", kIndent, shown, kIndent, std::string(from, ' '),
                       out.Coloured(finding.severity == Severity::Error ? Colour::Red : Colour::Yellow, marks));
}

std::string FindingText(const Finding& finding, const Output& out) {
    const TavrelChecking::Span& span = finding.span;
    const Colour colour = finding.severity == Severity::Error     ? Colour::Red
                          : finding.severity == Severity::Warning ? Colour::Yellow
                                                                  : Colour::Cyan;
    std::string text = fmt::format("{}: {}: {} [{} {}]\n",
                                   out.Strong(fmt::format("{}:{}:{}", ShownText(finding.file), span.row, span.column)),
                                   out.Coloured(colour, TavrelChecking::WordOf(finding.severity)),
                                   ShownText(finding.message), finding.rule->id, finding.rule->name);
    text += MarkedLine(finding, out);
    if (!finding.place.empty()) text += fmt::format("{}in {}\n", kIndent, ShownText(finding.place));
    for (const TavrelChecking::RelatedPlace& place : finding.related)
        text += fmt::format("{}see {}:{}:{}: {}\n", kIndent, ShownText(place.file), place.span.row, place.span.column,
                            ShownText(place.message));
    if (!finding.help.empty()) text += fmt::format("{}help: {}\n", kIndent, ShownText(finding.help));
    return text;
}

} // namespace

std::string TextForm(const CheckReport& report, const Output& out) {
    std::string text;
    for (const ToldFinding& told : report.findings)
        if (!told.isHeld) text += FindingText(told.finding, out);
    return report.findings.empty() ? text : text + CountsOf(report) + "\n";
}

} // namespace tavrel
