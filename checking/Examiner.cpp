#include "Examiner.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <unordered_set>
#include <utility>

#include <Commons/WholeFile.h>
#include <TavrelScenarioTemplateDb/RootModel.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/ItemModel.h>

namespace TavrelChecking {

namespace {

namespace fs = std::filesystem;
using lmkUtils::EnvConfig;
using TavrelScenarioTemplateDb::RootModel;

constexpr const char* kInstallationFile = "tavrel.xml";

bool HasError(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

// Rules of what is read, and not valid where it stands.
bool IsOfValidity(const Finding& finding) {
    static constexpr std::string_view kRules[] = {"TV3001", "TV3002", "TV3004", "TV3005", "TV3006", "TV3007",
                                                  "TV3008", "TV3009", "TV3010", "TV3011", "TV3012", "TV4008",
                                                  "TV4009", "TV4012", "TV4013", "TV6009", "TV6014"};
    return std::find(std::begin(kRules), std::end(kRules), finding.rule->id) != std::end(kRules);
}

// Rules of lines for which something elsewhere is not found.
bool IsOfNames(const Finding& finding) {
    const std::string_view rule = finding.rule->id;
    return rule == "TV1003" || rule == "TV1007" || rule == "TV1008";
}

bool LiesIn(const fs::path& file, const std::string& folder) {
    std::error_code error;
    const fs::path root = fs::weakly_canonical(folder, error);
    const fs::path relative = file.lexically_relative(root);
    return !error && !relative.empty() && *relative.begin() != "..";
}

// Whether the line is one that the reader knows, but for its bytes.
bool IsLineButForBytes(std::string_view line) {
    std::string plain;
    for (const char c : line)
        if (c > ' ' && c < '\x7F') plain += c;
    const std::size_t key = plain.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789");
    return plain == "{" || plain == "}" || plain.starts_with("TYPEOF") ||
           (key != std::string::npos && key > 0 && plain.compare(key, 2, "=\"") == 0);
}

// Names and words that are not known because of their bytes follow from what is told of the bytes.
void DropWhatFollowsFromBytes(std::vector<Finding>& findings) {
    const auto isOfBytes = [](const Finding& finding) {
        const std::string_view rule = finding.rule->id;
        return rule == "TV1016" || rule == "TV1017";
    };
    using Place = std::tuple<std::string_view, std::uint32_t, std::uint32_t>;
    std::map<Place, std::size_t> told;
    std::map<std::string_view, Severity> inOtherEncoding; // the gravest of what is named in these bytes
    for (std::size_t at = 0; at < findings.size(); ++at) {
        if (!isOfBytes(findings[at])) continue;
        told.emplace(Place(findings[at].file, findings[at].span.row, findings[at].span.column), at);
        if (std::string_view(findings[at].rule->id) == "TV1017")
            inOtherEncoding.emplace(findings[at].file, findings[at].severity);
    }
    if (told.empty()) return;
    std::vector<bool> follows(findings.size());
    for (std::size_t at = 0; at < findings.size(); ++at) {
        const Finding& finding = findings[at];
        const Span& span = finding.span;
        const std::string_view rule = finding.rule->id;
        if (isOfBytes(finding) || rule == "TV6003" || (rule == "TV1001" && !IsLineButForBytes(finding.line))) continue;
        const auto encoding = inOtherEncoding.find(finding.file);
        if (encoding != inOtherEncoding.end() && FindOtherEncoding(finding.message) != std::string_view::npos) {
            encoding->second = std::max(encoding->second, finding.severity);
            follows[at] = true;
        }
        for (auto bytes = told.lower_bound(Place(finding.file, span.row, span.column)); bytes != told.end(); ++bytes) {
            Finding& within = findings[bytes->second];
            const bool isWithin = within.file == finding.file && std::pair(within.span.endRow, within.span.endColumn) <=
                                                                     std::pair(span.endRow, span.endColumn);
            if (!isWithin) break;
            within.severity = std::max(within.severity, finding.severity);
            follows[at] = true;
        }
    }
    for (Finding& finding : findings)
        if (std::string_view(finding.rule->id) == "TV1017")
            finding.severity = std::max(finding.severity, inOtherEncoding[finding.file]);
    std::vector<Finding> left;
    for (std::size_t at = 0; at < findings.size(); ++at)
        if (!follows[at]) left.push_back(std::move(findings[at]));
    findings = std::move(left);
}

bool StandsWithin(std::string_view way, std::string_view outer) {
    return way.starts_with(outer) && (way.size() == outer.size() || way.substr(outer.size()).starts_with(" / "));
}

// Whether an error that was found is why the item is not valid.
bool Explains(const Finding& finding, const Verdict::Invalid& invalid, const std::string& path) {
    if (finding.severity != Severity::Error) return false;
    // What stands in an included file has its way from the top of that file.
    // A model has no way there, and all may follow from it.
    if (finding.file != path)
        return finding.related.empty() || invalid.way.find("/ INCLUDE (") != std::string::npos ||
               invalid.way.find("/ EVALUATION (") != std::string::npos;
    return finding.script == invalid.script && !finding.place.empty() &&
           (StandsWithin(invalid.way, finding.place) || StandsWithin(finding.place, invalid.way));
}

// What the library stumbles over and no error explains is the fault of the nearest line that it reads in another way
// than it is meant, whatever else is wrong with the file.
template <class IsMisread>
void BlameMisread(const Verdict& verdict, const std::string& path, const IsMisread& isMisread,
                  std::vector<Finding>& findings) {
    const auto rowOf = [](const Finding& finding) { return finding.isInScript ? finding.scriptRow : finding.span.row; };
    const bool hadError = HasError(findings);
    const auto isError = [&](const Finding& finding) {
        return finding.severity == Severity::Error && finding.file == path;
    };
    for (const Verdict::Refusal& refusal : verdict.refusals) {
        if (!refusal.file.empty() && hadError) continue;
        Finding* nearest = nullptr;
        bool isExplained = false;
        for (Finding& finding : findings) {
            if (refusal.script != finding.script || rowOf(finding) > refusal.row + (isError(finding) ? 1 : 0)) continue;
            isExplained = isExplained || isError(finding);
            if (isMisread(finding)) nearest = &finding;
        }
        if (nearest && !isExplained) nearest->severity = Severity::Error;
        // Of a text that is refused for something else nothing shows what a brace too many has cost it.
        for (Finding& finding : findings)
            if (isExplained && isMisread(finding) && finding.script == refusal.script &&
                finding.message == kSurplusBrace)
                finding.severity = Severity::Error;
        if (!hadError) break;
    }
    // What a file that could not be had holds may be what is missing.
    const bool lacksFile = std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        const std::string_view rule = finding.rule->id;
        return isError(finding) && (rule == "TV6009" || rule == "TV6014");
    });
    if (lacksFile) return;
    for (const Verdict::Invalid& invalid : verdict.invalid) {
        Finding* nearest = nullptr;
        bool isExplained = false;
        for (Finding& finding : findings) {
            isExplained = isExplained || Explains(finding, invalid, path);
            // What a brace too many ends early is missing anywhere.
            const bool isNear = StandsWithin(invalid.way, finding.place) || finding.message == kSurplusBrace;
            if (isMisread(finding) && finding.script == invalid.script && isNear) nearest = &finding;
        }
        // A limit that is no number, in the model, is 0 for the library.
        for (Finding& finding : findings)
            if (!nearest && finding.file != path && finding.related.empty() &&
                std::string_view(finding.rule->id) == "TV1018")
                nearest = &finding;
        if (nearest && !isExplained) nearest->severity = Severity::Error;
    }
}

// A definition whose header in the model is read with another name is found by nobody who uses the name that is meant.
void PlaceAtName(const ScriptTree& tree, Fault& fault) {
    const Item* const item = tree.ItemAt(fault.begin);
    if (!item) return;
    fault.item = item;
    // The reader may have come to an item within.
    for (const Item* named = item; named; named = named->parent) {
        const std::size_t list = ListOf(named->kind);
        if (list == kListCount || fault.message.find("\"" + std::string(named->name) + "\"") == std::string::npos)
            continue;
        if (!fault.message.starts_with("unknown ")) break;
        fault.rule = kListRows[list].unknown;
        fault.begin = named->nameBegin;
        fault.end = fault.begin + named->name.size();
        fault.item = named->parent;
        return;
    }
    for (const Attribute& attribute : item->attributes)
        if (attribute.keyBegin == fault.begin && attribute.key == "VALUE" && item->Value("KIND") == "ENUM") {
            fault.rule = "TV2008";
            fault.begin = attribute.valueBegin;
            fault.end = attribute.valueEnd;
        }
}

// What the library has against the file beyond what was found. It is the judge: what it takes is no error.
void Reconcile(const Verdict& verdict, const std::string& path, const std::vector<const ScriptTree*>& trees,
               std::vector<Finding>& findings) {
    std::map<std::pair<std::string_view, std::string_view>, const Verdict::Invalid*> invalidByWay;
    for (const Verdict::Invalid& invalid : verdict.invalid)
        invalidByWay.emplace(std::pair(std::string_view(invalid.script), std::string_view(invalid.way)), &invalid);
    const auto invalidAt = [&](const Finding& finding) -> const Verdict::Invalid* {
        const auto found = invalidByWay.find({finding.script, finding.place});
        return found == invalidByWay.end() || finding.file != path ? nullptr : found->second;
    };
    if (verdict.IsRead()) {
        for (Finding& finding : findings) {
            const bool isOfOthers = IsOfValidity(finding) || IsOfNames(finding);
            const bool mayStay = invalidAt(finding) || (isOfOthers && !verdict.invalid.empty());
            if (finding.severity == Severity::Error && finding.file == path && !mayStay)
                finding.severity = Severity::Warning;
        }
    }
    for (Finding& finding : findings)
        if (const Verdict::Invalid* invalid = invalidAt(finding)) finding.display = invalid->display;
    // A line that is read all the same, so it seemed, and over which the library stumbles.
    const auto isMisread = [&](const Finding& finding) {
        return finding.rule->severity == Severity::Error && finding.severity == Severity::Warning &&
               finding.file == path;
    };
    for (Finding& finding : findings) {
        const Verdict::Invalid* const invalid = verdict.IsRead() && isMisread(finding) ? invalidAt(finding) : nullptr;
        if (!invalid) continue;
        const bool isExplained = std::any_of(findings.begin(), findings.end(),
                                             [&](const Finding& other) { return Explains(other, *invalid, path); });
        if (!isExplained) finding.severity = Severity::Error;
    }
    if (verdict.IsFine()) return;
    BlameMisread(verdict, path, isMisread, findings);
    if (HasError(findings)) return;
    const auto treeOf = [&](const std::string& script) -> const ScriptTree* {
        for (const ScriptTree* tree : trees)
            if (tree->Source().ScriptName() == script) return tree;
        return nullptr;
    };
    for (const Verdict::Refusal& refusal : verdict.refusals) {
        const ScriptTree* tree = refusal.file.empty() ? treeOf(refusal.script) : nullptr;
        if (!tree || refusal.row == 0) {
            findings.push_back(WholeFileFinding("TV6001", refusal.file.empty() ? path : refusal.file, refusal.cause));
            continue;
        }
        const std::string_view text = tree->Source().View();
        const Commons::TextPlaces places(text);
        const std::size_t begin = places.PositionOf({refusal.row, 1});
        const std::string_view line = places.Line(refusal.row);
        const std::size_t tabs = std::min(line.find_first_not_of("\t "), line.size());
        Fault fault;
        fault.rule = "TV1001";
        fault.begin = begin + tabs;
        fault.end = begin + line.size();
        fault.message = refusal.cause;
        PlaceAtName(*tree, fault);
        findings.push_back(FindingOf(fault, tree->Source()));
        return;
    }
    for (const Verdict::Invalid& invalid : verdict.invalid) {
        const ScriptTree* tree = treeOf(invalid.script);
        if (!tree || !tree->Root()) continue;
        const Item* item = tree->Root();
        std::vector<const Item*> pending{item};
        while (!pending.empty()) {
            const Item* one = pending.back();
            pending.pop_back();
            for (const auto& child : one->children) pending.push_back(child);
            if (WayTo(one) == invalid.way) item = one;
        }
        Fault fault;
        fault.rule = IsParameter(item->kind) ? "TV3001" : "TV4012";
        fault.begin = item->keywordBegin;
        fault.end = item->headerEnd;
        fault.item = item->parent;
        fault.message = invalid.cause;
        findings.push_back(FindingOf(fault, tree->Source()));
        return;
    }
}

} // namespace

