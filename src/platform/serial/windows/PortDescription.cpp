#include "platform/serial/windows/PortDescription.h"

#include "platform/process/windows/SystemHeaders.h"
// After the system's own header.
#include <initguid.h>
#include <setupapi.h>

#include <array>

#include "platform/process/PlainText.h"
#include "platform/process/windows/WideText.h"

namespace burnwick {

namespace {

// The class "Ports (COM & LPT)" of the system's list of devices.
DEFINE_GUID(ClassOfPorts, 0x4D36E978, 0xE325, 0x11CE, 0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18);

// The devices of that class that are plugged in.
class PortList {
public:
    PortList() : List_(SetupDiGetClassDevsW(&ClassOfPorts, nullptr, nullptr, DIGCF_PRESENT)) {}
    PortList(const PortList&) = delete;
    PortList& operator=(const PortList&) = delete;
    ~PortList() {
        if (List_ != INVALID_HANDLE_VALUE) {
            SetupDiDestroyDeviceInfoList(List_);
        }
    }

    bool Device(DWORD index, SP_DEVINFO_DATA& device) const {
        device.cbSize = sizeof device;
        return List_ != INVALID_HANDLE_VALUE && SetupDiEnumDeviceInfo(List_, index, &device) != FALSE;
    }

    // The name under which programs open it.
    std::string PortName(SP_DEVINFO_DATA& device) const {
        HKEY key = SetupDiOpenDevRegKey(List_, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
        if (key == INVALID_HANDLE_VALUE) {
            return {};
        }
        std::array<wchar_t, 256> text{};
        DWORD size = sizeof text - sizeof(wchar_t);
        const auto error =
            RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, text.data(), &size);
        RegCloseKey(key);
        return error == ERROR_SUCCESS ? NarrowText(text.data()) : "";
    }

    // Without control characters: what the adapter's maker wrote there is unchecked.
    std::string Property(SP_DEVINFO_DATA& device, DWORD property) const {
        std::array<wchar_t, 512> text{};
        auto* const bytes = reinterpret_cast<PBYTE>(text.data());
        const DWORD size = sizeof text - sizeof(wchar_t);
        const bool known =
            SetupDiGetDeviceRegistryPropertyW(List_, &device, property, nullptr, bytes, size, nullptr)
            != FALSE;
        return known ? PlainText(NarrowText(text.data()), ' ') : "";
    }

private:
    HDEVINFO List_;
};

// "(Standard port types)" is no maker.
std::string Join(const std::string& maker, const std::string& product) {
    const bool known = !maker.empty() && !maker.starts_with('(') && !product.starts_with(maker);
    return known ? maker + " " + product : product;
}

}  // namespace

std::string DescribePort(const std::string& name) {
    const PortList list;
    SP_DEVINFO_DATA device{};
    for (DWORD index = 0; list.Device(index, device); ++index) {
        if (list.PortName(device) != name) {
            continue;
        }
        auto product = list.Property(device, SPDRP_FRIENDLYNAME);
        // The system adds the number, which is known.
        if (const auto number = product.rfind(" (" + name + ")"); number != std::string::npos) {
            product.erase(number);
        }
        if (product.empty()) {
            product = list.Property(device, SPDRP_DEVICEDESC);
        }
        if (!product.empty()) {
            return Join(list.Property(device, SPDRP_MFG), product);
        }
    }
    return "Serial port";
}

}  // namespace burnwick
