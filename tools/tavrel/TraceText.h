#ifndef TAVREL_COMMAND_TRACETEXT_H
#define TAVREL_COMMAND_TRACETEXT_H

#include <simulation/Events.h>

#include <string>

namespace tavrel {

// An event as a line for people.
std::string EventText(const TavrelSimulation::Event& event);

} // namespace tavrel

#endif
