#include "platform/SleepInhibitor.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <future>
#include <thread>

#include "EnvironmentVariable.h"
#include "PseudoTerminal.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::EnvironmentVariable;

constexpr auto bounded = 2s;  // the limit itself is shorter: a loaded machine needs air

// A bus of the test's own.
class PrivateBus {
public:
    explicit PrivateBus(const std::filesystem::path& folder) {
        const auto config = folder / "bus.conf";
        std::ofstream(config)
            << "<busconfig><type>session</type><listen>unix:dir=" << folder.string()
            << "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
               "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>";
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        const UniqueFd readEnd(ends[0]);
        UniqueFd writeEnd(ends[1]);
        Process_ = fork();
        if (Process_ == 0) {
            dup2(writeEnd.Get(), STDOUT_FILENO);
            // It complains of limits that do not matter here.
            dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
            const auto argument = "--config-file=" + config.string();
            execl(DBUS_DAEMON, DBUS_DAEMON, argument.c_str(), "--print-address=1", "--nofork", nullptr);
            _exit(127);
        }
        writeEnd.Reset();
        for (char c = 0; read(readEnd.Get(), &c, 1) == 1 && c != '\n';) {
            Address_ += c;
        }
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
    }

    const std::string& Address() const { return Address_; }

private:
    pid_t Process_ = -1;
    std::string Address_;
};

// The login manager's one call that matters here.
class FakeLoginManager {
public:
    explicit FakeLoginManager(const std::string& address, bool refuses = false) : Refuses_(refuses) {
        Thread_ = std::jthread([this, address](const std::stop_token& stop) { Serve(stop, address); });
        Ready_.get_future().wait();
    }

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
    void Serve(const std::stop_token& stop, const std::string& address) {
        static const std::array<sd_bus_vtable, 3> methods{
            {SD_BUS_VTABLE_START(0),
             SD_BUS_METHOD("Inhibit", "ssss", "h", OnInhibit, SD_BUS_VTABLE_UNPRIVILEGED),
             SD_BUS_VTABLE_END}};
        sd_bus* bus = nullptr;
        sd_bus_new(&bus);
        sd_bus_set_address(bus, address.c_str());
        sd_bus_set_bus_client(bus, 1);
        EXPECT_GE(sd_bus_start(bus), 0);
        EXPECT_GE(sd_bus_add_object_vtable(bus, nullptr, "/org/freedesktop/login1",
                                           "org.freedesktop.login1.Manager", methods.data(), this),
                  0);
        EXPECT_GE(sd_bus_request_name(bus, "org.freedesktop.login1", 0), 0);
        Ready_.set_value();
        while (!stop.stop_requested()) {
            if (sd_bus_process(bus, nullptr) == 0) {
                sd_bus_wait(bus, 5000);
            }
        }
        sd_bus_flush_close_unref(bus);
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
    std::promise<void> Ready_;
    std::jthread Thread_;
};

class SleepInhibitorTest : public testing::Test {
protected:
    void ExpectAnObjectSoon(const std::string& busAddress) {
        const EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS", busAddress);
        const auto before = std::chrono::steady_clock::now();
        EXPECT_NE(InhibitSleep("Flash programming"), nullptr);
        EXPECT_LT(std::chrono::steady_clock::now() - before, bounded);
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
    const auto path = (Folder_.Path() / "deaf").string();
    const UniqueFd deaf(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    path.copy(name.sun_path, sizeof name.sun_path - 1);
    ASSERT_EQ(bind(deaf.Get(), reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    ASSERT_EQ(listen(deaf.Get(), 5), 0);
    ExpectAnObjectSoon("unix:path=" + path);
}

}  // namespace
}  // namespace burnwick
