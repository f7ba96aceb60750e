#include "simulator/Link.h"

#include <unistd.h>

#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

[[noreturn]] void FailLink(const std::filesystem::path& path, const std::string& reason) {
    throw std::runtime_error("link " + path.string() + ": " + reason);
}

}  // namespace

Link::Link(std::filesystem::path path, std::filesystem::path target)
    : Path_(std::move(path)), Target_(std::move(target)) {
    std::error_code error;
    const auto there = std::filesystem::symlink_status(Path_, error);
    if (std::filesystem::exists(there) && !std::filesystem::is_symlink(there)) {
        FailLink(Path_, "something else bears this name, and is left alone");
    }
    // Made beside it and renamed, so that the name never points nowhere.
    auto fresh = Path_;
    fresh += "." + std::to_string(getpid()) + ".tmp";
    std::filesystem::create_symlink(Target_, fresh, error);
    if (error) {
        FailLink(Path_, "cannot be made: " + error.message());
    }
    std::filesystem::rename(fresh, Path_, error);
    if (error) {
        const auto reason = error.message();
        std::filesystem::remove(fresh, error);
        FailLink(Path_, "cannot be made: " + reason);
    }
}

Link::~Link() {
    std::error_code error;
    if (std::filesystem::read_symlink(Path_, error) == Target_) {
        std::filesystem::remove(Path_, error);
    }
}

}  // namespace simulator
