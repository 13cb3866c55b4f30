#include "platform/decoder/formats/HeifPicture.h"

#include <libheif/heif.h>

#include <memory>
#include <vector>

#include "platform/decoder/formats/PictureFormat.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

using Context = std::unique_ptr<heif_context, decltype(&heif_context_free)>;
using Handle = std::unique_ptr<const heif_image_handle, decltype(&heif_image_handle_release)>;
using Image = std::unique_ptr<const heif_image, decltype(&heif_image_release)>;

bool failed(const heif_error& error) {
  return error.code != heif_error_Ok;
}

Handle main_picture(const Context& context) {
  heif_image_handle* handle = nullptr;
  if (failed(heif_context_get_primary_image_handle(context.get(), &handle))) handle = nullptr;
  return {handle, &heif_image_handle_release};
}

PictureSize size_of(const Handle& handle) {
  const int width = heif_image_handle_get_width(handle.get());
  const int height = heif_image_handle_get_height(handle.get());
  if (width <= 0 || height <= 0) return {};
  return {.width = static_cast<std::uint32_t>(width), .height = static_cast<std::uint32_t>(height)};
}

Handle first_thumbnail(const Handle& picture) {
  heif_item_id id = 0;
  heif_image_handle* handle = nullptr;
  const bool found = heif_image_handle_get_list_of_thumbnail_IDs(picture.get(), &id, 1) == 1 &&
                     !failed(heif_image_handle_get_thumbnail(picture.get(), id, &handle));
  return {found ? handle : nullptr, &heif_image_handle_release};
}

using Options = std::unique_ptr<heif_decoding_options, decltype(&heif_decoding_options_free)>;

enum class Damage : std::uint8_t { is_an_error, is_hidden };

// The library turns the picture upright itself.
Image decoded(const Handle& handle, Damage damage) {
  const Options options(heif_decoding_options_alloc(), &heif_decoding_options_free);
  if (options) options->strict_decoding = damage == Damage::is_an_error ? 1 : 0;
  heif_image* image = nullptr;
  const bool good = !failed(heif_decode_image(handle.get(), &image, heif_colorspace_RGB,
                                              heif_chroma_interleaved_RGBA, options.get()));
  return {good ? image : nullptr, &heif_image_release};
}

std::uint32_t pixel_of(const std::uint8_t* rgba) {
  const std::uint32_t alpha = rgba[3];
  const auto colour = [&](int i) { return (rgba[i] * alpha + 127U) / 255U; };
  return alpha << 24U | colour(0) << 16U | colour(1) << 8U | colour(2);
}

std::optional<Picture> shrunk(const Image& image, PictureSize box) {
  const int width = heif_image_get_width(image.get(), heif_channel_interleaved);
  const int height = heif_image_get_height(image.get(), heif_channel_interleaved);
  int stride = 0;
  const std::uint8_t* const plane =
      heif_image_get_plane_readonly(image.get(), heif_channel_interleaved, &stride);
  if (plane == nullptr || width <= 0 || height <= 0 || stride < 4 * width) return std::nullopt;
  const PictureSize size{.width = static_cast<std::uint32_t>(width),
                         .height = static_cast<std::uint32_t>(height)};
  RowScaler scaler(size, fitted(size, box));
  std::vector<std::uint32_t> row(size.width);
  for (std::size_t y = 0; y < size.height; ++y) {
    const std::uint8_t* const bytes = plane + y * static_cast<std::size_t>(stride);
    for (std::size_t x = 0; x < size.width; ++x) row[x] = pixel_of(bytes + 4 * x);
    scaler.add(row);
  }
  return scaler.finish();
}

std::optional<Picture> picture_of(const Handle& handle, PictureSize box, Damage damage) {
  if (!handle) return std::nullopt;
  const Image image = decoded(handle, damage);
  return image ? shrunk(image, box) : std::nullopt;
}

bool is_large_enough(PictureSize thumbnail, PictureSize picture, PictureSize box) {
  if (picture == PictureSize{}) return false;
  const PictureSize wanted = fitted(picture, box);
  return thumbnail.width >= wanted.width && thumbnail.height >= wanted.height;
}

}  // namespace

Decoded decode_heif(Bytes file, PictureSize box, DecoderPurpose purpose) {
  const Bytes boxes = file.first(length_of_boxes(file));
  const Context context(heif_context_alloc(), &heif_context_free);
  if (!context || failed(heif_context_read_from_memory_without_copy(context.get(), boxes.data(),
                                                                    boxes.size(), nullptr))) {
    return {};
  }
  const Handle picture = main_picture(context);
  if (!picture) return {};
  const Handle thumbnail = first_thumbnail(picture);
  const bool quick = purpose == DecoderPurpose::picture && thumbnail &&
                     is_large_enough(size_of(thumbnail), size_of(picture), box);
  if (quick) {
    if (auto small = picture_of(thumbnail, box, Damage::is_an_error)) {
      return not_judged(std::move(small));
    }
  }
  if (auto all = picture_of(picture, box, Damage::is_an_error)) return whole(std::move(all));
  // What is made up in place of damage is worth less than an intact thumbnail.
  if (auto small = picture_of(thumbnail, box, Damage::is_an_error)) {
    return embedded_only(std::move(small));
  }
  if (auto all = picture_of(picture, box, Damage::is_hidden)) return partly(std::move(all));
  return {};
}

}  // namespace norvo
