// The page that shows a campaign to people. Everything it needs stands in it, so that it can be mailed, printed and
// kept.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>
#include <variation/Results.h>

#include "XmlEscape.h"

namespace TavrelVariation {

namespace {

using TavrelSimulation::Verdict;

constexpr std::size_t kMostRows = 10'000; // of the table: beyond it browsers slow down, and results.csv has them all
constexpr std::size_t kMostRepeats = 20;  // commands written out
constexpr std::size_t kMostPlots = 40;    // of each kind, but for the first of each parameter
constexpr double kWidth = 340, kHeight = 190; // of a plot, in CSS pixels
constexpr double kLeft = 52, kRight = 10, kTop = 10, kBottom = 30;

constexpr const char* kStyle = R"css(
:root{color-scheme:light dark;--ink:#1c2024;--faint:#60676f;--line:#d5d9de;--page:#fff;--panel:#f5f6f8;--passed:#1a7f4b;
--failed:#c22f2f;--error:#8a5a00;--skipped:#60676f}
@media (prefers-color-scheme:dark){:root{--ink:#e6e8eb;--faint:#9aa2ab;--line:#3a4048;--page:#15181c;--panel:#1e2227;
--passed:#4cc38a;--failed:#ff6b6b;--error:#e0a53a;--skipped:#9aa2ab}}
*{box-sizing:border-box}
body{margin:0 auto;padding:24px;max-width:1200px;background:var(--page);color:var(--ink);
font:15px/1.5 system-ui,"Segoe UI","DejaVu Sans",sans-serif}
h1{font-size:24px;margin:0 0 4px}h2{font-size:18px;margin:32px 0 8px}
p{margin:6px 0}.faint{color:var(--faint)}
code{font:13px/1.4 ui-monospace,"DejaVu Sans Mono",monospace;overflow-wrap:anywhere}
pre{background:var(--panel);padding:10px 12px;border-radius:6px;white-space:pre-wrap;overflow-wrap:anywhere;margin:6px 0}
.counts{display:flex;flex-wrap:wrap;gap:12px;margin:16px 0 8px;padding:0;list-style:none}
.counts li{background:var(--panel);border-radius:8px;padding:8px 16px;min-width:104px}
.counts b{display:block;font-size:24px;line-height:1.2}
.bar{display:flex;height:10px;border-radius:5px;overflow:hidden;background:var(--line)}
.bar span{display:block}
.passed{color:var(--passed)}.failed{color:var(--failed)}.error,.timeout,.killed,.missing{color:var(--error)}
.skipped{color:var(--skipped)}
.bar .passed{background:var(--passed)}.bar .failed{background:var(--failed)}.bar .error{background:var(--error)}
.bar .skipped{background:var(--skipped)}
.tools{display:none;gap:12px;flex-wrap:wrap;align-items:center;margin:8px 0}
.scripted .tools{display:flex}
input[type=search]{font:inherit;padding:4px 8px;border:1px solid var(--line);border-radius:6px;background:var(--page);color:inherit;min-width:240px}
.scroll{overflow-x:auto}
table{border-collapse:collapse;table-layout:fixed;width:100%;font-size:13px;font-variant-numeric:tabular-nums}
th,td{padding:3px 8px;text-align:left;border-bottom:1px solid var(--line);overflow-wrap:anywhere;vertical-align:top}
th{position:sticky;top:0;background:var(--panel);font-weight:600}
td.n,th.n{text-align:right}
th button{all:unset;cursor:pointer;display:block;width:100%}
th button:focus-visible{outline:2px solid currentColor}
th[aria-sort=ascending] button::after{content:" \25B2"}th[aria-sort=descending] button::after{content:" \25BC"}
.scripted tbody tr{cursor:pointer}
.plots{display:flex;flex-wrap:wrap;gap:16px}
figure{margin:0;width:340px;break-inside:avoid}
figcaption{font-size:13px;overflow-wrap:anywhere}
svg{display:block;max-width:100%;font:11px system-ui,"DejaVu Sans",sans-serif}
svg text{fill:var(--faint)}.axis{stroke:var(--line);fill:none}.zero{stroke:var(--faint);stroke-dasharray:3 3;fill:none}
.dot{fill:none;stroke-width:5;stroke-linecap:round;stroke:currentColor;stroke-opacity:.65}
.cross{fill:none;stroke-width:1.6;stroke:currentColor}
@media print{body{max-width:none;padding:0;font-size:11px}.tools{display:none!important}.scroll{overflow:visible}
table{min-width:0!important;font-size:9px}th,td{padding:2px 4px}th{position:static}th button{display:contents}
thead{display:table-header-group}tr{break-inside:avoid}h2,h2+p{break-after:avoid}a{color:inherit}}
)css";

constexpr const char* kScript = R"js(
(()=>{
const body=document.querySelector("#runs tbody");if(!body)return;
document.documentElement.classList.add("scripted");
const rows=[...body.rows],heads=[...document.querySelectorAll("#runs th")];
const key=(row,at)=>row.cells[at].textContent;
const order=(at,down)=>{
const keys=new Map(rows.map(row=>{const text=key(row,at),number=parseFloat(text);
return[row,[text==="",Number.isNaN(number)?Infinity:number,text]]}));
rows.sort((a,b)=>{const x=keys.get(a),y=keys.get(b);
if(x[0]!==y[0])return x[0]-y[0];
const way=x[1]!==y[1]?x[1]-y[1]:x[2]<y[2]?-1:x[2]>y[2]?1:0;return down?-way:way});
body.append(...rows)};
heads.forEach((head,at)=>{const button=document.createElement("button");button.textContent=head.textContent;
head.replaceChildren(button);button.addEventListener("click",()=>{
const down=head.getAttribute("aria-sort")==="ascending";
heads.forEach(other=>other.removeAttribute("aria-sort"));
head.setAttribute("aria-sort",down?"descending":"ascending");order(at,down)})});
const search=document.querySelector("#filter"),boxes=[...document.querySelectorAll(".tools input[type=checkbox]")];
const told=document.querySelector("#shown");
const filter=()=>{const wanted=search.value.toLowerCase(),off=new Set(boxes.filter(box=>!box.checked).map(box=>box.value));
let shown=0;for(const row of rows){const hide=off.has(row.cells[1].textContent)||
(wanted!==""&&!row.textContent.toLowerCase().includes(wanted));row.hidden=hide;if(!hide)++shown}
told.textContent=shown+" of "+rows.length+" rows"};
search.addEventListener("input",filter);boxes.forEach(box=>box.addEventListener("change",filter));filter();
const quote=text=>/^[-\w.\/:+=,@%]+$/.test(text)?text:"'"+text.replaceAll("'","'\\''")+"'";
const page=document.querySelector("#runs").dataset,command=document.querySelector("#command");
body.addEventListener("click",event=>{const row=event.target.closest("tr");if(!row)return;
let text=page.command;const seed=row.cells[2].textContent;if(seed)text+=" --seed "+seed;
heads.forEach((head,at)=>{if(head.dataset.id)text+=" --set "+quote(head.dataset.id+"="+row.cells[at].textContent)});
command.textContent=text+page.expect;command.scrollIntoView({block:"nearest"})});
})();
)js";

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void Take(double number) {
        low = std::min(low, number);
        high = std::max(high, number);
    }
    bool IsEmpty() const { return low > high; }
};

std::string Tick(double number) { return fmt::format("{:.4g}", number == 0 ? 0.0 : number); }

// The number at the beginning of a value, without its unit.
std::optional<double> NumberOf(const std::string& text) {
    // strtod would ask the locale; values are written with a point.
    std::size_t end = 0;
    while (end < text.size() && text[end] != ' ') ++end;
    double sign = 1, number = 0, place = 1;
    std::size_t at = 0, digits = 0;
    if (at < end && (text[at] == '-' || text[at] == '+')) sign = text[at++] == '-' ? -1 : 1;
    bool fraction = false;
    for (; at < end; ++at) {
        if (text[at] == '.' && !fraction) {
            fraction = true;
        } else if (text[at] >= '0' && text[at] <= '9') {
            if (fraction) place /= 10;
            number = fraction ? number + place * (text[at] - '0') : number * 10 + (text[at] - '0');
            ++digits;
        } else {
            return std::nullopt;
        }
    }
    return digits > 0 ? std::optional(sign * number) : std::nullopt;
}

// One picture: points by verdict over two axes. Points of one place are drawn once, so ten thousand runs stay a small
// picture.
class Plot {
public:
    Plot(std::string nameOfX, std::string nameOfY) : xName(std::move(nameOfX)), yName(std::move(nameOfY)) {}

