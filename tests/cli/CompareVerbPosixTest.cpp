#include <filesystem>

#include "cli/CompareVerbTest.h"

// Links as POSIX systems have them.
namespace burnwick::test {

TEST_F(CompareVerb, RefusesAFileAndALinkToIt) {
    const std::string link = Folder / "link.bin";
    std::filesystem::create_symlink(First(), link);
    ExpectRefusal(64, {"compare", First(), link}, "are the same file: name two files to compare.");
}

}  // namespace burnwick::test
