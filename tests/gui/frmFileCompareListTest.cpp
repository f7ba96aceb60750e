// The list of the ranges in which two files differ.
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QScreen>
#include <numeric>

#include "gui/frmFileCompareTest.h"

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::StartsWith;

class frmFileCompareListTest : public frmFileCompareTest {
protected:
    std::vector<std::string> Row(int row) {
        std::vector<std::string> texts;
        for (int column = 0; column < List().model()->columnCount(); ++column) {
            texts.push_back(List().model()->index(row, column).data().toString().toStdString());
        }
        return texts;
    }
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
        const QPoint place = List().visualRect(List().model()->index(row, 0)).center();
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers, place);
    }
    std::string Caption() { return Find<QLabel>("lblRanges").text().toStdString(); }
    void ShowThreeRanges() {
        CompareWithOther({0x1000, 0x2001, 0x2002, 0x3003});
        Click(Disclosure());
    }
    void Picture(const std::string& name) { TakePicture("frmFileCompare" + name); }
};

TEST_F(frmFileCompareListTest, HasNothingToShowAtFirst) {
    EXPECT_FALSE(Disclosure().isEnabled());
    EXPECT_FALSE(List().isVisible());
}

TEST_F(frmFileCompareListTest, IsFoldedUpUntilItIsAskedFor) {
    CompareWithOther({0x1000});
    EXPECT_TRUE(Disclosure().isEnabled());
    EXPECT_FALSE(List().isVisible());
    Click(Disclosure());
    EXPECT_TRUE(List().isVisible());
    Click(Disclosure());
    EXPECT_FALSE(List().isVisible());
}

TEST_F(frmFileCompareListTest, TellsOffsetLengthAndBytesOfBoth) {
    ShowThreeRanges();
    const QAbstractItemModel& ranges = *List().model();
    EXPECT_EQ(ranges.rowCount(), 3);
    EXPECT_THAT(Row(0), ElementsAre("00001000", "1", "A5", "00"));
    EXPECT_THAT(Row(1), ElementsAre("00002001", "2", "A5 A5", "01 02"));
    EXPECT_THAT(Row(2), ElementsAre("00003003", "1", "A5", "03"));
    EXPECT_EQ(ranges.headerData(0, Qt::Horizontal), "Offset");
    EXPECT_EQ(ranges.headerData(3, Qt::Horizontal), "File 2");
    EXPECT_EQ(Caption(), "3 ranges.");
}

TEST_F(frmFileCompareListTest, TellsThatThereAreMoreThanAThousand) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < 1500; ++i) {
        places.push_back(0x1000 + 2 * i);
    }
    CompareWithOther(places);
    Click(Disclosure());
    EXPECT_EQ(Status(), "Status: 1500 bytes are different.");
    EXPECT_EQ(List().model()->rowCount(), 1000);
    EXPECT_EQ(Caption(), "The first 1000 ranges. There are more.");
}

TEST_F(frmFileCompareListTest, GivesTheRoomBackWhenItIsFoldedUp) {
    CompareWithOther({0x1000});
    const QSize before = Form().size();
    Click(Disclosure());
    EXPECT_GE(Form().height(), before.height() + 100);
    EXPECT_EQ(Form().width(), before.width()) << "few bytes need no more";
    Click(Disclosure());
    EXPECT_EQ(Form().size(), before);
}

TEST_F(frmFileCompareListTest, IsAsWideAsItsBytesNeed) {
    std::vector<std::size_t> places(100);
    std::iota(places.begin(), places.end(), 0x1000U);
    CompareWithOther(places);
    const QSize before = Form().size();
    Click(Disclosure());
    const QRect screen = Form().screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(Form().frameGeometry()));
    const int needed = static_cast<QAbstractItemView&>(List()).sizeHintForColumn(2);
    const bool isAsWideAsCanBe = Form().frameGeometry().width() == screen.width();
    EXPECT_TRUE(isAsWideAsCanBe || QTest::qWaitFor([&] { return List().columnWidth(2) >= needed; }));
    EXPECT_THAT(Row(0)[3], StartsWith("00 01 02 03"));
    Click(Disclosure());
    EXPECT_EQ(Form().size(), before) << "and back";
}

