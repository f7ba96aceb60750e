#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "simulator/Host.h"
#include "simulator/UnitProcess.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr int Failure = 1;
constexpr int Usage = 64;

// Each test has a folder of its own.
class UnitProgram : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "burnwick-unit-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        Folder_ = name;
    }

    void TearDown() override { fs::remove_all(Folder_); }

    std::string PathOf(const std::string& name) const { return (Folder_ / name).string(); }

    std::string WriteFile(const std::string& name, const std::string& text) const {
        std::ofstream(PathOf(name), std::ios::binary) << text;
        return PathOf(name);
    }

    std::string ReadFile(const std::string& name) const {
        std::ifstream file(PathOf(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    fs::path Folder_;
};

// Sets the link up at 115200 bit/s.
void SetUpLink(const HostPort& port, const Bytes& mode) {
    port.Write(Probe);
    ASSERT_EQ(port.Read(4), Ready);
    port.Write(mode);
    port.Write(Speed115200);
    ASSERT_EQ(port.Read(4), Acknowledge);
    port.SetSpeed(B115200);
    ASSERT_EQ(port.Read(4), Ready);
}

TEST_F(UnitProgram, PrintsItsLineAndAnswersAProbeThere) {
    UnitProcess unit({});
    const HostPort port(unit.ReadLine(), B9600);
    port.Write(Probe);
    EXPECT_EQ(port.Read(4), Ready);
    unit.Signal(SIGINT);
    EXPECT_EQ(unit.Wait(), 0);
    EXPECT_EQ(unit.ReadLine(), "");
    EXPECT_EQ(unit.Errors(), "");
}

TEST_F(UnitProgram, KeepsALinkToItsLineUntilItEnds) {
    const auto link = PathOf("line");
    fs::create_symlink("/nowhere", link);
    UnitProcess unit({"--link", link});
    EXPECT_EQ(fs::read_symlink(link).string(), unit.ReadLine());
    unit.Signal(SIGTERM);
    EXPECT_EQ(unit.Wait(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(UnitProgram, LeavesAFileAloneThatBearsTheLinksName) {
    const auto path = WriteFile("line", "mine");
    UnitProcess unit({"--link", path});
    EXPECT_EQ(unit.Wait(), Failure);
    EXPECT_NE(unit.Errors().find(path), std::string::npos);
    EXPECT_EQ(ReadFile("line"), "mine");
}

TEST_F(UnitProgram, GivesOutWhatItsFlashFileHolds) {
    const auto flash = WriteFile("flash", std::string(512, 'x'));
    UnitProcess unit({"--flash", flash});
    const HostPort port(unit.ReadLine(), B9600);
    SetUpLink(port, UploadMode);
    port.Write(BlockRequest(0));
    EXPECT_EQ(port.Read(260), Acknowledge + Bytes(BlockSize, std::byte{'x'}));
}

TEST_F(UnitProgram, HasWrittenItsFlashFileWhenAProbeAfterTheDownloadIsAnswered) {
    const auto flash = WriteFile("flash", std::string(512, 'x'));
    UnitProcess unit({"--flash", flash, "--pace"});
    const HostPort port(unit.ReadLine(), B9600);
    SetUpLink(port, ProgramMode);
    port.Write(BlockWithData(0, 'y'));
    EXPECT_EQ(port.Read(4), Acknowledge);
    port.Write(BlockWithData(1, 'z'));
    EXPECT_EQ(port.Read(4), Acknowledge);
    port.Write(Finish);
    // The speed may change only when the message has crossed, and a paced line takes its time: ask until it
    // answers.
    const auto fileIsWritten = [this] {
        return ReadFile("flash") == std::string(256, 'y') + std::string(256, 'z');
    };
    for (int i = 0; i < 5000 && !fileIsWritten(); ++i) {
        usleep(1000);
    }
    EXPECT_TRUE(fileIsWritten());
    port.SetSpeed(B9600);
    port.Write(Probe);
    EXPECT_EQ(port.Read(4), Ready);
}

TEST_F(UnitProgram, KeepsAHalfDoneDownloadWhenItEnds) {
    UnitProcess unit({"--flash", PathOf("flash"), "--size", "768"});
    const HostPort port(unit.ReadLine(), B9600);
    SetUpLink(port, ProgramMode);
    port.Write(BlockWithData(0, 'y'));
    EXPECT_EQ(port.Read(4), Acknowledge);
    unit.Signal(SIGTERM);
    EXPECT_EQ(unit.Wait(), 0);
    EXPECT_EQ(ReadFile("flash"), std::string(256, 'y') + std::string(512, '\xFF'));
}

TEST_F(UnitProgram, CreatesAMissingFlashFileErased) {
    UnitProcess unit({"--flash", PathOf("flash"), "--size", "65536"});
    unit.ReadLine();
    EXPECT_EQ(ReadFile("flash"), std::string(65536, '\xFF'));
}

TEST_F(UnitProgram, RefusesAFlashFileThatIsNoWholeNumberOfBlocks) {
    const auto flash = WriteFile("flash", std::string(300, 'x'));
    UnitProcess unit({"--flash", flash});
    EXPECT_EQ(unit.Wait(), Failure);
    const auto errors = unit.Errors();
    EXPECT_NE(errors.find(flash), std::string::npos) << errors;
    EXPECT_NE(errors.find("300"), std::string::npos) << errors;
    EXPECT_EQ(unit.ReadLine(), "");
    EXPECT_EQ(ReadFile("flash"), std::string(300, 'x'));
}

TEST_F(UnitProgram, ServesOneHostAfterAnother) {
    UnitProcess unit({"--ident", "I"});
    const auto path = unit.ReadLine();
    for (int i = 0; i < 3; ++i) {
        const HostPort port(path, B9600);
        port.Write(Probe);
        EXPECT_EQ(port.Read(4), Ready);
        port.Write(Identify);
        EXPECT_EQ(port.Read(8).at(2), std::byte{'I'});
    }
}

TEST_F(UnitProgram, GarblesWhatIsSentAtAnotherSpeed) {
    UnitProcess unit({});
    const HostPort port(unit.ReadLine(), B9600);
    port.Write(Probe);
    EXPECT_EQ(port.Read(4), Ready);
    port.Write(ProgramMode);
    port.Write(Speed57600);
    EXPECT_EQ(port.Read(4), Acknowledge);
    const auto garbled = port.Read(4);
    EXPECT_EQ(garbled.size(), 4U);
    EXPECT_NE(garbled, Ready);
}

TEST_F(UnitProgram, GoesWrongAsOrdered) {
    UnitProcess unit({"--fault", "negative-8@0", "--fault", "flip@0"});
    const HostPort port(unit.ReadLine(), B9600);
    SetUpLink(port, ProgramMode);
    port.Write(BlockWithData(0, 1));
    EXPECT_EQ(port.Read(4), Negative8);
    port.Write(BlockWithData(0, 1));
    EXPECT_EQ(port.Read(4), BytesOf(0xFF, 0xAA, 0x16, 0x00));
}

TEST_F(UnitProgram, RefusesOptionsThatMeanNothing) {
    const std::vector<std::vector<std::string>> wrong = {{"--fault", "unknown"}, {"--fault", "drop@x"},
                                                         {"--ident", "AB"},      {"--size", "100"},
                                                         {"--size", "0"},        {"what"}};
    for (const auto& arguments : wrong) {
        UnitProcess unit(arguments);
        EXPECT_EQ(unit.Wait(), Usage) << arguments.back();
        EXPECT_NE(unit.Errors(), "");
    }
}

TEST_F(UnitProgram, ShowsItsOptions) {
    UnitProcess unit({"--help"});
    EXPECT_NE(unit.ReadLine(), "");
    EXPECT_EQ(unit.Wait(), 0);
}

}  // namespace
}  // namespace simulator
