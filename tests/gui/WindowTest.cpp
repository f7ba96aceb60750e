#include "gui/WindowTest.h"

#include <QApplication>

#include "gui/Offers.h"

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

WindowTest::WindowTest()
    : Services_{
        .Loop = GuiLoop_,
        .PortLoop = GuiLoop_,
        .Settings = Settings,
        .ProgramFolder = {},
        .Executable = {},
        .Shell = Shell,
        .Copies =
            [this](const std::string& title) {
                Note("copies of " + title);
                return std::make_unique<FakeCopies>(AnotherRuns, AnotherComes,
                                                    [this](auto come) { ComeForward = std::move(come); });
            },
        .NewDevice = [this] { return NewDevice(); },
        .NewJob =
            [this](const FlashOrder& order, JobEvents take) {
                return std::make_unique<InlineJob>(GuiLoop_, NewDevice(), order, std::move(take));
            },
        .InhibitSleep = [this](const std::string&) { return std::make_unique<Awake>(AwakeNow); },
        .Beep = [this] { ++Beeps; },
        .Flash = [this](QWidget*) { ++Flashes; },
        .Notify = [this](const std::string& title,
                         const std::string& text) { Note("notify " + title + ": " + text); },
        .HelpFile = [this] { return HelpFile; },
        .OpenLink =
            [this](const std::string& link) {
                Note("open " + link);
                return true;
            },
    } {
    Settings.OnRead = [this](const auto& name) { Note("read " + name); };
    Settings.OnStore = [this](const auto& name, const auto& value) {
        Note("write " + name + "=" + value);
        Stored.push_back(name + "=" + value);
        OnStore(name);
    };
    Shell.Note = [this](const std::string& call) { Note(call); };
    GuiLoop_.Look = [this] { LookAtStatus(); };
}

WindowTest::~WindowTest() {
    Window.reset();
}

bool WindowTest::Start(const std::string& commandLine) {
    Services_.Product = {
        .Title = Title, .Major = 2, .Minor = 8, .Revision = 1000, .WebSite = "https://www.burnwick.example/"};
    Services_.ProgramFolder = Folder.Path() / ProgramFolder;
    Services_.Executable = Executable;
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

std::vector<simulator::FaultOrder> WindowTest::ThreeWrongBytes() {
    using simulator::Fault;
    return {{Fault::FlipData, 300}, {Fault::FlipData, 300}, {Fault::FlipData, 500},
            {Fault::FlipData, 500}, {Fault::FlipData, 700}, {Fault::FlipData, 700}};
}

void WindowTest::ConnectUnitOfSize(std::size_t size, std::vector<simulator::FaultOrder> faults) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(size, /*seed=*/7);
    options.Faults = std::move(faults);
    Connect(std::move(options));
}

void WindowTest::DownloadAndAnswer(QMessageBox::StandardButton answer) {
    Settings["Options/Verify"] = "1";
    User.TypeFile(Image());
    User.ClickInBox(answer);
    Click("cmdDownload");
}

bool WindowTest::CloseIsGreyed() const {
    return !OffersClose(*Window);
}

void WindowTest::Pass(Microseconds time) {
    const auto end = Loop.Time() + time;
    while (Loop.Time() < end) {
        GuiLoop_.Yield(end - Loop.Time());
    }
}

std::unique_ptr<SerialDevice> WindowTest::NewDevice() {
    std::unique_ptr<FakeDevice> device;
    // The window's own control is made first; each further one is a job's.
    if (++Devices_ > 1 && Line_) {
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
