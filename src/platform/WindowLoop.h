#pragma once

#include <memory>

#include "platform/MessageLoop.h"

namespace burnwick {

// The message loop of a program with windows; its timers tick and its watches call also while a dialog or the
// application itself runs the event loop. The application object must be there before it, and outlive it.
std::unique_ptr<MessageLoop> NewWindowLoop();

}  // namespace burnwick
