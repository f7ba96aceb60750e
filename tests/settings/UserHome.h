#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/EnvironmentVariable.h"
#include "settings/RegistryShell.h"
#include "support/TempFolder.h"

namespace burnwick::test {

// Tests on the desktop of a user whose home is the test's own.
class UserHome : public ::testing::Test {
protected:
    static constexpr auto Program = "/opt/burnwick/Burnwick";

    UserHome() {
        std::filesystem::create_directories(Home);
        // Whoever does the test as another user writes here too.
        std::filesystem::permissions(Home, std::filesystem::perms::all);
    }

    static std::string TextOf(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static void Write(const std::filesystem::path& path, std::string_view text) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }

    // What a command prints; its arguments hold no apostrophes.
    static std::string Output(const std::vector<std::string>& command) {
        std::string line;
        for (const auto& argument : command) {
            line += '\'' + argument + "' ";
        }
        std::array<char, 512> chunk{};
        std::string output;
        std::FILE* const pipe = popen((line + "2>&1").c_str(), "re");
        while (std::fgets(chunk.data(), chunk.size(), pipe) != nullptr) {
            output += chunk.data();
        }
        pclose(pipe);
        return output;
    }

    // Every file and folder in the home.
    std::vector<std::string> Everything() const {
        std::vector<std::string> paths;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Home)) {
            paths.push_back(entry.path().lexically_relative(Home));
        }
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    TempFolder Folder;
    std::filesystem::path Home = Folder.Path() / "home";
    std::filesystem::path Entry = Home / ".local/share/applications/Burnwick.desktop";
    std::filesystem::path Package = Home / ".local/share/mime/packages/burnwick.xml";
    std::filesystem::path Defaults = Home / ".config/mimeapps.list";
    EnvironmentVariable HomeVariable{"HOME", Home.string()};
    EnvironmentVariable NoData{"XDG_DATA_HOME", std::nullopt};
    EnvironmentVariable NoConfig{"XDG_CONFIG_HOME", std::nullopt};
    // Tools of the desktop that the tests run on would ask that one.
    EnvironmentVariable NoBus{"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (Folder / "no-bus")};
    std::unique_ptr<ShellIntegration> Shell = DesktopShell();
};

}  // namespace burnwick::test
