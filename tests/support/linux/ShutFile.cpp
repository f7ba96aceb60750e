#include "support/ShutFile.h"

#include "support/AnyUser.h"

namespace burnwick::test {

namespace fs = std::filesystem;

class ShutFile::Hold {
public:
    explicit Hold(const fs::path& path) {
        fs::permissions(path, fs::perms::none);
        fs::permissions(path.parent_path(), fs::perms::all & ~WriteByAny);
        User_ = std::make_unique<AnyUser>();
        Path_ = path;
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() {
        User_.reset();
        fs::permissions(Path_.parent_path(), fs::perms::all);
        fs::permissions(Path_, fs::perms::all);
    }

private:
    static constexpr fs::perms WriteByAny =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

    fs::path Path_;
    std::unique_ptr<AnyUser> User_;
};

ShutFile::ShutFile(const fs::path& path) : Hold_(std::make_unique<Hold>(path)) {}
ShutFile::~ShutFile() = default;

}  // namespace burnwick::test
