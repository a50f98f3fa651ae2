#include <cmath>
#include <fstream>
#include <sstream>

#include <TavrelScenarioTemplateDb/SectionValues.h>
#include <lmkUtils/EnvConfig.h>
#include <simulation/World.h>

namespace TavrelSimulation {

using TavrelScenarioTemplateDb::leadingNumber;

namespace {

using Values = ParameterValues;
using Body = void (*)(World&, const Values&);

struct Row {
    std::size_t code;
    const char* name;
    Body body;
};

constexpr double kRadians = 0.017453292519943295;
constexpr double kUsualBraking = 3; // m/s2, where a script gives no rate

// A change of state takes effect at the start of the task's next step.
void GoTo(Task* task, int state) {
    if (!task) return;
    task->nextState = state;
    task->transitionPending = 1;
}

void SetNumber(Variable* variable, double number) {
    if (variable) variable->value = NumberText(static_cast<float>(number));
}

void SetText(Variable* variable, const std::string& text) {
    if (variable) variable->value = text;
}

double NumberOf(const Variable* variable) { return variable ? leadingNumber(variable->value) : 0; }

bool IsSet(const ParameterValue& value) { return value.number != 0; }

// A vehicle that is told how to drive gives up what it was told before.
Vehicle& Driven(World& world, const ParameterValue& number) {
    Vehicle& vehicle = world.VehicleAt(Whole(number));
    vehicle.followed = -1;
    vehicle.profile.clear();
    return vehicle;
}

void SetSpeed(Vehicle& vehicle, double speed) {
    vehicle.speed = vehicle.targetSpeed = std::fmax(0, speed);
    vehicle.rate = 0;
}

void SetTarget(Vehicle& vehicle, double speed, double rate) {
    vehicle.targetSpeed = std::fmax(0, speed);
    vehicle.rate = rate == 0 ? kUsualBraking : std::fabs(rate);
}

void Place(Vehicle& vehicle, double x, double y) {
    vehicle.x = vehicle.roadPosition = x;
    vehicle.y = y;
    vehicle.present = true;
}

void ChangeLane(const World& world, Vehicle& vehicle, int side, double time) {
    vehicle.laneChange = side == 1 ? 1 : side == 2 ? -1 : 0;
    vehicle.laneChangeTime = world.Now() + std::fmax(0, time);
}

// Lines of seconds and metres per second; a line that begins otherwise is a comment.
void ReadProfile(World& world, Vehicle& vehicle, const std::string& file) {
    vehicle.profile.clear();
    std::ifstream stream(lmkUtils::EnvConfig::findInPath("data/script/profile", file));
    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::string seconds, speed;
        if (line.empty() || line[0] == '#' || !(words >> seconds >> speed)) continue;
        vehicle.profile.emplace_back(leadingNumber(seconds), leadingNumber(speed));
    }
    vehicle.profileStart = world.Now();
    vehicle.followed = -1;
}

float* ScoreOf(World& world, int number) {
    Evaluation* evaluation = world.Scenario().evaluation;
    return evaluation ? &evaluation->scores[number] : nullptr;
}

void SetScore(World& world, int number, float points) {
    if (float* score = ScoreOf(world, number)) *score = points;
}

void AddToScore(World& world, int number, float points) {
    if (float* score = ScoreOf(world, number)) *score += points;
}

// The criteria counts under the key 0 of the level.
void AddError(World& world, int level) {
    ++world.errorCount;
    auto* criteria = dynamic_cast<Criteria*>(world.CurrentTask());
    if (!criteria) return;
    const float count = criteria->counters[static_cast<std::int16_t>(level)].values[0];
    criteria->SetCounter(count + 1, level, 0);
}

void StartTimer(World& world, int number) {
    Timer& timer = world.timers[number];
    if (timer.runs) return;
    timer.runs = true;
    timer.startTime = world.Now();
}

void StopTimer(World& world, int number) {
    Timer& timer = world.timers[number];
    timer.shown = world.TimerShows(number);
    timer.runs = false;
}

void SetLight(Vehicle& vehicle, int light, bool on) {
    if (on)
        vehicle.lights.insert(light);
    else
        vehicle.lights.erase(light);
}

// What only people see and hear is told to the host, which shows as much of it as it can.
const Row kRows[] = {
    // clang-format off
    {  0, "NOTHING",              [](World&, const Values&) {}},
    {  1, "NEXT_STATE",           [](World& w, const Values& v) { GoTo(w.TaskAround(), Whole(v[0])); }},
    {  2, "SET_STATE",            [](World& w, const Values& v) { GoTo(w.CurrentTask(), Whole(v[0])); }},
    {  3, "END_TASK",             [](World& w, const Values&) { GoTo(w.CurrentTask(), Task::kStateEnd); }},
    {  4, "NEXT_STATE_AFTER",     [](World& w, const Values& v) { if (w.CurrentTask() && w.Now() - w.CurrentTask()->startTime >= v[1].number) GoTo(w.TaskAround(), Whole(v[0])); }},
    {  5, "END_PARENT_TASK",      [](World& w, const Values&) { GoTo(w.TaskAround(), Task::kStateEnd); }},
    {  6, "PAUSE_SCENARIO",       [](World& w, const Values&) { w.Scenario().paused = 1; }},
    {  7, "RESUME_SCENARIO",      [](World& w, const Values&) { w.Scenario().paused = 0; }},
    {  8, "STOP_SCENARIO",        [](World& w, const Values&) { w.Scenario().stopped = 1; }},
    {  9, "NO_STATE",             [](World& w, const Values&) { GoTo(w.CurrentTask(), Task::kStateKeepPause); }},
    { 10, "SET_VARIABLE",         [](World&, const Values& v) { SetNumber(ReferencedVariable(0), v[1].number); }},
    { 11, "ADD_TO_VARIABLE",      [](World&, const Values& v) { Variable* a = ReferencedVariable(0); SetNumber(a, NumberOf(a) + v[1].number); }},
    { 12, "MULTIPLY_VARIABLE",    [](World&, const Values& v) { Variable* a = ReferencedVariable(0); SetNumber(a, NumberOf(a) * v[1].number); }},
    { 13, "SET_TEXT_VARIABLE",    [](World&, const Values& v) { SetText(ReferencedVariable(0), v[1].text); }},
    { 14, "SET_FLAG",             [](World&, const Values& v) { SetText(ReferencedVariable(0), IsSet(v[1]) ? "1" : "0"); }},
    { 15, "TOGGLE_FLAG",          [](World&, const Values&) { Variable* a = ReferencedVariable(0); SetText(a, a && a->value == "1" ? "0" : "1"); }},
    { 16, "SET_INTEGER_VARIABLE", [](World&, const Values& v) { SetNumber(ReferencedVariable(0), std::trunc(double(v[1].number))); }},
    { 17, "RESET_VARIABLE",       [](World&, const Values&) { Variable* a = ReferencedVariable(0); SetText(a, a ? a->initialValue : ""); }},
    { 18, "DRAW_VARIABLE",        [](World& w, const Values& v) { SetNumber(ReferencedVariable(0), v[1].number + (double(v[2].number) - v[1].number) * w.Draw()); }},
    { 19, "SET_RANDOM_SEED",      [](World& w, const Values& v) { w.Seed(static_cast<std::uint32_t>(Whole(v[0]))); }},
    { 20, "START_TIMER",          [](World& w, const Values& v) { StartTimer(w, Whole(v[0])); }},
    { 21, "STOP_TIMER",           [](World& w, const Values& v) { StopTimer(w, Whole(v[0])); }},
    { 22, "RESET_TIMER",          [](World& w, const Values& v) { w.timers[Whole(v[0])] = Timer(); }},
    { 30, "SET_VHL_SPEED",        [](World& w, const Values& v) { SetSpeed(Driven(w, v[0]), v[1].number); }},
    { 31, "SET_VHL_TARGET_SPEED", [](World& w, const Values& v) { SetTarget(Driven(w, v[0]), v[1].number, v[2].number); }},
    { 32, "BRAKE",                [](World& w, const Values& v) { SetTarget(Driven(w, v[0]), 0, v[1].number); }},
    { 33, "SET_VHL_POSITION",     [](World& w, const Values& v) { Vehicle& a = w.VehicleAt(Whole(v[0])); Place(a, v[1].number, v[2].number); a.heading = v[3].number * kRadians; }},
    { 34, "SET_VHL_LANE",         [](World& w, const Values& v) { w.VehicleAt(Whole(v[0])).lane = Whole(v[1]); }},
    { 35, "CHANGE_LANE",          [](World& w, const Values& v) { ChangeLane(w, w.VehicleAt(Whole(v[0])), Whole(v[1]), v[2].number); }},
    { 36, "FOLLOW_VHL",           [](World& w, const Values& v) { Vehicle& a = Driven(w, v[0]); a.followed = Whole(v[1]); a.headway = v[2].number; }},
    { 37, "SET_VHL_INDICATOR",    [](World& w, const Values& v) { w.VehicleAt(Whole(v[0])).indicator = Whole(v[1]); }},
    { 38, "SET_VHL_LIGHT",        [](World& w, const Values& v) { SetLight(w.VehicleAt(Whole(v[0])), Whole(v[1]), IsSet(v[2])); }},
    { 39, "SET_GEAR",             [](World& w, const Values& v) { w.VehicleAt(Whole(v[0])).gear = Whole(v[1]); }},
    { 40, "SET_VHL_INPUT",        [](World& w, const Values& v) { w.VehicleAt(Whole(v[0])).inputs[Whole(v[1])] = v[2].number; }},
    { 41, "CREATE_VHL",           [](World& w, const Values& v) { Vehicle& a = Driven(w, v[0]); a.model = v[1].text; Place(a, v[2].number, v[3].number); SetSpeed(a, 0); }},
    { 42, "REMOVE_VHL",           [](World& w, const Values& v) { w.VehicleAt(Whole(v[0])).present = false; }},
    { 43, "APPLY_PROFILE",        [](World& w, const Values& v) { ReadProfile(w, w.VehicleAt(Whole(v[0])), v[1].text); }},
    { 44, "FOLLOW_TRAJECTORY",    [](World& w, const Values& v) { w.VehicleAt(Whole(v[0])).trajectories[v[1].text] = w.Now(); }},
    { 45, "ATTACH_DRIVER",        nullptr},
    { 46, "SET_DRIVER_STYLE",     [](World& w, const Values& v) { w.driverStyles[v[0].text] = Whole(v[1]); }},
    { 47, "SET_SPEED_LIMIT",      [](World& w, const Values& v) { w.speedLimit = v[0].number; }},
    { 60, "SET_WEATHER",          [](World& w, const Values& v) { w.weather = Whole(v[0]); }},
    { 61, "SET_VISIBILITY",       [](World& w, const Values& v) { w.ChangeVisibility(v[0].number, v[1].number); }},
    { 62, "SET_RAIN",             [](World& w, const Values& v) { w.rain = v[0].number; }},
    { 63, "SET_WIND",             [](World& w, const Values& v) { w.windSpeed = v[0].number; }},
    { 64, "SET_FRICTION",         [](World& w, const Values& v) { w.friction = v[0].number; }},
    { 65, "SET_DAY_HOUR",         [](World& w, const Values& v) { w.dayHour = v[0].number; }},
    { 66, "SET_TRAFFIC_LIGHT",    [](World& w, const Values& v) { w.trafficLights[Whole(v[0])] = Whole(v[1]); }},
    { 67, "SET_BARRIER",          [](World& w, const Values& v) { w.barriers[Whole(v[0])] = IsSet(v[1]); }},
    { 68, "SET_ROADSIGN",         nullptr},
    { 69, "SHOW_OBJECT",          nullptr},
    { 70, "MOVE_OBJECT",          [](World& w, const Values& v) { w.objects[v[0].text.substr(0, v[0].text.find('#'))] = {v[1].number, v[2].number}; }},
    { 71, "FIRE_TRIGGER",         [](World& w, const Values& v) { w.firedTriggers.insert(v[0].text); }},
    { 72, "ARM_TRIGGER",          [](World& w, const Values& v) { w.firedTriggers.erase(v[0].text); }},
    { 73, "SET_SOURCE",           nullptr},
    { 74, "SET_SINK",             nullptr},
    { 80, "DISPLAY_MESSAGE",      nullptr},
    { 81, "LOG_MESSAGE",          nullptr},
    { 82, "DISPLAY_VALUE",        nullptr},
    { 83, "SET_IMAGE",            nullptr},
    { 84, "HIDE_IMAGE",           nullptr},
    { 85, "PLAY_SOUND",           nullptr},
    { 86, "STOP_SOUND",           nullptr},
    { 87, "SPEAK",                nullptr},
    { 88, "INIT_ANIMATION",       nullptr},
    { 89, "SNAPSHOT",             nullptr},
    { 90, "RUN_PYTHON",           nullptr},
    { 91, "SHOW_MAP",             nullptr},
    {100, "ADD_TIME_MARKER",      nullptr},
    {101, "SET_EXPORTED_CHANNEL", [](World& w, const Values& v) { w.exportedChannels[Whole(v[0])] = v[1].number; }},
    {102, "SET_CHANNEL",          [](World& w, const Values& v) { w.channels[v[0].text + "/" + v[1].text] = v[2].number; }},
    {103, "START_RECORDING",      nullptr},
    {104, "STOP_RECORDING",       nullptr},
    {110, "SET_SCORE",            [](World& w, const Values& v) { SetScore(w, Whole(v[0]), v[1].number); }},
    {111, "ADD_TO_SCORE",         [](World& w, const Values& v) { AddToScore(w, Whole(v[0]), v[1].number); }},
    {112, "EVALUATION_ADD_ERROR", [](World& w, const Values& v) { AddError(w, Whole(v[0])); w.Effect("EVALUATION_ADD_ERROR", {ArgumentText(v[0]), ArgumentText(v[1])}); }},
    {113, "EVALUATION_ADD_POINTS",[](World& w, const Values& v) { AddToScore(w, Whole(v[0]), v[1].number); }},
    {114, "EVALUATION_REMARK",    nullptr},
    // clang-format on
};

// The name of the action and the arguments that it was given, for a host that shows what it can.
void TellEffect(const World& world, const char* name, const Values& values) {
    std::vector<std::string> arguments;
    for (const ParameterValue& value : values)
        if (value.tag != TagVoid || !value.text.empty()) arguments.push_back(ArgumentText(value));
    world.Effect(name, arguments);
}

} // namespace

void RegisterActions(World& world) {
    std::vector<ActionEntry>& table = ActionTable();
    for (const Row& row : kRows) {
        if (table.size() <= row.code) table.resize(row.code + 1);
        table[row.code] = [&world, &row](const Values& values) {
            if (row.body)
                row.body(world, values);
            else
                TellEffect(world, row.name, values);
        };
    }
}

} // namespace TavrelSimulation
