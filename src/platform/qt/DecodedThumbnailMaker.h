// Thumbnails of photos in memory, by a decoder process of their own. The photos that the window
// shows come as files and go another way, so only tests call this so far. Any thread.
#pragma once

#include <filesystem>
#include <utility>

#include "results/ThumbnailMaker.h"

namespace norvo {

class DecodedThumbnailMaker final : public ThumbnailMaker {
 public:
  // `decoder` is the program norvo-decoder.
  explicit DecodedThumbnailMaker(std::filesystem::path decoder) : decoder_(std::move(decoder)) {}

  std::vector<std::byte> png_thumbnail(std::span<const std::byte> encoded,
                                       std::uint32_t pixels) override;

 private:
  std::filesystem::path decoder_;
};

}  // namespace norvo
