#include <sys/resource.h>
#include <sys/stat.h>

#include <vector>

#include "platform/Forked.h"
#include "settings/SettingsFile.h"

// The settings between several copies of the program, and in trouble.
namespace burnwick::test {

namespace fs = std::filesystem;
using modUtility::ReadIniValue;
using modUtility::WriteIniValue;

class SharedSettings : public SettingsFile {};

// Eight writers on a busy machine may wait for longer than a user would.
class BusySettings : public SettingsFile {
protected:
    BusySettings() { modUtility::SetLockLimit(std::chrono::minutes(2)); }
    ~BusySettings() override { modUtility::SetLockLimit(std::chrono::seconds(2)); }

    static std::string KeyOf(int process, int write) {
        return "Key" + std::to_string(process) + "." + std::to_string(write);
    }
};

TEST_F(BusySettings, LoseNoneOfTheWritesOfEightProcesses) {
    constexpr int processes = 8;
    constexpr int writes = 200;
    std::vector<Forked> writers;
    writers.reserve(processes);
    for (int process = 0; process < processes; ++process) {
        writers.emplace_back([process] {
            for (int write = 0; write < writes; ++write) {
                WriteIniValue("Shared", KeyOf(process, write), std::to_string(write));
            }
        });
    }
    for (auto& writer : writers) {
        EXPECT_TRUE(writer.Wait());
    }
    for (int process = 0; process < processes; ++process) {
        for (int write = 0; write < writes; ++write) {
            ASSERT_EQ(ReadIniValue("Shared", KeyOf(process, write)), std::to_string(write)) << process;
        }
    }
}

TEST_F(SharedSettings, AreWholeWhereverAWriterIsKilled) {
    const std::string before = "[A]\nfirst=1\nk=old\nlast=1\n";
    const std::string after = "[A]\nfirst=1\nk=new\nlast=1\n";
    bool sawOld = false;
    bool sawNew = false;
    bool killed = true;
    for (int stop = 1; killed; ++stop) {
        Holds(before);
        killed = KilledAtStop(stop, [] { WriteIniValue("A", "k", "new"); });
        ASSERT_TRUE(Content() == before || Content() == after) << "killed at stop " << stop << Content();
        sawOld = sawOld || Content() == before;
        sawNew = sawNew || (killed && Content() == after);
        WriteIniValue("A", "k", "newer");
        ASSERT_EQ(Content(), "[A]\nfirst=1\nk=newer\nlast=1\n")
            << "what was left at stop " << stop << " is in the way";
    }
    EXPECT_TRUE(sawOld);
    EXPECT_TRUE(sawNew);
}

TEST_F(SharedSettings, KeepWhatWasWrittenBeforeAWriterIsKilled) {
    constexpr int rounds = 60;
    for (int round = 0; round < rounds; ++round) {
        {
            const Forked writer([round] {
                for (int write = 0;; ++write) {
                    WriteIniValue("Killed", "Round" + std::to_string(round), std::to_string(write));
                }
            });
            while (ReadIniValue("Killed", "Round" + std::to_string(round)).empty()) {
            }
            usleep(static_cast<useconds_t>(round) * 131);  // at another moment each time
        }
        for (int earlier = 0; earlier <= round; ++earlier) {
            ASSERT_NE(ReadIniValue("Killed", "Round" + std::to_string(earlier)), "") << round;
        }
    }
}

TEST_F(SharedSettings, ShowNoReaderHalfAFile) {
    std::string foreign;
    for (int line = 0; line < 5000; ++line) {
        foreign += "a foreign line\n";
    }
    Holds("[A]\nk=0\n" + foreign + "last=1\n");
    const Forked writer([] {
        for (int write = 1;; ++write) {
            WriteIniValue("A", "k", std::to_string(write));
        }
    });
    int changes = 0;
    std::string before = "0";
    while (changes < 20) {
        ASSERT_EQ(ReadIniValue("A", "last"), "1");
        const auto value = ReadIniValue("A", "k");
        ASSERT_NE(value, "");
        changes += value != before ? 1 : 0;
        before = value;
    }
}

TEST_F(SharedSettings, SurviveAFullDisk) {
    Holds("[A]\nk=1\n");
    EXPECT_TRUE(Forked([] {
                    constexpr rlim_t most = 50;
                    const rlimit limit{most, most};
                    signal(SIGXFSZ, SIG_IGN);
                    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
                        _exit(1);
                    }
                    WriteIniValue("A", "k", std::string(200, 'x'));
                }).Wait());
    EXPECT_EQ(Content(), "[A]\nk=1\n");
    EXPECT_FALSE(fs::exists(Folder / "Burnwick.ini.new"));
    WriteIniValue("A", "k", "2");
    EXPECT_EQ(Content(), "[A]\nk=2\n");
}

TEST_F(SharedSettings, AreLeftInAFolderThatMayNotBeWritten) {
    Holds("[A]\nk=1\n");
    ASSERT_EQ(chmod(Path.c_str(), 0666), 0);
    for (const bool withLock : {false, true}) {
        if (withLock) {
            std::ofstream(Folder / "Burnwick.ini.lock");
        }
        ASSERT_EQ(chmod(Folder.Path().c_str(), 0555), 0);
        EXPECT_TRUE(DoneAsAnyUser([] { WriteIniValue("A", "k", "2"); }));
        ASSERT_EQ(chmod(Folder.Path().c_str(), 0777), 0);
        EXPECT_EQ(Content(), "[A]\nk=1\n");
    }
}

TEST_F(SharedSettings, AreLeftWhenTheFileMayNotBeWritten) {
    Holds("[A]\nk=1\n");
    ASSERT_EQ(chmod(Path.c_str(), 0444), 0);
    EXPECT_TRUE(DoneAsAnyUser([] { WriteIniValue("A", "k", "2"); }));
    EXPECT_EQ(Content(), "[A]\nk=1\n");
}

TEST_F(SharedSettings, AreLeftWhenTheFileMayNotBeRead) {
    Holds("[A]\nk=1\n");
    ASSERT_EQ(chmod(Path.c_str(), 0222), 0);
    EXPECT_TRUE(DoneAsAnyUser([] {
        WriteIniValue("A", "k", "2");
        if (!ReadIniValue("A", "k").empty()) {
            _exit(1);
        }
    }));
    EXPECT_EQ(Content(), "[A]\nk=1\n");
}

}  // namespace burnwick::test
