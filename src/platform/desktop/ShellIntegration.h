#pragma once

#include <filesystem>
#include <string>

namespace burnwick {

// The user's desktop: which program opens an image, and the launcher on the desktop itself. Nothing here
// reports an error: a desktop that refuses stays as it was.
class ShellIntegration {
public:
    virtual ~ShellIntegration() = default;

    // The program that the file association "Flash with Burnwick" starts; empty when there is none, or when
    // the user has chosen another program since and the desktop tells.
    virtual std::filesystem::path AssociatedProgram() const = 0;

    // Associates "*.bin" with this program, as "Burnwick File". Waits for the desktop to see it, some seconds
    // at most.
    virtual void RegisterFileType(const std::filesystem::path& program) = 0;
    // Takes the association away, and leaves other programs' alone.
    virtual void UnregisterFileType() = 0;

    // Puts a launcher of this program on the desktop, and leaves one that is there.
    virtual void CreateDesktopShortcut(const std::filesystem::path& program) = 0;
    // One that is not there is no error.
    virtual void DeleteDesktopShortcut() = 0;
};

}  // namespace burnwick
