#include "job/Summary.h"

#include <filesystem>
#include <system_error>

#include "platform/files/Utf8Path.h"
#include "platform/process/PlainText.h"

namespace burnwick {

SoftwareSummary SummaryOf(const modBinFileInfo::BinFileInfo& info, bool wholeChecksum) {
    constexpr int firstKindWithChecksum = 5;
    const bool whole = wholeChecksum || info.ImageKind >= firstKindWithChecksum;
    return {whole ? info.Checksum : info.ChecksumShort, info.Version, info.Language, info.DateStamp};
}

std::string SoftwareLine(const modBinFileInfo::BinFileInfo& info, const SoftwareSummary& summary) {
    std::string line = info.FileName;
    const auto add = [&line](const std::string& field) { line += "    " + field; };
    if (info.Model != modBinFileInfo::NotAvailable) {
        add(info.Model);
    }
    add(summary.Version);
    add(summary.Checksum);
    add(summary.DateStamp);
    add(summary.Language);
    add(info.FileSize);
    return PlainText(line, ' ');
}

ActivityRecord RecordOf(const RunResult& run, const RunTexts& texts, const std::string& imageFileName,
                        const SoftwareSummary& summary) {
    ActivityRecord record;
    record.Started = run.Baud > 0;
    record.Succeeded = run.Succeeded();
    std::error_code error;
    const auto path = std::filesystem::absolute(Utf8Path(imageFileName), error);
    record.ImageFileName = error ? imageFileName : Utf8Text(path);
    record.Status = texts.Status;
    record.Timing = texts.Timing.Text;
    record.Checksum = summary.Checksum;
    record.Version = summary.Version;
    record.DateStamp = summary.DateStamp;
    record.Language = summary.Language;
    if (const auto bytes = std::filesystem::file_size(Utf8Path(imageFileName), error); !error) {
        record.Size = modBinFileInfo::FormatFileSize(bytes);
    }
    record.Verifying = texts.Verifying;
    record.Result = texts.Result;
    return record;
}

}  // namespace burnwick
