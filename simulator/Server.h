#pragma once

#include <functional>

#include "simulator/Line.h"
#include "simulator/PseudoTerminal.h"
#include "simulator/Unit.h"

namespace simulator {

// Blocks SIGINT, SIGTERM and SIGHUP for Serve, and makes a reader that goes away harmless.
void PrepareSignals();

// Carries bytes between the terminal and the unit at the end of the line until SIGINT, SIGTERM or SIGHUP
// comes. `onRestart` is called each time that the unit has started anew.
void Serve(PseudoTerminal& terminal, Line& line, const Unit& unit, const std::function<void()>& onRestart);

}  // namespace simulator
