#include "cli/UploadVerb.h"

#include <filesystem>
#include <map>

#include "platform/Utf8Path.h"

namespace burnwick::cli {

namespace {

// Blocks read for each chip. The smallest one's 256, not the 512 that halving would give, are deliberate.
const std::map<std::string, int> Chips{{"1Mbit", 256}, {"2Mbit", 1024}, {"4Mbit", 2048}, {"8Mbit", 4096}};

}  // namespace

void UploadVerb::Declare(Arguments& arguments) {
    arguments.AddRequired("FILE", File_, "The file to create");
    arguments.AddRequiredChoice("--chip", Chip_, "SIZE", {"1Mbit", "2Mbit", "4Mbit", "8Mbit"},
                                "The flash chip: 1Mbit, 2Mbit, 4Mbit or 8Mbit");
    arguments.AddFlag("--force", Force_, "Replace FILE when it exists");
    Options_.Declare(arguments);
    arguments.AddExample("burnwick-cli upload backup.bin --port COM5 --chip 8Mbit");
}

int UploadVerb::Execute(Environment& environment) {
    FlashRun run(environment, Options_);
    std::error_code ignored;
    const bool exists = std::filesystem::exists(std::filesystem::symlink_status(Utf8Path(File_), ignored));
    if (exists && !Force_) {
        return run.RefuseFile(File_ + " exists already. Give --force to replace it, or name another file.");
    }
    return run.Upload(File_, Chips.at(Chip_), exists);
}

}  // namespace burnwick::cli
