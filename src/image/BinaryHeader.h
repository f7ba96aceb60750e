#pragma once

#include <string>

#include "image/SearchBuffer.h"
#include "image/modBinFileInfo.h"

namespace burnwick::modBinFileInfo {

// Fills model, date stamp, version and language from the binary header at the buffer's beginning, if it is of
// the one known format; leaves them empty otherwise.
void ReadBinaryHeader(const SearchBuffer& buffer, BinFileInfo& info);

// "4.05": two bytes that hold a version's parts.
std::string VersionFromBytes(const SearchBuffer& buffer, std::size_t at);

}  // namespace burnwick::modBinFileInfo
