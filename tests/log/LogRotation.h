#pragma once

#include "log/BigLog.h"

namespace burnwick::test {

class LogRotation : public BigLog {};

}  // namespace burnwick::test
