#pragma once

#include "log/LogFile.h"
#include "log/LogFolder.h"

namespace burnwick::test {

class LogFileTest : public LogFolder {
protected:
    LogFile Read() const { return ReadLogFile(Folder.Path()); }
    std::string Clear() const { return ClearLogFile(Folder.Path()); }
};

}  // namespace burnwick::test
