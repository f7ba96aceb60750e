#include "job/LogOption.h"

namespace burnwick {

std::string LogOption(const ReadSetting& read, const WriteSetting& write) {
    std::string option = read("Options", "LogOption");
    if (option.empty()) {
        option = "&All";
        write("Options", "LogOption", option);
    }
    return option;
}

}  // namespace burnwick
