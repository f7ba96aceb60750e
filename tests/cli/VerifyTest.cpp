#include <algorithm>
#include <filesystem>

#include "cli/CliTest.h"
#include "job/Verification.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;
using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

namespace fs = std::filesystem;

constexpr auto PowerCycle = "Please power off, then power on the unit. Waiting...";
constexpr auto Verified = "Verifying was successfully.";

}  // namespace

class Verification : public CliTest {
protected:
    // A unit that has its faults while it is read, and holds the image when `programmed`.
    void ConnectUnit(std::vector<simulator::FaultOrder> faults, bool programmed) {
        auto options = UnitOfSize(ImageSize);
        options.Flash = programmed ? SampleImage(ImageSize) : options.Flash;
        options.Faults = std::move(faults);
        Connect(std::move(options));
    }
    std::string Image() { return Folder.Write("image.bin", SampleImage(ImageSize)); }
    int Download(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"download", Image(), "--port", "COM2", "--verify"});
        return Run(more);
    }
    int Verify(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"verify", Image(), "--port", "COM2"});
        return Run(more);
    }
    // Reading is over, and nothing of it is left.
    void ExpectNoVerificationFile() {
        for (const auto& entry : fs::directory_iterator(Folder.Path() / "home")) {
            EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
        }
    }
    static std::ptrdiff_t PositionOf(const std::vector<std::string>& lines, const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) - lines.begin();
    }
};

TEST_F(Verification, OfAProgrammingReadsItBackAndComparesIt) {
    ConnectUnit({}, false);
    EXPECT_EQ(Download(), 0) << Err();
    EXPECT_EQ(OutLines().back(), Verified);
    EXPECT_EQ(Unit->Journal().BlocksSent, 1024);
    ExpectNoVerificationFile();
}

TEST_F(Verification, OfAProgrammingSaysItsLinesInOrder) {
    ConnectUnit({}, false);
    Download();
    const auto lines = OutLines();
    const auto programmed = PositionOf(lines, "Programming was completed successfully.");
    const auto cycle = PositionOf(lines, PowerCycle);
    const auto verifying = PositionOf(lines, "Verifying...Please wait.");
    const auto ready = PositionOf(lines, "Getting ready to upload data...");
    EXPECT_LT(programmed, cycle);
    EXPECT_EQ(lines.at(static_cast<std::size_t>(cycle) - 1), " ");
    EXPECT_LT(cycle, verifying);
    EXPECT_EQ(verifying + 1, ready);
    EXPECT_LT(ready, PositionOf(lines, Verified));
}

TEST_F(Verification, IsNotMadeUnasked) {
    ConnectUnit({}, false);
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2"}), 0);
    EXPECT_THAT(OutLines(), Not(Contains(PowerCycle)));
}

TEST_F(Verification, IsNotMadeAfterAProgrammingThatFailed) {
    ConnectUnit({{Fault::Negative7, 5}}, false);
    EXPECT_EQ(Download(), 2);
    EXPECT_THAT(OutLines(), Not(Contains(PowerCycle)));
}

TEST_F(Verification, IsNotMadeAfterAProgrammingThatWasCanceled) {
    ConnectUnit({{Fault::NoAnswer, 100}}, false);
    InterruptAt(5s);
    EXPECT_EQ(Download(), 4);
    EXPECT_THAT(OutLines(), Not(Contains(PowerCycle)));
}

TEST_F(Verification, ThatFindsADifferenceEndsWith7) {
    // A refusal that arrives as an acknowledgement: the link must believe it, and only reading back tells.
    ConnectUnit({{Fault::Mask7, 5}}, false);
    EXPECT_EQ(Download(), 7);
    EXPECT_THAT(OutLines(), Contains("Programming was completed successfully."));
    EXPECT_THAT(OutLines().back(), HasSubstr("Verifying error: "));
    EXPECT_THAT(OutLines().back(), EndsWith(" bytes are different."));
    EXPECT_THAT(ErrLines().back(), HasSubstr("Program the unit again before it is used."));
    ExpectNoVerificationFile();
}

