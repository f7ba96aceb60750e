#include "platform/desktop/SleepInhibitor.h"

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick {

namespace {

// The system keeps one wish for each thread, without a reason.
class AwakeThread final : public SleepInhibitor {
public:
    AwakeThread() {
        ++Alive;
        SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
    }
    AwakeThread(const AwakeThread&) = delete;
    AwakeThread& operator=(const AwakeThread&) = delete;
    ~AwakeThread() override {
        if (--Alive == 0) {
            SetThreadExecutionState(ES_CONTINUOUS);
        }
    }

private:
    static thread_local int Alive;
};

thread_local int AwakeThread::Alive = 0;

}  // namespace

std::unique_ptr<SleepInhibitor> InhibitSleep(const std::string& /*why*/) {
    return std::make_unique<AwakeThread>();
}

}  // namespace burnwick
