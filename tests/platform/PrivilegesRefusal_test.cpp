// Giving rights up where there are none.
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>

#include "platform/linux/Privileges.h"
#include "support/Child.h"

namespace norvo {
namespace {

// The status that a process without rights ends with.
int status_without_root(const std::function<void()>& give_up) {
  return test::status_in_child([&give_up] {
    if (geteuid() == 0 && setuid(61234) != 0) return 2;
    give_up();
    return 3;
  });
}

TEST(PrivilegesOfAnOrdinaryUser, CannotBeGivenUpAndEndTheProcess) {
  EXPECT_EQ(status_without_root([] {
              become_person({.uid = 61234, .gid = 61235, .name = "x", .home = "/", .shell = "/"});
            }),
            1);
  EXPECT_EQ(status_without_root([] { become_reader_of_everything(); }), 1);
}

}  // namespace
}  // namespace norvo
