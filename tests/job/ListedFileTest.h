#pragma once

#include <gtest/gtest.h>

#include "job/ListedFile.h"
#include "support/TempFolder.h"

namespace burnwick::test {

class ListedFileTest : public testing::Test {
protected:
    std::filesystem::path Found() const { return ListedFile({Folder.Path()}, "Burnwick.hlp"); }

    TempFolder Folder;
};

}  // namespace burnwick::test
