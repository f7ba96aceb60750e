// How the compare dialog takes two files, and what it says of them.
#include "gui/frmFileCompareTest.h"

#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QListView>
#include <QScreen>
#include <algorithm>
#include <filesystem>

#include "support/ShutFile.h"

namespace burnwick::test {

namespace fs = std::filesystem;

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST_F(frmFileCompareTest, AsksForTwoFiles) {
    EXPECT_EQ(Form().windowTitle(), "File Compare");
    EXPECT_EQ(Find<QGroupBox>("Frame1").title(), "File Selection:");
    EXPECT_EQ(Find<QLabel>("lblFile1").text(), "File &1:");
    EXPECT_EQ(Find<QLabel>("lblFile2").text(), "File &2:");
    EXPECT_EQ(CompareButton().text(), "&Compare");
    EXPECT_EQ(Button("cmdClose").text(), "C&lose");
    EXPECT_EQ(Status(), "Status:");
    EXPECT_TRUE(frmFileCompare({}).isModal());
}

TEST_F(frmFileCompareTest, CallsItsControlsByTheirNames) {
    for (const char* name : {"Frame1", "txtFile1", "txtFile2", "cmdFile1", "cmdFile2", "cmdCompare",
                             "cmdClose", "lblStatus", "cmdDifferences", "grdDifferences", "cmdCopy"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleName(), name);
    }
}

TEST_F(frmFileCompareTest, StandsInTheMiddleOfTheScreen) {
    EXPECT_TRUE(StandsInTheMiddle());
}

TEST_F(frmFileCompareTest, ComparesAgainOnceBothFilesAreTyped) {
    User.TypeFile(Here);
    Click("cmdFile1");
    EXPECT_FALSE(CompareButton().isEnabled());
    QTest::keyClicks(&File(2), "b");
    EXPECT_TRUE(CompareButton().isEnabled());
}

TEST_F(frmFileCompareTest, ComparesNothingWhileAChosenFileIsTheOnlyOne) {
    Choose("a.bin", "");
    User.Escape();
    Click("cmdFile2");
    EXPECT_FALSE(CompareButton().isEnabled());
}

TEST_F(frmFileCompareTest, TakesNoDroppedAddressForAPath) {
    EXPECT_FALSE(File(1).acceptDrops());
    EXPECT_FALSE(File(2).acceptDrops());
}

TEST_F(frmFileCompareTest, TakesAFileFromItsDialog) {
    User.TypeFile(Here);
    Click("cmdFile1");
    EXPECT_EQ(File(1).text().toStdString(), Here);
    EXPECT_FALSE(CompareButton().isEnabled());
    User.TypeFile(Copy);
    Click("cmdFile2");
    EXPECT_EQ(File(2).text().toStdString(), Copy);
    EXPECT_TRUE(CompareButton().isEnabled());
    EXPECT_EQ(Form().focusWidget(), &CompareButton());
    EXPECT_THAT(User.Dialogs(), ElementsAre("Select File 1", "Select File 2"));
}

TEST_F(frmFileCompareTest, LeavesTheTextWhenTheDialogIsCancelled) {
    Choose("a.bin", "b.bin");
    for (const char* button : {"cmdFile1", "cmdFile2"}) {
        User.Escape();
        Click(button);
    }
    EXPECT_EQ(File(1).text(), "a.bin");
    EXPECT_EQ(File(2).text(), "b.bin");
    EXPECT_TRUE(CompareButton().isEnabled());
}

TEST_F(frmFileCompareTest, BeginsInTheFolderThatWasUsedLast) {
    LastPath = Folder.Path().string();
    Folder.Write("UPPER.BIN", {});
    Folder.Write("text.txt", {});
    User.Next([this](QDialog& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        EXPECT_EQ(QDir::toNativeSeparators(files.directory().path()).toStdString(), LastPath);
        EXPECT_THAT(files.nameFilters(), ElementsAre("Binary File (*.Bin)"));
        EXPECT_THAT(files.selectedFiles(), IsEmpty());
        auto& list = *files.findChild<QListView*>("listView");
        const auto shown = [&list] {
            QStringList names;
            for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
                names << list.model()->index(row, 0, list.rootIndex()).data().toString();
            }
            names.sort();
            return names;
        };
        EXPECT_TRUE(QTest::qWaitFor([&shown] { return shown().size() == 3; }))
            << shown().join(' ').toStdString();
        EXPECT_EQ(shown(), QStringList({"UPPER.BIN", "copy.bin", "here.bin"}));
        dialog.reject();
    });
    Click("cmdFile1");
}

TEST_F(frmFileCompareTest, AsksForAFileThoughTheLastFolderIsGone) {
    LastPath = Folder / "gone/\n<b>&" + std::string(4000, 'x');
    User.TypeFile(Here);
    Click("cmdFile1");
    EXPECT_EQ(File(1).text().toStdString(), Here);
}

TEST_F(frmFileCompareTest, TellsIdenticalFiles) {
    Compare(Here, Copy);
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
    EXPECT_EQ(Beeps, 1);
}

