#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/serial/CommError.h"

namespace burnwick {

// How a run of the link ended.
enum class Outcome {
    Succeeded,          // every block was acknowledged
    NoResponse,         // the unit never answered
    TransmittingError,  // an answer was missing, late or negative
    NotCompatible,      // the image does not suit the unit; nothing was written
    Canceled,           // the caller cancelled
    PortError,          // the port could not be opened
    FileError,          // the file is missing, unreadable, unwritable or no image
};

// What a line of a run stands for, to those who do more with it than show it.
enum class LineKind {
    Text,          // shown, and nothing else
    GettingReady,  // contact was made, and the blocks follow
    PleaseWait,    // the unit takes its time for the last block
    Completed,
    Canceled,
    TransmittingError,
    NotCompatible,
    Timeout,
    FileError,
};

// A line for the display.
struct RunLine {
    std::string Text;
    LineKind Kind = LineKind::Text;

    bool IsOutcome() const {
        return Kind == LineKind::Completed || Kind == LineKind::Canceled
               || Kind == LineKind::TransmittingError || Kind == LineKind::NotCompatible;
    }
};

// How a run stands in time.
struct RunTiming {
    std::string Text;         // "Timeout: 42 seconds", or "Elapsed time: 00:42"
    bool IsTransfer = false;  // the elapsed time of a transfer, not the time left to wait for the unit
};

// Why a file cannot be programmed, or cannot be read into.
struct FileError {
    enum class Kind {
        InvalidSize,   // no image has this length
        NotReadable,   // missing, not permitted, or broken off while it was read
        NotDeletable,  // an upload would have to replace it
        NotWritable,   // cannot be created or written: folder, permission, full disk
    };
    Kind What;
    std::string Text;  // a sentence with the file's name: "Cannot access to unit.bin (Permission denied)."
};

// What came of one Execute. A result that was never filled in is a failure.
struct RunResult {
    burnwick::Outcome Outcome = Outcome::TransmittingError;
    CommResult PortError;                            // of Outcome::PortError
    std::optional<burnwick::FileError> FileError{};  // of Outcome::FileError
    int Baud = 0;                                    // bit/s at contact with the unit; 0 without contact
    int Blocks = 0;                                  // sent or asked for
    int Acknowledged = 0;                            // of these blocks
    int TotalBlocks = 0;
    // From the switch to the transfer's speed until the port was closed; nothing when it never came so far.
    std::optional<std::chrono::milliseconds> Elapsed{};

    bool Succeeded() const { return Outcome == burnwick::Outcome::Succeeded; }

    // Of a download: the unit's flash was erased, and does not hold the whole image.
    bool LeavesFlashIncomplete() const { return Blocks > 0 && Acknowledged < TotalBlocks; }
};

}  // namespace burnwick
