#include "cli/CliTest.h"

namespace burnwick::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

}  // namespace

// Wrong calls: one line that says what is wrong and where to read on, exit status 64, and nothing done.
class CommandLine : public CliTest {
protected:
    void ExpectWrongUsage(const std::vector<std::string>& arguments, const std::string& complaint) {
        EXPECT_EQ(Run(arguments), 64);
        EXPECT_THAT(Out(), IsEmpty());
        ASSERT_THAT(ErrLines(), SizeIs(1));
        EXPECT_THAT(Err(), HasSubstr(complaint));
    }
};

TEST_F(CommandLine, TellsItsVersion) {
    EXPECT_EQ(Run({"--version"}), 0);
    EXPECT_EQ(Out(), "burnwick-cli 2.08 (build 2.08.1000)\n");
}

TEST_F(CommandLine, ListsItsVerbsAndExitStatusesAsHelp) {
    EXPECT_EQ(Run({"--help"}), 0);
    EXPECT_THAT(Out(), HasSubstr("download"));
    EXPECT_THAT(Out(), HasSubstr("upload"));
    EXPECT_THAT(Out(), HasSubstr("ports"));
    EXPECT_THAT(Out(), HasSubstr("Exit status:"));
}

TEST_F(CommandLine, ShowsAnExampleInTheHelpOfEachVerb) {
    for (const std::string verb : {"download", "upload", "ports"}) {
        EXPECT_EQ(Run({verb, "--help"}), 0);
        EXPECT_THAT(Out(), HasSubstr("Example:\n  burnwick-cli " + verb));
    }
}

TEST_F(CommandLine, WithoutAVerbIsWrong) {
    ExpectWrongUsage({}, "A subcommand is required");
}

TEST_F(CommandLine, WithAnUnknownVerbIsWrong) {
    ExpectWrongUsage({"explode"}, "explode: no such verb");
}

TEST_F(CommandLine, WithAnUnknownOptionIsWrong) {
    ExpectWrongUsage({"ports", "--frobnicate"}, "--frobnicate");
}

TEST_F(CommandLine, WithoutAFileIsWrong) {
    ExpectWrongUsage({"download"}, "IMAGE is required");
    ExpectWrongUsage({"upload", "--chip", "1Mbit"}, "FILE is required");
}

TEST_F(CommandLine, WithAnUnknownSpeedIsWrong) {
    for (const std::string speed : {"0", "19200", "1152000", "fast", "-9600", ""}) {
        ExpectWrongUsage({"download", "image.bin", "--baud", speed}, "--baud");
    }
}

TEST_F(CommandLine, WithAnUnknownChipIsWrong) {
    ExpectWrongUsage({"upload", "file.bin", "--chip", "3Mbit"}, "--chip");
}

TEST_F(CommandLine, OfAnUploadWithoutAChipIsWrong) {
    ExpectWrongUsage({"upload", "file.bin"}, "--chip is required");
}

TEST_F(CommandLine, WithAPortThatIsNoNameAndNoPathIsWrong) {
    const std::string image = Folder.Write("image.bin", AnyBytes(65'536));
    for (const std::string port : {"banana", "COM", "COMX", "COM1x", "ttyUSB0", "COM-1"}) {
        ExpectWrongUsage({"download", image, "--port", port}, "--port " + port);
    }
}

}  // namespace burnwick::test
