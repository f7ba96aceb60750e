#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "tools/frmHelp.h"

namespace burnwick::test {

// The help in front of its user, beside a window that stands for the main one.
class HelpTest : public ::testing::Test {
protected:
    HelpTest() : Owner(std::make_unique<QWidget>()) { Owner->show(); }
    ~HelpTest() override {
        Owner.reset();
        QApplication::setPalette(QPalette());
    }

    // A manual of two chapters with two sections each, long enough to be scrolled.
    static std::string Manual() {
        std::string page =
            "<!DOCTYPE html><html><head><title>Burnwick Help</title></head><body><h1>Burnwick Help</h1>";
        for (const std::string chapter : {"Start", "Commands"}) {
            page += "<h2 id=\"" + chapter + "\">" + chapter + "</h2>";
            for (const std::string section : {"one", "two"}) {
                page += "<h3 id=\"" + chapter + "-" + section + "\">" + chapter + " " + section + "</h3>";
                for (int line = 0; line < 40; ++line) {
                    page += "<p>A line of the manual, number " + std::to_string(line) + ".</p>";
                }
            }
        }
        return page + "<p>The very end: <a href=\"#Start-two\">back</a>, "
                      "<a href=\"https://www.burnwick.example/\">web</a>.</p></body></html>";
    }

    frmHelp& Open(const std::string& page = Manual(), bool isOEM = false) {
        std::ofstream(Files / "Burnwick.hlp", std::ios::binary) << page;
        return OpenFile(Files.Path() / "Burnwick.hlp", isOEM);
    }
    frmHelp& OpenFile(const std::filesystem::path& file, bool isOEM = false) {
        ShowHelp(
            file, isOEM, [this](const std::string& link) { Opened.push_back(link); }, *Owner);
        const auto windows = Windows();
        EXPECT_EQ(windows.size(), 1U);
        Help = windows.at(0);
        EXPECT_TRUE(QTest::qWaitForWindowActive(Help));
        return *Help;
    }
    static std::vector<frmHelp*> Windows() {
        std::vector<frmHelp*> windows;
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (auto* const help = qobject_cast<frmHelp*>(window); help != nullptr && help->isVisible()) {
                windows.push_back(help);
            }
        }
        return windows;
    }

    template <typename Control>
    Control& Find(const char* name) const {
        auto* const control = Help->findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    QTextBrowser& Page() const { return Find<QTextBrowser>("txtPage"); }
    QToolButton& Button(const char* name) const { return Find<QToolButton>(name); }
    QLineEdit& FindBox() const { return Find<QLineEdit>("txtFind"); }
    std::string Found() const { return Find<QLabel>("lblFound").text().toStdString(); }
    std::string Shown() const { return Page().toPlainText().toStdString(); }
    std::string Selected() const { return Page().textCursor().selectedText().toStdString(); }
    int Scrolled() const { return Page().verticalScrollBar()->value(); }

    // The entry of the contents that is selected.
    std::string Entry() const {
        const auto* const item = Find<QTreeWidget>("tvwContents").currentItem();
        return item == nullptr ? "" : item->text(0).toStdString();
    }
    void ClickEntry(const QString& text) const {
        auto& contents = Find<QTreeWidget>("tvwContents");
        const auto items = contents.findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(items.size(), 1) << text.toStdString();
        contents.scrollToItem(items[0]);
        QTest::mouseClick(contents.viewport(), Qt::LeftButton, {},
                          contents.visualItemRect(items[0]).center());
    }
    void ClickLink(const QString& text) const {
        const int at = static_cast<int>(Page().toPlainText().indexOf(text));
        ASSERT_GE(at, 0) << text.toStdString();
        QTextCursor cursor(Page().document());
        cursor.setPosition(at + 1);
        static_cast<void>(Page().document()->size());  // laid out to its end
        Page().verticalScrollBar()->setValue(Scrolled() + Page().cursorRect(cursor).top() - 10);
        QTest::mouseClick(Page().viewport(), Qt::LeftButton, {}, Page().cursorRect(cursor).center());
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(Help->focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    // What stands at the top of the page.
    std::string TopLine() const {
        return Page().cursorForPosition(QPoint(0, 16)).block().text().toStdString();
    }

    TempFolder Files;
    std::vector<std::string> Opened;
    std::unique_ptr<QWidget> Owner;
    QPointer<frmHelp> Help;
};

}  // namespace burnwick::test
