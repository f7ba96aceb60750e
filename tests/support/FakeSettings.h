#pragma once

#include <functional>
#include <map>
#include <string>

#include "settings/Settings.h"

namespace burnwick::test {

// Settings in memory, by names such as "COMPort/COM".
class FakeSettings final : public SettingStore {
public:
    FakeSettings() = default;
    FakeSettings(std::initializer_list<std::pair<const std::string, std::string>> values) : Values(values) {}

    std::string& operator[](const std::string& name) { return Values[name]; }

    std::string Stored(const SettingEntry& entry) const override {
        const std::string name = NameOf(entry);
        OnRead(name);
        const auto found = Values.find(name);
        return found == Values.end() ? "" : found->second;
    }
    // A value that is stored already is not stored again, as in a file.
    void Store(const SettingEntry& entry, const std::string& value) override {
        const std::string name = NameOf(entry);
        if (const auto found = Values.find(name); found != Values.end() && found->second == value) {
            return;
        }
        if (!IsReadOnly) {
            Values[name] = value;
        }
        OnStore(name, value);
    }
    void Change(const std::function<void(SettingValues&)>& change) override { change(*this); }

    std::map<std::string, std::string> Values;
    bool IsReadOnly = false;
    std::function<void(const std::string& name)> OnRead = [](const auto&) {};
    std::function<void(const std::string& name, const std::string& value)> OnStore = [](const auto&,
                                                                                        const auto&) {};

private:
    static std::string NameOf(const SettingEntry& entry) { return entry.Section + "/" + entry.Key; }
};

}  // namespace burnwick::test
