#include "platform/serial/windows/ComErrors.h"

#include <gmock/gmock.h>

#include "platform/process/windows/SystemHeaders.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string port = "\\\\.\\COM12";

TEST(ComErrors, NameThePortAsTheUserDoes) {
    EXPECT_EQ(DeviceError(port, ERROR_FILE_NOT_FOUND).Description,
              "COM12: no such device: is the adapter plugged in?");
}

TEST(ComErrors, OfAPortThatIsTakenSayWhatTheSystemSaidAndWhatToDo) {
    for (const unsigned long said : {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION, ERROR_BUSY}) {
        const auto error = DeviceError(port, said);
        EXPECT_EQ(error.Number, CommErrorNumber::Busy);
        EXPECT_THAT(error.Description, StartsWith("COM12 is in use by another program ("));
        EXPECT_THAT(error.Description, HasSubstr(SystemMessage(said)));
        EXPECT_THAT(error.Description, HasSubstr("close that program"));
    }
}

TEST(ComErrors, OfAFolderThatIsDeniedSayThatItIsNoPort) {
    const test::TempFolder folder;
    const auto path = folder.Path().string();
    EXPECT_EQ(DeviceError(path, ERROR_ACCESS_DENIED).Number, CommErrorNumber::NotSerial);
}

TEST(ComErrors, HaveTheControlsOwnNumbers) {
    EXPECT_EQ(DeviceError(port, ERROR_INVALID_FUNCTION).Number, CommErrorNumber::NotSerial);
    EXPECT_EQ(DeviceError(port, ERROR_DEVICE_NOT_CONNECTED).Number, CommErrorNumber::NotSerial);
    EXPECT_EQ(DeviceError(port, ERROR_PRIVILEGE_NOT_HELD).Number, CommErrorNumber::NotPermitted);
    EXPECT_EQ(DeviceError(port, ERROR_GEN_FAILURE).Number, CommErrorNumber::Broken);
    EXPECT_EQ(DeviceError(port, ERROR_OUTOFMEMORY).Number, CommErrorNumber::Broken);
}

TEST(ComErrors, SayTheSystemsWordsInOneLineWithoutAFullStop) {
    const auto message = SystemMessage(ERROR_ACCESS_DENIED);
    EXPECT_EQ(message.find_first_of("\r\n"), std::string::npos);
    EXPECT_FALSE(message.empty() || message.ends_with('.') || message.ends_with(' ')) << message;
}

TEST(ComErrors, HaveANumberWhereTheSystemHasNoWords) {
    EXPECT_EQ(SystemMessage(0x7FFFFFFF), "error 2147483647");
}

}  // namespace
}  // namespace burnwick
