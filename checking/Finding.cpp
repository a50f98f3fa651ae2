#include <checking/Finding.h>

#include <algorithm>
#include <string_view>
#include <tuple>

namespace TavrelChecking {

void SortFindings(std::vector<Finding>& findings) {
    const auto key = [](const Finding& finding) {
        const Span& span = finding.span;
        return std::tuple<const std::string&, std::uint32_t, std::uint32_t, std::string_view, const std::string&,
                          std::uint32_t, std::uint32_t>(finding.file, span.row, span.column, finding.rule->id,
                                                        finding.message, span.endRow, span.endColumn);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](const Finding& one, const Finding& other) { return key(one) < key(other); });
    findings.erase(std::unique(findings.begin(), findings.end(),
                               [&](const Finding& one, const Finding& other) { return key(one) == key(other); }),
                   findings.end());
}

} // namespace TavrelChecking
