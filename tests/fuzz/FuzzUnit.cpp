#include <array>

#include "engine/FlashMessages.h"
#include "fuzz/Input.h"
#include "simulator/Line.h"
#include "simulator/Unit.h"

// The simulated unit, with any bytes at any time and any speed.

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

constexpr std::array<unsigned, 5> Speeds{9600, 57600, 115200, 1200, 0};

void TakeFaults(Input& input, simulator::UnitOptions& options) {
    constexpr unsigned mostFaults = 3;
    constexpr unsigned setUp = 15;
    const auto names = simulator::FaultNames();
    const auto count = input.TakeByte() % (mostFaults + 1);
    for (unsigned i = 0; i < count; ++i) {
        const std::string& name = names.at(input.TakeByte() % names.size());
        const unsigned place = input.TakeByte() % (setUp + 1);
        const auto order =
            simulator::ParseFaultOrder(place == setUp ? name : name + "@" + std::to_string(place));
        Require(order.has_value(), "a fault's name orders it");
        options.Faults.push_back(*order);
    }
}

simulator::UnitOptions TakeOptions(Input& input) {
    constexpr unsigned mostBlocks = 8;
    simulator::UnitOptions options;
    options.Flash.resize(input.TakeByte() % (mostBlocks + 1) * simulator::BlockSize, std::byte{0x5A});
    const unsigned choices = input.TakeByte();
    options.Announce = (choices & 1) != 0;
    options.MaxBaud = (choices & 2) != 0 ? 57600 : 115200;
    if ((choices & 4) != 0) {
        options.LastBlock = input.TakeByte() % mostBlocks;
        options.LastBlockLimit = 3s;
    }
    if ((choices & 8) != 0) {
        options.Ident = static_cast<char>(input.TakeByte());
    }
    TakeFaults(input, options);
    return options;
}

// A message of the host's, as a host would send it, or anything at all.
Bytes TakeMessage(Input& input) {
    constexpr std::array kinds{MessageKind::Probe,      MessageKind::VDR_FLASH_REQUEST,
                               MessageKind::UploadMode, MessageKind::ProgramMode,
                               MessageKind::Speed57600, MessageKind::Speed115200,
                               MessageKind::Identify,   MessageKind::Finish};
    const unsigned choice = input.TakeByte() % 16;
    if (choice < kinds.size()) {
        return CommandMessage(kinds.at(choice));
    }
    if (choice < 11) {
        BlockData data{};
        const auto number = input.TakeByte();
        data.fill(std::byte{input.TakeByte()});
        return BlockDataMessage(number, data);
    }
    if (choice < 13) {
        return BlockRequestMessage(input.TakeByte());
    }
    return input.TakeBytes(input.TakeByte());
}

// The unit at its line, and a host that does what the input says.
class HostAndUnit {
public:
    HostAndUnit(simulator::UnitOptions options, bool paced)
        : FlashSize_(options.Flash.size()), Unit_(std::move(options)), Line_(Unit_, paced) {}

    void Write(const Bytes& bytes) {
        Line_.FromHost(Now_, Baud_, bytes);
        Take();
    }

    void SetBaud(unsigned baud) {
        Take();
        Baud_ = baud;
    }

    void Wait(simulator::Time time) {
        const auto end = Now_ + time;
        for (auto next = Line_.NextEvent(); next && *next <= end; next = Line_.NextEvent()) {
            Now_ = std::max(Now_, *next);
            Take();
        }
        Now_ = end;
        Take();
    }

    // Lets time pass unseen: the unit and the line must catch up.
    void Sleep(simulator::Time time) { Now_ += time; }

    void WaitUntilQuiet() {
        int events = 0;
        for (auto next = Line_.NextEvent(); next; next = Line_.NextEvent()) {
            constexpr int mostEvents = 1'000'000;
            Require(++events < mostEvents, "a unit that nobody asks falls quiet");
            Now_ = std::max(Now_, *next);
            Take();
        }
    }

private:
    void Take() {
        Line_.ToHost(Now_, Baud_);
        const auto next = Line_.NextEvent();
        Require(!next || *next > Now_, "all that was due has happened");
        const auto& journal = Unit_.Journal();
        const auto blocks = static_cast<int>(FlashSize_ / simulator::BlockSize);
        Require(Unit_.Flash().size() == FlashSize_, "the memory keeps its size");
        Require(journal.BlocksStored <= blocks && journal.BlocksSent <= blocks, "no block beyond the memory");
        Require(Unit_.Baud() == 9600 || Unit_.Baud() == 57600 || Unit_.Baud() == 115200,
                "the speed is known");
    }

    std::size_t FlashSize_;
    simulator::Unit Unit_;
    simulator::Line Line_;
    simulator::Time Now_{};
    unsigned Baud_ = Speeds.front();
};

void Act(HostAndUnit& both, Input& input) {
    const unsigned tag = input.TakeByte();
    switch (tag % 8) {
        case 0:
            both.SetBaud(Speeds.at(input.TakeByte() % Speeds.size()));
            break;
        case 1:
            both.Wait(std::chrono::milliseconds(input.TakeNumber(2)));
            break;
        case 2:
            both.Sleep(std::chrono::microseconds(input.TakeNumber(3)));
            break;
        case 3:
            both.Wait(200ms);
            break;
        default:
            both.Write(TakeMessage(input));
            break;
    }
}

}  // namespace

}  // namespace burnwick::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace burnwick::test;
    Input input(data, size);
    auto options = TakeOptions(input);
    const bool paced = input.TakeByte() % 2 != 0;
    HostAndUnit both(std::move(options), paced);
    while (!input.IsEmpty()) {
        Act(both, input);
    }
    both.WaitUntilQuiet();
    return 0;
}
