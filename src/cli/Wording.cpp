#include "cli/Wording.h"

#include <algorithm>
#include <string_view>

#include "image/modBinFileInfo.h"

namespace burnwick::cli {

namespace {

std::string WordFileError(const FileError& error) {
    return error.What == FileError::Kind::InvalidSize ? WordInvalidSize() : error.Text;
}

// A read-back of 64 KiB of boot code has block 0 replaced, so it never matches.
bool IsSmallBootCode(const Image& image) {
    constexpr std::uint64_t smallImage = 65'536;
    return image.Length == smallImage && image.Information.IsBootCode;
}

std::string WordTransmittingError(const RunReport& report, const std::string& portName) {
    const std::string when = report.Baud > 0 ? "at block " + std::to_string(std::max(report.Blocks, 1))
                                                   + " of " + std::to_string(report.TotalBlocks)
                                             : "while it was being set up";
    return "the link to the unit on " + portName + " failed " + when
           + ". Check the serial cable and try again.";
}

}  // namespace

ExitStatus StatusOf(Outcome outcome) {
    switch (outcome) {
        case Outcome::Succeeded:
            return Done;
        case Outcome::NoResponse:
            return NoResponse;
        case Outcome::TransmittingError:
            return TransmittingError;
        case Outcome::NotCompatible:
            return NotCompatible;
        case Outcome::Canceled:
            return Canceled;
        case Outcome::PortError:
            return PortNotAvailable;
        case Outcome::FileError:
            break;
    }
    return FileUnusable;
}

std::string WordMismatch(const Image& image, const Verdict& verdict) {
    std::string what = image.FileName + " is not verified: " + verdict.Result;
    if (!verdict.WasRead) {
        return what;
    }
    if (verdict.Result.find("size mismatched") != std::string::npos) {
        return what
               + " Its length is no multiple of 256 bytes, and that of a read-back is; the unit may be "
                 "right.";
    }
    if (!verdict.Differences && IsSmallBootCode(image)) {
        return what + " 64 KB of boot code are read back without the unit's own first bytes; the unit may be right.";
    }
    return "the unit's flash is not what " + image.FileName + " holds: " + verdict.Result
           + " Program the unit again before it is used.";
}

std::string WordAccessTrouble(const std::string& fileName) {
    const auto trouble = modBinFileInfo::ReadTrouble(fileName);
    return trouble.empty() ? "" : "Cannot access to " + fileName + " (" + trouble + ").";
}

std::string WordImageRefusal(const std::string& fileName, const modBinFileInfo::ImageRefusal& refusal) {
    return refusal.Trouble.empty()
               ? fileName + ": " + refusal.Status + " It does not begin like an image; is it the right file?"
               : "Cannot access to " + fileName + " (" + refusal.Trouble + ").";
}

std::string WordInvalidSize() {
    return "Invalid file size. An image has 65536, 262144, 524288 or 1048576 bytes, unless it is of a type "
           "that"
           " tells its own length; is this the right file, and is it whole?";
}

std::string WordFailure(const RunReport& report, const std::string& portName, const RunResult& run) {
    switch (run.Outcome) {
        case Outcome::NoResponse:
            return "no response from the unit on " + portName
                   + " within 60 seconds. Is it powered, in its loader, and the cable in the right socket?";
        case Outcome::TransmittingError:
            return WordTransmittingError(report, portName);
        case Outcome::NotCompatible:
            return "the image is not made for this unit; nothing was written.";
        case Outcome::Canceled:
            return "canceled.";
        case Outcome::FileError:
            return run.FileError ? WordFileError(*run.FileError) : "";
        case Outcome::PortError:
        case Outcome::Succeeded:
            break;
    }
    return {};
}

}  // namespace burnwick::cli
