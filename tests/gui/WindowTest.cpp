#include "gui/WindowTest.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <algorithm>
#include <filesystem>

#include "engine/PercentBar.h"

namespace burnwick::test {

namespace {

// A port that opens, and at which nobody is.
class SilentDevice final : public FakeDevice {
public:
    using FakeDevice::FakeDevice;

private:
    void HearFrame(const Frame& /*frame*/) override {}
    void LetHappen() override {}
};

class FakeCopies final : public SingleInstance {
public:
    FakeCopies(bool another, bool comes, std::function<void(std::function<void()>)> claim)
        : Another_(another), Comes_(comes), Claim_(std::move(claim)) {}

    bool AnotherRuns() override { return Another_; }
    bool BringForward() override { return Comes_; }
    void Claim(std::function<void()> comeForward) override { Claim_(std::move(comeForward)); }

private:
    bool Another_;
    bool Comes_;
    std::function<void(std::function<void()>)> Claim_;
};

class Awake final : public SleepInhibitor {
public:
    explicit Awake(int& count) : Count_(count) { ++Count_; }
    Awake(const Awake&) = delete;
    Awake& operator=(const Awake&) = delete;
    ~Awake() override { --Count_; }

private:
    int& Count_;
};

}  // namespace

void GuiLoop::Yield(Microseconds atMost) {
    QCoreApplication::processEvents();
    Loop_.Yield(atMost);
    QCoreApplication::processEvents();
    Look();
}

WindowTest::WindowTest()
    : Services_{
        .Loop = GuiLoop_,
        .Setting =
            [this](const std::string& section, const std::string& key) {
                Note("read " + section + "/" + key);
                return Settings[section + "/" + key];
            },
        .Store =
            [this](const std::string& section, const std::string& key, const std::string& value) {
                Note("write " + section + "/" + key + "=" + value);
                Stored.push_back(section + "/" + key + "=" + value);
                Settings[section + "/" + key] = value;
                OnStore(section + "/" + key);
            },
        .ProgramFolder = Folder.Path() / "home",
        .Executable = "/opt/burnwick/Burnwick",
        .Shell = Shell,
        .Copies =
            [this](const std::string& title) {
                Note("copies of " + title);
                return std::make_unique<FakeCopies>(AnotherRuns, AnotherComes,
                                                    [this](auto come) { ComeForward = std::move(come); });
            },
        .NewDevice = [this] { return NewDevice(); },
        .InhibitSleep = [this](const std::string&) { return std::make_unique<Awake>(AwakeNow); },
        .Beep = [this] { ++Beeps; },
        .Flash = [this](QWidget*) { ++Flashes; },
        .Notify = [this](const std::string& title,
                         const std::string& text) { Note("notify " + title + ": " + text); },
    } {
    std::filesystem::create_directory(Folder.Path() / "home");
    Settings["COMPort/COM"] = "1";
    Settings["COMPort/BaudRate"] = "1";
    Settings["Options/LogOption"] = "&All";
    Shell.Note = [this](const std::string& call) { Note(call); };
    GuiLoop_.Look = [this] { LookAtStatus(); };
}

WindowTest::~WindowTest() {
    EXPECT_TRUE(Waiting_.empty()) << "never said: " << Waiting_.front().first;
}

bool WindowTest::Start(const std::string& commandLine) {
    Services_.Title = Title;
    Services_.Version = "2.08.1000";
    Services_.CommandLine = commandLine;
    Services_.Debug = Debug;
    Devices_ = 0;
    Window = std::make_unique<frmMain>(Services_);
    return Window->Form_Load();
}

void WindowTest::Connect(simulator::UnitOptions options, bool paced) {
    Unit = std::make_unique<simulator::Unit>(std::move(options));
    Line_ = std::make_unique<simulator::Line>(*Unit, paced);
}

void WindowTest::ConnectUnitOfSize(std::size_t size, std::vector<simulator::FaultOrder> faults) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(size, /*seed=*/7);
    options.Faults = std::move(faults);
    Connect(std::move(options));
}

std::string WindowTest::Image(const std::string& name) const {
    return Folder.Write(name, SampleImage(262'144));
}

void WindowTest::Download(const std::string& path) {
    User.TypeFile(path);
    Click("cmdDownload");
}

void WindowTest::Upload(int chip, const std::string& path) {
    User.Next([chip](QDialog& dialog) {
        auto* const option = dialog.findChild<QRadioButton*>("optChipSize_" + QString::number(chip));
        ASSERT_NE(option, nullptr);
        // On its circle: beside circle and text a click means nothing.
        QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(8, option->height() / 2));
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    });
    User.TypeFile(path);
    Click("cmdUpload");
}

void WindowTest::Click(const char* button) const {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
}

void WindowTest::Trigger(const char* command) const {
    Find<QAction>(command)->trigger();
}

void WindowTest::WhenStatus(const std::string& begins, std::function<void()> action) {
    Waiting_.emplace_back(begins, std::move(action));
}

void WindowTest::LookAtStatus() {
    if (!Waiting_.empty() && Window && Status().starts_with(Waiting_.front().first)) {
        const auto action = std::move(Waiting_.front().second);
        Waiting_.erase(Waiting_.begin());
        action();
    }
}

void WindowTest::Pass(Microseconds time) {
    const auto end = Loop.Time() + time;
    while (Loop.Time() < end) {
        GuiLoop_.Yield(end - Loop.Time());
    }
}

std::string WindowTest::TextOf(const char* label) const {
    return Find<QLabel>(label)->text().toStdString();
}

std::string WindowTest::Display() const {
    return Find<QPlainTextEdit>("txtDisplay")->toPlainText().toStdString();
}

std::string WindowTest::BarText() const {
    return Find<PercentBar>("PercentBar1")->Text().toStdString();
}

bool WindowTest::IsIdle() const {
    return Find("cmdDownload")->isEnabled() && Find("cmdUpload")->isEnabled() && Find("cmdQuit")->isEnabled()
           && Find<QPushButton>("cmdQuit")->text() == "&Quit" && Find<QMenu>("mnuFile")->isEnabled()
           && Find<QMenu>("mnuTools")->isEnabled() && Find<QMenu>("mnuHelp")->isEnabled()
           && !Find("lblStatus")->isHidden() && Find("lblTiming")->isHidden() && AwakeNow == 0;
}

std::string WindowTest::LogText() const {
    const Bytes bytes = ReadFile(Folder.Path() / "home" / "Burnwick.log");
    std::string text(bytes.size(), ' ');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](std::byte b) { return static_cast<char>(b); });
    return text;
}

void WindowTest::Picture(const std::string& name) const {
    std::filesystem::create_directories(PICTURES);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Window->grab().save(QString::fromStdString(PICTURES "/" + name + ".png")));
}

std::unique_ptr<SerialDevice> WindowTest::NewDevice() {
    std::unique_ptr<FakeDevice> device;
    // The window's own control is made first; the second one is the link's.
    if (Line_ && ++Devices_ == 2) {
        device = std::make_unique<SimulatedDevice>(Loop, *Line_);
        Cable_ = device.get();
    } else {
        device = std::make_unique<SilentDevice>(Loop);
    }
    if (PortTrouble) {
        device->RefuseToOpen(*PortTrouble, TroubledDevice);
    }
    return device;
}

}  // namespace burnwick::test
