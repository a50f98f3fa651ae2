#include <simulation/World.h>

#include <algorithm>
#include <cmath>

#include <Commons/ShortestNumber.h>

namespace TavrelSimulation {

namespace {

constexpr double kFar = 1e9;             // a distance to what is not there
constexpr double kLongTime = 60;         // s; what headways and times to collision are at most
constexpr double kCollisionDistance = 4; // m
constexpr double kFollowGain = 0.1;      // 1/s
constexpr double kFollowRate = 2.5;      // m/s2
constexpr double kStanding = 1e-6;       // m/s

double Approach(double value, double goal, double step) {
    return value < goal ? std::min(goal, value + step) : std::max(goal, value - step);
}

// On the straight lines between the points, and at their ends outside them.
double Interpolated(const std::vector<std::pair<double, double>>& points, double at) {
    if (at <= points.front().first) return points.front().second;
    for (std::size_t i = 1; i < points.size(); ++i)
        if (at < points[i].first) {
            const auto& [fromTime, fromValue] = points[i - 1];
            const auto& [toTime, toValue] = points[i];
            return fromValue + (toValue - fromValue) * (at - fromTime) / (toTime - fromTime);
        }
    return points.back().second;
}

} // namespace

std::string NumberText(float number) { return Commons::ShortestNumber(number); }

int Whole(const ParameterValue& value) {
    if (std::isnan(value.number)) return 0;
    const double limited = std::clamp(static_cast<double>(value.number), -2147483647.0, 2147483647.0);
    return static_cast<int>(limited);
}

std::string ArgumentText(const ParameterValue& value) {
    return !value.text.empty() || value.tag == TagString ? value.text : NumberText(value.number);
}

void World::Start(ScenarioLib::Scenario& runScenario, double time, std::uint32_t seed) {
    scenario = &runScenario;
    startTime = now = before = time;
    first = true;
    random.seed(seed);
}

void World::Advance(double time) {
    const bool begins = time == startTime && now == startTime;
    before = now;
    now = time;
    first = begins;
    const double span = std::max(0.0, now - before); // a clock that is put back moves nothing
    for (auto& [number, vehicle] : vehicles) ChooseTarget(number, vehicle);
    for (auto& [number, vehicle] : vehicles) Move(vehicle, span);
    FindCollisions();
    if (visibilityEnd >= visibilityBegin && now >= visibilityBegin) {
        const double share = visibilityEnd > visibilityBegin
                                 ? std::min(1.0, (now - visibilityBegin) / (visibilityEnd - visibilityBegin))
                                 : 1.0;
        visibility = visibilityFrom + (visibilityGoal - visibilityFrom) * share;
        if (share >= 1.0) visibilityEnd = visibilityBegin - 1;
    }
    dayHour = std::fmod(dayHour + span / 3600, 24.0);
}

void World::ChooseTarget(int number, Vehicle& vehicle) {
    if (!vehicle.profile.empty()) {
        vehicle.speed = vehicle.targetSpeed = Interpolated(vehicle.profile, now - vehicle.profileStart);
        return;
    }
    const auto other = vehicles.find(vehicle.followed);
    if (other == vehicles.end() || !other->second.present) return;
    const double beyond = Distance(number, vehicle.followed) - vehicle.headway * vehicle.speed;
    vehicle.targetSpeed = std::max(0.0, other->second.speed + kFollowGain * beyond);
    vehicle.rate = kFollowRate;
}

void World::Move(Vehicle& vehicle, double span) const {
    if (vehicle.laneChange != 0 && now >= vehicle.laneChangeTime) {
        vehicle.lane += vehicle.laneChange;
        vehicle.laneChange = 0;
    }
    if (!vehicle.present || span <= 0) return;
    const double speedBefore = vehicle.speed;
    vehicle.speed = Approach(vehicle.speed, vehicle.targetSpeed, vehicle.rate * span);
    vehicle.acceleration = (vehicle.speed - speedBefore) / span;
    const double way = (speedBefore + vehicle.speed) / 2 * span;
    vehicle.roadPosition += vehicle.lane < 0 ? -way : way;
    vehicle.x += way * std::cos(vehicle.heading);
    vehicle.travelled += std::abs(way);
}

void World::FindCollisions() {
    for (auto& [number, vehicle] : vehicles)
        for (auto& [otherNumber, other] : vehicles)
            if (number != otherNumber && vehicle.present && other.present && vehicle.lane == other.lane &&
                std::abs(vehicle.roadPosition - other.roadPosition) < kCollisionDistance)
                vehicle.collided = true;
}

bool World::PeriodBegins(double period) const {
    if (first) return true;
    if (period <= 0) return true;
    return std::floor((now - startTime) / period) > std::floor((before - startTime) / period);
}

Task* World::TaskAround() const {
    Task* current = CurrentTask();
    auto* around = current ? dynamic_cast<Task*>(current->parent) : nullptr;
    return around ? around : current;
}

Task* World::FindTask(int number) const {
    return scenario ? dynamic_cast<Task*>(scenario->FindItem(KindTask, std::to_string(number), "")) : nullptr;
}

const Vehicle& World::Look(int number) const {
    static const Vehicle kNone;
    const auto found = vehicles.find(number);
    return found == vehicles.end() ? kNone : found->second;
}

double World::Distance(int from, int to) const {
    const auto a = vehicles.find(from);
    const auto b = vehicles.find(to);
    if (a == vehicles.end() || b == vehicles.end() || !a->second.present || !b->second.present) return kFar;
    return b->second.roadPosition - a->second.roadPosition;
}

double World::Headway(int number, int other) const {
    const double distance = Distance(number, other);
    const auto vehicle = vehicles.find(number);
    if (distance < 0 || distance >= kFar || vehicle->second.speed <= kStanding) return kLongTime;
    return std::min(kLongTime, distance / vehicle->second.speed);
}

double World::TimeToCollision(int number, int other) const {
    const double distance = Distance(number, other);
    if (distance < 0 || distance >= kFar) return kLongTime;
    const Vehicle& a = vehicles.at(number);
    const Vehicle& b = vehicles.at(other);
    const double closing = (a.lane < 0 ? -a.speed : a.speed) - (b.lane < 0 ? -b.speed : b.speed);
    return closing <= kStanding ? kLongTime : std::min(kLongTime, distance / closing);
}

double World::Draw() { return static_cast<double>(random()) / 4294967296.0; }

double World::TimerShows(int number) const {
    const auto timer = timers.find(number);
    if (timer == timers.end()) return 0;
    return timer->second.runs ? now - timer->second.startTime : timer->second.shown;
}

void World::ChangeVisibility(double goal, double duration) {
    visibilityFrom = visibility;
    visibilityGoal = goal;
    visibilityBegin = now;
    visibilityEnd = now + std::max(0.0, duration);
    if (duration <= 0) {
        visibility = goal;
        visibilityEnd = visibilityBegin - 1;
    }
}

void World::Effect(const std::string& name, const std::vector<std::string>& arguments) const {
    if (onEffect) onEffect(name, arguments);
}

} // namespace TavrelSimulation
