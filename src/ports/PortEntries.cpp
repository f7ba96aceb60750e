#include "ports/PortEntries.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace burnwick {

namespace {

// Digits alone: neither sign nor blank.
int NumberOf(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::max(number, 0) : 0;
}

}  // namespace

std::string PortName(int port) {
    return "COM" + std::to_string(port);
}

std::string DescriptionOf(const FoundPort& port) {
    return port.Usable ? port.Description : port.Description + ": " + port.Trouble;
}

PortEntries EntriesOf(const std::vector<FoundPort>& found, int remembered) {
    PortEntries list;
    std::string troubles;
    for (const FoundPort& port : found) {
        if (!port.Usable) {
            troubles += (troubles.empty() ? "" : "\n") + PortName(port.Number) + ": " + port.Trouble;
            continue;
        }
        if (port.Number == remembered) {
            list.Selected = list.Entries.size();
        }
        list.Entries.push_back({port.Number, "Communications Port (" + PortName(port.Number) + ")",
                                port.Device + "\n" + port.Description});
    }
    if (list.Entries.empty()) {
        list.Entries.push_back({0, "No COM Port Available", ""});
        list.ToolTip = troubles;
    }
    return list;
}

int SelectedPort(std::string_view text) {
    constexpr std::string_view name = "COM";
    const auto place = text.find(name);
    if (place == std::string_view::npos) {
        return 0;
    }
    const std::string_view behind = text.substr(place + name.size());
    return NumberOf(behind.substr(0, behind.substr(0, 2).ends_with(')') ? 1 : 2));
}

std::string PortsCaption(int entries) {
    return entries == 1 ? "Available COM Port:" : "Available COM Ports:";
}

int BaudOptionOf(std::string_view stored) {
    return stored.starts_with('1') ? 1 : 0;
}

int BaudIndexOf(std::string_view stored) {
    stored.remove_prefix(std::min(stored.find_first_not_of(" \t"), stored.size()));
    int index = 0;
    const auto [end, error] = std::from_chars(stored.data(), stored.data() + stored.size(), index);
    return error == std::errc::result_out_of_range ? std::numeric_limits<int>::max() : index;
}

BoxText PortRefusedBox(int port, const std::string& description) {
    return {"CommPort Error", PortName(port) + " is not available. " + description
                                  + ".    \nPlease try to select another CommPort."};
}

}  // namespace burnwick
