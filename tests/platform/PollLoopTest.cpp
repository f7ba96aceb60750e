#include "platform/DescriptorLoopContract.h"
#include "platform/loop/MessageLoop.h"

namespace burnwick::test {
namespace {

INSTANTIATE_TEST_SUITE_P(System, MessageLoopContract, testing::Values(LoopKind{"PollLoop", &NewSystemLoop}));

TEST(PollLoopTest, AHandleThatIsNoneIsCalledOnce) {
    int calls = 0;
    Pipe pipe;
    const auto loop = NewSystemLoop();
    const auto watch = loop->WatchInput(pipe.Handle(), [&] { ++calls; });
    pipe.CloseHandle();
    YieldFor(*loop, 5ms);
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace burnwick::test
