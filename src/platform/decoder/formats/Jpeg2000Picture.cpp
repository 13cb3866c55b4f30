#include "platform/decoder/formats/Jpeg2000Picture.h"

#include <openjpeg.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/decoder/formats/ByteReader.h"
#include "platform/decoder/formats/PictureFormat.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

// The library's handles are pointers to pointers.
using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;
using Codec = std::unique_ptr<opj_codec_t, decltype(&opj_destroy_codec)>;
using Planes = std::unique_ptr<opj_image_t, decltype(&opj_image_destroy)>;

// What the library reads from.
struct Position {
  Bytes file;
  std::size_t at = 0;
};

OPJ_SIZE_T read_on(void* place, OPJ_SIZE_T length, void* user) {
  Position& position = *static_cast<Position*>(user);
  const Bytes part = part_of(position.file, position.at, length);
  if (part.empty()) return static_cast<OPJ_SIZE_T>(-1);
  std::memcpy(place, part.data(), part.size());
  position.at += part.size();
  return part.size();
}

OPJ_BOOL seek_to(OPJ_OFF_T offset, void* user) {
  Position& position = *static_cast<Position*>(user);
  if (offset < 0 || static_cast<std::uint64_t>(offset) > position.file.size()) return OPJ_FALSE;
  position.at = static_cast<std::size_t>(offset);
  return OPJ_TRUE;
}

OPJ_OFF_T skip_over(OPJ_OFF_T length, void* user) {
  const Position& position = *static_cast<Position*>(user);
  const auto target = static_cast<OPJ_OFF_T>(position.at) + length;
  return seek_to(target, user) == OPJ_TRUE ? length : -1;
}

Stream stream_on(Position& position) {
  Stream stream(opj_stream_default_create(OPJ_TRUE), &opj_stream_destroy);
  if (!stream) return stream;
  opj_stream_set_user_data(stream.get(), &position, nullptr);
  opj_stream_set_user_data_length(stream.get(), position.file.size());
  opj_stream_set_read_function(stream.get(), read_on);
  opj_stream_set_seek_function(stream.get(), seek_to);
  opj_stream_set_skip_function(stream.get(), skip_over);
  return stream;
}

// How many times the sides can be halved before they are too small for the box.
std::uint32_t reduction_for(const opj_image_t& image, PictureSize box) {
  PictureSize size{.width = image.x1 - image.x0, .height = image.y1 - image.y0};
  const PictureSize wanted = fitted(size, box);
  std::uint32_t reduction = 0;
  // Five halvings are what encoders offer, as a rule; more than there are is an error.
  while (reduction < 5 && size.width / 2 >= wanted.width && size.height / 2 >= wanted.height) {
    size = {.width = size.width / 2, .height = size.height / 2};
    ++reduction;
  }
  return reduction;
}

struct Attempt {
  bool strict = true;  // any damage is an error
  bool reduced = true;
};

Planes decode(Bytes file, PictureSize box, Attempt attempt) {
  Planes none(nullptr, &opj_image_destroy);
  const bool bare = stands_at(file, 0, "\xFF\x4F");
  Position position{.file = bare ? file : file.first(length_of_boxes(file)), .at = 0};
  const Stream stream = stream_on(position);
  const Codec codec(opj_create_decompress(bare ? OPJ_CODEC_J2K : OPJ_CODEC_JP2),
                    &opj_destroy_codec);
  opj_dparameters_t parameters;
  opj_set_default_decoder_parameters(&parameters);
  if (!stream || !codec || opj_setup_decoder(codec.get(), &parameters) != OPJ_TRUE) return none;
  opj_decoder_set_strict_mode(codec.get(), attempt.strict ? OPJ_TRUE : OPJ_FALSE);
  opj_image_t* header = nullptr;
  const bool has_header = opj_read_header(stream.get(), codec.get(), &header) == OPJ_TRUE;
  Planes image(header, &opj_image_destroy);
  if (!has_header || !image || image->x1 <= image->x0 || image->y1 <= image->y0) return none;
  if (attempt.reduced) {
    opj_set_decoded_resolution_factor(codec.get(), reduction_for(*image, box));
  }
  if (opj_decode(codec.get(), stream.get(), image.get()) != OPJ_TRUE) return none;
  if (attempt.strict && opj_end_decompress(codec.get(), stream.get()) != OPJ_TRUE) return none;
  return image;
}

