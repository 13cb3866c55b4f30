#include "storage/ShellCommand.h"

#include <gtest/gtest.h>

#include <string>

namespace norvo {
namespace {

TEST(ShellCommand, ATaskIsTheShellWithTheTextReadingFromTheNullDevice) {
  const ChildTask task = taskForShellCommand(u"echo \u00E4; exit 3");
  EXPECT_EQ(task.executable, "/bin/sh");
  EXPECT_EQ(task.arguments, (std::vector<std::string>{"-c", "echo \xC3\xA4; exit 3"}));
  EXPECT_EQ(task.input, ChildTask::Input::null_device);
  EXPECT_EQ(task.environment, std::nullopt);
}

TEST(ShellCommand, ReturnsTheWholeOutput) {
  EXPECT_EQ(executeShellCommandSynchronously(u"printf 'one\\n two \\n\\n'"), u"one\n two \n\n");
  EXPECT_EQ(executeShellCommandSynchronously(u"true"), u"");
}

TEST(ShellCommand, StandardErrorIsInterleavedAsItIsWritten) {
  EXPECT_EQ(
      executeShellCommandSynchronously(u"printf a; printf b >&2; printf c; printf d >&2; printf e"),
      u"abcde");
}

TEST(ShellCommand, TheExitStatusDoesNotMatter) {
  EXPECT_EQ(executeShellCommandSynchronously(u"echo out; exit 7"), u"out\n");
  EXPECT_EQ(executeShellCommandSynchronously(u"echo out; kill -9 $$"), u"out\n");
}

TEST(ShellCommand, ACommandThatDoesNotExistIsTheShellsMessage) {
  const std::string message =
      utf8_from_text(executeShellCommandSynchronously(u"/nowhere/norvo-no-such-command"));
  EXPECT_NE(message.find("not found"), std::string::npos) << message;
}

TEST(ShellCommand, LettersOutsideAsciiGoInAndComeOut) {
  EXPECT_EQ(executeShellCommandSynchronously(u"printf '%s' '\u00E4\u3042\U0001F3AC'"),
            u"\u00E4\u3042\U0001F3AC");
}

TEST(ShellCommand, ALetterThatArrivesInTwoChunksStaysWhole) {
  EXPECT_EQ(executeShellCommandSynchronously(u"printf 'a\\303'; sleep 0.1; printf '\\244b'"),
            u"a\u00E4b");
}

TEST(ShellCommand, LongOutputArrivesWhole) {
  const Text output = executeShellCommandSynchronously(
      u"i=0; while [ $i -lt 20000 ]; do echo 0123456789; "
      u"i=$((i+1)); done");
  EXPECT_EQ(output.size(), 220000U);
}

TEST(ShellCommand, BytesThatAreNoTextAreReplaced) {
  EXPECT_EQ(executeShellCommandSynchronously(u"printf 'a\\377b'"), u"a\uFFFDb");
}

TEST(ShellCommand, StandardInputIsAPipeWithNothingInIt) {
  EXPECT_EQ(executeShellCommandSynchronously(u"test -p /dev/stdin && echo pipe; cat; echo end"),
            u"pipe\nend\n");
}

TEST(ShellCommand, TheCommandSeesTheEnvironment) {
  ASSERT_EQ(setenv("NORVO_TEST_VARIABLE", "seen", 1), 0);
  EXPECT_EQ(executeShellCommandSynchronously(u"echo $NORVO_TEST_VARIABLE"), u"seen\n");
  unsetenv("NORVO_TEST_VARIABLE");
}

}  // namespace
}  // namespace norvo
