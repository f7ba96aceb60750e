#include "fuzz/Input.h"
#include "settings/modUtility.h"
#include "support/TempFolder.h"

// A settings file with any content.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const burnwick::test::TempFolder folder;
    using burnwick::modUtility::ReadIniValue;
    constexpr std::size_t longestValue = 254;
    constexpr std::size_t longestName = 15;

    burnwick::test::Input input(data, size);
    const std::string section = input.TakeText(input.TakeByte() & longestName);
    const std::string key = input.TakeText(input.TakeByte() & longestName);
    burnwick::modUtility::SetIniPath(folder.Write("settings.ini", input.TakeRest()));
    burnwick::test::Require(ReadIniValue(section, key).size() <= longestValue,
                            "a value has 254 bytes at most");
    burnwick::test::Require(ReadIniValue("Port", "CommPort").size() <= longestValue, "any value has");
    return 0;
}
