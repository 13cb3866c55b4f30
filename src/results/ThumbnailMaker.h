// Makes small pictures of photos that exist in memory only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace norvo {

class ThumbnailMaker {
 public:
  virtual ~ThumbnailMaker() = default;

  // The picture that the encoded bytes hold, whole and upright, at most `pixels` in width and
  // height, as a PNG; empty when they hold none that can be shown. The bytes are a stranger's: an
  // implementation limits size, memory and time. Returns when the picture is made; any thread.
  virtual std::vector<std::byte> png_thumbnail(std::span<const std::byte> encoded,
                                               std::uint32_t pixels) = 0;
};

}  // namespace norvo
