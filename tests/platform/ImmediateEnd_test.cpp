#include "platform/ImmediateEnd.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "support/Child.h"

namespace norvo {
namespace {

TEST(ImmediateEnd, EndsWithItsStatusAndRunsNoCleanUpHandler) {
  for (const int status : {0, 3}) {
    EXPECT_EQ(test::status_in_child([status] {
                std::atexit([] { _exit(99); });
                ImmediateEnd().end_at_once(status);
                return 98;
              }),
              status);
  }
}

}  // namespace
}  // namespace norvo
