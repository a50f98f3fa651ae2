#include <scenario/LoadDiagnostics.h>

#include <utility>

#include "text/Problems.h"
#include "text/Refusal.h"

LoadProblemListener::~LoadProblemListener() = default;

LoadProblemListener* SetLoadProblemListener(LoadProblemListener* listener) {
    return std::exchange(loadProblemListener, listener);
}

ScopedLoadProblemListener::ScopedLoadProblemListener() : former(SetLoadProblemListener(this)) {}

ScopedLoadProblemListener::~ScopedLoadProblemListener() { SetLoadProblemListener(former); }

LoadProblemListener* ScopedLoadProblemListener::Former() const { return former; }

LoadTextName::LoadTextName(const std::string& name) : outer(std::exchange(NameOfText(), name)) {}

LoadTextName::~LoadTextName() { NameOfText() = outer; }