Finding FindingOf(const Fault& fault, const Text& text) {
    Finding finding = text.FindingAt(fault.begin, fault.end);
    finding.rule = FindRule(fault.rule);
    finding.severity = finding.rule->severity;
    if (fault.isTaken && finding.severity == Severity::Error) finding.severity = Severity::Warning;
    if (fault.isRefused) finding.severity = Severity::Error;
    if (fault.isNote) finding.severity = Severity::Note;
    finding.place = WayTo(fault.item);
    finding.message = fault.message;
    finding.help = fault.help.empty() ? finding.rule->remedy : fault.help;
    if (fault.about)
        finding.related.push_back(
            {text.File().path, text.SpanOf(fault.about->keywordBegin, fault.about->headerEnd), "it begins here"});
    if (!fault.fixTitle.empty()) {
        Fix fix{fault.fixTitle, fault.fixIsSafe, {}};
        Edit edit;
        if (text.EditOf(fault.fixBegin, fault.fixEnd, fault.fixText, edit)) {
            fix.edits.push_back(std::move(edit));
            finding.fixes.push_back(std::move(fix));
        }
    }
    return finding;
}

Finding WholeFileFinding(const char* rule, const std::string& file, std::string message) {
    Finding finding;
    finding.rule = FindRule(rule);
    finding.severity = finding.rule->severity;
    finding.file = file;
    finding.message = std::move(message);
    finding.help = finding.rule->remedy;
    return finding;
}

