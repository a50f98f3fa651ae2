#ifndef SCENARIO_SCENARIO_H
#define SCENARIO_SCENARIO_H

#include <array>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

#include <lmk/Vector3.h>
#include <scenario/Export.h>
#include <scenario/task.h>

class Evaluation;
class GeneralParameters;
class Include;

// One vehicle as the texts of parameters name it, with a vehicle definition behind it that is complete from the start.
// Lengths are in metres, masses in kilograms, speeds in m/s, angles in radians, engine speeds in rad/s.
class TAVREL_MODEL_API VEHICLE {
public:
    struct Channel {
        std::string name;
    };
    struct Light {
        std::string name;
    };
    struct Attachment {
        std::string name;
    };
    struct Axle {
        std::int32_t kind;
        double width;
        double radius;
        double track;
    };

    VEHICLE();
    VEHICLE(const VEHICLE&) = default;
    VEHICLE& operator=(const VEHICLE&) = default;
    virtual ~VEHICLE();

    std::string name;
    std::string description;
    std::int32_t id = 0;

    std::int32_t flags = 0;
    std::string dynamicModel = "Simple";
    std::string visualModel = "Peugeot_308_Noir_Perla_Nera";
    std::string style = "FlatStyle/FlatStyle.txt";
    std::string overlay = "SuperposeDefaut/SuperposeDefaut.txt";
    std::string soundModel = "CarSimple_Gas";
    std::string extra1;
    std::string extra2;
    double length = 4.3;
    double width = 1.808;
    double height = 1.46;
    double wheelbase = 2.64;
    double factorA = 0.2;
    double factorB = 0.75;
    lmk::Vector3 frontPoint;
    lmk::Vector3 rearPoint;
    double massA = 1200.0;
    double massB = 1200.0;
    double maxSpeed;      // 180 km/h
    double wheelAngle;    // 45 degrees
    double steeringAngle; // 540 degrees
    double deceleration = -6.0;
    lmk::Vector3 driverPoint;
    std::int32_t driverIndex = -1;
    lmk::Vector3 enginePoint;
    double maxEngineSpeed; // 5000 rpm
    std::int32_t gearCount = 4;
    std::uint8_t autoFlag = 0;
    double gainA = 5.0;
    double gainB = 0.0;
    double gainC = 0.2;
    double gainD = 0.3;
    double gainE = 1.0;
    std::uint8_t gearMode = 0;
    std::uint8_t gearFlagA = 0;
    std::uint8_t gearFlagB = 0;
    std::uint8_t gearFlagC = 1;
    double ratioA = 0.5;
    double ratioB = 1.5;
    double ratioC = 0.5;
    double shiftDown; // 1200 rpm
    double shiftUp;   // 2000 rpm
    double idleSpeed; // 900 rpm
    double offsetA = 0.0;
    double offsetB = 0.0;
    double scaleA = 1.0;
    double scaleB = 1.0;
    std::vector<Channel> inputs;
    std::vector<Channel> outputs;
    std::vector<Axle> axles;
    std::vector<Attachment> attachments;
    std::vector<Light> lights;
    std::vector<std::string> notes;
};

// Words that hosts and editors of vehicles share; the library itself consults neither list.
inline constexpr std::array<const char*, 15> kVehicleKindWords = {
    "UNKNOWN", "RIGID",      "TRACTOR", "SEMI_TRAILER", "TRAILER", "CAR",        "BUS",     "MOTORBIKE",
    "BICYCLE", "PEDESTRIAN", "STATIC",  "TRAM",         "TRAIN",   "ALIVEBEING", "AIRPLANE"};
inline constexpr std::array<const char*, 13> kPositionWords = {"Left",    "Centre",  "Right",   "Extra_0", "Extra_1",
                                                               "Extra_2", "Extra_3", "Extra_4", "Extra_5", "Extra_6",
                                                               "Extra_7", "Extra_8", "Extra_9"};

