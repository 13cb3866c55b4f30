#include "platform/linux/PkexecAuthorization.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <thread>

#include "platform/linux/DetachedProcess.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using Command = std::vector<std::string>;

constexpr std::array<const char*, 4> arguments{"a", "b", "c", nullptr};

TEST(RelaunchCommand, GoesByWayOfPkexecWithoutAPromptOnTheTerminal) {
  EXPECT_EQ(
      relaunch_command("/usr/bin/pkexec", false, "/opt/X.app/Contents/MacOS/X", arguments.data()),
      (Command{"/usr/bin/pkexec", "--disable-internal-agent", "/opt/X.app/Contents/MacOS/X", "a",
               "b", "c"}));
}

TEST(RelaunchCommand, IsDirectForRoot) {
  EXPECT_EQ(relaunch_command("/usr/bin/pkexec", true, "/opt/X", arguments.data()),
            (Command{"/opt/X", "a", "b", "c"}));
}

// Programs that write their arguments down in a file.
class Relaunch : public testing::Test {
 protected:
  fs::path program(const std::string& name) const {
    return program_that_says(name, "printf '%s\\n' \"$0\" \"$@\"");
  }
  fs::path program_that_says(const std::string& name, const std::string& script) const {
    const fs::path path = folder_.path() / name;
    test::write_file(path, "#!/bin/sh\n(" + script + ") > " + unfinished().native() + "\nmv " +
                               unfinished().native() + " " + said().native() + "\n");
    chmod(path.c_str(), 0755);
    return path;
  }
  fs::path said() const { return folder_.path() / "said"; }
  fs::path unfinished() const { return folder_.path() / "unfinished"; }

  std::string wait_for_what_is_said() const {
    for (int i = 0; i < 3000 && !fs::exists(said()); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return test::read_file(said());
  }

  test::TemporaryFolder folder_;
  std::FILE* communications_ = stderr;
};

TEST_F(Relaunch, RunsTheToolThroughPkexec) {
  const fs::path pkexec = program("pkexec");
  const fs::path tool = program("tool with blanks");
  PkexecAuthorization authorization(pkexec, false);
  EXPECT_EQ(authorization.create(), 0);
  EXPECT_EQ(authorization.copy_rights({}, 19), 0);
  EXPECT_EQ(authorization.execute_with_privileges(tool, arguments.data(), communications_), 0);
  EXPECT_EQ(communications_, nullptr);
  EXPECT_EQ(authorization.free(8), 0);
  EXPECT_EQ(wait_for_what_is_said(),
            pkexec.native() + "\n--disable-internal-agent\n" + tool.native() + "\na\nb\nc\n");
}

TEST_F(Relaunch, RunsTheToolItselfForRoot) {
  const fs::path tool = program("tool");
  PkexecAuthorization authorization("/nothing/pkexec", true);
  EXPECT_EQ(authorization.copy_rights({}, 19), 0);
  EXPECT_EQ(authorization.execute_with_privileges(tool, arguments.data(), communications_), 0);
  EXPECT_EQ(wait_for_what_is_said(), tool.native() + "\na\nb\nc\n");
}

// The value of SHELL that a program gets, and of a variable that nobody leaves out.
constexpr const char* environment = "printenv SHELL; printenv NORVO_KEPT";

class ListedNowhere : public Relaunch {
 protected:
  ListedNowhere() {
    setenv("SHELL", "/nowhere/sh", 1);
    setenv("NORVO_KEPT", "kept", 1);
  }
  ~ListedNowhere() override {
    unsetenv("NORVO_KEPT");
    if (shell_) {
      setenv("SHELL", shell_->c_str(), 1);
    } else {
      unsetenv("SHELL");
    }
  }

 private:
  const char* const found_ = getenv("SHELL");
  const std::optional<std::string> shell_ =
      found_ == nullptr ? std::nullopt : std::optional<std::string>(found_);
};

TEST_F(ListedNowhere, TheShellStaysBehindForPkexec) {
  const fs::path pkexec = program_that_says("pkexec", environment);
  PkexecAuthorization authorization(pkexec, false);
  EXPECT_EQ(
      authorization.execute_with_privileges(program("tool"), arguments.data(), communications_), 0);
  EXPECT_EQ(wait_for_what_is_said(), "kept\n");
  EXPECT_STREQ(getenv("SHELL"), "/nowhere/sh") << "the caller keeps it";
}

TEST_F(ListedNowhere, TheShellGoesAlongWithoutPkexec) {
  const fs::path tool = program_that_says("tool", environment);
  PkexecAuthorization authorization("/nothing/pkexec", true);
  EXPECT_EQ(authorization.execute_with_privileges(tool, arguments.data(), communications_), 0);
  EXPECT_EQ(wait_for_what_is_said(), "/nowhere/sh\nkept\n");
}

TEST_F(Relaunch, TheRightCannotBeHadWithoutPkexec) {
  EXPECT_EQ(PkexecAuthorization("/nothing/pkexec", false).copy_rights({}, 19), ENOENT);
}

TEST_F(Relaunch, StartsNothingWhenTheToolCannotRun) {
  const fs::path pkexec = program("pkexec");
  PkexecAuthorization authorization(pkexec, false);
  const auto status = [&](const fs::path& tool) {
    return authorization.execute_with_privileges(tool, arguments.data(), communications_);
  };
  EXPECT_EQ(status(folder_.path() / "nothing"), ENOENT);
  EXPECT_EQ(status(folder_.path()), EACCES);
  test::write_file(folder_.path() / "text", "no program");
  EXPECT_EQ(status(folder_.path() / "text"), EACCES);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_FALSE(fs::exists(said()));
  EXPECT_EQ(status(program("tool")), 0);
  EXPECT_NE(wait_for_what_is_said(), "");
}

// The new process, as it tells about itself.
class DetachedProcess : public Relaunch {
 protected:
  std::string output_of(const std::string& script) const {
    EXPECT_EQ(start_detached({"/bin/sh", "-c",
                              "(" + script + ") > " + unfinished().native() + "; mv " +
                                  unfinished().native() + " " + said().native()}),
              0);
    return wait_for_what_is_said();
  }
};

TEST_F(DetachedProcess, HasAParentThatWaitsAndIsNotTheCaller) {
  // The parent's name and its own parent, from the kernel's table.
  const std::string text = output_of("grep -h -e ^Name -e ^Pid /proc/$PPID/status");
  EXPECT_NE(text.find("Name:"), std::string::npos);
  EXPECT_EQ(text.find("Pid:\t" + std::to_string(getpid()) + "\n"), std::string::npos);
  EXPECT_EQ(text.find("Pid:\t1\n"), std::string::npos);
}

TEST_F(DetachedProcess, HasNothingOnItsStandardStreams) {
  EXPECT_EQ(output_of("readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2"),
            "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_F(DetachedProcess, GetsNoOtherDescriptor) {
  const int inherited = dup(STDIN_FILENO);
  ASSERT_GT(inherited, STDERR_FILENO);
  const std::string text = output_of("ls /proc/$$/fd");
  close(inherited);
  EXPECT_EQ(text.find(std::to_string(inherited)), std::string::npos) << text;
}

TEST_F(DetachedProcess, IsInASessionOfItsOwn) {
  const std::string text = output_of("cut -d' ' -f6 /proc/$$/stat");
  EXPECT_NE(text, std::to_string(getsid(0)) + "\n");
  EXPECT_GT(std::stoi(text), 1);
}

}  // namespace
}  // namespace norvo
