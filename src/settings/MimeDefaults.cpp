#include "settings/MimeDefaults.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/files/TextLines.h"
#include "settings/KeyFile.h"

namespace burnwick {

namespace {

constexpr std::string_view Defaults = "Default Applications";
constexpr std::string_view Offered = "Added Associations";
constexpr std::string_view Refused = "Removed Associations";

using Entries = std::vector<std::string>;

Entries EntriesOf(const KeyFile& list, std::string_view group, std::string_view type) {
    const auto value = list.Value(group, type).value_or("");
    Entries entries;
    for (std::string_view rest = value; !rest.empty();) {
        const auto entry = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
        if (!Trimmed(entry).empty()) {
            entries.emplace_back(Trimmed(entry));
        }
    }
    return entries;
}

void SetEntries(KeyFile& list, std::string_view group, std::string_view type, const Entries& entries) {
    if (entries.empty()) {
        list.RemoveKey(group, type);
        return;
    }
    std::string value = entries.front();
    for (auto entry = entries.begin() + 1; entry != entries.end(); ++entry) {
        value += ';' + *entry;
    }
    list.SetValue(group, type, entries.size() > 1 ? value + ';' : value);
}

// Also from an older line for the same type, which counts when the newer one is gone.
void TakeOut(KeyFile& list, std::string_view group, std::string_view type, std::string_view entry) {
    auto entries = EntriesOf(list, group, type);
    while (std::erase(entries, entry) > 0) {
        SetEntries(list, group, type, entries);
        entries = EntriesOf(list, group, type);
    }
}

}  // namespace

bool IsDefault(const std::string& list, std::string_view type, std::string_view entry) {
    const auto entries = EntriesOf(KeyFile(list), Defaults, type);
    return !entries.empty() && entries.front() == entry;
}

std::string WithDefault(std::string list, std::string_view type, std::string_view entry) {
    const bool already = IsDefault(list, type, entry);
    KeyFile changed(std::move(list));
    TakeOut(changed, Refused, type, entry);
    if (!already) {
        auto entries = EntriesOf(changed, Defaults, type);
        std::erase(entries, entry);
        entries.insert(entries.begin(), std::string(entry));
        SetEntries(changed, Defaults, type, entries);
    }
    return changed.Text();
}

std::string WithoutDefault(std::string list, std::string_view type, std::string_view entry) {
    KeyFile changed(std::move(list));
    TakeOut(changed, Defaults, type, entry);
    TakeOut(changed, Offered, type, entry);
    return changed.Text();
}

}  // namespace burnwick
