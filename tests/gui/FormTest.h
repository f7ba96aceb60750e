#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QDialog>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <memory>
#include <string>

#include "gui/DarkDesktop.h"
#include "gui/Picture.h"

namespace burnwick::test {

// A dialog in front of its user. The one under test is made by New when it is first looked at.
class FormTest : public ::testing::Test {
protected:
    virtual std::unique_ptr<QDialog> New() = 0;

    QDialog& Form() {
        if (!Form_) {
            Form_ = New();
            Form_->show();
            Form_->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(Form_.get()));
        }
        return *Form_;
    }

    void Destroy() { Form_.reset(); }

    template <typename Control = QWidget>
    Control& Find(const std::string& name) {
        auto* const control = Form().findChild<Control*>(QString::fromStdString(name));
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    std::string Text(const std::string& name) {
        return Find<QWidget>(name).property("text").toString().toStdString();
    }
    std::string Title(const std::string& frame) {
        return Find<QWidget>(frame).property("title").toString().toStdString();
    }

    QPushButton& Button(const std::string& name) { return Find<QPushButton>(name); }
    static void Click(QAbstractButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    void Click(const std::string& button) { Click(Find<QAbstractButton>(button)); }
    // On its box or circle, left of the text.
    void Tick(const std::string& option) {
        QWidget& control = Find(option);
        QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(8, control.height() / 2));
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Form().focusWidget(), key, modifiers);
    }
    std::string Focus() { return Form().focusWidget()->objectName().toStdString(); }

    bool StandsInTheMiddle() {
        const QRect screen = Form().screen()->availableGeometry();
        constexpr int rounding = 2;
        return (Form().frameGeometry().center() - screen.center()).manhattanLength() <= rounding;
    }
    // As the desktop is, and as a dark one would have it; on a screen with more pixels, under another name.
    void TakePicture(const std::string& name) {
        const double scale = Form().devicePixelRatio();
        const QString pixels = scale > 1 ? QString("@%1x").arg(scale) : QString();
        const auto save = [&](const QString& kind) {
            EXPECT_TRUE(TakePictureOf(Form(), QString::fromStdString(name) + kind + pixels));
        };
        save("");
        const DarkDesktop dark;
        save("-dark");
    }
    QWidget* Parent = nullptr;  // of the form that New is to make

private:
    std::unique_ptr<QDialog> Form_;
};

}  // namespace burnwick::test
