#include "cli/CompareVerbTest.h"

namespace burnwick::test {

namespace {

using ::testing::HasSubstr;

}  // namespace

TEST_F(CompareVerb, TellsIdenticalImages) {
    EXPECT_EQ(Run({"compare", First(), Second(0)}), 0);
    EXPECT_EQ(Out(), "File 1 and File 2 are identical.\n");
}

TEST_F(CompareVerb, TellsOneDifferentByteAndEndsWith7) {
    EXPECT_EQ(Run({"compare", First(), Second(1)}), 7);
    EXPECT_EQ(Out(), "1 byte is different.\n");
}

TEST_F(CompareVerb, TellsManyDifferentBytesAndEndsWith7) {
    EXPECT_EQ(Run({"compare", First(), Second(1'234)}), 7);
    EXPECT_EQ(Out(), "1234 bytes are different.\n");
}

TEST_F(CompareVerb, EndsWith7ForFilesOfDifferentSize) {
    const std::string shorter = Folder.Write("two.bin", SampleImage(262'144));
    ExpectRefusal(7, {"compare", First(), shorter}, "Error: File size mismatched.");
}

TEST_F(CompareVerb, EndsWith7ForFilesOfDifferentType) {
    Bytes other = SampleImage();
    Put(other, 0, {0xBC, 0x0D, 0xE1, 0x22});
    ExpectRefusal(7, {"compare", First(), Folder.Write("two.bin", other)}, "Error: File type mismatched.");
}

TEST_F(CompareVerb, RefusesAFileAndItself) {
    ExpectRefusal(64, {"compare", First(), First()}, "are the same file: name two files to compare.");
}

TEST_F(CompareVerb, RefusesAFolder) {
    ExpectRefusal(6, {"compare", First(), Folder.Path().string()},
                  "Cannot access to " + Folder.Path().string() + " (it is a folder).");
}

TEST_F(CompareVerb, RefusesAFileThatIsNotThere) {
    ExpectRefusal(6, {"compare", Folder / "missing.bin", First()},
                  "Cannot access to " + Folder / "missing.bin" + " (No such file or directory).");
}

TEST_F(CompareVerb, GivesOneJsonObject) {
    EXPECT_EQ(Run({"compare", First(), Second(3), "--json"}), 7);
    EXPECT_EQ(Json()["result"], "different");
    EXPECT_EQ(Json()["differences"], 3);
    EXPECT_EQ(Json()["message"], "3 bytes are different.");
    EXPECT_EQ(Run({"compare", First(), Second(0), "--json"}), 0);
    EXPECT_EQ(Json()["result"], "identical");
    EXPECT_EQ(Json()["differences"], 0);
}

TEST_F(CompareVerb, GivesAJsonObjectForARefusalToo) {
    EXPECT_EQ(Run({"compare", First(), Folder.Path().string(), "--json"}), 6);
    EXPECT_EQ(Json()["result"], "error");
    EXPECT_TRUE(Json()["differences"].is_null());
    EXPECT_THAT(Json()["message"].get<std::string>(), HasSubstr("it is a folder"));
}

TEST_F(CompareVerb, PrintsErrorsOnlyWhenQuiet) {
    EXPECT_EQ(Run({"compare", First(), Second(3), "--quiet"}), 7);
    EXPECT_EQ(Out() + Err(), "");
}

TEST_F(CompareVerb, LeavesBothFilesAsTheyWere) {
    Run({"compare", First(), Second(3)});
    EXPECT_EQ(ReadFile(Folder / "one.bin"), SampleImage());
}

}  // namespace burnwick::test
