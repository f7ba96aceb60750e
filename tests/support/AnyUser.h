#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace burnwick::test {

// While this lives, the process has no more rights than any user has.
class AnyUser {
public:
    AnyUser() { EXPECT_TRUE(Root_ != 0 || seteuid(65534) == 0); }
    AnyUser(const AnyUser&) = delete;
    AnyUser& operator=(const AnyUser&) = delete;
    ~AnyUser() { EXPECT_TRUE(Root_ != 0 || seteuid(Root_) == 0); }

private:
    uid_t Root_ = geteuid();
};

}  // namespace burnwick::test