TEST_F(frmFileCompareTest, TellsOneDifferentByte) {
    CompareWithOther({0x1000});
    EXPECT_EQ(Status(), "Status: 1 byte is different.");
    EXPECT_EQ(Beeps, 1);
}

TEST_F(frmFileCompareTest, TellsManyDifferentBytesWithoutSeparators) {
    std::vector<std::size_t> places(1234);
    std::generate(places.begin(), places.end(), [at = std::size_t{0x1000}]() mutable { return at += 256; });
    CompareWithOther(places, "C0DE0149", 0x80000);
    EXPECT_EQ(Status(), "Status: 1234 bytes are different.");
}

TEST_F(frmFileCompareTest, TellsIdenticalFilesThatDifferOnlyWhereNothingIsCompared) {
    CompareWithOther({0xFF00, 0xFFFF, 0x30000, 0x3FFFF}, "BC0DE128");
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
    EXPECT_FALSE(Disclosure().isEnabled());
}

TEST_F(frmFileCompareTest, TellsDifferentLengths) {
    Compare(Here, Folder.Write("short.bin", ImageBuilder(100).Build()));
    EXPECT_EQ(Status(), "Status: Error: File size mismatched.");
    EXPECT_EQ(Beeps, 1);
}

TEST_F(frmFileCompareTest, TellsDifferentTypes) {
    Compare(Here, Folder.Write("other.bin", ImageBuilder(0x40000).TypeCode("C0DE0157").Build()));
    EXPECT_EQ(Status(), "Status: Error: File type mismatched.");
}

TEST_F(frmFileCompareTest, ComparesEmptyFiles) {
    Compare(Folder.Write("1.bin", {}), Folder.Write("2.bin", {}));
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
}

// What files are refused, the box that tells it, and the status.
struct Refused {
    std::string File1;
    std::string File2;
    std::string Caption;
    std::string Message;
};

class frmFileCompareRefusal : public frmFileCompareTest {
protected:
    void ExpectRefusal(const Refused& refused) {
        User.ClickInBox(QMessageBox::Ok);
        Compare(refused.File1, refused.File2);
        ASSERT_FALSE(User.Boxes().empty());
        const Answers::Box& box = User.Boxes().back();
        EXPECT_EQ(box.Caption, refused.Caption);
        EXPECT_EQ(box.Text, refused.Message + "\t");
        EXPECT_EQ(box.Icon, QMessageBox::Information);
        EXPECT_EQ(box.Buttons, QMessageBox::Ok);
        EXPECT_EQ(Status(), "Status: " + refused.Message);
        EXPECT_EQ(Beeps, 0);
        EXPECT_TRUE(CompareButton().isEnabled()) << "for another try";
        EXPECT_TRUE(Form().isVisible());
    }
};

TEST_F(frmFileCompareRefusal, WithoutAFile1) {
    ExpectRefusal({"", "", "File 1", "Select a file for File 1."});
    ExpectRefusal({"", Here, "File 1", "Select a file for File 1."});
}

TEST_F(frmFileCompareRefusal, WithoutAFile2) {
    ExpectRefusal({Here, "", "File 2", "Select a file for File 2."});
}

TEST_F(frmFileCompareRefusal, OfAFile1ThatDoesNotExist) {
    ExpectRefusal({Folder / "gone.bin", Here, "File 1", "File 1 does not exist."});
    EXPECT_EQ(Form().focusWidget(), &File(1));
}

TEST_F(frmFileCompareRefusal, OfAFile2ThatDoesNotExist) {
    ExpectRefusal({Here, Folder / "gone.bin", "File 2", "File 2 does not exist."});
    EXPECT_EQ(Form().focusWidget(), &File(2));
    EXPECT_EQ(File(2).selectedText(), File(2).text());
}

TEST_F(frmFileCompareRefusal, OfAFolder) {
    ExpectRefusal({Folder.Path().string(), Here, "File 1", "File 1 does not exist."});
}

TEST_F(frmFileCompareRefusal, OfNamesThatNoFileCanHave) {
    ExpectRefusal({Folder / std::string(4000, 'x'), Here, "File 1", "File 1 does not exist."});
    ExpectRefusal({Here, "\n<b>&", "File 2", "File 2 does not exist."});
}

TEST_F(frmFileCompareRefusal, OfTheSameFile) {
    ExpectRefusal({Here, Here, "Same File Name", "File 1 and File 2 have the same filename."});
}

TEST_F(frmFileCompareRefusal, OfTheSameNameInAnotherCase) {
    const std::string lower = Folder.Write("\u00E4.bin", ImageBuilder(100).Build());
    const std::string upper = Folder.Write("\u00C4.BIN", ImageBuilder(100).Build());
    ExpectRefusal({lower, upper, "Same File Name", "File 1 and File 2 have the same filename."});
}

TEST_F(frmFileCompareTest, TellsWhyAFileCannotBeRead) {
    {
        const ShutFile shut(Copy);
        Compare(Here, Copy);
    }
    EXPECT_EQ(Status(), "Status: Error: " + Copy + ": Permission denied.");
    EXPECT_TRUE(CompareButton().isEnabled());
}

