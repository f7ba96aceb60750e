#pragma once

#include <functional>
#include <memory>

#include "platform/loop/MessageLoop.h"

namespace burnwick {

// While this lives, a request to end the process (Ctrl+C, a closed terminal, the system going down) does not
// end it: it is handed to `request` by the event loop instead, each time it comes.
class Interrupt {
public:
    virtual ~Interrupt() = default;
};

// Such requests wait for CatchInterrupts from here on. To be called before the process starts its first
// thread, a toolkit's included: one that knew nothing of it would let them end the process.
void HoldInterrupts();

std::unique_ptr<Interrupt> CatchInterrupts(EventLoop& loop, std::function<void()> request);

}  // namespace burnwick
