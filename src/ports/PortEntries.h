#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/window/BoxText.h"

// What the port dialog lists and says.
namespace burnwick {

// A port that is there, usable or not.
struct FoundPort {
    int Number;
    std::string Device;
    std::string Description;  // what the system knows of it
    bool Usable;
    std::string Trouble;  // why it is not usable
};

// "COM5".
std::string PortName(int port);

// What the system knows of the port, and why it is unusable if it is.
std::string DescriptionOf(const FoundPort& port);

struct PortEntry {
    int Number = 0;  // 0 for the entry that says that there is no port
    std::string Text;
    std::string ToolTip;
};

// The entries of the list: each usable port, in ascending order, or else one that says that there is none.
struct PortEntries {
    std::vector<PortEntry> Entries;
    std::size_t Selected = 0;
    std::string ToolTip;  // of the list itself: why ports that are there cannot be used, when none can
};

// `remembered` is selected when it is usable, or else the first port.
PortEntries EntriesOf(const std::vector<FoundPort>& found, int remembered);

// The number in an entry's text ("Communications Port (COM12)"); 0 when there is none.
int SelectedPort(std::string_view text);

// The caption of the frame around a list of so many entries.
std::string PortsCaption(int entries);

// The baud rate option that a stored text selects, by its first character: 1, or else 0.
int BaudOptionOf(std::string_view stored);

// The number with which a stored baud rate begins, after blanks: what an option has to be the same as to
// count as unchanged. 0 for a text without a number.
int BaudIndexOf(std::string_view stored);

// A port that could not be opened when it was chosen.
BoxText PortRefusedBox(int port, const std::string& description);

}  // namespace burnwick
