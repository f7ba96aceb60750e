#include "gui/HelpTest.h"

namespace burnwick::test {

namespace {

constexpr const char* Fruits =
    "<h2 id=\"fruits\">Fruits</h2><p>An <b>app</b>le and a pear.</p><table><tr><td>Apple "
    "pie</td></tr></table>"
    "<pre>apple = 1\n</pre>";

}  // namespace

class frmHelpFindTest : public HelpTest {
protected:
    int At() const { return Page().textCursor().selectionStart(); }
    void Type(const char* text) const {
        Press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(Help->focusWidget(), text);
    }
};

TEST_F(frmHelpFindTest, BeginsWithAKey) {
    Open(Fruits);
    Type("pear");
    EXPECT_TRUE(FindBox().hasFocus());
    EXPECT_EQ(FindBox().text(), "pear");
}

TEST_F(frmHelpFindTest, FindsWhatIsTypedAsItIsTyped) {
    Open(Fruits);
    Type("p");
    EXPECT_EQ(Found(), "1 of 8");
    Type("pea");
    EXPECT_EQ(Selected(), "pea");
    EXPECT_EQ(Found(), "1 of 1");
}

TEST_F(frmHelpFindTest, FindsInAnyCaseAndThroughMarkUp) {
    Open(Fruits);
    Type("APPLE");
    EXPECT_EQ(Selected(), "apple");
    EXPECT_EQ(Found(), "1 of 3");
}

TEST_F(frmHelpFindTest, GoesToTheNextAndPastTheLastToTheFirst) {
    Open(Fruits);
    Type("apple");
    const int first = At();
    Press(Qt::Key_Return);
    EXPECT_EQ(Found(), "2 of 3");
    EXPECT_EQ(Selected(), "Apple");
    Press(Qt::Key_Enter);
    EXPECT_EQ(Found(), "3 of 3");
    Press(Qt::Key_Return);
    EXPECT_EQ(Found(), "1 of 3");
    EXPECT_EQ(At(), first);
}

TEST_F(frmHelpFindTest, GoesToTheOneBeforeAndFromTheFirstToTheLast) {
    Open(Fruits);
    Type("apple");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Found(), "3 of 3");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Found(), "2 of 3");
}

TEST_F(frmHelpFindTest, GoesOnByF3FromAnywhere) {
    Open(Fruits);
    Type("apple");
    Page().setFocus();
    Press(Qt::Key_F3);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Found() == "2 of 3"; }));
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Found() == "1 of 3"; }));
}

TEST_F(frmHelpFindTest, GoesOnByItsButtons) {
    Open(Fruits);
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    EXPECT_FALSE(Button("cmdFindPrevious").isEnabled());
    Type("apple");
    QTest::mouseClick(&Button("cmdFindNext"), Qt::LeftButton);
    EXPECT_EQ(Found(), "2 of 3");
    QTest::mouseClick(&Button("cmdFindPrevious"), Qt::LeftButton);
    EXPECT_EQ(Found(), "1 of 3");
}

TEST_F(frmHelpFindTest, TellsBesideTheBoxThatNothingIsFound) {
    Open(Fruits);
    Type("apples");
    EXPECT_EQ(Found(), "Not found");
    EXPECT_EQ(Selected(), "");
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    Press(Qt::Key_Return);
    EXPECT_EQ(Found(), "Not found");
    EXPECT_TRUE(FindBox().hasFocus());
}

TEST_F(frmHelpFindTest, SaysNothingForNothing) {
    Open(Fruits);
    Type("apple");
    FindBox().clear();
    EXPECT_EQ(Found(), "");
    EXPECT_EQ(Selected(), "");
    Press(Qt::Key_Return);
    EXPECT_EQ(Found(), "");
}

TEST_F(frmHelpFindTest, BringsWhatIsFoundIntoView) {
    Open();
    Type("very end");
    EXPECT_EQ(Selected(), "very end");
    EXPECT_TRUE(Page().viewport()->rect().contains(Page().cursorRect()));
    EXPECT_EQ(Entry(), "Commands two");
}

TEST_F(frmHelpFindTest, BeginsAtWhatIsRead) {
    Open();
    ClickEntry("Commands one");
    Type("number 0.");
    EXPECT_EQ(Found(), "3 of 4");
}

TEST_F(frmHelpFindTest, BeginsAtWhatIsReadAfterAnEarlierSearch) {
    Open();
    Type("number 0.");
    ClickEntry("Commands one");
    Type("number 1.");
    EXPECT_EQ(Found(), "3 of 4");
}

TEST_F(frmHelpFindTest, IsLeftByEscapeBeforeTheWindowIs) {
    Open(Fruits);
    Type("apple");
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Page().hasFocus());
    EXPECT_TRUE(Help->isVisible());
    EXPECT_EQ(Selected(), "apple") << "it can be read on from there";
    Press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Help.isNull(); }));
}

TEST_F(frmHelpFindTest, TakesMarkUpForText) {
    Open("<h2 id=\"a\">A</h2><p>a &lt;b&gt; c</p>");
    Type("<b>");
    EXPECT_EQ(Found(), "1 of 1");
}

TEST_F(frmHelpFindTest, CountsEveryLetterOfALongPage) {
    Open("<p>" + std::string(200'000, ' ') + "</p><p>" + [] {
        std::string words;
        for (int i = 0; i < 100'000; ++i) {
            words += "e ";
        }
        return words;
    }() + "</p>");
    Type("e");
    EXPECT_EQ(Found(), "1 of 100000");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Found(), "100000 of 100000");
}

}  // namespace burnwick::test
