#include "cli/RunReport.h"

#include <nlohmann/json.hpp>

#include "cli/Verb.h"
#include "platform/PlainText.h"

namespace burnwick::cli {

namespace {

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
            break;  // never told as JSON: there was no run
    }
    return "";
}

}  // namespace

void PrintError(std::ostream& err, const std::string& text) {
    // A file's name may hold anything, and an error is one line.
    err << "burnwick-cli: " << PlainText(text, '.') << std::endl;
}

int Tell(Environment& environment, bool json, const RunReport& report) {
    if (!report.Error.empty()) {
        PrintError(environment.Err, report.Error);
    }
    if (json && report.Status != WrongUsage) {
        nlohmann::ordered_json object{
            {"result", ResultName(report.Status)},
            {"exitCode", static_cast<int>(report.Status)},
            {"port", report.Port == 0 ? "" : "COM" + std::to_string(report.Port)},
            {"baud", report.Baud},
            {"blocks", report.Blocks},
            {"totalBlocks", report.TotalBlocks},
            {"elapsedSeconds", report.ElapsedSeconds},
            {"messages", report.Messages},
        };
        if (report.Verdict) {
            const auto& differences = report.Verdict->Differences;
            object["differences"] = differences ? nlohmann::ordered_json(*differences) : nullptr;
        }
        // A file name need not be UTF-8; JSON must.
        environment.Out << object.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << std::endl;
    }
    return report.Status;
}

}  // namespace burnwick::cli
