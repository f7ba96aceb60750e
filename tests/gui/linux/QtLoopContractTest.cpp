#include "platform/DescriptorLoopContract.h"
#include "platform/WindowLoop.h"

namespace burnwick::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Window, MessageLoopContract,
                         testing::Values(LoopKind{"QtMessageLoop", &NewWindowLoop}));

}  // namespace
}  // namespace burnwick::test
