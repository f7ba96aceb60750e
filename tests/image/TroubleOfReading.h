#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "image/modBinFileInfo.h"
#include "support/TempFolder.h"

namespace burnwick::test {

class TroubleOfReading : public testing::Test {
protected:
    TempFolder Folder;
};

}  // namespace burnwick::test
