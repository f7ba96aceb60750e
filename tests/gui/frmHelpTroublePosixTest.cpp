// Help files in folders that only POSIX has.
#include <filesystem>

#include "gui/frmHelpTroubleTest.h"

namespace burnwick::test {

using ::testing::HasSubstr;
using ::testing::Not;

namespace fs = std::filesystem;

class frmHelpTroublePosixTest : public frmHelpTroubleTest {};

TEST_F(frmHelpTroublePosixTest, APathIsShownAsItIs) {
    const fs::path folder = Files.Path() / "<b>bold & more\nlines";
    fs::create_directory(folder);
    OpenFile(folder / "Burnwick.hlp");
    EXPECT_THAT(Shown(), HasSubstr("<b>bold & more"));
}

TEST_F(frmHelpTroublePosixTest, APathOf4000CharactersIsTold) {
    OpenFile(Files.Path() / std::string(4000, 'x'));
    ExpectTrouble("File name too long");
    EXPECT_LE(Help->width(), 1000);
}

}  // namespace burnwick::test
