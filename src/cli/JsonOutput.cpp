// The only source that includes the JSON library: its header takes seconds to compile.
#include "cli/JsonOutput.h"

#include <nlohmann/json.hpp>

namespace burnwick::cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr int OneLine = -1;
constexpr int Indented = 2;

void Print(std::ostream& out, const Json& value, int indent) {
    out << value.dump(indent, ' ', false, Json::error_handler_t::replace) << std::endl;
}

Json NumberOrNull(const std::optional<std::int32_t>& number) {
    return number ? Json(*number) : Json(nullptr);
}

const char* ResultName(ExitStatus status) {
    switch (status) {
        case Done:
            return "ok";
        case NoResponse:
            return "no-response";
        case TransmittingError:
            return "transmitting-error";
        case NotCompatible:
            return "not-compatible";
        case Canceled:
            return "canceled";
        case PortNotAvailable:
            return "port-error";
        case FileUnusable:
            return "file-error";
        case Differences:
            return "verify-mismatch";
        case WrongUsage:
            break;  // printed as text only: there was no run
    }
    return "";
}

}  // namespace

void PrintJson(std::ostream& out, const RunReport& report) {
    Json object{
        {"result", ResultName(report.Status)},
        {"exitCode", static_cast<int>(report.Status)},
        {"port", report.Port == 0 ? "" : PortName(report.Port)},
        {"baud", report.Baud},
        {"blocks", report.Blocks},
        {"totalBlocks", report.TotalBlocks},
        {"elapsedSeconds", report.ElapsedSeconds},
        {"messages", report.Messages},
    };
    if (report.Verdict) {
        object["differences"] = NumberOrNull(report.Verdict->Differences);
    }
    Print(out, object, Indented);
}

void PrintJson(std::ostream& out, const modBinFileInfo::BinFileInfo& info, const ImageInfo& link) {
    const Json object{
        {"Checksum", info.Checksum},
        {"ChecksumShort", info.ChecksumShort},
        {"Version", info.Version},
        {"Language", info.Language},
        {"DateStamp", info.DateStamp},
        {"Model", info.Model},
        {"FileName", info.FileName},
        {"ImageFileName", info.ImageFileName},
        {"FilePath", info.FilePath},
        {"FileSize", info.FileSize},
        {"ImageFamily", info.ImageFamily},
        {"ImageKind", info.ImageKind},
        {"TypeSuffix", info.TypeSuffix},
        {"IsBootCode", info.IsBootCode},
        {"HasBinaryHeader", info.HasBinaryHeader},
        {"HeaderFormat", info.HeaderFormat},
        {"SignaturePos", info.SignaturePos},
        {"Link",
         {{"ImageFamily", link.ImageFamily},
          {"ImageType", link.ImageType},
          {"ImageTypeText", link.ImageTypeText},
          {"ImageModel", link.ImageModel},
          {"ImageSubModel", link.ImageSubModel},
          {"FilesizeHex", link.FilesizeHex}}},
    };
    Print(out, object, OneLine);
}

void PrintJson(std::ostream& out, const std::vector<FoundPort>& ports) {
    Json list = Json::array();
    for (const auto& port : ports) {
        list.push_back({{"port", PortName(port.Number)},
                        {"device", port.Device},
                        {"description", DescriptionOf(port)},
                        {"usable", port.Usable}});
    }
    Print(out, list, Indented);
}

void PrintJson(std::ostream& out, const Comparison& comparison) {
    Print(out,
          {{"result", comparison.Result},
           {"differences", NumberOrNull(comparison.Differences)},
           {"message", comparison.Message}},
          Indented);
}

}  // namespace burnwick::cli
