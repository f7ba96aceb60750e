#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "job/Job.h"
#include "job/Product.h"
#include "platform/desktop/ShellIntegration.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/loop/MessageLoop.h"
#include "platform/serial/SerialDevice.h"
#include "platform/window/SingleInstance.h"
#include "ports/PortTable.h"
#include "settings/Settings.h"

class QWidget;

namespace burnwick {

// What the main window finds around it: services that a test puts its own in the place of.
struct WindowServices {
    burnwick::Product Product{};
    std::string CommandLine{};  // the arguments, joined by one blank
    bool Debug = false;         // the debug check box is there and ticked, and the link tells Trace all
    std::function<void(const std::string& line)> Trace{};

    EventLoop& Loop;
    // For trying ports; it handles no events of the window.
    MessageLoop& PortLoop;
    SettingStore& Settings;
    std::filesystem::path ProgramFolder;  // of the log and the verification file
    std::filesystem::path Executable;

    ShellIntegration& Shell;
    // The copies of the program that run under this title.
    std::function<std::unique_ptr<SingleInstance>(const std::string& title)> Copies;
    std::function<std::unique_ptr<SerialDevice>()> NewDevice;  // for trying the ports
    burnwick::NewJob NewJob;
    std::function<std::unique_ptr<SleepInhibitor>(const std::string& why)> InhibitSleep;

    std::function<void()> Beep;
    // Calls the user to a window in the background, until it is looked at.
    std::function<void(QWidget* window)> Flash;
    std::function<void(const std::string& title, const std::string& text)> Notify;
    // The user's manual; empty when it is not there.
    std::function<std::filesystem::path()> HelpFile{};
    // Opens an address with the program that the desktop has for it; false without one.
    std::function<bool(const std::string& link)> OpenLink{};
};

}  // namespace burnwick
