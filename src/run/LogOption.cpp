#include "run/LogOption.h"

namespace burnwick {

std::string LogOption(const ReadSetting& read, const WriteSetting& write) {
    if (read("Options", "LogOption").empty()) {
        write("Options", "LogOption", "&All");
    }
    return read("Options", "LogOption");
}

}  // namespace burnwick
