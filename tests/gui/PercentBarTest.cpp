#include "engine/PercentBar.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QVBoxLayout>

#include "gui/Picture.h"

namespace burnwick::test {

namespace {

constexpr QSize Size(200, 30);
const QColor Back(255, 255, 200);
const QColor Fore(0, 0, 120);

// What is within the frame.
QImage Inside(const QImage& picture) {
    const int frame = qRound(picture.devicePixelRatio());
    return picture.copy(picture.rect().adjusted(frame, frame, -frame, -frame));
}

QImage Canvas(QSize size, qreal ratio) {
    QImage canvas(size * ratio, QImage::Format_RGB32);
    canvas.setDevicePixelRatio(ratio);
    return canvas;
}

// A text in the middle of a ground.
QImage Written(const QColor& ground, const QColor& ink, const QString& text, qreal ratio = 1) {
    QImage picture = Canvas(Size, ratio);
    picture.fill(ground);
    QPainter painter(&picture);
    painter.setFont(QApplication::font());
    painter.setPen(ink);
    painter.drawText(QRect(QPoint(), Size), Qt::AlignCenter, text);
    return picture;
}

// The same, inverted in so many columns from the left.
QImage Bar(const QString& text, int columns, qreal ratio = 1) {
    QImage picture = Written(Back, Fore, text, ratio);
    const QImage covered = Written(Fore, Back, text, ratio);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < columns; ++x) {
            picture.setPixel(x, y, covered.pixel(x, y));
        }
    }
    return Inside(picture);
}

int DifferentColors(const QImage& picture) {
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            colors.insert(picture.pixel(x, y));
        }
    }
    return static_cast<int>(colors.size());
}

QPalette DarkPalette() {
    QPalette dark(QColor(50, 50, 50), QColor(35, 35, 35));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::ButtonText, Qt::white);
    return dark;
}

}  // namespace

class PercentBarTest : public ::testing::Test {
protected:
    PercentBarTest() {
        Sut.setObjectName("PercentBar1");
        Sut.SetBackColor(Back);
        Sut.SetForeColor(Fore);
        Sut.resize(Size);
    }

