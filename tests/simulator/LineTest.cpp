#include "simulator/Line.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/Host.h"

namespace simulator {
namespace {

using namespace std::chrono_literals;

struct Arrival {
    Time At{};
    Bytes What;
};

// How long so many bytes take, without the fraction of a microsecond.
Time LengthOf(long long bytes, long long baud) {
    return Time(bytes * 10 * 1'000'000 / baud);
}

// A unit, its cable, and a host that looks whenever something happens.
class Cable {
public:
    explicit Cable(bool paced, UnitOptions options = UnitOfBlocks(4))
        : Unit_(std::move(options)), Line_(Unit_, paced) {}

    void Write(const Bytes& bytes) { Line_.FromHost(Now_, Baud, bytes); }

    // What arrives until all is quiet.
    std::vector<Arrival> Listen() {
        std::vector<Arrival> arrivals;
        for (auto next = Line_.NextEvent(); next; next = Line_.NextEvent()) {
            Now_ = std::max(Now_, *next);
            auto bytes = Line_.ToHost(Now_, Baud);
            if (!bytes.empty()) {
                arrivals.push_back({Now_, std::move(bytes)});
            }
        }
        return arrivals;
    }

    Bytes Take() {
        Bytes all;
        for (const auto& arrival : Listen()) {
            all = all + arrival.What;
        }
        return all;
    }

    // Sets up at 57600 bit/s.
    void SetUp(const Bytes& mode) {
        Write(Probe);
        EXPECT_EQ(Take(), Ready);
        Write(mode + Speed57600);
        Line_.ToHost(Now_ += 50ms, Baud);
        Baud = 57600;
        EXPECT_EQ(Take(), Ready);
    }

    Time Now() const { return Now_; }
    Line& Wire() { return Line_; }

    unsigned Baud = 9600;

private:
    Unit Unit_;
    Line Line_;
    Time Now_{};
};

TEST(Line, UnpacedCarriesAnAnswerAtOnce) {
    Cable cable(false);
    cable.Write(Probe);
    EXPECT_EQ(cable.Take(), Ready);
    EXPECT_EQ(cable.Now(), 10ms);
}

TEST(Line, UnpacedStillLetsTheUnitTakeItsTime) {
    auto options = UnitOfBlocks(4);
    options.EraseTime = 2s;
    Cable cable(false, options);
    cable.SetUp(ProgramMode);
    const auto asked = cable.Now();
    cable.Write(BlockWithData(0, 1));
    EXPECT_EQ(cable.Take(), Acknowledge);
    EXPECT_EQ(cable.Now() - asked, 2s);
}

TEST(Line, PacedABlockAndItsAnswerTakeTenBitTimesAByte) {
    auto options = UnitOfBlocks(4);
    options.EraseTime = 0ms;
    Cable cable(true, options);
    cable.SetUp(ProgramMode);
    const auto asked = cable.Now();
    cable.Write(BlockWithData(0, 1));
    EXPECT_EQ(cable.Take(), Acknowledge);
    const Time expected = LengthOf(266, 57600);
    EXPECT_GE(cable.Now() - asked, expected);
    EXPECT_LE(cable.Now() - asked, expected + 2us);
}

TEST(Line, PacedAProbeIsAnsweredWhenItHasArrivedWhole) {
    Cable cable(true);
    cable.Write(Probe);
    EXPECT_EQ(cable.Take(), Ready);
    const Time expected = 10ms + LengthOf(8, 9600);
    EXPECT_GE(cable.Now(), expected);
    EXPECT_LE(cable.Now(), expected + 2us);
}

TEST(Line, PacedBytesComeInSlicesAndTheLastWhenTheLastByteIsOver) {
    Cable cable(true);
    cable.SetUp(UploadMode);
    const auto asked = cable.Now();
    cable.Write(BlockRequest(0));
    const auto arrivals = cable.Listen();
    ASSERT_EQ(arrivals.size(), 19U);  // 18 slices of 14, and 8 bytes
    for (std::size_t i = 0; i < 18; ++i) {
        EXPECT_EQ(arrivals[i].What.size(), 14U);
        const Time ideal = LengthOf(6 + 14 * (static_cast<long long>(i) + 1), 57600);
        EXPECT_LE(arrivals[i].At - asked - ideal, 2us);
    }
    EXPECT_EQ(arrivals.back().What.size(), 8U);
    EXPECT_LE(arrivals.back().At - asked, LengthOf(266, 57600) + 2us);
}

TEST(Line, PacedBeingAskedLateDelaysNothingThatFollows) {
    Cable cable(true);
    cable.SetUp(UploadMode);
    const auto asked = cable.Now();
    cable.Write(BlockRequest(0));
    // All of it is over by now, although nobody has looked in between.
    EXPECT_EQ(cable.Wire().ToHost(asked + 46183us, cable.Baud).size(), 260U);
}

TEST(Line, PacedBothDirectionsCarryAtTheSameTime) {
    auto options = UnitOfBlocks(4);
    options.Announce = true;
    Cable cable(true, options);
    for (int i = 0; i < 10; ++i) {
        cable.Write(FlashRequest);
    }
    // Ten requests of 22 bytes, back to back; the answers come meanwhile, the last 10 ms and six bytes after
    // the end.
    const auto arrivals = cable.Listen();
    const Time end = 10ms + LengthOf(220 + 6, 9600);
    ASSERT_EQ(arrivals.size(), 11U);
    EXPECT_LE(arrivals[9].At, end + 2us);
    EXPECT_EQ(arrivals[10].What, Ready);
}

TEST(Line, PacedGarblesOnlyTheBytesThatCrossAtTheWrongSpeed) {
    Cable cable(true);
    cable.SetUp(UploadMode);
    cable.Write(BlockRequest(0));
    const auto asked = cable.Now();
    // Over by then: the request's six bytes and ten of the answer's. None has been handed over yet.
    const auto soon = asked + Time(165 * 1'000'000LL / 57600);
    EXPECT_EQ(cable.Wire().ToHost(soon, 57600), Nothing);
    const auto answer = cable.Wire().ToHost(asked + 1s, 9600);
    ASSERT_EQ(answer.size(), 260U);
    EXPECT_EQ(Bytes(answer.begin(), answer.begin() + 4), Acknowledge);
    EXPECT_EQ(answer[9], std::byte{0});
    EXPECT_TRUE(std::all_of(answer.begin() + 10, answer.end(),
                            [](std::byte value) { return value == Garbled(std::byte{0}); }));
}

TEST(Line, GarblesWhatTheHostSendsAtTheWrongSpeed) {
    for (const bool paced : {false, true}) {
        Cable cable(paced);
        cable.Baud = 57600;
        cable.Write(Probe);
        EXPECT_EQ(cable.Take(), Nothing);
        cable.Baud = 9600;
        cable.Write(Probe);
        EXPECT_EQ(cable.Take(), Ready);
    }
}

TEST(Line, UnpacedGarblesTheAnswerToAHostThatHasChangedItsSpeed) {
    Cable cable(false);
    cable.Write(Probe);
    cable.Baud = 115200;
    const auto answer = cable.Take();
    EXPECT_EQ(answer.size(), Ready.size());
    EXPECT_NE(answer, Ready);
}

}  // namespace
}  // namespace simulator
