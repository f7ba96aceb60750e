// Help files that are none, or that mean harm.
#include <QDir>
#include <QFile>
#include <QTextBlock>
#include <filesystem>
#include <random>

#include "gui/frmHelpTroubleTest.h"
#include "support/ShutFile.h"

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace fs = std::filesystem;

TEST_F(frmHelpTroubleTest, AFileThatHasGoneIsTold) {
    OpenFile(Files.Path() / "gone.hlp");
    ExpectTrouble("No such file or directory");
    EXPECT_THAT(Shown(), HasSubstr(Files / "gone.hlp"));
}

TEST_F(frmHelpTroubleTest, AFolderIsTold) {
    OpenFile(Files.Path());
    ExpectTrouble("It is not a file.");
}

TEST_F(frmHelpTroubleTest, AFileThatMayNotBeReadIsTold) {
    const std::string file = Files.Write("Burnwick.hlp", {});
    fs::resize_file(file, 100);
    const ShutFile shut(file);
    OpenFile(file);
    ExpectTrouble("Permission denied");
}

TEST_F(frmHelpTroubleTest, AnEmptyFileIsTold) {
    Open("");
    ExpectTrouble("It is empty.");
}

TEST_F(frmHelpTroubleTest, AHugeFileIsTold) {
    const std::string file = Files.Write("Burnwick.hlp", {});
    fs::resize_file(file, std::uintmax_t{64} * 1024 * 1024 * 1024);
    OpenFile(file);
    ExpectTrouble("too large");
}

TEST_F(frmHelpTroubleTest, GarbageIsTold) {
    std::string garbage(1'000'000, ' ');
    std::mt19937 random(7);
    for (char& c : garbage) {
        c = static_cast<char>(random());
    }
    Open("<html>" + garbage);
    ExpectTrouble("It is not a page of text.");
}

TEST_F(frmHelpTroubleTest, AnotherKindOfTextIsTold) {
    Open("[Ports]\r\nCOM1=/dev/ttyS0\r\n");
    ExpectTrouble("It is not a page of text.");
}

TEST_F(frmHelpTroubleTest, TheWindowStaysUsable) {
    Open("");
    Press(Qt::Key_F, Qt::ControlModifier);
    Press(Qt::Key_F3);
    Press(Qt::Key_Left, Qt::AltModifier);
    Press(Qt::Key_Plus, Qt::ControlModifier);
    ExpectTrouble("It is empty.");
    Press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Help.isNull(); }));
}

TEST_F(frmHelpTroubleTest, LinksToAnythingButTheWebLeadNowhere) {
    Open(
        "<p><a href=\"file:///etc/passwd\">first</a> <a href=\"javascript:x\">second</a> "
        "<a href=\"/etc/passwd\">third</a> <a href=\"Burnwick.hlp\">fourth</a> <a "
        "href=\"#nowhere\">fifth</a> "
        "<a href=\"mailto:help@burnwick.example\">sixth</a></p>");
    const std::string before = Shown();
    for (const char* link : {"first", "second", "third", "fourth", "fifth", "sixth"}) {
        ClickLink(link);
    }
    EXPECT_THAT(Opened, ElementsAre("mailto:help@burnwick.example"));
    EXPECT_EQ(Shown(), before);
}

}  // namespace burnwick::test
