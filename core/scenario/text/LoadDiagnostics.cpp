#include <scenario/LoadDiagnostics.h>

#include <utility>

#include "text/Refusal.h"

LoadProblemListener::~LoadProblemListener() = default;

LoadProblemListener* SetLoadProblemListener(LoadProblemListener* listener) {
    return std::exchange(loadProblemListener, listener);
}
