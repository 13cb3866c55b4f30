// What menus and catalogues promise about an edition is what the edition does.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/EditionProfile.h"

namespace norvo {
namespace {
namespace fs = std::filesystem;

const std::vector<std::pair<std::int32_t, std::string>> search_types{
    {0, "photo"}, {1, "video"}, {2, "raw"}, {3, "audio"}};

class EditionEntry : public testing::TestWithParam<TextView> {
 protected:
  EditionProfile edition_ = select_edition(u"Norvo " + Text(GetParam()));

  static std::string installed(const std::string& folder, const std::string& ending) {
    std::string name = utf8_from_text(GetParam());
    name.front() = static_cast<char>(name.front() - 'A' + 'a');
    std::ifstream file(fs::path(NORVO_SHARE) / folder / ("org.norvo.recovery." + name + ending));
    EXPECT_TRUE(file) << name;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  static bool has_line(const std::string& text, const std::string& line) {
    return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
  }
};

TEST_P(EditionEntry, bears_the_name_and_the_purpose_of_the_edition) {
  const std::string entry = installed("applications", ".desktop");
  EXPECT_TRUE(has_line(entry, "Name=" + utf8_from_text(edition_.App_Name))) << entry;
  ASSERT_TRUE(edition_.APP_LONG_NAME.starts_with(u"Norvo "));
  EXPECT_TRUE(has_line(entry, "GenericName=" + utf8_from_text(edition_.APP_LONG_NAME.substr(6))))
      << entry;
}

TEST_P(EditionEntry, is_found_by_the_search_types_of_the_edition_and_no_others) {
  const std::string entry = installed("applications", ".desktop");
  const std::string description = installed("metainfo", ".metainfo.xml");
  for (const auto& [type, keyword] : search_types) {
    const bool has = edition_.has_search_type(type);
    EXPECT_EQ(entry.find(";" + keyword + ";") != std::string::npos, has) << keyword;
    EXPECT_EQ(description.find("<keyword>" + keyword + "<") != std::string::npos, has) << keyword;
  }
}

TEST_P(EditionEntry, leads_to_the_page_of_the_edition) {
  const std::string description = installed("metainfo", ".metainfo.xml");
  EXPECT_NE(
      description.find("<url type=\"homepage\">" + utf8_from_text(edition_.web_address_2) + "<"),
      std::string::npos)
      << description;
}

INSTANTIATE_TEST_SUITE_P(Editions, EditionEntry, testing::ValuesIn(edition_keywords()),
                         [](const auto& edition) { return utf8_from_text(edition.param); });

}  // namespace
}  // namespace norvo
