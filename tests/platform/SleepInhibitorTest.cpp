#include "platform/desktop/SleepInhibitor.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <cerrno>
#include <chrono>

#include "EnvironmentVariable.h"
#include "PrivateBus.h"
#include "support/Elapsed.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::BusService;
using test::EnvironmentVariable;
using test::PrivateBus;

// The login manager's one call that matters here.
class FakeLoginManager {
public:
    explicit FakeLoginManager(const std::string& address, bool refuses = false)
        : Refuses_(refuses),
          Service_(address, "org.freedesktop.login1", "/org/freedesktop/login1",
                   "org.freedesktop.login1.Manager", Methods(), this) {}

    std::string What;
    std::string Who;
    std::string Why;
    std::string Mode;

    // True until whoever was given the descriptor has closed it.
    bool Inhibited() {
        pollfd input{ReadEnd_.Get(), POLLIN, 0};
        return ReadEnd_ && poll(&input, 1, 0) == 0;
    }

    // Waits until then, five seconds at most.
    bool Released() {
        pollfd input{ReadEnd_.Get(), POLLIN, 0};
        return poll(&input, 1, 5000) == 1;
    }

private:
    static const sd_bus_vtable* Methods() {
        static const std::array<sd_bus_vtable, 3> methods{
            {SD_BUS_VTABLE_START(0),
             SD_BUS_METHOD("Inhibit", "ssss", "h", OnInhibit, SD_BUS_VTABLE_UNPRIVILEGED),
             SD_BUS_VTABLE_END}};
        return methods.data();
    }

    static int OnInhibit(sd_bus_message* call, void* self, sd_bus_error*) {
        return static_cast<FakeLoginManager*>(self)->Answer(call);
    }

    int Answer(sd_bus_message* call) {
        if (Refuses_) {
            return -EACCES;
        }
        const char* what = nullptr;
        const char* who = nullptr;
        const char* why = nullptr;
        const char* mode = nullptr;
        sd_bus_message_read(call, "ssss", &what, &who, &why, &mode);
        What = what;
        Who = who;
        Why = why;
        Mode = mode;
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            return -errno;
        }
        ReadEnd_.Reset(ends[0]);
        const UniqueFd writeEnd(ends[1]);
        return sd_bus_reply_method_return(call, "h", writeEnd.Get());
    }

    bool Refuses_;
    UniqueFd ReadEnd_;
    BusService Service_;
};

class SleepInhibitorTest : public testing::Test {
protected:
    void ExpectAnObjectSoon(const std::string& busAddress) {
        const EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS", busAddress);
        EXPECT_LT(test::Elapsed([] { EXPECT_NE(InhibitSleep("Flash programming"), nullptr); }),
                  test::HangLimit);
    }

    test::TempFolder Folder_;
};

TEST_F(SleepInhibitorTest, TellsTheLoginManagerWhatWhoWhyAndHow) {
    const PrivateBus bus(Folder_.Path());
    FakeLoginManager manager(bus.Address());
    const EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS", bus.Address());
    const auto inhibitor = InhibitSleep("Writing the image \"a.bin\"");
    ASSERT_TRUE(manager.Inhibited());
    EXPECT_EQ(manager.What, "sleep");
    EXPECT_EQ(manager.Who, "Burnwick");
    EXPECT_EQ(manager.Why, "Writing the image \"a.bin\"");
    EXPECT_EQ(manager.Mode, "block");
}

TEST_F(SleepInhibitorTest, HoldsUntilItsEnd) {
    const PrivateBus bus(Folder_.Path());
    FakeLoginManager manager(bus.Address());
    const EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS", bus.Address());
    auto inhibitor = InhibitSleep("Flash programming");
    ASSERT_TRUE(manager.Inhibited());
    inhibitor.reset();
    EXPECT_TRUE(manager.Released());
}

TEST_F(SleepInhibitorTest, ARefusalIsNoError) {
    const PrivateBus bus(Folder_.Path());
    const FakeLoginManager manager(bus.Address(), true);
    ExpectAnObjectSoon(bus.Address());
}

TEST_F(SleepInhibitorTest, ABusWithoutALoginManagerIsNoError) {
    const PrivateBus bus(Folder_.Path());
    ExpectAnObjectSoon(bus.Address());
}

TEST_F(SleepInhibitorTest, ASystemWithoutABusIsNoError) {
    ExpectAnObjectSoon("unix:path=" + (Folder_.Path() / "none").string());
    ExpectAnObjectSoon("nonsense");
}

TEST_F(SleepInhibitorTest, ABusThatNeverAnswersIsWaitedForNoLongerThanTheLimit) {
    const test::DeafBus bus(Folder_.Path());
    ExpectAnObjectSoon(bus.Address());
}

}  // namespace
}  // namespace burnwick
