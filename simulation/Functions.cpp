#include <cmath>

#include <TavrelScenarioTemplateDb/SectionValues.h>
#include <simulation/World.h>

namespace TavrelSimulation {

using TavrelScenarioTemplateDb::leadingNumber;

namespace {

using Values = ParameterValues;
using Body = double (*)(World&, const Values&);

struct Row {
    std::size_t code;
    const char* name;
    Body body;
};

constexpr double kDegrees = 57.29577951308232;

double Divided(double a, double b) { return b == 0 ? 0 : a / b; }

double Interpolated(double x, double fromX, double fromY, double toX, double toY) {
    if (fromX == toX) return fromY;
    const double share = (x - fromX) / (toX - fromX);
    return fromY + (toY - fromY) * std::fmin(1, std::fmax(0, share));
}

// What people read on the dashboard; enough for a script that shifts gears.
double EngineSpeed(const Vehicle& vehicle) {
    constexpr double kIdle = 900;     // rpm
    constexpr double kPerSpeed = 250; // rpm per m/s in the first gear
    return kIdle + kPerSpeed * vehicle.speed / std::fmax(1, std::abs(vehicle.gear));
}

double OutputOf(const Vehicle& vehicle, std::size_t index) {
    const std::string name = index < vehicle.outputNames.size() ? vehicle.outputNames[index] : "";
    if (name == "speed") return vehicle.speed;
    return name == "engineSpeed" ? EngineSpeed(vehicle) : 0;
}

double CountAround(const World& world, int number, double radius) {
    const auto center = world.vehicles.find(number);
    if (center == world.vehicles.end()) return 0;
    int count = 0;
    for (const auto& [other, vehicle] : world.vehicles)
        if (other != number && vehicle.present &&
            std::hypot(vehicle.x - center->second.x, vehicle.y - center->second.y) <= radius)
            ++count;
    return count;
}

double StateOf(const World& world, int number) {
    const Task* task = world.FindTask(number);
    return task ? task->currentState : -1;
}

// clang-format off
const Row kRows[] = {
    { 0, "ZERO",                 [](World&, const Values&) { return 0.0; }},
    { 1, "GET_TIME",             [](World& w, const Values&) { return w.Elapsed(); }},
    { 2, "GET_STATE_TIME",       [](World& w, const Values&) { return w.CurrentTask() ? w.Now() - w.CurrentTask()->startTime : 0.0; }},
    { 3, "GET_STEP_COUNT",       [](World& w, const Values&) { return w.CurrentTask() ? double(w.CurrentTask()->stepCount) : 0.0; }},
    { 4, "GET_TIMER",            [](World& w, const Values& v) { return w.TimerShows(Whole(v[0])); }},
    { 5, "GET_DAY_HOUR",         [](World& w, const Values&) { return w.dayHour; }},
    {10, "PLUS",                 [](World&, const Values& v) { return double(v[0].number) + v[1].number; }},
    {11, "MINUS",                [](World&, const Values& v) { return double(v[0].number) - v[1].number; }},
    {12, "MULTIPLY",             [](World&, const Values& v) { return double(v[0].number) * v[1].number; }},
    {13, "DIVIDE",               [](World&, const Values& v) { return Divided(v[0].number, v[1].number); }},
    {14, "MODULO",               [](World&, const Values& v) { return v[1].number == 0 ? 0.0 : std::fmod(double(v[0].number), double(v[1].number)); }},
    {15, "ABSOLUTE",             [](World&, const Values& v) { return std::fabs(double(v[0].number)); }},
    {16, "MINIMUM",              [](World&, const Values& v) { return std::fmin(double(v[0].number), double(v[1].number)); }},
    {17, "MAXIMUM",              [](World&, const Values& v) { return std::fmax(double(v[0].number), double(v[1].number)); }},
    {18, "LIMIT",                [](World&, const Values& v) { return std::fmin(double(v[2].number), std::fmax(double(v[1].number), double(v[0].number))); }},
    {19, "ROUND",                [](World&, const Values& v) { return std::round(double(v[0].number)); }},
    {20, "SQUARE_ROOT",          [](World&, const Values& v) { return v[0].number < 0 ? 0.0 : std::sqrt(double(v[0].number)); }},
    {21, "POWER",                [](World&, const Values& v) { return std::pow(double(v[0].number), double(v[1].number)); }},
    {22, "INTERPOLATE",          [](World&, const Values& v) { return Interpolated(v[0].number, v[1].number, v[2].number, v[3].number, v[4].number); }},
    {23, "RANDOM",               [](World& w, const Values& v) { return v[0].number + (double(v[1].number) - v[0].number) * w.Draw(); }},
    {24, "RANDOM_INTEGER",       [](World& w, const Values& v) { return std::floor(v[0].number + (double(v[1].number) - v[0].number + 1) * w.Draw()); }},
    {30, "GET_EGO_NUMBER",       [](World& w, const Values&) { return w.vehicles.empty() ? 0.0 : double(w.vehicles.begin()->first); }},
    {31, "GET_VHL_SPEED",        [](World& w, const Values& v) { return w.Look(Whole(v[0])).speed; }},
    {32, "GET_VHL_ACCELERATION", [](World& w, const Values& v) { return w.Look(Whole(v[0])).acceleration; }},
    {33, "GET_VHL_X",            [](World& w, const Values& v) { return w.Look(Whole(v[0])).x; }},
    {34, "GET_VHL_Y",            [](World& w, const Values& v) { return w.Look(Whole(v[0])).y; }},
    {35, "GET_VHL_HEADING",      [](World& w, const Values& v) { return w.Look(Whole(v[0])).heading * kDegrees; }},
    {36, "GET_VHL_LANE",         [](World& w, const Values& v) { return double(w.Look(Whole(v[0])).lane); }},
    {37, "GET_VHL_ROAD_POSITION",[](World& w, const Values& v) { return w.Look(Whole(v[0])).roadPosition; }},
    {38, "GET_VHL_DISTANCE_TRAVELLED", [](World& w, const Values& v) { return w.Look(Whole(v[0])).travelled; }},
    {39, "GET_DISTANCE_BETWEEN", [](World& w, const Values& v) { return w.Distance(Whole(v[0]), Whole(v[1])); }},
    {40, "GET_TIME_HEADWAY",     [](World& w, const Values& v) { return w.Headway(Whole(v[0]), Whole(v[1])); }},
    {41, "GET_TIME_TO_COLLISION",[](World& w, const Values& v) { return w.TimeToCollision(Whole(v[0]), Whole(v[1])); }},
    {42, "GET_VHL_GEAR",         [](World& w, const Values& v) { return double(w.Look(Whole(v[0])).gear); }},
    {43, "GET_VHL_ENGINE_SPEED", [](World& w, const Values& v) { return EngineSpeed(w.Look(Whole(v[0]))); }},
    {44, "GET_VHL_INPUT",        [](World& w, const Values& v) { return Entry(w.Look(Whole(v[0])).inputs, Whole(v[1])); }},
    {45, "GET_VHL_OUTPUT",       [](World& w, const Values& v) { return OutputOf(w.Look(Whole(v[0])), static_cast<std::size_t>(Whole(v[1]))); }},
    {46, "COUNT_VHL_AROUND",     [](World& w, const Values& v) { return CountAround(w, Whole(v[0]), v[1].number); }},
    {47, "GET_SPEED_LIMIT",      [](World& w, const Values&) { return w.speedLimit; }},
    {48, "GET_ATTENTION",        [](World& w, const Values& v) { return Entry(w.attention, v[0].text); }},
    {60, "GET_VISIBILITY",       [](World& w, const Values&) { return w.visibility; }},
    {61, "GET_RAIN",             [](World& w, const Values&) { return w.rain; }},
    {62, "GET_WIND_SPEED",       [](World& w, const Values&) { return w.windSpeed; }},
    {63, "GET_FRICTION",         [](World& w, const Values&) { return w.friction; }},
    {64, "GET_TRAFFIC_LIGHT",    [](World& w, const Values& v) { return Entry(w.trafficLights, Whole(v[0])); }},
    {65, "GET_BARRIER",          [](World& w, const Values& v) { return Entry(w.barriers, Whole(v[0])); }},
    {70, "GET_VARIABLE",         [](World&, const Values&) { const Variable* variable = ReferencedVariable(0); return variable ? leadingNumber(variable->value) : 0.0; }},
    {71, "GET_SCORE",            [](World& w, const Values& v) { return w.Score(Whole(v[0])); }},
    {72, "GET_ERROR_COUNT",      [](World& w, const Values&) { return double(w.errorCount); }},
    {73, "GET_STATE",            [](World& w, const Values& v) { return StateOf(w, Whole(v[0])); }},
    {74, "GET_EXPORTED_CHANNEL", [](World& w, const Values& v) { return Entry(w.exportedChannels, Whole(v[0])); }},
    {75, "GET_CHANNEL",          [](World& w, const Values& v) { return Entry(w.channels, v[0].text + "/" + v[1].text); }},
    {76, "READ_SWITCH",          [](World&, const Values&) { return 0.0; }},
};
// clang-format on

} // namespace

void RegisterFunctions(World& world) {
    std::vector<FunctionEntry>& table = FunctionTable();
    for (const Row& row : kRows) {
        if (table.size() <= row.code) table.resize(row.code + 1);
        table[row.code] = [&world, body = row.body](const Values& values) {
            return static_cast<float>(body(world, values));
        };
    }
}

} // namespace TavrelSimulation
