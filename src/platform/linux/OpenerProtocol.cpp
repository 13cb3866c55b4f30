#include "platform/linux/OpenerProtocol.h"

#include <cstdint>

namespace norvo {
namespace {

constexpr std::string_view request_mark = "NORQ";
constexpr std::string_view answer_mark = "NORA";
constexpr std::uint32_t version = 1;
constexpr std::uint32_t open_block_device_type = 1;
constexpr std::uint32_t highest_errno = 4095;

void append_number(std::string& packet, std::uint32_t number, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) {
    packet += static_cast<char>(number >> (8 * i) & 0xFFU);
  }
}

std::uint32_t number_at(std::string_view packet, std::size_t place, std::size_t bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = bytes; i-- > 0;) {
    number = number << 8U | static_cast<unsigned char>(packet[place + i]);
  }
  return number;
}

std::string head(std::string_view mark) {
  std::string packet(mark);
  append_number(packet, version, 2);
  return packet;
}

}  // namespace

std::optional<std::string> encode_request(std::string_view path) {
  if (path.empty() || path.size() > longest_device_path) return {};
  std::string packet = head(request_mark);
  append_number(packet, open_block_device_type, 2);
  packet += path;
  return packet;
}

std::optional<std::string> decode_request(std::string_view packet) {
  if (packet.size() <= request_head_size || packet.size() > longest_request) return {};
  if (!packet.starts_with(head(request_mark))) return {};
  if (number_at(packet, request_head_size - 2, 2) != open_block_device_type) return {};
  return std::string(packet.substr(request_head_size));
}

std::string encode_answer(int error) {
  std::string packet = head(answer_mark);
  append_number(packet, static_cast<std::uint32_t>(error), 4);
  return packet;
}

std::optional<int> decode_answer(std::string_view packet) {
  if (packet.size() != answer_size || !packet.starts_with(head(answer_mark))) return {};
  const std::uint32_t error = number_at(packet, answer_size - 4, 4);
  if (error > highest_errno) return {};
  return static_cast<int>(error);
}

}  // namespace norvo
