#include "simulator/Unit.h"

#include <algorithm>
#include <array>
#include <utility>

#include "simulator/Faults.h"
#include "simulator/Wire.h"

namespace simulator {

namespace {

using namespace std::chrono_literals;

constexpr unsigned StartBaud = 9600;
constexpr unsigned MiddleBaud = 57600;
constexpr unsigned HighBaud = 115200;

constexpr Time AnswerDelay = 10ms;
constexpr Time AnnounceDelay = 1200ms;
constexpr Time ModeSettles = 50ms;  // a speed request comes within this, or not at all
constexpr Time ReadyAfterMode = 60ms;
constexpr Time ReadyAfterSwitch = 100ms;
constexpr Time MessagePause = 1s;  // a longer one ends an unfinished message
constexpr Time RestartTime = 300ms;
constexpr Time SetUpLimit = 2s;    // how long a host waits for the answer to a speed request
constexpr Time AnswerLimit = 10s;  // how long it waits for the answer to a block

constexpr std::byte ReadyCode{5};
constexpr std::byte AcknowledgeCode{6};
constexpr std::byte WrongCheckCode{7};
constexpr std::byte RefusedCode{8};
constexpr std::byte Erased{0xFF};

std::vector<std::byte> Answer(std::byte code) {
    return {std::byte{0xFF}, std::byte{0xAA}, code, std::byte{0x00}};
}

}  // namespace

Unit::Unit(UnitOptions options) : Options_(std::move(options)), Baud_(StartBaud) {}

unsigned Unit::Baud() const {
    return Baud_;
}

const std::vector<std::byte>& Unit::Flash() const {
    return Options_.Flash;
}

const UnitJournal& Unit::Journal() const {
    return Journal_;
}

void Unit::Receive(Time now, unsigned lineBaud, std::span<const std::byte> bytes) {
    RunDue(now);
    if (bytes.empty()) {
        return;
    }
    if (now - LastByte_ > MessagePause && Parser_.Abandon()) {
        ++Journal_.BadMessages;
    }
    LastByte_ = now;
    for (const std::byte value : bytes) {
        if (!Listening_) {
            return;
        }
        Parser_.Put(lineBaud == Baud_ ? value : Garbled(value));
        while (const auto message = Parser_.Next()) {
            Handle(now, *message);
        }
    }
}

std::optional<Time> Unit::NextEvent() const {
    if (!Departures_.empty()) {
        return Departures_.front().At;
    }
    if (!Events_.empty()) {
        return Events_.begin()->first;
    }
    return std::nullopt;
}

std::vector<std::byte> Unit::Send(Time now, unsigned lineBaud) {
    RunDue(now);
    Bytes sent;
    for (auto& departure : std::exchange(Departures_, {})) {
        if (departure.Baud != lineBaud) {
            std::transform(departure.Sent.begin(), departure.Sent.end(), departure.Sent.begin(), Garbled);
        }
        sent.insert(sent.end(), departure.Sent.begin(), departure.Sent.end());
    }
    return sent;
}

void Unit::RunDue(Time now) {
    while (!Events_.empty() && Events_.begin()->first <= now) {
        auto node = Events_.extract(Events_.begin());
        Run(node.key(), node.mapped());
    }
}

void Unit::Run(Time at, Event& event) {
    switch (event.Kind) {
        case EventKind::Transmit:
            Ready_ = Ready_ || event.Ready;
            Departures_.push_back({at, Baud_, std::move(event.Sent)});
            break;
        case EventKind::ModeSettled:
            AnswerSetUp(at - ModeSettles, at, 0);
            break;
        case EventKind::SwitchSpeed:
            Baud_ = event.Baud;
            break;
        case EventKind::Restart:
            Listening_ = true;
            ++Journal_.Restarts;
            break;
    }
}

void Unit::Schedule(Time at, EventKind kind, unsigned baud) {
    Event event;
    event.Kind = kind;
    event.Baud = baud;
    Events_.emplace(at, std::move(event));
}

void Unit::Transmit(Time at, Bytes bytes, bool ready) {
    Event event;
    event.Sent = std::move(bytes);
    event.Ready = ready;
    Events_.emplace(at, std::move(event));
}

// Returns when the answer has gone.
Time Unit::TransmitSpoilt(Time at, std::optional<Fault> fault, Bytes answer, bool ready) {
    Time last = at + MessageTime(answer.size());
    for (auto& piece : Spoilt(fault, std::move(answer))) {
        const Time start = at + piece.After;
        last = std::max(last, start + MessageTime(piece.Bytes.size()));
        Transmit(start, std::move(piece.Bytes), ready);
    }
    return last;
}

void Unit::Handle(Time now, const Message& message) {
    switch (message.Kind) {
        case MessageKind::Bad:
            ++Journal_.BadMessages;
            break;
        case MessageKind::BadBlock:
            RejectBlock(now, WrongCheckCode);
            break;
        case MessageKind::Probe:
            HandleProbe(now);
            break;
        case MessageKind::FlashRequest:
            HandleFlashRequest(now);
            break;
        case MessageKind::UploadMode:
            HandleMode(now, Mode::Upload);
            break;
        case MessageKind::ProgramMode:
            HandleMode(now, Mode::Program);
            break;
        case MessageKind::Speed57600:
            HandleSpeed(now, MiddleBaud);
            break;
        case MessageKind::Speed115200:
            HandleSpeed(now, HighBaud);
            break;
        case MessageKind::Identify:
            HandleIdentify(now);
            break;
        case MessageKind::Block:
            HandleBlock(now, message);
            break;
        case MessageKind::Finish:
            ++Journal_.FinishMessages;
            ++Journal_.Restarts;
            Forget();
            break;
    }
}

void Unit::HandleProbe(Time now) {
    ++Journal_.Probes;
    if (Options_.Announce) {
        return;
    }
    if (Baud_ != StartBaud) {
        ++Journal_.BadMessages;
        return;
    }
    // Probes that pile up get one answer together: a second "ready" would meet a host that has already gone
    // on.
    Forget();
    Transmit(now + AnswerDelay, Answer(ReadyCode));
}

void Unit::HandleFlashRequest(Time now) {
    ++Journal_.FlashRequests;
    if (!Options_.Announce) {
        return;
    }
    if (Baud_ != StartBaud) {
        ++Journal_.BadMessages;
        return;
    }
    if (Mode_ != Mode::None) {
        Forget();
    }
    Transmit(now + AnswerDelay, BytesOf(0x00, 0x10, 0x00, 0x00, 0x00, 0x01));
    if (!std::exchange(Announced_, true)) {
        Transmit(now + AnnounceDelay, Answer(ReadyCode));
    }
}

void Unit::HandleMode(Time now, Mode mode) {
    if (Mode_ != Mode::None) {
        ++Journal_.BadMessages;
        return;
    }
    Mode_ = mode;
    Parser_.SetBlockForm(mode == Mode::Program ? BlockForm::WithData : BlockForm::Request);
    (mode == Mode::Program ? Journal_.BlocksStored : Journal_.BlocksSent) = 0;
    Schedule(now + ModeSettles, EventKind::ModeSettled);
}

void Unit::HandleSpeed(Time now, unsigned baud) {
    if (Mode_ == Mode::None || NextBlock_ > 0) {
        ++Journal_.BadMessages;
        return;
    }
    std::erase_if(Events_, [](const auto& entry) { return entry.second.Kind == EventKind::ModeSettled; });
    AnswerSetUp(now, now + AnswerDelay, baud);
}

void Unit::HandleIdentify(Time now) {
    ++Journal_.IdentifyRequests;
    auto answer = Answer(ReadyCode);
    if (Options_.Ident != 0) {
        const auto identity = BytesOf(0x10, 0x01, Options_.Ident, 0x00);
        answer.insert(answer.begin(), identity.begin(), identity.end());
    }
    Transmit(now + AnswerDelay, std::move(answer));
}

// The answer to a speed request, or, with speed 0, to a mode message that none followed.
void Unit::AnswerSetUp(Time asked, Time due, unsigned baud) {
    const auto fault = TakeFault(std::nullopt);
    if (GoesSilent(asked, fault)) {
        return;
    }
    if (const auto refusal = RefusalCode(fault)) {
        Transmit(due, Answer(*refusal));
        return;
    }
    const Time start = AnswerTime(fault, asked, MessageTime(CommandLength), due, SetUpLimit);
    if (baud > Options_.MaxBaud || fault == Fault::ReadyForAck) {
        TransmitSpoilt(start, fault, Answer(ReadyCode), true);
        return;
    }
    const Time gone = TransmitSpoilt(start, fault, Answer(AcknowledgeCode));
    if (baud != 0) {
        Schedule(gone, EventKind::SwitchSpeed, baud);
    }
    Transmit(gone + (baud != 0 ? ReadyAfterSwitch : ReadyAfterMode), Answer(ReadyCode), true);
}

void Unit::HandleBlock(Time now, const Message& message) {
    constexpr std::size_t numberMask = 0xFFFF;
    if (!Ready_ || message.Block != (NextBlock_ & numberMask)) {
        RejectBlock(now, RefusedCode);
        return;
    }
    if ((NextBlock_ + 1) * BlockSize > Options_.Flash.size()) {
        Transmit(now, Answer(RefusedCode));
        return;
    }
    TransferBlock(now, message);
}

void Unit::TransferBlock(Time now, const Message& message) {
    const bool erases = Mode_ == Mode::Program && NextBlock_ == 0;
    if (erases) {
        std::fill(Options_.Flash.begin(), Options_.Flash.end(), Erased);
    }
    const auto fault = TakeFault(static_cast<int>(NextBlock_));
    const std::span data(message.Data);
    if (fault == Fault::PowerCut) {
        Store(data.first(data.size() / 2));
    }
    if (GoesSilent(now, fault)) {
        return;
    }
    if (const auto refusal = RefusalCode(fault)) {
        // A host that takes the masked refusal for an acknowledgement goes on with the next block.
        NextBlock_ += fault == Fault::Mask7 ? 1 : 0;
        Transmit(now, Answer(*refusal));
        return;
    }
    const Time due = erases ? now + Options_.EraseTime : now;
    const Time asking = MessageTime(message.Data.size() + CommandLength);
    const Time start = AnswerTime(fault, now, asking, due, BlockLimit());
    if (Mode_ == Mode::Program) {
        Store(data);
        ++Journal_.BlocksStored;
    }
    TransmitSpoilt(start, fault, BlockAnswer(fault));
    ++NextBlock_;
}

void Unit::Store(std::span<const std::byte> data) {
    std::copy(data.begin(), data.end(),
              Options_.Flash.begin() + static_cast<std::ptrdiff_t>(NextBlock_ * BlockSize));
}

Unit::Bytes Unit::BlockAnswer(std::optional<Fault> fault) {
    if (fault == Fault::ReadyForAck) {
        return Answer(ReadyCode);
    }
    auto answer = Answer(AcknowledgeCode);
    if (Mode_ == Mode::Upload) {
        const auto block = std::span(Options_.Flash).subspan(NextBlock_ * BlockSize, BlockSize);
        answer.insert(answer.end(), block.begin(), block.end());
        ++Journal_.BlocksSent;
    }
    return answer;
}

void Unit::RejectBlock(Time now, std::byte code) {
    ++Journal_.BadMessages;
    Transmit(now, Answer(code));
}

// Back to waiting; what was still to be said is left unsaid.
void Unit::Forget() {
    Events_.clear();
    Parser_.SetBlockForm(BlockForm::Unknown);
    Baud_ = StartBaud;
    Mode_ = Mode::None;
    Ready_ = false;
    Announced_ = false;
    NextBlock_ = 0;
}

bool Unit::GoesSilent(Time now, std::optional<Fault> fault) {
    if (fault != Fault::Dead && fault != Fault::PowerCut) {
        return false;
    }
    Forget();
    Listening_ = false;
    Parser_.Abandon();
    if (fault == Fault::PowerCut) {
        Schedule(now + RestartTime, EventKind::Restart);
    }
    return true;
}

std::optional<Fault> Unit::TakeFault(std::optional<int> block) {
    const auto order =
        std::find_if(Options_.Faults.begin(), Options_.Faults.end(),
                     [block](const FaultOrder& candidate) { return candidate.Block == block; });
    if (order == Options_.Faults.end()) {
        return std::nullopt;
    }
    const Fault kind = order->Kind;
    Options_.Faults.erase(order);
    return kind;
}

Time Unit::BlockLimit() const {
    const auto chipEnd = static_cast<int>(Options_.Flash.size() / BlockSize) - 1;
    const bool last = static_cast<int>(NextBlock_) == Options_.LastBlock.value_or(chipEnd);
    return last ? Time(Options_.LastBlockLimit) : AnswerLimit;
}

Time Unit::MessageTime(std::size_t bytes) const {
    return std::chrono::ceil<Time>(AirTime(bytes, Baud_));
}

}  // namespace simulator
