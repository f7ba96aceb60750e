#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "job/Job.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/loop/MessageLoop.h"
#include "platform/serial/SerialDevice.h"
#include "settings/Settings.h"

namespace burnwick::cli {

// What a verb finds around it: streams and services that a test puts its own in the place of.
struct Environment {
    std::ostream& Out;
    std::ostream& Err;
    int ErrColumns = 0;  // of the terminal that Err is, on which a line can be rewritten; 0: it is none
    bool Color = false;  // whether that terminal is to be given colours
    bool Trace = false;  // whether the link tells Err what it receives
    MessageLoop& Loop;
    SettingStore& Settings;
    std::filesystem::path ProgramFolder;                       // of the log and the verification file
    std::function<std::unique_ptr<SerialDevice>()> NewDevice;  // for trying the ports
    burnwick::NewJob NewJob;
    // From now on Ctrl+C and its like are handed to `request`, inside the loop's Yield, and end nothing.
    std::function<void(std::function<void()> request)> CatchInterrupts;
    std::function<std::unique_ptr<SleepInhibitor>(const std::string& why)> InhibitSleep;
};

}  // namespace burnwick::cli
