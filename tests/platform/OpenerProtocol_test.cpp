#include "platform/linux/OpenerProtocol.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace norvo {
namespace {

using namespace std::string_literals;

TEST(OpenerRequest, HasThisForm) {
  EXPECT_EQ(encode_request("/dev/sda"), "NORQ\1\0\1\0/dev/sda"s);
  EXPECT_EQ(decode_request("NORQ\1\0\1\0/dev/sda"s), "/dev/sda");
}

TEST(OpenerRequest, CarriesAnyPathThatFits) {
  const std::string longest(longest_device_path, 'x');
  for (const std::string& path : {"x"s, "a\0b"s, "\xFF"s, longest}) {
    const std::optional<std::string> packet = encode_request(path);
    ASSERT_TRUE(packet);
    EXPECT_LE(packet->size(), longest_request);
    EXPECT_EQ(decode_request(*packet), path);
  }
  EXPECT_EQ(encode_request(longest + "x"), std::nullopt);
  EXPECT_EQ(encode_request(""), std::nullopt);
}

TEST(OpenerRequest, WithAnotherHeadIsNone) {
  for (const std::string& head :
       {""s, "NORQ"s, "NORX\1\0\1\0"s, "norq\1\0\1\0"s, "NORQ\0\0\1\0"s, "NORQ\2\0\1\0"s,
        "NORQ\1\1\1\0"s, "NORQ\1\0\0\0"s, "NORQ\1\0\2\0"s, "NORQ\1\0\1\1"s, "\0NORQ\1\0\1\0"s}) {
    std::string packet = head;
    packet.append("/dev/sda");
    EXPECT_EQ(decode_request(packet), std::nullopt) << packet;
  }
}

TEST(OpenerRequest, WithoutAPathOrWithTooLongAPathIsNone) {
  std::string packet = "NORQ\1\0\1\0"s;
  for (std::size_t size = 0; size <= packet.size(); ++size) {
    EXPECT_EQ(decode_request(packet.substr(0, size)), std::nullopt);
  }
  packet.append(longest_device_path, 'x');
  EXPECT_NE(decode_request(packet), std::nullopt);
  packet.append("x");
  EXPECT_EQ(decode_request(packet), std::nullopt);
}

TEST(OpenerAnswer, HasThisForm) {
  EXPECT_EQ(encode_answer(0x102), "NORA\1\0\2\1\0\0"s);
  EXPECT_EQ(encode_answer(0).size(), answer_size);
  for (const int error : {0, ENOENT, EACCES, EIO, 4095}) {
    EXPECT_EQ(decode_answer(encode_answer(error)), error);
  }
}

TEST(OpenerAnswer, OfAnotherFormIsNone) {
  for (const std::string& packet : {""s, "NORA"s, "NORA\1\0\2\0\0"s, "NORA\1\0\2\0\0\0\0"s,
                                    "NORQ\1\0\2\0\0\0"s, "NORA\2\0\2\0\0\0"s, "NORA\1\0\0\x10\0\0"s,
                                    "NORA\1\0\xFF\xFF\xFF\xFF"s, "NORA\1\0\0\0\0\x80"s}) {
    EXPECT_EQ(decode_answer(packet), std::nullopt) << packet;
  }
}

}  // namespace
}  // namespace norvo
