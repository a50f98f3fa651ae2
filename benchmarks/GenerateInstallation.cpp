#include "GenerateInstallation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// Spelled out, since the distributions of the standard library differ between its makers. SplitMix64.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    std::uint64_t next() {
        state += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : static_cast<std::size_t>(next() % bound); }

private:
    std::uint64_t state;
};

// Tenths are all the fraction that the files need, and they print alike everywhere.
std::string tenths(std::uint64_t value) { return std::to_string(value / 10) + "." + std::to_string(value % 10); }

void write(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) throw std::runtime_error("Cannot write " + path.string());
}

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

// Items in the form that the library writes.
class ItemText {
public:
    void open(std::string_view keyword, std::string_view name) {
        text += '\n';
        line("TYPEOF ").append(keyword).append(" (").append(name).append(")\n");
        line("{\n");
        ++depth;
    }
    void attribute(std::string_view key, std::string_view value) {
        line("").append(key).append("=\"").append(value).append("\"\n");
    }
    void close() {
        --depth;
        line("}\n");
    }
    std::string take() { return std::move(text); }

private:
    std::string& line(std::string_view begin) { return text.append(depth, '\t').append(begin); }

    std::string text;
    std::size_t depth = 0;
};

// How many definitions each list gets. Two parameters stand under every callable, so a model of less than eight
// definitions has none.
struct Shares {
    explicit Shares(std::size_t definitions)
        : parameters(definitions / 2), functions(definitions / 8), conditions(definitions / 8),
          actions(definitions < 8 ? 0 : definitions - parameters - functions - conditions) {
        if (definitions < 8) parameters = 0;
    }

    std::size_t parameters;
    std::size_t functions;
    std::size_t conditions;
    std::size_t actions;
};

std::string parameterName(std::size_t number) { return "parameter" + std::to_string(number); }

// The parameters of a callable, the same in the model and in every script.
std::array<std::string, 2> parametersOf(std::string_view keyword, std::size_t number, const Shares& shares) {
    Random random(keyword.size() * 1000003U + number);
    const std::size_t first = random.below(shares.parameters);
    return {parameterName(first), parameterName((first + 1) % shares.parameters)};
}

void addInstance(ItemText& out, const std::string& name, const std::string& kind, const std::string& value) {
    out.open("PARAMETER", name);
    out.attribute("KIND", kind);
    out.attribute("VALUE", value);
    out.attribute("OWNER_FILE", "");
    out.close();
}

void addList(ItemText& out, std::string_view list, std::string_view keyword, std::string_view prefix, std::size_t count,
             const Shares& shares) {
    out.open("FOLDER", list);
    out.attribute("LABEL", list);
    for (std::size_t i = 0; i < count; ++i) {
        out.open(keyword, std::string(prefix) + std::to_string(i));
        out.attribute("LABEL", std::string("Does what is number ") + std::to_string(i));
        out.attribute("CODE", std::to_string(i));
        for (const std::string& name : parametersOf(keyword, i, shares)) addInstance(out, name, "USER", "1");
        out.close();
    }
    out.close();
}

void addCall(ItemText& out, std::string_view keyword, std::string_view prefix, std::size_t number, const Shares& shares,
             const InstallationSize& size, Random& random) {
    const std::string_view definition = keyword == "ELSE_ACTION" ? "ACTION" : keyword;
    out.open(keyword, std::string(prefix) + std::to_string(number));
    for (const std::string& name : parametersOf(definition, number, shares)) {
        if (size.variablesPerScript > 0 && random.below(4) == 0)
            addInstance(out, name, "VARIABLE", std::to_string(1 + random.below(size.variablesPerScript)));
        else
            addInstance(out, name, "USER", tenths(random.below(1000)));
    }
    out.close();
}

std::string parameter(std::string_view name, std::string_view type, std::string_view unit, std::string_view verbose,
                      std::string_view value) {
    std::string out = "      <";
    out.append(name).append(" type=\"").append(type);
    if (!unit.empty()) out.append("\" unit=\"").append(unit);
    out.append("\" verboseName=\"").append(verbose).append("\" ScenarioTreeValue=\"").append(value).append("\"/>\n");
    return out;
}

