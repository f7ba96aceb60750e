#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "job/CopyToFolder.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

class CopyToFolderTest : public ::testing::Test {
protected:
    CopyToFolderTest() { std::filesystem::create_directory(Target_.parent_path()); }

    static void Put(const std::filesystem::path& path, const Bytes& content) {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(content.data()),
                   static_cast<std::streamsize>(content.size()));
    }
    std::string Copy(Existing existing = Existing::Replace) const {
        return CopyWhole(Source_, Target_, existing);
    }
    std::ptrdiff_t FilesThere() const {
        return std::distance(std::filesystem::directory_iterator(Target_.parent_path()),
                             std::filesystem::directory_iterator());
    }
    bool Has(const std::string& name) const {
        std::error_code error;
        const bool has = HasFile(Folder_.Path().string(), name, error);
        EXPECT_FALSE(error) << error.message();
        return has;
    }

    TempFolder Folder_;
    Bytes Content_ = AnyBytes(300'000);
    Bytes Old_ = AnyBytes(1000, /*seed=*/2);
    std::filesystem::path Source_ = Folder_.Write("unit.bin", Content_);
    std::filesystem::path Target_ = Folder_.Path() / "to" / "unit.bin";
};

}  // namespace burnwick::test
