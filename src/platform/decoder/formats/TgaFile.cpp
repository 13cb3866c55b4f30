#include "platform/decoder/formats/TgaFile.h"

#include <algorithm>
#include <string_view>

#include "platform/decoder/formats/ByteReader.h"

namespace norvo {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t header_length = 18;

// Two offsets of four bytes, none of which leads anywhere, and the signature with its end.
constexpr std::string_view footer = "\0\0\0\0\0\0\0\0TRUEVISION-XFILE.\0"sv;
static_assert(footer.size() == 26);

std::uint64_t word_at(Bytes file, std::uint64_t at) {
  return number_at(file, at, 2, ByteOrder::little).value_or(0);
}

std::uint64_t bytes_of(std::uint64_t bits) {
  return (bits + 7) / 8;
}

}  // namespace

std::vector<std::uint8_t> with_tga_footer(Bytes file) {
  std::vector<std::uint8_t> ended;
  ended.reserve(file.size() + footer.size());
  ended.assign(file.begin(), file.end());
  ended.insert(ended.end(), footer.begin(), footer.end());
  return ended;
}

std::uint32_t tga_rows(Bytes file) {
  if (file.size() < header_length) return 0;
  const std::uint64_t identification = file[0];
  const std::uint64_t colour_map = word_at(file, 5) * bytes_of(file[7]);
  const std::uint64_t pixels = header_length + identification + colour_map;
  const std::uint64_t row = word_at(file, 12) * bytes_of(file[16]);
  if (row == 0 || file.size() <= pixels) return 0;
  return static_cast<std::uint32_t>(std::min((file.size() - pixels) / row, word_at(file, 14)));
}

}  // namespace norvo
