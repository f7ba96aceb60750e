#include <algorithm>
#include <charconv>
#include <iomanip>
#include <sstream>

#include "engine/SerialFlash.h"

// What the unit says, and what the link does about it.
namespace burnwick {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t ShortestAnswer = 4;
constexpr std::size_t LongestAnswer = ShortestAnswer + BlockSize;

// Silence limits, in ticks of 100 ms.
constexpr int SetUpLimit = 20;
constexpr int BlockLimit = 100;
constexpr int LastBlockLimitFamily1 = 30;
constexpr int LastBlockLimit = 600;
constexpr int RestOfBlockLimit = 20;

// The text before the first comma.
std::string SpeedPart(const std::string& settings) {
    return settings.substr(0, settings.find(','));
}

std::string Hex(unsigned value) {
    std::ostringstream text;
    text << std::hex << std::uppercase << value;
    return text.str();
}

}  // namespace

void SerialFlash::ReceiveMessage() {
    if (Port_.InBufferCount() < ShortestAnswer) {
        ApplySilenceLimits();
        return;
    }
    if (Run_.LinkState == LinkState::WaitingForUnit || Run_.LinkState == LinkState::SpeedNegotiation) {
        LetAnswerArriveWhole();
    }
    const Bytes chunk = Port_.Input();
    TraceAnswer(chunk);
    Run_.SecTimeout = 0;
    SecTimeoutTimer_->SkipMissedTicks();
    if (!Run_.RxFlashRequest && IsFlashRequestAcknowledgement(chunk)) {
        Run_.RxFlashRequest = true;
        return;
    }
    if (const auto character = FindUnitReplyChar(chunk)) {
        Run_.UnitReplyChar = *character;
    }
    if (React(FindAnswer(chunk), chunk)) {
        Port_.DiscardInput();
    }
}

// Bytes come in one by one: a pair cut in two, or an identity without its "ready", would be lost. Nobody
// waits here while blocks move.
void SerialFlash::LetAnswerArriveWhole() {
    const auto baud = ParseLineSettings(Port_.Settings()).value_or(LineSettings{}).Baud;
    constexpr auto bitsOfFourCharacters = 40s;  // at 1 bit/s
    // A clock of whole milliseconds may be one behind.
    const auto quiet =
        std::chrono::ceil<std::chrono::milliseconds>(bitsOfFourCharacters / double(baud)) + 1ms;
    std::size_t has = Port_.InBufferCount();
    auto deadline = Loop_.MillisecondClock() + quiet;
    for (auto now = Loop_.MillisecondClock(); now < deadline && has < LongestAnswer && !CancelFlag_;
         now = Loop_.MillisecondClock()) {
        Loop_.Yield(deadline - now);
        if (const auto hasNow = Port_.InBufferCount(); hasNow != has) {
            has = hasNow;
            deadline = Loop_.MillisecondClock() + quiet;
        }
    }
}

void SerialFlash::ApplySilenceLimits() {
    const auto limit = SilenceLimit();
    if (limit && Run_.SecTimeout >= *limit) {
        Run_.LinkResult = LinkResult::TransmittingError;
    }
}

// Ticks without an answer that end the run; nothing where silence is no failure.
std::optional<int> SerialFlash::SilenceLimit() const {
    switch (Run_.LinkState) {
        case LinkState::SpeedNegotiation:
            return SetUpLimit;
        case LinkState::AwaitingAnswer:
            if (Run_.Block < Run_.TotalBlock) {
                return BlockLimit;
            }
            return Run_.ImageInfo.ImageFamily == 1 ? LastBlockLimitFamily1 : LastBlockLimit;
        case LinkState::WaitingForUnit:
        case LinkState::ReadyToSend:
            break;
    }
    return std::nullopt;
}

// True when what came with the answer may be dropped.
bool SerialFlash::React(const Answer& answer, const Bytes& chunk) {
    const bool waiting = Run_.LinkState == LinkState::WaitingForUnit;
    const bool negotiating = Run_.LinkState == LinkState::SpeedNegotiation;
    switch (answer.Code) {
        case AnswerCode::Ready:
            if (waiting) {
                AnswerReady();
            } else if (negotiating) {
                return JudgeAndStart();
            }
            break;
        case AnswerCode::Acknowledge:
            if (negotiating) {
                SwitchSpeed();
            } else if (Run_.LinkState == LinkState::AwaitingAnswer) {
                TakeBlockAnswer(answer, chunk);
            }
            break;
        case AnswerCode::Negative:
        case AnswerCode::NegativeToo:
            Run_.LinkResult = LinkResult::TransmittingError;
            break;
        case AnswerCode::None:
            break;
    }
    return true;
}

