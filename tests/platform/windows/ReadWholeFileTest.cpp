#include "platform/files/ReadWholeFile.h"

#include <gtest/gtest.h>

#include <thread>

#include "ForeignFolder.h"
#include "platform/process/windows/UniqueHandle.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

class ReadWholeFileTest : public testing::Test {
protected:
    UniqueHandle OpenedForOneAlone() const {
        return UniqueHandle(CreateFileW(File_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    ForeignFolder Folder_;
    std::filesystem::path File_ = Folder_.Path() / "file";
};

TEST_F(ReadWholeFileTest, GivesAllOfIt) {
    const std::string content = std::string(200'000, 'x') + "\r\n\x1A\0" + std::string(10, 'y');
    Put(File_, content);
    EXPECT_EQ(ReadWholeFile(File_), content);
}

TEST_F(ReadWholeFileTest, GivesNothingOfAFileThatIsNotThere) {
    EXPECT_EQ(ReadWholeFile(File_), "");
    EXPECT_EQ(ReadWholeFile(File_ / "none" / "file"), "");
    EXPECT_EQ(ReadWholeFile(""), "");
}

TEST_F(ReadWholeFileTest, SaysWhenItIsNoFile) {
    EXPECT_EQ(ReadWholeFile(Folder_.Path()), std::nullopt);
    EXPECT_EQ(ReadWholeFile("NUL"), std::nullopt);
}

TEST_F(ReadWholeFileTest, WaitsForOneThatNobodyMayOpenForAMoment) {
    Put(File_, "content");
    auto holder = OpenedForOneAlone();
    std::thread closer([&holder] {
        std::this_thread::sleep_for(100ms);
        holder.Reset();
    });
    EXPECT_EQ(ReadWholeFile(File_), "content");
    closer.join();
}

TEST_F(ReadWholeFileTest, SaysWhenNobodyMayOpenIt) {
    Put(File_, "content");
    const auto holder = OpenedForOneAlone();
    EXPECT_EQ(ReadWholeFile(File_), std::nullopt);
}

}  // namespace
}  // namespace burnwick::test
