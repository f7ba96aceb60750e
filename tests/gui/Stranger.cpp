#include <gtest/gtest.h>

#include <filesystem>

#include "gui/RunningCopy.h"
#include "platform/files/FileLock.h"
#include "platform/files/RuntimeFolder.h"
#include "platform/window/qt/OtherCopy.h"

namespace burnwick::test {

namespace {

constexpr int Patience = 30'000;

// A copy holds its lock as long as it runs.
std::filesystem::path TheOnlyCopy() {
    for (const auto& entry : std::filesystem::directory_iterator(RuntimeFolder())) {
        if (entry.path().extension() == ".lock" && !LockFile(entry.path(), std::chrono::milliseconds(0))) {
            return entry.path();
        }
    }
    return {};
}

}  // namespace

Stranger::Stranger() {
    Socket_.connectToServer(SocketNameOf(TheOnlyCopy().replace_extension(".socket")));
    EXPECT_TRUE(Socket_.waitForConnected(Patience)) << Socket_.errorString().toStdString();
}

void Stranger::Say(const std::string& text) {
    Socket_.write(text.data(), static_cast<qint64>(text.size()));
    Socket_.flush();
}

bool Stranger::IsCutOff() {
    return Socket_.bytesAvailable() == 0 && !Socket_.waitForReadyRead(Patience)
           && Socket_.state() != QLocalSocket::ConnectedState;
}

}  // namespace burnwick::test
