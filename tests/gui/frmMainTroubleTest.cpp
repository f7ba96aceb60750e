// Bad input: each time a clear message, the window idle and usable afterwards, and nothing lost.
#include <filesystem>

#include "gui/WindowTest.h"
#include "support/ShutFile.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;

}  // namespace

class frmMainTrouble : public WindowTest {
protected:
    // The next run is as good as any.
    void ExpectUsable() {
        EXPECT_TRUE(IsIdle());
        Settings["LastOpenFile/1"] = Image("good.bin");
        Window.reset();
        ConnectUnitOfSize(ImageSize);
        Start();
        Trigger("mnuFileMRF_1");
        EXPECT_EQ(Status(), Programmed);
    }
};

TEST_F(frmMainTrouble, AFolderIsToldToBeOne) {
    Start(Folder.Path().string());
    EXPECT_EQ(Status(), "Invalid file format.");
    EXPECT_THAT(Display(), StartsWith("Invalid file format.\n" + Folder.Path().string() + ": "));
    EXPECT_THAT(Display(), HasSubstr("folder"));
    ExpectUsable();
}

TEST_F(frmMainTrouble, AVanishedFileIsToldToBeGone) {
    Start(Folder / "gone.bin");
    EXPECT_EQ(Status(), "Invalid file format.");
    EXPECT_THAT(Display(), HasSubstr(Folder / "gone.bin: No such file"));
    ExpectUsable();
}

TEST_F(frmMainTrouble, AForeignFileIsRefused) {
    Start(Folder.Write("text.bin", AnyBytes(1000)));
    EXPECT_EQ(Status(), "Invalid file format.");
    EXPECT_EQ(Display(), "Invalid file format.");
    ExpectUsable();
}

TEST_F(frmMainTrouble, AnUnreadableFileIsToldWithTheReason) {
    const std::string image = Folder.Write("locked.bin", AnyBytes(65'536));
    {
        const ShutFile shut(image);
        Start(image);
    }
    EXPECT_EQ(Status(), "Invalid file format.");
    EXPECT_EQ(Display(), "Invalid file format.\n" + image + ": Permission denied.\n");
    ExpectUsable();
}

TEST_F(frmMainTrouble, AnImageThatVanishesInMidRunIsProgrammedAsItWas) {
    ConnectUnitOfSize(ImageSize);
    Start();
    const std::string image = Image();
    WhenStatus("Sending block 100", [&] { fs::remove(image); });
    Download(image);
    EXPECT_EQ(Status(), Programmed);
    EXPECT_EQ(Unit->Flash(), SampleImage(ImageSize));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, AnImageThatVanishesIsVerifiedAsItWasRead) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Start();
    const std::string image = Image();
    WhenStatus("Sending block 100", [&] { fs::remove(image); });
    User.TypeFile(image);
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
    EXPECT_THAT(Display(), testing::EndsWith("Verifying was successfully.\n"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, AnImageThatChangesIsToldWhereTheUnitDiffers) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize, ThreeWrongBytes());
    Start();
    const std::string image = Image();
    WhenStatus("Verifying block 100", [&] { Folder.Write("unit.bin", AnyBytes(ImageSize)); });
    User.TypeFile(image);
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
    EXPECT_THAT(Display(), testing::EndsWith("Verifying error: 3 bytes are different.\n"
                                             "unit.bin has changed since the run began.\n"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, AVerificationWithoutAFolderToReadIntoIsAnError) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Start();
    fs::remove(Folder / "home");
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
    EXPECT_THAT(Display(), HasSubstr("Verifying error: no file can be made in " + (Folder / "home") + ".\n"));
    EXPECT_EQ(Status(), Programmed);
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, SettingsFullOfNonsenseKeepNobodyFromProgramming) {
    for (const char* const key :
         {"COMPort/COM", "COMPort/BaudRate", "Options/Verify", "Options/LogOption", "Options/Desktop",
          "Options/ContextMenu", "Path/LastPath", "LastOpenFile/1", "LastOpenFile/2", "LastOpenFile/3",
          "LastOpenFile/4", "ChipSelect/UploadChipSize", "Status/Programming"}) {
        Settings[key] = std::string("\t&%n\xFF ") + std::string(240, '9');
    }
    ConnectUnitOfSize(ImageSize);
    Start();
    EXPECT_THAT(Status(), StartsWith("Ready on COM1 ("));
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_TRUE(IsIdle());
    User.Escape();
    Click("cmdUpload");
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, ALogThatIsAFolderIsLeftAlone) {
    fs::create_directory(Folder / "home/Burnwick.log");
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_TRUE(fs::is_directory(Folder / "home/Burnwick.log"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, AnUploadIntoAFolderThatIsNotThereIsTold) {
    Start();
    fs::create_directory(Folder / "gone");
    OnStore = [&](const std::string& key) {
        if (key == "Path/LastPath") {
            fs::remove_all(Folder / "gone");
        }
    };
    Upload(1, Folder / "gone/read.bin");
    EXPECT_THAT(Status(), StartsWith("Error: Cannot access to "));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainTrouble, MarkupInAPathIsShownAsItStands) {
    Settings["LastOpenFile/1"] = "/<b>gone</b>.bin";
    Start();
    User.Next([](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).textFormat(), Qt::PlainText);
        dialog.accept();
    });
    Trigger("mnuFileMRF_1");
}

}  // namespace burnwick::test
