// The reader: one pass over the text, one recursion per block, no way back.
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include <Commons/FileUtils.h>
#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <scenario/Parameter.h>
#include <scenario/config.h>
#include <scenario/evaluation.h>
#include <scenario/function.h>
#include <scenario/scenario.h>

#include "items/ChildStore.h"
#include "items/Offer.h"
#include "read/Load.h"
#include "read/LoadReport.h"
#include "read/PlainCall.h"
#include "text/Assertion.h"
#include "text/HostCode.h"
#include "text/Log.h"
#include "text/Problems.h"
#include "text/Refusal.h"
#include "text/TextFormat.h"

namespace {

constexpr char kSource[] = "ScenarioItem";

// The child of a parent that holds no more than one of its kind. A new one takes its place before its content is known,
// so the reader keeps the former one until the new one has been read.
class SinglePlace {
public:
    SinglePlace(ScenarioItem* parent, std::uint32_t kind) {
        if (!parent) return;
        if (kind == KindFunction && parent->kind == KindParameter) {
            if (auto* parameter = dynamic_cast<Parameter*>(parent)) call = &parameter->functionValue;
        } else if (kind == KindEvaluation || kind == KindGeneralParameters) {
            auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(parent);
            if (scenario && kind == KindEvaluation) evaluation = &scenario->evaluation;
            if (scenario && kind == KindGeneralParameters) generalParameters = &scenario->generalParameters;
        }
    }

    ScenarioItem* Get() const {
        if (call) return *call;
        if (evaluation) return *evaluation;
        return generalParameters ? *generalParameters : nullptr;
    }
    // Null, or what stood there before.
    void Set(ScenarioItem* item) const {
        if (call) *call = static_cast<Function*>(item);
        if (evaluation) *evaluation = static_cast<Evaluation*>(item);
        if (generalParameters) *generalParameters = static_cast<GeneralParameters*>(item);
    }

private:
    Function** call = nullptr;
    Evaluation** evaluation = nullptr;
    GeneralParameters** generalParameters = nullptr;
};

// The item that is being read. Unless it is kept, it is taken out of the tree and destroyed again, whichever way the
// read ends: by a refusal or by an exception.
class ItemBeingRead {
public:
    // Holds the item before it does anything that may run out of memory.
    // `itemOuter` is null where `itemParent` is not being read itself.
    ItemBeingRead(Load& itemLoad, ScenarioItem* newItem, ScenarioItem* itemParent, ItemBeingRead* itemOuter)
        : ItemBeingRead(itemLoad, Held{newItem, itemParent, itemOuter}) {
        isTaken = parent != nullptr; // also by a parent that throws when it has the item already
        if (former) place.Set(nullptr);
        if (isLeftOut)
            item->parent = parent;
        else if (parent)
            isTaken = Offer();
        if (former && !isTaken) PutFormerBack();
        load.tree.Open(item, IsInTree());
    }
    ItemBeingRead(const ItemBeingRead&) = delete;
    ItemBeingRead& operator=(const ItemBeingRead&) = delete;
    ~ItemBeingRead() {
        --load.depth;
        if (!item) return;
        // A CONFIG keeps its children alive on purpose. Of what was refused nobody else knows them.
        for (; load.configs.size() > firstConfig; load.configs.pop_back())
            childStore::Destroy(load.configs.back()->children);
        if (isTaken && !isLeftOut) {
            TakeBackAndDestroy(*parent, item);
        } else {
            delete item;
        }
        PutFormerBack();
    }

    ScenarioItem* operator->() const { return item; }
    ScenarioItem* Get() const { return item; }
    // A root is its own tree; below it, the parent may have ignored the item.
    bool IsInTree() const { return isTaken || !parent; }
    // Whether it is destroyed as soon as it has been read, and is no child of its parent until then.
    bool IsLeftOut() const { return isLeftOut; }
    void LeaveOut() { load.tree.Close(item, true); }
    ScenarioItem* Keep() {
        load.tree.Close(item, true);
        if (former && place.Get())
            GiveFormerUp();
        else
            PutFormerBack();
        if (outer && place.Get() == item) outer->lastSingle = item;
        return std::exchange(item, nullptr);
    }
    void PassOver() { load.tree.Close(item, false); }

private:
    struct Held {
        ScenarioItem* item;
        ScenarioItem* parent;
        ItemBeingRead* outer;
    };
    ItemBeingRead(Load& itemLoad, const Held& held) noexcept
        : load(itemLoad), item(held.item), parent(held.parent), outer(held.outer), place(parent, item->kind),
          former(place.Get()), firstConfig(load.configs.size()),
          // A task takes any rule in.
          isLeftOut(load.leavesOutRules && outer && item->kind == KindRule && dynamic_cast<const Task*>(parent)) {
        ++load.depth;
    }

