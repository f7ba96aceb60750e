#pragma once

#include <array>
#include <string>

#include "engine/RunResult.h"
#include "settings/Settings.h"

namespace burnwick {

// The image files used last, the most recent first; an empty text where there is none.
using RecentFiles = std::array<std::string, 4>;

RecentFiles ReadRecentFiles(const SettingValues& settings);

// Makes a path the most recent one. A path that is there already, in whatever case, moves to the front.
void AddRecentFile(const std::string& path, SettingStore& settings);

// The menu entry of a path, by its place from 1 to 4: "&2 C:\images\unit.bin". An ampersand of the path's own
// is doubled, for a single one underlines the character behind it.
std::string RecentCaption(int index, const std::string& path);

// The path in such an entry: what follows its first three characters.
std::string PathOfCaption(const std::string& caption);

// False for an upload that was cancelled: it leaves no file.
bool LeavesRecentFile(const RunResult& run, bool isUpload);

}  // namespace burnwick
