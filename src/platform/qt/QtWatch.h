#pragma once

#include <functional>
#include <memory>

#include "platform/MessageLoop.h"

namespace burnwick {

// MessageLoop::WatchInput on Qt's event loop: what kinds of handle there are is the system's matter.
std::unique_ptr<Watch> WatchInEventLoop(WaitHandle handle, std::function<void()> ready);

}  // namespace burnwick
