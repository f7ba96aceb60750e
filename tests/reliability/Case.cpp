#include "reliability/Case.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <set>
#include <string_view>

#include "simulator/Wire.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;

constexpr Microseconds UnitPatience = 60s;
constexpr Microseconds UnitShowsUp = 2s;  // it answers the first probe, or announces itself after 1.2 s
constexpr Microseconds SetUpLimit = 2s;
constexpr int SetUpSteps = 4;  // the speed, a second speed, who are you, ready
constexpr Microseconds BlockLimit = 10s;
constexpr Microseconds LastBlockLimit = 60s;
constexpr Microseconds LastBlockLimitFamily1 = 3s;
constexpr Microseconds RestOfBlockLimit = 2s;
constexpr Microseconds BlockHandling = 3ms;  // rounding to whole ticks of the clocks on either side
constexpr std::size_t BytesPerBlock = 6 + BlockSize + 4;

bool IsAnyOf(Fault fault, std::initializer_list<Fault> list) {
    return std::find(list.begin(), list.end(), fault) != list.end();
}

Outcome OutcomeOfSetUp(const Case& theCase, Fault fault) {
    if (IsAnyOf(fault, {Fault::FlipData, Fault::Repeat, Fault::Noise, Fault::Pieces, Fault::Late,
                        Fault::ReadyForAck})) {
        return Outcome::Succeeds;
    }
    // "Ready" follows at the same speed, and is taken for a unit that wants to be asked for 57600.
    if (theCase.BaudRate == "9600" && IsAnyOf(fault, {Fault::NoAnswer, Fault::Flip})) {
        return Outcome::Succeeds;
    }
    return Outcome::Fails;
}

bool IsFirstBlockReplaced(const Kind& kind) {
    constexpr std::array bootCode{std::byte{0xBC}, std::byte{0x0D}, std::byte{0xE1}};
    return kind.Blocks == 256 && std::equal(bootCode.begin(), bootCode.end(), kind.Unit.Flash.begin());
}

// The silence before a block's answer counts from the first bytes of the answer before it. At 9600 bit/s the
// rest of those takes longer than an answer that is only just in time leaves.
bool IsLateAfterSlowBlock(const Case& theCase, Fault fault, int block) {
    return fault == Fault::Late && theCase.IsUpload() && theCase.Paced && theCase.BaudRate == "9600"
           && block > 0;
}

Outcome OutcomeOfBlock(const Case& theCase, Fault fault, int block) {
    if (IsLateAfterSlowBlock(theCase, fault, block)) {
        return Outcome::Fails;
    }
    if (IsAnyOf(fault, {Fault::Repeat, Fault::Noise, Fault::Pieces, Fault::Late})) {
        return Outcome::Succeeds;
    }
    if (theCase.IsUpload() && fault == Fault::FlipData) {
        const bool isKept = block > 0 || !IsFirstBlockReplaced(theCase.What);
        return isKept ? Outcome::SeemsToSucceed : Outcome::Succeeds;
    }
    if (!theCase.IsUpload() && fault == Fault::FlipData) {
        return Outcome::Succeeds;  // an answer without data has a byte there that nobody examines
    }
    if (!theCase.IsUpload() && fault == Fault::Mask7) {
        return Outcome::SeemsToSucceed;
    }
    return Outcome::Fails;
}

std::ptrdiff_t BytesOf(const Kind& kind) {
    return kind.Blocks * static_cast<std::ptrdiff_t>(BlockSize);
}

// How long silence is borne where the fault strikes.
Microseconds LimitAtFault(const Case& theCase) {
    if (!theCase.Fault.Order->Block) {
        return SetUpLimit;
    }
    if (*theCase.Fault.Order->Block < theCase.What.Blocks - 1) {
        return BlockLimit;
    }
    const bool isFamily1 = theCase.What.Unit.LastBlockLimit == LastBlockLimitFamily1;
    return isFamily1 ? LastBlockLimitFamily1 : LastBlockLimit;
}

std::vector<std::optional<int>> Places(int blocks, const std::set<int>& wanted) {
    std::vector<std::optional<int>> places{std::nullopt};
    for (const int block : wanted) {
        if (block >= 0 && block < blocks) {
            places.emplace_back(block);
        }
    }
    return places;
}

}  // namespace

std::string Case::Name() const {
    return What.Name + " at " + BaudRate + (Paced ? " on a paced line: " : ": ") + Fault.Name;
}

Outcome ExpectedOutcome(const Case& theCase) {
    if (!theCase.What.Refusal.empty()) {
        return Outcome::Fails;
    }
    if (!theCase.Fault.Order) {
        return Outcome::Succeeds;
    }
    const auto& order = *theCase.Fault.Order;
    return order.Block ? OutcomeOfBlock(theCase, order.Kind, *order.Block)
                       : OutcomeOfSetUp(theCase, order.Kind);
}

Microseconds TimeLimit(const Case& theCase) {
    if (theCase.What.Refusal.find("No response") == 0) {
        return UnitPatience + 1s;
    }
    Microseconds limit = UnitShowsUp + SetUpSteps * SetUpLimit + theCase.What.Unit.EraseTime;
    const unsigned slowest = theCase.BaudRate == "9600" ? 9600 : 57600;
    Microseconds perBlock = BlockHandling;
    if (theCase.Paced) {
        perBlock += std::chrono::ceil<Microseconds>(simulator::AirTime(BytesPerBlock, slowest));
    }
    limit += theCase.What.Blocks * perBlock;
    if (theCase.Fault.Order) {
        limit += LimitAtFault(theCase) + RestOfBlockLimit;
    }
    return limit;
}

Bytes ProgrammedMemory(const Kind& kind) {
    Bytes memory(kind.Unit.Flash.size(), std::byte{0xFF});
    const auto sent = memory.begin() + BytesOf(kind);
    std::fill(memory.begin(), sent, std::byte{0});
    std::copy(kind.Image.begin(), kind.Image.end(), memory.begin());
    if (kind.LengthIsSent) {
        for (std::size_t i = 0; i < 4; ++i) {
            memory.at(4 + i) = static_cast<std::byte>(kind.Image.size() >> (24 - 8 * i));
        }
    }
    return memory;
}

Bytes UploadedFile(const Kind& kind) {
    const auto& flash = kind.Unit.Flash;
    Bytes file(flash.begin(), flash.begin() + BytesOf(kind));
    if (IsFirstBlockReplaced(kind)) {
        std::fill_n(file.begin(), BlockSize, std::byte{0xFF});
        constexpr std::string_view serialNumber("SNUM00?\0", 8);
        std::transform(serialNumber.begin(), serialNumber.end(), file.begin() + 8,
                       [](char c) { return static_cast<std::byte>(c); });
    }
    return file;
}

std::vector<std::optional<int>> AllPlaces(int blocks) {
    return Places(blocks, {0, 1, blocks / 2, 254, 255, 256, blocks - 2, blocks - 1});
}

std::vector<std::optional<int>> FewPlaces(int blocks) {
    return Places(blocks, {0, blocks - 1});
}

std::vector<Trouble> Troubles(const std::vector<std::optional<int>>& places) {
    std::vector<Trouble> troubles{{"no fault", std::nullopt}};
    for (const std::string& fault : simulator::FaultNames()) {
        for (const auto& place : places) {
            const std::string name = place ? fault + "@" + std::to_string(*place) : fault;
            troubles.push_back({name, simulator::ParseFaultOrder(name)});
        }
    }
    return troubles;
}

}  // namespace burnwick::test
