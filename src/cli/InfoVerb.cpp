#include "cli/InfoVerb.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <system_error>

#include "cli/JsonOutput.h"
#include "cli/Wording.h"
#include "engine/FlashMessages.h"
#include "engine/ImageInfo.h"
#include "image/modBinFileInfo.h"
#include "platform/files/Utf8Path.h"
#include "platform/process/PlainText.h"

namespace burnwick::cli {

namespace {

using modBinFileInfo::BinFileInfo;

// An image as the link sees it.
struct LinkView {
    std::uint64_t Bytes = 0;
    ImageInfo Image;
};

LinkView ViewOf(const std::string& fileName) {
    const auto path = Utf8Path(fileName);
    std::error_code error;
    const auto bytes = std::filesystem::file_size(path, error);
    Bytes beginning(std::min<std::uint64_t>(error ? 0 : bytes, ImageTypeWindow));
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(beginning.data()), static_cast<std::streamsize>(beginning.size()));
    return {error ? 0 : bytes, CheckImageType(bytes, beginning)};
}

std::string WordChecksum(const BinFileInfo& info) {
    constexpr int firstKindWithChecksum = 5;
    const bool wrong = info.ImageKind >= firstKindWithChecksum && info.Checksum == "00000000";
    return info.Checksum + (wrong ? " (not the one it carries: the image is damaged or incomplete)" : "");
}

std::string WordKind(const BinFileInfo& info) {
    return std::to_string(info.ImageKind) + ", family " + std::to_string(info.ImageFamily)
           + ", type code ends in " + info.TypeSuffix + (info.IsBootCode ? ", boot code" : "");
}

std::string WordLink(const LinkView& view) {
    const ImageInfo& image = view.Image;
    std::string text =
        "family " + std::to_string(image.ImageFamily) + ", type " + std::to_string(image.ImageType);
    text += IsLimitedTo57600(image) ? ", 57600 bit/s at most" : ", up to 115200 bit/s";
    text += CarriesItsLength(image) ? ", tells its own length" : "";
    return text + (NeedsIdentity(image, view.Bytes) ? ", the unit is asked what it is" : "");
}

void PrintText(std::ostream& out, const std::string& fileName, const BinFileInfo& info,
               const LinkView& view) {
    const auto field = [&out](const char* name, const std::string& value) {
        out << "  " << std::left << std::setw(12) << name << PlainText(value, '.') << '\n';
    };
    out << PlainText(fileName, '.') << '\n';
    field("Model", info.Model);
    field("Version", info.Version);
    field("Language", info.Language);
    field("Date stamp", info.DateStamp);
    field("Checksum", WordChecksum(info));
    field("Size", info.FileSize + " (" + std::to_string(view.Bytes) + " bytes)");
    field("Image file", info.ImageFileName);
    field("Kind", WordKind(info));
    field("Link", WordLink(view));
    out << std::flush;
}

}  // namespace

void InfoVerb::Declare(Arguments& arguments) {
    arguments.AddRequired("IMAGE", Images_, "The image files");
    arguments.AddFlag("--json", Json_, "Print one JSON object an image, each on a line");
    arguments.AddExample("burnwick-cli info firmware.bin");
}

int InfoVerb::Execute(Environment& environment) {
    int status = Done;
    for (const auto& image : Images_) {
        const auto read = modBinFileInfo::ReadImageFile(image);
        if (const auto* const refusal = std::get_if<modBinFileInfo::ImageRefusal>(&read)) {
            PrintError(environment.Err, WordImageRefusal(image, *refusal));
            status = FileUnusable;
            continue;
        }
        const BinFileInfo& info = std::get<Image>(read).Information;
        const LinkView view = ViewOf(image);
        if (Json_) {
            PrintJson(environment.Out, info, view.Image);
        } else {
            PrintText(environment.Out, image, info, view);
        }
    }
    return status;
}

}  // namespace burnwick::cli