std::string InstallationFor(const std::string& path, const Options& options) {
    if (options.isInstallationFixed && !options.installation.empty()) return options.installation;
    std::error_code error;
    for (fs::path folder = fs::weakly_canonical(path, error); !error && folder != folder.root_path();) {
        folder = folder.parent_path();
        if (fs::is_regular_file(folder / kInstallationFile, error)) return (folder / kInstallationFile).string();
        error.clear();
    }
    return options.installation;
}

std::string ConfigurationFor(const std::string& path, const Options& options) {
    if (!options.configuration.empty()) return options.configuration;
    std::error_code error;
    const fs::path file = fs::weakly_canonical(path, error);
    const std::vector<std::string> names = EnvConfig::getConfigurationsList();
    for (const std::string& name : names)
        for (const std::string& root : EnvConfig::getSeparatedPathForConfiguration(name, "."))
            if (LiesIn(file, root)) return name;
    return names.empty() ? "" : names.front();
}

Examined Examiner::Examine(const Job& givenJob, const std::string* text, bool isJudged) {
    Examined examined;
    Job job = givenJob;
    std::string bytes;
    bool isTooLarge = text && text->size() > Commons::kLargestFile;
    std::string reason = !text        ? Commons::ReasonNotToOpen(job.path, &isTooLarge)
                         : isTooLarge ? "it is larger than any file that is read"
                                      : "";
    if (!text && reason.empty()) ReadBytes(job.path, bytes, reason);
    if (!reason.empty()) {
        examined.unreadable = reason;
        examined.findings.push_back(
            WholeFileFinding(isTooLarge ? "TV6004" : "TV6001", job.path, "the file cannot be looked at: " + reason));
        return examined;
    }
    if (text) bytes = *text;
    try {
        UseInstallation(job);
    } catch (const lmkUtils::ConfigurationError& error) {
        // As it is told when the files of the installation are gathered.
        examined.findings = InstallationFindings(job.installation);
        if (examined.findings.empty())
            examined.findings.push_back(WholeFileFinding("TV6013", job.installation, error.what()));
        return examined;
    }
    switch (job.kind) {
    case FileKind::Scenario:
        ExamineScenario(job, std::move(bytes), text == nullptr, isJudged, examined);
        break;
    case FileKind::Model:
        ExamineModel(job, std::move(bytes), isJudged, examined);
        break;
    default:
        ExamineScript(job, std::move(bytes), isJudged, examined);
        break;
    }
    DropWhatFollowsFromBytes(examined.findings);
    return examined;
}

