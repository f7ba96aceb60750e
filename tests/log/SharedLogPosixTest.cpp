#include <algorithm>
#include <vector>

#include "log/BigLog.h"
#include "platform/Forked.h"

// The log between several copies of the program.
namespace burnwick::test {

namespace fs = std::filesystem;

class SharedLog : public BigLog {
protected:
    static std::string ImageOf(int process, int record) {
        return "/images/p" + std::to_string(process) + "r" + std::to_string(record) + ".bin";
    }

    // Both write so many records at the same time.
    void WriteFromTwoProcesses(int records) const {
        std::vector<Forked> writers;
        for (const int process : {1, 2}) {
            writers.emplace_back([this, process, records] {
                for (int record = 0; record < records; ++record) {
                    Write(Failure(ImageOf(process, record)));
                }
            });
        }
        for (auto& writer : writers) {
            EXPECT_TRUE(writer.Wait());
        }
    }

    static std::size_t Count(const std::string& text, const std::string& part) {
        std::size_t count = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
            ++count;
        }
        return count;
    }
};

TEST_F(SharedLog, TearsAndLosesNoRecordOfTwoProcesses) {
    constexpr int records = 80;
    WriteFromTwoProcesses(records);
    std::string rest = " \r\n" + Log();
    for (const int process : {1, 2}) {
        for (int record = 0; record < records; ++record) {
            const auto text = " \r\n" + FailureText(ImageOf(process, record));
            const auto at = rest.find(text);
            ASSERT_NE(at, std::string::npos) << text;
            rest.erase(at, text.size());
        }
    }
    EXPECT_EQ(rest, "") << "and there is nothing else";
}

TEST_F(SharedLog, IsRotatedByOneOfTwoProcesses) {
    const auto text = Records(1, 45);
    constexpr int rounds = 40;
    for (int round = 0; round < rounds; ++round) {
        LogHolds(text);
        WriteFromTwoProcesses(1);
        ASSERT_EQ(Names(), (std::set<std::string>{"Burnwick.log", "Burnwick20040721.log"}));
        ASSERT_EQ(Content(Archive), text);
        const auto one = " \r\n" + FailureText(ImageOf(1, 0));
        const auto two = " \r\n" + FailureText(ImageOf(2, 0));
        const auto kept = FromItsPath(Records(16, 45));
        const auto log = Log();
        ASSERT_TRUE(log.starts_with(kept)) << round;
        const auto added = log.substr(kept.size());
        ASSERT_TRUE(added == one + two || added == two + one) << round << added;
        fs::remove(Archive);
        fs::remove(Live);
    }
}

TEST_F(SharedLog, KeepsEveryRecordSomewhereThroughManyRotations) {
    LogHolds(Records(1, 45));
    constexpr int records = 150;
    WriteFromTwoProcesses(records);
    std::string all;
    for (const auto& name : Names()) {
        all += Content(Folder.Path() / name);
    }
    for (const int process : {1, 2}) {
        for (int record = 0; record < records; ++record) {
            ASSERT_GE(Count(all, FailureText(ImageOf(process, record))), 1U) << process << ' ' << record;
        }
    }
    for (int n = 1; n <= 45; ++n) {
        ASSERT_GE(Count(all, "/images/" + std::to_string(n) + ".bin\r\n"), 1U) << n;
    }
}

TEST_F(SharedLog, LosesNoRecordWhereverARotationIsKilled) {
    const auto text = Records(1, 45);
    const auto kept = FromItsPath(Records(16, 45));
    const auto entry = " \r\n" + FailureText("/new.bin");
    bool sawArchive = false;
    bool killed = true;
    for (int stop = 1; killed; ++stop) {
        LogHolds(text);
        killed = KilledAtStop(stop, [this] { Write(Failure("/new.bin")); });
        const auto log = Log();
        ASSERT_TRUE(log == text || Content(Archive) == text) << "killed at stop " << stop;
        ASSERT_TRUE(log == text || log.empty() || log == kept || log == kept + entry) << log;
        sawArchive = sawArchive || (killed && fs::exists(Archive));
        Write(Failure("/next.bin"));
        ASSERT_TRUE(Log().ends_with(FailureText("/next.bin"))) << "killed at stop " << stop;
        ASSERT_EQ(Content(Archive), text);
        for (const auto& name : Names()) {
            fs::remove(Folder.Path() / name);
        }
    }
    EXPECT_TRUE(sawArchive);
}

}  // namespace burnwick::test
