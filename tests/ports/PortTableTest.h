#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "ports/PortTable.h"

namespace burnwick::test {

class PortTable : public ::testing::Test {
protected:
    ReadSetting Read = [this](const std::string& section, const std::string& key) {
        return Settings[section + "/" + key];
    };
    std::map<std::string, std::string> Settings;
};

}  // namespace burnwick::test
