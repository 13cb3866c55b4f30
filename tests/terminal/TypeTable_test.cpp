#include "platform/terminal/TypeTable.h"

#include <gtest/gtest.h>

namespace norvo {
namespace {

TEST(TypeTable, HasALineOfTitlesEvenForAnEmptyList) {
  EXPECT_EQ(type_table({}), "Extension  Thoro  Description\n");
}

TEST(TypeTable, HasALineForEachTypeInTheListsOrder) {
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"MOV", true, u"QuickTime movie", u"");
  list.createExtensionListTableRecord(u"AVI", false, u"", u"YES");
  EXPECT_EQ(type_table(list),
            "Extension  Thoro  Description\n"
            "MOV               QuickTime movie\n"
            "AVI        YES    \n");
}

TEST(TypeTable, ItsFirstColumnIsAsWideAsTheLongestExtension) {
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"MOV", true, u"short", u"YES");
  list.createExtensionListTableRecord(u"LONGEXTENSION", true, u"long", u"");
  EXPECT_EQ(type_table(list),
            "Extension      Thoro  Description\n"
            "MOV            YES    short\n"
            "LONGEXTENSION         long\n");
}

TEST(TypeTable, ShowsLettersOfAllLanguages) {
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"\u00C4\u3042", true, u"\u00E9 \U0001F3AC", u"");
  EXPECT_EQ(type_table(list),
            "Extension  Thoro  Description\n"
            "\xC3\x84\xE3\x81\x82"
            "               \xC3\xA9 \xF0\x9F\x8E\xAC\n");
}

TEST(TypeTable, ShowsCharactersThatATerminalObeysAsReplacementCharacters) {
  for (const char16_t hostile :
       {u'\x1B', u'\r', u'\b', u'\a', u'\t', u'\x7F', u'\x9B', u'\x80', u'\u202A', u'\u202E'}) {
    FileTypeCheckList list;
    const Text text = Text(u"A") + hostile + u"B";
    list.createExtensionListTableRecord(text, true, text, text);
    EXPECT_EQ(type_table(list),
              "Extension  Thoro  Description\n"
              "A\xEF\xBF\xBD"
              "B        A\xEF\xBF\xBD"
              "B    A\xEF\xBF\xBD"
              "B\n");
  }
}

}  // namespace
}  // namespace norvo
