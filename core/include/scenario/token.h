#ifndef SCENARIO_TOKEN_H
#define SCENARIO_TOKEN_H

#include <scenario/ScenarioItem.h>

// An item that has a definition. The root model defines every parameter, function, action and condition once; scripts
// hold instances that refer to a definition by name. Model attributes belong to definitions, user attributes to both.
// Definitions must outlive their instances, because `model` is a plain pointer.
class TAVREL_MODEL_API Token : public ScenarioItem {
public:
    Token* model = this; // borrowed; this item in a definition, null after a failed link. It may be an instance itself
    bool valid = true;   // as of the last UpdateValidity
    bool mark = false;   // for hosts; see ResetMarks

    explicit Token(ScenarioItem* parentItem = nullptr);
    ~Token() override;

    // The flags, then model attributes if this is a definition, then user attributes.
    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    // Copies the user attributes only: a clone needs the link, not the data.
    ScenarioItem* Clone() const override;
    // Validity and display text of the subtree, children first.
    void UpdateDisplayTextTree() override;
    bool IsValid() const override;

    virtual void SetModel(Token* item);
    virtual bool LoadModelAttribute(ScenarioTextStream& stream);
    virtual bool LoadUserAttribute(ScenarioTextStream& stream);
    virtual void SaveModelAttributes(std::ostream& out) const;
    virtual void SaveUserAttributes(std::ostream& out) const;
    virtual void CopyModelAttributes(Token* target) const;
    virtual void CopyUserAttributes(Token* target) const;
    // Valid when all children are.
    virtual void UpdateValidity();
    // Gives a definition whose name is taken the smallest free decimal number as its name.
    virtual void MakeUniqueName();

    // Sets the model of `item` to the definition of its kind and name in the folder `listName` of the model root, or to
    // null if there is none. An item whose parent has that name is a definition. A missing folder is a fatal assertion.
    static void LinkModel(Token* item, const char* listName);
    // Clears `mark` in the whole subtree.
    static void ResetMarks(Token* item);
};

// The same two, called like the other functions over items.
inline void LinkModel(Token* item, const char* listName) { Token::LinkModel(item, listName); }
inline void ResetMarks(Token* item) { Token::ResetMarks(item); }

#endif
