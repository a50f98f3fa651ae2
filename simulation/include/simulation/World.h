#ifndef TAVREL_SIMULATION_WORLD_H
#define TAVREL_SIMULATION_WORLD_H

#include <cstdint>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <scenario/ItemModel.h>
#include <simulation/Export.h>

// A small world for scripts to run in without a simulator: vehicles that are points on a road, timers, switches,
// weather. The actions, conditions and functions of the sample's root model, by their CODE numbers, work on it.

namespace TavrelSimulation {

// A point on the road. A host fills in what the scenario says of it; the world moves it.
struct Vehicle {
    double roadPosition = 0; // m along the road
    double x = 0;            // m
    double y = 0;            // m
    double heading = 0;      // rad
    double speed = 0;        // m/s
    double acceleration = 0; // m/s2, in the last step
    double targetSpeed = 0;  // m/s
    double rate = 0;         // m/s2, magnitude, at which the speed approaches the target; 0: the speed stays
    double travelled = 0;    // m since the start
    int lane = 1;            // 1 is the right lane, 0 the shoulder, a negative one comes the other way
    int gear = 1;
    int indicator = 0;           // 0 none, 1 left, 2 right, 3 both
    bool present = true;         // one that was taken away counts in no distance
    bool collided = false;       // since the start
    int followed = -1;           // number of the vehicle that it follows
    double headway = 0;          // s behind that vehicle
    int laneChange = 0;          // lanes to go to the left when `laneChangeTime` comes
    double laneChangeTime = 0;   // s
    std::set<int> lights;        // those that are on
    std::map<int, float> inputs; // by index
    std::string model;
    std::map<std::string, double> trajectories;     // done from that time on
    std::vector<std::pair<double, double>> profile; // seconds since `profileStart`, m/s
    double profileStart = 0;                        // s
    std::vector<std::string> outputNames;           // what an output of that index shows
};

// A stop watch of the script.
struct Timer {
    bool runs = false;
    double startTime = 0; // s
    double shown = 0;     // s, while it stands
};

// Where an object stands.
struct Place {
    double x = 0; // m
    double y = 0; // m
};

// Told of what an action does that nobody can see in the item tree, such as a text on the screen.
using EffectListener = std::function<void(const std::string& name, const std::vector<std::string>& arguments)>;

// What a table holds under a key; 0 for nothing.
template <typename Map, typename Key>
double Entry(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? 0.0 : static_cast<double>(found->second);
}

// The small world behind the CODE numbers: vehicles as points on one road, timers, weather and lights. The host owns it
// and keeps it as long as implementations refer to it, see RegisterActions. The same start, seed and steps give the
// same course of events everywhere. Nothing in it fails: what a script asks of a thing that is not there has an answer.
// One thread at a time.
class TAVREL_SIMULATION_API World {
public:
    // What the host fills in before the start.
    std::map<int, Vehicle> vehicles;
    std::map<std::string, int> driverStyles;
    std::map<std::string, double> attention; // 0 to 1, by driver
    std::map<int, int> trafficLights;        // colours by number
    std::map<int, bool> barriers;            // closed or not, by number
    std::map<int, double> signs;             // m along the road, by number
    std::map<std::string, Place> objects;
    double visibility = 10000; // m
    double rain = 0;           // 0 to 1
    double windSpeed = 0;      // m/s
    double friction = 1;
    double dayHour = 12;           // h
    int weather = 0;               // the number that a script gave it
    double speedLimit = 13.888889; // m/s
    EffectListener onEffect;       // may be empty

    // What happens while it runs.
    std::map<int, Timer> timers;           // by number
    std::map<int, float> exportedChannels; // by number
    std::map<std::string, float> channels; // by category and key
    std::set<std::string> firedTriggers;
    int errorCount = 0; // that the script reported

    // Begins a run of `scenario`, which must outlive it, at `time`.
    void Start(ScenarioLib::Scenario& scenario, double time, std::uint32_t seed);
    // Moves the world on to `time`, in seconds. To be called before each step of the scenario.
    void Advance(double time);

    double Now() const { return now; }                 // s
    double Elapsed() const { return now - startTime; } // s since the start
    // Whether a period of that length begins between the step before and this one; true at the first step.
    bool PeriodBegins(double period) const;

    // The task whose rule is being run.
    Task* CurrentTask() const { return scenario ? scenario->currentTask : nullptr; }
    // The task around it, of which the current one is a state; the current one itself at the top.
    Task* TaskAround() const;
    // The first task of that number; null if there is none.
    Task* FindTask(int number) const;
    // The one that runs; not before Start.
    ScenarioLib::Scenario& Scenario() const { return *scenario; }
    // The points of that number in the evaluation; 0 if there is none.
    double Score(int number) const { return scenario->evaluation ? Entry(scenario->evaluation->scores, number) : 0; }

    // A vehicle, made where it is missing.
    Vehicle& VehicleAt(int number) { return vehicles[number]; }
    // The same for a look alone: a vehicle that does not exist stands still at 0 and is not made.
    const Vehicle& Look(int number) const;
    // m along the road from one to the other; a very large number if one of them is not there.
    double Distance(int from, int to) const;
    // Seconds until a vehicle is where the other one is, and until it reaches the other one as that one goes on; a very
    // large number where the other one is not ahead or is never reached.
    double Headway(int number, int other) const;
    double TimeToCollision(int number, int other) const;

    // Evenly drawn, from 0 up to but not including 1.
    double Draw();
    void Seed(std::uint32_t seed) { random.seed(seed); }

    // Seconds; 0 for one that was never started.
    double TimerShows(int number) const;
    // To `goal` m, evenly within `duration` s from now on.
    void ChangeVisibility(double goal, double duration);
    // Tells the listener, if there is one.
    void Effect(const std::string& name, const std::vector<std::string>& arguments) const;

private:
    void Move(Vehicle& vehicle, double span) const;
    void ChooseTarget(int number, Vehicle& vehicle);
    void FindCollisions();

    ScenarioLib::Scenario* scenario = nullptr;
    std::mt19937 random; // the sequence of this engine is the same everywhere
    double startTime = 0;
    double now = 0;
    double before = 0; // time of the step before
    bool first = true;
    double visibilityGoal = 0, visibilityFrom = 0, visibilityBegin = 0, visibilityEnd = -1;
};

// A number in the shortest spelling that reads back as itself.
TAVREL_SIMULATION_API std::string NumberText(float number);
// An argument as a whole number, cut towards zero and to 32 bits; 0 for what is no number.
TAVREL_SIMULATION_API int Whole(const ParameterValue& value);
// An argument as people read it.
TAVREL_SIMULATION_API std::string ArgumentText(const ParameterValue& value);

// Put the implementations into the tables of the item model. `world` must outlive every call that they serve. The
// entries of the tables that have another CODE stay as they are.
TAVREL_SIMULATION_API void RegisterFunctions(World& world);
TAVREL_SIMULATION_API void RegisterConditions(World& world);
TAVREL_SIMULATION_API void RegisterActions(World& world);

} // namespace TavrelSimulation

#endif
