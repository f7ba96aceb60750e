#include "settings/frmChipSelect.h"

#include <QRadioButton>
#include <array>
#include <map>
#include <vector>

#include "gui/FormTest.h"
#include "support/FakeSettings.h"

namespace burnwick::test {

using ::testing::IsEmpty;

class frmChipSelectTest : public FormTest {
protected:
    std::unique_ptr<QDialog> New() override {
        Stored.OnStore = [this](const auto& name, const auto& value) { Written[name] = value; };
        return std::make_unique<frmChipSelect>(Stored);
    }

    int UploadBlocks() { return dynamic_cast<frmChipSelect&>(Form()).UploadBlocks(); }
    static std::string Option(int index) { return "optChipSize_" + std::to_string(index); }
    bool IsSelected(int index) { return Find<QRadioButton>(Option(index)).isChecked(); }
    std::vector<int> Selected() {
        std::vector<int> selected;
        for (int index = 0; index < 4; ++index) {
            if (IsSelected(index)) {
                selected.push_back(index);
            }
        }
        return selected;
    }

    FakeSettings Stored;
    std::map<std::string, std::string> Written;
};

TEST_F(frmChipSelectTest, AsksForTheChipSize) {
    EXPECT_EQ(Form().windowTitle(), "Select Chip Size");
    EXPECT_EQ(Title("fraChipSize"), "Select Chip Size:");
    EXPECT_EQ(Text("cmdOK"), "OK");
    EXPECT_EQ(Text("cmdCancel"), "Cancel");
    EXPECT_TRUE(Form().isModal());
}

TEST_F(frmChipSelectTest, OffersFourSizes) {
    EXPECT_EQ(Text(Option(0)), "&1Mbit");
    EXPECT_EQ(Text(Option(1)), "&2Mbit");
    EXPECT_EQ(Text(Option(2)), "&4Mbit");
    EXPECT_EQ(Text(Option(3)), "&8Mbit");
}

TEST_F(frmChipSelectTest, Selects4MbitAtFirst) {
    EXPECT_THAT(Selected(), ::testing::ElementsAre(2));
}

TEST_F(frmChipSelectTest, SelectsTheStoredSize) {
    Stored["ChipSelect/UploadChipSize"] = "0";
    EXPECT_THAT(Selected(), ::testing::ElementsAre(0));
}

TEST_F(frmChipSelectTest, Selects4MbitForAStoredTextThatIsNoSize) {
    Stored["ChipSelect/UploadChipSize"] = "9";
    EXPECT_THAT(Selected(), ::testing::ElementsAre(2));
}

TEST_F(frmChipSelectTest, SelectsTheSizeThatIsClicked) {
    Tick(Option(1));
    EXPECT_THAT(Selected(), ::testing::ElementsAre(1));
}

TEST_F(frmChipSelectTest, GivesTheBlocksOfTheSelectedSizeOnOK) {
    const std::array<int, 4> blocks{256, 1024, 2048, 4096};
    for (int index = 0; index < 4; ++index) {
        Form().show();
        Tick(Option(index));
        Click("cmdOK");
        EXPECT_EQ(Form().result(), QDialog::Accepted);
        EXPECT_EQ(UploadBlocks(), blocks.at(static_cast<std::size_t>(index)));
    }
}

TEST_F(frmChipSelectTest, StoresTheSelectedIndexOnOK) {
    Tick(Option(3));
    Click("cmdOK");
    EXPECT_EQ(Written, (std::map<std::string, std::string>{{"ChipSelect/UploadChipSize", "3"}}));
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmChipSelectTest, StoresTheSizeThatItBeganWithOnOK) {
    Click("cmdOK");
    EXPECT_EQ(Written, (std::map<std::string, std::string>{{"ChipSelect/UploadChipSize", "2"}}));
}

TEST_F(frmChipSelectTest, StoresNothingBeforeOK) {
    Tick(Option(3));
    EXPECT_THAT(Written, IsEmpty());
    EXPECT_EQ(UploadBlocks(), 0);
}

TEST_F(frmChipSelectTest, StoresNothingOnCancel) {
    Tick(Option(3));
    Click("cmdCancel");
    EXPECT_THAT(Written, IsEmpty());
    EXPECT_EQ(UploadBlocks(), 0);
    EXPECT_EQ(Form().result(), QDialog::Rejected);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmChipSelectTest, TakesEnterForOK) {
    Press(Qt::Key_Return);
    EXPECT_EQ(UploadBlocks(), 2048);
    EXPECT_EQ(Written, (std::map<std::string, std::string>{{"ChipSelect/UploadChipSize", "2"}}));
}

TEST_F(frmChipSelectTest, TakesEscapeForCancel) {
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(UploadBlocks(), 0);
    EXPECT_THAT(Written, IsEmpty());
}

TEST_F(frmChipSelectTest, TakesItsClosingForCancel) {
    Form().close();
    EXPECT_EQ(UploadBlocks(), 0);
    EXPECT_THAT(Written, IsEmpty());
}

TEST_F(frmChipSelectTest, SelectsASizeByItsShortcutKey) {
    // The button is seen to go down first.
    Press(Qt::Key_8, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return IsSelected(3); }));
    Press(Qt::Key_1, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return IsSelected(0); }));
}

