#include "gui/Answers.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <chrono>

namespace burnwick::test {

using namespace std::chrono_literals;

Answers::Answers() {
    QObject::connect(&Timer_, &QTimer::timeout, this, &Answers::Look);
    Timer_.start(2ms);
}

Answers::~Answers() {
    EXPECT_TRUE(Answers_.empty()) << Answers_.size() << " answers were not asked for";
}

void Answers::ClickInBox(QMessageBox::StandardButton button) {
    Next([button](QDialog& dialog) {
        auto* const box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr) << dialog.windowTitle().toStdString();
        ASSERT_NE(box->button(button), nullptr) << box->text().toStdString();
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
}

void Answers::TypeFile(const std::string& path) {
    Next([path](QDialog& dialog) {
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr) << dialog.windowTitle().toStdString();
        name->setText(QString::fromStdString(path));
        QTest::keyClick(name, Qt::Key_Return);
    });
}

void Answers::Escape() {
    Next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
}

void Answers::Look() {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog == Form_ || !dialog->isVisible()) {
        Answered_.clear();
        return;
    }
    if (dialog == Answered_) {
        return;
    }
    Answered_ = dialog;
    // Outside the timer's own call: it goes on ticking when the answer makes another dialog open.
    QTimer::singleShot(0, this, [this, shown = QPointer(dialog)] { Give(shown); });
}

// A dialog that comes to the fore for a moment, on its way to its end, asks for nothing.
void Answers::Give(const QPointer<QDialog>& dialog) {
    if (!dialog || !dialog->isVisible()) {
        return;
    }
    Note(*dialog);
    if (Answers_.empty()) {
        ADD_FAILURE() << "nobody expected the dialog " << dialog->windowTitle().toStdString();
        dialog->reject();
        return;
    }
    // One that its answer leaves open would be waited for without end.
    QTimer::singleShot(30s, dialog, [left = dialog.data()] {
        ADD_FAILURE() << "still open: " << left->windowTitle().toStdString();
        left->reject();
    });
    const Answer answer = std::move(Answers_.front());
    Answers_.pop_front();
    answer(*dialog);
    if (testing::Test::HasFatalFailure() && dialog) {
        dialog->reject();
    }
}

void Answers::Note(QDialog& dialog) {
    if (const auto* const box = qobject_cast<QMessageBox*>(&dialog)) {
        Box note{box->windowTitle().toStdString(),
                 box->text().toStdString(),
                 box->informativeText().toStdString(),
                 box->icon(),
                 box->standardButtons(),
                 {}};
        for (const QPushButton* const button : box->findChildren<QPushButton*>()) {
            note.Default = button->isDefault() ? button->text().remove('&').toStdString() : note.Default;
        }
        Boxes_.push_back(note);
    } else {
        Dialogs_.push_back(dialog.windowTitle().toStdString());
    }
}

}  // namespace burnwick::test
