#pragma once

#include <functional>
#include <string>

namespace burnwick {

// A setting: its place in the settings file, and its value where the file has none.
struct SettingEntry {
    std::string Section;
    std::string Key;
    std::string Default{};
};

// Every setting of the programs.
namespace Setting {

inline const SettingEntry ComPort{"COMPort", "COM"};                       // a number; none: not chosen yet
inline const SettingEntry BaudRate{"COMPort", "BaudRate", "0"};            // "0": 57600, "1": 115200
inline const SettingEntry Verify{"Options", "Verify", "0"};                // "1": offered after a download
inline const SettingEntry LogOption{"Options", "LogOption", "&All"};       // or "&Summary", "&Disable"
inline const SettingEntry Desktop{"Options", "Desktop", "No"};             // "Yes": a shortcut is wanted
inline const SettingEntry ContextMenu{"Options", "ContextMenu", "No"};     // "Yes": *.bin is associated
inline const SettingEntry LastPath{"Path", "LastPath"};                    // folder of the latest image
inline const SettingEntry UploadChipSize{"ChipSelect", "UploadChipSize"};  // index into ChipSizes
inline const SettingEntry Programming{"Status", "Programming", "No"};  // "Yes": a unit is programmed or read

SettingEntry RecentFile(std::size_t index);  // from 1 to 4, the most recent first
SettingEntry PortDevice(int port);           // the device of a COM number, in place of the system's

}  // namespace Setting

// The values of the settings, as they are stored or as a change is about to store them.
class SettingValues {
public:
    virtual ~SettingValues() = default;

    // Empty when nothing is stored.
    virtual std::string Stored(const SettingEntry& entry) const = 0;
    // What cannot be written is left as it is.
    virtual void Store(const SettingEntry& entry, const std::string& value) = 0;

    // The stored value, or the entry's default.
    std::string Value(const SettingEntry& entry) const;
    // Stores the default where nothing is stored.
    void StoreMissing(const SettingEntry& entry);
};

class SettingStore : public SettingValues {
public:
    // Values that belong together: one lock, one replacement of the file. The change may be called twice, and
    // depends on nothing but the values that it is given.
    virtual void Change(const std::function<void(SettingValues&)>& change) = 0;
};

// The settings file that modUtility::SetIniPath has named.
SettingStore& IniSettings();

// How much the log is to hold. A missing value is stored as its default again.
std::string LogOption(SettingStore& settings);

// The device that the settings give a COM number; empty when they give none. The settings must outlive it.
std::function<std::string(int port)> PortDevices(const SettingValues& settings);

}  // namespace burnwick
