#pragma once

#include "log/BigLog.h"

namespace burnwick::test {

// Logs that cannot be written: nothing is told, and nothing is lost.
class LogTrouble : public BigLog {
protected:
    void WriteBoth() const {
        Write(Failure("/new.bin"));
        LogBaudRateChange(Folder.Path(), false, Afternoon());
    }
};

}  // namespace burnwick::test
