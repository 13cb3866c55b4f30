// Shrinks a picture while its rows arrive, by the average of the area of each pixel.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/decoder/Picture.h"

namespace norvo {

// The largest size with the proportions of `source` within `box`; never enlarged, sides at least 1.
PictureSize fitted(PictureSize source, PictureSize box);

class RowScaler {
 public:
  // Sides at least 1; the target's are not longer than the source's.
  RowScaler(PictureSize source, PictureSize target);

  // The next row from the top: `source.width` premultiplied pixels. Rows beyond the height are
  // ignored.
  void add(std::span<const std::uint32_t> row);

  std::uint32_t rows() const { return rows_; }

  // Rows that never came are transparent.
  Picture finish();

 private:
  // The pixels of a row that make one pixel of the target, and the weights of the outer two.
  struct Span {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    float first_weight = 0;
    float last_weight = 0;
  };

  static std::vector<Span> spans(std::uint32_t source, std::uint32_t target);
  void shrink(std::span<const std::uint32_t> row);
  void add_shrunk(float weight);
  void finish_line();

  PictureSize source_;
  Picture target_;
  std::vector<Span> columns_;
  std::vector<Span> lines_;
  std::vector<float> shrunk_;  // one row, four channels a pixel
  std::vector<float> sums_;
  std::uint32_t rows_ = 0;
  std::uint32_t line_ = 0;  // of the target, being summed up
};

}  // namespace norvo
