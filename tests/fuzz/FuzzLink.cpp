#include <array>
#include <filesystem>
#include <memory>
#include <optional>

#include "engine/FlashMessages.h"
#include "engine/SerialFlash.h"
#include "fuzz/BabblingDevice.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

// A whole run against a device that says anything at any time.

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

// The images, written once, and where uploads go.
struct Files {
    TempFolder Folder;
    std::string Upload = Folder / "upload.bin";
    std::array<std::string, 4> Images;
    std::array<int, 4> Blocks{256, 257, 258, 1024};

    Files() {
        Bytes withIdentity = ImageWith(0x40000, 0, {0xBC, 0x0D, 0xE1, 0x22});
        Put(withIdentity, 0x10000, {0xC0, 0xDE, 0x00, 0x02});
        Images = {Folder.Write("family1.bin", AnyBytes(0x10000)),
                  Folder.Write("type4.bin", ImageWith(0x10001, 0, {0xC0, 0xDE, 0x01, 0x49})),
                  Folder.Write("type343.bin", ImageWith(0x10200, 0, {0xBC, 0x0D, 0xE1, 0x57})),
                  Folder.Write("type3.bin", withIdentity)};
    }
};

// The run that the input asks for.
struct Order {
    burnwick::Method Method = Method::Download;
    std::string BaudRate;
    std::string FileName;
    int Blocks = 0;
    bool Traced = false;
    std::optional<Microseconds> CancelAt;
};

Order TakeOrder(Input& input, const Files& files) {
    constexpr std::array speeds{"9600", "57600", "115200", "57600"};
    const unsigned choices = input.TakeByte();
    Order order;
    order.BaudRate = speeds.at(choices >> 1 & 3);
    order.Traced = (choices & 0x20) != 0;
    if ((choices & 0x40) != 0) {
        order.CancelAt = std::chrono::milliseconds(10 * input.TakeNumber(2));
    }
    if ((choices & 1) == 0) {
        order.FileName = files.Images.at(choices >> 3 & 3);
        order.Blocks = files.Blocks.at(choices >> 3 & 3);
        return order;
    }
    order.Method = Method::Upload;
    order.FileName = files.Upload;
    const int blocks = input.TakeByte();
    order.Blocks = blocks == 255 ? 256 : blocks % 8;
    return order;
}

// What a run said about its end.
struct Ending {
    int Successes = 0;
    int Failures = 0;

    void Hear(const std::string& text) {
        if (text.ends_with(" was completed successfully.")) {
            ++Successes;
        } else if (text.ends_with(" was canceled.") || text == "Transmitting error."
                   || text == "No response from the unit." || text == "The software is not compatible."
                   || text.starts_with("Error:")) {
            ++Failures;
        }
    }
};

bool IsBlock(const Bytes& frame) {
    return frame.size() > 4 && frame[2] == std::byte{3};
}

// Every block once and in order, and the finish message once, at the end.
int CountBlocks(const std::vector<FakeDevice::Frame>& frames, bool upload) {
    constexpr std::size_t requestLength = 6;
    constexpr std::size_t dataLength = 262;
    const Bytes finish = CommandMessage(MessageKind::Finish);
    int blocks = 0;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const Bytes& frame = frames[i].Content;
        Require((frame == finish) == (i + 1 == frames.size()),
                "the finish message is the last frame, and no other");
        if (IsBlock(frame) && frame.size() != CommandMessage(MessageKind::VDR_FLASH_REQUEST).size()) {
            Require(frame.size() == (upload ? requestLength : dataLength), "a block has its length");
            const int number = std::to_integer<int>(frame[3]) | std::to_integer<int>(frame[4]) << 8;
            Require(number == blocks, "blocks go in order");
            ++blocks;
        }
    }
    Require(!frames.empty(), "something was sent");
    return blocks;
}

void CheckFile(const Order& order, bool succeeded) {
    if (order.Method == Method::Download) {
        return;
    }
    const bool isExpected = succeeded && order.Blocks > 0;
    Require(std::filesystem::exists(order.FileName) == isExpected,
            "an upload leaves a file when it succeeds");
    if (isExpected) {
        Require(
            std::filesystem::file_size(order.FileName) == static_cast<std::size_t>(order.Blocks) * BlockSize,
            "the file is whole");
        std::filesystem::remove(order.FileName);
    }
}

void CheckTime(const VirtualLoop& loop, const BabblingDevice& device) {
    constexpr Microseconds patience = 61s;  // until the unit shows up, and again when it falls silent
    constexpr Microseconds restOfBlock = 2s;
    Require(loop.Time() <= std::max(patience, device.LastArrival()) + patience + restOfBlock,
            "a run ends soon after the line has fallen quiet");
}

void RunOnce(Input& input, const Files& files) {
    VirtualLoop loop;
    const Order order = TakeOrder(input, files);
    auto owned = std::make_unique<BabblingDevice>(loop, input);
    const auto& device = *owned;
    MSComm port(loop, std::move(owned), [](int number) { return "COM" + std::to_string(number); });
    SerialFlash flash(loop, port);
    Ending ending;
    flash.Message = [&ending](const burnwick::RunLine& line) { ending.Hear(line.Text); };
    flash.Progress = [](int block, int total) {
        Require(block >= 0 && block <= total, "progress has an end");
    };
    flash.Trace = [](const std::string& line) { Require(!line.empty(), "a trace line says something"); };
    flash.SetBaudRate(order.BaudRate);
    flash.SetFileName(order.FileName);
    flash.SetDebugEnabled(order.Traced);
    flash.SetUploadBlock(static_cast<std::int16_t>(order.Method == Method::Upload ? order.Blocks : 0));
    if (order.CancelAt) {
        loop.At(*order.CancelAt, [&flash] { flash.Execute(Method::Cancel); });
    }
    flash.Execute(order.Method);

    const bool succeeded = ending.Successes > 0;
    Require(ending.Successes <= 1 && succeeded == (ending.Failures == 0), "a run either succeeds or fails");
    Require(flash.LastRun().Succeeded() == succeeded, "the result agrees with the lines");
    Require(!port.PortOpen() && !device.IsOpen(), "the port is closed");
    const int blocks = CountBlocks(device.Sent(), order.Method == Method::Upload);
    Require(blocks <= order.Blocks, "no block beyond the last");
    Require(!succeeded || blocks == order.Blocks, "success needs every block");
    Require(!succeeded || device.Acknowledgements() >= blocks,
            "success needs an acknowledgement for each block");
    CheckFile(order, succeeded);
    CheckTime(loop, device);
}

}  // namespace

}  // namespace burnwick::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const burnwick::test::Files files;
    burnwick::test::Input input(data, size);
    burnwick::test::RunOnce(input, files);
    return 0;
}
