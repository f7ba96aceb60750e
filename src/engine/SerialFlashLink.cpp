#include <algorithm>
#include <cerrno>
#include <iomanip>
#include <locale>
#include <sstream>
#include <system_error>

#include "engine/SerialFlash.h"

// The run on the line: opens the port, finds the unit, moves the blocks, and always closes down.
namespace burnwick {

namespace {

using namespace std::chrono_literals;

constexpr auto UnitPatience = 60s;  // how long a unit may take to show up
constexpr auto ProbeInterval = 500ms;

// English in every locale.
std::string Formatted(const std::tm& time, const char* pattern) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&time, pattern);
    return text.str();
}

// "mm:ss", from 59:59 on to 00:00.
std::string MinutesAndSeconds(std::chrono::milliseconds time) {
    std::tm parts{};
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
    parts.tm_min = static_cast<int>(seconds / 60 % 60);
    parts.tm_sec = static_cast<int>(seconds % 60);
    return Formatted(parts, "%M:%S");
}

// The first block of these units belongs to the one unit it was read from; a file gets this in its place.
BlockData AnonymousFirstBlock() {
    BlockData block;
    block.fill(std::byte{0xFF});
    constexpr std::string_view serialNumber("SNUM00?\0", 8);
    std::transform(serialNumber.begin(), serialNumber.end(), block.begin() + 8,
                   [](char c) { return static_cast<std::byte>(c); });
    return block;
}

std::string HexOfFirstFour(const BlockData& data) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0');
    for (std::size_t i = 0; i < 4; ++i) {
        text << std::setw(2) << std::to_integer<int>(data[i]);
    }
    return text.str();
}

}  // namespace

// True when all blocks went; else the cancel flag, the result or the file's trouble tells why not.
bool SerialFlash::RunLink() {
    Say("Opening " + FileName_ + "...");
    Port_.SetSettings("9600,N,8,1");
    Port_.SetPortOpen(true);
    Port_.SetInputMode(InputMode::Binary);
    Say(" ");
    Say("Selected baud rate: " + BaudRate_ + "bps.");
    Say("Waiting for response from the unit on COM" + std::to_string(CommPort_) + "...");
    Run_.LinkState = LinkState::WaitingForUnit;
    Run_.WaitStart = Loop_.MillisecondClock();
    const bool completed = MoveBlocks() && FinishFile();
    TimingTimer_->SetEnabled(false);
    if (completed) {
        Run_.FileCreated = false;  // the file is whole, and is kept whatever happens from here on
        Result_.Outcome = Outcome::Succeeded;
        ReportSuccess();
    }
    CloseLink();
    return completed;
}

bool SerialFlash::MoveBlocks() {
    for (;;) {
        const bool onlyWaits =
            Run_.LinkState == LinkState::SpeedNegotiation || Run_.LinkState == LinkState::AwaitingAnswer;
        Loop_.Yield(onlyWaits && !RunEnds() ? LongestSleep : 0ms);
        if (Run_.LinkState == LinkState::WaitingForUnit) {
            WaitForUnit();
        } else if (Run_.LinkState == LinkState::ReadyToSend && !RunEnds()) {
            if (Run_.Block == Run_.TotalBlock) {
                return true;
            }
            SendNextBlock();
        }
        if (RunEnds()) {
            return false;
        }
        ReceiveMessage();
    }
}

bool SerialFlash::RunEnds() const {
    return CancelFlag_ || Run_.LinkResult != LinkResult::NoFailure || Run_.FileTrouble;
}

void SerialFlash::WaitForUnit() {
    if (Run_.ImageInfo.ImageType != AnnouncedImageType) {
        SendMessage(MessageKind::Probe);
    } else if (!Run_.RxFlashRequest) {
        SendMessage(MessageKind::VDR_FLASH_REQUEST);
    }
    WaitFor(ProbeInterval);
    const auto waited = Loop_.MillisecondClock() - Run_.WaitStart;
    const auto left = std::max(0s, UnitPatience - std::chrono::duration_cast<std::chrono::seconds>(waited));
    SayTiming("Timeout: " + std::to_string(left.count()) + " seconds", /*isTransfer=*/false);
    if (left == 0s) {
        Run_.LinkResult = LinkResult::NoResponse;
    }
}

void SerialFlash::SendNextBlock() {
    if (!IsUpload() && Run_.Block == 0) {
        Say("Erasing the chip...");
    }
    if (Run_.Block == 2) {
        Say(IsUpload() ? "Reading data from the unit..." : "Sending data to the unit...");
    }
    SendMessage(MessageKind::Block);
    ++Run_.Block;
    if (Run_.Block >= 2 && Progress) {
        Progress(Run_.Block, Run_.TotalBlock);
    }
    if (++Run_.BlockAddressLow == 0) {
        ++Run_.BlockAddressHigh;
    }
    Run_.LinkState = LinkState::AwaitingAnswer;
    if (!IsUpload() && Run_.ImageInfo.ImageFamily == 2 && Run_.Block == Run_.TotalBlock) {
        Say("Please wait for a few seconds...", LineKind::PleaseWait);
    }
}

