#include "platform/qt/QtDesktop.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

#include "window/UrlTaker.h"

namespace norvo {
namespace {

using test::UrlTaker;

TEST(QtDesktop, OpensAPathAsAFile) {
  UrlTaker files("file");
  EXPECT_TRUE(QtDesktop().open_path("/out/B\u00E4r & #1?.jpg"));
  ASSERT_EQ(files.taken.size(), 1U);
  EXPECT_EQ(files.taken[0].toLocalFile(), "/out/B\u00E4r & #1?.jpg");
}

TEST(QtDesktop, OpensAnAddressAsItStands) {
  UrlTaker mails("mailto");
  const QString address = "mailto:help@norvo.example?subject=One%20Question&body=Two%0ALines";
  EXPECT_TRUE(QtDesktop().open_address(
      u"mailto:help@norvo.example?subject=One%20Question&body=Two%0ALines"));
  ASSERT_EQ(mails.taken.size(), 1U);
  EXPECT_EQ(mails.taken[0].toString(QUrl::FullyEncoded), address);
}

// The offscreen platform starts no programs.
TEST(QtDesktop, SaysWhenNothingCouldBeStarted) {
  EXPECT_FALSE(QtDesktop().open_path("/out/a.jpg"));
  EXPECT_FALSE(QtDesktop().open_address(u"https://norvo.example"));
}

TEST(QtDesktop, ACopiedTextReplacesTheClipboard) {
  QGuiApplication::clipboard()->setText("before");
  QtDesktop().copy_text(u"help@norvo.example");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "help@norvo.example");
}

}  // namespace
}  // namespace norvo
