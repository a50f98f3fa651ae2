#include <scenario/task.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <optional>
#include <typeinfo>

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <scenario/Criteria.h>
#include <scenario/evaluation.h>
#include <scenario/rule.h>
#include <scenario/scenario.h>
#include <scenario/variable.h>

#include "items/ChildStore.h"
#include "items/VariableNames.h"
#include "run/StepScope.h"
#include "text/HostCode.h"
#include "text/Log.h"
#include "text/NumberText.h"
#include "text/Refusal.h"

namespace {

std::int32_t ruleCount = 0;

// Goes up with everything that the start of a task does and that is seen outside the tree: a log line, a notification,
// a start that another class may have replaced. While it stands still, the same start once more changes nothing.
std::uint64_t initTraces = 0;

// States may be nested deeper than the stack would carry, so the walks below keep the way down in a vector wherever
// they know what a sub-task does. A class of the host may override it, and is then called.
bool StartsAsTask(const Task* task) { return typeid(*task) == typeid(Task); }

bool StepsAsTask(const Task* task) {
    const std::type_info& type = typeid(*task);
    return type == typeid(Task) || type == typeid(Criteria) || type == typeid(Include) || type == typeid(Evaluation) ||
           type == typeid(ScenarioLib::Scenario);
}

// A strict decimal number with an optional sign. Throws boost::bad_lexical_cast.
std::int32_t StrictWholeNumber(const std::string& text) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    if (begin != end && *begin == '+' && begin + 1 != end && begin[1] != '-') ++begin;
    std::int32_t number = 0;
    const auto [rest, error] = std::from_chars(begin, end, number);
    if (error != std::errc() || rest != end) throw boost::bad_lexical_cast();
    return number;
}

// The way down through the states of a step. Kept between steps, so that stepping allocates nothing once it has been
// at its deepest; a step within a step, made by an action, goes on after the way of the outer one.
class WayDown {
public:
    WayDown() : base(way.size()) {}
    ~WayDown() { way.resize(base); }
    WayDown(const WayDown&) = delete;
    WayDown& operator=(const WayDown&) = delete;

    void Push(Task* task) { way.push_back(task); }
    Task* Pop() {
        if (way.size() == base) return nullptr;
        Task* task = way.back();
        way.pop_back();
        return task;
    }

private:
    inline static std::vector<Task*> way;
    std::size_t base;
};

} // namespace

Task::Task(ScenarioItemObserver* observer) {
    if (observer) AddObserver(observer);
}

Task::~Task() {
    ruleCount -= static_cast<std::int32_t>(rules.size());
    childStore::Destroy(variables);
    childStore::Destroy(rules);
    childStore::DestroyAllLevels<&Task::subTasks>(subTasks);
}

void Task::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (kindFilter == KindNone || kindFilter == KindVariable) childStore::Append(variables, out, KindNone);
    if (kindFilter == KindNone || kindFilter == KindRule) childStore::Append(rules, out, KindNone);
    if (kindFilter == KindNone || kindFilter == KindTask) childStore::Append(subTasks, out, KindNone);
}

void Task::DetachChildren() {
    variables.clear();
    rules.clear();
    subTasks.clear();
    ruleCount = 0;
}

void Task::AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) {
    if (!child) return;
    switch (child->kind) {
    case KindVariable:
        childStore::Place(this, variables, child, reference, after);
        break;
    case KindRule:
        childStore::Place(this, rules, child, reference, after);
        ++ruleCount;
        break;
    case KindTask:
        childStore::Place(this, subTasks, child, reference, after);
        static_cast<Task*>(child)->RenumberVariables();
        break;
    default:
        break;
    }
}

void Task::RemoveChild(ScenarioItem* child) {
    if (childStore::Remove(this, variables, child)) return;
    if (childStore::Remove(this, rules, child)) return;
    childStore::Remove(this, subTasks, child);
}

void Task::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (!newChild) return;
    switch (newChild->kind) {
    case KindVariable:
        childStore::Replace(this, variables, newChild, oldChild);
        break;
    case KindRule:
        childStore::Replace(this, rules, newChild, oldChild);
        break;
    case KindTask:
        childStore::Replace(this, subTasks, newChild, oldChild);
        break;
    case KindInclude:
        if (parent) parent->ReplaceChild(newChild, oldChild);
        break;
    default:
        break;
    }
}

void Task::SwapChildren(ScenarioItem* a, ScenarioItem* b) {
    childStore::Swap(variables, a, b);
    childStore::Swap(rules, a, b);
    childStore::Swap(subTasks, a, b);
}

