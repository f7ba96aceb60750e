// Files that cannot be compared, in folders and under names that only POSIX has.
#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>
#include <filesystem>

#include "gui/frmFileCompareTest.h"
#include "support/AnyUser.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using ::testing::StartsWith;

class frmFileComparePosixTest : public frmFileCompareTest {
protected:
    const std::string Here = Folder.Write("here.bin", ImageBuilder(100).Build());
};

TEST_F(frmFileComparePosixTest, FindsFilesWhoseNamesHoldAnything) {
    const Bytes image = ImageBuilder(1000).Build();
    Compare(Folder.Write("one\n<b>&.bin", image), Folder.Write(" two\t.bin ", image));
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
}

TEST_F(frmFileComparePosixTest, TellsOfAFileInAShutFolderThatItCannotBeRead) {
    fs::create_directory(Folder.Path() / "shut");
    const std::string inside = Folder.Write("shut/inside.bin", ImageBuilder(100).Build());
    fs::permissions(Folder.Path() / "shut", fs::perms::none);
    {
        const AnyUser user;
        Compare(inside, Here);
    }
    fs::permissions(Folder.Path() / "shut", fs::perms::owner_all);
    EXPECT_EQ(Status(), "Status: Error: " + inside + ": Permission denied.");
}

TEST_F(frmFileComparePosixTest, ShowsAStatusThatIsTooLongInItsTip) {
    std::string folder = Folder.Path().string();
    for (int i = 0; i < 15; ++i) {
        folder += "/<b>&" + std::string(240, 'x');
    }
    fs::create_directories(folder);
    const std::string path = folder + "/1.bin";
    fs::create_symlink(path, path);
    const QSize size = Form().size();
    Compare(Here, path);
    EXPECT_THAT(Status(), StartsWith("Status: Error: " + path + ": "));
    EXPECT_EQ(Form().size(), size);
    QHelpEvent tip(QEvent::ToolTip, {5, 5}, StatusLabel().mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&StatusLabel(), &tip);
    EXPECT_THAT(StatusLabel().toolTip().toStdString(), ::testing::HasSubstr("&lt;b&gt;")) << "no mark-up";
    QToolTip::hideText();
}

}  // namespace burnwick::test
