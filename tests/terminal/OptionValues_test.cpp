#include "platform/terminal/OptionValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <variant>
#include <vector>

#include "app/EditionProfile.h"
#include "platform/terminal/CommandLine.h"

namespace norvo {
namespace {

TEST(OptionValues, KnowTheValueOfEveryOption) {
  for (const Option& option : command_line_options()) {
    if (option.value_name.empty()) continue;
    EXPECT_TRUE(option_value(option.value_name)) << option.name << " " << option.value_name;
  }
  EXPECT_FALSE(option_value(""));
  EXPECT_FALSE(option_value("path"));
}

TEST(OptionValues, EveryChoiceIsOneThatTheProgramTakes) {
  std::size_t tried = 0;
  for (const Option& option : command_line_options()) {
    const auto value = option_value(option.value_name);
    if (!value || value->kind != ValueKind::choice) continue;
    EXPECT_FALSE(value->choices.empty());
    for (const std::string& choice : value->choices) {
      const std::string argument = std::string(option.name) + "=" + choice;
      const std::vector<const char*> arguments{"--list-types", argument.c_str()};
      EXPECT_TRUE(std::holds_alternative<CommandLine>(parse_command_line(arguments))) << argument;
      ++tried;
    }
  }
  EXPECT_GE(tried, 11U);
}

TEST(OptionValues, OnlyChoicesHaveChoices) {
  for (const Option& option : command_line_options()) {
    const auto value = option_value(option.value_name);
    if (value && value->kind != ValueKind::choice) {
      EXPECT_TRUE(value->choices.empty()) << option.name;
    }
  }
}

TEST(OptionValues, ABundleNameSelectsItsEditionAndNoOther) {
  const std::vector<std::string> names = bundle_names();
  ASSERT_EQ(names.size(), 7U);
  std::vector<Text> long_names;
  for (const std::string& name : names) {
    const EditionProfile profile = select_edition(text_from_utf8_lossy(name));
    EXPECT_TRUE(profile.is_edition()) << name;
    EXPECT_EQ(std::count(long_names.begin(), long_names.end(), profile.APP_LONG_NAME), 0) << name;
    long_names.push_back(profile.APP_LONG_NAME);
  }
}

TEST(OptionValues, AListReadsAsInASentence) {
  EXPECT_EQ(listed({}, "or"), "");
  EXPECT_EQ(listed(std::vector<std::string>{"a"}, "or"), "a");
  EXPECT_EQ(listed(std::vector<std::string>{"a", "b"}, "and"), "a and b");
  EXPECT_EQ(listed(std::vector<std::string>{"a", "b", "c"}, "or"), "a, b or c");
}

}  // namespace
}  // namespace norvo