    void Add(double x, double y, bool passed) {
        if (!std::isfinite(x) || !std::isfinite(y)) return;
        (passed ? good : bad).emplace_back(x, y);
        xs.Take(x);
        ys.Take(y);
    }
    bool IsEmpty() const { return xs.IsEmpty(); }
    bool HasBoth() const { return !good.empty() && !bad.empty(); }

    std::string Svg() const {
        const double left = kLeft, right = kWidth - kRight, top = kTop, bottom = kHeight - kBottom;
        std::string text = fmt::format(
            "<svg viewBox=\"0 0 {0} {1}\" width=\"{0}\" height=\"{1}\" role=\"img\" aria-label=\"{2} over {3}\">",
            kWidth, kHeight, XmlEscaped(yName), XmlEscaped(xName));
        text += fmt::format("<path class=\"axis\" d=\"M{} {}V{}H{}\"/>", left, top, bottom, right);
        if (ys.low < 0 && ys.high > 0) text += fmt::format("<path class=\"zero\" d=\"M{} {}H{}\"/>", left, Y(0), right);
        text += fmt::format("<text x=\"{}\" y=\"{}\">{}</text>", left, bottom + 14, Tick(xs.low));
        if (xs.high > xs.low)
            text +=
                fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>", right, bottom + 14, Tick(xs.high));
        text +=
            fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>", left - 4, Y(ys.low) + 4, Tick(ys.low));
        if (ys.high > ys.low)
            text += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>", left - 4, Y(ys.high) + 4,
                                Tick(ys.high));
        text += Path(good, "passed dot", [](int x, int y) { return fmt::format("M{} {}h0", x, y); });
        text +=
            Path(bad, "failed cross", [](int x, int y) { return fmt::format("M{} {}l6 6m0-6l-6 6", x - 3, y - 3); });
        return text + "</svg>";
    }

private:
    using Points = std::vector<std::pair<double, double>>;

