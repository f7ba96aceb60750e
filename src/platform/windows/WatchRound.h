#pragma once

#include <functional>

namespace burnwick {

// A round of the event loop in a Yield, for the watches: none of them calls more than once in it. Rounds may
// run inside each other.
class WatchRound {
public:
    // `called` is called after each watch that calls in it.
    explicit WatchRound(std::function<void()> called);
    WatchRound(const WatchRound&) = delete;
    WatchRound& operator=(const WatchRound&) = delete;
    ~WatchRound();

    // Looks at every handle itself, and calls for those that are ready and have not called in this round.
    // True when there was one.
    bool LookAtAll() const;

    // The round that is going on, or null: also in a dialog that runs inside a round.
    static const WatchRound* Now();
    void TellOfCall() const { Called_(); }

private:
    std::function<void()> Called_;
    int Level_;
    const WatchRound* Outer_;
};

}  // namespace burnwick
