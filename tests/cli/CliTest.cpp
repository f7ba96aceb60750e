#include "cli/CliTest.h"

#include <algorithm>
#include <utility>

namespace burnwick::test {

namespace {

// Nobody at the other end.
class SilentDevice final : public FakeDevice {
public:
    using FakeDevice::FakeDevice;

private:
    void HearFrame(const Frame& /*frame*/) override {}
    void LetHappen() override {}
};

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

int CliTest::Run(const std::vector<std::string>& arguments) {
    Out_.str({});
    Err_.str({});
    class Awake final : public SleepInhibitor {};
    cli::Environment environment{
        .Out = Out_,
        .Err = Err_,
        .ErrColumns = Columns,
        .Color = Color,
        .Loop = Loop,
        .Settings = Settings,
        .ProgramFolder = Folder.Path() / "home",
        .NewDevice = [this] { return NewDevice(); },
        .NewJob =
            [this](const FlashOrder& order, JobEvents take) {
                return std::make_unique<InlineJob>(Loop, NewDevice(), order, std::move(take));
            },
        .CatchInterrupts = [this](std::function<void()> request) { Interrupt_ = std::move(request); },
        .InhibitSleep =
            [this](const std::string& why) {
                SleepReasons.push_back(why);
                return std::make_unique<Awake>();
            },
    };
    return cli::RunCommandLine(arguments, environment);
}

std::string CliTest::LogText() const {
    const Bytes bytes = ReadFile(Folder.Path() / "home" / "Burnwick.log");
    std::string text(bytes.size(), ' ');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](std::byte b) { return static_cast<char>(b); });
    return text;
}

std::vector<std::string> CliTest::OutLines() const {
    return LinesOf(Out());
}

std::vector<std::string> CliTest::ErrLines() const {
    return LinesOf(Err());
}

void CliTest::Connect(simulator::UnitOptions options) {
    Unit = std::make_unique<simulator::Unit>(std::move(options));
    Line_ = std::make_unique<simulator::Line>(*Unit, /*paced=*/false);
}

simulator::UnitOptions CliTest::UnitOfSize(std::size_t size) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(size, /*seed=*/7);
    return options;
}

void CliTest::InterruptAt(Microseconds moment) {
    Loop.At(moment, [this] { Interrupt_(); });
}

std::unique_ptr<SerialDevice> CliTest::NewDevice() {
    std::unique_ptr<FakeDevice> device;
    if (Line_) {
        device = std::make_unique<SimulatedDevice>(Loop, *Line_);
    } else {
        device = std::make_unique<SilentDevice>(Loop);
    }
    if (PortTrouble) {
        device->RefuseToOpen(*PortTrouble);
    }
    return device;
}

}  // namespace burnwick::test
