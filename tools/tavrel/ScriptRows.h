#ifndef TAVREL_COMMAND_SCRIPTROWS_H
#define TAVREL_COMMAND_SCRIPTROWS_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <scenario/ItemModel.h>

#include "ScriptTree.h"

namespace tavrel {

// Where the items of a script that was read stand: an item itself does not know. An include that refers to a file
// holds items of that file.
class ScriptRows {
public:
    struct Place {
        std::string file;
        std::uint32_t row =
            0; // of the file; 0 for an item that no text has, such as a parameter that was added to a call
    };

    // `text` is what `root` was read from; `rowInFile` gives the row of `file` for one of the text.
    ScriptRows(const ScenarioItem& root, const std::string& text, const std::string& file,
               const std::function<std::uint32_t(std::uint32_t)>& rowInFile);

    // Of its header, or of the attribute `key` if it has one.
    Place Of(const ScenarioItem& item, const char* key = "") const;

private:
    using RowOf = std::function<std::uint32_t(std::uint32_t)>;
    struct Source {
        std::string file;
        RowOf rowInFile;
        TextItem top;
    };
    struct Entry {
        const Source* source;
        const TextItem* text;
    };

    void Match(const ScenarioItem& item, const TextItem& text, const Source& source);
    void MatchChildren(const ScenarioItem& item, const TextItem& text, const Source& source);
    const Source* SourceOf(const std::string& file);

    std::vector<std::unique_ptr<Source>> sources;
    std::map<const ScenarioItem*, Entry> entries;
};

} // namespace tavrel

#endif
