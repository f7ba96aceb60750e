#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "job/CompareTexts.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

class RefusedComparison : public ::testing::Test {
protected:
    static std::optional<CompareRefusal> Refuse(const std::string& file1, const std::string& file2) {
        return RefuseComparison(file1, file2, [](std::string path) {
            std::transform(path.begin(), path.end(), path.begin(),
                           [](unsigned char character) { return std::tolower(character); });
            return path;
        });
    }
    static void ExpectRefusal(const std::optional<CompareRefusal>& refusal, const std::string& caption,
                              const std::string& message, int file) {
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->Box.Caption, caption);
        EXPECT_EQ(refusal->Box.Text, message + "\t");
        EXPECT_EQ(refusal->Status, "Status: " + message);
        EXPECT_EQ(refusal->File, file);
    }

    TempFolder Folder;
    std::string Here = Folder.Write("here.bin", AnyBytes(10));
    std::string Other = Folder.Write("other.bin", AnyBytes(10));
};

}  // namespace burnwick::test
