#include "platform/linux/Descriptors.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Child.h"
#include "util/StandardStreams.h"

namespace norvo {
namespace {

using test::status_in_child;

bool is_open(int fd) {
  return fcntl(fd, F_GETFD) >= 0;
}

// On /dev/null, and kept by other programs.
bool is_on_null(int fd) {
  struct stat status {};
  struct stat null {};
  return fstat(fd, &status) == 0 && stat("/dev/null", &null) == 0 &&
         status.st_rdev == null.st_rdev && S_ISCHR(status.st_mode) &&
         (fcntl(fd, F_GETFD) & FD_CLOEXEC) == 0;
}

bool standard_streams_are_on_null() {
  return is_on_null(0) && is_on_null(1) && is_on_null(2);
}

TEST(Descriptors, OnlyTheStandardStreamsAreLeft) {
  EXPECT_EQ(status_in_child([] {
              const int low = open("/proc/self/status", O_RDONLY);
              const int high = fcntl(low, F_DUPFD, 700);
              if (low < 3 || high < 700) return 1;
              close_all_but_standard_streams();
              return is_open(0) && is_open(1) && is_open(2) && !is_open(low) && !is_open(high) ? 0
                                                                                               : 2;
            }),
            0);
}

TEST(Descriptors, NothingIsPutOnTheStandardStreams) {
  EXPECT_EQ(status_in_child([] {
              close_all_but_standard_streams();
              if (!put_null_on_standard_streams()) return 1;
              return standard_streams_are_on_null() && !is_open(3) ? 0 : 2;
            }),
            0);
}

TEST(Descriptors, NothingIsPutOnStandardStreamsThatAreClosed) {
  for (const int closed : {0, 1, 2}) {
    EXPECT_EQ(status_in_child([closed] {
                close_all_but_standard_streams();
                close(closed);
                if (!put_null_on_standard_streams()) return 1;
                return standard_streams_are_on_null() && !is_open(3) ? 0 : 2;
              }),
              0);
  }
}

TEST(Descriptors, ClosedStandardStreamsAreCompletedAndOthersStay) {
  EXPECT_EQ(status_in_child([] {
              close_all_but_standard_streams();
              close(0);
              close(1);
              if (open("/proc/self/status", O_RDONLY) != 0) return 1;
              if (!complete_standard_streams()) return 2;
              return !is_on_null(0) && is_on_null(1) && is_open(2) && !is_open(3) ? 0 : 3;
            }),
            0);
}

}  // namespace
}  // namespace norvo