TEST_F(frmFileCompareTest, FindsFilesWhoseNamesMeanSomethingToOthers) {
    const Bytes image = ImageBuilder(1000).Build();
    Compare(Folder.Write("one & %1 'x' #.bin", image), Folder.Write(" zwei \u00FC \u20AC.bin", image));
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
}

TEST_F(frmFileCompareTest, TellsNothingOfFilesThatWereNotCompared) {
    CompareWithOther({0x1000});
    QTest::keyClicks(&File(1), "x");
    EXPECT_EQ(Status(), "Status:");
    EXPECT_FALSE(Disclosure().isEnabled());
}

TEST_F(frmFileCompareTest, CannotBeginASecondComparisonMeanwhile) {
    bool looked = false;
    Meanwhile([this, &looked] {
        looked = true;
        EXPECT_FALSE(CompareButton().isEnabled());
        EXPECT_FALSE(Find<QGroupBox>("Frame1").isEnabled());
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        EXPECT_EQ(Beeps, 0);
        Choose(Here, Copy);
        Click("cmdCompare");
        Press(Qt::Key_Return);
        EXPECT_FALSE(CompareButton().isEnabled()) << "whatever happens to the texts";
    });
    CompareWithOther({0x1000});
    EXPECT_TRUE(looked);
    EXPECT_TRUE(CompareButton().isEnabled());
    EXPECT_TRUE(CompareButton().hasFocus());
    EXPECT_TRUE(Find<QGroupBox>("Frame1").isEnabled());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Beeps, 1);
}

TEST_F(frmFileCompareTest, ShowsWhatItDoesMeanwhile) {
    Meanwhile([this] {
        EXPECT_EQ(Status(), "Status: Comparing...");
        Form().grab();
    });
    Compare(Here, Copy);
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
}

TEST_F(frmFileCompareTest, GoesOnAnsweringWhileItComparesLongFiles) {
    const std::string other = Folder / "other.bin";
    for (const std::string& path : {Here, other}) {
        Folder.Write(fs::path(path).filename().string(), ImageBuilder(100).TypeCode("C0DE0149").Build());
        fs::resize_file(path, 200'000'000);
    }
    int beats = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&beats] { ++beats; });
    timer.start(0);
    Compare(Here, other);
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
    EXPECT_GT(beats, 1000);
}

TEST_F(frmFileCompareTest, EndsTheComparisonWhenItIsClosed) {
    const std::vector<std::function<void()>> ways{[this] { Click("cmdClose"); },
                                                  [this] { QTest::keyClick(&Form(), Qt::Key_Escape); },
                                                  [this] { Form().close(); }};
    for (const auto& close : ways) {
        Meanwhile(close);
        Compare(Here, Copy);
        EXPECT_FALSE(Form().isVisible());
        EXPECT_EQ(Beeps, 0);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(Status(), "Status:") << "there is no result";
        Form().show();
    }
    Compare(Here, Copy);
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
}

TEST_F(frmFileCompareTest, MayBeDestroyedInMidComparison) {
    Choose(Here, Copy);
    Meanwhile([this] { Destroy(); });
    CompareButton().click();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Beeps, 0);
}

TEST_F(frmFileCompareTest, ComparesOnEnterAndClosesOnEscape) {
    Choose(Here, Copy);
    File(2).setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(Status(), "Status: File 1 and File 2 are identical.");
    EXPECT_TRUE(File(2).hasFocus());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmFileCompareTest, AsksForAFileOnEnterWithoutOne) {
    Form();
    User.ClickInBox(QMessageBox::Ok);
    Press(Qt::Key_Return);
    EXPECT_EQ(Status(), "Status: Select a file for File 1.");
    EXPECT_EQ(Focus(), "txtFile1");
}

TEST_F(frmFileCompareTest, ClosesOnItsButton) {
    Click("cmdClose");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmFileCompareTest, IsWalkedThroughWithTheTabKey) {
    CompareWithOther({0x1000});
    Click(Disclosure());
    File(1).setFocus();
    for (const char* name : {"cmdFile1", "txtFile2", "cmdFile2", "cmdDifferences", "cmdCompare", "cmdClose",
                             "grdDifferences", "cmdCopy", "txtFile1"}) {
        Press(Qt::Key_Tab);
        EXPECT_EQ(Form().focusWidget()->objectName(), name);
    }
}

TEST_F(frmFileCompareTest, HasAKeyForEachControl) {
    Form();
    Press(Qt::Key_2, Qt::AltModifier);
    EXPECT_TRUE(File(2).hasFocus());
    Press(Qt::Key_1, Qt::AltModifier);
    EXPECT_TRUE(File(1).hasFocus());
    Choose(Here, Copy);
    Press(Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Beeps == 1; }));
    Press(Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form().isVisible(); }));
}

TEST_F(frmFileCompareTest, BeginsAtFile1) {
    EXPECT_TRUE((Form(), File(1).hasFocus()));
}

}  // namespace burnwick::test
