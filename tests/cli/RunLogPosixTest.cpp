#include "cli/CliTest.h"
#include "support/LittleRoom.h"

namespace burnwick::test {

using ::testing::HasSubstr;
using ::testing::Not;

TEST_F(CliTest, LogsAFailedUploadAsAFailureWhateverItsFolderIsCalled) {
    std::filesystem::create_directory(Folder.Path() / "flashed successfully");
    const std::string file = Folder / "flashed successfully/readback.bin";
    Connect(UnitOfSize(131'072));
    {
        const LittleRoom disk(1024);
        EXPECT_EQ(Run({"upload", file, "--port", "COM2", "--chip", "1Mbit"}), 6);
    }
    EXPECT_THAT(LogText(), HasSubstr("Status: Error: Cannot write to " + file));
    EXPECT_THAT(LogText(), Not(HasSubstr("Elapsed time")));
    EXPECT_THAT(LogText(), Not(HasSubstr("File Information")));
}

}  // namespace burnwick::test