namespace ScenarioLib {

// The root of a scenario script: a task that further owns includes, at most one evaluation and at most one set of
// general parameters, and tables that name the things around it for the texts of parameters. The host fills the tables,
// calls Init once and StepScenario again and again; nothing in the library does.
class TAVREL_MODEL_API Scenario : public Task {
public:
    // An object of the scene, found by the name of its item.
    struct Point {
        ScenarioItem* item;
        std::uint8_t hasPosition;
        double x;
        double y;
        double z;
    };

    explicit Scenario(ScenarioItemObserver* observer = nullptr);
    // Destroys the includes, the evaluation and the general parameters that it holds then.
    ~Scenario() override;

    std::string scenarioName;
    std::string vehicleKindName = "TRAFFIC";
    std::map<std::int32_t, VEHICLE> vehicles;       // by vehicle number
    std::list<Point>* pointList = nullptr;          // borrowed: the objects that OBJECT parameters name
    std::vector<ScenarioItem*>* nameList = nullptr; // borrowed: traffic lights, barriers and road signs by number
    std::map<std::string, std::int32_t> triggers;   // a name is known when it is a key; so for all six
    std::map<std::string, std::int32_t> images;
    std::map<std::string, std::int32_t> sounds;
    std::map<std::string, std::int32_t> sources;
    std::map<std::string, std::int32_t> sinks;
    std::map<std::string, std::int32_t> trajectories;
    std::map<std::string, std::int32_t> channelNumbers; // drivers by name
    std::string comment;
    std::uint8_t stopped = 1;                       // set by the host or an action: nothing else is stepped
    std::uint8_t paused = 0;                        // the same, until a task enters another state
    std::vector<Include*> includes;                 // owned
    Evaluation* evaluation = nullptr;               // owned while it stands here
    GeneralParameters* generalParameters = nullptr; // owned while it stands here
    Include* currentInclude = nullptr;              // the include being stepped, else null
    Task* currentTask = nullptr;                    // the task stepped last
    std::int32_t highestLevel = 0;                  // raised by the host

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    // An include or evaluation whose FILE is already held is ignored, and stays the caller's. An evaluation of another
    // file takes the place of the former one, which is neither kept nor destroyed: whoever has a pointer to it owns it
    // now. General parameters destroy the former ones, take the path beside the scenario and are loaded.
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    // Does not destroy an evaluation or general parameters: the caller owns them from now on.
    void RemoveChild(ScenarioItem* child) override;
    // An include whose FILE is already held replaces nothing, and stays the caller's; FindIncludeByFile gives the held
    // one.
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    ScenarioItem* Clone() const override;
    void UpdateDisplayText() override;
    // A scenario shows what its files show too: after the ordinary walk each include, the evaluation and the general
    // parameters are asked for their own, which go to the front as well. Those end their walk at themselves, so nothing
    // comes twice.
    void CollectVisibleItems(std::uint32_t itemKind, std::vector<ScenarioItem*>& out, const std::string& itemName,
                             const std::string& scope) const override;
    bool LoadModelAttribute(ScenarioTextStream& stream) override;
    void SaveModelAttributes(std::ostream& out) const override;
    void Init(const std::string& path, double time) override;

    // The first include with that FILE, else the evaluation with it, else null. The empty text is no file.
    virtual Include* FindIncludeByFile(const std::string& file) const;
    // One step at `time`, in seconds: the includes, the scenario's own states, the evaluation, the general parameters.
    virtual void StepScenario(double time);
    // The largest of `highestLevel` and the levels of all rules outside the includes and the evaluation.
    virtual std::int32_t HighestLevel() const;

    bool HasVehicle(std::int32_t id) const;
    // Enters a vehicle with the defaults if there is none of that number. The reference lasts as long as the entry.
    VEHICLE& GetVehicle(std::int32_t id);
    // The number of a driver, -1 if unknown.
    std::int32_t ChannelNumber(const std::string& channelName) const;
    // The name of an item in `nameList`; empty out of range or without a list.
    std::string NameAt(std::int32_t index) const;
    // `pointText` up to its first "#" names a point. Gives "name x,y,z" for a point with a position, else the name.
    std::string PointText(const std::string& pointText) const;

private:
    void TakeEvaluation(Evaluation* added);
    void TakeGeneralParameters(GeneralParameters* added);
    void LoadReferencedLabel();
};

} // namespace ScenarioLib

#endif
