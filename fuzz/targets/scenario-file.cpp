// A scenario file: loaded, saved untouched, walked, edited, saved and loaded again.

#include <vector>

#include <environment/Environment.h>

#include "../Support.h"

namespace {

void DumpText(std::string& out, const char* key, const std::string& text) {
    out.append(key).append("=").append(std::to_string(text.size())).append(":").append(text).append("\n");
}

template <class Number>
void DumpNumber(std::string& out, const char* key, Number number) {
    out.append(key).append("=").append(std::to_string(number)).append("\n");
}

void DumpFields(std::string& out, cfg::Section& section) {
    if (auto* scenario = dynamic_cast<cfg::Scenario*>(&section)) {
        DumpText(out, "name", scenario->name);
        DumpText(out, "description", scenario->description);
    } else if (auto* script = dynamic_cast<cfg::ScenarioScript*>(&section)) {
        DumpText(out, "scriptName", script->name);
        DumpText(out, "scriptType", script->scriptType);
        DumpText(out, "text", script->text);
    } else if (auto* variadic = dynamic_cast<cfg::VariadicParameter*>(&section)) {
        DumpText(out, "name", variadic->name);
        DumpText(out, "description", variadic->description);
        DumpText(out, "parameterId", variadic->parameterId);
        DumpText(out, "parameterUnit", variadic->parameterUnit);
    } else if (auto* real = dynamic_cast<cfg::RealParameter*>(&section)) {
        DumpNumber(out, "default", real->defaultValue);
    } else if (auto* range = dynamic_cast<cfg::RealRange*>(&section)) {
        DumpNumber(out, "minimum", range->minimum);
        DumpNumber(out, "maximum", range->maximum);
    } else if (auto* literal = dynamic_cast<cfg::LiteralParameter*>(&section)) {
        DumpText(out, "default", literal->defaultValue);
    }
}

// Everything that a host can read from the tree.
void Dump(std::string& out, cfg::Section& section) {
    DumpText(out, "section", section.getName());
    DumpFields(out, section);
    for (auto at = section.beginParameter(); at != section.endParameter(); ++at) {
        DumpText(out, "parameter", at.getCName());
        DumpText(out, "verbose", at.getVerboseName());
        DumpNumber(out, "type", static_cast<int>(at.getType()));
        DumpText(out, "unit", lmk::toText(at.getUnit()));
        switch (at.getType()) {
        case cfg::t_ParameterTypeBoolean:
            DumpNumber(out, "value", static_cast<int>(at.getBool()));
            break;
        case cfg::t_ParameterTypeInteger:
            DumpNumber(out, "value", at.getInt());
            break;
        case cfg::t_ParameterTypeReal:
            DumpNumber(out, "value", at.getDouble());
            break;
        default:
            DumpText(out, "value", at.getString());
            break;
        }
    }
    for (std::size_t i = 0; i < section.getSubSectionCount(); ++i) {
        cfg::Section* child = section.getSubSection(i);
        Demand(child && child->getParentSection() == &section, "a sub-section knows its parent");
        Dump(out, *child);
    }
    out += "end\n";
}

std::string DumpOf(cfg::CfgScenario& scenario) {
    std::string out;
    Dump(out, *scenario.getRootSection());
    return out;
}

bool Load(cfg::CfgScenario& scenario, const std::string& path) {
    return scenario.load(path.c_str(), Commons::Encoding::ModeUtf8, nullptr, nullptr, false, false, false);
}

bool Save(cfg::CfgScenario& scenario, const std::string& path) {
    return scenario.save(path.c_str(), Commons::Encoding::ModeUtf8, false);
}

// The edits of a host, at places and with texts that the file itself supplies.
void Edit(cfg::Section& section, const std::string& salt, std::size_t& turn) {
    const auto pick = [&](std::size_t choices) {
        const auto byte = salt.empty() ? 0U : static_cast<unsigned char>(salt[turn % salt.size()]);
        ++turn;
        return byte % choices;
    };
    for (auto at = section.beginParameter(); at != section.endParameter(); ++at) {
        switch (pick(4)) {
        case 0:
            at.getInt() += 1;
            break;
        case 1:
            at.getDouble() = -0.1 * at.getDouble();
            break;
        case 2:
            at.getBool() = !at.getBool();
            break;
        default:
            at.getString() += salt.substr(turn % (salt.size() + 1), 3);
            break;
        }
    }
    std::vector<cfg::Section*> children;
    for (std::size_t i = 0; i < section.getSubSectionCount(); ++i) children.push_back(section.getSubSection(i));
    for (cfg::Section* child : children) {
        Edit(*child, salt, turn);
        if (pick(5) == 0) section.removeSubSection(child);
    }
    constexpr const char* kNames[] = {"Vehicle", "VariadicParameter", "RealParameter", "RealRange", "LiteralRange",
                                      "name",    "Weather",           "no element"};
    if (pick(3) == 0) section.createSubSection(kNames[pick(std::size(kNames))]);
    if (pick(7) == 0) section.removeSubSections(kNames[pick(std::size(kNames))]);
    if (auto* scenario = dynamic_cast<cfg::Scenario*>(&section)) {
        scenario->description = salt.substr(turn % (salt.size() + 1), 40);
    } else if (auto* script = dynamic_cast<cfg::ScenarioScript*>(&section)) {
        if (pick(2) == 0) script->text += "\r\n\t]]>" + salt.substr(turn % (salt.size() + 1), 4);
    } else if (auto* variadic = dynamic_cast<cfg::VariadicParameter*>(&section)) {
        variadic->parameterId += "<&\"";
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Workplace place;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string path = place.Write("in.sce", bytes);
    const std::string saved = place.Path("out.sce");

    cfg::CfgScenario scenario;
    const bool loaded = Load(scenario, path);
    Demand(loaded == scenario.errorMessage.empty(), "a failed load has a reason, any other none",
           scenario.errorMessage);
    const std::string before = DumpOf(scenario);
    if (!loaded) {
        Demand(scenario.getRootSection()->getSubSectionCount() == 0, "a failed load leaves an empty root");
        Demand(!Save(scenario, path), "what could not be understood is not saved over");
        Demand(place.Read("in.sce") == bytes, "a refused save leaves the file alone");
        return 0;
    }

    Demand(Save(scenario, saved), "an untouched scenario can be saved", scenario.errorMessage);
    Demand(place.Read("out.sce") == bytes, "an untouched scenario is saved as it was", place.Read("out.sce"));

    std::size_t turn = 0;
    Edit(*scenario.getRootSection(), bytes.substr(0, 4096), turn);
    const std::string edited = DumpOf(scenario);
    if (!Save(scenario, saved)) {
        Demand(!scenario.errorMessage.empty(), "a failed save has a reason");
        Demand(place.Read("out.sce") == bytes, "a failed save leaves the file as it was");
        return 0;
    }
    cfg::CfgScenario again;
    Demand(Load(again, saved), "what was saved can be loaded", again.errorMessage + "\n" + place.Read("out.sce"));
    const std::string after = DumpOf(again);
    Demand(after == edited, "what was saved comes back", edited + "---\n" + after + "---\n" + place.Read("out.sce"));
    return 0;
}
