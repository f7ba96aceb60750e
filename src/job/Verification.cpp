#include "job/Verification.h"

#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/files/Utf8Path.h"

namespace burnwick {

namespace {

constexpr std::uint64_t BlockBytes = 256;
constexpr int MostAtOnce = 16;  // one a port
constexpr std::string_view ErrorMark = "Error: ";

}  // namespace

std::uint64_t VerificationBlocks(std::uint64_t imageBytes) {
    const std::uint64_t blocks = imageBytes / BlockBytes;
    const std::uint64_t rest = imageBytes % BlockBytes;
    const bool up = rest > BlockBytes / 2 || (rest == BlockBytes / 2 && blocks % 2 != 0);
    return up ? blocks + 1 : blocks;
}

std::optional<std::int16_t> BlocksToReadBack(const Image& image) {
    const auto blocks = VerificationBlocks(image.Length);
    if (blocks == 0 || blocks > std::numeric_limits<std::int16_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(blocks);
}

Verdict JudgeReadBack(const Image& image, const std::filesystem::path& readBack) {
    std::int32_t differences = 0;
    const std::string compared = modBinFileInfo::CompareWithFile(image, Utf8Text(readBack), differences);
    if (!compared.empty()) {
        const std::string reason =
            compared.starts_with(ErrorMark) ? compared.substr(ErrorMark.size()) : compared;
        return {"Verifying error: " + reason + ".", std::nullopt, modBinFileInfo::IsMismatch(compared)};
    }
    if (differences != 0) {
        return {"Verifying error: " + std::to_string(differences) + " bytes are different.", differences};
    }
    return {"Verifying was successfully.", differences};
}

std::string ImageChangedText(const Image& image) {
    return modBinFileInfo::FileNameOf(image.FileName) + " has changed since the run began.";
}

std::string ComparisonStatus(const std::string& compared, std::int32_t differences) {
    if (!compared.empty()) {
        return compared + ".";
    }
    if (differences == 1) {
        return "1 byte is different.";
    }
    if (differences > 1) {
        return std::to_string(differences) + " bytes are different.";
    }
    return "File 1 and File 2 are identical.";
}

std::unique_ptr<VerificationFile> VerificationFile::Claim(const std::filesystem::path& folder,
                                                          const std::filesystem::path& image) {
    using namespace std::chrono_literals;
    for (int i = 1; i <= MostAtOnce; ++i) {
        const std::string name = i == 1 ? "Verify.tmp" : "Verify" + std::to_string(i) + ".tmp";
        std::error_code ignored;
        if (std::filesystem::equivalent(folder / name, image, ignored)) {
            continue;
        }
        if (auto lock = LockFile(folder / (name + ".lock"), 0ms)) {
            return std::unique_ptr<VerificationFile>(new VerificationFile(folder / name, std::move(lock)));
        }
    }
    return nullptr;
}

std::variant<ReadBackPlan, ReadBackTrouble> PlanReadBack(const std::filesystem::path& folder,
                                                         const Image& image) {
    const auto blocks = BlocksToReadBack(image);
    if (!blocks || !image.Content) {
        return ReadBackTrouble::ImageLength;
    }
    std::shared_ptr<VerificationFile> file = VerificationFile::Claim(folder, Utf8Path(image.FileName));
    if (!file) {
        return ReadBackTrouble::NoFile;
    }
    return ReadBackPlan{*blocks, std::move(file)};
}

std::string ReadBackRefusal(ReadBackTrouble trouble, const std::filesystem::path& folder,
                            const Image& image) {
    return trouble == ReadBackTrouble::ImageLength
               ? "Verifying error: " + modBinFileInfo::FileNameOf(image.FileName) + " cannot be read back."
               : "Verifying error: no file can be made in " + Utf8Text(folder) + ".";
}

VerificationFile::VerificationFile(std::filesystem::path path, std::unique_ptr<FileLock> lock)
    : Path_(std::move(path)), Lock_(std::move(lock)) {
    std::error_code ignored;
    std::filesystem::remove(Path_, ignored);
}

VerificationFile::~VerificationFile() {
    std::error_code ignored;
    std::filesystem::remove(Path_, ignored);
}

}  // namespace burnwick
