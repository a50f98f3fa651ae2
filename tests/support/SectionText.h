#ifndef SUPPORT_SECTIONTEXT_H
#define SUPPORT_SECTIONTEXT_H

#include <string>

// A section of a scenario file, put together from its parts in their order. Only this and InstallationBuilder know how
// the environment writes things down.
class SectionText {
public:
    explicit SectionText(std::string name);

    // `type` is a word of the file format, empty to leave it out; the value is in SI units and escaped here.
    SectionText& parameter(const std::string& name, const std::string& value, const std::string& type = "",
                           const std::string& unit = "", const std::string& verboseName = "");
    // A text field of the section's class.
    SectionText& text(const std::string& name, const std::string& value);
    SectionText& section(const SectionText& subSection);
    SectionText& script(const std::string& scriptName, const std::string& scriptText);

    // As an element, its lines indented by that many steps.
    std::string element(size_t depth) const;
    // As the root section of a whole file.
    std::string file() const;

private:
    SectionText& line(const std::string& element);

    std::string name;
    std::string content; // a line per part, without indentation
};

#endif
