#include <filesystem>

#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::SizeIs;

namespace fs = std::filesystem;

// The answer to a block request, from its data.
Bytes BlockAnswer(const Bytes& data) {
    Bytes answer = FromHex("FF AA 06 00");
    answer.insert(answer.end(), data.begin(), data.end());
    return answer;
}

Bytes Head(const Bytes& bytes, std::size_t count) {
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

Bytes Tail(const Bytes& bytes, std::size_t from) {
    return {bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end()};
}

}  // namespace

using Upload = LinkTest;

TEST_F(Upload, AsksForEachBlockAndWritesThemInOrder) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 300);
    RunUpload(300);
    EXPECT_EQ(ToHex(SentBlocks()[0]), "FF AA 03 00 00 03");
    EXPECT_EQ(ToHex(SentBlocks()[299]), "FF AA 03 2B 01 2F");
    const Bytes file = ReadFile(UploadPath());
    ASSERT_THAT(file, SizeIs(300 * 256));
    for (std::size_t i = 0; i < file.size(); ++i) {
        ASSERT_EQ(file[i], static_cast<std::byte>(i / 256)) << i;
    }
}

TEST_F(Upload, TellsTheWholeRunInThisOrder) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 3);
    RunUpload(3);
    EXPECT_THAT(
        Events.All,
        ElementsAre("Opening " + UploadPath() + "...", " ", "Selected baud rate: 57600bps.",
                    "Waiting for response from the unit on COM1...", "Timeout: 60 seconds",
                    "Elapsed time: 00:00", "Contact established at 57600bps.", " ",
                    "Start time: Friday, 11/20/2026, 11:59:30 PM.", "Progress(0, 3)",
                    "Getting ready to upload data...", "Progress(2, 3)", "Reading data from the unit...",
                    "Progress(3, 3)", " ", "Uploading was completed successfully.", " ",
                    "Finish time: Friday, 11/20/2026, 11:59:30 PM.", "Elapsed time: 00:00.", " ",
                    "Now rebooting the unit..."));
}

TEST_F(Upload, OfNoBlocksOpensNoFileAndSucceedsAfterTheHandshake) {
    AgreesOn(UploadMode, Speed57600);
    RunUpload(0);
    EXPECT_FALSE(fs::exists(UploadPath()));
    EXPECT_THAT(Events.Messages, Contains("Uploading was completed successfully."));
    EXPECT_THAT(Events.Progress, ElementsAre(std::pair(0, 0)));
}

TEST_F(Upload, PutsABlockTogetherThatComesInPieces) {
    AgreesOn(UploadMode, Speed57600);
    const Bytes data = AnyBytes(256);
    const Bytes answer = BlockAnswer(data);
    Unit.Hears("FF AA 03 00 00")
        .Says(5ms, Head(answer, 60))
        .Says(700ms, Tail(Head(answer, 200), 60))
        .Says(700ms, Tail(answer, 200));
    RunUpload(1);
    EXPECT_EQ(ReadFile(UploadPath()), data);
}

TEST_F(Upload, LeavesTheUnexaminedByteOutWhenItComesLateToo) {
    AgreesOn(UploadMode, Speed57600);
    const Bytes data = AnyBytes(256);
    Bytes answer = FromHex("77");  // noise, so that four bytes wait before the unexamined one has come
    const Bytes whole = BlockAnswer(data);
    answer.insert(answer.end(), whole.begin(), whole.end());
    Unit.Hears("FF AA 03 00 00").Says(5ms, Head(answer, 4)).Says(5ms, Tail(answer, 4));
    RunUpload(1);
    EXPECT_EQ(ReadFile(UploadPath()), data);
}

TEST_F(Upload, IgnoresWhatFollowsABlock) {
    AgreesOn(UploadMode, Speed57600);
    const Bytes data = AnyBytes(256);
    Bytes answer = BlockAnswer(data);
    answer.insert(answer.end(), 40, std::byte{0x99});
    Unit.Hears("FF AA 03 00 00").Says(5ms, answer);
    Unit.GivesBlocks(1, 1);
    RunUpload(2);
    EXPECT_EQ(Head(ReadFile(UploadPath()), 256), data);
    EXPECT_THAT(ReadFile(UploadPath()), SizeIs(512));
}