    static double Placed(double number, const Range& range, double from, double to) {
        return range.high > range.low ? from + (to - from) * ((number - range.low) / (range.high - range.low))
                                      : (from + to) / 2;
    }
    double X(double number) const { return Placed(number, xs, kLeft + 6, kWidth - kRight - 6); }
    double Y(double number) const { return Placed(number, ys, kHeight - kBottom - 8, kTop + 6); }

    template <typename Mark>
    std::string Path(const Points& points, const char* style, Mark mark) const {
        std::set<std::pair<int, int>> places;
        for (const auto& [x, y] : points)
            places.emplace(static_cast<int>(std::lround(X(x))), static_cast<int>(std::lround(Y(y))));
        if (places.empty()) return "";
        std::string text = fmt::format("<path class=\"{}\" d=\"", style);
        for (const auto& [x, y] : places) text += mark(x, y);
        return text + "\"/>";
    }

    std::string xName, yName;
    Points good, bad;
    Range xs, ys;
};

std::string Figure(const std::string& caption, const Plot& plot) {
    return fmt::format("<figure>{}<figcaption>{}</figcaption></figure>\n", plot.Svg(), XmlEscaped(caption));
}

class Page {
public:
    Page(const CampaignSheet& campaign, const std::vector<RunRecord>& all, const std::vector<std::uint64_t>& absent)
        : sheet(campaign), records(all), missing(absent) {
        for (const RunRecord& record : records) ++counts[record.verdict];
    }

    std::string Text() {
        Head();
        Counts();
        Missing();
        Repeat();
        Table();
        Margins();
        Pairs();
        out += "<script>";
        out += kScript;
        out += "</script>\n</body>\n</html>\n";
        return std::move(out);
    }

private:
    void Head() {
        const std::string title = XmlEscaped(sheet.scenario);
        out += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
        out += fmt::format("<title>Campaign: {}</title>\n<style>{}</style>\n</head>\n<body>\n", title, kStyle);
        out += fmt::format(
            "<h1>{}</h1>\n<p class=\"faint\">{}{}{} variants</p>\n", title,
            sheet.configuration.empty() ? "" : "Configuration " + XmlEscaped(sheet.configuration) + " \xC2\xB7 ",
            sheet.script.empty() ? "" : "script " + XmlEscaped(sheet.script) + " \xC2\xB7 ", sheet.count);
    }