// A component's value at a place of the first one, from 0 to 255.
int sample_at(const opj_image_t& image, std::uint32_t component, std::uint32_t x, std::uint32_t y) {
  const opj_image_comp_t& first = image.comps[0];
  const opj_image_comp_t& plane = image.comps[component];
  const std::uint64_t column = std::uint64_t{x} * plane.w / first.w;
  const std::uint64_t row = std::uint64_t{y} * plane.h / first.h;
  const std::int64_t value = std::int64_t{plane.data[row * plane.w + column]} +
                             (plane.sgnd != 0 ? std::int64_t{1} << (plane.prec - 1) : 0);
  const std::int64_t most = (std::int64_t{1} << plane.prec) - 1;
  return static_cast<int>(std::clamp<std::int64_t>(value, 0, most) * 255 / most);
}

std::uint32_t rgb(int red, int green, int blue) {
  const auto byte = [](int value) { return static_cast<std::uint32_t>(std::clamp(value, 0, 255)); };
  return 0xFF000000U | byte(red) << 16U | byte(green) << 8U | byte(blue);
}

std::uint32_t pixel_at(const opj_image_t& image, std::uint32_t x, std::uint32_t y) {
  std::array<int, 3> values{};
  const std::uint32_t components = image.numcomps >= 3 ? 3 : 1;
  for (std::uint32_t c = 0; c < components; ++c) values[c] = sample_at(image, c, x, y);
  if (components == 1) return rgb(values[0], values[0], values[0]);
  if (image.color_space != OPJ_CLRSPC_SYCC) return rgb(values[0], values[1], values[2]);
  // Brightness and two differences of colour, in thousandths.
  const int blue = values[1] - 128;
  const int red = values[2] - 128;
  return rgb(values[0] + 1402 * red / 1000, values[0] - (344 * blue + 714 * red) / 1000,
             values[0] + 1772 * blue / 1000);
}

bool is_usable(const opj_image_t& image) {
  if (image.numcomps == 0) return false;
  return std::all_of(image.comps, image.comps + image.numcomps, [](const opj_image_comp_t& plane) {
    return plane.data != nullptr && plane.w > 0 && plane.h > 0 && plane.prec >= 1 &&
           plane.prec <= 31;
  });
}

std::optional<Picture> shrunk(const Planes& image, PictureSize box) {
  if (!image || !is_usable(*image)) return std::nullopt;
  const PictureSize size{.width = image->comps[0].w, .height = image->comps[0].h};
  RowScaler scaler(size, fitted(size, box));
  std::vector<std::uint32_t> row(size.width);
  for (std::uint32_t y = 0; y < size.height; ++y) {
    for (std::uint32_t x = 0; x < size.width; ++x) row[x] = pixel_at(*image, x, y);
    scaler.add(row);
  }
  return scaler.finish();
}

}  // namespace

Decoded decode_jpeg2000(Bytes file, PictureSize box, DecoderPurpose purpose) {
  if (purpose == DecoderPurpose::verdict) {
    if (decode(file, box, {.strict = true, .reduced = false})) return whole({});
    return decode(file, box, {.strict = false, .reduced = true}) ? partly({}) : Decoded{};
  }
  auto picture = shrunk(decode(file, box, {.strict = false, .reduced = true}), box);
  // Fewer resolutions than were asked for.
  if (!picture) picture = shrunk(decode(file, box, {.strict = false, .reduced = false}), box);
  return picture ? not_judged(std::move(picture)) : Decoded{};
}

}  // namespace norvo
