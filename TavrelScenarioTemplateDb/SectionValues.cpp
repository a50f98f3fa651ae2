#include <TavrelScenarioTemplateDb/SectionValues.h>

#include <charconv>

#include <cfg/Section.h>

namespace TavrelScenarioTemplateDb {

namespace {

// The parameter of that name, or the position after the last one.
cfg::Section::ParameterIterator find(cfg::Section& section, const std::string& name) {
    auto parameter = section.beginParameter();
    while (parameter != section.endParameter() && parameter.getCName() != name) ++parameter;
    return parameter;
}

} // namespace

double leadingNumber(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t\n\r\f\v+");
    double number = 0;
    if (begin != std::string::npos) std::from_chars(text.data() + begin, text.data() + text.size(), number);
    return number;
}

double numberOf(cfg::Section* section, const std::string& name, double fallback) {
    if (!section) return fallback;
    auto parameter = find(*section, name);
    if (parameter == section->endParameter()) return fallback;
    switch (parameter.getType()) {
    case cfg::t_ParameterTypeBoolean:
        return parameter.getBool() ? 1 : 0;
    case cfg::t_ParameterTypeInteger:
        return parameter.getInt();
    case cfg::t_ParameterTypeReal:
        return parameter.getDouble();
    default:
        return leadingNumber(parameter.getString());
    }
}

std::string textOf(cfg::Section* section, const std::string& name) {
    if (!section) return "";
    auto parameter = find(*section, name);
    return parameter == section->endParameter() ? "" : parameter.getString();
}

} // namespace TavrelScenarioTemplateDb
