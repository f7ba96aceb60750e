#pragma once

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gui/Answers.h"
#include "gui/FormTest.h"
#include "support/ImageBuilder.h"
#include "support/TempFolder.h"
#include "tools/frmFileCompare.h"

namespace burnwick::test {

// The dialog, and images to compare in it.
class frmFileCompareTest : public FormTest {
protected:
    std::unique_ptr<QDialog> New() override {
        auto form = std::make_unique<frmFileCompare>(
            frmFileCompare::Services{.Folder = LastPath, .Beep = [this] { ++Beeps; }});
        User.LeaveAlone(*form);
        return form;
    }

    QPushButton& CompareButton() { return Button("cmdCompare"); }
    QToolButton& Disclosure() { return Find<QToolButton>("cmdDifferences"); }
    QTableView& List() { return Find<QTableView>("grdDifferences"); }
    QLineEdit& File(int number) { return Find<QLineEdit>(number == 1 ? "txtFile1" : "txtFile2"); }
    QLabel& StatusLabel() { return Find<QLabel>("lblStatus"); }
    std::string Status() { return StatusLabel().text().toStdString(); }

    void Choose(const std::string& file1, const std::string& file2) {
        File(1).setText(QString::fromStdString(file1));
        File(2).setText(QString::fromStdString(file2));
    }
    void Compare(const std::string& file1, const std::string& file2) {
        Choose(file1, file2);
        Click("cmdCompare");
    }
    // Compares an image with one that has other bytes in these places.
    void CompareWithOther(const std::vector<std::size_t>& places, const char* code = "C0DE0149",
                          std::size_t size = 0x40000) {
        const Bytes image = ImageBuilder(size).Fill(0xA5).TypeCode(code).Build();
        Bytes other = image;
        for (const std::size_t place : places) {
            other.at(place) = static_cast<std::byte>(place);
        }
        Compare(Folder.Write("1.bin", image), Folder.Write("2.bin", other));
    }
    // Does something in the middle of the comparison that is about to start.
    void Meanwhile(std::function<void()> action) {
        QObject::connect(&Watch_, &QTimer::timeout, &Watch_, [this, action = std::move(action)] {
            if (Status() == "Status: Comparing...") {
                Watch_.disconnect();
                Watch_.stop();
                action();
            }
        });
        Watch_.start(0);
    }
    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }

    TempFolder Folder;
    std::string Here = Folder.Write("here.bin", ImageBuilder(0x40000).TypeCode("C0DE0149").Build());
    std::string Copy = Folder.Write("copy.bin", ImageBuilder(0x40000).TypeCode("C0DE0149").Build());
    std::string LastPath;
    int Beeps = 0;
    Answers User;

private:
    QTimer Watch_;
};

}  // namespace burnwick::test
