#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "image/Image.h"
#include "platform/files/FileLock.h"

namespace burnwick {

// Blocks that are read back to verify an image of so many bytes: a 256th part, rounded to the nearest number,
// halves to the even one.
std::uint64_t VerificationBlocks(std::uint64_t imageBytes);

// Blocks that a read-back of this image asks the unit for; nothing when no read-back has its length.
std::optional<std::int16_t> BlocksToReadBack(const Image& image);

// What comparing a unit's flash with its image came to.
struct Verdict {
    std::string Result;                       // "Verifying was successfully.", or "Verifying error: …"
    std::optional<std::int32_t> Differences;  // bytes; nothing when the two could not be compared
    bool WasRead = true;                      // false when the file that was read back could not be read

    bool IsMatch() const { return Differences == 0; }
};

// Compares what was read back with the image.
Verdict JudgeReadBack(const Image& image, const std::filesystem::path& readBack);

// Follows a mismatch when the image file has changed since it was read.
std::string ImageChangedText(const Image& image);

// What a comparison of two files came to, as a sentence, from what CompareImages gave.
std::string ComparisonStatus(const std::string& compared, std::int32_t differences);

// The file that a unit is read back into. It is this process's own while the object lives, and goes with it;
// what a killed process left behind goes when the next one takes the name.
class VerificationFile {
public:
    // "Verify.tmp" in the folder; "Verify2.tmp" and so on while other processes verify, or where the image
    // itself has that name. Nothing when the folder cannot be written.
    static std::unique_ptr<VerificationFile> Claim(const std::filesystem::path& folder,
                                                   const std::filesystem::path& image);

    VerificationFile(const VerificationFile&) = delete;
    VerificationFile& operator=(const VerificationFile&) = delete;
    ~VerificationFile();

    const std::filesystem::path& Path() const { return Path_; }

private:
    VerificationFile(std::filesystem::path path, std::unique_ptr<FileLock> lock);

    std::filesystem::path Path_;
    std::unique_ptr<FileLock> Lock_;
};

// How a unit's flash is read back: so many blocks, into this file.
struct ReadBackPlan {
    std::int16_t Blocks = 0;
    std::shared_ptr<VerificationFile> File;
};

enum class ReadBackTrouble {
    ImageLength,  // no read-back has the image's length
    NoFile,       // the folder cannot be written
};

std::variant<ReadBackPlan, ReadBackTrouble> PlanReadBack(const std::filesystem::path& folder,
                                                         const Image& image);

// The verification's result where there is no plan: "Verifying error: …".
std::string ReadBackRefusal(ReadBackTrouble trouble, const std::filesystem::path& folder, const Image& image);

}  // namespace burnwick
