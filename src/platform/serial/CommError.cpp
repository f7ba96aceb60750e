#include "platform/serial/CommError.h"

namespace burnwick {

CommError MissingDeviceError(const std::string& device) {
    return {CommErrorNumber::NotSerial, device + ": no such device: is the adapter plugged in?"};
}

CommError NotSerialError(const std::string& device) {
    return {CommErrorNumber::NotSerial, device + " is not a serial port"};
}

CommError SettingsError(const std::string& device, const LineSettings& settings) {
    return {CommErrorNumber::UnusableSettings, device + " cannot be set to " + ToText(settings)};
}

}  // namespace burnwick
