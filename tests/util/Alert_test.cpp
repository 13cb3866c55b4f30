#include "util/Alert.h"

#include <gtest/gtest.h>

#include <vector>

namespace norvo {
namespace {

class AnsweringPanel final : public AlertPanel {
 public:
  explicit AnsweringPanel(AlertAnswer answer) : answer_(answer) {}

  AlertAnswer run(const Alert& alert) override {
    shown.push_back(alert);
    return answer_;
  }

  std::vector<Alert> shown;

 private:
  AlertAnswer answer_;
};

TEST(ShowMsg, ShowsTheTextWithTheOneButtonOk) {
  AnsweringPanel panel(AlertAnswer::default_button);
  EXPECT_EQ(show_msg(panel, u"A notice."), AlertAnswer::default_button);
  ASSERT_EQ(panel.shown.size(), 1U);
  EXPECT_EQ(panel.shown[0].message, u"A notice.");
  EXPECT_EQ(panel.shown[0].default_button, u"OK");
  EXPECT_EQ(panel.shown[0].alternate_button, u"");
  EXPECT_EQ(panel.shown[0].other_button, u"");
  EXPECT_EQ(panel.shown[0].informative_text, u"");
}

TEST(ShowMsg, ReturnsTheButtonThatClosedIt) {
  AnsweringPanel panel(AlertAnswer::other_button);
  EXPECT_EQ(show_msg(panel, u"A notice."), AlertAnswer::other_button);
}

}  // namespace
}  // namespace norvo
