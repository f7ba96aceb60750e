#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace burnwick {

// What a file that stands for another one says.
struct LinkContent {
    std::filesystem::path Target;
    std::string Description;  // UTF-8; shown to who points at the link

    friend bool operator==(const LinkContent&, const LinkContent&) = default;
};

// What the shell of a system with a registry is asked for: calls, no policy. Nothing here throws.
class ShellCalls {
public:
    virtual ~ShellCalls() = default;

    // The folder whose files lie on this user's desktop; empty when he has none.
    virtual std::filesystem::path DesktopFolder() const = 0;
    // The system's own folder.
    virtual std::filesystem::path WindowsFolder() const = 0;

    // Nothing when the file is not there, or is no link.
    virtual std::optional<LinkContent> Link(const std::filesystem::path& path) const = 0;
    // Makes the file or replaces it. False when the system refuses.
    virtual bool StoreLink(const std::filesystem::path& path, const LinkContent& link) = 0;

    // Has file associations looked at anew.
    virtual void FileTypesChanged() = 0;
};

// Null on a system that has none.
std::unique_ptr<ShellCalls> SystemShellCalls();

}  // namespace burnwick
