#pragma once

#include <chrono>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "engine/FlashMessages.h"
#include "engine/ImageInfo.h"
#include "engine/RunResult.h"
#include "platform/loop/MessageLoop.h"
#include "platform/serial/MSComm.h"

namespace burnwick {

enum class Method { Upload = 1, Download = 2, Cancel = 3 };

enum class LinkState {
    WaitingForUnit = 1,
    SpeedNegotiation = 2,
    ReadyToSend = 3,
    AwaitingAnswer = 4,
};

enum class LinkResult {
    NoFailure = 0,
    NoResponse = 1,         // the unit never answered
    TransmittingError = 2,  // a reply was missing, late or negative
    NotCompatible = 3,      // the image does not suit the unit
};

// The link to the unit: programs its flash from an image file, or reads its flash into a file.
//
// Owns the port during a run. A run is synchronous: Execute returns when it has ended, and hands every wait
// to the message loop, through which a second Execute(Method::Cancel) can come. Nothing is thrown but what an
// event's handler throws: the outcome is in the texts raised through Message.
class SerialFlash {
public:
    using PropertyBag = std::map<std::string, std::string>;

    // Both must outlive the link.
    SerialFlash(MessageLoop& loop, MSComm& port);

    // Events. Blocks count from 0; a download's and an upload's texts come in the order in which they are to
    // be read. Trace is raised only with DebugEnabled.
    std::function<void(int block, int totalBlock)> Progress;
    std::function<void(const RunLine& line)> Message;
    std::function<void(const RunTiming& timing)> Timing;
    std::function<void(const std::string& line)> Trace;
    std::function<void(const std::string& property)> PropertyChanged;

    // COM port number.
    std::uint8_t CommPort() const { return CommPort_; }
    void SetCommPort(std::uint8_t port);
    // The image to program, or the file to create (UTF-8).
    const std::string& FileName() const { return FileName_; }
    void SetFileName(const std::string& fileName);
    // The image's bytes, where the caller has read the file; without them a download reads it.
    void SetImage(std::shared_ptr<const Bytes> image) { Image_ = std::move(image); }
    // Blocks to read on an upload.
    std::int16_t UploadBlock() const { return UploadBlock_; }
    void SetUploadBlock(std::int16_t blocks);
    // "9600", "57600" or "115200".
    const std::string& BaudRate() const { return BaudRate_; }
    void SetBaudRate(const std::string& baudRate);
    // The control's version number. Assigning one is accepted, and changes nothing.
    const std::string& Version() const { return Version_; }
    void SetVersion(const std::string& version) const;
    bool DebugEnabled() const { return DebugEnabled_; }
    void SetDebugEnabled(bool enabled) { DebugEnabled_ = enabled; }

    // The persistent properties. One that is missing has its default; one that has its default is not
    // written, and the version never is.
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // Runs a whole upload or download. Cancel returns at once: the run in progress, or else the next one,
    // ends as cancelled.
    void Execute(Method method);

    // What came of the last Execute, a cancel apart.
    const RunResult& LastRun() const { return Result_; }

private:
    // How often a wait looks at the cancel flag and the limits.
    static constexpr std::chrono::milliseconds LongestSleep{100};

    // Everything that a run leaves behind, and the next one must not find.
    struct Run {
        burnwick::LinkState LinkState = LinkState::WaitingForUnit;
        burnwick::LinkResult LinkResult = LinkResult::NoFailure;
        int Block = 0;       // blocks sent or requested so far
        int TotalBlock = 0;  // blocks in this run
        std::uint8_t BlockAddressHigh = 0;
        std::uint8_t BlockAddressLow = 0;
        burnwick::ImageInfo ImageInfo;
        char UnitReplyChar = 0;
        std::uint64_t FileSize = 0;            // of the image; 0 on an upload
        std::shared_ptr<const Bytes> Image;    // to program
        std::ofstream File;                    // the file to create
        bool FileCreated = false;              // this run has created FileName, and deletes it on a failure
        std::optional<FileError> FileTrouble;  // why the file could not be written
        int SecTimeout = 0;                    // silent ticks of 100 ms
        bool RxFlashRequest = false;
        bool SpeedSwitched = false;
        bool IdentifyAsked = false;
        std::chrono::milliseconds WaitStart{};               // when the wait for the unit began
        std::optional<std::chrono::milliseconds> StartTime;  // when the transfer began
        std::string ElapsedText;                             // "mm:ss"
    };

    // SerialFlash.cpp: a run from outside.
    void RunJob();
    void BreakOff();
    void EndRun();
    std::optional<FileError> PrepareFile();
    std::optional<FileError> PrepareUpload();
    std::optional<FileError> PrepareDownload();
    std::optional<FileError> ReadImage();
    FileError CannotAccess(FileError::Kind what, const std::string& why) const;
    CommResult TryPort();
    void ReportFailure() const;
    Outcome FailureOfRun() const;
    void DeleteUpload();

    // SerialFlashLink.cpp: the run on the line.
    bool RunLink();
    bool MoveBlocks();
    bool RunEnds() const;
    void WaitForUnit();
    void SendNextBlock();
    void ReportSuccess();
    void CloseLink();
    void SendMessage(MessageKind kind);
    Bytes NextBlockMessage();
    BlockData NextImageBlock() const;
    bool StoreBlock(BlockData data);
    bool FinishFile();
    void FileFailed();
    void WaitFor(std::chrono::milliseconds amount);
    void StartElapsedTime();
    void TickElapsedTime();

    // SerialFlashAnswers.cpp: what the unit says.
    void ReceiveMessage();
    void LetAnswerArriveWhole();
    void ApplySilenceLimits();
    std::optional<int> SilenceLimit() const;
    bool React(const Answer& answer, const Bytes& chunk);
    void AnswerReady();
    void SwitchSpeed();
    bool JudgeAndStart();
    void MakeContact();
    void TakeBlockAnswer(const Answer& answer, const Bytes& chunk);
    void TraceAnswer(const Bytes& chunk) const;

    bool IsUpload() const { return Method_ == Method::Upload; }
    bool AsksForSpeed() const { return BaudRate_ == "57600" || BaudRate_ == "115200"; }
    std::string StampedLine(const std::string& label) const;
    void Changed(const std::string& property) const;
    void Say(const std::string& text, LineKind kind = LineKind::Text) const;
    void SayTiming(const std::string& text, bool isTransfer) const;

    MessageLoop& Loop_;
    MSComm& Port_;
    std::unique_ptr<Timer> SecTimeoutTimer_;  // tmrSecTimeout
    std::unique_ptr<Timer> TimingTimer_;      // tmrTiming

    std::uint8_t CommPort_ = 1;
    std::string FileName_;
    std::shared_ptr<const Bytes> Image_;
    std::int16_t UploadBlock_ = 0;
    std::string BaudRate_ = "57600";
    std::string Version_ = "1.19";
    bool DebugEnabled_ = false;

    Method Method_ = Method::Download;
    bool Running_ = false;
    bool CancelFlag_ = false;  // outlives a run that never opened its port
    RunResult Result_;
    Run Run_;
};

}  // namespace burnwick
