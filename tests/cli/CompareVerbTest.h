#pragma once

#include <string>
#include <vector>

#include "cli/CliTest.h"

namespace burnwick::test {

class CompareVerb : public CliTest {
protected:
    std::string First() { return Folder.Write("one.bin", SampleImage()); }
    // The first one with so many bytes changed.
    std::string Second(int changes) {
        Bytes image = SampleImage();
        for (int i = 0; i < changes; ++i) {
            image[1'000 + static_cast<std::size_t>(i)] ^= std::byte{0xFF};
        }
        return Folder.Write("two.bin", image);
    }
    void ExpectRefusal(int status, const std::vector<std::string>& arguments, const std::string& complaint) {
        EXPECT_EQ(Run(arguments), status);
        EXPECT_EQ(Out(), "");
        EXPECT_THAT(ErrLines(), ::testing::SizeIs(1));
        EXPECT_THAT(Err(), ::testing::HasSubstr(complaint));
    }
};

}  // namespace burnwick::test
