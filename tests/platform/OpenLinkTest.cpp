#include "platform/desktop/OpenLink.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "EnvironmentVariable.h"
#include "support/TempFolder.h"

namespace burnwick::test {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

// A desktop's opener that notes how it was called. It is no shell: that would lift the signals by itself.
class OpenLinkTest : public ::testing::Test {
protected:
    OpenLinkTest() {
        const auto opener = Folder.Path() / "xdg-open";
        std::ofstream(opener) << "#!/usr/bin/env python3\nimport os, sys\n"
                                 "here = os.path.dirname(os.path.abspath(sys.argv[0]))\n"
                                 "with open(here + '/new', 'w') as note:\n"
                                 "    print(sys.argv[1:], open('/proc/self/status').read(), file=note)\n"
                                 "os.rename(here + '/new', here + '/called')\n";
        fs::permissions(opener, fs::perms::owner_all);
    }

    std::string Called() const {
        const auto note = Folder.Path() / "called";
        for (int i = 0; i < 1000 && !fs::exists(note); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        std::ifstream file(note);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TempFolder Folder;
    EnvironmentVariable Path{"PATH", Folder.Path().string() + ":/usr/bin:/bin"};
};

TEST_F(OpenLinkTest, HandsTheAddressOverAsOneArgument) {
    EXPECT_TRUE(OpenLink("https://www.burnwick.example/?a=$(b)&c;d"));
    EXPECT_THAT(Called(), StartsWith("['https://www.burnwick.example/?a=$(b)&c;d'] "));
}

TEST_F(OpenLinkTest, LeavesTheProgramItsSignals) {
    sigset_t held{};
    sigset_t before{};
    sigemptyset(&held);
    sigaddset(&held, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &held, &before);
    EXPECT_TRUE(OpenLink("https://www.burnwick.example/"));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_THAT(Called(), HasSubstr("SigBlk:\t0000000000000000"));
}

TEST_F(OpenLinkTest, SaysWhenTheDesktopHasNoOpener) {
    fs::remove(Folder.Path() / "xdg-open");
    const EnvironmentVariable nothing("PATH", Folder.Path().string());
    EXPECT_FALSE(OpenLink("https://www.burnwick.example/"));
}

}  // namespace burnwick::test
