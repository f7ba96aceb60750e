#include "engine/SerialFlash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include "platform/Utf8Path.h"

namespace burnwick {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::array<std::uint64_t, 4> ChipSizes{65'536, 262'144, 524'288, 1'048'576};

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

// Reads `size` bytes and appends them. Empty when all went well, else why not.
std::string ReadWhole(std::ifstream& file, std::uint64_t size, Bytes& into) {
    const auto had = into.size();
    into.resize(had + size);
    errno = 0;
    file.read(reinterpret_cast<char*>(into.data() + had), static_cast<std::streamsize>(size));
    if (static_cast<std::uint64_t>(file.gcount()) == size) {
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
    PortError_.reset();
    try {
        RunJob();
    } catch (...) {
        BreakOff();
        EndRun();
        throw;
    }
    EndRun();
}

// An event's handler has thrown: unit, port and file are left as after any failure.
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
    Run_ = {};
    Running_ = false;
}

void SerialFlash::RunJob() {
    const std::string status = PrepareFile();
    if (status.find("Error:") != std::string::npos) {
        Say(status);
        return;
    }
    PortError_ = TryPort();
    if (PortError_) {
        DeleteUpload();
        Say(PortError_->Description);
        return;
    }
    const bool completed = RunLink();
    if (!completed) {
        DeleteUpload();
        ReportFailure();
    }
    CancelFlag_ = false;
}

std::string SerialFlash::PrepareFile() {
    return IsUpload() ? PrepareUpload() : PrepareDownload();
}

std::string SerialFlash::PrepareUpload() {
    if (UploadBlock_ <= 0) {
        return {};
    }
    Run_.TotalBlock = UploadBlock_;
    const fs::path path = Utf8Path(FileName_);
    const auto cannotBeDeleted = [this](const std::string& why) {
        return "Error: " + FileName_ + " cannot be deleted (" + why + ").";
    };
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type != fs::file_type::not_found && type != fs::file_type::none) {
        // Neither a folder nor a device is ever in the way of an upload: it was named by mistake.
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
        return CannotAccess(LastSystemError());
    }
    Run_.FileCreated = true;
    return {};
}

// The image is taken whole before the unit hears a word: what a file becomes in mid-run, or a disk that
// cannot be read any further, must not end in a unit's flash.
std::string SerialFlash::PrepareDownload() {
    static const std::string invalidSize = "Error: Invalid file size.";
    const fs::path path = Utf8Path(FileName_);
    std::error_code error;
    const std::uint64_t size = fs::file_size(path, error);
    if (error) {
        return CannotAccess(error.message());
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return CannotAccess(LastSystemError());
    }
    const auto beginning = std::min<std::uint64_t>(size, ImageTypeWindow);
    if (const auto trouble = ReadWhole(file, beginning, Run_.Image); !trouble.empty()) {
        return CannotAccess(trouble);
    }
    Run_.ImageInfo = CheckImageType(size, Run_.Image);
    const bool anyLength = CarriesItsLength(Run_.ImageInfo);
    const std::uint64_t blocks = size / BlockSize + (anyLength && size % BlockSize != 0 ? 1 : 0);
    const bool chipSized = std::find(ChipSizes.begin(), ChipSizes.end(), size) != ChipSizes.end();
    if (!(chipSized || anyLength) || blocks > std::numeric_limits<std::int16_t>::max()) {
        return invalidSize;
    }
    if (const auto trouble = ReadWhole(file, size - beginning, Run_.Image); !trouble.empty()) {
        return CannotAccess(trouble);
    }
    Run_.FileSize = size;
    Run_.TotalBlock = static_cast<int>(blocks);
    return {};
}

std::string SerialFlash::CannotAccess(const std::string& why) const {
    return "Error: Cannot access to " + FileName_ + " (" + why + ").";
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
        Say(IsUpload() ? "Uploading was canceled." : "Programming was canceled.");
    }
    if (!Run_.FileTrouble.empty()) {
        Say(" ");
        Say(Run_.FileTrouble);
    }
    switch (Run_.LinkResult) {
        case LinkResult::NoFailure:
            break;
        case LinkResult::NoResponse:
            Say(" ");
            Say("No response from the unit.");
            Say("Timeout.");
            break;
        case LinkResult::TransmittingError:
            Say(" ");
            Say("Transmitting error.");
            break;
        case LinkResult::NotCompatible:
            Say(" ");
            Say("The software is not compatible.");
            break;
    }
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

void SerialFlash::Say(const std::string& text) const {
    if (Message) {
        Message(text);
    }
}

void SerialFlash::SayTiming(const std::string& text) const {
    if (Timing) {
        Timing(text);
    }
}

}  // namespace burnwick