void Examiner::UseInstallation(Job& job) {
    if (job.installation.empty()) job.installation = InstallationFor(job.path, options);
    if (!job.installation.empty() && job.installation != installation) {
        EnvConfig::setTavrelConfigFilePath(job.installation);
        installation = job.installation;
        models.clear();
    }
    if (job.configuration.empty()) job.configuration = ConfigurationFor(job.path, options);
    if (job.configuration != EnvConfig::getCurrentConfiguration()) EnvConfig::setConfig(job.configuration, false);
}

std::string Examiner::ModelFileFor(const Job& job) const {
    if (!options.modelFile.empty() && job.kind != FileKind::Scenario) return options.modelFile;
    return RootModel::fileOf(job.configuration);
}

Examiner::Model* Examiner::ModelOf(const std::string& path, const std::string& configuration) {
    if (path.empty()) return nullptr;
    Model& model = models[path];
    if (!model.definitions) {
        model.path = path;
        std::string bytes;
        std::string reason;
        if (!ReadBytes(path, bytes, reason))
            model.findings.push_back(WholeFileFinding("TV6001", path, "the root model cannot be read: " + reason));
        model.tree =
            std::make_shared<ScriptTree>(std::make_shared<Text>(std::make_shared<FileBytes>(path, std::move(bytes))));
        model.definitions = std::make_unique<Definitions>(model.tree);
        if (reason.empty())
            for (const Fault& fault : TextChecks(*model.tree, *model.definitions, TextRole::Model).Run())
                model.findings.push_back(FindingOf(fault, model.tree->Source()));
    }
    // Includes are looked up in the data path of the configuration.
    if (!model.includes || model.configuration != configuration)
        model.includes = std::make_unique<Includes>(*model.definitions);
    model.configuration = configuration;
    return &model;
}

