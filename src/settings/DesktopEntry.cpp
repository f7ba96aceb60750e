#include "settings/DesktopEntry.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "settings/KeyFile.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// What a value escapes with a backslash, so that it stays on its line; a backslash stands for itself.
constexpr std::array<std::pair<char, char>, 5> Escapes{
    {{'\\', '\\'}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'s', ' '}}};

std::string Escaped(std::string_view text) {
    std::string value;
    for (const char c : text) {
        const auto* const escape =
            std::find_if(Escapes.begin(), Escapes.end(), [c](auto pair) { return pair.second == c; });
        // A blank needs none in the middle of a value.
        value += escape == Escapes.end() || c == ' ' ? std::string{c} : std::string{'\\', escape->first};
    }
    return value;
}

std::string Unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char next = i + 1 < value.size() ? value[i + 1] : '\0';
        const auto* const escape =
            std::find_if(Escapes.begin(), Escapes.end(), [next](auto pair) { return pair.first == next; });
        const bool escaped = value[i] == '\\' && escape != Escapes.end();
        text += escaped ? escape->second : value[i];
        i += escaped ? 1 : 0;
    }
    return text;
}

bool NeedsNoQuotes(char c) {
    const bool letterOrDigit = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    const bool ascii = static_cast<unsigned char>(c) < 0x80;
    return letterOrDigit || !ascii || std::string_view("/._-+,:@%=").find(c) != std::string_view::npos;
}

// Quoted only where it must be: some who start programs know no quotes.
std::string Argument(std::string_view text) {
    const bool quoted = !std::all_of(text.begin(), text.end(), NeedsNoQuotes);
    std::string argument;
    for (const char c : text) {
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos) {
            argument += '\\';
        }
        argument += c == '%' ? std::string("%%") : std::string{c};
    }
    return quoted ? '"' + argument + '"' : argument;
}

// A program's own path may hold no "%" or "=", or some desktops do not find it; as an argument it may.
std::string CommandOf(const fs::path& program) {
    const auto path = program.string();
    const bool indirect = path.find_first_of("%=") != std::string::npos;
    return (indirect ? "/bin/sh -c " + Argument(R"(exec "$0" "$@")") + ' ' : "") + Argument(path);
}

// The arguments of a command, in which "%f" stands for the file.
std::vector<std::string> ArgumentsOf(std::string_view command) {
    std::vector<std::string> arguments;
    std::optional<std::string> argument;
    bool quoted = false;
    for (std::size_t i = 0; i < command.size(); ++i) {
        const char c = command[i];
        if (!quoted && c == ' ') {
            if (argument) {
                arguments.push_back(*std::exchange(argument, std::nullopt));
            }
            continue;
        }
        argument = argument.value_or("");
        if (c == '"') {
            quoted = !quoted;
        } else {
            i += quoted && c == '\\' && i + 1 < command.size() ? 1 : 0;
            *argument += command[i];
        }
    }
    if (argument) {
        arguments.push_back(*argument);
    }
    return arguments;
}

std::string WithSinglePercents(std::string_view argument) {
    std::string text;
    for (std::size_t i = 0; i < argument.size(); ++i) {
        text += argument[i];
        i += argument.substr(i, 2) == "%%" ? 1 : 0;
    }
    return text;
}

std::string Entry(std::string_view name, std::string_view command, std::string_view more) {
    std::string text = "[Desktop Entry]\nType=Application\nVersion=1.0\n";
    text.append("Name=").append(name);
    text.append("\nExec=").append(Escaped(command));
    text.append("\nIcon=burnwick\nTerminal=false\nCategories=Utility;\n").append(more);
    return text;
}

}  // namespace

std::string AssociationEntry(const fs::path& program) {
    // For files only: the menu of programs has, or has not, an entry of its own.
    return Entry("Flash with Burnwick", CommandOf(program) + " %f",
                 "NoDisplay=true\nMimeType=" + std::string(ImageMimeType) + ";\n");
}

std::string LauncherEntry(const fs::path& program) {
    return Entry("Burnwick", CommandOf(program), "");
}

fs::path ProgramOf(const std::string& entry) {
    auto arguments = ArgumentsOf(Unescaped(KeyFile(entry).Value("Desktop Entry", "Exec").value_or("")));
    if (!arguments.empty() && arguments.back() == "%f") {
        arguments.pop_back();
    }
    return arguments.empty() ? fs::path() : fs::path(WithSinglePercents(arguments.back()));
}

}  // namespace burnwick
