// Giving rights up in a child process. What a person's session adds is tried end to end.
#include "platform/linux/Privileges.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/capability.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "support/Child.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/UniqueFd.h"

namespace norvo {
namespace {

using test::status_in_child;

constexpr const char* no_capability = "0000000000000000";
const Person somebody{
    .uid = 61234, .gid = 61235, .name = "nobody-of-that-name", .home = "/", .shell = "/bin/sh"};

std::string status_field(const std::string& name) {
  std::ifstream file("/proc/self/status");
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(name + ":\t")) return line.substr(name.size() + 2);
  }
  return "missing";
}

bool can_read(const std::filesystem::path& path) {
  const UniqueFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return static_cast<bool>(fd);
}

class Privileges : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root has rights to give up";
    test::write_file(secret(), "of root");
    std::filesystem::permissions(secret(), std::filesystem::perms::owner_read);
  }

  std::filesystem::path secret() const { return folder_.path() / "secret"; }

 private:
  test::TemporaryFolder folder_;
};

TEST_F(Privileges, APersonHasNoCapabilityAndNoWayBack) {
  EXPECT_EQ(status_in_child([] {
              become_person(somebody);
              if (getuid() != somebody.uid || geteuid() != somebody.uid) return 2;
              if (getgid() != somebody.gid || getegid() != somebody.gid) return 3;
              for (const char* set : {"CapInh", "CapPrm", "CapEff", "CapBnd", "CapAmb"}) {
                if (status_field(set) != no_capability) return 4;
              }
              if (setuid(0) == 0 || setgid(0) == 0 || setgroups(0, nullptr) == 0) return 5;
              if (status_field("NoNewPrivs") != "1") return 6;
              return prctl(PR_GET_DUMPABLE, 0, 0, 0, 0) == 0 ? 0 : 7;
            }),
            0);
}

TEST_F(Privileges, APersonCannotReadWhatIsRoots) {
  EXPECT_EQ(status_in_child([this] {
              if (!can_read(secret())) return 2;
              become_person(somebody);
              return can_read(secret()) ? 3 : 0;
            }),
            0);
}

TEST_F(Privileges, AReaderReadsEverythingAndWritesNothing) {
  EXPECT_EQ(status_in_child([this] {
              become_reader_of_everything();
              if (!can_read(secret())) return 2;
              if (open(secret().c_str(), O_WRONLY | O_CLOEXEC) >= 0) return 3;
              return unlink(secret().c_str()) == 0 ? 4 : 0;
            }),
            0);
}

TEST_F(Privileges, AReaderHasOneCapabilityAndNoWayBack) {
  EXPECT_EQ(status_in_child([] {
              become_reader_of_everything();
              if (getuid() == 0 || geteuid() == 0 || getgroups(0, nullptr) != 0) return 2;
              if (status_field("CapEff") != "0000000000000004") return 3;
              if (status_field("CapPrm") != "0000000000000004") return 4;
              for (const char* set : {"CapInh", "CapBnd", "CapAmb"}) {
                if (status_field(set) != no_capability) return 5;
              }
              if (setuid(0) == 0 || setgid(0) == 0) return 6;
              if (status_field("NoNewPrivs") != "1") return 7;
              return prctl(PR_GET_DUMPABLE, 0, 0, 0, 0) == 0 ? 0 : 8;
            }),
            0);
}

TEST_F(Privileges, RootIsNobodyToBecome) {
  EXPECT_EQ(status_in_child([] {
              become_person({.uid = 0, .gid = 0, .name = "root", .home = "/", .shell = ""});
              return 2;
            }),
            1);
}

TEST_F(Privileges, AProcessThatMayNotChangeItsGroupsEnds) {
  EXPECT_EQ(status_in_child([] {
              const cap_value_t missing = CAP_SETGID;
              const cap_t rights = cap_get_proc();
              cap_set_flag(rights, CAP_EFFECTIVE, 1, &missing, CAP_CLEAR);
              if (cap_set_proc(rights) != 0) return 2;
              become_person(somebody);
              return 3;
            }),
            1);
}

TEST_F(Privileges, AProcessThatMayNotLimitItsFutureEnds) {
  EXPECT_EQ(status_in_child([] {
              const cap_value_t missing = CAP_SETPCAP;
              const cap_t rights = cap_get_proc();
              cap_set_flag(rights, CAP_EFFECTIVE, 1, &missing, CAP_CLEAR);
              if (cap_set_proc(rights) != 0) return 2;
              become_reader_of_everything();
              return 3;
            }),
            1);
}

TEST_F(Privileges, AReaderWithoutItsCapabilityEnds) {
  EXPECT_EQ(status_in_child([] {
              const cap_value_t missing = CAP_DAC_READ_SEARCH;
              const cap_t rights = cap_get_proc();
              cap_set_flag(rights, CAP_EFFECTIVE, 1, &missing, CAP_CLEAR);
              cap_set_flag(rights, CAP_PERMITTED, 1, &missing, CAP_CLEAR);
              if (cap_set_proc(rights) != 0) return 2;
              become_reader_of_everything();
              return 3;
            }),
            1);
}

}  // namespace
}  // namespace norvo
