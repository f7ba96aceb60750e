#include "platform/SleepInhibitor.h"

#include <utility>

#include "platform/windows/UniqueHandle.h"
#include "platform/windows/WideText.h"

namespace burnwick {

namespace {

// None where the system knows no such requests.
UniqueHandle RequestToStayAwake(const std::string& why) {
    std::wstring reason = WideText(why);
    REASON_CONTEXT context{};
    context.Version = POWER_REQUEST_CONTEXT_VERSION;
    context.Flags = POWER_REQUEST_CONTEXT_SIMPLE_STRING;
    context.Reason.SimpleReasonString = reason.data();
    UniqueHandle request(PowerCreateRequest(&context));
    if (request && PowerSetRequest(request.Get(), PowerRequestSystemRequired) == 0) {
        request.Reset();
    }
    return request;
}

// Ends with its handle; shows its reason to who asks.
class PowerRequest final : public SleepInhibitor {
public:
    explicit PowerRequest(UniqueHandle request) : Request_(std::move(request)) {}

private:
    UniqueHandle Request_;
};

// The same without a reason, for the thread as a whole.
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

std::unique_ptr<SleepInhibitor> InhibitSleep(const std::string& why) {
    if (auto request = RequestToStayAwake(why)) {
        return std::make_unique<PowerRequest>(std::move(request));
    }
    return std::make_unique<AwakeThread>();
}

}  // namespace burnwick
