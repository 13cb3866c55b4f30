// Every call that starting makes, in its order. This program brings its own diagnostic sink.
#include "app/EntryPoint.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "util/Diagnostics.h"

namespace norvo {
namespace {

struct Message {
  Text text;
  std::int32_t Main_Calling_then;
};
std::vector<Message> messages;

}  // namespace

void Show_NSLog_Message(TextView message) {
  messages.push_back({Text(message), Main_Calling});
}

namespace {

using Strings = std::vector<std::string>;

// Writes down every call in one list.
class RecordingSystem final : public Authorization, public ProcessEnd {
 public:
  AuthorizationStatus created = 0;
  AuthorizationStatus granted = 0;
  AuthorizationStatus started = 0;
  AuthorizationStatus freed = 0;
  Strings calls;
  AuthorizationRights requested;
  bool stream_wanted = false;

  AuthorizationStatus create() override {
    calls.emplace_back("create");
    return created;
  }
  AuthorizationStatus copy_rights(const AuthorizationRights& rights, std::uint32_t flags) override {
    calls.push_back("copy_rights " + std::to_string(flags));
    requested = rights;
    return granted;
  }
  AuthorizationStatus execute_with_privileges(const std::string& tool, const char* const* arguments,
                                              std::FILE*& communications) override {
    std::string call = "execute " + tool;
    for (; *arguments != nullptr; ++arguments) call += std::string(" ") + *arguments;
    calls.push_back(call);
    stream_wanted = communications == nullptr;
    return started;
  }
  AuthorizationStatus free(std::uint32_t flags) override {
    calls.push_back("free " + std::to_string(flags));
    return freed;
  }
  void end_at_once(int status) override { calls.push_back("end " + std::to_string(status)); }
};

class EntryPoint : public testing::TestWithParam<int> {
 protected:
  static constexpr int application_status = 42;
  static constexpr const char* program = "/Applications/Some App.app/Contents/MacOS/Some App";

  EntryPoint() {
    messages.clear();
    Main_Calling = -1;
    main_call_argc.clear();
  }

  int start(int argc, std::string argument = "x") {
    std::string path = program;
    std::vector<char*> argv(static_cast<std::size_t>(argc), argument.data());
    if (argc > 0) argv[0] = path.data();
    argv.push_back(nullptr);
    const StartUp start_up{.authorization = system_,
                           .process_end = system_,
                           .bundle_path =
                               [this] {
                                 system_.calls.emplace_back("bundle_path");
                                 return bundle_;
                               },
                           .run_application =
                               [this, &argv](int count, char** vector) {
                                 EXPECT_EQ(vector, argv.data());
                                 system_.calls.push_back("run " + std::to_string(count));
                                 return application_status;
                               }};
    return entry_point(argc, argv.data(), start_up);
  }

  static std::vector<Text> texts() {
    std::vector<Text> all;
    for (const Message& message : messages) all.push_back(message.text);
    return all;
  }