    void Counts() {
        const std::pair<const char*, std::size_t> rows[] = {
            {"passed", counts[Verdict::Passed]}, {"failed", counts[Verdict::Failed]},
            {"error", counts[Verdict::Error]},   {"timeout", counts[Verdict::Timeout]},
            {"killed", counts[Verdict::Killed]}, {"skipped", counts[Verdict::Skipped]},
            {"missing", missing.size()},
        };
        const std::size_t all = records.size() + missing.size();
        out += "<ul class=\"counts\">\n";
        for (const auto& [word, number] : rows)
            if (number > 0 || std::string(word) == "passed" || std::string(word) == "failed")
                out += fmt::format("<li class=\"{0}\"><b>{1}</b>{0}</li>\n", word, number);
        out += "</ul>\n<div class=\"bar\" role=\"img\" aria-label=\"share of the verdicts\">";
        const std::size_t broken = counts[Verdict::Error] + counts[Verdict::Timeout] + counts[Verdict::Killed];
        const std::pair<const char*, std::size_t> parts[] = {{"passed", counts[Verdict::Passed]},
                                                             {"failed", counts[Verdict::Failed]},
                                                             {"error", broken},
                                                             {"skipped", counts[Verdict::Skipped]}};
        for (const auto& [word, number] : parts)
            if (number > 0)
                out += fmt::format("<span class=\"{}\" style=\"width:{:.3f}%\"></span>", word,
                                   100.0 * static_cast<double>(number) / static_cast<double>(all));
        out += "</div>\n";
        if (sheet.criteria.empty()) {
            out += "<p>No criteria: a run passes when it comes to its end and no call lacks its implementation.</p>\n";
        } else {
            out += "<h2>Criteria</h2>\n<ul>\n";
            for (std::size_t i = 0; i < sheet.criteria.size(); ++i)
                out += fmt::format("<li><code>{}</code> \xE2\x80\x94 holds in {} of {} runs</li>\n",
                                   XmlEscaped(sheet.criteria[i]), Holding(i), Judged(i));
            out += "</ul>\n";
        }
    }

    std::size_t Holding(std::size_t criterion) const {
        return static_cast<std::size_t>(std::count_if(records.begin(), records.end(), [&](const RunRecord& record) {
            return criterion < record.criteria.size() && record.criteria[criterion].holds;
        }));
    }
    std::size_t Judged(std::size_t criterion) const {
        return static_cast<std::size_t>(std::count_if(records.begin(), records.end(), [&](const RunRecord& record) {
            return criterion < record.criteria.size();
        }));
    }

    void Missing() {
        if (missing.empty()) return;
        out += fmt::format("<h2 class=\"missing\">Missing</h2>\n<p>{} variants were not run: <code>{}</code></p>\n",
                           missing.size(), RangesText(missing));
    }

    void Repeat() {
        out += "<h2>How to repeat a run</h2>\n<p>With the installation that the campaign was made for; "
               "<code>--set</code> for each column of values.</p>\n<pre id=\"command\">";
        std::vector<const RunRecord*> shown;
        for (const RunRecord& record : records)
            if (record.verdict != Verdict::Passed && record.verdict != Verdict::Skipped && shown.size() < kMostRepeats)
                shown.push_back(&record);
        const bool noneFailed = shown.empty();
        if (noneFailed && !records.empty()) shown.push_back(&records.front());
        if (!shown.empty()) out += XmlEscaped(RepeatCommand(sheet, *shown.front()));
        out += "</pre>\n";
        if (noneFailed || shown.size() < 2) return;
        out += fmt::format("<details><summary>The commands of the first {} runs that did not pass</summary>\n",
                           shown.size());
        for (const RunRecord* record : shown)
            out += fmt::format("<p>{} <span class=\"{}\">{}</span></p><pre>{}</pre>\n", record->number,
                               WordOf(record->verdict), WordOf(record->verdict),
                               XmlEscaped(RepeatCommand(sheet, *record)));
        out += "</details>\n";
    }

