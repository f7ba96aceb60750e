#pragma once

#include <memory>

#include "platform/loop/MessageLoop.h"

namespace burnwick {

// The toolkit's event loop. The application object must exist before it, and outlive it.
std::unique_ptr<EventLoop> NewWindowLoop();

}  // namespace burnwick
