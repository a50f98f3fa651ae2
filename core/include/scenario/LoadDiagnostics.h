#ifndef SCENARIO_LOADDIAGNOSTICS_H
#define SCENARIO_LOADDIAGNOSTICS_H

#include <cstdint>
#include <string>

#include <scenario/Export.h>

// Why a text was refused, or what in it was passed over. A load itself answers only yes or no; an author needs the
// place and the cause.
struct LoadProblem {
    std::string file;      // as given to LoadScenarioFile; empty for a text in memory
    std::uint32_t row = 1; // of the line, from 1
    std::string line;      // the line as it stands
    std::string cause; // a sentence without its full stop, such as: unknown action "SetSpedd", did you mean "SetSpeed"
    bool isWarning = false; // the load went on
    std::string script;     // the name that a LoadTextName gives; what the text includes is told under it as well
    std::string assertion;  // the label "SOURCE:LINE" of the AssertAbort that comes next; empty as long as none does
};

// Told of each problem while a load runs, the innermost cause only, and of a fatal assertion before it ends the
// process. It must neither load anything nor change a tree.
class TAVREL_MODEL_API LoadProblemListener {
public:
    virtual ~LoadProblemListener();
    virtual void OnLoadProblem(const LoadProblem& problem) = 0;
};

// Makes `listener` the one that is told, until another takes its place; null for none, as at the start. Borrowed.
// Answers the one before. Without a listener causes are not even composed, and a listener changes no result.
TAVREL_MODEL_API LoadProblemListener* SetLoadProblemListener(LoadProblemListener* listener);

// A listener that is told from its making to its end, in place of the former one, which then listens again. Several end
// in the reverse order of their making.
class TAVREL_MODEL_API ScopedLoadProblemListener : public LoadProblemListener {
public:
    ScopedLoadProblemListener();
    ~ScopedLoadProblemListener() override;
    ScopedLoadProblemListener(const ScopedLoadProblemListener&) = delete;
    ScopedLoadProblemListener& operator=(const ScopedLoadProblemListener&) = delete;

protected:
    // The one in whose place this one listens, for passing on what it is told; null if there was none.
    LoadProblemListener* Former() const;

private:
    LoadProblemListener* former;
};

// Names the text in memory that is read while this object lives, so that a listener can tell the scripts of one file
// apart. A driver's script node does so with the name of its script.
class TAVREL_MODEL_API LoadTextName {
public:
    explicit LoadTextName(const std::string& name);
    ~LoadTextName();
    LoadTextName(const LoadTextName&) = delete;
    LoadTextName& operator=(const LoadTextName&) = delete;

private:
    std::string outer;
};

#endif
