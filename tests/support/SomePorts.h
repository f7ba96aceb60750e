#pragma once

#include <set>
#include <string>
#include <vector>

#include "support/FakeDevice.h"

namespace burnwick::test {

// Opens the devices that are there, and no other.
class SomePorts final : public FakeDevice {
public:
    SomePorts(VirtualLoop& loop, const std::set<std::string>& there) : FakeDevice(loop), There_(there) {}

    CommResult Open(const std::string& path, const LineSettings& settings) override {
        Tried.push_back(path);
        if (!There_.contains(path)) {
            return CommError{CommErrorNumber::NotSerial, path + ": no such device"};
        }
        return FakeDevice::Open(path, settings);
    }

    std::vector<std::string> Tried;

private:
    void HearFrame(const Frame& /*frame*/) override {}
    void LetHappen() override {}

    const std::set<std::string>& There_;
};

}  // namespace burnwick::test
