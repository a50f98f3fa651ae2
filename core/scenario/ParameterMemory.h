#ifndef SCENARIO_PARAMETERMEMORY_H
#define SCENARIO_PARAMETERMEMORY_H

#include <scenario/Parameter.h>

struct Parameter::Memory {};

#endif
