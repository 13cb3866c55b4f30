#include "platform/qt/DecoderThumbnails.h"

#include <QImage>
#include <QObject>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/qt/QtMainThread.h"
#include "support/ChildPolicies.h"
#include "support/FakeMainThread.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

// A source whose one file is not there. Its answer waits for the main thread.
class DecoderThumbnailsTest : public testing::Test {
 protected:
  DecoderThumbnailsTest() {
    QObject::connect(&*source, &ThumbnailSource::done, &receiver,
                     [this](const QString& image_UID, const QImage& picture, int pixels) {
                       answers.push_back(image_UID.toStdString() + (picture.isNull() ? " -" : "") +
                                         " of " + std::to_string(pixels));
                     });
    source->request(std::filesystem::path(testing::TempDir()) / "no" / "such.jpg", u"1"_s, 100);
    while (main_thread.waiting_work() == 0) std::this_thread::yield();
  }

  test::QueuedMainThread main_thread;
  QObject receiver;
  std::vector<std::string> answers;
  std::optional<DecoderThumbnails> source{
      std::in_place, main_thread, DecoderThumbnails::Settings{.decoder = "/no/such/decoder"}};
};

TEST_F(DecoderThumbnailsTest, answers_come_on_the_main_thread) {
  EXPECT_TRUE(answers.empty());
  main_thread.run_all();
  EXPECT_EQ(answers, std::vector<std::string>{"1 - of 100"});
}

TEST_F(DecoderThumbnailsTest, an_answer_to_a_cancelled_request_is_dropped) {
  source->cancel_all();
  main_thread.run_all();
  EXPECT_TRUE(answers.empty());
}

TEST_F(DecoderThumbnailsTest, an_answer_that_nobody_waits_for_any_more_is_dropped) {
  source.reset();
  main_thread.run_all();
  EXPECT_TRUE(answers.empty());
}

TEST(DecoderThumbnails, a_decoder_that_does_not_start_says_nothing_of_the_file) {
  const test::TemporaryFolder folder;
  test::write_file(folder.path() / "a.jpg", "a photo");
  QtMainThread main_thread;
  DecoderThumbnails source(main_thread, {.decoder = "/no/such/decoder"});
  std::vector<std::string> answers;
  QObject::connect(&source, &ThumbnailSource::done, &source, [&] { answers.push_back("done"); });
  QObject::connect(
      &source, &ThumbnailSource::postponed, &source,
      [&answers](const QString& image_UID, int pixels) {
        answers.push_back(image_UID.toStdString() + " postponed " + std::to_string(pixels));
      });
  source.request(folder.path() / "a.jpg", u"1"_s, 100);
  ASSERT_TRUE(wait_until([&answers] { return !answers.empty(); }));
  source.request(folder.path() / "a.jpg", u"1"_s, 200);
  ASSERT_TRUE(wait_until([&answers] { return answers.size() > 1; }));
  EXPECT_EQ(answers, (std::vector<std::string>{"1 postponed 100", "1 postponed 200"}));
}

// The stand-in is held by its first file until another one is in its place.
TEST(DecoderThumbnails, what_is_looked_at_comes_before_what_was_asked_for_later) {
  const test::TemporaryFolder folder;
  for (const char* const name : {"held", "good", "new"}) {
    test::write_file(folder.path() / name, std::string(name) + " 1");
  }
  QtMainThread main_thread;
  const test::NewDecoders decoders;
  DecoderThumbnails source(main_thread, {.decoder = NORVO_STAND_IN_DECODER, .processes = 1});
  std::string order;
  QObject::connect(&source, &ThumbnailSource::done, &source,
                   [&order](const QString& image_UID) { order += image_UID.toStdString(); });
  source.request(folder.path() / "held", u"0"_s, 10);
  // It starts for the first one, which waits no longer then.
  ASSERT_TRUE(wait_until([&decoders] { return decoders.any(); }));
  for (const QString& image_UID : {u"1"_s, u"2"_s, u"3"_s}) {
    source.request(folder.path() / "good", image_UID, 10);
  }
  source.put_first(u"2"_s);
  source.put_first(u"1"_s);
  source.put_first(u"none"_s);
  std::filesystem::rename(folder.path() / "new", folder.path() / "held");
  ASSERT_TRUE(wait_until([&order] { return order.size() == 4; }));
  EXPECT_EQ(order, "0123");
}

TEST(DecoderThumbnails, each_request_is_answered_once_while_others_are_made) {
  constexpr int count = 100;
  QtMainThread main_thread;
  DecoderThumbnails source(main_thread, {.decoder = "/no/such/decoder"});
  std::multiset<int> answers;
  QObject::connect(
      &source, &ThumbnailSource::done, &source,
      [&answers](const QString& image_UID, const QImage&) { answers.insert(image_UID.toInt()); });
  for (int i = 0; i < count; ++i) source.request("/no/such.jpg", QString::number(i), 100);
  ASSERT_TRUE(wait_until([&answers] { return answers.size() >= count; }));
  EXPECT_EQ(std::set<int>(answers.begin(), answers.end()).size(), count);
  EXPECT_EQ(answers.size(), count);
}

}  // namespace
}  // namespace norvo
