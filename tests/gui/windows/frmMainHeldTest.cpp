// A window that is held while blocks are sent: the unit goes on receiving them.
#include <atomic>
#include <thread>

#include "gui/frmMainRealLineTest.h"
#include "gui/windows/NativeWindow.h"
#include "support/Eventually.h"

namespace burnwick::test {

using namespace std::chrono_literals;

struct Hold {
    const char* Name;
    UINT Begin;  // the message whose handler returns only when the window is let go
    WPARAM BeginDetail;
    LPARAM Place;
    UINT End;

    friend void PrintTo(const Hold& hold, std::ostream* out) { *out << hold.Name; }
};

// The system's device, with a count of the messages that it was given.
class CountingDevice final : public SerialDevice {
public:
    explicit CountingDevice(std::atomic<int>& writes) : Writes_(writes) {}

    CommResult Open(const std::string& path, const LineSettings& settings) override {
        return Device_->Open(path, settings);
    }
    void Close() override { Device_->Close(); }
    bool Apply(const LineSettings& settings) override { return Device_->Apply(settings); }
    std::optional<std::size_t> Read(std::span<std::byte> room) override { return Device_->Read(room); }
    void Write(std::span<const std::byte> bytes) override {
        ++Writes_;
        Device_->Write(bytes);
    }
    void DiscardInput() override { Device_->DiscardInput(); }
    std::optional<WaitHandle> InputHandle() const override { return Device_->InputHandle(); }

private:
    std::atomic<int>& Writes_;
    std::unique_ptr<SerialDevice> Device_ = NewSerialDevice();
};

class frmMainHeld : public frmMainRealLine {
protected:
    frmMainHeld() {
        NewDevice = [this] { return std::make_unique<CountingDevice>(Writes_); };
    }

    HWND Handle() const { return reinterpret_cast<HWND>(Window->winId()); }

    // Holds the window's thread with `hold` for two seconds and until more blocks have been sent; `letGo` is
    // then called on another thread.
    void HoldInMidRun(const std::function<void()>& hold, const std::function<void()>& letGo) {
        const UnitProgram unit;
        StartAt(unit.Line());
        WhenStatus("Sending block", [&] {
            const int before = Writes_;
            const auto end = std::chrono::steady_clock::now() + 2s;
            std::jthread user([&] {
                EXPECT_TRUE(Eventually(
                    [&] { return std::chrono::steady_clock::now() >= end && Writes_ >= before + 100; }));
                letGo();
            });
            hold();
            EXPECT_GE(std::chrono::steady_clock::now(), end) << "not held";
        });
        Download(Image());
        EXPECT_EQ(Status(), Programmed) << Display();
        ExpectUsable(unit);
    }

private:
    std::atomic<int> Writes_ = 0;
};

TEST_F(frmMainHeld, ByAMessageBoxLetsTheUnitGoOn) {
    QMessageBox box;
    User.LeaveAlone(box);
    HoldInMidRun([&] { box.exec(); },
                 [&] { QMetaObject::invokeMethod(&box, &QMessageBox::accept, Qt::QueuedConnection); });
}

class frmMainHeldBySystem : public frmMainHeld, public ::testing::WithParamInterface<Hold> {};

INSTANTIATE_TEST_SUITE_P(By, frmMainHeldBySystem,
                         testing::Values(Hold{"ItsTitleBar", WM_NCLBUTTONDOWN, HTCAPTION, 0, WM_LBUTTONUP},
                                         Hold{"ItsMenu", WM_SYSCOMMAND, SC_KEYMENU, ' ', WM_CANCELMODE},
                                         Hold{"TheRightButton", WM_NCRBUTTONDOWN, HTCAPTION, 0,
                                              WM_RBUTTONUP}),
                         [](const auto& kind) { return std::string(kind.param.Name); });

TEST_P(frmMainHeldBySystem, LetsTheUnitGoOn) {
    const Hold& kind = GetParam();
    HWND handle = nullptr;
    HoldInMidRun(
        [&] {
            handle = Handle();
            SendMessageW(handle, kind.Begin, kind.BeginDetail, kind.Place);
        },
        [&] {
            PostMessageW(handle, WM_MOUSEMOVE, 0, MAKELPARAM(20, 20));
            PostMessageW(handle, kind.End, 0, 0);
        });
}

}  // namespace burnwick::test
