#include <filesystem>

#include "cli/DownloadVerbTest.h"
#include "support/AnyUser.h"

// Rights as POSIX systems have them.
namespace burnwick::test {

TEST_F(DownloadVerb, EndsWith6ForAnUnreadableFile) {
    const std::string image = Image();
    std::filesystem::permissions(image, std::filesystem::perms::none);
    const AnyUser user;
    ExpectRefusal(6, {"download", image, "--port", "COM2"},
                  "Cannot access to " + image + " (Permission denied).");
}

}  // namespace burnwick::test
