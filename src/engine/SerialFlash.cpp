#include "engine/SerialFlash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <span>
#include <system_error>
#include <utility>

#include "platform/files/Utf8Path.h"

namespace burnwick {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::array<std::size_t, 4> ChipSizes{65'536, 262'144, 524'288, 1'048'576};
constexpr std::size_t MostBlocks = std::numeric_limits<std::int16_t>::max();

std::string LastSystemError() {
    return std::generic_category().message(errno);
}

// Some systems delete no write-protected file; one that stays stays as it was.
void RemoveFile(const fs::path& path, std::error_code& error) {
    std::error_code ignored;
    const fs::file_status status = fs::symlink_status(path, ignored);
    if (fs::remove(path, error) || !error || !fs::is_regular_file(status)) {
        return;
    }
    fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, ignored);
    if (!fs::remove(path, error)) {
        fs::permissions(path, status.permissions(), ignored);
    }
}

// Fills `into`. Gives the reason when it cannot, else nothing.
std::string ReadWhole(std::ifstream& file, Bytes& into) {
    errno = 0;
    file.read(reinterpret_cast<char*>(into.data()), static_cast<std::streamsize>(into.size()));
    if (static_cast<std::size_t>(file.gcount()) == into.size()) {
        return {};
    }
    return errno == 0 ? "it became shorter while it was read" : LastSystemError();
}

}  // namespace

SerialFlash::SerialFlash(MessageLoop& loop, MSComm& port)
    : Loop_(loop),
      Port_(port),
      SecTimeoutTimer_(loop.NewTimer(100ms, [this] { ++Run_.SecTimeout; })),
      TimingTimer_(loop.NewTimer(1000ms, [this] { TickElapsedTime(); })) {}

void SerialFlash::SetCommPort(std::uint8_t port) {
    CommPort_ = port;
    Changed("CommPort");
}

void SerialFlash::SetFileName(const std::string& fileName) {
    FileName_ = fileName;
    Changed("FileName");
}

void SerialFlash::SetUploadBlock(std::int16_t blocks) {
    UploadBlock_ = blocks;
    Changed("UploadBlock");
}

void SerialFlash::SetBaudRate(const std::string& baudRate) {
    BaudRate_ = baudRate;
    Changed("BaudRate");
}

void SerialFlash::SetVersion(const std::string& /*version*/) const {}

void SerialFlash::Execute(Method method) {
    if (method == Method::Cancel) {
        CancelFlag_ = true;
        return;
    }
    if (Running_) {
        return;
    }
    Running_ = true;
    Method_ = method;
    Result_ = {};
    try {
        RunJob();
    } catch (...) {
        BreakOff();
        EndRun();
        throw;
    }
    EndRun();
}

// After an exception from an event's handler: unit, port and file are left as after any failure.
void SerialFlash::BreakOff() {
    if (Port_.PortOpen()) {
        CloseLink();
    }
    DeleteUpload();
    CancelFlag_ = false;
}

void SerialFlash::EndRun() {
    SecTimeoutTimer_->SetEnabled(false);
    TimingTimer_->SetEnabled(false);
    Result_.Blocks = Run_.Block;
    Result_.Acknowledged = Run_.Block - (Run_.LinkState == LinkState::AwaitingAnswer ? 1 : 0);
    Result_.TotalBlocks = Run_.TotalBlock;
    if (Run_.StartTime) {
        Result_.Elapsed = Loop_.MillisecondClock() - *Run_.StartTime;
    }
    Run_ = {};
    Running_ = false;
}

void SerialFlash::RunJob() {
    if (const auto error = PrepareFile()) {
        Result_.Outcome = Outcome::FileError;
        Result_.FileError = error;
        Say("Error: " + error->Text, LineKind::FileError);
        return;
    }
    if (const CommResult error = TryPort()) {
        Result_.Outcome = Outcome::PortError;
        Result_.PortError = error;
        DeleteUpload();
        Say(error->Description);
        return;
    }
    if (!RunLink()) {
        Result_.Outcome = FailureOfRun();
        Result_.FileError = Run_.FileTrouble;
        DeleteUpload();
        ReportFailure();
    }
    CancelFlag_ = false;
}

std::optional<FileError> SerialFlash::PrepareFile() {
    return IsUpload() ? PrepareUpload() : PrepareDownload();
}

std::optional<FileError> SerialFlash::PrepareUpload() {
    if (UploadBlock_ <= 0) {
        return std::nullopt;
    }
    Run_.TotalBlock = UploadBlock_;
    const fs::path path = Utf8Path(FileName_);
    const auto cannotBeDeleted = [this](const std::string& why) {
        return FileError{FileError::Kind::NotDeletable, FileName_ + " cannot be deleted (" + why + ")."};
    };
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type != fs::file_type::not_found && type != fs::file_type::none) {
        // A folder or a device was named by mistake.
        if (type != fs::file_type::regular && type != fs::file_type::symlink) {
            return cannotBeDeleted("it is not a file");
        }
        RemoveFile(path, error);
        if (error) {
            return cannotBeDeleted(error.message());
        }
    }
    errno = 0;
    Run_.File.open(path, std::ios::binary | std::ios::trunc);
    if (!Run_.File) {
        return CannotAccess(FileError::Kind::NotWritable, LastSystemError());
    }
    Run_.FileCreated = true;
    return std::nullopt;
}

