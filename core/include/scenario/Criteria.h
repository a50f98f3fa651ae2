#ifndef SCENARIO_CRITERIA_H
#define SCENARIO_CRITERIA_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/task.h>

// A task that measures something for an evaluation, with what a report says about it. A disabled one neither starts nor
// steps.
class TAVREL_MODEL_API Criteria : public Task {
public:
    // What was counted at one level: a text and values by key. Written here, read by the host.
    struct Counter {
        std::string text;
        std::map<float, float> values;
    };

    explicit Criteria(ScenarioItemObserver* observer = nullptr);
    ~Criteria() override;

    std::uint8_t disabled = 0;                // IS_DISABLED
    std::string category;                     // CATEGORY
    std::string criteriaType = "Error";       // ATTRIBUTE_CRITERIA_TYPE
    std::string criticity = "1";              // CRITICITY
    std::string text;                         // TEXT, for the report
    std::string sound;                        // SOUND
    std::map<std::int16_t, Counter> counters; // by level

    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    ScenarioItem* Clone() const override;
    void UpdateDisplayText() override;
    void Init(const std::string& path, double time) override;

    virtual void StepCriteria(double time, ScenarioLib::Scenario* scenario);

    // Only the low 16 bits of `level` count.
    void SetCounter(float value, std::int32_t level, float key);
    // The position of `category` in Categories(), where it is entered if it is new.
    std::size_t RegisterCategory();

    // Every category seen in this process, without repeats, in order of first use; the empty one is the first.
    static std::vector<std::string>& Categories();
};

#endif
