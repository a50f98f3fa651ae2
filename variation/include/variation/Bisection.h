#ifndef TAVREL_VARIATION_BISECTION_H
#define TAVREL_VARIATION_BISECTION_H

#include <cstddef>
#include <functional>
#include <string>

#include <variation/Export.h>
#include <variation/Plan.h>
#include <variation/RunRecord.h>

namespace TavrelVariation {

// A value of the parameter and what came of the run with it.
struct BisectionEnd {
    std::string value; // as an assignment to the parameter takes it
    RunRecord record;
};

// Where along one parameter the verdict changes.
struct Bisection {
    bool differ = false;    // whether the verdicts of the ends of the domain do; else nothing was looked for
    BisectionEnd low, high; // the bracket: neighbours with different verdicts, at most the tolerance apart
    std::size_t runs = 0;
    std::size_t changes = 0; // of the verdict, from one probe to the next; more than one: there are further limits
};

// Looks for the limit between passed and failed: runs the two ends of the parameter's domain, `probes` evenly spaced
// values between them, and then halves the bracket between the first pair of neighbours that differ until it is at most
// `tolerance` (a number in the parameter's unit). That takes at most
// 2 + probes + max(0, ceil(log2(range / ((probes + 1) * tolerance)))) runs. All values have the decimals of the domain;
// the other parameters have what the first variant of the plan, one of the method `defaults`, gives them.
//
// `run` answers for one variant. Throws Refused for a parameter that is no number, a domain with a gap, a tolerance
// that is no number or below the last decimal; and RunError for a run that could not be had.
TAVREL_VARIATION_API Bisection Bisect(const Plan& plan, const std::string& parameter, const std::string& tolerance,
                                      std::size_t probes, const std::function<RunRecord(const Variant&)>& run);

} // namespace TavrelVariation

#endif
