#include <fstream>

#include "job/ListedFileTest.h"

namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(ListedFileTest, IsFoundInAFolderWhosePathIsLongerThan260Characters) {
    fs::path folder = Folder.Path();
    for (const char part : {'a', 'b', 'c'}) {
        folder /= std::string(100, part);
        fs::create_directory(folder);
    }
    std::ofstream(folder / "BURNWICK.HLP") << "help";
    EXPECT_EQ(ListedFile({folder}, "Burnwick.hlp"), folder / "BURNWICK.HLP");
    // The standard library's own way to take it all away finds no end there.
    for (const auto& path : {folder / "BURNWICK.HLP", folder, folder.parent_path()}) {
        fs::remove(path);
    }
}

}  // namespace burnwick::test
