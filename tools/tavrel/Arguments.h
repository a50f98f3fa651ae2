#ifndef TAVREL_COMMAND_ARGUMENTS_H
#define TAVREL_COMMAND_ARGUMENTS_H

#include <map>
#include <string>
#include <vector>

namespace tavrel {

struct CommandRow;

// What the user wrote, by the names of the option table ("--json", "SCENARIO"). A flag that was given has an empty
// value.
class Arguments {
public:
    const CommandRow* command = nullptr; // the sub-command, a row of the table

    bool Has(const std::string& name) const { return values.count(name) != 0; }
    // The value, the last one of several, or `fallback` if the option is absent.
    std::string Text(const std::string& name, const std::string& fallback = "") const;
    std::vector<std::string> Texts(const std::string& name) const;
    // The value as a number, in the same spelling under any locale. Fails with a Failure if it is none.
    double Number(const std::string& name, double fallback) const;
    std::size_t Index(const std::string& name) const;

    std::map<std::string, std::vector<std::string>> values;
};

// Reads the whole of `text` as a number; false if it is none.
bool ReadNumber(const std::string& text, double& number);
bool ReadNumber(const std::string& text, int& number);

} // namespace tavrel

#endif
