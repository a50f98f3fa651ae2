#ifndef TAVREL_VARIATION_PLANFILE_H
#define TAVREL_VARIATION_PLANFILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <variation/Distribution.h>
#include <variation/Export.h>

namespace TavrelVariation {

enum class MethodKind { Defaults, OneAtATime, Boundary, Grid, List, Random, LatinHypercube, Sobol, Cover };

// "defaults", "one-at-a-time", "boundary", "grid", "list", "random", "latin-hypercube", "sobol", "cover"
TAVREL_VARIATION_API const char* WordOf(MethodKind kind);

// A plan as its file says it, every member with the default where the file leaves it out. Nothing is known of a
// scenario yet: names and values are texts. docs/plan-format.md explains the members.
struct TAVREL_VARIATION_API PlanFile {
    // Names with values, in the order of the file.
    using Row = std::vector<std::pair<std::string, std::string>>;

    struct Run {
        double from = 0;             // s
        std::optional<double> until; // s; none: as long as a run is without it
        double step = 0.1;           // s
    };
    struct Method {
        MethodKind kind = MethodKind::Defaults;
        std::uint64_t count = 0;              // Random, LatinHypercube, Sobol
        int strength = 0;                     // Cover
        int effort = 1;                       // Cover
        std::optional<std::vector<Row>> rows; // List
    };
    struct Element {
        std::string value;
        double weight = 0;
    };
    struct Sampling {
        Distribution distribution;
        std::vector<Element> elements; // of a ProbabilitySet
    };
    struct Parameter {
        std::string name;
        std::optional<std::vector<std::string>> values;
        std::optional<std::pair<std::string, std::string>> range;
        std::optional<std::string> step;
        std::optional<std::uint64_t> count;
        std::optional<int> decimals;
        std::optional<Sampling> distribution;
    };
    struct Linked {
        std::vector<std::string> parameters;
        std::vector<std::vector<std::string>> rows;
    };

    std::string scenario;
    std::optional<std::string> configuration;
    std::optional<std::string> script;
    Run run;
    std::uint64_t seed = 0;
    Method method;
    std::optional<std::vector<Parameter>> parameters; // none: all declarations
    std::vector<Linked> linked;
    std::vector<std::string> constraints;
    std::vector<Row> include;
    std::uint64_t repetitions = 1;
    std::vector<std::string> criteria;

    // Reads the text of a plan file. Throws Refused for a text that is no JSON (with line and column) and for members
    // that are unknown, missing, there twice, of the wrong type or out of bounds.
    static PlanFile Read(const std::string& text);

    // The plan as JSON with every default filled in: indented, one line end at the end. Reading it gives the same plan.
    std::string Text() const;
};

// The JSON schema of a plan file, one line end at the end.
TAVREL_VARIATION_API const char* PlanSchema();

} // namespace TavrelVariation

#endif
