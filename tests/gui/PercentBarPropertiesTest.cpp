#include "engine/PercentBar.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QAccessibleValueInterface>

namespace burnwick::test {

// What the bar is to a form and to a screen reader.
class PercentBarProperties : public ::testing::Test {
protected:
    PercentBarProperties() { Sut.setObjectName("PercentBar1"); }

    PercentBar Sut;
};

TEST_F(PercentBarProperties, HasItsNameForACaptionUntilOneIsSet) {
    EXPECT_EQ(Sut.Caption(), "PercentBar1");
    Sut.setObjectName("Waiting");
    EXPECT_EQ(Sut.Caption(), "Waiting");
    Sut.SetCaption("");
    EXPECT_EQ(Sut.Caption(), "");
}

TEST_F(PercentBarProperties, BeginsWithTheseValues) {
    EXPECT_EQ(Sut.Max(), 100);
    EXPECT_EQ(Sut.Min(), 0);
    EXPECT_EQ(Sut.Value(), 0);
    EXPECT_EQ(Sut.Version(), "1.00.1001");
}

TEST_F(PercentBarProperties, HoldsNumbersAtTheEndsOf16Bits) {
    Sut.SetMax(40'000);
    EXPECT_EQ(Sut.Max(), 32'767);
    Sut.SetMin(-40'000);
    EXPECT_EQ(Sut.Min(), -32'768);
    Sut.SetValue(40'000);
    EXPECT_EQ(Sut.Value(), 32'767);
}

TEST_F(PercentBarProperties, HasPropertiesThatAFormCanKeep) {
    EXPECT_TRUE(Sut.setProperty("BackColor", QColor(Qt::red)));
    EXPECT_TRUE(Sut.setProperty("ForeColor", QColor(Qt::blue)));
    EXPECT_TRUE(Sut.setProperty("Caption", "Waiting"));
    EXPECT_TRUE(Sut.setProperty("Max", 7));
    EXPECT_TRUE(Sut.setProperty("Min", 1));
    EXPECT_TRUE(Sut.setProperty("Value", 7));
    EXPECT_FALSE(Sut.setProperty("Version", "2"));
    EXPECT_EQ(Sut.BackColor(), QColor(Qt::red));
    EXPECT_EQ(Sut.ForeColor(), QColor(Qt::blue));
    EXPECT_EQ(Sut.Text(), "Waiting");
    EXPECT_EQ(Sut.property("Max"), 7);
    EXPECT_EQ(Sut.property("Min"), 1);
    EXPECT_EQ(Sut.Percent(), 100);
    EXPECT_EQ(Sut.property("Version"), "1.00.1001");
}

TEST_F(PercentBarProperties, IsAProgressBarToAScreenReader) {
    Sut.SetMax(3);
    Sut.SetValue(1);
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&Sut);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::ProgressBar);
    EXPECT_EQ(seen->text(QAccessible::Value), "34%");
    ASSERT_NE(seen->valueInterface(), nullptr);
    EXPECT_EQ(seen->valueInterface()->currentValue(), 34);
    EXPECT_EQ(seen->valueInterface()->maximumValue(), 100);
}

TEST_F(PercentBarProperties, IsAboutOneAndAHalfLinesHigh) {
    const int line = Sut.fontMetrics().height();
    EXPECT_GT(Sut.sizeHint().height(), line * 3 / 2);
    EXPECT_LT(Sut.sizeHint().height(), line * 7 / 4);
    EXPECT_GE(Sut.minimumSizeHint().width(), Sut.fontMetrics().horizontalAdvance("100%"));
}

}  // namespace burnwick::test
