#include "settings/frmOptions.h"

#include <map>
#include <string>
#include <vector>

#include "gui/FormTest.h"
#include "support/FakeSettings.h"
#include "support/FakeShell.h"

namespace burnwick::test {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class frmOptionsTest : public FormTest {
protected:
    frmOptionsTest() {
        Shell.Note = [this](const std::string& call) { Done.push_back(call); };
        Stored.OnStore = [this](const auto& name, const auto& value) { Done.push_back(name + "=" + value); };
    }

    std::unique_ptr<QDialog> New() override {
        return std::make_unique<frmOptions>(
            frmOptions::Services{.Settings = Stored, .Shell = Shell, .Program = "/opt/burnwick/Burnwick"});
    }

    bool IsTicked(const std::string& control) { return Find(control).property("checked").toBool(); }
    std::vector<int> Selected() {
        std::vector<int> selected;
        for (const int index : {0, 1, 2}) {
            if (IsTicked("optLogOption_" + std::to_string(index))) {
                selected.push_back(index);
            }
        }
        return selected;
    }

    FakeShell Shell;
    FakeSettings Stored;
    std::vector<std::string> Done;  // in order
};

TEST_F(frmOptionsTest, AsksForFourThingsInThreeFrames) {
    EXPECT_EQ(Form().windowTitle(), "Options");
    EXPECT_TRUE(Form().isModal());
    EXPECT_EQ(Title("fraProgramming"), "Programming:");
    EXPECT_EQ(Text("chkVerify"), "Display verifying message after Download.");
    EXPECT_EQ(Title("fraLogOption"), "Activity Log Option:");
    EXPECT_EQ(Title("fraWindowsSettings"), "Windows Settings:");
    EXPECT_EQ(Text("chkDesktop"), "Add Burnwick icon on &Desktop");
    EXPECT_EQ(Text("chkFlashMenu"), "Add Burnwick to Windows Explorer &Context Menu");
    EXPECT_EQ(Text("cmdOK"), "OK");
    EXPECT_EQ(Text("cmdCancel"), "&Cancel");
}

TEST_F(frmOptionsTest, SaysWhatEachLogOptionRecords) {
    EXPECT_EQ(Text("optLogOption_2"), "&All");
    EXPECT_EQ(Text("lblLogOption_2"), "Record Summary and file information.");
    EXPECT_EQ(Text("optLogOption_1"), "&Summary");
    EXPECT_EQ(Text("lblLogOption_1"), "Record file name, date/time, and status.");
    EXPECT_EQ(Text("optLogOption_0"), "&Disable");
    EXPECT_EQ(Text("lblLogOption_0"), "No information is recorded.");
}

TEST_F(frmOptionsTest, ShowsNothingTickedWithoutSettings) {
    EXPECT_FALSE(IsTicked("chkVerify"));
    EXPECT_FALSE(IsTicked("chkDesktop"));
    EXPECT_FALSE(IsTicked("chkFlashMenu"));
}

TEST_F(frmOptionsTest, ShowsTheStoredSettings) {
    Stored.Values = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "Yes"}, {"Options/Verify", "1"}};
    EXPECT_TRUE(IsTicked("chkVerify"));
    EXPECT_TRUE(IsTicked("chkDesktop"));
    EXPECT_TRUE(IsTicked("chkFlashMenu"));
}

TEST_F(frmOptionsTest, TakesAnyOtherSettingForNo) {
    Stored.Values = {{"Options/ContextMenu", "yes"}, {"Options/Desktop", "1"}, {"Options/Verify", "Yes"}};
    EXPECT_FALSE(IsTicked("chkVerify"));
    EXPECT_FALSE(IsTicked("chkDesktop"));
    EXPECT_FALSE(IsTicked("chkFlashMenu"));
}

TEST_F(frmOptionsTest, SelectsDisable) {
    Stored["Options/LogOption"] = "&Disable";
    EXPECT_THAT(Selected(), ElementsAre(0));
}

