#include "platform/loop/Wakeup.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick {

namespace {

class EventFd final : public Wakeup {
public:
    EventFd() {
        if (!Fd_) {
            throw std::system_error(errno, std::generic_category(), "eventfd");
        }
    }

    WaitHandle Handle() const override { return Fd_.Get(); }

    void Ring() override {
        // A full counter is as ready as one more.
        static_cast<void>(eventfd_write(Fd_.Get(), 1));
    }

    void Silence() override {
        eventfd_t count = 0;
        static_cast<void>(eventfd_read(Fd_.Get(), &count));
    }

private:
    UniqueFd Fd_{eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
};

}  // namespace

std::unique_ptr<Wakeup> NewWakeup() {
    return std::make_unique<EventFd>();
}

}  // namespace burnwick
