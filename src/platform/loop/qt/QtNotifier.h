#pragma once

#include <functional>
#include <memory>

#include "platform/loop/MessageLoop.h"

namespace burnwick {

// EventLoop::WatchInput on the toolkit's loop, with its notifier for the system's kind of handle.
std::unique_ptr<Watch> WatchWithNotifier(WaitHandle handle, std::function<void()> ready);

}  // namespace burnwick
