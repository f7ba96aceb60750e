#pragma once

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <string>

#include "gui/WindowTest.h"

namespace burnwick::test {

// The main window with an image to copy, and a folder for it.
class CopyTest : public WindowTest {
protected:
    CopyTest() {
        std::filesystem::create_directory(To_);
        QGuiApplication::clipboard()->setText("from before");
    }

    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
    // The summary shows this image, and the window is idle.
    void Show(const std::string& path) {
        if (!Window) {
            Start();
        }
        At(Loop.Time() + std::chrono::seconds(1), [this] { Click("cmdQuit"); });
        Download(path);
        ASSERT_TRUE(IsIdle());
        ASSERT_NE(TextOf("lblChecksum"), "");
    }
    void CopyTo(const std::string& folder) {
        User.TypeFile(folder);
        Trigger("mnuFileCopyToFolder");
    }
    void CopyTo(const std::filesystem::path& folder) { CopyTo(folder.string()); }
    std::ptrdiff_t FilesThere() const {
        return std::distance(std::filesystem::directory_iterator(To_), std::filesystem::directory_iterator());
    }
    bool IsEnabled(const char* command) const { return Find<QAction>(command)->isEnabled(); }
    void ExpectCopyError(const std::string& why) const {
        ASSERT_FALSE(User.Boxes().empty());
        const auto& box = User.Boxes().back();
        EXPECT_EQ(box.Caption, "Copy Error");
        EXPECT_EQ(box.Text, "Copy file error.");
        EXPECT_EQ(box.More, why);
        EXPECT_EQ(box.Icon, QMessageBox::Warning);
        EXPECT_EQ(box.Buttons, QMessageBox::Ok);
    }
    // The pointer is itself again, and the next copy is as good as any.
    void ExpectUsable() {
        EXPECT_TRUE(IsIdle());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        const auto other = Folder.Path() / "other";
        std::filesystem::create_directory(other);
        Show(Image("good.bin"));
        CopyTo(other);
        EXPECT_EQ(ReadFile(other / "good.bin"), SampleImage(ImageSize));
    }

    // What the commands do with an image of this name, and what they call it.
    void ExpectCopiesOfAnImageNamed(const std::string& name) {
        const auto to = To_ / "each";
        std::filesystem::create_directory(to);
        Settings["LastOpenFile/1"] = Image(name);
        Window.reset();
        Start();
        At(Loop.Time() + std::chrono::seconds(1), [this] { Click("cmdQuit"); });
        Trigger("mnuFileMRF_1");
        std::string shown = name;
        std::replace(shown.begin(), shown.end(), '\n', ' ');
        Trigger("mnuFileCopy");
        EXPECT_THAT(Clipboard(), ::testing::StartsWith(shown + "    VX-1600    "));
        CopyTo(to);
        EXPECT_EQ(User.Dialogs().back(), "Copy " + shown + " to...");
        EXPECT_EQ(ReadFile(to / Utf8Path(name)), SampleImage(ImageSize)) << name;
        User.TypeFile(to.string());
        User.ClickInBox(QMessageBox::Yes);
        Trigger("mnuFileCopyToFolder");
        EXPECT_THAT(
            User.Boxes().back().Text,
            ::testing::StartsWith("This folder already contains a file named '" + shown + "'    \n \n"));
        std::filesystem::remove_all(to);
    }

    std::filesystem::path To_ = Folder.Path() / "to";
    Bytes Old_ = AnyBytes(1'573'887, /*seed=*/3);
};

}  // namespace burnwick::test
