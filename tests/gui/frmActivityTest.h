#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "gui/Answers.h"
#include "gui/FormTest.h"
#include "log/frmActivity.h"
#include "support/TempFolder.h"

namespace burnwick::test {

// The viewer of a log in a folder of its own.
class frmActivityTest : public FormTest {
protected:
    ~frmActivityTest() override { EXPECT_EQ(QApplication::overrideCursor(), nullptr); }

    void LogHolds(std::string_view content) const { std::ofstream(Live, std::ios::binary) << content; }

    std::unique_ptr<QDialog> New() override {
        auto form = std::make_unique<frmActivity>(Folder.Path());
        EXPECT_TRUE(form->isModal());
        User.LeaveAlone(*form);
        return form;
    }

    QPlainTextEdit& Log() { return Find<QPlainTextEdit>("txtLog"); }
    std::string Shown() { return Log().toPlainText().toStdString(); }
    std::string Selected() { return Log().textCursor().selectedText().toStdString(); }
    int SelectionStart() { return Log().textCursor().selectionStart(); }
    bool IsSearching() { return QApplication::overrideCursor() != nullptr; }

    // Next time the find dialog asks: types this, and Enter.
    void AwaitFind(const std::string& text, bool matchCase = false) {
        User.Next([text, matchCase](QDialog& dialog) {
            auto* const find = dialog.findChild<QLineEdit*>("txtFind");
            ASSERT_NE(find, nullptr) << dialog.windowTitle().toStdString();
            find->setText(QString::fromStdString(text));
            dialog.findChild<QCheckBox*>("chkMatch")->setChecked(matchCase);
            QTest::keyClick(find, Qt::Key_Return);
        });
    }
    void LookFor(const std::string& text, bool matchCase = false) {
        AwaitFind(text, matchCase);
        Click("cmdFind");
    }
    void AwaitNotFound() { User.ClickInBox(QMessageBox::Ok); }

    // So many lines, of which the last one is to be found.
    static std::string BigLog(int lines) {
        std::string text = "C:\\images\\first.bin\r\n";
        for (int line = 0; line < lines; ++line) {
            text += "Flashed: 07/22/2004 3:05:09 PM, line " + std::to_string(line) + "\r\n";
        }
        return text;
    }

    TempFolder Folder;
    std::filesystem::path Live = Folder.Path() / "Burnwick.log";
    Answers User;
};

inline constexpr const char* TwoRecords =
    "C:\\images\\unit.bin\r\nFlashed: 07/22/2004 3:05:09 PM\r\nStatus: No response\r\n \r\n"
    "C:\\images\\other.bin\r\nFlashed: 07/22/2004 3:07:09 PM\r\nStatus: Programming completed "
    "successfully.\r\n";

}  // namespace burnwick::test
