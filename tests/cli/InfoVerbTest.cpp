#include <filesystem>

#include "cli/CliTest.h"
#include "support/MatchesPattern.h"

namespace burnwick::test {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

}  // namespace

class InfoVerb : public CliTest {
protected:
    nlohmann::json InfoOf(const Bytes& content) {
        EXPECT_EQ(Run({"info", Folder.Write("image.bin", content), "--json"}), 0) << Err();
        return Json();
    }
};

TEST_F(InfoVerb, ShowsWhatAnImageTellsOfItself) {
    const std::string image = Folder.Write("image.bin", SampleImage());
    EXPECT_EQ(Run({"info", image}), 0);
    const auto lines = OutLines();
    ASSERT_THAT(lines, SizeIs(10));
    EXPECT_EQ(lines.at(0), image);
    EXPECT_EQ(lines.at(1), "  Model       VX-1600");
    EXPECT_EQ(lines.at(2), "  Version     4.10");
    EXPECT_EQ(lines.at(3), "  Language    English/French");
    EXPECT_EQ(lines.at(4), "  Date stamp  07/22/2004 15:05:09");
    EXPECT_THAT(lines.at(5), MatchesPattern("  Checksum    [0-9A-F]+"));
    EXPECT_EQ(lines.at(6), "  Size        512KB (524288 bytes)");
    EXPECT_EQ(lines.at(7), "  Image file  VX16410F.BIN");
    EXPECT_EQ(lines.at(8), "  Kind        0, family 0, type code ends in 0000");
    EXPECT_EQ(lines.at(9), "  Link        family 0, type 0, up to 115200 bit/s");
}

TEST_F(InfoVerb, ShowsWhatTheLinkMakesOfAnImage) {
    EXPECT_EQ(Run({"info", Folder.Write("image.bin", SampleType4Image())}), 0);
    EXPECT_EQ(
        OutLines().back(),
        "  Link        family 2, type 4, up to 115200 bit/s, tells its own length, the unit is asked what "
        "it is");
}

TEST_F(InfoVerb, GivesTheFieldsByNameInJson) {
    const auto json = InfoOf(SampleType4Image());
    EXPECT_EQ(json["Model"], "VX-3200");
    EXPECT_EQ(json["Version"], "2.07");
    EXPECT_EQ(json["Language"], "German");
    EXPECT_EQ(json["DateStamp"], "11/05/2009 09:30:00");
    EXPECT_EQ(json["FileName"], "image.bin");
    EXPECT_EQ(json["FilePath"], Folder.Path().string());
    EXPECT_EQ(json["FileSize"], "293KB");
    EXPECT_EQ(json["ImageFamily"], 2);
    EXPECT_EQ(json["ImageKind"], 8);
    EXPECT_EQ(json["TypeSuffix"], "0149");
    EXPECT_EQ(json["IsBootCode"], false);
    EXPECT_EQ(json["HasBinaryHeader"], true);
    EXPECT_EQ(json["HeaderFormat"], 1);
    EXPECT_EQ(json["SignaturePos"], 0);
    EXPECT_THAT(json["Checksum"].get<std::string>(), SizeIs(8));
    EXPECT_EQ(json["Checksum"].get<std::string>().substr(4), json["ChecksumShort"]);
    EXPECT_TRUE(json.contains("ImageFileName"));
}

TEST_F(InfoVerb, GivesTheLinksViewInJson) {
    const auto link = InfoOf(SampleType4Image())["Link"];
    EXPECT_EQ(link["ImageFamily"], 2);
    EXPECT_EQ(link["ImageType"], 4);
    EXPECT_EQ(link["ImageTypeText"], "C0DE0149");
    EXPECT_EQ(link["ImageModel"], 2);
    EXPECT_EQ(link["ImageSubModel"], 7);
    EXPECT_EQ(link["FilesizeHex"], "FilesizeHex=00049400");
}

TEST_F(InfoVerb, GivesOneObjectALineForSeveralImages) {
    const std::string one = Folder.Write("one.bin", SampleImage());
    const std::string two = Folder.Write("two.bin", SampleAnnouncedImage());
    EXPECT_EQ(Run({"info", one, two, "--json"}), 0);
    ASSERT_THAT(OutLines(), SizeIs(2));
    EXPECT_EQ(nlohmann::json::parse(OutLines()[0])["FileName"], "one.bin");
    EXPECT_EQ(nlohmann::json::parse(OutLines()[1])["FileName"], "two.bin");
}

TEST_F(InfoVerb, GoesOnBehindAFileThatIsNoImageAndEndsWith6) {
    const std::string foreign = Folder.Write("foreign.bin", AnyBytes(1'000));
    const std::string image = Folder.Write("image.bin", SampleImage());
    EXPECT_EQ(Run({"info", foreign, image, "--json"}), 6);
    EXPECT_THAT(OutLines(), SizeIs(1));
    EXPECT_THAT(ErrLines(), SizeIs(1));
    EXPECT_THAT(Err(), HasSubstr(foreign + ": Invalid file format."));
}

TEST_F(InfoVerb, EndsWith6ForWhatCannotBeRead) {
    for (const std::string& file : {Folder / "missing.bin", Folder.Path().string()}) {
        EXPECT_EQ(Run({"info", file}), 6);
        EXPECT_THAT(ErrLines(), SizeIs(1));
        EXPECT_THAT(Err(), HasSubstr("burnwick-cli: Cannot access to " + file + " ("));
        EXPECT_EQ(Out(), "");
    }
}

TEST_F(InfoVerb, TellsAnImageWhoseChecksumIsWrong) {
    Bytes image = SampleType4Image();
    image.resize(image.size() - 512);
    EXPECT_EQ(Run({"info", Folder.Write("cut.bin", image)}), 0);
    EXPECT_THAT(Out(), HasSubstr("Checksum    00000000 (not the one it carries: the image is damaged or "
                                 "incomplete)"));
}

TEST_F(InfoVerb, LetsNoControlCharacterOfAnImageReachATerminal) {
    Bytes image = SampleType4Image();
    Put(image, 15, {'V', 0x1B, '[', '2', 'J', 0x9B, 0x07, 0});
    EXPECT_EQ(Run({"info", Folder.Write("image.bin", image)}), 0);
    EXPECT_THAT(Out(), HasSubstr("  Model       V.[2J..\n"));
    EXPECT_THAT(Out(), Not(HasSubstr("\x1B")));
}

}  // namespace burnwick::test