  std::string bundle_ = "/Applications/Some App.app";
  RecordingSystem system_;
};

const std::string execute = "execute /Applications/Some App.app/Contents/MacOS/Some App a b c";
const Strings whole_sequence{"create", "copy_rights 19", "bundle_path", execute, "free 8", "end 0"};

using WithFewArguments = EntryPoint;

TEST_P(WithFewArguments, TheExecutableIsRelaunchedWithTheRightAndTheProcessEnds) {
  start(GetParam());
  EXPECT_EQ(system_.calls, whole_sequence);
  EXPECT_TRUE(system_.stream_wanted);
}

TEST_P(WithFewArguments, TheValuesOfTheArgumentsAreNotLookedAt) {
  start(GetParam(), "a");
  EXPECT_EQ(system_.calls, whole_sequence);
}

TEST_P(WithFewArguments, OneItemIsAskedForWithoutAValue) {
  start(GetParam());
  ASSERT_EQ(system_.requested.size(), 1U);
  EXPECT_EQ(system_.requested[0].name, "system.privilege.admin");
  EXPECT_EQ(system_.requested[0].value_length, 0U);
  EXPECT_EQ(system_.requested[0].value, nullptr);
  EXPECT_EQ(system_.requested[0].flags, 0U);
}

TEST_P(WithFewArguments, WhatHappenedIsComposed) {
  start(GetParam());
  const Text count = decimal(static_cast<std::uint64_t>(GetParam()));
  EXPECT_EQ(texts(),
            (std::vector<Text>{
                u"argument count : " + count, u"bundle path : /Applications/Some App.app",
                u" path : /Applications/Some App.app/Contents/MacOS/Some App.app",
                u" no ext : /Applications/Some App.app/Contents/MacOS/Some App", u"status: 0"}));
}

TEST_P(WithFewArguments, AFailedCreationIsCarriedPast) {
  system_.created = -60005;
  start(GetParam());
  EXPECT_EQ(system_.calls, whole_sequence);
  EXPECT_EQ(texts().at(1), u"Error Creating Initial Authorization: -60005");
}

TEST_P(WithFewArguments, ARefusedRightEndsTheProcessBeforeAnythingIsStarted) {
  for (const AuthorizationStatus refusal : {-60006, -60005, 1}) {
    messages.clear();
    system_.calls.clear();
    system_.granted = refusal;
    system_.freed = -7;
    start(GetParam());
    EXPECT_EQ(system_.calls, (Strings{"create", "copy_rights 19", "free 8", "end 0"}));
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(texts()[1],
              u"Copy Rights Unsuccessful: " + text_from_utf8_lossy(std::to_string(refusal)));
    EXPECT_EQ(texts()[2], u"Copy Rights Unsuccessful: -7");
  }
}

TEST_P(WithFewArguments, ARefusedRightAfterAFailedCreationEndsTheProcess) {
  system_.created = 5;
  system_.granted = 6;
  start(GetParam());
  EXPECT_EQ(system_.calls, (Strings{"create", "copy_rights 19", "free 8", "end 0"}));
}

TEST_P(WithFewArguments, AFailedRelaunchEndsTheProcessWithStatusZero) {
  system_.started = -60031;
  system_.freed = 3;
  start(GetParam());
  EXPECT_EQ(system_.calls, whole_sequence);
  ASSERT_EQ(messages.size(), 6U);
  EXPECT_EQ(texts()[4], u"Error: -60031");
  EXPECT_EQ(texts()[5], u"status: 3");
}

TEST_P(WithFewArguments, ABundleUnderAnotherNameIsRelaunchedUnderThatName) {
  bundle_ = "/tmp/Renamed.app";
  system_.started = 2;
  start(GetParam());
  EXPECT_EQ(system_.calls.at(3), "execute /tmp/Renamed.app/Contents/MacOS/Renamed a b c");
}

INSTANTIATE_TEST_SUITE_P(Counts, WithFewArguments, testing::Values(1, 2, 3));

class WithOtherCounts : public EntryPoint {};

TEST_P(WithOtherCounts, TheApplicationRunsWithoutElevationAndItsStatusIsReturned) {
  EXPECT_EQ(start(GetParam()), application_status);
  EXPECT_EQ(system_.calls, Strings{"run " + std::to_string(GetParam())});
  EXPECT_EQ(texts(), std::vector<Text>{u"argument count : " +
                                       decimal(static_cast<std::uint64_t>(GetParam()))});
}

INSTANTIATE_TEST_SUITE_P(Counts, WithOtherCounts, testing::Values(0, 4, 5, 100));

class AtAnyCount : public EntryPoint {};

TEST_P(AtAnyCount, TheStartIsRecorded) {
  start(GetParam());
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages[0].Main_Calling_then, 1);
  for (std::size_t i = 1; i < messages.size(); ++i) {
    EXPECT_EQ(messages[i].Main_Calling_then, GetParam());
  }
  EXPECT_EQ(Main_Calling, GetParam());
  EXPECT_EQ(main_call_argc,
            GetParam() > 0 ? u"argc value : 0  /Applications/Some App.app/Contents/MacOS/Some App"
                           : u"argc value : 0  (null)");
}

INSTANTIATE_TEST_SUITE_P(Counts, AtAnyCount, testing::Values(0, 1, 2, 3, 4, 5, 100));

}  // namespace
}  // namespace norvo
