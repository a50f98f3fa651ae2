// Runs a script without a simulator: gives it a vehicle that knows how to brake, registers what its calls do, and steps
// it until it stops.
//
//     run INSTALLATION-FILE
//
// The script is "Classic emergency stop" of the sample installation, whose README lists the CODE of every call.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <cfg/CfgScenario.h>
#include <cfg/ScenarioScript.h>
#include <cfg/Vehicle.h>
#include <scenario/ItemModel.h>

#include "Report.h"

namespace {

// The world outside the script.
struct World {
    ScenarioLib::Scenario* scenario = nullptr;
    double speed = 50 / 3.6; // m/s, of the only vehicle
    double deceleration = 0; // m/s2
};

template <typename Entry>
void provide(std::vector<Entry>& table, std::size_t code, Entry entry) {
    if (table.size() <= code) table.resize(code + 1, table.front()); // what has no entry of its own gets the default
    table[code] = std::move(entry);
}

// An argument is text for a text, else a number. What a reference refers to is asked of the call.
void registerCalls(World& world) {
    provide<FunctionEntry>(FunctionTable(), 31,
                           [&](const ParameterValues&) { return static_cast<float>(world.speed); });

    provide<ConditionEntry>(ConditionTable(), 20, [&](const ParameterValues& arguments) { // time in this state
        const Task& task = *world.scenario->currentTask;
        return task.currentTime - task.startTime >= static_cast<double>(arguments[0].number);
    });
    provide<ConditionEntry>(ConditionTable(), 32, [&](const ParameterValues&) { return world.speed <= 0; });

    provide<ActionEntry>(ActionTable(), 1, [&](const ParameterValues& arguments) { // go on to a sibling of this state
        auto& parent = dynamic_cast<Task&>(*world.scenario->currentTask->parent);
        parent.nextState = static_cast<int>(arguments[0].number);
        parent.transitionPending = 1;
    });
    provide<ActionEntry>(ActionTable(), 8, [&](const ParameterValues&) { world.scenario->stopped = 1; });
    provide<ActionEntry>(ActionTable(), 10, [](const ParameterValues& arguments) { // set a variable
        if (Variable* variable = ReferencedVariable(0)) variable->value = std::to_string(arguments[1].number);
    });
    provide<ActionEntry>(ActionTable(), 32, [&](const ParameterValues& arguments) {
        world.deceleration = static_cast<double>(arguments[1].number);
    });
    for (const std::size_t code : {80U, 81U}) // both show a text
        provide<ActionEntry>(ActionTable(), code, [](const ParameterValues& arguments) {
            std::printf("  %s\n", arguments[0].text.c_str());
        });
}

// Told when a state is entered.
class Observer : public ScenarioItemObserver {
public:
    void OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) override {
        const auto* task = dynamic_cast<Task*>(source);
        if (task && event == Task::kEventInitialised) std::printf("  entered: %s\n", task->label.c_str());
    }
};

void run(const std::string& installation) {
    // Opening the template reads the root model, which the script is linked to.
    const TavrelScenarioTemplateDb::TavrelDatabaseDriver driver(installation, "*", "Classic");
    const auto scenarioTemplate = driver.getScenario("braking/Classic emergency stop.sce");
    std::printf("%s\n", scenarioTemplate->getName().c_str());

    cfg::CfgScenario file;
    if (!file.load(scenarioTemplate->getFilePath().c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr,
                   false, true, true))
        throw std::runtime_error(file.errorMessage);
    auto* script =
        dynamic_cast<cfg::ScenarioScript*>(file.getRootSection()->getSubSection(cfg::ScenarioScript::sectionName()));
    if (!script) throw std::runtime_error("The scenario has no script");

    Observer observer;
    static World world;                             // the tables of the process refer to it from now on
    ItemLoadContext context = {&observer, nullptr}; // observes the tasks and not the rules
    ScenarioTextStream stream(script->text.c_str(), script->text.size() + 1);
    const std::unique_ptr<ScenarioItem> root(LoadScenarioText(stream, nullptr, &context, &std::cerr, false));
    world.scenario = dynamic_cast<ScenarioLib::Scenario*>(root.get());
    if (!world.scenario) throw std::runtime_error("No scenario, row " + std::to_string(stream.line));

    // With the vehicles known, parameters can be shown by name and checked.
    std::vector<cfg::Section*> vehicles;
    file.getRootSection()->getSubSections(cfg::Vehicle::sectionName(), vehicles);
    for (cfg::Section* section : vehicles)
        if (const auto* vehicle = dynamic_cast<cfg::Vehicle*>(section))
            world.scenario->GetVehicle(vehicle->id).name = vehicle->name;
    world.scenario->UpdateDisplayTextTree();
    std::printf("%s\n", world.scenario->IsValid() ? "All calls are valid." : "Some calls are not valid.");

    registerCalls(world);
    scenarioLog = nullptr; // from here on, what is said about each task and rule that starts
    constexpr double kStep = 0.25;
    world.scenario->Init("", 0.0);
    for (int step = 1; step <= 400 && !world.scenario->stopped; ++step) {
        world.speed = std::max(0.0, world.speed - world.deceleration * kStep);
        world.scenario->StepScenario(step * kStep);
    }
    const auto* variable = dynamic_cast<const Variable*>(world.scenario->FindItem(KindVariable, "1", ""));
    std::printf("%s = %s after %.2f s\n", variable->label.c_str(), variable->value.c_str(),
                world.scenario->currentTime);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s INSTALLATION-FILE\n", argv[0]);
        return 2;
    }
    return reportFailures([&] { run(argv[1]); });
}
