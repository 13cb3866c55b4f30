#include "storage/MyDataObject.h"

#include <gtest/gtest.h>

namespace norvo {
namespace {

TEST(MyDataObject, TakesItsSixTextsInTheOrderOfTheColumns) {
  const MyDataObject row = MyDataObject::initWithString1(u"1", u"2", u"3", u"4", u"5", u"6");
  EXPECT_EQ(row.nsStrDiskIdentifier, u"1");
  EXPECT_EQ(row.nsStrVolName, u"2");
  EXPECT_EQ(row.nsStrFileSystem, u"3");
  EXPECT_EQ(row.nsStrSize, u"4");
  EXPECT_EQ(row.nsStrParentDisk, u"5");
  EXPECT_EQ(row.nsStrSectors, u"6");
  EXPECT_EQ(row.parent, nullptr);
  EXPECT_TRUE(row.root.empty());
}

TEST(MyDataObject, AReferenceHasAParentAndNothingElse) {
  const MyDataObject parent = MyDataObject::initWithString1(u"1", u"2", u"3", u"4", u"5", u"6");
  MyDataObject expected;
  expected.parent = &parent;
  EXPECT_EQ(MyDataObject::weakReferenceWithParent(parent), expected);
  EXPECT_EQ(expected.nsStrDiskIdentifier, u"");
}

TEST(MyDataObject, TheDictionaryIsTheRecordsOwn) {
  MyDataObject first;
  first.root[u"key"] = u"value";
  MyDataObject copy = first;
  copy.root[u"key"] = u"other";
  EXPECT_EQ(first.root[u"key"], u"value");
}

}  // namespace
}  // namespace norvo
