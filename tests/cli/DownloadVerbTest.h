#pragma once

#include <string>
#include <vector>

#include "cli/CliTest.h"

namespace burnwick::test {

class DownloadVerb : public CliTest {
protected:
    // 64 KiB are an image whatever they hold.
    std::string Image(std::size_t size = 65'536) {
        return Folder.Write("image.bin", size == 65'536 ? AnyBytes(size) : SampleImage(size));
    }

    // The run must end with this status and one line on Err about it.
    void ExpectRefusal(int status, const std::vector<std::string>& arguments, const std::string& complaint) {
        EXPECT_EQ(Run(arguments), status);
        ASSERT_THAT(ErrLines(), ::testing::Not(::testing::IsEmpty()));
        EXPECT_THAT(ErrLines().back(), ::testing::StartsWith("burnwick-cli: "));
        EXPECT_THAT(ErrLines().back(), ::testing::HasSubstr(complaint));
    }
};

}  // namespace burnwick::test