void SerialFlash::ReportSuccess() {
    Say(" ");
    Say(IsUpload() ? "Uploading was completed successfully." : "Programming was completed successfully.",
        LineKind::Completed);
    Say(" ");
    Say(StampedLine("Finish time: "));
    Say("Elapsed time: " + Run_.ElapsedText + ".");
    Say(" ");
    Say("Now rebooting the unit...");
}

void SerialFlash::CloseLink() {
    SendMessage(MessageKind::Finish);
    Port_.SetPortOpen(false);
    Run_.File.close();
    SecTimeoutTimer_->SetEnabled(false);
}

void SerialFlash::SendMessage(MessageKind kind) {
    if (DebugEnabled_ && Trace && kind == MessageKind::VDR_FLASH_REQUEST) {
        Trace("SendMessage: VDR_FLASH_REQUEST");
    }
    const Bytes message = kind == MessageKind::Block ? NextBlockMessage() : CommandMessage(kind);
    if (!message.empty()) {
        Port_.Output(message);
    }
    Port_.ResetOutBufferCount();
}

Bytes SerialFlash::NextBlockMessage() {
    const auto number = static_cast<std::uint16_t>(Run_.BlockAddressHigh << 8 | Run_.BlockAddressLow);
    return IsUpload() ? BlockRequestMessage(number) : BlockDataMessage(number, NextImageBlock());
}

BlockData SerialFlash::NextImageBlock() const {
    BlockData block{};
    const std::size_t at = static_cast<std::size_t>(Run_.Block) * BlockSize;
    const std::size_t count = std::min(BlockSize, Run_.Image->size() - at);
    std::copy_n(Run_.Image->begin() + static_cast<std::ptrdiff_t>(at), count, block.begin());
    if (Run_.Block == 0 && CarriesItsLength(Run_.ImageInfo)) {
        const auto length = LengthBytes(Run_.ImageInfo);
        std::copy(length.begin(), length.end(), block.begin() + 4);
    }
    return block;
}

// False when the file would not take the block; the run then ends.
bool SerialFlash::StoreBlock(BlockData data) {
    if (Run_.Block == 1) {
        constexpr int blocksOf64KiB = 256;
        Run_.ImageInfo.ImageTypeText = HexOfFirstFour(data);
        const bool isBootCode = Run_.ImageInfo.ImageTypeText.find("BC0DE1") != std::string::npos;
        if (isBootCode && Run_.TotalBlock == blocksOf64KiB) {
            data = AnonymousFirstBlock();
        }
    }
    errno = 0;
    Run_.File.write(reinterpret_cast<const char*>(data.data()), static_cast<std::streamsize>(data.size()));
    if (!Run_.File.flush()) {
        FileFailed();
        return false;
    }
    return true;
}

// Before success is reported, not after: some systems tell only now that the file could not be kept.
bool SerialFlash::FinishFile() {
    errno = 0;
    if (Run_.File.is_open()) {
        Run_.File.close();
        if (!Run_.File) {
            FileFailed();
            return false;
        }
    }
    return true;
}

void SerialFlash::FileFailed() {
    Run_.FileTrouble =
        FileError{FileError::Kind::NotWritable,
                  "Cannot write to " + FileName_ + " (" + std::generic_category().message(errno) + ")."};
}

void SerialFlash::WaitFor(std::chrono::milliseconds amount) {
    const auto deadline = Loop_.MillisecondClock() + amount;
    for (auto now = Loop_.MillisecondClock(); now < deadline; now = Loop_.MillisecondClock()) {
        Loop_.Yield(deadline - now);
    }
}

void SerialFlash::StartElapsedTime() {
    Run_.StartTime = Loop_.MillisecondClock();
    TickElapsedTime();
    TimingTimer_->SetEnabled(true);
}

void SerialFlash::TickElapsedTime() {
    Run_.ElapsedText = MinutesAndSeconds(Loop_.MillisecondClock() - *Run_.StartTime);
    SayTiming("Elapsed time: " + Run_.ElapsedText, /*isTransfer=*/true);
}

std::string SerialFlash::StampedLine(const std::string& label) const {
    return label + Formatted(Loop_.Now(), "%A, %m/%d/%Y, %I:%M:%S %p") + ".";
}

}  // namespace burnwick
