#include "settings/Settings.h"

#include "settings/IniText.h"
#include "settings/modUtility.h"

namespace burnwick {

namespace {

// The text of the file during a change.
class Draft final : public SettingValues {
public:
    explicit Draft(IniText& ini) : Ini_(ini) {}

    std::string Stored(const SettingEntry& entry) const override {
        return Ini_.Value(entry.Section, entry.Key).value_or("");
    }
    void Store(const SettingEntry& entry, const std::string& value) override {
        Ini_.SetValue(entry.Section, entry.Key, value);
    }

private:
    IniText& Ini_;
};

class IniStore final : public SettingStore {
public:
    std::string Stored(const SettingEntry& entry) const override {
        return modUtility::ReadIniValue(entry.Section, entry.Key);
    }
    void Store(const SettingEntry& entry, const std::string& value) override {
        modUtility::WriteIniValue(entry.Section, entry.Key, value);
    }
    void Change(const std::function<void(SettingValues&)>& change) override {
        modUtility::ChangeIni([&](IniText& ini) {
            Draft draft(ini);
            change(draft);
        });
    }
};

}  // namespace

SettingEntry Setting::RecentFile(std::size_t index) {
    return {"LastOpenFile", std::to_string(index)};
}

SettingEntry Setting::PortDevice(int port) {
    return {"Ports", "COM" + std::to_string(port)};
}

std::string SettingValues::Value(const SettingEntry& entry) const {
    const std::string stored = Stored(entry);
    return stored.empty() ? entry.Default : stored;
}

void SettingValues::StoreMissing(const SettingEntry& entry) {
    if (Stored(entry).empty()) {
        Store(entry, entry.Default);
    }
}

SettingStore& IniSettings() {
    static IniStore store;
    return store;
}

std::string LogOption(SettingStore& settings) {
    settings.StoreMissing(Setting::LogOption);
    return settings.Value(Setting::LogOption);
}

std::function<std::string(int port)> PortDevices(const SettingValues& settings) {
    return [&settings](int port) { return settings.Stored(Setting::PortDevice(port)); };
}

}  // namespace burnwick
