#include <csignal>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "runtime/Checked.h"

namespace kestrune {
namespace {

using Limits = std::numeric_limits<std::int32_t>;

TEST(CheckedDeathTest, overflowEndsTheProcessWithOneLine) {
  EXPECT_EQ(checkedAdd(Limits::max() - 1, 1, "ticks"), Limits::max());
  EXPECT_EQ(checkedSubtract<std::uint64_t>(7, 7, "bytes"), 0U);
  const testing::KilledBySignal aborted(SIGABRT);
  EXPECT_EXIT(checkedAdd(Limits::max(), 1, "user ticks"), aborted,
              "^kestrune: arithmetic overflow in user ticks\n$");
  EXPECT_EXIT(checkedSubtract<std::uint64_t>(1, 2, "read bytes"), aborted, "overflow in read bytes\n$");
  EXPECT_EXIT(checkedMultiply<std::int64_t>(std::numeric_limits<std::int64_t>::min(), -1, "sectors"), aborted,
              "overflow in sectors\n$");
}

}  // namespace
}  // namespace kestrune
