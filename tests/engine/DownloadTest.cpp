#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::SizeIs;

Bytes DataOf(const Bytes& block) {
    return {block.begin() + 5, block.end() - 1};
}

// A unit that wants the flash request, and takes so many blocks.
void AnnouncedUnitTakes(Dialogue& unit, VirtualLoop& loop, int blocks) {
    loop.At(100ms, [&unit] { unit.SaysUnasked(0us, Ready); });
    unit.Hears(FlashRequest);
    unit.Hears(ProgramMode);
    unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    unit.AcknowledgesBlocks(0, blocks);
}

}  // namespace

using Download = LinkTest;

TEST_F(Download, Of64KiBSends256BlocksNumbered0To255) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    const Bytes image = AnyBytes(65'536);
    RunDownload(image);
    const auto blocks = SentBlocks();
    ASSERT_THAT(blocks, SizeIs(256));
    Bytes sent;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ASSERT_THAT(blocks[i], SizeIs(262));
        EXPECT_EQ(blocks[i][3], static_cast<std::byte>(i));
        EXPECT_EQ(blocks[i][4], std::byte{0});
        const Bytes data = DataOf(blocks[i]);
        sent.insert(sent.end(), data.begin(), data.end());
    }
    EXPECT_EQ(sent, image);
}

TEST_F(Download, TellsTheWholeRunInThisOrder) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    RunDownload(AnyBytes(65'536));
    EXPECT_THAT(
        Events.Messages,
        ElementsAre("Opening " + Flash.FileName() + "...", " ", "Selected baud rate: 57600bps.",
                    "Waiting for response from the unit on COM1...", "Contact established at 57600bps.", " ",
                    "Start time: Friday, 11/20/2026, 11:59:30 PM.", "Getting ready to start programming...",
                    "Erasing the chip...", "Sending data to the unit...", " ",
                    "Programming was completed successfully.", " ",
                    "Finish time: Friday, 11/20/2026, 11:59:31 PM.", "Elapsed time: 00:01.", " ",
                    "Now rebooting the unit..."));
}

TEST_F(Download, FormatsMidnightAs12AM) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says(9s, Acknowledge);
    Unit.Hears("FF AA 03 01 00").Says(9s, Acknowledge);
    Unit.Hears("FF AA 03 02 00").Says(9s, Acknowledge);
    Unit.Hears("FF AA 03 03 00").Says(9s, Acknowledge);
    Unit.AcknowledgesBlocks(4, 252);
    RunDownload(AnyBytes(65'536));
    EXPECT_THAT(Events.Messages, Contains("Finish time: Saturday, 11/21/2026, 12:00:07 AM."));
}

TEST_F(Download, RaisesNoProgressForTheFirstBlock) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    RunDownload(AnyBytes(65'536));
    std::vector<std::pair<int, int>> expected{{0, 256}};
    for (int block = 2; block <= 256; ++block) {
        expected.emplace_back(block, 256);
    }
    EXPECT_EQ(Events.Progress, expected);
}

TEST_F(Download, SaysThatItSendsAfterTwoBlocksHaveGone) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    RunDownload(AnyBytes(65'536));
    const auto said = std::find(Events.All.begin(), Events.All.end(), "Sending data to the unit...");
    ASSERT_NE(said, Events.All.end());
    EXPECT_EQ(*(said - 1), "Progress(2, 256)");
    EXPECT_EQ(*(said + 1), "Progress(3, 256)");
}

TEST_F(Download, CarriesTheBlockNumberAbove255) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 1024);
    RunDownload(AnyBytes(262'144));
    const auto blocks = SentBlocks();
    ASSERT_THAT(blocks, SizeIs(1024));
    EXPECT_EQ(ToHex({blocks[256].begin(), blocks[256].begin() + 5}), "FF AA 03 00 01");
    EXPECT_EQ(ToHex({blocks[1023].begin(), blocks[1023].begin() + 5}), "FF AA 03 FF 03");
}

TEST_F(Download, OfAnyOtherLengthIsRefused) {
    OpensTheLink = false;
    for (const std::size_t size : std::initializer_list<std::size_t>{0, 1, 255, 256, 65'535, 65'537, 131'072,
                                                                     262'143, 524'289, 1'048'577}) {
        Events = {};
        RunDownload(AnyBytes(size));
        EXPECT_THAT(Events.Messages, ElementsAre("Error: Invalid file size.")) << size;
    }
}

TEST_F(Download, OfType4MayHaveAnyLengthAndPadsItsLastBlock) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    Unit.Hears(Identify).Says("00 00 49 00 FF AA 05 00");
    Unit.AcknowledgesBlocks(0, 1172);
    Bytes image = AnyBytes(300'000);
    Put(image, 0, {0xC0, 0xDE, 0x01, 0x49});
    RunDownload(image);
    const auto blocks = SentBlocks();
    ASSERT_THAT(blocks, SizeIs(1172));
    Bytes last(image.begin() + 299'776, image.end());
    ASSERT_THAT(last, SizeIs(224));
    last.resize(256);
    EXPECT_EQ(DataOf(blocks.back()), last);
    unsigned sum = 0x03 + 0x93 + 0x04;
    for (const std::byte value : last) {
        sum += std::to_integer<unsigned>(value);
    }
    EXPECT_EQ(blocks.back().back(), static_cast<std::byte>(sum));
}

TEST_F(Download, OfTypes4And343SendsTheLengthInTheFirstBlock) {
    const std::size_t length = 0x0001234F;
    AnnouncedUnitTakes(Unit, Loop, 292);
    Bytes image = AnyBytes(length);
    Put(image, 0, {0xBC, 0x0D, 0xE1, 0x57});
    RunDownload(image);
    Put(image, 4, {0x00, 0x01, 0x23, 0x4F});
    EXPECT_EQ(DataOf(SentBlocks().front()), Bytes(image.begin(), image.begin() + 256));
    EXPECT_EQ(DataOf(SentBlocks()[1]), Bytes(image.begin() + 256, image.begin() + 512));
}

TEST_F(Download, SendsTheLengthButLeavesTheFileAsItWas) {
    AnnouncedUnitTakes(Unit, Loop, 258);
    const Bytes image = ImageWith(66'000, 0, {0xC0, 0xDE, 0x01, 0x57});
    RunDownload(image);
    EXPECT_EQ(ReadFile(Flash.FileName()), image);
}

TEST_F(Download, OfOtherTypesLeavesTheFirstBlockAsItIs) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 1024);
    const Bytes image = ImageWith(262'144, 0x3000, {0xC0, 0xDE, 0x00, 0x01});
    RunDownload(image);
    EXPECT_EQ(DataOf(SentBlocks().front()), Bytes(image.begin(), image.begin() + 256));
}

TEST_F(Download, OfFamily2AsksForPatienceAfterItsLastBlock) {
    AnnouncedUnitTakes(Unit, Loop, 258);
    RunDownload(ImageWith(66'000, 0, {0xC0, 0xDE, 0x01, 0x57}));
    const auto said = std::find(Events.All.begin(), Events.All.end(), "Please wait for a few seconds...");
    ASSERT_NE(said, Events.All.end());
    EXPECT_EQ(*(said - 1), "Progress(258, 258)");
}

TEST_F(Download, OfFamily1AsksForNoPatience) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    RunDownload(AnyBytes(65'536));
    EXPECT_THAT(Events.Messages, Not(Contains("Please wait for a few seconds...")));
}

TEST_F(Download, OfMoreThan32767BlocksIsRefused) {
    OpensTheLink = false;
    Bytes image(32'767 * 256 + 1);
    Put(image, 0, {0xC0, 0xDE, 0x01, 0x49});
    RunDownload(image);
    EXPECT_THAT(Events.Messages, ElementsAre("Error: Invalid file size."));
}

TEST_F(Download, OfAMissingFileSaysSo) {
    OpensTheLink = false;
    Flash.SetFileName(Folder / "missing.bin");
    Flash.Execute(Method::Download);
    EXPECT_THAT(Events.Messages, ElementsAre("Error: Cannot access to " + Folder / "missing.bin"
                                             + " (No such file or directory)."));
}

TEST_F(Download, OfAFolderSaysSo) {
    OpensTheLink = false;
    Flash.SetFileName(Folder.Path().string());
    Flash.Execute(Method::Download);
    EXPECT_THAT(Events.Messages,
                ElementsAre("Error: Cannot access to " + Folder.Path().string() + " (Is a directory)."));
}

TEST_F(Download, FailsOnANegativeAnswerToABlock) {
    for (const char* negative : {"FF AA 07 00", "FF AA 08 00"}) {
        AgreesOn(ProgramMode, Speed57600);
        Unit.AcknowledgesBlocks(0, 5);
        Unit.Hears("FF AA 03 05 00").Says(negative);
        RunDownload(AnyBytes(65'536));
        EXPECT_EQ(Events.Messages.back(), "Transmitting error.") << negative;
        EXPECT_THAT(Events.Messages, Not(Contains("Programming was completed successfully.")));
    }
}

TEST_F(Download, ThatFailedLeavesTheImageAsItWas) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says("FF AA 07 00");
    const Bytes image = AnyBytes(65'536);
    RunDownload(image);
    EXPECT_EQ(ReadFile(Flash.FileName()), image);
}

TEST_F(Download, IsNoSuccessBeforeTheLastBlocksAnswer) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 255);
    Unit.Hears("FF AA 03 FF 00").Says("FF AA 07 00");
    RunDownload(AnyBytes(65'536));
    EXPECT_EQ(Events.Messages.back(), "Transmitting error.");
}

TEST_F(Download, WrapsTheElapsedTimeAfter59Minutes59) {
    AgreesOn(ProgramMode, Speed57600);
    // 64 minutes: 400 blocks of 9.6 seconds each, and the rest at once.
    for (int number = 0; number < 400; ++number) {
        Unit.Hears("FF AA 03").Says(9600ms, Acknowledge);
    }
    for (int number = 400; number < 1024; ++number) {
        Unit.Hears("FF AA 03").Says(Acknowledge);
    }
    RunDownload(AnyBytes(262'144));
    const auto last = std::find(Events.Timings.begin(), Events.Timings.end(), "Elapsed time: 59:59");
    ASSERT_NE(last, Events.Timings.end());
    EXPECT_EQ(*(last + 1), "Elapsed time: 00:00");
    EXPECT_THAT(Events.Messages, Contains("Elapsed time: 04:03."));
}

TEST_F(Download, TakesTheImageBeforeTheUnitHearsAWord) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    const Bytes image = AnyBytes(65'536);
    Loop.At(1s, [this] { Folder.Write("image.bin", Bytes(100)); });
    RunDownload(image);
    EXPECT_EQ(DataOf(SentBlocks().back()), Bytes(image.end() - 256, image.end()));
}

}  // namespace burnwick::test
