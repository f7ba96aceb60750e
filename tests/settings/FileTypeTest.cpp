#include "settings/FileType.h"

#include <gmock/gmock.h>

#include "FakeRegistry.h"
#include "settings/modRegistry.h"

namespace burnwick::test {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;
using ::testing::Not;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

class FileTypeTest : public ::testing::Test {
protected:
    // What a program does that takes "*.bin" for itself.
    void TakenByAnother(const std::string& place = "HKCR\\") {
        Registry.Keys[place + ".bin"][""] = "Viewer";
        Registry.Keys[place + "Viewer"][""] = "Viewer File";
    }

    FakeRegistry Registry;
};

class ForeignFileTypeTest : public FileTypeTest {};

TEST_F(FileTypeTest, IsRegisteredAsSixKeys) {
    modUtility::RegisterFileType(Registry, "C:\\Burnwick\\Burnwick.exe");
    const auto text = [](const char* value) { return ElementsAre(Pair("", value)); };
    EXPECT_THAT(Registry.Keys,
                UnorderedElementsAre(
                    Pair("HKCR\\.bin", text("Burnwick")), Pair("HKCR\\Burnwick", text("Burnwick File")),
                    Pair("HKCR\\Burnwick\\DefaultIcon", text("C:\\Burnwick\\Burnwick.exe,0")),
                    Pair("HKCR\\Burnwick\\shell", text("")),
                    Pair("HKCR\\Burnwick\\shell\\open", text("&Flash with Burnwick")),
                    Pair("HKCR\\Burnwick\\shell\\open\\command", text("C:\\Burnwick\\Burnwick.exe %1"))));
}

TEST_F(FileTypeTest, IsRegisteredKeyByKeyInItsOrder) {
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_THAT(Registry.Stored, ElementsAre(".bin", "Burnwick", "Burnwick\\DefaultIcon", "Burnwick\\shell",
                                             "Burnwick\\shell\\open", "Burnwick\\shell\\open\\command"));
}

TEST_F(FileTypeTest, HasNoQuotesAroundAProgramWithBlanks) {
    modUtility::RegisterFileType(Registry, "C:\\Program Files\\Burnwick.exe");
    EXPECT_EQ(Registry.Keys["HKCR\\Burnwick\\shell\\open\\command"][""],
              "C:\\Program Files\\Burnwick.exe %1");
}

TEST_F(FileTypeTest, IsTheUsersOwnWhereTheSystemRefuses) {
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys["HKCU\\Software\\Classes\\.bin"][""], "Burnwick");
    EXPECT_EQ(Registry.Keys["HKCU\\Software\\Classes\\Burnwick\\shell\\open\\command"][""], "B.exe %1");
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "B.exe");
}

TEST_F(FileTypeTest, LeavesNoHalfOfItWhereTheSystemRefusesInTheMiddle) {
    Registry.RefusedKeys = {"HKCR\\Burnwick\\shell"};
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys["HKCU\\Software\\Classes\\Burnwick\\shell\\open\\command"][""], "B.exe %1");
    EXPECT_THAT(Registry.Keys, Not(Contains(Key("HKCR\\.bin"))));
    EXPECT_THAT(Registry.Keys, Not(Contains(Key("HKCR\\Burnwick"))));
}

TEST_F(FileTypeTest, IsTakenAwayWithAllItsKeys) {
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, IsEmpty());
    EXPECT_THAT(Registry.Deleted, ElementsAre("HKCR\\.bin", "HKCR\\Burnwick\\shell\\open\\command",
                                              "HKCR\\Burnwick\\shell\\open", "HKCR\\Burnwick\\shell",
                                              "HKCR\\Burnwick\\DefaultIcon", "HKCR\\Burnwick"));
}

TEST_F(FileTypeTest, IsTakenAwayFromTheUsersOwnKeys) {
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, IsEmpty());
}

TEST_F(FileTypeTest, IsTakenAwayFromTheUserAndFromAllWhereHisShowAmongTheirs) {
    Registry.ShowsTheUsersAmongAll = true;
    modUtility::RegisterFileType(Registry, "all.exe");
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "user.exe");
    EXPECT_EQ(Registry.Keys["HKCR\\Burnwick\\shell\\open\\command"][""], "all.exe %1");
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "user.exe");
    Registry.Refusing.reset();
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, IsEmpty());
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
    Registry.Keys["HKCR\\Burnwick\\shell\\open\\command"][""] = "x";
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "") << "shorter than its own ending";
}

TEST_F(FileTypeTest, TellsItsProgramAlsoWhenTheExtensionIsNobodys) {
    modUtility::RegisterFileType(Registry, "B.exe");
    Registry.Keys.erase("HKCR\\.bin");
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "B.exe");
}

TEST_F(ForeignFileTypeTest, IsLeftWhenItHasTakenThePlaceOfOurs) {
    modUtility::RegisterFileType(Registry, "B.exe");
    TakenByAnother();
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys,
                UnorderedElementsAre(Pair("HKCR\\.bin", ElementsAre(Pair("", "Viewer"))),
                                     Pair("HKCR\\Viewer", ElementsAre(Pair("", "Viewer File")))));
}

TEST_F(ForeignFileTypeTest, IsGivenItsExtensionBack) {
    TakenByAnother();
    const auto before = Registry.Keys;
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys["HKCR\\.bin"][""], "Burnwick");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, IsGivenItsExtensionBackThoughOursWasRegisteredAgain) {
    TakenByAnother();
    const auto before = Registry.Keys;
    modUtility::RegisterFileType(Registry, "C:\\before\\B.exe");
    modUtility::RegisterFileType(Registry, "C:\\after\\B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, IsNotBroughtBackWhenItHasBeenRemoved) {
    TakenByAnother();
    modUtility::RegisterFileType(Registry, "B.exe");
    Registry.Keys.erase("HKCR\\Viewer");
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, IsEmpty());
}