TEST_F(Verification, CountsTheDifferences) {
    ConnectUnit({}, true);
    const std::string image = Folder.Write("image.bin", [] {
        Bytes bytes = SampleImage(ImageSize);
        for (const std::size_t at : std::initializer_list<std::size_t>{1'000, 2'000, 200'000}) {
            bytes[at] ^= std::byte{1};
        }
        return bytes;
    }());
    EXPECT_EQ(Run({"verify", image, "--port", "COM2", "--json"}), 7);
    EXPECT_EQ(Json()["result"], "verify-mismatch");
    EXPECT_EQ(Json()["exitCode"], 7);
    EXPECT_EQ(Json()["differences"], 3);
    EXPECT_THAT(Json()["messages"], Contains("Verifying error: 3 bytes are different."));
}

TEST_F(Verification, OfAnImageThatTheUnitHoldsEndsWith0) {
    ConnectUnit({}, true);
    EXPECT_EQ(Verify(), 0) << Err();
    EXPECT_EQ(OutLines().at(1), PowerCycle);
    EXPECT_EQ(OutLines().back(), Verified);
    EXPECT_EQ(Unit->Journal().BlocksStored, 0);
    ExpectNoVerificationFile();
}

TEST_F(Verification, OfAnotherImageEndsWith7AndSaysWhatIsWrong) {
    auto options = UnitOfSize(ImageSize);
    options.Flash = SampleImage(ImageSize);
    Put(options.Flash, 0, {0xBC, 0x0D, 0xE1, 0x22});
    Connect(options);
    EXPECT_EQ(Verify({"--json"}), 7);
    EXPECT_THAT(Json()["messages"], Contains("Verifying error: File type mismatched."));
    EXPECT_TRUE(Json()["differences"].is_null());
}

TEST_F(Verification, TellsNoDifferencesInJsonWhenNoneWasLookedFor) {
    ConnectUnit({}, false);
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2", "--json"}), 0);
    EXPECT_FALSE(Json().contains("differences"));
}

TEST_F(Verification, ThatSucceedsTellsZeroDifferencesInJson) {
    ConnectUnit({}, false);
    EXPECT_EQ(Download({"--json"}), 0);
    EXPECT_EQ(Json()["result"], "ok");
    EXPECT_EQ(Json()["differences"], 0);
    EXPECT_EQ(Json()["blocks"], 1024);
}

TEST_F(Verification, ThatGetsNoAnswerIsNoSuccess) {
    auto options = UnitOfSize(ImageSize);
    options.Announce = true;  // answers no probe
    Connect(options);
    EXPECT_EQ(Verify(), 1);
    EXPECT_THAT(OutLines(), Not(Contains(Verified)));
    ExpectNoVerificationFile();
}

TEST_F(Verification, ThatFailsInMidReadingIsNoSuccess) {
    ConnectUnit({{Fault::CutShort, 100}}, true);
    EXPECT_EQ(Verify({"--json"}), 2);
    EXPECT_EQ(Json()["result"], "transmitting-error");
    EXPECT_THAT(Json()["messages"], Not(Contains(Verified)));
    EXPECT_FALSE(Json().contains("differences"));
    ExpectNoVerificationFile();
}

TEST_F(Verification, ThatIsCanceledSaysSoAndEndsWith4) {
    ConnectUnit({{Fault::NoAnswer, 100}}, true);
    InterruptAt(5s);
    EXPECT_EQ(Verify(), 4);
    EXPECT_EQ(OutLines().back(), "Verifying was canceled.");
    ExpectNoVerificationFile();
}

TEST_F(Verification, OfAProgrammingThatIsCanceledSaysThatItIsNotVerified) {
    ConnectUnit({}, false);
    ASSERT_EQ(Download(), 0);
    const auto whole = Loop.Time();
    ConnectUnit({}, false);
    // Every run takes the same time, and reading back is the last part of it.
    InterruptAt(Loop.Time() + whole - 50ms);
    EXPECT_EQ(Download(), 4);
    EXPECT_EQ(OutLines().back(), "Verifying was canceled.");
    EXPECT_THAT(ErrLines().back(),
                EndsWith("canceled. The programming was completed, but it is not verified."));
    EXPECT_THAT(ErrLines().back(), Not(HasSubstr("incomplete")));
}

TEST_F(Verification, RefusesWhatIsNoImage) {
    ConnectUnit({}, true);
    const std::string foreign = Folder.Write("foreign.bin", AnyBytes(ImageSize));
    EXPECT_EQ(Run({"verify", foreign, "--port", "COM2"}), 6);
    EXPECT_THAT(ErrLines(), SizeIs(1));
    EXPECT_THAT(Err(), HasSubstr("Invalid file format."));
    EXPECT_EQ(Run({"verify", Folder / "missing.bin", "--port", "COM2"}), 6);
    EXPECT_EQ(Run({"verify", Folder.Path().string(), "--port", "COM2"}), 6);
    EXPECT_EQ(Unit->Journal().Probes, 0);
}

TEST_F(Verification, RefusesAnImageTooShortOrTooLongToBeReadBack) {
    ConnectUnit({}, true);
    for (const std::size_t size : {std::size_t{100}, std::size_t{32'768} * 256}) {
        EXPECT_EQ(Run({"verify", Folder.Write("odd.bin", SampleImage(size)), "--port", "COM2"}), 6);
        EXPECT_THAT(ErrLines(), SizeIs(1));
        EXPECT_THAT(Err(), HasSubstr("cannot be verified: Invalid file size."));
    }
    EXPECT_EQ(Unit->Journal().Probes, 0);
}

TEST_F(Verification, ReadsBackANumberOfBlocksThatIsRounded) {
    ConnectUnit({}, true);
    EXPECT_EQ(Run({"verify", Folder.Write("odd.bin", SampleImage(1'000)), "--port", "COM2", "--json"}), 7);
    EXPECT_EQ(Json()["totalBlocks"], 4);
    EXPECT_THAT(Json()["messages"], Contains("Verifying error: File size mismatched."));
    EXPECT_EQ(Run({"verify", Folder.Write("odd.bin", SampleImage(640)), "--port", "COM2", "--json"}), 7);
    EXPECT_EQ(Json()["totalBlocks"], 2);
}

TEST_F(Verification, OfAnImageThatTellsItsOwnLengthSucceeds) {
    simulator::UnitOptions options = UnitOfSize(524'288);
    options.Ident = 'I';
    Connect(options);
    const std::string image = Folder.Write("image.bin", SampleType4Image());
    EXPECT_EQ(Run({"download", image, "--port", "COM2", "--baud", "115200", "--verify"}), 0)
        << Err() << Out();
}

TEST_F(Verification, EndsWith6WhereNoFileCanBeMade) {
    ConnectUnit({}, true);
    fs::remove_all(Folder.Path() / "home");
    EXPECT_EQ(Verify(), 6);
    EXPECT_THAT(Err(), HasSubstr("no verification file can be made in " + Folder / "home"));
}

TEST_F(Verification, TakesAnotherNameWhileAnotherCopyVerifies) {
    ConnectUnit({}, true);
    const auto other = VerificationFile::Claim(Folder.Path() / "home", {});
    Folder.Write("home/Verify.tmp", AnyBytes(10));
    EXPECT_EQ(Verify(), 0);
    EXPECT_THAT(Out(), HasSubstr("Verify2.tmp"));
    EXPECT_EQ(ReadFile(Folder / "home/Verify.tmp"), AnyBytes(10));
}

TEST_F(Verification, ReplacesAFileThatWasLeftBehind) {
    ConnectUnit({}, true);
    Folder.Write("home/Verify.tmp", AnyBytes(10));
    EXPECT_EQ(Verify(), 0);
    ExpectNoVerificationFile();
}

TEST_F(Verification, NeverTakesTheImageForTheVerificationFile) {
    Connect(UnitOfSize(ImageSize));
    const std::string image = Folder.Write("home/Verify.tmp", SampleImage(ImageSize));
    EXPECT_EQ(Run({"verify", image, "--port", "COM2"}), 7);
    EXPECT_THAT(Out(), HasSubstr("Verify2.tmp"));
    EXPECT_EQ(ReadFile(image), SampleImage(ImageSize));
}

TEST_F(Verification, IsThatOfTheImageThatWasSentThoughTheFileHasChanged) {
    ConnectUnit({}, false);
    const std::string image = Image();
    Loop.At(Loop.Time() + 300ms, [this] { Folder.Write("image.bin", AnyBytes(ImageSize)); });
    EXPECT_EQ(Run({"download", image, "--port", "COM2", "--verify"}), 0);
}

TEST_F(Verification, TellsThatTheImageHasChangedWhereTheUnitDiffers) {
    ConnectUnit({}, false);
    const std::string image = Image();
    Loop.At(Loop.Time() + 300ms, [this] { Folder.Write("image.bin", AnyBytes(ImageSize)); });
    EXPECT_EQ(Run({"verify", image, "--port", "COM2"}), 7);
    EXPECT_THAT(ErrLines().back(), EndsWith("image.bin has changed since the run began."));
}

TEST_F(Verification, DoesNotBlameTheUnitForALengthThatCannotBeReadBack) {
    ConnectUnit({}, true);
    EXPECT_EQ(Run({"verify", Folder.Write("odd.bin", SampleImage(1'000)), "--port", "COM2"}), 7);
    EXPECT_THAT(ErrLines().back(), HasSubstr("the unit may be right."));
    EXPECT_THAT(ErrLines().back(), Not(HasSubstr("Program the unit again")));
}

TEST_F(Verification, DoesNotBlameTheUnitForBootCodeThatIsReadBackWithoutItsFirstBlock) {
    Connect(UnitOfSize(65'536));
    const std::string image = Folder.Write("boot.bin", ImageWith(65'536, 0, {0xBC, 0x0D, 0xE1, 0x31}));
    EXPECT_EQ(Run({"download", image, "--port", "COM2", "--verify"}), 7);
    EXPECT_THAT(Out(), HasSubstr("Verifying error: File type mismatched."));
    EXPECT_THAT(ErrLines().back(), HasSubstr("the unit may be right."));
    EXPECT_THAT(ErrLines().back(), Not(HasSubstr("Program the unit again")));
}

TEST_F(Verification, ThatCannotBeMadeIsToldBeforeTheUnitIsTouched) {
    ConnectUnit({}, false);
    fs::remove_all(Folder.Path() / "home");
    EXPECT_EQ(Download(), 6);
    EXPECT_EQ(Unit->Journal().Probes, 0);
}

TEST_F(Verification, ShowsTheProgressOfBothTransfers) {
    ConnectUnit({}, false);
    Download();
    const auto lines = ErrLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "100 %"), 2);
}

TEST_F(Verification, PrintsNothingWhenQuiet) {
    ConnectUnit({}, false);
    EXPECT_EQ(Download({"--quiet"}), 0);
    EXPECT_EQ(Out() + Err(), "");
}

}  // namespace burnwick::test
