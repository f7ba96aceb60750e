#include "job/FlashJob.h"

#include <exception>
#include <system_error>
#include <utility>
#include <variant>

#include "platform/files/Utf8Path.h"
#include "ports/modFindCOMPorts.h"

namespace burnwick {

namespace {

using namespace std::chrono_literals;

}  // namespace

FlashJob::FlashJob(MessageLoop& loop, std::unique_ptr<SerialDevice> device, FlashOrder order,
                   std::function<void(const JobEvent&)> raise)
    : Loop_(loop),
      Order_(std::move(order)),
      Raise_(std::move(raise)),
      Port_(loop, std::move(device), [this](int /*port*/) { return Order_.Device; }),
      Flash_(loop, Port_) {
    Flash_.Message = [this](const RunLine& line) { Raise_(line); };
    Flash_.Timing = [this](const RunTiming& timing) { Raise_(timing); };
    Flash_.Progress = [this](int block, int total) { Raise_(BlockProgress{block, total}); };
    Flash_.Trace = [this](const std::string& line) { Raise_(TraceLine{line}); };
    Flash_.SetDebugEnabled(Order_.Trace);
    Flash_.SetCommPort(static_cast<std::uint8_t>(Order_.Port));
    Flash_.SetBaudRate(Order_.BaudRate);
}

void FlashJob::Run() {
    try {
        RunOrder();
    } catch (const std::exception& error) {
        Result_.Unforeseen = error.what();
        if (!Result_.VerificationBegun) {
            Result_.Transfer = Flash_.LastRun();
        }
    }
    Raise_(Result_);
}

void FlashJob::Cancel() {
    Canceled_ = true;
    Flash_.Execute(Method::Cancel);
}

void FlashJob::RunOrder() {
    switch (Order_.What) {
        case FlashOrder::Kind::Download:
            Download();
            break;
        case FlashOrder::Kind::Upload:
            Upload();
            break;
        case FlashOrder::Kind::Verify:
            ReadBack();
            break;
    }
}

void FlashJob::Download() {
    Flash_.SetImage(Order_.Image.Content);
    Result_.Transfer = Transfer(Method::Download, Order_.Image.FileName, 0);
    if (Result_.Transfer.Succeeded() && WantsVerification()) {
        ReadBack();
    }
}

// An upload deletes the file that it replaces before it opens the port: a port that is busy must not cost a
// backup.
void FlashJob::Upload() {
    std::error_code ignored;
    const auto status = std::filesystem::symlink_status(Utf8Path(Order_.FileName), ignored);
    if (std::filesystem::exists(status)) {
        if (const CommResult error = modFindCOMPorts::TestPort(Port_, Order_.Port)) {
            Result_.Transfer.Outcome = Outcome::PortError;
            Result_.Transfer.PortError = error;
            return;
        }
    }
    Result_.Transfer = Transfer(Method::Upload, Order_.FileName, Order_.Blocks);
}

bool FlashJob::WantsVerification() {
    if (Order_.Verify != FlashOrder::Verification::Ask || Canceled_) {
        return Order_.Verify == FlashOrder::Verification::Always;
    }
    Answer_.reset();
    Raise_(VerificationOffer{});
    while (!Answer_ && !Canceled_) {
        Loop_.Yield(100ms);
    }
    return Answer_.value_or(false);
}

// Whatever comes of it, the programming itself has succeeded: its result stays as it is.
void FlashJob::ReadBack() {
    Result_.VerificationBegun = true;
    Raise_(VerificationBegins{});
    if (!Order_.ReadBack) {
        auto plan = PlanReadBack(Order_.ProgramFolder, Order_.Image);
        if (const auto* const trouble = std::get_if<ReadBackTrouble>(&plan)) {
            Raise_(VerificationEnds{ReadBackRefusal(*trouble, Order_.ProgramFolder, Order_.Image)});
            return;
        }
        Order_.ReadBack = std::get<ReadBackPlan>(std::move(plan));
    }
    const auto& path = Order_.ReadBack->File->Path();
    Result_.ReadBack = Transfer(Method::Upload, Utf8Text(path), Order_.ReadBack->Blocks);
    if (Result_.ReadBack->Succeeded()) {
        Judge(path);
    } else if (Result_.ReadBack->Outcome == Outcome::Canceled) {
        Raise_(VerificationEnds{"Verifying was canceled."});
    }
    Order_.ReadBack.reset();
}

void FlashJob::Judge(const std::filesystem::path& readBack) {
    std::error_code ignored;
    Result_.ReadBackIsGone = !std::filesystem::exists(readBack, ignored);
    if (Result_.ReadBackIsGone) {
        return;
    }
    Raise_(ComparisonBegins{});
    Result_.Verdict = JudgeReadBack(Order_.Image, readBack);
    Raise_(VerificationEnds{Result_.Verdict->Result});
    Result_.ImageChanged = !Result_.Verdict->IsMatch() && modBinFileInfo::HasChanged(Order_.Image);
}

const RunResult& FlashJob::Transfer(Method method, const std::string& file, std::int16_t blocks) {
    Flash_.SetFileName(file);
    Flash_.SetUploadBlock(blocks);
    Flash_.Execute(method);
    return Flash_.LastRun();
}

}  // namespace burnwick