bool Examiner::IsRefused(const Model& model, const Verdict& verdict) {
    return std::any_of(verdict.refusals.begin(), verdict.refusals.end(),
                       [&](const auto& refusal) { return refusal.file == model.path; });
}

// Which of its lines is to blame shows where the model is read by itself.
void Examiner::ReconcileModel(const Model& model, std::vector<Finding>& findings) {
    Reconcile(JudgeModel(std::string(model.tree->Source().View())), model.path, {model.tree.get()}, findings);
}

// What the text shows by itself, by its flow and in its surroundings.
void Examiner::AddFaults(const ScriptTree& tree, const Definitions& definitions, TextRole role,
                         const Surroundings& around, Examined& examined) {
    std::vector<Fault> faults = TextChecks(tree, definitions, role).Run();
    for (Fault& fault : FlowFaults(tree, definitions)) faults.push_back(std::move(fault));
    for (PlacedFault& placed : TreeChecks(tree, around).Run(std::move(faults))) {
        Finding& finding = examined.findings.emplace_back(FindingOf(placed.fault, *placed.text));
        for (RelatedPlace& place : placed.related) finding.related.push_back(std::move(place));
    }
}

// A script uses few definitions many times.
void Examiner::GatherUses(const Item& item, Examined& examined) const {
    if (!gathersUses) return;
    std::array<std::unordered_set<std::string_view>, kListCount> uses;
    const auto gather = [&uses](const auto& self, const Item& one) -> void {
        if (one.model && one.model != &one) uses[ListOf(one.kind)].insert(one.name);
        if (IsParameter(one.kind))
            if (const std::string_view tab = one.Value("ENUMTAB"); !tab.empty()) uses[kEnumTabs].insert(tab);
        for (const auto& child : one.children) self(self, *child);
    };
    gather(gather, item);
    for (std::size_t list = 0; list < kListCount; ++list)
        for (const std::string_view name : uses[list]) examined.uses.insert({list, std::string(name)});
}

