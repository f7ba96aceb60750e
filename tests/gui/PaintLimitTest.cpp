#include "app/PaintLimit.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <QWidget>

namespace burnwick::test {

namespace {

class Picture final : public QWidget {
public:
    void Show(int number) {
        Number_ = number;
        update();
    }
    int Painted() const { return Painted_; }
    int Paintings() const { return Paintings_; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        Painted_ = Number_;
        ++Paintings_;
    }

private:
    int Number_ = 0;
    int Painted_ = -1;
    int Paintings_ = 0;
};

class PaintLimitTest : public ::testing::Test {
protected:
    PaintLimitTest() {
        new PaintLimit(&Window_);
        Window_.show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return Window_.Painted() == 0; }));
    }

    Picture Window_;
};

TEST_F(PaintLimitTest, AWindowIsPaintedNoMoreOftenThanAScreenShowsIt) {
    const int before = Window_.Paintings();
    QElapsedTimer time;
    time.start();
    int number = 0;
    while (time.elapsed() < 100) {
        Window_.Show(++number);
        QCoreApplication::processEvents();
    }
    EXPECT_LE(Window_.Paintings() - before, time.elapsed() / 16 + 2);
    EXPECT_GE(Window_.Paintings() - before, 1);
}

TEST_F(PaintLimitTest, WhatChangedLastIsPainted) {
    for (int number = 1; number <= 1000; ++number) {
        Window_.Show(number);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return Window_.Painted() == 1000; }));
}

TEST_F(PaintLimitTest, AWindowAtRestIsNotPainted) {
    Window_.Show(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Window_.Painted() == 1; }));
    const int before = Window_.Paintings();
    QTest::qWait(100);
    EXPECT_EQ(Window_.Paintings(), before);
}

}  // namespace
}  // namespace burnwick::test
