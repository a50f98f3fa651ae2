#ifndef TAVREL_VARIATION_RUNALONE_H
#define TAVREL_VARIATION_RUNALONE_H

#include <variation/Campaign.h>
#include <variation/Export.h>

namespace TavrelVariation {

// Runs one variant in a process of its own, within the limits of `options`, and answers with its record; nothing of it
// is kept on disk. A run that ends its process, takes too long or too much memory has a record that says so.
TAVREL_VARIATION_API RunRecord RunAlone(const Plan& plan, const Variant& variant, const CampaignOptions& options,
                                        const RunVariant& run);

} // namespace TavrelVariation

#endif
