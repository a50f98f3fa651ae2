#include "text/TextUnderWay.h"

namespace {

TextUnderWay* currentText = nullptr;

} // namespace

TextUnderWay::TextUnderWay(ScenarioTextStream& text) : stream(text), outer(currentText) { currentText = this; }

TextUnderWay::~TextUnderWay() { currentText = outer; }

TextUnderWay* TextUnderWay::Current() { return currentText; }

bool TextUnderWay::TakeLong(std::size_t bytes) {
    constexpr std::size_t kTimesTheText = 16;
    longBytes += bytes;
    return longBytes / kTimesTheText <= static_cast<std::size_t>(stream.end - stream.begin);
}