std::string vehicle(std::size_t id, Random& random) {
    static constexpr std::array<const char*, 5> kModels = {"car_small", "car_estate", "truck_18t", "bus_city",
                                                           "motorbike"};
    const std::string number = std::to_string(id);
    std::string out = "    <Vehicle>\n      <id ScenarioTreeValue=\"" + number +
                      "\"/>\n      <driverId ScenarioTreeValue=\"" + number +
                      "\"/>\n      <name ScenarioTreeValue=\"Vehicle " + number + "\"/>\n";
    out += parameter("model", "string", "", "Model", kModels[random.below(kModels.size())]);
    out += parameter("initialSpeed", "real", "km/h", "Initial speed", tenths(random.below(400)));
    out += parameter("roadPosition", "real", "m", "Position along the road", tenths(random.below(100000)));
    out += parameter("lane", "integer", "", "Lane", std::to_string(1 + random.below(3)));
    out += parameter("heading", "real", "deg", "Heading", tenths(random.below(62)));
    out += parameter("length", "real", "m", "Length", tenths(30 + random.below(150)));
    out += parameter("mass", "integer", "kg", "Mass", std::to_string(700 + random.below(30000)));
    out += parameter("lights", "boolean", "", "Lights on", random.below(2) == 0 ? "false" : "true");
    return out + "    </Vehicle>\n";
}

std::string driver(std::size_t id) {
    const std::string number = std::to_string(id);
    return "    <Driver>\n      <id ScenarioTreeValue=\"" + number + "\"/>\n      <name ScenarioTreeValue=\"Driver " +
           number + "\"/>\n      <label ScenarioTreeValue=\"D" + number + "\"/>\n    </Driver>\n";
}

// The folder of a scenario: a walk down the levels that its number decides.
std::filesystem::path folderOf(const InstallationSize& size, std::size_t number) {
    Random random(size.seed * 7919U + number);
    std::filesystem::path folder;
    const std::size_t depth = random.below(size.folderDepth + 1);
    for (std::size_t i = 0; i < depth; ++i) folder /= "folder " + std::to_string(random.below(size.foldersPerLevel));
    return folder;
}

} // namespace

std::string generateModel(const InstallationSize& size) {
    const Shares shares(size.modelDefinitions);
    ItemText out;
    out.open("FOLDER", "nuro");
    out.attribute("LABEL", "Generated");
    out.open("FOLDER", "ENUMTAB_LIST");
    out.close();
    out.open("FOLDER", "PARAMETER_LIST");
    out.attribute("LABEL", "Parameters");
    for (std::size_t i = 0; i < shares.parameters; ++i) {
        out.open("PARAMETER", parameterName(i));
        out.attribute("LABEL", "Parameter number " + std::to_string(i));
        out.attribute("UNIT", "m/s");
        out.attribute("TYPE", "FLOAT");
        out.attribute("USAGE", "BY_VALUE");
        out.attribute("KINDLIST", "USER VARIABLE FUNCTION");
        out.attribute("MINVALUE", "0");
        out.attribute("MAXVALUE", "100");
        out.close();
    }
    out.close();
    addList(out, "FUNCTION_LIST", "FUNCTION", "function", shares.functions, shares);
    addList(out, "CONDITION_LIST", "CONDITION", "condition", shares.conditions, shares);
    addList(out, "ACTION_LIST", "ACTION", "action", shares.actions, shares);
    out.close();
    return out.take();
}

std::string generateScript(const InstallationSize& size, std::uint64_t number) {
    const Shares shares(size.modelDefinitions);
    if (size.rulesPerScript > 0 && shares.conditions == 0)
        throw std::runtime_error("A script with rules needs a model with conditions");
    Random random(size.seed * 104729U + number);
    ItemText out;
    out.open("SCENARIO", "1");
    out.attribute("LABEL", "Script " + std::to_string(number));
    out.attribute("TASK_KIND", "0");
    for (std::size_t i = 1; i <= size.variablesPerScript; ++i) {
        out.open("VARIABLE", std::to_string(i));
        out.attribute("LABEL", "Variable number " + std::to_string(i));
        out.attribute("TYPE", "FLOAT");
        out.attribute("VALUE", tenths(random.below(1000)));
        out.attribute("INTERACTIVE_TYPE", "FLOAT");
        out.attribute("CATEGORY", "GENERATED");
        out.close();
    }
    for (std::size_t i = 1; i <= size.rulesPerScript; ++i) {
        out.open("RULE", std::to_string(i));
        out.attribute("LABEL", "Rule number " + std::to_string(i));
        addCall(out, "CONDITION", "condition", random.below(shares.conditions), shares, size, random);
        addCall(out, "ACTION", "action", random.below(shares.actions), shares, size, random);
        if (random.below(3) == 0)
            addCall(out, "ELSE_ACTION", "action", random.below(shares.actions), shares, size, random);
        out.close();
    }
    out.close();
    return out.take();
}