    // All of them, or of too many first those that did not pass.
    std::vector<const RunRecord*> Rows() const {
        std::vector<const RunRecord*> rows;
        if (records.size() <= kMostRows) {
            for (const RunRecord& record : records) rows.push_back(&record);
            return rows;
        }
        for (const bool passed : {false, true})
            for (const RunRecord& record : records)
                if ((record.verdict == Verdict::Passed) == passed && rows.size() < kMostRows) rows.push_back(&record);
        std::sort(rows.begin(), rows.end(), [](const auto* a, const auto* b) { return a->number < b->number; });
        return rows;
    }

    void Table() {
        if (records.empty()) return;
        const std::vector<const RunRecord*> rows = Rows();
        out += "<h2>Runs</h2>\n";
        if (rows.size() < records.size())
            out += fmt::format(
                "<p>The table shows {} of {} runs, those that did not pass first; <code>results.csv</code> has "
                "them all.</p>\n",
                rows.size(), records.size());
        out += "<div class=\"tools\"><input type=\"search\" id=\"filter\" placeholder=\"filter rows\" "
               "aria-label=\"filter rows\">";
        std::set<std::string> words;
        for (const RunRecord* record : rows) words.insert(WordOf(record->verdict));
        for (const std::string& word : words)
            out += fmt::format("<label><input type=\"checkbox\" value=\"{0}\" checked> {0}</label>", word);
        out += "<span class=\"faint\" id=\"shown\"></span></div>\n";
        TableHead();
        out += "<tbody>\n";
        for (const RunRecord* record : rows) Row(*record);
        out += "</tbody></table></div>\n";
    }

    void TableHead() {
        RunRecord bare;
        CampaignSheet plain = sheet;
        plain.criteria.clear();
        std::string expect;
        for (const std::string& criterion : sheet.criteria) expect += " --expect " + ShellWord(criterion);
        const std::size_t columns = 3 + sheet.parameters.size() + sheet.criteria.size() + 1;
        out += fmt::format(
            "<div class=\"scroll\"><table id=\"runs\" style=\"min-width:{}px\" data-command=\"{}\" data-expect=\"{}\">"
            "<colgroup><col style=\"width:84px\"><col style=\"width:80px\"><col style=\"width:92px\"></colgroup>"
            "<thead><tr><th class=\"n\">number</th><th>verdict</th><th class=\"n\">seed</th>",
            columns * 100, XmlEscaped(RepeatCommand(plain, bare)), XmlEscaped(expect));
        for (const CampaignSheet::Parameter& parameter : sheet.parameters)
            out += fmt::format("<th{} data-id=\"{}\" title=\"{}\">{}</th>", parameter.isNumeric ? " class=\"n\"" : "",
                               XmlEscaped(parameter.id), XmlEscaped(parameter.id), XmlEscaped(parameter.name));
        for (const std::string& criterion : sheet.criteria)
            out += fmt::format("<th class=\"n\">{}</th>", XmlEscaped(criterion));
        out += "<th>message</th></tr></thead>\n";
    }

    void Row(const RunRecord& record) {
        out += fmt::format("<tr><td class=\"n\">{}</td><td class=\"{}\">{}</td><td class=\"n\">{}</td>", record.number,
                           WordOf(record.verdict), WordOf(record.verdict),
                           record.seed ? std::to_string(*record.seed) : "");
        for (std::size_t i = 0; i < sheet.parameters.size(); ++i)
            out += fmt::format("<td{}>{}</td>", sheet.parameters[i].isNumeric ? " class=\"n\"" : "",
                               XmlEscaped(Value(record, i)));
        for (std::size_t i = 0; i < sheet.criteria.size(); ++i) {
            if (i >= record.criteria.size()) {
                out += "<td></td>";
                continue;
            }
            const TavrelSimulation::Outcome& outcome = record.criteria[i];
            out += fmt::format("<td class=\"n {}\">{}</td>", outcome.holds ? "passed" : "failed",
                               outcome.margin  ? fmt::format("{:.6g}", *outcome.margin + 0.0)
                               : outcome.holds ? "holds"
                                               : "does not hold");
        }
        out += fmt::format("<td>{}</td></tr>\n", XmlEscaped(record.message));
    }

