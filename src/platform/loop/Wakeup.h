#pragma once

#include <memory>

#include "platform/loop/MessageLoop.h"

namespace burnwick {

// Ends the sleep of a loop from another thread: the loop watches the handle, which is ready from Ring to
// Silence.
class Wakeup {
public:
    virtual ~Wakeup() = default;

    virtual WaitHandle Handle() const = 0;

    // On any thread; never waits.
    virtual void Ring() = 0;

    virtual void Silence() = 0;
};

std::unique_ptr<Wakeup> NewWakeup();

}  // namespace burnwick
