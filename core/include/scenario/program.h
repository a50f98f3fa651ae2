#ifndef SCENARIO_PROGRAM_H
#define SCENARIO_PROGRAM_H

#include <scenario/ScenarioItem.h>

// A labelled list of items, which it owns and destroys. The root model is such an item.
class TAVREL_MODEL_API Folders : public ScenarioItem {
public:
    std::vector<ScenarioItem*> children; // owned, in text order

    Folders();
    ~Folders() override;

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
};

// The value list of an enumerated parameter; holds Enum entries only.
class TAVREL_MODEL_API EnumTab : public Folders {
public:
    EnumTab();
    ~EnumTab() override;

    bool AcceptsChildKind(std::uint32_t childKind) const override;
    void UpdateDisplayText() override;

    // The first entry of that name (the label does not count), or null.
    ScenarioItem* FindEntry(const std::string& entryName) const;
};

// Holds scenarios and further groups.
class TAVREL_MODEL_API Group : public Folders {
public:
    Group();
    ~Group() override;

    bool AcceptsChildKind(std::uint32_t childKind) const override;
};

// Holds scenarios and groups, but no further program.
class TAVREL_MODEL_API Program : public Folders {
public:
    Program();
    ~Program() override;

    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    ScenarioItem* Clone() const override;
};

#endif
