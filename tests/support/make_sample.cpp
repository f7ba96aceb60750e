#include <algorithm>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "support/SampleImages.h"

// Writes a sample image: what a unit can be programmed with when there is no firmware at hand.
namespace {

using burnwick::Bytes;
using namespace burnwick::test;

const std::map<std::string, Bytes (*)()> Types{
    // 64 KiB, of the oldest kind
    {"64k", [] { return SampleImage(65'536); }},
    // 512 KiB, for any unit
    {"unmarked", [] { return SampleImage(); }},
    // any length, for a unit that calls itself 'I'
    {"type4", SampleType4Image},
    // any length, for a unit that wants the flash request
    {"announced", SampleAnnouncedImage},
};

constexpr int WrongUsage = 64;

}  // namespace

int main(int argc, char* argv[]) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool typed = arguments.size() == 3 && arguments[1] == "--type";
    const auto type = Types.find(typed ? arguments[2] : "unmarked");
    if ((arguments.size() != 1 && !typed) || type == Types.end() || arguments.front().starts_with('-')) {
        std::cerr << "Usage: burnwick-sample FILE [--type 64k|unmarked|type4|announced]\n";
        return WrongUsage;
    }
    const Bytes image = type->second();
    std::ofstream file(arguments.front(), std::ios::binary);
    file.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    file.close();
    if (!file) {
        std::cerr << "burnwick-sample: cannot write " << arguments.front() << '\n';
        return 1;
    }
    return 0;
}
