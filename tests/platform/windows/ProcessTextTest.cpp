#include "platform/process/ProcessText.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "Child.h"
#include "ForeignFolder.h"
#include "WideVariable.h"
#include "app/DirFile.h"
#include "platform/files/Utf8Path.h"
#include "settings/RegistryShell.h"

#include <shellapi.h>

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;

// Programs that note the text behind their names.
class CommandTextTest : public testing::Test {
protected:
    CommandTextTest() { fs::copy_file(ChildProgram(), Program_); }

    // Of the program that has been started last: the text behind its name.
    std::string Noted() const { return NotedLine(1); }
    std::string NotedLine(int line) const {
        if (!Appears(Note_)) {
            return "no program was started";
        }
        std::istringstream note(Content(Note_));
        fs::remove(Note_);
        std::string text;
        for (int i = 0; i <= line; ++i) {
            std::getline(note, text);
        }
        return text;
    }
    std::string NotedWhenStartedWith(const std::wstring& words) const {
        Child(Quoted(Program_) + words).ExitCode();
        return Noted();
    }
    // As programs do it that put no quotes around a path with blanks.
    std::string NotedWhenStartedUnquotedWith(const std::wstring& words) const {
        Child(Program_.native() + words, 0, Program_).ExitCode();
        return Noted();
    }

    ForeignFolder Folder_;
    fs::path Program_ = Folder_.Path() / u8"Burn  wick \u041F.exe";
    fs::path Note_ = Folder_.Path() / "note";
    WideVariable Noted_{L"BURNWICK_NOTE", Note_.native()};
};

TEST_F(CommandTextTest, KeepsTheBlanksBetweenItsWords) {
    EXPECT_EQ(NotedWhenStartedWith(L" C:\\my  own   unit.bin"), "C:\\my  own   unit.bin");
}

TEST_F(CommandTextTest, HasNoQuotesAndNoBlanksAroundIt) {
    EXPECT_EQ(NotedWhenStartedWith(L"  \"C:\\my  unit.bin\"\t "), "C:\\my  unit.bin");
}

TEST_F(CommandTextTest, IsEmptyWithoutWords) {
    EXPECT_EQ(NotedWhenStartedWith(L""), "");
    EXPECT_EQ(NotedWhenStartedWith(L" "), "");
}

TEST_F(CommandTextTest, KeepsEveryScript) {
    EXPECT_EQ(NotedWhenStartedWith(L" C:\\\u0417\u0430  \u6771\\gr\u00F6\u00DFe \u20AC.bin"),
              "C:\\\u0417\u0430  \u6771\\gr\u00F6\u00DFe \u20AC.bin");
}

TEST_F(CommandTextTest, BeginsBehindAProgramThatHasNoQuotesAroundItsBlanks) {
    EXPECT_EQ(NotedWhenStartedUnquotedWith(L" C:\\my  unit.bin"), "C:\\my  unit.bin");
}

TEST_F(CommandTextTest, IsEmptyWithoutWordsBehindAProgramThatHasNoQuotesAroundItsBlanks) {
    EXPECT_EQ(NotedWhenStartedUnquotedWith(L""), "");
    EXPECT_EQ(NotedWhenStartedUnquotedWith(L" "), "");
}

TEST_F(CommandTextTest, KeepsWordsThatLookLikeOptions) {
    EXPECT_EQ(NotedWhenStartedWith(L" C:\\unit -platform 2.bin"), "C:\\unit -platform 2.bin");
}

// Words with wildcards, as a console leaves them to programs.
class WildcardTest : public CommandTextTest {
protected:
    WildcardTest() { fs::create_directory(Images_); }

    fs::path Image(const char8_t* name) const {
        Put(Images_ / name, "x");
        return Images_ / name;
    }
    // The words that the program then has.
    std::string NotedFor(const wchar_t* name) const {
        Child(Quoted(Program_) + L' ' + Quoted(Images_ / name)).ExitCode();
        return NotedLine(2);
    }

    fs::path Images_ = Folder_.Path() / u8"my  \u0417";
};

TEST_F(WildcardTest, MeansTheFilesOfSuchNamesInTheirOrder) {
    const auto second = Image(u8"two \u041F.BIN");
    const auto first = Image(u8"one.bin");
    Image(u8"three.txt");
    EXPECT_EQ(NotedFor(L"*.bin"), Utf8Text(first) + ' ' + Utf8Text(second));
}

TEST_F(WildcardTest, MeansNoFileWhoseShortNameAloneIsSuch) {
    const auto image = Image(u8"unit.bin");
    Image(u8"unit.bin_old");
    EXPECT_EQ(NotedFor(L"*.bin"), Utf8Text(image));
    EXPECT_EQ(NotedFor(L"*.bin_old"), Utf8Text(Images_ / "unit.bin_old"));
}

TEST_F(WildcardTest, MeansFilesWithoutAnExtensionToo) {
    const auto image = Image(u8"unit");
    EXPECT_EQ(NotedFor(L"*.*"), Utf8Text(image));
    EXPECT_EQ(NotedFor(L"*."), Utf8Text(image));
    EXPECT_EQ(NotedFor(L"un??"), Utf8Text(image));
}

TEST_F(WildcardTest, StaysAsItIsWhereThereIsNoSuchFile) {
    Image(u8"unit.bin_old");
    EXPECT_EQ(NotedFor(L"*.bin"), Utf8Text(Images_ / "*.bin"));
}

// Images as the shell opens them, with the program that the association names.
class AssociatedImageTest : public CommandTextTest {
protected:
    AssociatedImageTest() { Shell_->RegisterFileType(Program_); }
    ~AssociatedImageTest() override { Shell_->UnregisterFileType(); }

    fs::path Image(const char8_t* name) const {
        const auto path = Folder_.Path() / name;
        Put(path, "x");
        return path;
    }
    // The file that the program that the shell starts takes for the one to open.
    fs::path OpenedBy(const std::function<void()>& start) const {
        start();
        return Utf8Path(DirFile::CleanPath(Noted()));
    }

    std::unique_ptr<ShellIntegration> Shell_ = DesktopShell();
};

TEST_F(AssociatedImageTest, IsOpenedWhateverItsName) {
    for (const auto* const name :
         {u8"unit.bin", u8"my unit.bin", u8"my  own   unit.bin", u8" begins with a blank.bin",
          u8"\u043E\u0431\u0440\u0430\u0437  \u6771 gr\u00F6\u00DFe \u20AC.bin",
          u8"it's 100% & (more), [x] ^.bin", u8"a -b c.bin", u8"UNIT  1.BIN"}) {
        const auto image = Image(name);
        EXPECT_EQ(OpenedBy([&] {
                      ShellExecuteW(nullptr, nullptr, image.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
                  }),
                  image);
    }
}

TEST_F(AssociatedImageTest, IsOpenedFromTheConsoleToo) {
    const auto image = Image(u8"my  own \u0417 unit.bin");
    EXPECT_EQ(
        OpenedBy([&] { Child(L"cmd /c start \"\" /wait " + Quoted(image), CREATE_NO_WINDOW).ExitCode(); }),
        image);
}

}  // namespace
}  // namespace burnwick::test
