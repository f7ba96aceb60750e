#pragma once

#include <memory>

namespace burnwick {

// What a Yield of the window's loop lets happen: one round of the event loop. There is one object at a time,
// on the windows' own thread; the application object must be there before it, and outlive it.
class EventRound {
public:
    virtual ~EventRound() = default;

    // Handles what has happened; with `wait` sleeps until something does. May come back with nothing handled.
    virtual void Run(bool wait) = 0;
};

std::unique_ptr<EventRound> NewEventRound();

}  // namespace burnwick