void SerialFlash::AnswerReady() {
    SendMessage(IsUpload() ? MessageKind::UploadMode : MessageKind::ProgramMode);
    Run_.LinkState = LinkState::SpeedNegotiation;
    if (BaudRate_ == "57600") {
        SendMessage(MessageKind::Speed57600);
    } else if (BaudRate_ == "115200") {
        if (IsLimitedTo57600(Run_.ImageInfo)) {
            SendMessage(MessageKind::Speed57600);
            Say("The unit doesn't support 115200bps.");
        } else {
            SendMessage(MessageKind::Speed115200);
        }
    }
    SecTimeoutTimer_->SetEnabled(true);
}

void SerialFlash::SwitchSpeed() {
    const bool isLimited = AsksForSpeed() && IsLimitedTo57600(Run_.ImageInfo);
    const bool fellBack = Run_.SpeedSwitched;
    Run_.SpeedSwitched = true;
    Port_.SetSettings((isLimited || fellBack ? "57600" : BaudRate_) + ",N,8,1");
    StartElapsedTime();
}

// "Ready" while the speed is settled: is it the right unit, and can the blocks go?
bool SerialFlash::JudgeAndStart() {
    if (NeedsIdentity(Run_.ImageInfo, Run_.FileSize) && !Run_.IdentifyAsked) {
        SendMessage(MessageKind::Identify);
        Run_.IdentifyAsked = true;
        return false;
    }
    if (!SuitsUnit(Run_.ImageInfo, Run_.FileSize, Run_.UnitReplyChar)) {
        Run_.LinkResult = LinkResult::NotCompatible;
        return false;
    }
    if (!Run_.SpeedSwitched) {
        SendMessage(MessageKind::Speed57600);
        Run_.SpeedSwitched = true;
        Say("The unit doesn't support 115200bps.");
        return false;
    }
    MakeContact();
    return true;
}

void SerialFlash::MakeContact() {
    const std::string speed = SpeedPart(Port_.Settings());
    std::from_chars(speed.data(), speed.data() + speed.size(), Result_.Baud);
    Say("Contact established at " + speed + "bps.");
    Say(" ");
    Say(StampedLine("Start time: "));
    if (Progress) {
        Progress(Run_.Block, Run_.TotalBlock);
    }
    Run_.LinkState = LinkState::ReadyToSend;
    Say(IsUpload() ? "Getting ready to upload data..." : "Getting ready to start programming...",
        LineKind::GettingReady);
}

void SerialFlash::TakeBlockAnswer(const Answer& answer, const Bytes& chunk) {
    if (!IsUpload()) {
        Run_.LinkState = LinkState::ReadyToSend;
        return;
    }
    Bytes received = chunk;
    const std::size_t wanted = answer.DataAt + BlockSize;
    while (received.size() + Port_.InBufferCount() < wanted && !CancelFlag_
           && Run_.SecTimeout < RestOfBlockLimit) {
        Loop_.Yield(LongestSleep);
    }
    const Bytes rest = Port_.Input();
    received.insert(received.end(), rest.begin(), rest.end());
    if (received.size() < wanted) {
        if (!CancelFlag_) {
            Run_.LinkResult = LinkResult::TransmittingError;
        }
        return;
    }
    BlockData data;
    std::copy_n(received.begin() + static_cast<std::ptrdiff_t>(answer.DataAt), BlockSize, data.begin());
    if (StoreBlock(data)) {
        Run_.LinkState = LinkState::ReadyToSend;
    }
}

void SerialFlash::TraceAnswer(const Bytes& chunk) const {
    if (!DebugEnabled_ || !Trace) {
        return;
    }
    std::string bytes;
    for (const std::byte value : chunk) {
        bytes += " " + Hex(std::to_integer<unsigned>(value));
    }
    const unsigned address = static_cast<unsigned>(Run_.BlockAddressHigh) << 8 | Run_.BlockAddressLow;
    Trace("ReceiveMessage: SecTimeout = " + Hex(static_cast<unsigned>(Run_.SecTimeout)));
    Trace("ReceiveMessage: Block/RxMessage = " + Hex(static_cast<unsigned>(Run_.Block)) + bytes);
    Trace("ReceiveMessage: RxFlashRequest = " + Hex(Run_.RxFlashRequest ? 1 : 0));
    Trace("ReceiveMessage: Block/Address = " + Hex(static_cast<unsigned>(Run_.Block)) + " " + Hex(address));
}

}  // namespace burnwick
