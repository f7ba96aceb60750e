#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace burnwick::test {

// The user in front of modal dialogs: each that opens gets the next answer, by real clicks and keys. One that
// nobody thought of fails the test and is closed.
class Answers : public QObject {
public:
    using Answer = std::function<void(QDialog&)>;

    // A message box that was shown.
    struct Box {
        std::string Caption;
        std::string Text;
        std::string More;  // below the text
        QMessageBox::Icon Icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons Buttons;
        std::string Default;  // caption of the button that Enter gives
    };

    Answers();
    // Every answer must have been asked for.
    ~Answers() override;

    // The dialog under test, which the test itself answers.
    void LeaveAlone(QDialog& form) { Form_ = &form; }
    void Next(Answer answer) { Answers_.push_back(std::move(answer)); }
    void ClickInBox(QMessageBox::StandardButton button);
    // Types a path into a file dialog, and Enter.
    void TypeFile(const std::string& path);
    void Escape();

    // Every message box, in order.
    const std::vector<Box>& Boxes() const { return Boxes_; }
    // Caption of every other dialog, in order.
    const std::vector<std::string>& Dialogs() const { return Dialogs_; }

private:
    void Look();
    void Give(const QPointer<QDialog>& dialog);
    void Note(QDialog& dialog);

    QTimer Timer_;
    QPointer<QDialog> Form_;
    QPointer<QDialog> Answered_;
    std::deque<Answer> Answers_;
    std::vector<Box> Boxes_;
    std::vector<std::string> Dialogs_;
};

}  // namespace burnwick::test
