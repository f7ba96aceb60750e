// A window that has a real line, and what happens at the other end of it.
#include <fcntl.h>
#include <sys/file.h>

#include "gui/frmMainRealLineTest.h"
#include "platform/ChildProcess.h"
#include "platform/PseudoTerminal.h"

namespace burnwick::test {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class frmMainRealLinePosix : public frmMainRealLine {};

TEST_F(frmMainRealLinePosix, AUnitThatIsGoneInMidRunIsATransmittingError) {
    JobsHaveThreads = false;
    UnitProgram unit;
    StartAt(unit.Line());
    WhenStatus("Sending block", [&] { unit.Kill(); });
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    ASSERT_THAT(User.Boxes(), SizeIs(1));
    EXPECT_EQ(User.Boxes().front().Caption, "Transmitting Error");
    EXPECT_THAT(Status(), HasSubstr("Transmitting error"));
    EXPECT_THAT(LogText(), HasSubstr("Transmitting error"));
    ExpectUsable(UnitProgram());
}

TEST_F(frmMainRealLinePosix, ARunThatWaitsForItsUnitIsCancelled) {
    const PseudoTerminal nobody;
    StartAt(nobody.Path());
    WhenStatus("Waiting for response", [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    ExpectUsable(UnitProgram());
}

TEST_F(frmMainRealLinePosix, APortThatAnotherProcessHoldsIsToldWithWhoHoldsIt) {
    const PseudoTerminal line;
    const ChildProcess holder([&line] {
        const int port = open(line.Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        flock(port, LOCK_EX);
    });
    StartAt(line.Path());
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();  // the port dialog
    Click("cmdDownload");
    ASSERT_THAT(User.Boxes(), SizeIs(1));
    EXPECT_EQ(User.Boxes().front().Caption, "CommPort Error");
    EXPECT_THAT(User.Boxes().front().More,
                AllOf(HasSubstr(line.Path() + " is in use by "),
                      HasSubstr("(process " + std::to_string(holder.Process()) + ")")));
    EXPECT_EQ(Status(), "CommPort COM1 is not available.");
    EXPECT_THAT(LogText(), IsEmpty());
    ExpectUsable(UnitProgram());
}

}  // namespace burnwick::test
