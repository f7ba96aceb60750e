#include <charconv>

#include "engine/SerialFlash.h"

// The persistent properties and their defaults.
namespace burnwick {

namespace {

const SerialFlash::PropertyBag Defaults{
    {"CommPort", "1"}, {"BaudRate", "57600"}, {"Version", "1.19"}, {"DebugEnabled", "False"}};

const std::string& ValueOf(const SerialFlash::PropertyBag& bag, const std::string& key) {
    const auto found = bag.find(key);
    return found == bag.end() ? Defaults.at(key) : found->second;
}

}  // namespace

void SerialFlash::ReadProperties(const PropertyBag& bag) {
    const std::string& port = ValueOf(bag, "CommPort");
    CommPort_ = 1;
    std::from_chars(port.data(), port.data() + port.size(), CommPort_);
    BaudRate_ = ValueOf(bag, "BaudRate");
    Version_ = ValueOf(bag, "Version");
    DebugEnabled_ = ValueOf(bag, "DebugEnabled") == "True";
}

void SerialFlash::WriteProperties(PropertyBag& bag) const {
    const PropertyBag values{{"CommPort", std::to_string(CommPort_)},
                             {"BaudRate", BaudRate_},
                             {"DebugEnabled", DebugEnabled_ ? "True" : "False"}};
    for (const auto& [key, value] : values) {
        if (value == Defaults.at(key)) {
            bag.erase(key);
        } else {
            bag[key] = value;
        }
    }
}

}  // namespace burnwick
