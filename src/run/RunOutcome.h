#pragma once

#include <span>
#include <string>

namespace burnwick {

// How a run ended, as its status texts tell it.
enum class RunOutcome {
    Ok,                 // completed, every block acknowledged
    NoResponse,         // the unit never answered
    TransmittingError,  // a reply was missing, late or negative
    NotCompatible,      // the image does not suit the unit
    Canceled,           // the user gave up
    FileError,          // the file is missing, unreadable, unwritable or no image
};

// Reads the outcome from the lines that the run raised, in their order. Whatever does not say that it
// succeeded, and nothing worse, has failed.
RunOutcome OutcomeOf(std::span<const std::string> messages);

}  // namespace burnwick
