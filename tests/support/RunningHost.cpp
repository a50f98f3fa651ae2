#include <support/RunningHost.h>

#include <cmath>
#include <iomanip>

namespace {

constexpr std::string_view kModel = R"(
    TYPEOF FOLDER (model)
        TYPEOF FOLDER (ENUMTAB_LIST)
            TYPEOF ENUMTAB (TAB)
                TYPEOF ENUM (ONE) TYPE="INTEGER" VALUE="1"
                TYPEOF ENUM (TWO) TYPE="INTEGER" VALUE="2"
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (A) TYPE="FLOAT" USAGE="BY_VALUE" ENUMTAB="TAB"
                KINDLIST="USER VARIABLE ENUM FUNCTION"
            TYPEOF PARAMETER (B) TYPE="FLOAT" USAGE="BY_VALUE" ENUMTAB="TAB"
                KINDLIST="USER VARIABLE ENUM FUNCTION"
        TYPEOF FOLDER (FUNCTION_LIST)
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (AND)
            TYPEOF CONDITION (OR)
            TYPEOF CONDITION (EQUAL) CODE="1"
                TYPEOF PARAMETER (A) KIND="USER"
                TYPEOF PARAMETER (B) KIND="USER"
            TYPEOF CONDITION (AFTER) CODE="2"
                TYPEOF PARAMETER (A) KIND="USER"
            TYPEOF CONDITION (SWITCH) CODE="3"
                TYPEOF PARAMETER (A) KIND="USER"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (SAY) CODE="1"
                TYPEOF PARAMETER (A) KIND="USER"
            TYPEOF ACTION (GO) CODE="2"
                TYPEOF PARAMETER (A) KIND="USER"
            TYPEOF ACTION (END) CODE="3"
            TYPEOF ACTION (PAUSE) CODE="4"
            TYPEOF ACTION (STOP) CODE="5"
            TYPEOF ACTION (DO) CODE="6"
                TYPEOF PARAMETER (A) KIND="USER"
)";

int IntegerOf(const ParameterValues& values) { return static_cast<int>(values[0].number); }

std::string NumberText(double number) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << number;
    return text.str();
}

// Whatever a test reads is also saved, read and saved again, which must give the same text.
void ExpectRoundTrip(ScenarioItem& item) {
    std::ostream* const formerLog = scenarioLog;
    const std::string saved = SavedText(item);
    ScenarioTextStream stream(saved.c_str(), saved.size() + 1);
    const std::unique_ptr<ScenarioItem> again(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    scenarioLog = formerLog;
    ASSERT_TRUE(again) << LoadFailureText("saved", stream);
    EXPECT_EQ(SavedText(*again), saved);
}

} // namespace

RunningHost::RunningHost()
    : formerModel(scenarioRootModel), formerActions(ActionTable()), formerConditions(ConditionTable()) {
    scenarioRootModel = nullptr;
    model = Read(ScriptText(kModel));
    EXPECT_TRUE(model) << log.str();
    scenarioRootModel = dynamic_cast<Folders*>(model.get());

    ConditionTable() = {
        [](const ParameterValues&) { return true; },
        [](const ParameterValues& values) { return values[0].number == values[1].number; },
        [this](const ParameterValues& values) { return now > static_cast<double>(values[0].number); },
        [this](const ParameterValues& values) { return switches[IntegerOf(values)]; },
    };
    const auto go = [this](std::int32_t state) {
        Task* task = running->currentTask;
        task->nextState = state;
        task->transitionPending = 1;
    };
    ActionTable() = {
        [](const ParameterValues&) {},
        [this](const ParameterValues& values) { Note("SAY " + NumberText(static_cast<double>(values[0].number))); },
        [this, go](const ParameterValues& values) {
            Note("GO " + std::to_string(IntegerOf(values)));
            go(IntegerOf(values));
        },
        [this, go](const ParameterValues&) {
            Note("END");
            go(Task::kStateEnd);
        },
        [this](const ParameterValues&) {
            Note("PAUSE");
            running->paused = 1;
        },
        [this](const ParameterValues&) {
            Note("STOP");
            running->stopped = 1;
        },
        [this](const ParameterValues& values) { deeds[IntegerOf(values)](); },
    };
}

RunningHost::~RunningHost() {
    scenarioRootModel = formerModel;
    ActionTable() = formerActions;
    ConditionTable() = formerConditions;
    scenarioLog = nullptr;
}

std::unique_ptr<ScenarioItem> RunningHost::Read(const std::string& text) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{this, this};
    std::unique_ptr<ScenarioItem> item(LoadScenarioText(stream, nullptr, &context, &log, false));
    if (!item) log << '\4' << LoadFailureText("script", stream) << '\n';
    // A reference would load its file again, and say so.
    if (item && text.find("ISA_INDEX") == std::string::npos) ExpectRoundTrip(*item);
    return item;
}

void RunningHost::Start(ScenarioLib::Scenario& scenario, double time) {
    running = &scenario;
    now = time;
    scenario.Init("work", time);
}

void RunningHost::StepAt(double time) {
    now = time;
    running->StepScenario(time);
}

std::string RunningHost::Run(ScenarioLib::Scenario& scenario, const std::vector<double>& times) {
    trace.clear();
    Start(scenario, times.front());
    for (std::size_t i = 1; i < times.size(); ++i) StepAt(times[i]);
    return TakeTrace();
}

void RunningHost::OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) {
    const std::string id = std::to_string(static_cast<std::int32_t>(source->GetObservableId()));
    switch (event) {
    case Rule::kEventBecameTrue:
        Note("rule " + id + " then");
        break;
    case Rule::kEventBecameFalse:
        Note("rule " + id + " else");
        break;
    case Task::kEventInitialised:
        Note("state " + id);
        break;
    default:
        Note("unknown event");
        break;
    }
}

void RunningHost::Note(const std::string& what) {
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line << std::fixed << std::setprecision(1) << now << ' ' << what << '\n';
    trace += line.str();
}
