#pragma once

#include <string>

#include "gui/HelpTest.h"

namespace burnwick::test {

// A help window without help.
class frmHelpTroubleTest : public HelpTest {
protected:
    void ExpectTrouble(const std::string& why) const {
        EXPECT_THAT(Shown(), ::testing::StartsWith("The help cannot be shown.\n"));
        EXPECT_THAT(Shown(), ::testing::HasSubstr(why));
        EXPECT_THAT(Shown(), ::testing::HasSubstr("Install Burnwick again"));
        EXPECT_FALSE(FindBox().isEnabled());
        EXPECT_FALSE(Button("cmdBack").isEnabled());
    }
};

}  // namespace burnwick::test
