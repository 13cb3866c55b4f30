#include "platform/decoder/DecoderProtocol.h"

#include <gtest/gtest.h>

#include "platform/decoder/JobQueue.h"

namespace norvo::test {
namespace {

DecoderRequest some_request() {
  return {.serial = 77,
          .purpose = DecoderPurpose::picture,
          .box = {.width = 100, .height = 1024},
          .extension = "jpeg2000"};
}

DecoderAnswer some_answer() {
  return {.serial = 77,
          .size = {.width = 100, .height = 75},
          .verdict = {.completeness = Completeness::partly, .percent = 42}};
}

TEST(DecoderProtocol, RequestsAndAnswersComeBackAsTheyWere) {
  EXPECT_EQ(decode_request(encode(some_request())), some_request());
  EXPECT_EQ(decode_answer(encode(some_answer())), some_answer());
  DecoderAnswer empty = some_answer();
  empty.size = {};
  empty.verdict = {.completeness = Completeness::nothing, .percent = {}};
  EXPECT_EQ(decode_answer(encode(empty)), empty);
}

TEST(DecoderProtocol, EveryChangedByteOfAnAnswerIsRefusedOrReadAsItStands) {
  const DecoderMessage good = encode(some_answer());
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      DecoderMessage changed = good;
      changed[at] ^= std::byte{1} << bit;
      const auto answer = decode_answer(changed);
      EXPECT_TRUE(!answer || encode(*answer) == changed) << at << " " << bit;
      // Mark and rest have one form only.
      EXPECT_FALSE(answer && (at < 4 || at > 13)) << at << " " << bit;
    }
  }
}

TEST(DecoderProtocol, HostileAnswersAreRefused) {
  DecoderAnswer answer = some_answer();
  answer.size = {.width = 1025, .height = 10};
  EXPECT_FALSE(decode_answer(encode(answer)));
  answer.size = {.width = 0, .height = 10};
  EXPECT_FALSE(decode_answer(encode(answer)));
  answer = some_answer();
  answer.verdict.percent = 100;
  EXPECT_FALSE(decode_answer(encode(answer)));
  answer.verdict = {.completeness = Completeness::whole, .percent = 5};
  EXPECT_FALSE(decode_answer(encode(answer)));
  answer.verdict = {.completeness = static_cast<Completeness>(9), .percent = {}};
  EXPECT_FALSE(decode_answer(encode(answer)));
  const DecoderMessage whole_message = encode(some_answer());
  EXPECT_FALSE(decode_answer(std::span(whole_message).first(31)));
}

TEST(DecoderProtocol, HostileRequestsAreRefused) {
  DecoderRequest request = some_request();
  request.box.width = 0;
  EXPECT_FALSE(decode_request(encode(request)));
  request = some_request();
  request.extension = "../x";
  EXPECT_FALSE(decode_request(encode(request)));
  request = some_request();
  request.purpose = static_cast<DecoderPurpose>(3);
  EXPECT_FALSE(decode_request(encode(request)));
}

TEST(DecoderProtocol, AnAnswerBelongsToItsRequestAndFitsItsBox) {
  DecoderRequest request = some_request();
  DecoderAnswer answer = some_answer();
  EXPECT_TRUE(answers(answer, request));
  answer.size.width = 101;
  EXPECT_FALSE(answers(answer, request));
  answer = some_answer();
  answer.serial = 78;
  EXPECT_FALSE(answers(answer, request));
  request.purpose = DecoderPurpose::verdict;
  EXPECT_FALSE(answers(some_answer(), request)) << "nobody asked for a picture";
}

TEST(DecoderProtocol, OnlyPlainExtensionsArePassedOn) {
  EXPECT_EQ(portable_extension("JPG"), "jpg");
  EXPECT_EQ(portable_extension("cr2"), "cr2");
  EXPECT_EQ(portable_extension("a.b"), "");
  EXPECT_EQ(portable_extension("\xC3\xA9"), "");
  EXPECT_EQ(portable_extension("sixteenletters16"), "");
  EXPECT_EQ(portable_extension("fifteenletters1"), "fifteenletters1");
}

TEST(DecoderProtocol, ColoursAboveTheirAlphaAreNoticed) {
  const std::array<std::uint32_t, 3> good{0, 0x80808080, 0xFFFFFFFF};
  EXPECT_TRUE(is_premultiplied(good));
  for (const std::uint32_t pixel : {0x80810000U, 0x80008100U, 0x80000081U, 0x00000001U}) {
    EXPECT_FALSE(is_premultiplied(std::array{0xFFFFFFFFU, pixel})) << std::hex << pixel;
  }
}

JobQueue::Entry entry(std::uint64_t id, std::int32_t priority = 0,
                      DecoderPurpose purpose = DecoderPurpose::picture) {
  return {.id = id, .purpose = purpose, .priority = priority};
}

std::vector<std::uint64_t> all_of(JobQueue& queue) {
  std::vector<std::uint64_t> ids;
  while (const auto next = queue.pop()) ids.push_back(next->id);
  return ids;
}

TEST(JobQueue, PicturesThenPriorityThenTheNewest) {
  JobQueue queue;
  queue.push(entry(1, 99, DecoderPurpose::verdict));
  queue.push(entry(2));
  queue.push(entry(3));
  queue.push(entry(4, 1));
  queue.push(entry(5, -1));
  EXPECT_EQ(all_of(queue), (std::vector<std::uint64_t>{4, 3, 2, 5, 1}));
}

TEST(JobQueue, WhatIsMovedOrTakenOutLeavesNothingBehind) {
  JobQueue queue;
  for (std::uint64_t id = 1; id <= 4; ++id) queue.push(entry(id));
  queue.push(entry(1));
  queue.remove(3);
  queue.remove(99);
  queue.set_priority(2, 7);
  queue.set_priority(98, 7);
  EXPECT_EQ(queue.size(), 3U);
  EXPECT_EQ(all_of(queue), (std::vector<std::uint64_t>{2, 1, 4}));
  queue.push(entry(1));
  queue.clear();
  EXPECT_FALSE(queue.pop());
}

}  // namespace
}  // namespace norvo::test
