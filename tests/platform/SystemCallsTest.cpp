#include <gmock/gmock.h>
#include <sys/wait.h>

#include <algorithm>
#include <fstream>

#include "PseudoTerminal.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using testing::Contains;
using testing::ContainsRegex;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

using Lines = std::vector<std::string>;

// The system calls of one session on a line.
class SystemCalls : public testing::Test {
protected:
    void SetUp() override {
        const auto trace = Folder_.Path() / "trace";
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // A leak check traces the program itself, which is traced already.
            setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
            execl(STRACE, STRACE, "-f", "-e", "trace=openat,ioctl,write,flock,fcntl", "-o", trace.c_str(),
                  TTY_SESSION, Pty_.Path().c_str(), nullptr);
            _exit(127);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0) << "the session failed, or cannot be traced here";
        std::ifstream file(trace);
        for (std::string line; std::getline(file, line);) {
            Calls_.push_back(line);
        }
        ASSERT_THAT(Having(Pty_.Path()), SizeIs(1)) << "nothing was traced";
    }

    Lines Having(const std::string& text) const {
        Lines found;
        std::copy_if(Calls_.begin(), Calls_.end(), std::back_inserter(found),
                     [&](const auto& call) { return call.find(text) != std::string::npos; });
        return found;
    }

    // As the opening call gave it.
    std::string LineDescriptor() const {
        const auto opened = Having(Pty_.Path()).front();
        return opened.substr(opened.rfind(' ') + 1);
    }

    test::TempFolder Folder_;
    test::PseudoTerminal Pty_;
    Lines Calls_;
};

TEST_F(SystemCalls, NeverPurgeWhatWasWritten) {
    EXPECT_THAT(Having("TCFLSH"), Not(testing::IsEmpty()));
    EXPECT_THAT(Having("TCFLSH"), Each(HasSubstr("TCIFLUSH")));
    EXPECT_THAT(Having("TCSETSF"), SizeIs(0));
    EXPECT_THAT(Having("TCSETAF"), SizeIs(0));
    EXPECT_THAT(Pty_.Receive(262), SizeIs(262));
}

TEST_F(SystemCalls, WriteAFrameAtOnce) {
    // A sanitizer writes too, elsewhere.
    const auto writes = Having(" write(" + LineDescriptor() + ",");
    EXPECT_THAT(writes, SizeIs(1));
    EXPECT_THAT(writes, Each(ContainsRegex(", 262\\) += 262$")));
}

TEST_F(SystemCalls, TakeTheLineForThisProgramAlone) {
    EXPECT_THAT(Having("TIOCEXCL"), Each(ContainsRegex("= 0$")));
    EXPECT_THAT(Having("TIOCEXCL"), SizeIs(1));
    EXPECT_THAT(Having("LOCK_EX|LOCK_NB"), SizeIs(1));
    EXPECT_THAT(Having("TIOCNXCL"), SizeIs(1));
}

TEST_F(SystemCalls, OpenTheLineSoThatNothingWaitsAndNothingIsInherited) {
    for (const auto* const flag : {"O_RDWR", "O_NOCTTY", "O_NONBLOCK", "O_CLOEXEC"}) {
        EXPECT_THAT(Having(Pty_.Path()), Each(HasSubstr(flag)));
    }
}

TEST_F(SystemCalls, AskForAShorterLatency) {
    EXPECT_THAT(Having("TIOCGSERIAL"), Not(testing::IsEmpty()));
    EXPECT_TRUE(!Having("TIOCSSERIAL").empty()
                || Having("TIOCGSERIAL").front().find("= -1 ") != std::string::npos);
}

TEST_F(SystemCalls, EndWithTheLinesSettingsOfBefore) {
    const auto changes = Having("TCSETS");
    ASSERT_THAT(changes, Contains(HasSubstr("B57600")));
    EXPECT_THAT(changes.back(), HasSubstr("B19200"));
    EXPECT_THAT(changes.back(), Not(HasSubstr("-icanon")));
    EXPECT_THAT(changes.back(), Not(HasSubstr("-echo ")));
}

}  // namespace
}  // namespace burnwick