TEST_F(ForeignFileTypeTest, IsNotBroughtBackWhenItHadLeftTheExtensionByTheLastTime) {
    TakenByAnother();
    modUtility::RegisterFileType(Registry, "B.exe");
    Registry.Keys.erase("HKCR\\.bin");
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, ElementsAre(Key("HKCR\\Viewer")));
}

TEST_F(ForeignFileTypeTest, OfAllShowsAgainWhenTheUsersOwnIsTakenAway) {
    TakenByAnother();
    const auto before = Registry.Keys;
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, OfAllKeepsNoEmptyKeyOfTheUsersInItsPlace) {
    TakenByAnother();
    const auto before = Registry.Keys;
    Registry.ShowsTheUsersAmongAll = true;
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, OfTheUserIsGivenItsExtensionBack) {
    TakenByAnother("HKCU\\Software\\Classes\\");
    const auto before = Registry.Keys;
    Registry.Refusing = RegistryRoot::ClassesRoot;
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, IsLeftWhereTheSystemRefusesInTheMiddle) {
    TakenByAnother();
    const auto before = Registry.Keys;
    Registry.RefusedKeys = {"HKCR\\Burnwick\\shell"};
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys["HKCR\\.bin"][""], "Viewer");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, IsLeftWhereTheSystemRefusesEverything) {
    TakenByAnother();
    const auto before = Registry.Keys;
    Registry.RefusedKeys = {"HKCR\\Burnwick\\shell", "HKCU\\Software\\Classes\\Burnwick\\shell"};
    modUtility::RegisterFileType(Registry, "B.exe");
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, KeepsWhatItHasBelowTheExtension) {
    Registry.Keys["HKCR\\.bin"]["Content Type"] = "application/octet-stream";
    Registry.Keys["HKCR\\.bin\\OpenWithProgids"]["Viewer"] = "";
    Registry.Keys["HKCR\\.bin\\PersistentHandler"][""] = "{098f2470}";
    const auto before = Registry.Keys;
    modUtility::RegisterFileType(Registry, "B.exe");
    modUtility::UnregisterFileType(Registry);
    EXPECT_EQ(Registry.Keys, before);
}

TEST_F(ForeignFileTypeTest, KeepsWhatItHasBelowOurKeys) {
    modUtility::RegisterFileType(Registry, "B.exe");
    Registry.Keys["HKCR\\Burnwick\\shell\\edit\\command"][""] = "edit.exe %1";
    modUtility::UnregisterFileType(Registry);
    EXPECT_THAT(Registry.Keys, UnorderedElementsAre(Pair("HKCR\\Burnwick", IsEmpty()),
                                                    Pair("HKCR\\Burnwick\\shell", IsEmpty()),
                                                    Key("HKCR\\Burnwick\\shell\\edit\\command")));
}

TEST_F(ForeignFileTypeTest, MeansThatOursIsNotThere) {
    modUtility::RegisterFileType(Registry, "B.exe");
    TakenByAnother();
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "");
}

TEST_F(ForeignFileTypeTest, OfTheUserGoesBeforeOursOfAll) {
    modUtility::RegisterFileType(Registry, "B.exe");
    TakenByAnother("HKCU\\Software\\Classes\\");
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "");
}

TEST_F(ForeignFileTypeTest, ThatTheUserHasChosenGoesBeforeOurs) {
    modUtility::RegisterFileType(Registry, "B.exe");
    auto& choice = Registry.Keys
                       ["HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\"
                        ".bin\\UserChoice"];
    choice["ProgId"] = "Applications\\viewer.exe";
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "");
    choice["ProgId"] = "Burnwick";
    EXPECT_EQ(modUtility::AssociatedProgram(Registry), "B.exe");
}

TEST(modRegistryTest, ReadsByKeyAndName) {
    FakeRegistry registry;
    registry.Keys["HKCR\\.bin"] = {{"", "Burnwick"}, {"Content Type", "application/x"}};
    EXPECT_TRUE(modRegistry::KeyExists(registry, RegistryRoot::ClassesRoot, ".bin"));
    EXPECT_FALSE(modRegistry::KeyExists(registry, RegistryRoot::CurrentUser, ".bin"));
    EXPECT_EQ(modRegistry::GetKeyValue(registry, RegistryRoot::ClassesRoot, ".bin", ""), "Burnwick");
    EXPECT_EQ(modRegistry::GetKeyValue(registry, RegistryRoot::ClassesRoot, ".bin", "Content Type"),
              "application/x");
    EXPECT_EQ(modRegistry::GetKeyValue(registry, RegistryRoot::ClassesRoot, ".bin", "other"), "");
    EXPECT_EQ(modRegistry::GetKeyValue(registry, RegistryRoot::ClassesRoot, ".txt", ""), "");
}

TEST(modRegistryTest, DeletesAKeyThatHasNoneBelowIt) {
    FakeRegistry registry;
    registry.Keys = {{"HKCR\\a", {}}, {"HKCR\\a\\b", {{"", "x"}}}};
    modRegistry::DeleteKey(registry, RegistryRoot::ClassesRoot, "a");
    EXPECT_THAT(registry.Deleted, IsEmpty());
    modRegistry::DeleteKey(registry, RegistryRoot::ClassesRoot, "a\\b");
    modRegistry::DeleteKey(registry, RegistryRoot::ClassesRoot, "a");
    EXPECT_THAT(registry.Keys, IsEmpty());
}

}  // namespace burnwick::test
