#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

bool IsBlock(const FakeDevice::Frame& frame) {
    return frame.Content.size() > 2 && frame.Content[1] == std::byte{0xAA}
           && frame.Content[2] == std::byte{0x03};
}

}  // namespace

void Record(SerialFlash& flash, Raised& into) {
    flash.Message = [&into](const RunLine& line) {
        into.Messages.push_back(line.Text);
        into.All.push_back(line.Text);
    };
    flash.Timing = [&into](const RunTiming& timing) {
        into.Timings.push_back(timing.Text);
        into.All.push_back(timing.Text);
    };
    flash.Progress = [&into](int block, int total) {
        into.Progress.emplace_back(block, total);
        into.All.push_back("Progress(" + std::to_string(block) + ", " + std::to_string(total) + ")");
    };
    flash.Trace = [&into](const std::string& line) { into.Trace.push_back(line); };
}

LinkTest::LinkTest()
    : Unit(*new Dialogue(Loop)),  // owned by Port
      Port(Loop, std::unique_ptr<SerialDevice>(&Unit), [](int port) { return "COM" + std::to_string(port); }),
      Flash(Loop, Port) {
    Record(Flash, Events);
}

void LinkTest::TearDown() {
    EXPECT_THAT(Unit.Unexpected(), ::testing::IsEmpty());
    EXPECT_TRUE(Unit.Finished()) << "the unit waits for a message that never came";
    EXPECT_FALSE(Unit.IsOpen());
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_EQ(OpensTheLink, !Unit.Sent().empty());
    if (OpensTheLink && FinishArrives && !Unit.Sent().empty()) {
        EXPECT_EQ(ToHex(Unit.Sent().back().Content), Finish);
    }
}

void LinkTest::AgreesOn(const char* mode, const char* speed) {
    Unit.Hears(Probe).Says(Ready);
    if (speed == nullptr) {
        Unit.Hears(mode).Says(Acknowledge).Says(100ms, Ready);
        return;
    }
    Unit.Hears(mode);
    Unit.Hears(speed).Says(Acknowledge).Says(100ms, Ready);
}

void LinkTest::RunDownload(const Bytes& image) {
    Flash.SetFileName(Folder.Write("image.bin", image));
    Flash.Execute(Method::Download);
}

void LinkTest::RunUpload(int blocks) {
    Flash.SetFileName(UploadPath());
    Flash.SetUploadBlock(static_cast<std::int16_t>(blocks));
    Flash.Execute(Method::Upload);
}

std::vector<std::string> LinkTest::SentCommands() const {
    std::vector<std::string> commands;
    for (const auto& frame : Unit.Sent()) {
        if (!IsBlock(frame)) {
            commands.push_back(ToHex(frame.Content));
        }
    }
    return commands;
}

std::vector<Bytes> LinkTest::SentBlocks() const {
    std::vector<Bytes> blocks;
    for (const auto& frame : Unit.Sent()) {
        if (IsBlock(frame)) {
            blocks.push_back(frame.Content);
        }
    }
    return blocks;
}

void LinkTest::CancelAt(Microseconds moment) {
    Loop.At(moment, [this] { Flash.Execute(Method::Cancel); });
}

}  // namespace burnwick::test
