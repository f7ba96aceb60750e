#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "ports/PortTable.h"

namespace burnwick::test {

class PortTable : public ::testing::Test {
protected:
    std::map<int, std::string> Own;
    OwnDevices Devices = [this](int port) { return Own[port]; };
};

}  // namespace burnwick::test
