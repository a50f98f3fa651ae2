#include <variation/Bisection.h>

#include <map>
#include <utility>
#include <vector>

#include <scenario/NearestName.h>
#include <variation/CampaignError.h>
#include <variation/Domain.h>
#include <variation/Refused.h>

namespace TavrelVariation {

namespace {

using TavrelSimulation::Verdict;

std::size_t ParameterOf(const Plan& plan, const std::string& name) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < plan.Parameters().size(); ++i) {
        const PlannedParameter& parameter = plan.Parameters()[i];
        if (parameter.name == name || parameter.id == name) return i;
        names.push_back(parameter.name);
    }
    const std::string nearest = NearestName(name, names);
    throw Refused("parameter", "the plan has no parameter \"" + name + "\"" +
                                   (nearest.empty() ? "" : ", did you mean \"" + nearest + "\""));
}

constexpr int kDecimals = 3; // of reals, as for those that are sampled

bool HasDecimals(const Plan& plan, const std::string& name) {
    if (!plan.File().parameters) return false;
    for (const PlanFile::Parameter& parameter : *plan.File().parameters)
        if (parameter.name == name) return parameter.decimals.has_value();
    return false;
}

// The same numbers, of reals with as many decimals as a search needs, unless the plan says how many they have.
NumberDomain Refined(const NumberDomain& domain, bool asItIs, int decimals) {
    if (domain.IsWhole() || asItIs || domain.Decimals() >= decimals) return domain;
    std::vector<NumberRange> ranges;
    for (const NumberDomain::Range& range : domain.Ranges())
        ranges.push_back({domain.At(range.minimum), domain.At(range.maximum)});
    return {ranges, false, decimals};
}

// A bracket that cannot be as wide as the tolerance would take more runs than that needs.
int DecimalsOf(const std::string& tolerance) { return Decimal::Read(Decimal::Read(tolerance).Text()).decimals; }

// The tolerance in units of the domain's last decimal.
std::int64_t UnitsOf(const std::string& tolerance, const NumberDomain& domain) {
    try {
        const Decimal number = Decimal::Read(tolerance);
        const Decimal least = domain.At(1);
        if (number < least)
            throw Refused("tolerance", tolerance + " is below " + least.Text() + ", the last decimal of the values");
        const Decimal rounded = number.WithDecimals(domain.Decimals());
        return number < rounded ? rounded.units - 1 : rounded.units;
    } catch (const NoDecimal& error) {
        throw Refused("tolerance", error.what());
    }
}

class Search {
public:
    Search(const Plan& campaignPlan, std::size_t chosen, const NumberDomain& chosenDomain,
           const std::function<RunRecord(const Variant&)>& runOne)
        : plan(campaignPlan), parameter(chosen), domain(chosenDomain), run(runOne) {
        if (!plan.At(0, variant)) throw Refused("", "the plan has no variant of defaults");
    }

    std::size_t Runs() const { return known.size(); }
    bool Passes(std::int64_t units) { return RecordAt(units).verdict == Verdict::Passed; }
    BisectionEnd EndAt(std::int64_t units) {
        BisectionEnd end;
        end.record = RecordAt(units);
        end.value = TextAt(units);
        return end;
    }

private:
    std::string TextAt(std::int64_t units) const { return plan.TextOf(parameter, {domain.At(units), nullptr}); }

    const RunRecord& RecordAt(std::int64_t units) {
        const auto found = known.find(units);
        if (found != known.end()) return found->second;
        variant.values[parameter] = {domain.At(units), nullptr};
        const RunRecord record = run(variant);
        if (record.verdict != Verdict::Passed && record.verdict != Verdict::Failed)
            throw RunError("the run with " + TextAt(units) + " could not be had (" + WordOf(record.verdict) + ")" +
                           (record.message.empty() ? "" : ": " + record.message));
        return known.emplace(units, record).first->second;
    }

    const Plan& plan;
    const std::size_t parameter;
    const NumberDomain& domain;
    const std::function<RunRecord(const Variant&)>& run;
    Variant variant;
    std::map<std::int64_t, RunRecord> known;
};

} // namespace

Bisection Bisect(const Plan& plan, const std::string& name, const std::string& tolerance, std::size_t probes,
                 const std::function<RunRecord(const Variant&)>& run) {
    const std::size_t parameter = ParameterOf(plan, name);
    const NumberDomain* planned = plan.DomainOf(parameter);
    const ValueType type = plan.Parameters()[parameter].type;
    if (!planned && (type == ValueType::Integer || type == ValueType::Real))
        throw Refused("parameter", "\"" + name + "\" has a list of values in the plan, and no range to search in");
    if (!planned) throw Refused("parameter", "the values of \"" + name + "\" have no order to search in");
    if (planned->Ranges().size() != 1)
        throw Refused("parameter", "the domain of \"" + name + "\" has a gap: " + planned->Text());
    const bool asItIs = HasDecimals(plan, plan.Parameters()[parameter].name);
    const NumberDomain coarse = Refined(*planned, asItIs, kDecimals);
    UnitsOf(tolerance, coarse); // refuses one below its last decimal
    const NumberDomain domain = [&] {
        try {
            return Refined(coarse, asItIs, DecimalsOf(tolerance));
        } catch (const NoDecimal& error) {
            throw Refused("tolerance", error.what());
        }
    }();
    const std::int64_t least = UnitsOf(tolerance, domain);
    const std::int64_t first = domain.Ranges().front().minimum, last = domain.Ranges().front().maximum;

    Search search(plan, parameter, domain, run);
    Bisection result;
    std::int64_t low = first, high = last;
    result.differ = search.Passes(first) != search.Passes(last);
    if (result.differ) {
        std::vector<std::int64_t> points = {first};
        const auto parts = static_cast<std::int64_t>(probes) + 1;
        for (std::int64_t i = 1; i < parts; ++i) {
            const std::int64_t point = Sum(first, RoundedQuotient(Difference(last, first), i, parts));
            if (point > points.back() && point < last) points.push_back(point);
        }
        points.push_back(last);
        bool found = false;
        for (std::size_t i = 1; i < points.size(); ++i) {
            if (search.Passes(points[i]) == search.Passes(points[i - 1])) continue;
            ++result.changes;
            if (std::exchange(found, true)) continue;
            low = points[i - 1];
            high = points[i];
        }
        while (high - low > least) {
            const std::int64_t middle = low + (high - low) / 2;
            (search.Passes(middle) == search.Passes(low) ? low : high) = middle;
        }
    }
    result.low = search.EndAt(low);
    result.high = search.EndAt(high);
    result.runs = search.Runs();
    return result;
}

} // namespace TavrelVariation
