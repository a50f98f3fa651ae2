#ifndef TAVREL_VARIATION_CAMPAIGNERROR_H
#define TAVREL_VARIATION_CAMPAIGNERROR_H

#include <stdexcept>

#include <variation/Export.h>

namespace TavrelVariation {

// A campaign that cannot be had as it is: another plan, changed inputs, a folder that is none. One sentence.
class TAVREL_VARIATION_API CampaignError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A file of a campaign that cannot be read or written: a full disk, a folder without rights. One sentence.
class TAVREL_VARIATION_API CampaignFileError : public CampaignError {
public:
    using CampaignError::CampaignError;
};

// A run that could not be had, where its verdict was needed. One sentence with the reason.
class TAVREL_VARIATION_API RunError : public CampaignError {
public:
    using CampaignError::CampaignError;
};

} // namespace TavrelVariation

#endif
