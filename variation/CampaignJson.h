#ifndef TAVREL_VARIATION_CAMPAIGNJSON_H
#define TAVREL_VARIATION_CAMPAIGNJSON_H

#include <cstdint>
#include <string>
#include <vector>

#include <variation/Campaign.h>

#include "RecordLine.h"

namespace TavrelVariation {

// campaign.json: all that a campaign is made from.
struct FrozenCampaign {
    std::string tool;
    std::string installation;
    PlanFile plan;
    std::string planText; // as JSON, every default filled in
    CampaignSheet sheet;
    std::vector<TavrelSimulation::Input> inputs;
    std::vector<std::uint64_t> numbers; // that there are
    PlannedRecords planned;             // of these numbers

    std::string Text() const;
    // Throws CampaignError.
    static FrozenCampaign Read(const std::string& file);
};

FrozenCampaign Freeze(const CampaignSetup& setup);

// What differs, for a person; empty if nothing does.
std::string DifferenceOf(const FrozenCampaign& present, const FrozenCampaign& wanted);
std::string DifferenceOf(const std::vector<TavrelSimulation::Input>& present,
                         const std::vector<TavrelSimulation::Input>& wanted);

// The same files as they are now; one that cannot be read has no check sum.
std::vector<TavrelSimulation::Input> AsTheyAreNow(std::vector<TavrelSimulation::Input> inputs,
                                                  const std::string& installationFile);

} // namespace TavrelVariation

#endif
