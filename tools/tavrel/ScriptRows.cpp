#include "ScriptRows.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <scenario/include.h>

#include "Failure.h"
#include "Files.h"

namespace tavrel {

namespace {

// Parameters of a call are told apart by their names, since older calls are brought up to their definition; all else
// stands in the order of the text, kind by kind.
const TextItem* Counterpart(const ScenarioItem& item, const TextItem& parent,
                            std::map<std::string, std::size_t>& taken) {
    const std::string kind = KindKeyword(item.kind);
    const std::size_t wanted = item.kind == KindParameter ? 0 : taken[kind]++;
    std::size_t number = 0;
    for (const TextItem& child : parent.children) {
        if (child.kind != kind || (item.kind == KindParameter && child.name != item.name)) continue;
        if (number++ == wanted) return &child;
    }
    return nullptr;
}

} // namespace

ScriptRows::ScriptRows(const ScenarioItem& root, const std::string& text, const std::string& file,
                       const std::function<std::uint32_t(std::uint32_t)>& rowInFile) {
    sources.push_back(std::make_unique<Source>(Source{file, rowInFile, ReadTextTree(text, file)}));
    Match(root, sources.front()->top, *sources.front());
}

ScriptRows::Place ScriptRows::Of(const ScenarioItem& item, const char* key) const {
    const auto found = entries.find(&item);
    if (found == entries.end()) return item.parent ? Place{Of(*item.parent).file, 0} : Place{};
    const Source& source = *found->second.source;
    return {source.file, source.rowInFile(found->second.text->RowOf(key))};
}

void ScriptRows::Match(const ScenarioItem& item, const TextItem& text, const Source& source) {
    entries[&item] = {&source, &text};
    const auto* include = dynamic_cast<const Include*>(&item);
    if (!include || !include->IsIndexEntry()) return MatchChildren(item, text, source);
    if (const Source* own = SourceOf(include->resolvedPath)) MatchChildren(item, own->top, *own);
}

void ScriptRows::MatchChildren(const ScenarioItem& item, const TextItem& text, const Source& source) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    std::map<std::string, std::size_t> taken;
    for (const ScenarioItem* child : children)
        if (const TextItem* counterpart = Counterpart(*child, text, taken)) Match(*child, *counterpart, source);
}

const ScriptRows::Source* ScriptRows::SourceOf(const std::string& file) {
    std::string path = file;
    std::replace(path.begin(), path.end(), '\\', '/');
    for (const auto& source : sources)
        if (source->file == path) return source.get();
    if (!ReasonNotToOpen(path).empty()) return nullptr;
    std::ifstream bytes(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(bytes), {}};
    try {
        sources.push_back(
            std::make_unique<Source>(Source{path, [](std::uint32_t row) { return row; }, ReadTextTree(text, path)}));
    } catch (const Failure&) {
        return nullptr; // the library may read from it what this does not
    }
    return sources.back().get();
}

} // namespace tavrel