    QImage Whole() { return Sut.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    QImage Seen() { return Inside(Whole()); }

    // As on a screen with so many pixels for one.
    QImage SeenAt(qreal ratio) {
        QImage picture = Canvas(Size, ratio);
        Sut.render(&picture);
        return Inside(picture);
    }

    PercentBar Sut;
};

TEST_F(PercentBarTest, IsEmptyAndSays0PercentAtValue0) {
    Sut.SetValue(0);
    EXPECT_EQ(Sut.Text(), "0%");
    EXPECT_EQ(Seen(), Bar("0%", 0));
}

TEST_F(PercentBarTest, RoundsAFractionUp) {
    Sut.SetMax(3);
    Sut.SetValue(1);
    EXPECT_EQ(Sut.Text(), "34%");
    EXPECT_EQ(Seen(), Bar("34%", 68));
}

TEST_F(PercentBarTest, ShowsACaptionWithoutBarAsItStandsAndStillFills) {
    Sut.SetCaption("Send & receive");
    Sut.SetValue(25);
    EXPECT_EQ(Seen(), Bar("Send & receive", 50));
}

TEST_F(PercentBarTest, InvertsTheTextWhereItIsCovered) {
    Sut.SetValue(50);
    EXPECT_EQ(Seen(), Bar("50%", 100));
    EXPECT_NE(Seen(), Bar("50%", 0));
}

TEST_F(PercentBarTest, IsCoveredWholeAtAndAboveTheMaximum) {
    Sut.SetValue(100);
    EXPECT_EQ(Seen(), Bar("100%", 200));
    Sut.SetValue(101);
    EXPECT_EQ(Seen(), Bar("100%", 200));
}

TEST_F(PercentBarTest, IsEmptyForANegativeValue) {
    Sut.SetValue(-1);
    EXPECT_EQ(Seen(), Bar("0%", 0));
}

TEST_F(PercentBarTest, IsEmptyForAMaximumOf0) {
    Sut.SetMax(0);
    Sut.SetValue(50);
    EXPECT_EQ(Seen(), Bar("0%", 0));
}

TEST_F(PercentBarTest, CountsFrom0WhateverTheMinimumIs) {
    Sut.SetMin(50);
    Sut.SetValue(50);
    EXPECT_EQ(Sut.Min(), 50);
    EXPECT_EQ(Seen(), Bar("50%", 100));
}

TEST_F(PercentBarTest, ShowsNothingWhenBothColoursAreEqual) {
    Sut.SetForeColor(Back);
    Sut.SetValue(50);
    EXPECT_EQ(DifferentColors(Seen()), 1);
}

TEST_F(PercentBarTest, DrawsNothingNewWhenOtherPropertiesAreSet) {
    Sut.SetValue(50);
    const QImage before = Seen();
    Sut.SetMax(200);
    Sut.SetMin(10);
    Sut.SetCaption("Waiting");
    Sut.SetBackColor(Qt::red);
    Sut.SetForeColor(Qt::green);
    QFont large = Sut.font();
    large.setPointSize(20);
    Sut.setFont(large);
    EXPECT_EQ(Seen(), before);
}

TEST_F(PercentBarTest, DrawsWithAllPropertiesOnceTheValueIsSet) {
    Sut.SetValue(0);
    Sut.SetMax(200);
    Sut.SetCaption("Waiting");
    Sut.SetValue(50);
    EXPECT_EQ(Seen(), Bar("Waiting", 50));
}

TEST_F(PercentBarTest, DrawsAnewWhenTheSameValueIsSet) {
    Sut.SetValue(50);
    Sut.SetMax(200);
    Sut.SetValue(50);
    EXPECT_EQ(Seen(), Bar("25%", 50));
}

TEST_F(PercentBarTest, IsDrawnWhenFirstShown) {
    EXPECT_EQ(Seen(), Bar("0%", 0));
    Sut.SetCaption("Waiting");
    EXPECT_EQ(Seen(), Bar("0%", 0));
}

TEST_F(PercentBarTest, IsCrispAtTwoPixelsForOne) {
    Sut.SetMax(3);
    Sut.SetValue(1);
    EXPECT_EQ(SeenAt(2), Bar("34%", 136, 2));
}

TEST_F(PercentBarTest, HasAFrameAllAround) {
    Sut.SetValue(50);
    QImage expected = Whole();
    const QRgb frame = expected.pixel(0, 0);
    QPainter(&expected).fillRect(expected.rect().adjusted(1, 1, -1, -1), Qt::red);
    EXPECT_EQ(DifferentColors(expected), 2);
    EXPECT_NE(QColor(frame), Back);
    EXPECT_NE(QColor(frame), Fore);
}

TEST_F(PercentBarTest, HasAFrameThatCanBeSeenOnDarkToo) {
    Sut.setPalette(DarkPalette());
    Sut.SetValue(0);
    EXPECT_GT(QColor(Whole().pixel(0, 0)).lightness(), 110) << "The window has 35.";
}

TEST_F(PercentBarTest, FollowsThePaletteUntilItsColoursAreSet) {
    PercentBar bar;
    bar.resize(Size);
    bar.SetValue(0);
    bar.setPalette(DarkPalette());
    EXPECT_EQ(bar.BackColor(), QColor(50, 50, 50));
    EXPECT_EQ(bar.ForeColor(), QColor(Qt::white));
    EXPECT_EQ(bar.grab().toImage().pixelColor(5, 5), QColor(50, 50, 50));
    bar.SetBackColor(Back);
    bar.SetValue(0);
    EXPECT_EQ(bar.grab().toImage().pixelColor(5, 5), Back);
}

TEST_F(PercentBarTest, HasItsPictureTaken) {
    QWidget window;
    QVBoxLayout layout(&window);
    QList<PercentBar*> bars;
    for (const int value : {0, 34, 50, 100, 34, 50}) {
        auto* const bar = new PercentBar(&window);
        bar->setObjectName("PercentBar1");
        if (bars.size() >= 4) {
            bar->setPalette(DarkPalette());
        }
        bar->SetValue(value);
        layout.addWidget(bar);
        bars.append(bar);
    }
    window.resize(320, window.sizeHint().height());
    EXPECT_TRUE(TakePictureOf(window, "PercentBar"));
}

}  // namespace burnwick::test