    // A parent that the host has given may be of a class of its own.
    bool Offer() {
        if (outer) return OfferChild(*parent, item);
        const HostCode hostCode;
        return OfferChild(*parent, item);
    }
    // Unless something else stands there by now.
    void PutFormerBack() {
        if (former && !place.Get()) place.Set(former);
        former = nullptr;
    }
    // Nobody else knows what was read with this very text, and a scenario owns its general parameters alone. Any other
    // may have an owner by now.
    void GiveFormerUp() {
        if (former == (outer ? outer->lastSingle : nullptr) || former->kind == KindGeneralParameters) {
            delete former;
        } else if (former->kind == KindEvaluation) {
            former->parent = nullptr;
        }
        former = nullptr;
    }

    Load& load;
    ScenarioItem* item;
    ScenarioItem* parent;
    ItemBeingRead* outer; // of the parent
    SinglePlace place;
    ScenarioItem* former;               // of that place; out of the tree as long as the item stands there
    ScenarioItem* lastSingle = nullptr; // the call or evaluation that was read into the item last
    std::size_t firstConfig;            // of those of the load that stand in the item, itself included
    const bool isLeftOut;
    bool isTaken = false; // by the parent, or would be
};

// What became of a block.
enum class Outcome { Refused, Read, PassedOver };

// `outer` is that of the parent, null where the parent is not being read itself.
Outcome ReadBlock(Load& load, ScenarioItem* parent, ItemBeingRead* outer, ItemLoadContext* context, bool headerOnly,
                  ScenarioItem*& result);

// From the opening brace to the closing one.
bool ReadContent(Load& load, ItemBeingRead& item, ItemLoadContext* context, bool headerOnly) {
    ScenarioTextStream& stream = load.text.stream;
    if (CharAt(stream) != '{') return ReportRefusal(stream, Cause::NoBrace, item.Get());
    NextLineFrom(stream, stream.cursor);
    ForgetRefusalCause();
    if (!item->OnLoadBegin()) return ReportRefusal(stream, Cause::ItemRefused, item.Get());
    for (;;) {
        ForgetRefusalCause();
        if (CharAt(stream) == '}') {
            if (!item->OnLoadEnd()) return ReportRefusal(stream, Cause::ItemIncomplete, item.Get());
            NextLineFrom(stream, stream.cursor);
            return true;
        }
        if (item.IsLeftOut() && PassOverPlainCall(load, *item.Get())) continue;
        if (item->LoadAttribute(stream)) {
            NextLineAfterReading(stream);
            continue;
        }
        if (headerOnly) {
            scenarioDepth = 1;
            SkipBlock(stream);
            const bool isClosed = scenarioDepth == 0;
            scenarioDepth = 0;
            return isClosed || ReportRefusal(stream, Cause::TextEnds, item.Get());
        }
        ScenarioItem* child = nullptr;
        if (ReadBlock(load, item.Get(), &item, context, false, child) == Outcome::Refused) return false;
    }
}

// Accepted by kind, yet not taken in: a second include of one file, or a call directly under a call.
[[gnu::cold, gnu::noinline]] void WarnOfPassedOver(const ScenarioTextStream& header, const ScenarioItem& item,
                                                   const ScenarioItem& parent) {
    const std::string text = std::string(KindKeyword(item.kind)) + " (" + item.name +
                             ") is passed over: " + KindKeyword(parent.kind) + " (" + parent.name +
                             ") does not take it in.";
    LogMessage(LogSeverity::Warning, text);
    TellProblem(header, text.substr(0, text.size() - 1), true);
}

Outcome ReadBlock(Load& load, ScenarioItem* parent, ItemBeingRead* outer, ItemLoadContext* context, bool headerOnly,
                  ScenarioItem*& result) {
    ScenarioTextStream& stream = load.text.stream;
    ScenarioItemKind kind = KindNone;
    if (!ReadHeader(stream, kind, load.name)) {
        ReportRefusal(stream, Cause::NoHeader, parent);
        return Outcome::Refused;
    }
    if (kind == KindNone || kind == KindModifier) {
        ReportRefusal(stream, Cause::UnknownKind, parent);
        return Outcome::Refused;
    }
    if (load.IsTooDeep()) {
        ReportRefusal(stream, Cause::TooDeep, parent);
        return Outcome::Refused;
    }
    const ScenarioTextStream header = stream;
    NextLineAfterReading(stream);
    ScenarioItem* created = CreateItem(kind, load.name, context);
    if (!created) AssertionFailed(kSource, 565);

    ItemBeingRead item(load, created, parent, outer);
    if (kind == KindConfig) load.configs.push_back(static_cast<Config*>(created));
    if (!ReadContent(load, item, context, headerOnly)) return Outcome::Refused;
    if (!item.IsInTree()) {
        WarnOfPassedOver(header, *item.Get(), *parent);
        item.PassOver();
        return Outcome::PassedOver;
    }
    if (item.IsLeftOut())
        item.LeaveOut();
    else
        result = item.Keep();
    return Outcome::Read;
}

ScenarioItem* Read(Load& load, ScenarioItem* parent, ItemLoadContext* context, bool headerOnly) {
    ScenarioItem* item = nullptr;
    try {
        ReadBlock(load, parent, nullptr, context, headerOnly, item);
    } catch (const boost::bad_lexical_cast&) {
        ReportRefusal(load.text.stream, Cause::NoNumber, parent);
        throw;
    }
    return item;
}

} // namespace

