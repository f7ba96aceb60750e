#pragma once

namespace burnwick::cli {

enum ExitStatus : int {
    Done = 0,
    NoResponse = 1,
    TransmittingError = 2,
    NotCompatible = 3,
    Canceled = 4,
    PortNotAvailable = 5,
    FileUnusable = 6,  // missing, unreadable, unwritable or not an image
    Differences = 7,   // a verification or comparison found some
    WrongUsage = 64,   // EX_USAGE of sysexits.h
};

}  // namespace burnwick::cli