TEST_F(frmChipSelectTest, TakesASizeWhoseShortcutKeyIsFollowedByEnterAtOnce) {
    Press(Qt::Key_1, Qt::AltModifier);
    Press(Qt::Key_Return);
    EXPECT_EQ(UploadBlocks(), 256);
    EXPECT_EQ(Written, (std::map<std::string, std::string>{{"ChipSelect/UploadChipSize", "0"}}));
}

TEST_F(frmChipSelectTest, SelectsTheNextSizeByAnArrowKey) {
    Press(Qt::Key_Down);
    EXPECT_THAT(Selected(), ::testing::ElementsAre(3));
}

TEST_F(frmChipSelectTest, BeginsAtTheSelectedSize) {
    Stored["ChipSelect/UploadChipSize"] = "1";
    EXPECT_EQ(Focus(), Option(1));
}

TEST_F(frmChipSelectTest, IsWalkedThroughWithTheTabKey) {
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), "cmdOK");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), "cmdCancel");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), Option(2)) << "one stop for all sizes";
}

TEST_F(frmChipSelectTest, CallsItsControlsByTheirNames) {
    for (const char* name : {"optChipSize_0", "optChipSize_1", "optChipSize_2", "optChipSize_3",
                             "fraChipSize", "cmdOK", "cmdCancel"}) {
        EXPECT_EQ(Find(name).accessibleName(), name);
    }
}

TEST_F(frmChipSelectTest, StandsInTheMiddleOfTheScreen) {
    EXPECT_TRUE(StandsInTheMiddle());
}

TEST_F(frmChipSelectTest, StandsThereWhereverItsParentIs) {
    QWidget parent;
    parent.setGeometry(0, 0, 50, 50);
    parent.show();
    frmChipSelect form(Stored, &parent);
    form.show();
    const QPoint away = form.frameGeometry().center() - parent.screen()->availableGeometry().center();
    EXPECT_LE(away.manhattanLength(), 2);
}

TEST_F(frmChipSelectTest, CannotBeResized) {
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
    EXPECT_EQ(Form().size(), Form().sizeHint());
}

TEST_F(frmChipSelectTest, TellsScreenReadersTheSizes) {
    EXPECT_EQ(Find<QWidget>("optChipSize_0").accessibleDescription(), "1Mbit");
    EXPECT_EQ(Find<QWidget>("optChipSize_3").accessibleDescription(), "8Mbit");
}

TEST_F(frmChipSelectTest, HasItsPictureTaken) {
    TakePicture("frmChipSelect");
}

}  // namespace burnwick::test
