#pragma once

#include <filesystem>

namespace simulator {

// A symbolic link with a name that stays, to a device whose name does not. It lives as long as this object.
class Link {
public:
    // Takes the place of another symbolic link, never of a file. Throws std::runtime_error with a text for
    // the user.
    Link(std::filesystem::path path, std::filesystem::path target);
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    // Removes the link, unless it has come to point elsewhere.
    ~Link();

private:
    std::filesystem::path Path_;
    std::filesystem::path Target_;
};

}  // namespace simulator
