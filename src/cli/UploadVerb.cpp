#include "cli/UploadVerb.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "platform/files/Utf8Path.h"
#include "settings/ChipSize.h"

namespace burnwick::cli {

namespace {

std::vector<std::string> ChipNames() {
    std::vector<std::string> names;
    names.reserve(ChipSizes.size());
    for (const auto& chip : ChipSizes) {
        names.emplace_back(chip.Name);
    }
    return names;
}

// Precondition: `name` is in ChipSizes (checked by the option parser).
int BlocksOf(const std::string& name) {
    const auto hasName = [&](const ChipSize& chip) { return chip.Name == name; };
    return std::find_if(ChipSizes.begin(), ChipSizes.end(), hasName)->Blocks;
}

}  // namespace

void UploadVerb::Declare(Arguments& arguments) {
    arguments.AddRequired("FILE", File_, "The file to create");
    arguments.AddRequiredChoice("--chip", Chip_, "SIZE", ChipNames(),
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
    return run.Upload(File_, BlocksOf(Chip_));
}

}  // namespace burnwick::cli
