#include "platform/loop/Wakeup.h"

#include <system_error>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

class ManualResetEvent final : public Wakeup {
public:
    ManualResetEvent() {
        if (!Event_) {
            throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "CreateEvent");
        }
    }

    WaitHandle Handle() const override { return reinterpret_cast<WaitHandle>(Event_.Get()); }
    void Ring() override { SetEvent(Event_.Get()); }
    void Silence() override { ResetEvent(Event_.Get()); }

private:
    UniqueHandle Event_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

}  // namespace

std::unique_ptr<Wakeup> NewWakeup() {
    return std::make_unique<ManualResetEvent>();
}

}  // namespace burnwick