void Examiner::ExamineModel(const Job& job, std::string bytes, bool isJudged, Examined& examined) {
    const auto tree =
        std::make_shared<ScriptTree>(std::make_shared<Text>(std::make_shared<FileBytes>(job.path, std::move(bytes))));
    const Definitions definitions(tree);
    for (const Fault& fault : TextChecks(*tree, definitions, TextRole::Model).Run())
        examined.findings.push_back(FindingOf(fault, tree->Source()));
    if (isJudged) Reconcile(JudgeModel(tree->Source().File().bytes), job.path, {tree.get()}, examined.findings);
    std::error_code error;
    examined.model = fs::weakly_canonical(job.path, error).string();
    if (!tree->Root()) return;
    GatherUses(*tree->Root(), examined);
    for (std::size_t list = 0; list < kListCount; ++list)
        for (const Item* item : definitions.All(list)) {
            if (definitions.Find(list, item->name) != item || item->isMalformed) continue;
            Fault fault;
            fault.rule = "TV2013";
            fault.begin = item->nameBegin;
            fault.end = item->nameBegin + item->name.size();
            fault.message = "nothing in the installation uses the " + std::string(kListRows[list].word) + " \"" +
                            std::string(item->name) + "\"";
            fault.item = item->parent;
            examined.definitions.emplace_back(DefinitionUse{list, std::string(item->name)},
                                              FindingOf(fault, tree->Source()));
        }
}

void Examiner::ExamineScript(const Job& job, std::string bytes, bool isJudged, Examined& examined) {
    const auto tree =
        std::make_shared<ScriptTree>(std::make_shared<Text>(std::make_shared<FileBytes>(job.path, std::move(bytes))));
    const std::string modelFile = ModelFileFor(job);
    Model* const model = ModelOf(modelFile, job.configuration);
    if (!model) {
        for (const Fault& fault : tree->Faults()) examined.findings.push_back(FindingOf(fault, tree->Source()));
        TellMissingModel(job, examined);
        return;
    }
    examined.model = fs::weakly_canonical(modelFile).string();
    const auto tellModel = [&](bool isError) {
        std::copy_if(model->findings.begin(), model->findings.end(), std::back_inserter(examined.findings),
                     [&](const Finding& finding) { return (finding.severity == Severity::Error) == isError; });
    };
    tellModel(true);            // without it the script is not read
    if (!model->tree->Root()) { // no word of the script can be known
        for (const Fault& fault : tree->Faults()) examined.findings.push_back(FindingOf(fault, tree->Source()));
        return;
    }
    Surroundings around;
    around.definitions = model->definitions.get();
    around.includes = model->includes.get();
    AddFaults(*tree, *model->definitions, TextRole::Script, around, examined);
    if (isJudged) {
        const Verdict verdict = JudgeScript(tree->Source().File().bytes, modelFile);
        if (IsRefused(*model, verdict)) {
            tellModel(false);
            ReconcileModel(*model, examined.findings);
        } else {
            Reconcile(verdict, job.path, {tree.get()}, examined.findings);
        }
    }
    if (tree->Root()) {
        LookAtParametersFile(*tree->Root(), examined.findings);
        GatherUses(*tree->Root(), examined);
    }
}

