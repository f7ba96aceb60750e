#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace simulator {

// Time since an arbitrary start.
using Time = std::chrono::microseconds;

// What goes wrong, in the answer to one block or during the set-up of the link.
enum class Fault {
    Negative7,       // a negative answer with code 7; the block is not stored
    Negative8,       // the same with code 8
    NoAnswer,        // this answer is lost, the unit goes on
    Dead,            // nothing from there on
    CutShort,        // the answer stops after its third byte (an upload's: after half of its data)
    Drop,            // one byte in the middle of the answer is lost
    Flip,            // one bit of the answer's code is inverted
    FlipData,        // one bit of an upload answer's data is inverted
    Repeat,          // the answer comes twice
    Noise,           // bytes that mean nothing come before the answer, in one piece with it
    Pieces,          // the answer comes in pieces with gaps
    Late,            // the answer comes just inside the silence limit that applies
    TooLate,         // the answer comes just beyond it
    ReadyForAck,     // "ready" where the speed request should be acknowledged
    PowerCut,        // the unit loses its power and starts anew, its flash half written
};

// One fault; without a block it strikes while the link is set up, at the answer to the speed request (or to the
// mode message when no speed is asked for).
struct FaultOrder {
    Fault Kind;
    std::optional<int> Block;
};

// Reads "NAME" or "NAME@BLOCK" (block 0 is the first); nothing when it is neither.
std::optional<FaultOrder> ParseFaultOrder(const std::string& text);

// Every fault's name, as ParseFaultOrder reads it.
std::vector<std::string> FaultNames();

struct UnitOptions {
    std::vector<std::byte> Flash;     // the memory; its length is the chip's size
    char Ident = 0;                   // character given in the answer to the identify request; 0: none
    bool Announce = false;            // answers the flash request only, never the probe
    unsigned MaxBaud = 115200;        // a faster request is answered with "ready" instead of an acknowledgement
    std::vector<FaultOrder> Faults;
    // Which silence limit Late and TooLate mind at the last block of a download.
    std::chrono::milliseconds LastBlockLimit = std::chrono::seconds(60);
    // Simulated time of erasing the chip before the first block of a download is acknowledged.
    std::chrono::milliseconds EraseTime = std::chrono::milliseconds(20);
};

// What the unit has seen, for whoever checks it afterwards.
struct UnitJournal {
    int FinishMessages = 0;      // finish messages that arrived whole, at the right speed
    int BadMessages = 0;         // messages with a wrong check byte, out of order, or out of place
    int IdentifyRequests = 0;
    int FlashRequests = 0;
    int Probes = 0;
    int BlocksStored = 0;        // blocks written to flash since the last start of a download
    int BlocksSent = 0;          // blocks of flash given out since the last start of an upload
};

// A video unit's loader at its end of the line: bytes in, bytes and delays out.
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
    // to be filled in by the implementation
};

}  // namespace simulator