void Task::SetName(const std::string& newName) {
    Token::SetName(newName);
    SetObservableId(static_cast<std::uint32_t>(WholeNumberOf(name)));
}

bool Task::AcceptsChildKind(std::uint32_t childKind) const {
    return childKind == KindRule || childKind == KindTask || childKind == KindVariable;
}

void Task::GetSubTasks(std::vector<Task*>& out) const { out.insert(out.end(), subTasks.begin(), subTasks.end()); }

bool Task::LoadAttribute(ScenarioTextStream& stream) { return Token::LoadAttribute(stream); }

bool Task::LoadUserAttribute(ScenarioTextStream& stream) {
    if (Token::LoadUserAttribute(stream)) return true;
    std::string value;
    if (!ReadStringAttribute(stream, "TASK_KIND", value)) return false;
    try {
        taskKind = StrictWholeNumber(value);
        return true;
    } catch (const boost::bad_lexical_cast& error) {
        LogMessage(LogSeverity::Error, std::string("Task::LoadUserAttribute : ") + error.what());
        return Refuse("TASK_KIND \"", value, "\" is no whole number of 32 bits");
    }
}

void Task::SaveUserAttributes(std::ostream& out) const {
    Token::SaveUserAttributes(out);
    WriteAttribute(out, "TASK_KIND", std::to_string(taskKind));
}

void Task::CopyUserAttributes(Token* target) const {
    Token::CopyUserAttributes(target);
    if (auto* task = dynamic_cast<Task*>(target)) task->taskKind = taskKind;
}

bool Task::RenumberVariables() { return variables.empty() ? false : VariableNames(*this).MakeUnique(); }

// Asked at each step, and every state up to the one that is found may have a new name by then. So of most names only
// the size is read, and those that are plain numbers are told apart by their digits, the last one first, and not
// converted.
std::ptrdiff_t Task::StateIndex(std::int32_t number) const {
    const std::string digits = std::to_string(number);
    const bool isPlain = number > 0 && number < std::numeric_limits<std::int32_t>::max(); // larger ones count as it too
    const std::size_t fewest = number == 0 ? 0 : digits.size();                           // without digits it is 0
    const std::size_t last = digits.size() - 1;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto hasNumber = [&](const std::string& text) {
        const char* const at = text.c_str();
        if (!isPlain || !isDigit(*at) || *at == '0') return WholeNumberOf(text) == number;
        return at[last] == digits[last] && !isDigit(at[last + 1]) && std::memcmp(at, digits.data(), last) == 0;
    };
    for (std::size_t i = 0; i < subTasks.size(); ++i)
        if (subTasks[i] && subTasks[i]->name.size() >= fewest && hasNumber(subTasks[i]->name))
            return static_cast<std::ptrdiff_t>(i);
    return -1;
}

std::string Task::StateName(std::int32_t number) const {
    const auto found = stateNames.find(number);
    return found == stateNames.end() ? std::string() : found->second;
}

std::int32_t Task::MaxRuleLevel() const {
    std::int32_t highest = 0;
    std::vector<const Task*> open{this};
    while (!open.empty()) {
        const Task* task = open.back();
        open.pop_back();
        for (const Rule* rule : task->rules)
            if (rule) highest = std::max(highest, rule->Level());
        for (const Task* state : task->subTasks)
            if (state) open.push_back(state);
    }
    return highest;
}

std::int32_t Task::RuleCount() { return ruleCount; }

// What is known of the surroundings while a tree of states is started: they are the same for all of it.
struct Task::Enclosure {
    const Task* top;
    std::optional<bool> inScenario;

    // Whether the nearest scenario, criteria or include upward is a scenario.
    bool IsScenario() {
        if (!inScenario) {
            const ScenarioItem* item = top;
            while (item && typeid(*item) == typeid(Task)) item = item->parent;
            inScenario = dynamic_cast<const ScenarioLib::Scenario*>(FindOwningUnit(item)) != nullptr;
        }
        return *inScenario;
    }
};

void Task::BeginInit(const std::string& path, double time) {
    workPath = path;
    if (scenarioLog) {
        ++initTraces;
        LogMessage(LogSeverity::Progress, "Init task [" + label + "]");
    }
    stepCount = 0;
    startTime = time;
}