void Examiner::ExamineScenario(const Job& job, std::string bytes, bool isSaved, bool isJudged, Examined& examined) {
    const auto file = std::make_shared<FileBytes>(job.path, std::move(bytes));
    const SceneFile scene(file);
    examined.findings = scene.FileFindings();
    const std::size_t ofFile = examined.findings.size();
    const std::string modelFile = RootModel::fileOf(job.configuration);
    Model* const model = ModelOf(modelFile, job.configuration);
    if (!model) {
        TellMissingModel(job, examined);
    } else {
        examined.model = fs::weakly_canonical(modelFile).string();
        examined.findings.insert(examined.findings.end(), model->findings.begin(), model->findings.end());
    }
    std::vector<const ScriptTree*> trees;
    for (const SceneFile::Script& script : scene.Scripts()) {
        const ScriptTree& tree = *script.tree;
        trees.push_back(&tree);
        if (!model || !model->tree->Root()) { // no word of the script can be known
            for (const Fault& fault : tree.Faults()) examined.findings.push_back(FindingOf(fault, tree.Source()));
            continue;
        }
        Surroundings around;
        around.definitions = model->definitions.get();
        around.includes = model->includes.get();
        around.tables = &scene.Tables();
        around.declaredVariables = scene.DeclaredVariables(script);
        AddFaults(tree, *model->definitions, TextRole::SceneScript, around, examined);
        if (tree.Root()) {
            LookAtParametersFile(*tree.Root(), examined.findings);
            GatherUses(*tree.Root(), examined);
        }
    }
    // The bytes of a script are those of its file, and told as such.
    const auto isOfBytes = [&](const Finding& finding) {
        return finding.isInScript && finding.file == job.path && std::string_view(finding.rule->id) == "TV1017";
    };
    const auto ofScripts = examined.findings.begin() + static_cast<std::ptrdiff_t>(ofFile);
    examined.findings.erase(std::remove_if(ofScripts, examined.findings.end(), isOfBytes), examined.findings.end());
    for (Finding& finding : scene.DeclarationFindings()) examined.findings.push_back(std::move(finding));
    if (!isJudged || !isSaved) return;
    const Verdict verdict = JudgeScenario(job.path, job.configuration);
    if (model && IsRefused(*model, verdict)) ReconcileModel(*model, examined.findings);
    Reconcile(verdict, job.path, trees, examined.findings);
}

// It is missing for the configuration, and follows from what is wrong with its settings.
void Examiner::TellMissingModel(const Job& job, Examined& examined) {
    const std::string folder = EnvConfig::getConfigPath(job.configuration);
    const std::vector<Finding> reasons = ConfigurationFindings(job.installation, job.configuration);
    examined.findings.insert(examined.findings.end(), reasons.begin(), reasons.end());
    if (HasError(reasons)) return;
    const std::string place = !folder.empty()            ? folder + "/configuration.xml"
                              : job.installation.empty() ? job.path
                                                         : job.installation;
    examined.findings.push_back(WholeFileFinding(
        "TV6007", place, "configuration \"" + job.configuration + "\" has no root model " + RootModel::kPath));
}

// The library takes a parameters file that it cannot read for an empty one. There need not be any.
void Examiner::LookAtParametersFile(const Item& root, std::vector<Finding>& findings) const {
    if (root.kind != KindScenario || root.Value("FILE").empty()) return;
    const bool hasParameters = std::any_of(root.children.begin(), root.children.end(),
                                           [](const auto& child) { return child->kind == KindGeneralParameters; });
    if (!hasParameters) return;
    std::string path = "data/scenario";
    ResolveDataPath(std::string(root.Value("FILE")), path);
    path = ParameterFileOf(path);
    std::replace(path.begin(), path.end(), '\\', '/');
    std::error_code error;
    if (path.empty() || fs::symlink_status(path, error).type() == fs::file_type::not_found) return;
    const std::string reason = Commons::ReasonNotToOpen(path);
    if (!reason.empty())
        findings.push_back(WholeFileFinding("TV6012", path, "the parameters file cannot be read: " + reason));
}

} // namespace TavrelChecking
