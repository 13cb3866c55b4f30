#include "platform/decoder/formats/PictureFormat.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/decoder/formats/ByteReader.h"
#include "platform/decoder/formats/Exif.h"

namespace norvo {
namespace {

using namespace std::string_view_literals;

struct Beginning {
  PictureFormat format;
  std::uint64_t at;
  std::string_view bytes;
};

constexpr auto beginnings = std::to_array<Beginning>({
    {PictureFormat::jpeg, 0, "\xFF\xD8\xFF"sv},
    {PictureFormat::png, 0, "\x89PNG\r\n\x1A\n"sv},
    {PictureFormat::gif, 0, "GIF87a"sv},
    {PictureFormat::gif, 0, "GIF89a"sv},
    {PictureFormat::mng, 0, "\x8AMNG\r\n\x1A\n"sv},
    {PictureFormat::webp, 8, "WEBP"sv},
    {PictureFormat::psd, 0, "8BPS"sv},
    {PictureFormat::jpeg2000, 0, "\0\0\0\x0CjP  \r\n\x87\n"sv},
    {PictureFormat::jpeg2000, 0, "\xFF\x4F\xFF\x51"sv},
    {PictureFormat::jpeg_xl, 0, "\0\0\0\x0CJXL \r\n\x87\n"sv},
    {PictureFormat::jpeg_xl, 0, "\xFF\x0A"sv},
    {PictureFormat::icns, 0, "icns"sv},
    {PictureFormat::ico, 0, "\0\0\1\0"sv},
    {PictureFormat::raw, 4, "ftypcrx "sv},
    {PictureFormat::raw, 0, "FUJIFILMCCD-RAW"sv},
    {PictureFormat::raw, 0, "IIU\0"sv},
    {PictureFormat::raw, 0, "IIRO"sv},
    {PictureFormat::raw, 0, "IIRS"sv},
    {PictureFormat::raw, 0, "MMOR"sv},
    {PictureFormat::raw, 0, "FOVb"sv},
    {PictureFormat::raw, 0, "\0MRM"sv},
    {PictureFormat::raw, 6, "HEAPCCDR"sv},
    {PictureFormat::tiff, 0, "II*\0"sv},
    {PictureFormat::tiff, 0, "MM\0*"sv},
    {PictureFormat::tiff, 0, "II+\0"sv},
    {PictureFormat::tiff, 0, "MM\0+"sv},
    {PictureFormat::bmp, 0, "BM"sv},
    {PictureFormat::pbm, 0, "P1"sv},
    {PictureFormat::pbm, 0, "P2"sv},
    {PictureFormat::pbm, 0, "P3"sv},
    {PictureFormat::pbm, 0, "P4"sv},
    {PictureFormat::pbm, 0, "P5"sv},
    {PictureFormat::pbm, 0, "P6"sv},
    {PictureFormat::xbm, 0, "#define"sv},
    {PictureFormat::xpm, 0, "/* XPM"sv},
});

constexpr auto still_brands = std::to_array<std::string_view>(
    {"heic", "heix", "hevc", "hevx", "heim", "heis", "mif1", "msf1", "avif", "avis"});

constexpr auto raw_extensions = std::to_array<std::string_view>(
    {"3fr", "arw", "cr2", "cr3", "crw", "dcr", "dng", "erf", "fff", "gpr",
     "iiq", "k25", "kdc", "mef", "mos", "mrw", "nef", "nrw", "orf", "pef",
     "raf", "raw", "rw2", "rwl", "sr2", "srf", "srw", "x3f"});

bool is_raw_extension(std::string_view extension) {
  return std::find(raw_extensions.begin(), raw_extensions.end(), extension) != raw_extensions.end();
}

bool is_still_brand(Bytes file) {
  return stands_at(file, 4, "ftyp") &&
         std::any_of(still_brands.begin(), still_brands.end(),
                     [file](std::string_view brand) { return stands_at(file, 8, brand); });
}

std::optional<PictureFormat> format_by_content(Bytes file) {
  if (is_still_brand(file)) return PictureFormat::heif;
  for (const Beginning& beginning : beginnings) {
    if (stands_at(file, beginning.at, beginning.bytes)) return beginning.format;
  }
  return std::nullopt;
}

bool is_box_type(Bytes file, std::uint64_t at) {
  const Bytes type = part_of(file, at, 4);
  return type.size() == 4 && std::all_of(type.begin(), type.end(),
                                         [](std::uint8_t c) { return c >= 0x20 && c < 0x7F; });
}

}  // namespace

std::vector<PictureFormat> possible_formats(Bytes file, std::string_view extension) {
  const std::optional<PictureFormat> content = format_by_content(file);
  // Most raw files are TIFF files by their first bytes.
  if (content == PictureFormat::tiff) {
    const Exif directory = read_tiff_directories(file);
    const bool raw_first = directory.is_raw || directory.is_reduced || is_raw_extension(extension);
    return raw_first ? std::vector{PictureFormat::raw, PictureFormat::tiff}
                     : std::vector{PictureFormat::tiff, PictureFormat::raw};
  }
  if (content) return {*content};
  if (extension == "tga") return {PictureFormat::tga};
  if (extension == "xbm") return {PictureFormat::xbm};
  if (is_raw_extension(extension)) return {PictureFormat::raw};
  return {};
}

std::size_t length_of_boxes(Bytes file) {
  std::uint64_t end = 0;
  while (is_box_type(file, end + 4)) {
    constexpr std::uint64_t to_the_end = 0;
    constexpr std::uint64_t long_size = 1;
    std::uint64_t size = number_at(file, end, 4).value_or(to_the_end);
    if (size == to_the_end) return file.size();
    if (size == long_size) size = number_at(file, end + 8, 8).value_or(to_the_end);
    constexpr std::uint64_t shortest = 8;
    if (size < shortest) break;
    if (size > file.size() - end) return file.size();
    end += size;
  }
  return static_cast<std::size_t>(end);
}

bool gif_picture_is_complete(Bytes gif) {
  // A packed field says whether a table of colours follows, and how long.
  const auto table_bytes = [gif](std::uint64_t packed_at) {
    const std::uint64_t packed = number_at(gif, packed_at, 1).value_or(0);
    return (packed & 0x80U) != 0 ? std::uint64_t{3} << ((packed & 7U) + 1) : 0;
  };
  constexpr std::uint64_t header = 13;
  constexpr std::uint64_t extension = 0x21;
  constexpr std::uint64_t picture = 0x2C;
  std::uint64_t at = header + table_bytes(10);
  while (const auto block = number_at(gif, at, 1)) {
    const bool is_picture = *block == picture;
    if (!is_picture && *block != extension) return false;
    at += is_picture ? 11 + table_bytes(at + 9) : 2;
    while (const auto length = number_at(gif, at, 1)) {
      at += 1 + *length;
      if (*length == 0) break;
    }
    if (at > gif.size()) return false;
    if (is_picture) return number_at(gif, at - 1, 1) == 0U;
  }
  return false;
}

}  // namespace norvo
