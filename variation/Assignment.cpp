#include <variation/Assignment.h>

namespace TavrelVariation {

const char* WordOf(ValueType type) {
    constexpr const char* kWords[] = {"boolean", "integer", "real", "literal"};
    return kWords[static_cast<std::size_t>(type)];
}

AssignmentText ReadAssignment(const std::string& text) {
    // Ids hold "=" in their brackets, and brackets within brackets.
    std::size_t depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '[') ++depth;
        if (text[at] == ']' && depth > 0) --depth;
        if (text[at] != '=' || depth > 0) continue;
        if (at == 0) throw AssignmentError("\"" + text + "\" has no name before its \"=\"");
        return {text.substr(0, at), text.substr(at + 1)};
    }
    throw AssignmentError("an assignment is written NAME=VALUE, not \"" + text + "\"");
}

} // namespace TavrelVariation