TEST_F(frmOptionsTest, SelectsSummary) {
    Stored["Options/LogOption"] = "&Summary";
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(frmOptionsTest, SelectsAll) {
    Stored["Options/LogOption"] = "&All";
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(frmOptionsTest, SelectsSummaryForAnyOtherSetting) {
    Stored["Options/LogOption"] = "All";
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(frmOptionsTest, SelectsSummaryForNoSetting) {
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(frmOptionsTest, PutsBothOnTheDesktopAndStoresAllOnOK) {
    Tick("chkVerify");
    Tick("chkDesktop");
    Tick("chkFlashMenu");
    Tick("optLogOption_2");
    Click("cmdOK");
    EXPECT_THAT(Done, ElementsAre("register /opt/burnwick/Burnwick", "shortcut /opt/burnwick/Burnwick",
                                  "Options/ContextMenu=Yes", "Options/Desktop=Yes", "Options/LogOption=&All",
                                  "Options/Verify=1"));
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmOptionsTest, TakesAnOptionWhoseShortcutKeyIsFollowedByEnterAtOnce) {
    Press(Qt::Key_A, Qt::AltModifier);
    Press(Qt::Key_Return);
    EXPECT_THAT(Done, ::testing::Contains("Options/LogOption=&All"));
}

TEST_F(frmOptionsTest, TakesBothFromTheDesktopOnOK) {
    Stored.Values = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "Yes"}, {"Options/Verify", "1"}};
    Tick("chkVerify");
    Tick("chkDesktop");
    Tick("chkFlashMenu");
    Tick("optLogOption_0");
    Click("cmdOK");
    EXPECT_THAT(Done, ElementsAre("unregister", "no shortcut", "Options/ContextMenu=No", "Options/Desktop=No",
                                  "Options/LogOption=&Disable", "Options/Verify=0"));
}

TEST_F(frmOptionsTest, StoresWhatItBeganWithOnOK) {
    Stored.Values = {{"Options/LogOption", "nonsense"}};
    Click("cmdOK");
    EXPECT_THAT(Done, AllOf(Contains("Options/LogOption=&Summary"), Contains("Options/Verify=0")));
}

TEST_F(frmOptionsTest, ChangesNothingOnCancel) {
    Tick("chkFlashMenu");
    Tick("chkDesktop");
    Click("cmdCancel");
    EXPECT_THAT(Done, IsEmpty());
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmOptionsTest, TakesEscapeForCancel) {
    Tick("chkVerify");
    Press(Qt::Key_Escape);
    EXPECT_THAT(Done, IsEmpty());
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmOptionsTest, TakesEnterForOK) {
    Press(Qt::Key_Return);
    EXPECT_THAT(Done, Not(IsEmpty()));
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmOptionsTest, BeginsWithTheVerification) {
    EXPECT_EQ(Focus(), "chkVerify");
}

TEST_F(frmOptionsTest, IsWalkedThroughWithTheTabKey) {
    Stored["Options/LogOption"] = "&Disable";
    std::vector<std::string> stops;
    for (int stop = 0; stop < 7; ++stop) {
        Form();
        stops.push_back(Focus());
        Press(Qt::Key_Tab);
    }
    EXPECT_THAT(stops, ElementsAre("chkVerify", "optLogOption_0", "chkDesktop", "chkFlashMenu", "cmdOK",
                                   "cmdCancel", "chkVerify"))
        << "one stop for all log options";
}

TEST_F(frmOptionsTest, SelectsALogOptionByItsAccessKey) {
    Form();
    Press(Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return IsTicked("optLogOption_2"); }));
    Press(Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return IsTicked("optLogOption_1"); }));
}

TEST_F(frmOptionsTest, SharesAnAccessKeyBetweenTwoControls) {
    Form();
    Press(Qt::Key_D, Qt::AltModifier);
    const std::string first = Focus();
    Press(Qt::Key_D, Qt::AltModifier);
    EXPECT_THAT((std::vector{first, Focus()}),
                ::testing::UnorderedElementsAre("optLogOption_0", "chkDesktop"));
    EXPECT_FALSE(IsTicked("chkDesktop")) << "it only gets the focus";
}

TEST_F(frmOptionsTest, CallsItsControlsByTheirNames) {
    for (const char* const name : {"chkVerify", "optLogOption_0", "optLogOption_1", "optLogOption_2",
                                   "chkDesktop", "chkFlashMenu", "cmdOK", "cmdCancel"}) {
        EXPECT_EQ(Find(name).accessibleName(), name);
    }
}

TEST_F(frmOptionsTest, StandsInTheMiddleOfTheScreen) {
    EXPECT_TRUE(StandsInTheMiddle());
}

TEST_F(frmOptionsTest, CannotBeResized) {
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
}

TEST_F(frmOptionsTest, HasItsPictureTaken) {
    Stored.Values = {{"Options/ContextMenu", "Yes"},
                     {"Options/Desktop", "No"},
                     {"Options/Verify", "1"},
                     {"Options/LogOption", "&All"}};
    TakePicture("frmOptions");
}

}  // namespace burnwick::test