    // The values stand in the order of the parameters, but for what another plan wrote.
    std::string Value(const RunRecord& record, std::size_t parameter) const {
        const std::string& id = sheet.parameters[parameter].id;
        if (parameter < record.values.size() && record.values[parameter].first == id)
            return record.values[parameter].second;
        for (const auto& [name, text] : record.values)
            if (name == id) return text;
        return "";
    }

    static bool IsJudged(const RunRecord& record) {
        return record.verdict == Verdict::Passed || record.verdict == Verdict::Failed;
    }

    static std::string Caption(const CampaignSheet::Parameter& parameter) {
        return parameter.unit.empty() ? parameter.name : parameter.name + " (" + parameter.unit + ")";
    }

    std::vector<std::size_t> NumericParameters() const {
        std::vector<std::size_t> numeric;
        for (std::size_t i = 0; i < sheet.parameters.size(); ++i)
            if (sheet.parameters[i].isNumeric) numeric.push_back(i);
        return numeric;
    }

    void Margins() {
        std::string figures;
        std::size_t drawn = 0, left = 0;
        std::set<std::size_t> shown;
        for (std::size_t i = 0; i < sheet.criteria.size(); ++i)
            for (const std::size_t parameter : NumericParameters()) {
                Plot plot(sheet.parameters[parameter].name, "margin");
                for (const RunRecord& record : records) {
                    if (i >= record.criteria.size() || !record.criteria[i].margin) continue;
                    if (const auto x = NumberOf(Value(record, parameter)))
                        plot.Add(*x, *record.criteria[i].margin, record.criteria[i].holds);
                }
                if (plot.IsEmpty()) continue;
                const bool isFirst = shown.insert(parameter).second;
                if (drawn++ < kMostPlots || isFirst)
                    figures += Figure(
                        "margin of " + sheet.criteria[i] + " over " + Caption(sheet.parameters[parameter]), plot);
                else
                    ++left;
            }
        Section("Margins",
                "Above 0 the criterion holds. A dot is a run in which it does, a cross one in which it does not.",
                figures, left);
    }

    void Pairs() {
        std::string figures;
        std::size_t drawn = 0, left = 0;
        const std::vector<std::size_t> numeric = NumericParameters();
        for (std::size_t a = 0; a < numeric.size(); ++a)
            for (std::size_t b = a + 1; b < numeric.size(); ++b) {
                Plot plot(sheet.parameters[numeric[a]].name, sheet.parameters[numeric[b]].name);
                for (const RunRecord& record : records) {
                    if (!IsJudged(record)) continue;
                    const auto x = NumberOf(Value(record, numeric[a])), y = NumberOf(Value(record, numeric[b]));
                    if (x && y) plot.Add(*x, *y, record.verdict == Verdict::Passed);
                }
                if (!plot.HasBoth()) continue;
                if (drawn++ < kMostPlots)
                    figures += Figure(
                        Caption(sheet.parameters[numeric[b]]) + " over " + Caption(sheet.parameters[numeric[a]]), plot);
                else
                    ++left;
            }
        Section("Pass and fail over pairs", "A dot is a run that passed, a cross one that failed.", figures, left);
    }

    void Section(const char* title, const char* legend, const std::string& figures, std::size_t left) {
        if (figures.empty()) return;
        out += fmt::format("<h2>{}</h2>\n<p class=\"faint\">{}{}</p>\n<div class=\"plots\">\n{}</div>\n", title, legend,
                           left > 0 ? fmt::format(" {} more are not drawn.", left) : "", figures);
    }

    const CampaignSheet& sheet;
    const std::vector<RunRecord>& records;
    const std::vector<std::uint64_t>& missing;
    std::map<Verdict, std::size_t> counts;
    std::string out;
};

} // namespace

std::string ResultsHtml(const CampaignSheet& sheet, const std::vector<RunRecord>& records,
                        const std::vector<std::uint64_t>& missing) {
    return Page(sheet, records, missing).Text();
}

} // namespace TavrelVariation
