#include "cli/RunReport.h"

#include "cli/JsonOutput.h"
#include "cli/Verb.h"
#include "platform/process/PlainText.h"

namespace burnwick::cli {

void PrintError(std::ostream& err, const std::string& text) {
    // A file's name may hold anything, and an error is one line.
    err << "burnwick-cli: " << PlainText(text, '.') << std::endl;
}

int Tell(Environment& environment, bool json, const RunReport& report) {
    if (!report.Error.empty()) {
        PrintError(environment.Err, report.Error);
    }
    if (json && report.Status != WrongUsage) {
        PrintJson(environment.Out, report);
    }
    return report.Status;
}

}  // namespace burnwick::cli
