#pragma once

#include <QTest>
#include <chrono>
#include <functional>

#include "support/Elapsed.h"

namespace burnwick::test {

// Handles the application's events until the condition holds; false when it does not within the limit.
inline bool Await(const std::function<bool()>& condition, std::chrono::milliseconds limit = HangLimit) {
    return QTest::qWaitFor(condition, static_cast<int>(limit.count()));
}

}  // namespace burnwick::test
