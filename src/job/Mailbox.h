#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/loop/Wakeup.h"

namespace burnwick {

// Values on their way from one thread to another, whose loop watches the handle. Posting never waits for the
// reader.
template <typename Value>
class Mailbox {
public:
    // True when `newer` may take the place of `older`, which was posted just before and was not taken yet.
    using Supersedes = bool (*)(const Value& older, const Value& newer);

    explicit Mailbox(Supersedes supersedes = nullptr) : Supersedes_(supersedes) {}

    WaitHandle Handle() const { return Wakeup_->Handle(); }

    void Post(Value value) {
        const std::lock_guard lock(Mutex_);
        if (Supersedes_ != nullptr && !Values_.empty() && Supersedes_(Values_.back(), value)) {
            Values_.back() = std::move(value);
        } else {
            Values_.push_back(std::move(value));
        }
        Wakeup_->Ring();
    }

    // All values, in the order in which they were posted.
    std::deque<Value> TakeAll() {
        const std::lock_guard lock(Mutex_);
        Wakeup_->Silence();
        return std::exchange(Values_, {});
    }

private:
    Supersedes Supersedes_;
    std::unique_ptr<Wakeup> Wakeup_ = NewWakeup();
    std::mutex Mutex_;
    std::deque<Value> Values_;
};

}  // namespace burnwick
