#include "app/EditionProfile.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "util/LetterCase.h"

namespace norvo {
namespace {

struct EditionRow {
  TextView keyword;
  TextView prefix;
  bool hard_disk;
  bool video;
  bool raw_file;
  bool audio;
};

void PrintTo(const EditionRow& row, std::ostream* out) {
  *out << utf8_from_text(row.keyword);
}

const std::vector<EditionRow> edition_rows{
    {u"Alder", u"ALD", false, false, true, false}, {u"Birch", u"BIR", false, true, true, true},
    {u"Cedar", u"CED", false, true, true, false},  {u"Larch", u"LAR", false, true, true, false},
    {u"Maple", u"MAP", false, true, true, false},  {u"Rowan", u"ROW", true, false, false, false},
    {u"Spruce", u"SPR", true, true, true, false}};

Text name_of(TextView keyword) {
  return u"Norvo " + Text(keyword);
}

class EditionTest : public testing::TestWithParam<EditionRow> {
 protected:
  static Text named(bool exists, TextView suffix) {
    return exists ? Text(GetParam().prefix) + Text(suffix) : Text();
  }

  const EditionProfile profile_ = select_edition(name_of(GetParam().keyword));
};

TEST_P(EditionTest, NamesTheSignatureFilesOfItsSearchTypes) {
  const EditionRow& row = GetParam();
  const SignatureFileNames expected{.photo_dll = named(true, u"Ext2.dll"),
                                    .photo_dll_adv = named(true, u"Ext2Adv.dll"),
                                    .video_dll = named(row.video, u"Video.dll"),
                                    .video_dll_adv = named(row.video, u"VideoAdv.dll"),
                                    .raw_dll = named(row.raw_file, u"Raw.dll"),
                                    .raw_dll_adv = named(row.raw_file, u"RawAdv.dll"),
                                    .audio_dll = named(row.audio, u"Audio.dll"),
                                    .audio_dll_adv = named(row.audio, u"AudioAdv.dll")};
  EXPECT_EQ(profile_.signature_files, expected);
}

TEST_P(EditionTest, HasTheSearchTypesWhoseFilesAreNamed) {
  const EditionRow& row = GetParam();
  EXPECT_TRUE(profile_.has_search_type(0));
  EXPECT_EQ(profile_.has_search_type(1), row.video);
  EXPECT_EQ(profile_.has_search_type(2), row.raw_file);
  EXPECT_EQ(profile_.has_search_type(3), row.audio);
  EXPECT_FALSE(profile_.has_search_type(4));
  EXPECT_FALSE(profile_.has_search_type(-1));
}

TEST_P(EditionTest, OffersFixedDisksAsItsRowSays) {
  EXPECT_EQ(profile_.USE_HARD_DISK, GetParam().hard_disk);
}

TEST_P(EditionTest, HasALongNameAndASupportAddressOfItsOwn) {
  EXPECT_TRUE(profile_.is_edition());
  EXPECT_FALSE(profile_.APP_LONG_NAME.empty());
  EXPECT_NE(profile_.support_address.find(u'@'), Text::npos);
}

TEST_P(EditionTest, HasPagesOnTheWebOneOfThemItsOwn) {
  EXPECT_TRUE(profile_.web_address.starts_with(u"https://"));
  const Text page = fold_case(Text(GetParam().keyword));
  EXPECT_EQ(profile_.web_address_2, profile_.web_address + u"/" + page);
}

TEST_P(EditionTest, IsFoundAnywhereInTheName) {
  const Text keyword(GetParam().keyword);
  for (const Text& name : {keyword, u"x" + keyword, keyword + u"2", u"My" + keyword + u"App"}) {
    EXPECT_EQ(select_edition(name).signature_files, profile_.signature_files);
  }
}

TEST_P(EditionTest, IsKnownByItsKeywordInThisCaseOnly) {
  Text lower(GetParam().keyword);
  lower[0] = static_cast<char16_t>(lower[0] - u'A' + u'a');
  Text upper(GetParam().keyword);
  for (char16_t& c : upper) c = static_cast<char16_t>(c >= u'a' ? c - u'a' + u'A' : c);
  EXPECT_FALSE(select_edition(name_of(lower)).is_edition());
  EXPECT_FALSE(select_edition(name_of(upper)).is_edition());
}

// "mailto:", the address and the subject, then the letter, all without a blank or a line end.
TEST_P(EditionTest, WritesTheSupportMail) {
  const Text escaped_name = Replace_char_in_string(profile_.APP_LONG_NAME, u" ", u"%20");
  const Text beginning =
      u"mailto:" + profile_.support_address + u"?subject=" + escaped_name +
      u"%20Question&body=Dear%20Customer%20Support,%0A%0AI%20am%20having%20Difficulties%20in%20"
      u"using%20" +
      escaped_name + u".%20%0A%0AMy%20Order%20ID%20is%20(Required):%20%20";
  const Text& mail = profile_.support_with_content;
  EXPECT_EQ(utf8_from_text(mail.substr(0, beginning.size())), utf8_from_text(beginning));
  EXPECT_EQ(mail.find_first_of(u" \r\n\t\""), Text::npos);

  std::size_t at = beginning.size();
  const Text letter = fold_case(mail);
  for (const TextView question :
       {u"operating%20system", u"antivirus", u"firewall", u"hardware%20configuration",
        u"media%20type", u"storage%20capacity", u"manufacturer", u"cause%20of%20the%20data%20loss",
        u"error%20message", u"details%20of%20the%20problem", u"screenshot"}) {
    const std::size_t found = letter.find(question, at);
    ASSERT_NE(found, Text::npos) << utf8_from_text(question);
    at = found + question.size();
  }
}

INSTANTIATE_TEST_SUITE_P(Each, EditionTest, testing::ValuesIn(edition_rows));

TEST(Editions, HaveLongNamesAndAddressesThatDiffer) {
  std::set<Text> names;
  std::set<Text> addresses;
  for (const EditionRow& row : edition_rows) {
    const EditionProfile profile = select_edition(name_of(row.keyword));
    names.insert(profile.APP_LONG_NAME);
    addresses.insert(profile.support_address);
  }
  EXPECT_EQ(names.size(), edition_rows.size());
  EXPECT_EQ(addresses.size(), edition_rows.size());
}

TEST(Editions, ANameWithTwoKeywordsIsTheEarlierEdition) {
  for (std::size_t earlier = 0; earlier < edition_rows.size(); ++earlier) {
    for (std::size_t later = earlier + 1; later < edition_rows.size(); ++later) {
      const Text first(edition_rows[earlier].keyword);
      const Text second(edition_rows[later].keyword);
      const SignatureFileNames expected = select_edition(first).signature_files;
      EXPECT_EQ(select_edition(first + u" " + second).signature_files, expected);
      EXPECT_EQ(select_edition(second + u" " + first).signature_files, expected);
    }
  }
}

TEST(Editions, ANameWithoutAKeywordSelectsNone) {
  for (const TextView name : {u"", u"Norvo", u"Norvo alder", u"Norvo ALDER", u"Al der"}) {
    const EditionProfile profile = select_edition(name);
    EXPECT_FALSE(profile.is_edition());
    EXPECT_EQ(profile.APP_LONG_NAME, u"");
    EXPECT_FALSE(profile.USE_HARD_DISK);
    EXPECT_EQ(profile.signature_files, SignatureFileNames{});
    for (int mode = 0; mode < 4; ++mode) EXPECT_FALSE(profile.has_search_type(mode));
  }
}

TEST(Editions, TheNameIsKeptAndNamesTheResultsFolder) {
  for (const TextView name : {u"Norvo Spruce", u"", u" x Alder ", u"\u00C4 Birch"}) {
    EXPECT_EQ(select_edition(name).App_Name, name);
    EXPECT_EQ(select_edition(name).Rec_Folder_Name, Text(name) + u" Results");
  }
}

TEST(Presentation, OnlyANameWithRowanHidesTheSearchTypes) {
  for (const EditionRow& row : edition_rows) {
    EXPECT_EQ(select_edition(name_of(row.keyword)).hides_search_types(), row.keyword == u"Rowan");
  }
}

TEST(Presentation, OnlyANameWithCedarTitlesTheRawFileChoice) {
  for (const EditionRow& row : edition_rows) {
    EXPECT_EQ(select_edition(name_of(row.keyword)).raw_file_choice_title(),
              row.keyword == u"Cedar" ? u"Recover Raw Files" : u"");
  }
}

TEST(Presentation, IsDecidedByTheNameAndNotByTheEdition) {
  const EditionProfile both = select_edition(u"Alder Cedar Rowan");
  EXPECT_EQ(both.signature_files.photo_dll, u"ALDExt2.dll");
  EXPECT_TRUE(both.hides_search_types());
  EXPECT_EQ(both.raw_file_choice_title(), u"Recover Raw Files");
}

TEST(ReasonNotToStart, ThereIsNoneForAnEdition) {
  for (const EditionRow& row : edition_rows) {
    EXPECT_EQ(reason_not_to_start(name_of(row.keyword)), std::nullopt);
  }
}

TEST(ReasonNotToStart, NamesTheBundleThatIsNoEditionAndTheKeywords) {
  EXPECT_EQ(reason_not_to_start(u"Norvo \u202EWillow"),
            u"\n\u201CNorvo \uFFFDWillow\u201D names no edition of Norvo Recovery: its name holds "
            u"none of Alder, Birch, Cedar, Larch, Maple, Rowan and Spruce.");
  EXPECT_TRUE(reason_not_to_start(u"").has_value());
}

TEST(ReasonNotToStart, IsAnIncompleteInstallationWhereTheBundleGivesNoName) {
  EXPECT_EQ(reason_not_to_start(std::nullopt),
            u"\nNorvo Recovery is not installed completely: its bundle has no property list that "
            u"names it. Please install it again.");
}

TEST(GetColorFromRGB, TakesRedBlueGreenInThisOrder) {
  const Color color = getColorFromRGB(255, 0, 128);
  EXPECT_EQ(color.red, 1.0F);
  EXPECT_EQ(color.green, 128.0F / 255.0F);
  EXPECT_EQ(color.blue, 0.0F);
  EXPECT_EQ(color.alpha, 1.0F);
  EXPECT_EQ(getColorFromRGB(0, 255, 51),
            (Color{.red = 0.0F, .green = 0.2F, .blue = 1.0F, .alpha = 1.0F}));
}

}  // namespace
}  // namespace norvo