void Task::EndInit(double time, Enclosure& enclosure) {
    if (subTasks.empty())
        currentState = kNoState;
    else
        currentState = nextState == kNoState ? FirstState() : nextState;
    for (std::size_t i = 0; i < rules.size(); ++i)
        if (rules[i]) rules[i]->Init(workPath, time);
    for (Variable* variable : variables)
        if (variable) variable->value = variable->initialValue;
    // The start at 0.0 is the one that every host makes itself, so nobody needs to be told.
    const bool canBeHeard = !observers.empty() || typeid(*this) != typeid(Task);
    if (time != 0.0 && canBeHeard && enclosure.IsScenario()) {
        ++initTraces;
        NotifyObservers(kEventInitialised);
    }
    transitionPending = 0;
}

void Task::Init(const std::string& path, double time) {
    struct Level {
        Task* task;
        std::size_t next;
    };
    Enclosure enclosure{this, std::nullopt};
    std::vector<Level> open;
    BeginInit(path, time);
    if (!subTasks.empty()) open.push_back({this, 0});
    while (!open.empty()) {
        Level& level = open.back();
        if (level.next >= level.task->subTasks.size()) {
            if (level.task != this) level.task->EndInit(time, enclosure);
            open.pop_back();
            continue;
        }
        Task* state = level.task->subTasks[level.next++];
        if (!state) continue;
        if (!StartsAsTask(state)) {
            ++initTraces;
            state->Init(path, time);
            continue;
        }
        state->BeginInit(path, time);
        if (state->subTasks.empty())
            state->EndInit(time, enclosure);
        else
            open.push_back({state, 0});
    }
    EndInit(time, enclosure);
}

std::int32_t Task::FirstState() const {
    return subTasks.empty() || !subTasks.front() ? 0 : WholeNumberOf(subTasks.front()->name);
}

void Task::InitDownward(Task* task, const std::string& path, double time, bool asTask) {
    const auto init = [&](Task* level) {
        const std::uint64_t before = initTraces;
        asTask ? level->Task::Init(path, time) : level->Init(path, time);
        return initTraces == before && (asTask || StartsAsTask(level));
    };
    // The start of a level starts everything below it, so the starts that follow repeat it. Once one has left no trace
    // the others are spared, as they would take the square of the depth.
    bool isDone = false;
    while (!task->subTasks.empty() && task->subTasks.front()) {
        const std::int32_t first = task->FirstState();
        if (!isDone) {
            task->currentState = first;
            task->transitionPending = 1;
            isDone = init(task);
        }
        task->nextState = first;
        task = task->subTasks.front();
    }
    if (!isDone) init(task);
}

void Task::Step(double time, ScenarioLib::Scenario* scenario, bool countStep) {
    const StepScope scope;
    WayDown way;
    for (Task* task = this; task;) {
        Task* state = nullptr;
        if (!task->StepOwn(time, scenario, state)) break;
        way.Push(task);
        if (state && !StepsAsTask(state)) {
            const HostCode hostCode;
            state->Step(time, scenario, countStep);
            break;
        }
        task = state;
    }
    if (!countStep) return;
    while (Task* task = way.Pop()) ++task->stepCount;
}

// The step of this level alone, and which state is to be stepped next. False if the step ends here and does not count.
bool Task::StepOwn(double time, ScenarioLib::Scenario* scenario, Task*& state) {
    currentTime = time;
    if (scenario) scenario->currentTask = this;
    if (currentState == kStateEnd) return false;

    if (transitionPending != 0) {
        transitionPending = 0;
        currentState = nextState;
        if (currentState != kStateKeepPause && scenario) scenario->paused = 0;
        EnterState(time);
        return false;
    }

    // By index, as an action may add rules.
    for (std::size_t i = 0; i < rules.size() && (i == 0 || nextState != kStateEnd); ++i)
        if (rules[i]) rules[i]->Step(time);
    if (nextState == kStateEnd) return true;
    const std::ptrdiff_t index = StateIndex(currentState);
    if (index >= 0) state = subTasks[static_cast<std::size_t>(index)];
    return true;
}

void Task::EnterState(double time) {
    const HostCode hostCode; // of observers, and of classes that start in another way
    Task* task = this;
    for (std::ptrdiff_t index = StateIndex(currentState); index >= 0; index = task->StateIndex(task->currentState)) {
        task = task->subTasks[static_cast<std::size_t>(index)];
        const std::uint64_t before = initTraces;
        task->Init(workPath, time);
        // It has started all states below it too; see InitDownward.
        if (initTraces == before && StartsAsTask(task)) return;
    }
}