std::string generateScenario(const InstallationSize& size, std::uint64_t number) {
    Random random(size.seed * 15485863U + number);
    const std::string name = "Scenario " + std::to_string(number);
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<sce version=\"1\">\n  <Scenario>\n    <name>" +
                      name + "</name>\n    <description>Generated, " + std::to_string(size.vehiclesPerScenario) +
                      " vehicles</description>\n    <Weather>\n";
    out += parameter("fog", "boolean", "", "Fog", random.below(2) == 0 ? "false" : "true");
    out += parameter("visibility", "real", "m", "Visibility", tenths(random.below(100000)));
    out += "    </Weather>\n";
    for (std::size_t i = 0; i < size.vehiclesPerScenario; ++i) out += vehicle(i, random);
    for (std::size_t i = 0; i < size.vehiclesPerScenario; ++i) out += driver(i);
    for (std::size_t i = 0; i < size.scriptsPerScenario; ++i) {
        out += "    <ScenarioScript>\n      <scriptName>script " + std::to_string(i) +
               "</scriptName>\n      <scriptType>nuro</scriptType>\n      <text>";
        out += escaped(generateScript(size, number * 1000 + i));
        out += "</text>\n    </ScenarioScript>\n";
    }
    if (size.vehiclesPerScenario > 0) {
        out += "    <VariadicParameter>\n      <name>Speed</name>\n      <description>Speed of the first vehicle"
               "</description>\n      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=0]/initialSpeed"
               "</parameterId>\n      <parameterUnit>km/h</parameterUnit>\n      <RealParameter>\n"
               "        <default>50</default>\n        <RealRange>\n          <minimum>30</minimum>\n"
               "          <maximum>70</maximum>\n        </RealRange>\n      </RealParameter>\n"
               "    </VariadicParameter>\n";
    }
    return out + "  </Scenario>\n</sce>\n";
}

std::filesystem::path generateInstallation(const std::filesystem::path& folder, const InstallationSize& size) {
    const std::string model = generateModel(size);
    std::string installation = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tavrel>\n";
    for (std::size_t c = 0; c < size.configurations; ++c) {
        const std::string number = std::to_string(c);
        installation +=
            "  <configuration name=\"Configuration " + number + "\" path=\"configurations/" + number + "\"/>\n";
        write(folder / "configurations" / number / "configuration.xml",
              "<configuration version=\"1." + number + "\">\n  <dataPath>\n    <root>../../packs/" + number +
                  "</root>\n  </dataPath>\n</configuration>\n");
        const std::filesystem::path data = folder / "packs" / number / "data";
        write(data / "tools" / "nuro" / "nuro.mdl", model);
        std::filesystem::create_directories(data / "scenario");
        for (std::size_t s = 0; s < size.scenarios; ++s)
            write(data / "scenario" / folderOf(size, s) / ("Scenario " + std::to_string(s) + ".sce"),
                  generateScenario(size, c * size.scenarios + s));
    }
    const std::filesystem::path file = folder / "tavrel.xml";
    write(file, installation + "</tavrel>\n");
    return file;
}

std::string asXml(const std::string& itemText) {
    std::string out;
    std::vector<std::string> open; // element names
    bool tagOpen = false;          // attributes may still be added to the last element
    std::size_t begin = 0;
    while (begin < itemText.size()) {
        const std::size_t end = std::min(itemText.find('\n', begin), itemText.size());
        const std::string_view line(itemText.data() + begin, end - begin);
        begin = end + 1;
        const std::size_t first = line.find_first_not_of('\t');
        if (first == std::string_view::npos) continue;
        const std::string_view word = line.substr(first);
        if (word.starts_with("TYPEOF ")) {
            if (tagOpen) out += ">\n";
            const std::string_view header = word.substr(7);
            const std::size_t blank = header.find(' ');
            open.emplace_back(header.substr(0, blank));
            out.append(line.substr(0, first)).append("<").append(open.back());
            if (blank != std::string_view::npos)
                out.append(" name=\"")
                    .append(escaped(header.substr(blank + 2, header.size() - blank - 3)))
                    .append("\"");
            tagOpen = true;
        } else if (word == "}") {
            if (tagOpen)
                out += "/>\n";
            else
                out.append(line.substr(0, first)).append("</").append(open.back()).append(">\n");
            open.pop_back();
            tagOpen = false;
        } else if (word != "{") {
            const std::size_t equals = word.find('=');
            const std::string_view value = word.substr(equals + 2, word.size() - equals - 3);
            out.append(" ").append(word.substr(0, equals)).append("=\"").append(escaped(value)).append("\"");
        }
    }
    return out;
}
