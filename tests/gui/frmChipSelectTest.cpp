#include "settings/frmChipSelect.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTest>
#include <map>

namespace burnwick::test {

using ::testing::IsEmpty;
using Settings = std::map<std::string, std::string>;

class frmChipSelectTest : public ::testing::Test {
protected:
    frmChipSelect& Form() {
        if (!Form_) {
            Form_ = std::make_unique<frmChipSelect>(
                [this](const auto& section, const auto& key) { return Stored[section + "/" + key]; },
                [this](const auto& section, const auto& key, const auto& value) {
                    Written[section + "/" + key] = value;
                });
            Form_->show();
            Form_->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(Form_.get()));
        }
        return *Form_;
    }

    template <typename Control>
    Control& Find(const char* name) {
        auto* const control = Form().findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    QRadioButton& Option(int index) {
        return Find<QRadioButton>(qPrintable(QString("optChipSize_%1").arg(index)));
    }
    QPushButton& Button(const char* name) { return Find<QPushButton>(name); }

    std::vector<int> Selected() {
        std::vector<int> selected;
        for (int index = 0; index < 4; ++index) {
            if (Option(index).isChecked()) {
                selected.push_back(index);
            }
        }
        return selected;
    }

    // On its button, left of the text.
    void Click(QRadioButton& option) {
        QTest::mouseClick(&option, Qt::LeftButton, {}, QPoint(8, option.height() / 2));
    }
    void Click(QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Form().focusWidget(), key, modifiers);
    }

    Settings Stored;
    Settings Written;

private:
    std::unique_ptr<frmChipSelect> Form_;
};

TEST_F(frmChipSelectTest, AsksForTheChipSize) {
    EXPECT_EQ(Form().windowTitle(), "Select Chip Size");
    EXPECT_EQ(Find<QGroupBox>("fraChipSize").title(), "Select Chip Size:");
    EXPECT_EQ(Button("cmdOK").text(), "OK");
    EXPECT_EQ(Button("cmdCancel").text(), "Cancel");
    EXPECT_TRUE(Form().isModal());
}

TEST_F(frmChipSelectTest, OffersFourSizes) {
    EXPECT_EQ(Option(0).text(), "&1Mbit");
    EXPECT_EQ(Option(1).text(), "&2Mbit");
    EXPECT_EQ(Option(2).text(), "&4Mbit");
    EXPECT_EQ(Option(3).text(), "&8Mbit");
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
    Click(Option(1));
    EXPECT_THAT(Selected(), ::testing::ElementsAre(1));
}

TEST_F(frmChipSelectTest, GivesTheBlocksOfTheSelectedSizeOnOK) {
    const std::array<int, 4> blocks{256, 1024, 2048, 4096};
    for (int index = 0; index < 4; ++index) {
        Form().show();
        Click(Option(index));
        Click(Button("cmdOK"));
        EXPECT_EQ(Form().result(), QDialog::Accepted);
        EXPECT_EQ(Form().UploadBlocks(), blocks.at(static_cast<std::size_t>(index)));
    }
}

TEST_F(frmChipSelectTest, StoresTheSelectedIndexOnOK) {
    Click(Option(3));
    Click(Button("cmdOK"));
    EXPECT_EQ(Written, (Settings{{"ChipSelect/UploadChipSize", "3"}}));
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmChipSelectTest, StoresTheSizeThatItBeganWithOnOK) {
    Click(Button("cmdOK"));
    EXPECT_EQ(Written, (Settings{{"ChipSelect/UploadChipSize", "2"}}));
}

TEST_F(frmChipSelectTest, StoresNothingBeforeOK) {
    Click(Option(3));
    EXPECT_THAT(Written, IsEmpty());
    EXPECT_EQ(Form().UploadBlocks(), 0);
}

TEST_F(frmChipSelectTest, StoresNothingOnCancel) {
    Click(Option(3));
    Click(Button("cmdCancel"));
    EXPECT_THAT(Written, IsEmpty());
    EXPECT_EQ(Form().UploadBlocks(), 0);
    EXPECT_EQ(Form().result(), QDialog::Rejected);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmChipSelectTest, TakesEnterForOK) {
    Press(Qt::Key_Return);
    EXPECT_EQ(Form().UploadBlocks(), 2048);
    EXPECT_EQ(Written, (Settings{{"ChipSelect/UploadChipSize", "2"}}));
}

TEST_F(frmChipSelectTest, TakesEscapeForCancel) {
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(Form().UploadBlocks(), 0);
    EXPECT_THAT(Written, IsEmpty());
}

TEST_F(frmChipSelectTest, TakesItsClosingForCancel) {
    Form().close();
    EXPECT_EQ(Form().UploadBlocks(), 0);
    EXPECT_THAT(Written, IsEmpty());
}

TEST_F(frmChipSelectTest, SelectsASizeByItsShortcutKey) {
    // The button is seen to go down first.
    Press(Qt::Key_8, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Option(3).isChecked(); }));
    Press(Qt::Key_1, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Option(0).isChecked(); }));
}

TEST_F(frmChipSelectTest, SelectsTheNextSizeByAnArrowKey) {
    Press(Qt::Key_Down);
    EXPECT_THAT(Selected(), ::testing::ElementsAre(3));
}

TEST_F(frmChipSelectTest, BeginsAtTheSelectedSize) {
    Stored["ChipSelect/UploadChipSize"] = "1";
    EXPECT_EQ(Form().focusWidget(), &Option(1));
}

TEST_F(frmChipSelectTest, IsWalkedThroughWithTheTabKey) {
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &Button("cmdOK"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &Button("cmdCancel"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &Option(2)) << "one stop for all sizes";
}

TEST_F(frmChipSelectTest, CallsItsControlsByTheirNames) {
    for (const char* name : {"optChipSize_0", "optChipSize_1", "optChipSize_2", "optChipSize_3",
                             "fraChipSize", "cmdOK", "cmdCancel"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleName(), name);
    }
}

TEST_F(frmChipSelectTest, StandsInTheMiddleOfTheScreen) {
    const QPoint away = Form().frameGeometry().center() - Form().screen()->availableGeometry().center();
    EXPECT_LE(away.manhattanLength(), 2);
}

TEST_F(frmChipSelectTest, StandsThereWhereverItsParentIs) {
    QWidget parent;
    parent.setGeometry(0, 0, 50, 50);
    parent.show();
    frmChipSelect form([](const auto&, const auto&) { return ""; }, nullptr, &parent);
    form.show();
    const QPoint away = form.frameGeometry().center() - parent.screen()->availableGeometry().center();
    EXPECT_LE(away.manhattanLength(), 2);
}

TEST_F(frmChipSelectTest, CannotBeResized) {
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
    EXPECT_EQ(Form().size(), Form().sizeHint());
}

TEST_F(frmChipSelectTest, HasItsPictureTaken) {
    ASSERT_TRUE(QDir().mkpath(PICTURES));
    EXPECT_TRUE(Form().grab().save(PICTURES "/frmChipSelect.png"));
}

}  // namespace burnwick::test
