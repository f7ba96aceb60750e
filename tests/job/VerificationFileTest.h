#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "job/Verification.h"
#include "support/TempFolder.h"

namespace burnwick::test {

class VerificationFileTest : public ::testing::Test {
protected:
    bool IsThere(const char* name) const { return std::filesystem::exists(Folder.Path() / name); }

    TempFolder Folder;
};

}  // namespace burnwick::test
