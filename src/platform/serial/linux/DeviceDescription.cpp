#include "platform/serial/linux/DeviceDescription.h"

#include <algorithm>
#include <fstream>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// The first line of the file, without the blanks around it: what the adapter's maker wrote there is
// unchecked.
std::string FirstLine(const fs::path& file) {
    std::string line;
    std::getline(std::ifstream(file), line);
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    line.erase(0, line.find_first_not_of(' '));
    return line;
}

std::string Join(const std::string& one, const std::string& separator, const std::string& other) {
    return one.empty() || other.empty() ? one + other : one + separator + other;
}

std::string DescribeFolder(const fs::path& folder) {
    const auto name = Join(FirstLine(folder / "manufacturer"), " ", FirstLine(folder / "product"));
    const auto serial = FirstLine(folder / "serial");
    return Join(name, ", ", serial.empty() ? "" : "serial number " + serial);
}

}  // namespace

std::string DescribeDeviceIn(const fs::path& sysfs, const std::string& device) {
    std::error_code error;
    const auto name = fs::weakly_canonical(device, error).filename();
    const auto top = fs::canonical(sysfs, error);
    auto folder =
        error || name.empty() ? fs::path() : fs::canonical(sysfs / "class/tty" / name / "device", error);
    for (; !error && !folder.empty() && folder != top && folder != folder.root_path();
         folder = folder.parent_path()) {
        if (auto description = DescribeFolder(folder); !description.empty()) {
            return description;
        }
        // The folders above an adapter's own tell of the hub that it is plugged into.
        if (fs::exists(folder / "idVendor", error)) {
            break;
        }
    }
    return "Serial port";
}

}  // namespace burnwick
