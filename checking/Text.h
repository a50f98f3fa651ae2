#ifndef CHECKING_TEXT_H
#define CHECKING_TEXT_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <Commons/TextPlaces.h>
#include <cfg/ScenarioText.h>
#include <checking/Finding.h>

#include "MendedXml.h"

namespace TavrelChecking {

// Rows and columns, which are counted when one of them is asked for: a text without a fault needs none.
class PlacesOnDemand {
public:
    // The text is borrowed and must outlive this object.
    explicit PlacesOnDemand(std::string_view wholeText) : text(wholeText) {}
    const Commons::TextPlaces* operator->() const { return counted ? &*counted : &counted.emplace(text); }

private:
    std::string_view text;
    mutable std::optional<Commons::TextPlaces> counted;
};

// The bytes of a file with its rows and columns.
struct FileBytes {
    FileBytes(std::string filePath, std::string fileBytes)
        : path(std::move(filePath)), bytes(std::move(fileBytes)), places(bytes) {}
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    Span SpanOf(std::size_t begin, std::size_t end) const;

    const std::string path;
    const std::string bytes;
    const PlacesOnDemand places;
};

// A text of the item model with its place in a file: a file of its own, or a script in a scenario file. Positions are
// bytes of the text as its reader gets it.
class Text {
public:
    // A file as a whole.
    explicit Text(std::shared_ptr<const FileBytes> wholeFile);
    // A script of a scenario file; of the mended copy of one that is no XML.
    Text(std::shared_ptr<const FileBytes> scenarioFile, cfg::WrittenText written, std::string scriptName,
         std::shared_ptr<const MendedXml> mendedFile = nullptr);
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    std::string_view View() const { return view; }
    std::size_t End() const { return view.size(); }
    const FileBytes& File() const { return *file; }
    bool IsScript() const { return places.has_value(); }
    const std::string& ScriptName() const { return scriptName; }

    // The byte of the text that stands at a byte of the file, or of its mended copy; none if it lies outside.
    std::optional<std::size_t> InText(std::size_t position) const;

    // A finding with all that follows from its place: file, span, script and line.
    Finding FindingAt(std::size_t begin, std::size_t end) const;
    // The same with the rule, and what the rule says by itself.
    Finding FindingAt(const char* rule, std::size_t begin, std::size_t end, std::string message) const;
    Span SpanOf(std::size_t begin, std::size_t end) const;
    // The row of a byte in the text itself.
    std::uint32_t RowOf(std::size_t position) const;
    // A change of that part, as the file needs it. False if it cannot be written there.
    bool EditOf(std::size_t begin, std::size_t end, std::string_view replacement, Edit& edit) const;

private:
    std::pair<std::size_t, std::size_t> InFile(std::size_t begin, std::size_t end) const;

    std::shared_ptr<const FileBytes> file;
    std::shared_ptr<const MendedXml> mended; // the file that `written` stands in; null where that is the file itself
    cfg::WrittenText written;
    std::string scriptName;
    std::string_view view;
    std::optional<PlacesOnDemand> places; // of a script; none of a whole file
};

} // namespace TavrelChecking

#endif
