#include <cstdlib>
#include <thread>

#include "job/CopyToFolderTest.h"
#include "platform/process/windows/UniqueHandle.h"

// Attributes, files that programs keep to themselves, drives and long paths, as Windows has them.
namespace burnwick::test {

namespace fs = std::filesystem;

class CopyToFolderOnWindows : public CopyToFolderTest {
protected:
    // What may not be written could not be taken away with its folder.
    ~CopyToFolderOnWindows() override {
        for (const auto& file : {Source_, Target_}) {
            SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
        }
    }

    static void MakeReadOnly(const fs::path& file) {
        ASSERT_NE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    }
    static bool IsReadOnly(const fs::path& file) {
        return (GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
    }
    // As a program has a file open that allows others so much meanwhile.
    static UniqueHandle Held(const fs::path& file, DWORD shared) {
        return UniqueHandle(
            CreateFileW(file.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr));
    }
};

TEST_F(CopyToFolderOnWindows, AReadOnlyFileIsNotReplaced) {
    Put(Target_, Old_);
    MakeReadOnly(Target_);
    if (std::ofstream(Target_, std::ios::in | std::ios::out)) {
        GTEST_SKIP() << "this user may write such a file, too";
    }
    EXPECT_EQ(Copy(), "The copy cannot be written: Permission denied.");
    EXPECT_EQ(ReadFile(Target_), Old_);
    EXPECT_TRUE(IsReadOnly(Target_));
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderOnWindows, AReadOnlyImageIsCopiedAsOne) {
    MakeReadOnly(Source_);
    EXPECT_EQ(Copy(Existing::Keep), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_TRUE(IsReadOnly(Target_));
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderOnWindows, AReadOnlyImageReplacesAFileThatStaysWritable) {
    MakeReadOnly(Source_);
    Put(Target_, Old_);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_FALSE(IsReadOnly(Target_));
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderOnWindows, AFileThatAnotherProgramHoldsIsKept) {
    MakeReadOnly(Source_);
    Put(Target_, Old_);
    for (const DWORD shared : {DWORD{0}, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
        auto held = Held(Target_, shared);
        ASSERT_TRUE(held);
        const auto said = Copy();
        held.Reset();
        EXPECT_EQ(said, "The copy cannot be written: Permission denied.") << shared;
        EXPECT_EQ(ReadFile(Target_), Old_);
        EXPECT_EQ(FilesThere(), 1);
    }
}

TEST_F(CopyToFolderOnWindows, AnImageThatAnotherProgramHoldsIsTold) {
    const auto held = Held(Source_, 0);
    EXPECT_TRUE(Copy().starts_with("The file cannot be read: ")) << Copy();
    EXPECT_EQ(FilesThere(), 0);
}

TEST_F(CopyToFolderOnWindows, AReadOnlyImageWhosePlaceIsTakenMeanwhileLeavesNothing) {
    Put(Source_, AnyBytes(64 << 20));
    MakeReadOnly(Source_);
    std::string said;
    // As often as the copy is there first.
    for (int tries = 0; tries < 20 && said.empty(); ++tries) {
        SetFileAttributesW(Target_.c_str(), FILE_ATTRIBUTE_NORMAL);
        fs::remove(Target_);
        const std::jthread other([this] {
            while (FilesThere() == 0) {
            }
            std::error_code late;
            fs::create_directory(Target_, late);
        });
        said = Copy(Existing::Keep);
    }
    EXPECT_TRUE(said.starts_with("The copy cannot be written: ")) << said;
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderOnWindows, ADrivesRootIsAFolder) {
    const char* drive = std::getenv("BURNWICK_DRIVE");
    if (drive == nullptr) {
        GTEST_SKIP() << "BURNWICK_DRIVE names no drive in whose root files may be written";
    }
    const std::string root = std::string(drive) + "\\";
    const fs::path target = PathIn(root, "unit.bin");
    EXPECT_EQ(CopyWhole(Source_, target, Existing::Keep), "");
    EXPECT_EQ(ReadFile(target), Content_);
    std::error_code error;
    EXPECT_TRUE(HasFile(root, "unit.bin", error));
    EXPECT_TRUE(fs::remove(target));
    EXPECT_FALSE(fs::exists(fs::path(root) / "Burnwick-copy-1.tmp"));
}

TEST_F(CopyToFolderOnWindows, APathMayBeLongerThan260Characters) {
    auto folder = Target_.parent_path();
    for (const char part : {'a', 'b', 'c'}) {
        folder /= std::string(100, part);
        fs::create_directory(folder);
    }
    Put(folder / "other.bin", Old_);
    EXPECT_EQ(CopyWhole(Source_, folder / "unit.bin", Existing::Keep), "");
    EXPECT_EQ(ReadFile(folder / "unit.bin"), Content_);
    EXPECT_EQ(CopyWhole(folder / "unit.bin", folder / "other.bin", Existing::Replace), "");
    EXPECT_EQ(ReadFile(folder / "other.bin"), Content_);
    std::error_code error;
    EXPECT_TRUE(HasFile(folder.string(), "unit.bin", error));
    EXPECT_FALSE(HasFile(folder.string(), "Burnwick-copy-1.tmp", error));
    EXPECT_FALSE(fs::exists(folder / "Burnwick-copy-1.tmp"));
    // The standard library's own way to take it all away finds no end there.
    for (const auto& path : {folder / "unit.bin", folder / "other.bin", folder, folder.parent_path()}) {
        fs::remove(path);
    }
}

}  // namespace burnwick::test
