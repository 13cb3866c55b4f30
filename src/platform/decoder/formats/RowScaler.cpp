#include "platform/decoder/formats/RowScaler.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace norvo {
namespace {

constexpr std::size_t channels = 4;

void add_pixel(std::array<float, channels>& sum, std::uint32_t pixel, float weight) {
  for (std::size_t c = 0; c < channels; ++c) {
    sum[c] += weight * static_cast<float>((pixel >> (8 * c)) & 0xFFU);
  }
}

}  // namespace

PictureSize fitted(PictureSize source, PictureSize box) {
  const double scale = std::min({1.0, static_cast<double>(box.width) / source.width,
                                 static_cast<double>(box.height) / source.height});
  const auto side = [scale](std::uint32_t length, std::uint32_t most) {
    const auto scaled = static_cast<std::uint32_t>(std::lround(scale * length));
    return std::clamp<std::uint32_t>(scaled, 1, most);
  };
  return {.width = side(source.width, box.width), .height = side(source.height, box.height)};
}

RowScaler::RowScaler(PictureSize source, PictureSize target)
    : source_(source),
      target_{.size = target,
              .pixels = std::vector<std::uint32_t>(std::size_t{target.width} * target.height)},
      columns_(spans(source.width, target.width)),
      lines_(spans(source.height, target.height)),
      shrunk_(channels * target.width),
      sums_(channels * target.width) {
}

std::vector<RowScaler::Span> RowScaler::spans(std::uint32_t source, std::uint32_t target) {
  std::vector<Span> spans(target);
  for (std::uint32_t i = 0; i < target; ++i) {
    // In parts of 1/target of a source pixel, so that nothing is rounded.
    const std::uint64_t begin = std::uint64_t{i} * source;
    const std::uint64_t end = begin + source;
    Span& span = spans[i];
    span.first = static_cast<std::uint32_t>(begin / target);
    span.last = static_cast<std::uint32_t>((end - 1) / target);
    const auto part = [target](std::uint64_t parts) {
      return static_cast<float>(parts) / static_cast<float>(target);
    };
    span.first_weight = part(std::uint64_t{span.first + 1U} * target - begin);
    span.last_weight = part(end - std::uint64_t{span.last} * target);
    if (span.first == span.last) span.first_weight = part(source);
  }
  return spans;
}

void RowScaler::add(std::span<const std::uint32_t> row) {
  if (rows_ >= source_.height) return;
  shrink(row);
  // A row on a border counts for the lines on both sides.
  while (line_ < lines_.size() && lines_[line_].first <= rows_) {
    const Span& line = lines_[line_];
    const bool is_last = line.last == rows_;
    add_shrunk(rows_ == line.first ? line.first_weight : is_last ? line.last_weight : 1.0F);
    if (!is_last) break;
    finish_line();
    ++line_;
  }
  ++rows_;
}

void RowScaler::shrink(std::span<const std::uint32_t> row) {
  float* out = shrunk_.data();
  for (const Span& column : columns_) {
    std::array<std::uint32_t, channels> middle{};
    for (std::uint32_t x = column.first + 1; x < column.last; ++x) {
      const std::uint32_t pixel = row[x];
      middle[0] += pixel & 0xFFU;
      middle[1] += (pixel >> 8U) & 0xFFU;
      middle[2] += (pixel >> 16U) & 0xFFU;
      middle[3] += pixel >> 24U;
    }
    std::array<float, channels> sum{};
    for (std::size_t c = 0; c < channels; ++c) sum[c] = static_cast<float>(middle[c]);
    add_pixel(sum, row[column.first], column.first_weight);
    if (column.last != column.first) add_pixel(sum, row[column.last], column.last_weight);
    out = std::copy(sum.begin(), sum.end(), out);
  }
}

void RowScaler::add_shrunk(float weight) {
  for (std::size_t i = 0; i < sums_.size(); ++i) sums_[i] += weight * shrunk_[i];
}

void RowScaler::finish_line() {
  const float area = static_cast<float>(source_.width) / static_cast<float>(target_.size.width) *
                     static_cast<float>(source_.height) / static_cast<float>(target_.size.height);
  std::uint32_t* const out = target_.pixels.data() + std::size_t{line_} * target_.size.width;
  for (std::uint32_t x = 0; x < target_.size.width; ++x) {
    std::array<std::uint32_t, channels> value{};
    for (std::size_t c = 0; c < channels; ++c) {
      value[c] = static_cast<std::uint32_t>(std::lround(sums_[channels * x + c] / area));
    }
    // Rounding must not lift a colour above its alpha.
    const std::uint32_t alpha = std::min(value[3], 255U);
    for (std::size_t c = 0; c < 3; ++c) value[c] = std::min(value[c], alpha);
    out[x] = alpha << 24U | value[2] << 16U | value[1] << 8U | value[0];
  }
  std::fill(sums_.begin(), sums_.end(), 0.0F);
}

Picture RowScaler::finish() {
  // What a line that is cut off has got is shown.
  if (line_ < lines_.size() && rows_ > lines_[line_].first) finish_line();
  return std::move(target_);
}

}  // namespace norvo
