#include "platform/desktop/Notification.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

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

// What shows messages beside the windows.
class FakeDesktop {
public:
    struct Message {
        std::string Sender;
        std::string Program;
        uint32_t Replaces = 0;
        std::string Icon;
        std::string Title;
        std::string Text;
        int32_t Milliseconds = 0;
        bool ReplyExpected = true;
    };

    explicit FakeDesktop(const std::string& address)
        : Service_(address, "org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                   "org.freedesktop.Notifications", Methods(), this) {}

    // The first message; nothing when none comes.
    std::optional<Message> Shown() {
        auto shown = Shown_.get_future();
        return shown.wait_for(10s) == std::future_status::ready ? std::optional(shown.get()) : std::nullopt;
    }

private:
    static const sd_bus_vtable* Methods() {
        static const std::array<sd_bus_vtable, 3> methods{
            {SD_BUS_VTABLE_START(0),
             SD_BUS_METHOD("Notify", "susssasa{sv}i", "u", OnNotify, SD_BUS_VTABLE_UNPRIVILEGED),
             SD_BUS_VTABLE_END}};
        return methods.data();
    }

    static int OnNotify(sd_bus_message* call, void* self, sd_bus_error*) {
        const char* program = nullptr;
        const char* icon = nullptr;
        const char* title = nullptr;
        const char* text = nullptr;
        Message message;
        EXPECT_GT(sd_bus_message_read(call, "susss", &program, &message.Replaces, &icon, &title, &text), 0);
        EXPECT_GE(sd_bus_message_skip(call, "asa{sv}"), 0);
        EXPECT_GT(sd_bus_message_read(call, "i", &message.Milliseconds), 0);
        message.Sender = sd_bus_message_get_sender(call);
        message.Program = program;
        message.Icon = icon;
        message.Title = title;
        message.Text = text;
        message.ReplyExpected = sd_bus_message_get_expect_reply(call) > 0;
        static_cast<FakeDesktop*>(self)->Shown_.set_value(message);
        return sd_bus_reply_method_return(call, "u", 1);
    }

    std::promise<Message> Shown_;
    BusService Service_;
};

class NotificationTest : public testing::Test {
protected:
    void ExpectSoonOver(const std::string& busAddress) {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", busAddress);
        EXPECT_LT(test::Elapsed([] { Notify("Burnwick", "Programming was completed."); }), test::HangLimit);
    }

    std::string Folder(const char* name) const {
        const auto folder = Folder_.Path() / name;
        std::filesystem::create_directory(folder);
        return folder;
    }

    test::TempFolder Folder_;
};

TEST_F(NotificationTest, ReachesTheDesktopWithItsSender) {
    const PrivateBus bus(Folder_.Path());
    FakeDesktop desktop(bus.Address());
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", bus.Address());
    Notify("Unit 1", "Programming was completed.");
    const auto message = desktop.Shown();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Program, "Burnwick");
    EXPECT_EQ(message->Icon, "burnwick");
    EXPECT_EQ(message->Title, "Unit 1");
    EXPECT_EQ(message->Text, "Programming was completed.");
    EXPECT_EQ(message->Replaces, 0U);
    EXPECT_EQ(message->Milliseconds, -1);
    EXPECT_FALSE(message->ReplyExpected);
}

TEST_F(NotificationTest, ShowsItsTextAsItStands) {
    const PrivateBus bus(Folder_.Path());
    FakeDesktop desktop(bus.Address());
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", bus.Address());
    Notify("<a> & b", "<b>R&D</b>/\xC3\xBC.bin");
    const auto message = desktop.Shown();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Title, "<a> & b");
    EXPECT_EQ(message->Text, "&lt;b&gt;R&amp;D&lt;/b&gt;/\xC3\xBC.bin");
}

TEST_F(NotificationTest, StaysConnectedForTheDesktopWouldTakeItAway) {
    const PrivateBus bus(Folder_.Path());
    FakeDesktop desktop(bus.Address());
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", bus.Address());
    Notify("Unit 1", "Programming was completed.");
    const auto message = desktop.Shown();
    ASSERT_TRUE(message);
    sd_bus* own = nullptr;
    ASSERT_GE(sd_bus_open_user(&own), 0);
    sd_bus_creds* sender = nullptr;
    EXPECT_GE(sd_bus_get_name_creds(own, message->Sender.c_str(), SD_BUS_CREDS_PID, &sender), 0);
    sd_bus_creds_unref(sender);
    sd_bus_flush_close_unref(own);
}

TEST_F(NotificationTest, FindsTheBusThatHasTakenThePlaceOfAnother) {
    {
        const PrivateBus first(Folder("first"));
        ExpectSoonOver(first.Address());
    }
    const PrivateBus second(Folder("second"));
    FakeDesktop desktop(second.Address());
    ExpectSoonOver(second.Address());
    EXPECT_TRUE(desktop.Shown());
}

TEST_F(NotificationTest, ABusWithoutADesktopIsNoError) {
    const PrivateBus bus(Folder_.Path());
    ExpectSoonOver(bus.Address());
}

TEST_F(NotificationTest, ASessionWithoutABusIsNoError) {
    ExpectSoonOver("unix:path=" + (Folder_.Path() / "none").string());
    ExpectSoonOver("nonsense");
}

TEST_F(NotificationTest, ABusThatNeverAnswersIsWaitedForNoLongerThanTheLimit) {
    const test::DeafBus bus(Folder_.Path());
    ExpectSoonOver(bus.Address());
}

}  // namespace
}  // namespace burnwick