TEST_F(Upload, Of64KiBOfBootCodeKeepsTheUnitsOwnFirstBlockOutOfTheFile) {
    AgreesOn(UploadMode, Speed57600);
    Bytes first = AnyBytes(256);
    Put(first, 0, {0xBC, 0x0D, 0xE1, 0x49});
    Unit.Hears("FF AA 03 00 00").Says(5ms, BlockAnswer(first));
    Unit.GivesBlocks(1, 255);
    RunUpload(256);
    const Bytes file = ReadFile(UploadPath());
    ASSERT_THAT(file, SizeIs(65'536));
    EXPECT_EQ(ToHex(Head(file, 16)), "FF FF FF FF FF FF FF FF 53 4E 55 4D 30 30 3F 00");
    EXPECT_EQ(Tail(Head(file, 256), 16), Bytes(240, std::byte{0xFF}));
    EXPECT_EQ(Tail(Head(file, 512), 256), Bytes(256, std::byte{1}));
}

TEST_F(Upload, OfBootCodeOfAnotherSizeKeepsTheFirstBlock) {
    AgreesOn(UploadMode, Speed57600);
    Bytes first = AnyBytes(256);
    Put(first, 0, {0xBC, 0x0D, 0xE1, 0x49});
    Unit.Hears("FF AA 03 00 00").Says(5ms, BlockAnswer(first));
    Unit.GivesBlocks(1, 256);
    RunUpload(257);
    EXPECT_EQ(Head(ReadFile(UploadPath()), 256), first);
}

TEST_F(Upload, Of64KiBOfOtherCodeKeepsTheFirstBlock) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 256);
    RunUpload(256);
    EXPECT_EQ(Head(ReadFile(UploadPath()), 256), Bytes(256));
}

TEST_F(Upload, ReplacesAnOlderFileOfItsName) {
    Folder.Write("upload.bin", Bytes(100'000));
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 1);
    RunUpload(1);
    EXPECT_THAT(ReadFile(UploadPath()), SizeIs(256));
}

TEST_F(Upload, ReplacesAWriteProtectedFile) {
    Folder.Write("upload.bin", Bytes(10));
    fs::permissions(UploadPath(), fs::perms::owner_read);
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 1);
    RunUpload(1);
    EXPECT_THAT(ReadFile(UploadPath()), SizeIs(256));
}

TEST_F(Upload, NeverReplacesAFolder) {
    OpensTheLink = false;
    fs::create_directory(UploadPath());
    RunUpload(1);
    EXPECT_THAT(Events.Messages,
                ElementsAre("Error: " + UploadPath() + " cannot be deleted (it is not a file)."));
    EXPECT_TRUE(fs::is_directory(UploadPath()));
}

TEST_F(Upload, IntoAMissingFolderSaysSo) {
    OpensTheLink = false;
    Flash.SetFileName(Folder / "missing/upload.bin");
    Flash.SetUploadBlock(1);
    Flash.Execute(Method::Upload);
    EXPECT_THAT(Events.Messages, ElementsAre("Error: Cannot access to " + Folder / "missing/upload.bin"
                                             + " (No such file or directory)."));
}

TEST_F(Upload, ThatFailsLeavesNoFile) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 3);
    Unit.Hears("FF AA 03 03 00").Says("FF AA 07 00");
    RunUpload(10);
    EXPECT_EQ(Events.Messages.back(), "Transmitting error.");
    EXPECT_FALSE(fs::exists(UploadPath()));
}

TEST_F(Upload, ThatNeverFindsItsUnitLeavesNoFile) {
    RunUpload(10);
    EXPECT_EQ(Events.Messages.back(), "Timeout.");
    EXPECT_FALSE(fs::exists(UploadPath()));
}

TEST_F(Upload, OfABlockThatIsNeverWholeStoresNothingOfItAndFails) {
    AgreesOn(UploadMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says(5ms, BlockAnswer(AnyBytes(255)));
    RunUpload(1);
    EXPECT_EQ(Events.Messages.back(), "Transmitting error.");
    EXPECT_THAT(Events.Messages, Not(Contains("Uploading was completed successfully.")));
    EXPECT_FALSE(fs::exists(UploadPath()));
}

}  // namespace burnwick::test
