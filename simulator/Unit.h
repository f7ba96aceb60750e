#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "simulator/Parser.h"

namespace simulator {

// Time since an arbitrary start.
using Time = std::chrono::microseconds;

// What goes wrong, in the answer to one block or during the set-up of the link. The fault does not touch the
// answer to a message that is bad by itself.
enum class Fault {
    Negative7,    // a negative answer with code 7; the block is not stored
    Negative8,    // the same with code 8
    Mask7,        // the unit refuses, but its negative answer arrives as an acknowledgement (6)
    NoAnswer,     // this answer is lost, the unit goes on
    Dead,         // nothing from there on
    CutShort,     // the answer stops after its third byte (an upload's: after half of its data)
    Drop,         // one byte in the middle of the answer is lost
    Flip,         // one bit of the answer's code is inverted
    FlipData,     // one bit of an upload answer's data is inverted
    Repeat,       // the answer comes twice
    Noise,        // bytes that mean nothing come before the answer, in one piece with it
    Pieces,       // the answer comes in pieces with gaps
    Late,         // the answer comes just inside the silence limit that applies
    TooLate,      // the answer comes just beyond it
    ReadyForAck,  // "ready" where the speed request should be acknowledged
    PowerCut,     // the unit loses its power and starts anew, this block half written
};

// One fault; without a block it strikes while the link is set up, at the answer to the speed request (or to
// the mode message when no speed is asked for). Each order strikes once: of two orders for the same answer
// the second waits for the next such answer.
struct FaultOrder {
    Fault Kind = Fault::NoAnswer;
    std::optional<int> Block;
};

// Reads "NAME" or "NAME@BLOCK" (block 0 is the first); nothing when it is neither.
std::optional<FaultOrder> ParseFaultOrder(const std::string& text);

// Every fault's name, as ParseFaultOrder reads it.
std::vector<std::string> FaultNames();

struct UnitOptions {
    std::vector<std::byte> Flash;  // the memory; its length is the chip's size
    char Ident = 0;                // character given in the answer to the identify request; 0: none
    bool Announce = false;         // answers the flash request only, never the probe
    unsigned MaxBaud = 115200;     // a faster request is answered with "ready" instead of an acknowledgement
    std::vector<FaultOrder> Faults;
    // The last block of the transfer, which the wire does not tell; without it the chip's last block.
    std::optional<int> LastBlock;
    // Which silence limit Late and TooLate mind at that block.
    std::chrono::milliseconds LastBlockLimit = std::chrono::seconds(60);
    // Simulated time of erasing the chip before the first block of a download is acknowledged.
    std::chrono::milliseconds EraseTime = std::chrono::milliseconds(20);
};

// What the unit has seen, for whoever checks it afterwards.
struct UnitJournal {
    int FinishMessages = 0;  // finish messages that arrived whole, at the right speed
    int BadMessages = 0;     // messages with a wrong check byte, out of order, or out of place
    int IdentifyRequests = 0;
    int FlashRequests = 0;
    int Probes = 0;
    int BlocksStored = 0;  // blocks written to flash since the last start of a download
    int BlocksSent = 0;    // blocks of flash given out since the last start of an upload
    int Restarts = 0;      // times that a finish message or a power cut made it start anew
};

// A video unit's loader at its end of the line: bytes in, bytes and delays out.
//
// How it behaves where a host has to take what comes:
// - Every answer to a command is FF AA, a code, and one byte without meaning.
// - At 9600 bit/s it answers a probe with "ready" 10 ms later. A probe at this speed begins a new set-up,
//   whatever was going on.
// - With Announce it passes over probes, acknowledges each flash request 10 ms later, and says "ready" by
//   itself 1200 ms after the first. Without Announce it does not know the flash request.
// - A mode message is acknowledged after 50 ms without a speed request; 60 ms later it says "ready".
// - A speed request is acknowledged at the old speed 10 ms later. When the acknowledgement has gone the unit
//   changes over, and 100 ms later it says "ready". A speed too fast for it is answered with "ready" alone.
// - An identify request is answered in one piece: two bytes, Ident, one byte, then "ready".
// - Blocks count up from 0, and each is answered when it is stored. The first one erases the chip. A wrong
//   check byte is answered with 7; a block out of order, before "ready" or beyond the chip with 8.
// - A message that stops in the middle is forgotten after a second without a byte.
// - A finish message makes it start anew at 9600 bit/s. A power cut leaves it deaf for 300 ms first.
class Unit {
public:
    explicit Unit(UnitOptions options);

    // Bytes that have arrived by `now` over a line that the other end has set to `lineBaud`.
    void Receive(Time now, unsigned lineBaud, std::span<const std::byte> bytes);

    // When the unit next has something to send or to do by itself; nothing when it only listens.
    std::optional<Time> NextEvent() const;

    // Bytes that the unit starts to send by `now`; garbled when the other end's speed is not the unit's.
    std::vector<std::byte> Send(Time now, unsigned lineBaud);

    // The speed that the unit listens and sends at, in bit/s.
    unsigned Baud() const;

    const std::vector<std::byte>& Flash() const;
    const UnitJournal& Journal() const;

private:
    using Bytes = std::vector<std::byte>;

    enum class Mode { None, Program, Upload };

    enum class EventKind { Transmit, ModeSettled, SwitchSpeed, Restart };
    struct Event {
        EventKind Kind = EventKind::Transmit;
        Bytes Sent;          // Transmit
        bool Ready = false;  // Transmit: from here on blocks may come
        unsigned Baud = 0;   // SwitchSpeed
    };

    // Bytes that have begun to leave, and at what speed.
    struct Departure {
        Time At{};
        unsigned Baud = 0;
        Bytes Sent;
    };

    void RunDue(Time now);
    void Run(Time at, Event& event);
    void Schedule(Time at, EventKind kind, unsigned baud = 0);
    void Transmit(Time at, Bytes bytes, bool ready = false);
    Time TransmitSpoilt(Time at, std::optional<Fault> fault, Bytes answer, bool ready = false);

    void Handle(Time now, const Message& message);
    void HandleProbe(Time now);
    void HandleFlashRequest(Time now);
    void HandleMode(Time now, Mode mode);
    void HandleSpeed(Time now, unsigned baud);
    void HandleIdentify(Time now);
    void HandleBlock(Time now, const Message& message);
    void AnswerSetUp(Time asked, Time due, unsigned baud);
    void TransferBlock(Time now, const Message& message);
    void Store(std::span<const std::byte> data);
    Bytes BlockAnswer(std::optional<Fault> fault);
    void RejectBlock(Time now, std::byte code);

    void Forget();
    bool GoesSilent(Time now, std::optional<Fault> fault);
    std::optional<Fault> TakeFault(std::optional<int> block);
    Time BlockLimit() const;
    Time MessageTime(std::size_t bytes) const;

    UnitOptions Options_;
    UnitJournal Journal_;
    Parser Parser_;
    std::multimap<Time, Event> Events_;
    std::vector<Departure> Departures_;
    Time LastByte_{};
    unsigned Baud_;
    Mode Mode_ = Mode::None;
    bool Ready_ = false;      // blocks may come
    bool Announced_ = false;  // "ready" has been or will be said by itself
    bool Listening_ = true;   // false without power, and when dead
    std::size_t NextBlock_ = 0;
};

}  // namespace simulator
