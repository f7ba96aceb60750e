#include "reliability/Bench.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;

namespace fs = std::filesystem;

constexpr Microseconds WhileSwitchedOff = 3s;
constexpr std::size_t ReusedEvery = 5;

simulator::UnitOptions OptionsOf(const Case& theCase) {
    auto options = theCase.What.Unit;
    if (theCase.Fault.Order) {
        options.Faults = {*theCase.Fault.Order};
    }
    return options;
}

// Faster than ReadFile, for what is read after each of hundreds of runs.
Bytes Contents(const std::string& path) {
    Bytes bytes(fs::file_size(path));
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

const char* SuccessText(const Case& theCase) {
    return theCase.IsUpload() ? "Uploading was completed successfully."
                              : "Programming was completed successfully.";
}

}  // namespace

Bench::Bench(const Case& theCase, const std::string& path)
    : Case_(theCase),
      Path_(path),
      Expected_(theCase.IsUpload() ? UploadedFile(theCase.What) : ProgrammedMemory(theCase.What)),
      Unit_(OptionsOf(theCase)),
      Line_(Unit_, theCase.Paced),
      Device_(*new SimulatedDevice(Loop_, Line_)),  // owned by Port_
      Port_(Loop_, std::unique_ptr<SerialDevice>(&Device_),
            [](int port) { return "COM" + std::to_string(port); }),
      Flash_(Loop_, Port_) {
    Record(Flash_, Events_);
    Flash_.SetBaudRate(theCase.BaudRate);
    Flash_.SetFileName(path);
    Flash_.SetUploadBlock(static_cast<std::int16_t>(theCase.IsUpload() ? theCase.What.Blocks : 0));
}

void Bench::RunWithFault(Tally& tally) {
    SCOPED_TRACE(Case_.Name());
    Run(Case_, tally);
}

void Bench::RunAgainWithoutFault(Tally& tally) {
    SCOPED_TRACE("a run after " + Case_.Name());
    Unit_ = simulator::Unit(Case_.What.Unit);
    for (const auto end = Loop_.Time() + WhileSwitchedOff; Loop_.Time() < end;) {
        Loop_.Yield(end - Loop_.Time());
    }
    Events_ = {};
    const Case again{Case_.What, Case_.BaudRate, {"no fault", std::nullopt}, Case_.Paced};
    Run(again, tally);
}

void Bench::Run(const Case& theCase, Tally& tally) {
    const Microseconds start = Loop_.Time();
    if (!Execute()) {
        return;
    }
    CheckTime(theCase, Loop_.Time() - start);
    CheckClosing();
    const auto expected = ExpectedOutcome(theCase);
    const bool succeeded = std::find(Events_.Messages.begin(), Events_.Messages.end(), SuccessText(theCase))
                           != Events_.Messages.end();
    EXPECT_EQ(succeeded, expected != Outcome::Fails);
    CheckFileAfterwards(succeeded);
    if (!succeeded) {
        CheckFailure(theCase);
        tally.CountFailure();
        return;
    }
    const bool isRight = IsDataRight();
    EXPECT_EQ(isRight, expected != Outcome::SeemsToSucceed);
    if (isRight) {
        tally.CountSuccess();
    } else {
        tally.CountFalseSuccess(theCase);
    }
}

// False when the run had no end.
bool Bench::Execute() {
    try {
        Flash_.Execute(Case_.What.Method);
        return true;
    } catch (const std::runtime_error& error) {
        ADD_FAILURE() << error.what();
        return false;
    }
}

void Bench::CheckTime(const Case& theCase, Microseconds taken) const {
    EXPECT_LE(taken, TimeLimit(theCase)) << "microseconds";
}

void Bench::CheckClosing() const {
    EXPECT_FALSE(Port_.PortOpen());
    EXPECT_FALSE(Device_.IsOpen());
    ASSERT_FALSE(Device_.Sent().empty());
    EXPECT_EQ(ToHex(Device_.Sent().back().Content), Finish);
}

// A run that fails says so, and why.
void Bench::CheckFailure(const Case& theCase) const {
    const auto& refusal = theCase.What.Refusal;
    EXPECT_THAT(Events_.Messages, Contains(refusal.empty() ? "Transmitting error." : refusal));
}

bool Bench::IsDataRight() const {
    return Case_.IsUpload() ? fs::exists(Path_) && Contents(Path_) == Expected_ : Unit_.Flash() == Expected_;
}

void Bench::CheckFileAfterwards(bool succeeded) const {
    if (Case_.IsUpload()) {
        EXPECT_EQ(fs::exists(Path_), succeeded);
    } else {
        EXPECT_TRUE(Contents(Path_) == Case_.What.Image) << "the image file has changed";
    }
}

void RunCases(const Kind& kind, const std::string& baudRate, bool paced, const std::vector<Trouble>& troubles,
              Tally& tally) {
    const TempFolder folder;
    const std::string path =
        kind.Method == Method::Upload ? folder / "upload.bin" : folder.Write("image.bin", kind.Image);
    for (std::size_t i = 0; i < troubles.size(); ++i) {
        const Case theCase{kind, baudRate, troubles[i], paced};
        Bench bench(theCase, path);
        bench.RunWithFault(tally);
        if (kind.Refusal.empty() && i % ReusedEvery == ReusedEvery - 1) {
            bench.RunAgainWithoutFault(tally);
        }
    }
}

}  // namespace burnwick::test
