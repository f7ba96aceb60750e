#include "settings/FileType.h"

#include <gmock/gmock.h>

#include "FakeRegistry.h"
#include "settings/modRegistry.h"

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

class FileTypeTest : public ::testing::Test {
protected:
    FakeRegistry Registry;
};

TEST_F(FileTypeTest, IsRegisteredAsSixKeys) {
    modUtility::RegisterFileType(Registry, "C:\\Burnwick\\Burnwick.exe");
    EXPECT_THAT(
        Registry.Keys,
        UnorderedElementsAre(Pair("HKCR\\.bin", "Burnwick"), Pair("HKCR\\Burnwick", "Burnwick File"),
                             Pair("HKCR\\Burnwick\\DefaultIcon", "C:\\Burnwick\\Burnwick.exe,0"),
                             Pair("HKCR\\Burnwick\\shell", ""),
                             Pair("HKCR\\Burnwick\\shell\\open", "&Flash with Burnwick"),
                             Pair("HKCR\\Burnwick\\shell\\open\\command", "C:\\Burnwick\\Burnwick.exe %1")));
}

TEST_F(FileTypeTest, IsRegisteredKeyByKeyInItsOrder) {
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_THAT(Registry.Stored, ElementsAre(".bin", "Burnwick", "Burnwick\\DefaultIcon", "Burnwick\\shell",
                                             "Burnwick\\shell\\open", "Burnwick\\shell\\open\\command"));
}

TEST_F(FileTypeTest, HasNoQuotesAroundAProgramWithBlanks) {
    modUtility::RegisterFileType(Registry, "C:\\Program Files\\Burnwick.exe");
    EXPECT_EQ(Registry.Keys["HKCR\\Burnwick\\shell\\open\\command"], "C:\\Program Files\\Burnwick.exe %1");
}

TEST_F(FileTypeTest, IsTheUsersOwnWhereTheSystemRefuses) {
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys["HKCU\\Software\\Classes\\.bin"], "Burnwick");
    EXPECT_EQ(Registry.Keys["HKCU\\Software\\Classes\\Burnwick\\shell\\open\\command"], "B.exe %1");
}

TEST_F(FileTypeTest, IsTheUsersOwnWhereTheSystemRefusesInTheMiddle) {
    Registry.RefusedKeys = {"Burnwick\\shell"};
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys["HKCU\\Software\\Classes\\Burnwick\\shell\\open\\command"], "B.exe %1");
}

TEST_F(FileTypeTest, IsTakenAwayWithAllItsKeys) {
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, IsEmpty());
    EXPECT_THAT(Registry.Deleted, ElementsAre("HKCR\\.bin", "HKCR\\Burnwick"));
}

TEST_F(FileTypeTest, IsTakenAwayFromTheUsersOwnKeys) {
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, IsEmpty());
}

TEST_F(FileTypeTest, OfAnotherProgramIsLeft) {
    Registry.Keys = {
        {"HKCR\\.bin", "Viewer"}, {"HKCR\\Viewer", "Viewer File"}, {"HKCR\\Burnwick", "Burnwick File"}};
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys,
                UnorderedElementsAre(Pair("HKCR\\.bin", "Viewer"), Pair("HKCR\\Viewer", "Viewer File")));
}

TEST_F(FileTypeTest, ThatIsNotThereIsTakenAwayWithoutAWord) {
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Deleted, IsEmpty());
}

TEST_F(FileTypeTest, TellsItsProgram) {
    modUtility::RegisterFileType(Registry, "C:\\a b\\Burnwick.exe");
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "C:\\a b\\Burnwick.exe");
}

TEST_F(FileTypeTest, TellsNoProgramWhereThereIsNone) {
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "");
    Registry.Keys["HKCR\\Burnwick\\shell\\open\\command"] = "x";
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "") << "shorter than its own ending";
}

TEST_F(FileTypeTest, IsReadByKeyAndName) {
    Registry.Keys = {{"HKCR\\.bin", "Burnwick"}};
    EXPECT_TRUE(modRegistry::KeyExists(Registry, RegistryRoot::ClassesRoot, ".bin"));
    EXPECT_FALSE(modRegistry::KeyExists(Registry, RegistryRoot::CurrentUser, ".bin"));
    EXPECT_EQ(modRegistry::GetKeyValue(Registry, RegistryRoot::ClassesRoot, ".bin", ""), "Burnwick");
    EXPECT_EQ(modRegistry::GetKeyValue(Registry, RegistryRoot::ClassesRoot, ".bin", "Content Type"), "");
    EXPECT_EQ(modRegistry::GetKeyValue(Registry, RegistryRoot::ClassesRoot, ".txt", ""), "");
}

}  // namespace burnwick::test
