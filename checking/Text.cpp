#include "Text.h"

#include <tuple>
#include <utility>

namespace TavrelChecking {

namespace {

// A row as it is told; a file that is one row of a million characters is not told whole.
constexpr std::size_t kLongestLine = 1000;

std::string ShownLine(std::string_view line) {
    if (line.size() <= kLongestLine) return std::string(line);
    std::size_t end = kLongestLine;
    while (end > 0 && (line[end] & '\xC0') == '\x80') --end;
    return std::string(line.substr(0, end));
}

} // namespace

Span FileBytes::SpanOf(std::size_t begin, std::size_t end) const {
    const Commons::TextPlaces::Place from = places->PlaceOf(begin);
    const Commons::TextPlaces::Place to = begin == end ? from : places->PlaceOf(end);
    return {from.row, from.column, to.row, to.column};
}

Text::Text(std::shared_ptr<const FileBytes> wholeFile) : file(std::move(wholeFile)), view(file->bytes) {}

Text::Text(std::shared_ptr<const FileBytes> scenarioFile, cfg::WrittenText writtenText, std::string name,
           std::shared_ptr<const MendedXml> mendedFile)
    : file(std::move(scenarioFile)), mended(std::move(mendedFile)), written(std::move(writtenText)),
      scriptName(std::move(name)), view(written.Text()), places(view) {}

std::pair<std::size_t, std::size_t> Text::InFile(std::size_t begin, std::size_t end) const {
    if (!places) return {begin, end};
    const auto [from, to] = written.InFile(begin, end);
    return mended ? std::pair(mended->InFile(from), mended->InFile(to)) : std::pair(from, to);
}

std::optional<std::size_t> Text::InText(std::size_t position) const {
    if (!places) return position;
    if (position < written.Begin() || position > written.End()) return std::nullopt;
    return written.InText(position);
}

Span Text::SpanOf(std::size_t begin, std::size_t end) const {
    const auto [from, to] = InFile(begin, end);
    return file->SpanOf(from, to);
}

std::uint32_t Text::RowOf(std::size_t position) const {
    return (places ? *places : file->places)->PlaceOf(position).row;
}

Finding Text::FindingAt(std::size_t begin, std::size_t end) const {
    Finding finding;
    finding.file = file->path;
    finding.span = SpanOf(begin, end);
    finding.line = ShownLine(file->places->Line(finding.span.row));
    if (!places) return finding;
    finding.isInScript = true;
    finding.script = scriptName;
    finding.scriptRow = (*places)->PlaceOf(begin).row;
    return finding;
}

Finding Text::FindingAt(const char* rule, std::size_t begin, std::size_t end, std::string message) const {
    Finding finding = FindingAt(begin, end);
    finding.rule = FindRule(rule);
    finding.severity = finding.rule->severity;
    finding.message = std::move(message);
    finding.help = finding.rule->remedy;
    return finding;
}

bool Text::EditOf(std::size_t begin, std::size_t end, std::string_view replacement, Edit& edit) const {
    edit.file = file->path;
    edit.span = SpanOf(begin, end);
    std::tie(edit.begin, edit.end) = InFile(begin, end);
    edit.replacement = replacement;
    const bool isWritten = !places || written.Write(replacement, begin, end, edit.replacement);
    // A new line ends as the first one of the file does.
    const std::size_t feed = file->bytes.find('\n');
    if (feed == std::string::npos || feed == 0 || file->bytes[feed - 1] != '\r') return isWritten;
    for (std::size_t at = 0; (at = edit.replacement.find('\n', at)) != std::string::npos; at += 2)
        edit.replacement.insert(at, 1, '\r');
    return isWritten;
}

} // namespace TavrelChecking
