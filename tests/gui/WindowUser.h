#pragma once

#include <gmock/gmock.h>

#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/frmMain.h"
#include "gui/Answers.h"
#include "support/TempFolder.h"

namespace burnwick::test {

// The size of the usual image, in bytes, and the status after it has been programmed.
inline constexpr std::size_t ImageSize = 262'144;
inline constexpr auto Programmed = "Programming was completed successfully.";

// The main window in front of its user, who clicks, and reads what it shows. The window must end before what
// it stands on: a test that has made it ends it, too.
class WindowUser : public ::testing::Test {
protected:
    WindowUser();
    ~WindowUser() override;

    // The usual image, with a name of its own.
    std::string Image(const std::string& name = "unit.bin") const;

    // The user chooses this file behind Download, or this size and file behind Upload.
    void Download(const std::string& path);
    void Upload(int chip, const std::string& path);
    // A click that starts a run returns when the run has ended.
    void Click(const char* button) const;
    void Trigger(const char* command) const;
    // Does something when the status first begins so.
    void WhenStatus(const std::string& begins, std::function<void()> action);

    template <typename Control = QWidget>
    Control* Find(const char* name) const {
        auto* const found = Window->findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    std::string TextOf(const char* label) const;
    std::string Status() const { return TextOf("lblStatus"); }
    std::string Display() const;
    std::string Caption() const { return Window->windowTitle().toStdString(); }
    std::string BarText() const;
    bool IsIdle() const;
    std::string LogText() const;
    // Waits until the window is idle again. In virtual time it is, as soon as a click returns.
    virtual void AwaitEndOfRun() const {}
    // Saves a picture of the window.
    void Picture(const std::string& name) const;

    // For the loop that the window runs on: it is to be called after each Yield.
    void LookAtStatus();

    TempFolder Folder;  // the program's own is "home" in it
    Answers User;
    std::unique_ptr<frmMain> Window;

private:
    std::vector<std::pair<std::string, std::function<void()>>> Waiting_;
};

}  // namespace burnwick::test
