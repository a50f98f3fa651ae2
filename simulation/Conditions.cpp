#include <cmath>

#include <simulation/World.h>

namespace TavrelSimulation {

namespace {

using Values = ParameterValues;
using Body = bool (*)(World&, const Values&);

struct Row {
    std::size_t code;
    const char* name;
    Body body;
};

constexpr double kPercent = 100;
constexpr double kStopped = 0.1;  // m/s
constexpr double kBraking = -0.5; // m/s2

bool Equal(const ParameterValue& a, const ParameterValue& b) {
    return a.tag == TagString && b.tag == TagString ? a.text == b.text : a.number == b.number;
}

double StateTime(const World& world) {
    const Task* task = world.CurrentTask();
    return task ? world.Now() - task->startTime : 0;
}

bool IsTrue(const Variable* variable) { return variable && !variable->value.empty() && variable->value != "0"; }

bool Within(double value, double a, double b) { return std::fmin(a, b) <= value && value <= std::fmax(a, b); }

bool IsNear(const World& world, int number, const std::string& object, double distance) {
    const auto place = world.objects.find(object.substr(0, object.find('#')));
    const auto vehicle = world.vehicles.find(number);
    return place != world.objects.end() && vehicle != world.vehicles.end() &&
           std::hypot(vehicle->second.x - place->second.x, vehicle->second.y - place->second.y) < distance;
}

bool HasPassedSign(const World& world, int number, int sign) {
    const auto place = world.signs.find(sign);
    const auto vehicle = world.vehicles.find(number);
    if (place == world.signs.end() || vehicle == world.vehicles.end()) return false;
    return vehicle->second.lane < 0 ? vehicle->second.roadPosition < place->second
                                    : vehicle->second.roadPosition > place->second;
}

bool IsTrajectoryDone(const World& world, const Vehicle& vehicle, const std::string& name) {
    const auto found = vehicle.trajectories.find(name);
    return found != vehicle.trajectories.end() && found->second <= world.Now();
}

bool StateIs(const World& world, int number, int state) {
    const Task* task = world.FindTask(number);
    return task && task->currentState == state;
}

// clang-format off
const Row kRows[] = {
    { 0, "ALWAYS",               [](World&, const Values&) { return true; }},
    { 1, "AND",                  [](World&, const Values&) { return true; }},
    { 2, "OR",                   [](World&, const Values&) { return false; }},
    {10, "EQUAL",                [](World&, const Values& v) { return Equal(v[0], v[1]); }},
    {11, "NOTEQUAL",             [](World&, const Values& v) { return !Equal(v[0], v[1]); }},
    {12, "INFERIOR",             [](World&, const Values& v) { return v[0].number < v[1].number; }},
    {13, "INFEQUAL",             [](World&, const Values& v) { return v[0].number <= v[1].number; }},
    {14, "SUPERIOR",             [](World&, const Values& v) { return v[0].number > v[1].number; }},
    {15, "SUPEQUAL",             [](World&, const Values& v) { return v[0].number >= v[1].number; }},
    {16, "IS_BETWEEN",           [](World&, const Values& v) { return v[1].number <= v[0].number && v[0].number <= v[2].number; }},
    {17, "CHANCE",               [](World& w, const Values& v) { return w.Draw() * kPercent < v[0].number; }},
    {20, "WAIT",                 [](World& w, const Values& v) { return StateTime(w) >= v[0].number; }},
    {21, "IS_TIME_AFTER",        [](World& w, const Values& v) { return w.Elapsed() >= v[0].number; }},
    {22, "IS_TIMER_ELAPSED",     [](World& w, const Values& v) { return w.TimerShows(Whole(v[0])) >= v[1].number; }},
    {23, "EVERY",                [](World& w, const Values& v) { return w.PeriodBegins(v[0].number); }},
    {24, "IS_STATE",             [](World& w, const Values& v) { return StateIs(w, Whole(v[0]), Whole(v[1])); }},
    {25, "IS_TASK_ENDED",        [](World& w, const Values& v) { return StateIs(w, Whole(v[0]), Task::kStateEnd); }},
    {26, "IS_VARIABLE_TRUE",     [](World&, const Values&) { return IsTrue(ReferencedVariable(0)); }},
    {27, "IS_KEY_PRESSED",       [](World&, const Values&) { return false; }},
    {28, "IS_SWITCH_ON",         [](World&, const Values&) { return false; }},
    {30, "IS_VHL_AT_POSITION",   [](World& w, const Values& v) { const Vehicle& a = w.Look(Whole(v[0])); return std::hypot(a.x - v[1].number, a.y - v[2].number) <= v[3].number; }},
    {31, "IS_VHL_IN_AREA",       [](World& w, const Values& v) { const Vehicle& a = w.Look(Whole(v[0])); return Within(a.x, v[1].number, v[3].number) && Within(a.y, v[2].number, v[4].number); }},
    {32, "IS_VHL_STOPPED",       [](World& w, const Values& v) { return w.Look(Whole(v[0])).speed < kStopped; }},
    {33, "IS_VHL_FASTER",        [](World& w, const Values& v) { return w.Look(Whole(v[0])).speed > v[1].number; }},
    {34, "IS_VHL_SLOWER",        [](World& w, const Values& v) { return w.Look(Whole(v[0])).speed < v[1].number; }},
    {35, "IS_VHL_ON_LANE",       [](World& w, const Values& v) { return w.Look(Whole(v[0])).lane == Whole(v[1]); }},
    {36, "IS_VHL_BEHIND",        [](World& w, const Values& v) { return w.Look(Whole(v[0])).roadPosition < w.Look(Whole(v[1])).roadPosition; }},
    {37, "IS_VHL_CLOSER",        [](World& w, const Values& v) { return std::fabs(w.Distance(Whole(v[0]), Whole(v[1]))) < v[2].number; }},
    {38, "IS_VHL_BRAKING",       [](World& w, const Values& v) { return w.Look(Whole(v[0])).acceleration < kBraking; }},
    {39, "IS_VHL_INDICATING",    [](World& w, const Values& v) { return w.Look(Whole(v[0])).indicator == Whole(v[1]); }},
    {40, "HAS_VHL_COLLIDED",     [](World& w, const Values& v) { return w.Look(Whole(v[0])).collided; }},
    {41, "IS_VHL_OVER_LIMIT",    [](World& w, const Values& v) { return w.Look(Whole(v[0])).speed > w.speedLimit * (1 + v[1].number / kPercent); }},
    {42, "IS_VHL_LIGHT_ON",      [](World& w, const Values& v) { return w.Look(Whole(v[0])).lights.count(Whole(v[1])) != 0; }},
    {43, "HAS_PASSED",           [](World& w, const Values& v) { return w.Look(Whole(v[0])).travelled >= v[1].number; }},
    {44, "IS_TRAJECTORY_DONE",   [](World& w, const Values& v) { return IsTrajectoryDone(w, w.Look(Whole(v[0])), v[1].text); }},
    {45, "IS_DRIVER_STYLE",      [](World& w, const Values& v) { return Entry(w.driverStyles, v[0].text) == Whole(v[1]); }},
    {60, "IS_TRAFFIC_LIGHT",     [](World& w, const Values& v) { return Entry(w.trafficLights, Whole(v[0])) == Whole(v[1]); }},
    {61, "IS_BARRIER_CLOSED",    [](World& w, const Values& v) { return Entry(w.barriers, Whole(v[0])) != 0; }},
    {62, "HAS_PASSED_SIGN",      [](World& w, const Values& v) { return HasPassedSign(w, Whole(v[0]), Whole(v[1])); }},
    {63, "IS_OBJECT_NEAR",       [](World& w, const Values& v) { return IsNear(w, Whole(v[0]), v[1].text, v[2].number); }},
    {64, "IS_TRIGGER_FIRED",     [](World& w, const Values& v) { return w.firedTriggers.count(v[0].text) != 0; }},
    {65, "IS_WEATHER",           [](World& w, const Values& v) { return w.weather == Whole(v[0]); }},
    {66, "IS_VISIBILITY_BELOW",  [](World& w, const Values& v) { return w.visibility < v[0].number; }},
    {67, "IS_NIGHT",             [](World& w, const Values&) { return w.dayHour < 6 || w.dayHour >= 20; }},
    {68, "IS_PICKED",            [](World&, const Values&) { return false; }},
    {80, "EVALUATION_SPEED_ABOVE",   [](World& w, const Values& v) { return w.Look(Whole(v[0])).speed > v[1].number; }},
    {81, "EVALUATION_HEADWAY_BELOW", [](World& w, const Values& v) { return w.Headway(Whole(v[0]), Whole(v[1])) < v[2].number; }},
    {82, "EVALUATION_OFF_LANE",      [](World& w, const Values& v) { return w.Look(Whole(v[0])).lane != Whole(v[1]); }},
    {83, "EVALUATION_COLLISION",     [](World& w, const Values& v) { return w.Look(Whole(v[0])).collided; }},
    {84, "EVALUATION_SCORE_BELOW",   [](World& w, const Values& v) { return w.Score(Whole(v[0])) < v[1].number; }},
};
// clang-format on

} // namespace

void RegisterConditions(World& world) {
    std::vector<ConditionEntry>& table = ConditionTable();
    for (const Row& row : kRows) {
        if (table.size() <= row.code) table.resize(row.code + 1);
        table[row.code] = [&world, body = row.body](const Values& values) { return body(world, values); };
    }
}

} // namespace TavrelSimulation