TEST_F(frmFileCompareListTest, StaysOnTheScreen) {
    CompareWithOther({0x1000});
    const QRect screen = Form().screen()->availableGeometry();
    Form().move(screen.bottomRight() - QPoint(50, 50));
    Click(Disclosure());
    EXPECT_LE(Form().frameGeometry().bottom(), screen.bottom());
    EXPECT_LE(Form().frameGeometry().right(), screen.right());
}

TEST_F(frmFileCompareListTest, IsFoldedUpByAComparisonWithoutDifferences) {
    ShowThreeRanges();
    Compare(Here, Copy);
    EXPECT_FALSE(List().isVisible());
    EXPECT_FALSE(Disclosure().isEnabled());
    EXPECT_FALSE(Disclosure().isChecked());
    EXPECT_EQ(List().model()->rowCount(), 0);
}

TEST_F(frmFileCompareListTest, IsShownAnewByAnotherComparisonOfTheSameFiles) {
    ShowThreeRanges();
    Folder.Write("2.bin", ImageBuilder(0x40000).Fill(0xA5).TypeCode("C0DE0149").Byte(0x5000, 1).Build());
    Click("cmdCompare");
    EXPECT_TRUE(List().isVisible());
    EXPECT_THAT(Row(0), ElementsAre("00005000", "1", "A5", "01"));
    EXPECT_EQ(List().model()->rowCount(), 1);
}

TEST_F(frmFileCompareListTest, IsCopiedWholeWhenNothingIsSelected) {
    ShowThreeRanges();
    Click("cmdCopy");
    EXPECT_EQ(Clipboard(),
              "Offset\tLength\tFile 1\tFile 2\n"
              "00001000\t1\tA5\t00\n"
              "00002001\t2\tA5 A5\t01 02\n"
              "00003003\t1\tA5\t03\n");
}

TEST_F(frmFileCompareListTest, IsCopiedAsFarAsItIsSelectedInItsOrder) {
    ShowThreeRanges();
    ClickRow(2);
    ClickRow(0, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(),
              "Offset\tLength\tFile 1\tFile 2\n"
              "00001000\t1\tA5\t00\n"
              "00003003\t1\tA5\t03\n");
    ClickRow(1);
    Click("cmdCopy");
    EXPECT_EQ(Clipboard(), "Offset\tLength\tFile 1\tFile 2\n00002001\t2\tA5 A5\t01 02\n");
}

TEST_F(frmFileCompareListTest, IsSelectedWholeByAKey) {
    ShowThreeRanges();
    ClickRow(1);
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(List().selectionModel()->selectedRows().size(), 3);
}

TEST_F(frmFileCompareListTest, HasAMenuToCopyAndSelect) {
    ShowThreeRanges();
    std::vector<std::string> entries;
    for (const QAction* const action : List().actions()) {
        entries.push_back(action->text().toStdString());
    }
    EXPECT_EQ(List().contextMenuPolicy(), Qt::ActionsContextMenu);
    EXPECT_THAT(entries, ElementsAre("Copy", "Select All"));
    List().actions().at(0)->trigger();
    EXPECT_THAT(Clipboard(), StartsWith("Offset\tLength\tFile 1\tFile 2\n00001000"));
}

TEST_F(frmFileCompareListTest, IsUnfoldedAndCopiedByItsKeys) {
    CompareWithOther({0x1000});
    Press(Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return List().isVisible(); }));
    QGuiApplication::clipboard()->clear();
    Press(Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([] { return !Clipboard().empty(); }));
}

TEST_F(frmFileCompareListTest, HasItsPictureTaken) {
    Form();
    Picture("");
    std::vector<std::size_t> places{0x1000, 0x1004, 0x1005, 0x2003, 0x2005, 0x2006, 0x2007, 0x3000};
    CompareWithOther(places);
    Picture("-compared");
    Click(Disclosure());
    Picture("-list");
    for (std::size_t at = 0x5000; at < 0x5100; ++at) {
        places.push_back(at);
    }
    for (std::size_t at = 0x6000; at < 0x7000; at += 2) {
        places.push_back(at);
    }
    Click(Disclosure());
    CompareWithOther(places);
    Click(Disclosure());
    ClickRow(1);
    Picture("-long-list");
}

}  // namespace burnwick::test