ScenarioItem* ReadItem(ScenarioTextStream& stream, ScenarioItem* parent, ItemLoadContext* context, bool headerOnly) {
    Load load(stream, parent);
    return Read(load, parent, context, headerOnly);
}

ScenarioItem* LoadScenarioText(ScenarioTextStream& stream, ScenarioItem* parent, ItemLoadContext* context,
                               std::ostream* log, bool headerOnly) {
    scenarioLog = log;
    return ReadItem(stream, parent, context, headerOnly);
}

ScenarioItem* LoadScenarioVariables(ScenarioTextStream& stream, ItemLoadContext* context, std::ostream* log) {
    scenarioLog = log;
    Load load(stream, nullptr);
    // Without a root model the rules of a text may hold definitions for what comes later in it.
    load.leavesOutRules = scenarioRootModel != nullptr;
    return Read(load, nullptr, context, false);
}

// `text` ends in a NUL that counts for `size`, unless the file is empty.
static ScenarioItem* LoadFileText(const char* path, const char* text, std::size_t size, bool headerOnly) {
    if (size == 0) {
        LogMessage(LogSeverity::Warning, std::string("File ") + path + " is empty.");
        TellUnreadableFile("the file is empty");
        return nullptr;
    }
    ScenarioTextStream stream(text, size);
    ItemLoadContext context{nullptr, nullptr};
    ScenarioItem* item = ReadItem(stream, nullptr, &context, headerOnly);
    if (!item) LogMessage(LogSeverity::Error, LoadFailureText(path, stream));
    return item;
}

ScenarioItem* LoadScenarioFile(const char* path, std::ostream* log, bool headerOnly) {
    if (!path) AssertionFailed(kSource, 466);
    scenarioLog = log;
    const LoadSource source(path);

    std::vector<unsigned char> bytes;
    try {
        if (!Commons::FileUtils::LoadFile(path, bytes)) {
            LogMessage(LogSeverity::Information, std::string("Unable to open file ") + path);
            TellUnreadableFile("the file cannot be opened");
            return nullptr;
        }
        if (!bytes.empty()) bytes.push_back('\0');
    } catch (const std::bad_alloc&) {
        AssertionFailed(kSource, 487, "there is not enough memory for the file");
    }
    return LoadFileText(path, reinterpret_cast<const char*>(bytes.data()), bytes.size(), headerOnly);
}

ScenarioItem* LoadScenarioFileText(const char* path, const std::string& text, std::ostream* log, bool headerOnly) {
    if (!path) AssertionFailed(kSource, 466);
    scenarioLog = log;
    const LoadSource source(path);
    return LoadFileText(path, text.c_str(), text.empty() ? 0 : text.size() + 1, headerOnly);
}