std::optional<FileError> SerialFlash::PrepareDownload() {
    const FileError invalidSize{FileError::Kind::InvalidSize, "Invalid file size."};
    Run_.Image = Image_;
    if (!Run_.Image) {
        if (auto error = ReadImage()) {
            return error;
        }
    }
    if (!Run_.Image) {
        return invalidSize;
    }
    const std::size_t size = Run_.Image->size();
    Run_.ImageInfo = CheckImageType(size, std::span(*Run_.Image).first(std::min(size, ImageTypeWindow)));
    const bool anyLength = CarriesItsLength(Run_.ImageInfo);
    const std::size_t blocks = size / BlockSize + (anyLength && size % BlockSize != 0 ? 1 : 0);
    const bool chipSized = std::find(ChipSizes.begin(), ChipSizes.end(), size) != ChipSizes.end();
    if (!(chipSized || anyLength) || blocks > MostBlocks) {
        return invalidSize;
    }
    Run_.FileSize = size;
    Run_.TotalBlock = static_cast<int>(blocks);
    return std::nullopt;
}

// Reads the whole image before anything is sent: a file that changes, or a disk that fails, during the run
// must not leave a unit half programmed. Reads nothing of a file that has more blocks than a run can number.
std::optional<FileError> SerialFlash::ReadImage() {
    constexpr auto notReadable = FileError::Kind::NotReadable;
    const fs::path path = Utf8Path(FileName_);
    std::error_code error;
    const std::uint64_t size = fs::file_size(path, error);
    if (error) {
        return CannotAccess(notReadable, error.message());
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return CannotAccess(notReadable, LastSystemError());
    }
    if (size > MostBlocks * BlockSize) {
        return std::nullopt;
    }
    Bytes image(size);
    if (const auto trouble = ReadWhole(file, image); !trouble.empty()) {
        return CannotAccess(notReadable, trouble);
    }
    Run_.Image = std::make_shared<const Bytes>(std::move(image));
    return std::nullopt;
}

FileError SerialFlash::CannotAccess(FileError::Kind what, const std::string& why) const {
    return {what, "Cannot access to " + FileName_ + " (" + why + ")."};
}

CommResult SerialFlash::TryPort() {
    if (auto error = Port_.SetCommPort(CommPort_)) {
        return error;
    }
    if (auto error = Port_.SetPortOpen(true)) {
        return error;
    }
    return Port_.SetPortOpen(false);
}

void SerialFlash::ReportFailure() const {
    if (CancelFlag_) {
        Say(" ");
        Say(IsUpload() ? "Uploading was canceled." : "Programming was canceled.", LineKind::Canceled);
    }
    if (Run_.FileTrouble) {
        Say(" ");
        Say("Error: " + Run_.FileTrouble->Text, LineKind::FileError);
    }
    switch (Run_.LinkResult) {
        case LinkResult::NoFailure:
            break;
        case LinkResult::NoResponse:
            Say(" ");
            Say("No response from the unit.");
            Say("Timeout.", LineKind::Timeout);
            break;
        case LinkResult::TransmittingError:
            Say(" ");
            Say("Transmitting error.", LineKind::TransmittingError);
            break;
        case LinkResult::NotCompatible:
            Say(" ");
            Say("The software is not compatible.", LineKind::NotCompatible);
            break;
    }
}

Outcome SerialFlash::FailureOfRun() const {
    if (Run_.FileTrouble) {
        return Outcome::FileError;
    }
    if (CancelFlag_) {
        return Outcome::Canceled;
    }
    switch (Run_.LinkResult) {
        case LinkResult::NoResponse:
            return Outcome::NoResponse;
        case LinkResult::NotCompatible:
            return Outcome::NotCompatible;
        case LinkResult::NoFailure:
        case LinkResult::TransmittingError:
            break;
    }
    return Outcome::TransmittingError;
}

void SerialFlash::DeleteUpload() {
    if (IsUpload() && Run_.FileCreated) {
        Run_.File.close();
        std::error_code ignored;
        std::filesystem::remove(Utf8Path(FileName_), ignored);
        Run_.FileCreated = false;
    }
}

void SerialFlash::Changed(const std::string& property) const {
    if (PropertyChanged) {
        PropertyChanged(property);
    }
}

void SerialFlash::Say(const std::string& text, LineKind kind) const {
    if (Message) {
        Message({text, kind});
    }
}

void SerialFlash::SayTiming(const std::string& text, bool isTransfer) const {
    if (Timing) {
        Timing({text, isTransfer});
    }
}

}  // namespace burnwick
