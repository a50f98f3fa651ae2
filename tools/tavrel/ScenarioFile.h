#ifndef TAVREL_COMMAND_SCENARIOFILE_H
#define TAVREL_COMMAND_SCENARIOFILE_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <Commons/TextPlaces.h>
#include <cfg/ScenarioText.h>

#include "ScriptTree.h"

namespace tavrel {

// A scenario file as it is written, with rows: for those who compare, search or format many files and need neither the
// root model nor a template of the library.

struct FileParameter {
    std::string id;       // as the library forms it, "/sce/Scenario/Road/length"
    std::string name;     // of its element, or the label of a script's variable
    std::string longName; // verboseName
    std::string type;     // the word of the file, "string" without one
    std::string unit;
    std::string value; // in that unit; numbers in their shortest spelling
    std::uint32_t row;
};

struct FileDeclaration {
    std::string name;
    std::string description;
    std::string parameterId;
    std::string domain; // "real, km/h, default 80, 60 to 90"
    std::uint32_t row;
};

struct FileScript {
    std::string name;
    cfg::WrittenText text;
};

// The scripts of a scenario file that the item model reads, in the order of the file, vehicles' scripts included.
std::vector<FileScript> ScriptsIn(const cfg::ScenarioText& text);

class ScenarioFile {
public:
    // Fails with a Failure of ExitUnreadable for a file that the library does not load.
    explicit ScenarioFile(const std::string& filePath);

    const std::string& Path() const { return path; }
    const std::string& Bytes() const { return text->Bytes(); }
    std::string Name() const;
    std::string Description() const;
    // In the order of the file; without the variables of scripts.
    std::vector<FileParameter> Parameters() const;
    std::vector<FileDeclaration> Declarations() const;
    std::vector<FileScript> Scripts() const { return ScriptsIn(*text); }
    // The rows of the file in which the rows of a script begin; the first row of the script has the index 0.
    std::vector<std::uint32_t> RowsOf(const FileScript& script) const;

private:
    using Element = cfg::ScenarioText::Element;

    const Element* Root() const;
    std::string TextBelow(const Element& element, const char* name) const;
    std::string ValueOf(const Element& parent, const char* name) const;
    std::string IdOf(const Element& element, const std::string& parentId) const;
    void AddParameters(const Element& element, const std::string& id, std::vector<FileParameter>& out) const;
    std::string DomainOf(const Element& declaration) const;
    std::uint32_t RowAt(std::size_t position) const { return places->PlaceOf(position).row; }

    std::string path;
    std::unique_ptr<cfg::ScenarioText> text;
    std::unique_ptr<Commons::TextPlaces> places;
};

// The variables that a script shows to hosts as parameters; `base` is the id of the script. Rows are those of the
// script.
std::vector<FileParameter> VariablesOf(const TextItem& script, const std::string& base);

} // namespace tavrel

#endif
