#include "platform/decoder/formats/JpegXlPicture.h"

#include <jxl/decode.h>
#include <jxl/decode_cxx.h>

#include <algorithm>
#include <vector>

#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

// Of pixels, so that their bytes can be counted.
constexpr std::uint64_t most_pixels = std::uint64_t{128} << 20U;
constexpr JxlPixelFormat rgba{
    .num_channels = 4, .data_type = JXL_TYPE_UINT8, .endianness = JXL_NATIVE_ENDIAN, .align = 0};

class JpegXlDecoder {
 public:
  explicit JpegXlDecoder(Bytes file) : decoder_(JxlDecoderMake(nullptr)) {
    JxlDecoderSubscribeEvents(decoder_.get(), JXL_DEC_BASIC_INFO | JXL_DEC_FULL_IMAGE);
    JxlDecoderSetInput(decoder_.get(), file.data(), file.size());
    JxlDecoderCloseInput(decoder_.get());
  }

  Decoded decode(PictureSize box) {
    while (true) {
      switch (JxlDecoderProcessInput(decoder_.get())) {
        case JXL_DEC_BASIC_INFO:
          if (!read_size()) return {};
          break;
        case JXL_DEC_NEED_IMAGE_OUT_BUFFER:
          if (!make_room()) return {};
          break;
        case JXL_DEC_FULL_IMAGE:
          return whole(shrunk(box));
        default:
          return rest(box);
      }
    }
  }

 private:
  bool read_size() {
    JxlBasicInfo info{};
    if (JxlDecoderGetBasicInfo(decoder_.get(), &info) != JXL_DEC_SUCCESS) return false;
    // The library turns the picture upright itself; the sides are those of the upright one.
    size_ = {.width = info.xsize, .height = info.ysize};
    premultiplied_ = info.alpha_premultiplied != 0;
    return size_.width > 0 && size_.height > 0 &&
           std::uint64_t{size_.width} * size_.height <= most_pixels;
  }

  bool make_room() {
    std::size_t bytes = 0;
    if (JxlDecoderImageOutBufferSize(decoder_.get(), &rgba, &bytes) != JXL_DEC_SUCCESS)
      return false;
    if (bytes != std::size_t{4} * size_.width * size_.height) return false;
    pixels_.assign(bytes, 0);
    return JxlDecoderSetImageOutBuffer(decoder_.get(), &rgba, pixels_.data(), bytes) ==
           JXL_DEC_SUCCESS;
  }

  // What the decoder has when the file ends too early or is broken.
  Decoded rest(PictureSize box) {
    if (pixels_.empty() || JxlDecoderFlushImage(decoder_.get()) != JXL_DEC_SUCCESS) return {};
    return partly(shrunk(box));
  }

  std::uint32_t pixel(std::size_t index) const {
    const std::uint8_t* const bytes = pixels_.data() + 4 * index;
    const std::uint32_t alpha = bytes[3];
    const auto colour = [&](int i) {
      const std::uint32_t value = bytes[i];
      return premultiplied_ ? std::min(value, alpha) : (value * alpha + 127U) / 255U;
    };
    return alpha << 24U | colour(0) << 16U | colour(1) << 8U | colour(2);
  }

  Picture shrunk(PictureSize box) const {
    RowScaler scaler(size_, fitted(size_, box));
    std::vector<std::uint32_t> row(size_.width);
    for (std::size_t y = 0; y < size_.height; ++y) {
      for (std::size_t x = 0; x < size_.width; ++x) row[x] = pixel(y * size_.width + x);
      scaler.add(row);
    }
    return scaler.finish();
  }

  JxlDecoderPtr decoder_;
  PictureSize size_;
  bool premultiplied_ = false;
  std::vector<std::uint8_t> pixels_;
};

}  // namespace

Decoded decode_jpeg_xl(Bytes file, PictureSize box) {
  return JpegXlDecoder(file).decode(box);
}

}  // namespace norvo
