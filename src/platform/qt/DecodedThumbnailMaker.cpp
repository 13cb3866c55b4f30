#include "platform/qt/DecodedThumbnailMaker.h"

#include <QBuffer>
#include <QImage>
#include <future>
#include <optional>

#include "platform/decoder/DecoderPool.h"
#include "platform/decoder/MemoryFile.h"
#include "platform/qt/PictureImage.h"

namespace norvo {
namespace {

std::vector<std::byte> png_of(const QImage& image) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) return {};
  const auto bytes = std::as_bytes(std::span(buffer.data()));
  return {bytes.begin(), bytes.end()};
}

}  // namespace

std::vector<std::byte> DecodedThumbnailMaker::png_thumbnail(std::span<const std::byte> encoded,
                                                            std::uint32_t pixels) {
  const auto file = std::make_shared<const UniqueFd>(memory_file(encoded));
  if (!*file) return {};
  std::promise<std::optional<Picture>> answer;
  DecoderPool pool({.decoder = decoder_, .processes = 1},
                   [&answer](const DecoderResult& result) { answer.set_value(result.picture); });
  pool.request(
      {.id = 1, .path = {}, .file = file, .box = {pixels, pixels}, .wants_verdict = false});
  const std::optional<Picture> picture = answer.get_future().get();
  return picture ? png_of(image_of(*picture)) : std::vector<std::byte>();
}

}  // namespace norvo
