#include "util/UniqueFd.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <utility>

namespace norvo {
namespace {

int open_null() {
  return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool is_open(int fd) {
  return fcntl(fd, F_GETFD) != -1;
}

TEST(UniqueFd, ClosesItsDescriptorWhenItGoes) {
  const int fd = open_null();
  {
    const UniqueFd owner(fd);
    EXPECT_TRUE(owner);
    EXPECT_EQ(owner.get(), fd);
    EXPECT_TRUE(is_open(fd));
  }
  EXPECT_FALSE(is_open(fd));
}

TEST(UniqueFd, HandsItsDescriptorOver) {
  const int fd = open_null();
  UniqueFd first(fd);
  const UniqueFd second(std::move(first));
  EXPECT_EQ(second.get(), fd);
  EXPECT_TRUE(is_open(fd));
}

TEST(UniqueFd, ClosesWhatItHeldWhenItGetsAnother) {
  const int old_fd = open_null();
  const int new_fd = open_null();
  UniqueFd owner(old_fd);
  owner = UniqueFd(new_fd);
  EXPECT_FALSE(is_open(old_fd));
  EXPECT_TRUE(is_open(new_fd));
  EXPECT_EQ(owner.get(), new_fd);
}

TEST(UniqueFd, TellsWhetherClosingFailed) {
  UniqueFd nothing;
  EXPECT_FALSE(nothing);
  EXPECT_TRUE(nothing.close());

  const int fd = open_null();
  UniqueFd owner(fd);
  ASSERT_EQ(close(fd), 0);
  EXPECT_FALSE(owner.close());
  EXPECT_FALSE(owner);
  EXPECT_TRUE(owner.close());
}

}  // namespace
}  // namespace norvo
