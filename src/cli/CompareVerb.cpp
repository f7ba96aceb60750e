#include "cli/CompareVerb.h"

#include <filesystem>
#include <system_error>

#include "cli/JsonOutput.h"
#include "cli/Wording.h"
#include "image/modBinFileInfo.h"
#include "job/Verification.h"
#include "platform/files/Utf8Path.h"

namespace burnwick::cli {

namespace {

bool AreTheSame(const std::string& file1, const std::string& file2) {
    std::error_code ignored;
    return std::filesystem::equivalent(Utf8Path(file1), Utf8Path(file2), ignored);
}

}  // namespace

void CompareVerb::Declare(Arguments& arguments) {
    arguments.AddRequired("FILE1", File1_, "An image file");
    arguments.AddRequired("FILE2", File2_, "Another one");
    arguments.AddFlag("--quiet", Quiet_, "Print errors only");
    arguments.AddFlag("--json", Json_, "Print one JSON object");
    arguments.AddExample("burnwick-cli compare firmware.bin backup.bin");
}

int CompareVerb::Execute(Environment& environment) {
    for (const auto& file : {File1_, File2_}) {
        if (const auto trouble = WordAccessTrouble(file); !trouble.empty()) {
            return Refuse(environment, FileUnusable, trouble);
        }
    }
    if (AreTheSame(File1_, File2_)) {
        return Refuse(environment, WrongUsage,
                      File1_ + " and " + File2_ + " are the same file: name two files to compare.");
    }
    std::int32_t differences = 0;
    const std::string compared = modBinFileInfo::CompareImages(File1_, File2_, differences);
    const std::string message = ComparisonStatus(compared, differences);
    if (!compared.empty()) {
        return Refuse(environment, modBinFileInfo::IsMismatch(compared) ? Differences : FileUnusable,
                      message);
    }
    if (Json_) {
        PrintJson(environment.Out,
                  Comparison{differences == 0 ? "identical" : "different", differences, message});
    } else if (!Quiet_) {
        environment.Out << message << std::endl;
    }
    return differences == 0 ? Done : Differences;
}

int CompareVerb::Refuse(Environment& environment, int status, const std::string& why) const {
    PrintError(environment.Err, why);
    if (Json_) {
        PrintJson(environment.Out, Comparison{"error", std::nullopt, why});
    }
    return status;
}

}  // namespace burnwick::cli
