#include "platform/decoder/formats/JpegPicture.h"

#include <algorithm>
#include <csetjmp>
#include <optional>
#include <vector>

#include "platform/decoder/formats/Exif.h"
#include "platform/decoder/formats/JpegLibrary.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

// The library reports errors by calling back; the way out of it is a jump, so that no object with a
// destructor may live in between.
struct Watch {
  jpeg_error_mgr errors{};  // first: the library knows only this part
  std::jmp_buf way_out{};
  bool complained = false;
  std::uint32_t rows_before_complaint = 0;

  static Watch& of(j_common_ptr info) { return *reinterpret_cast<Watch*>(info->err); }
};

[[noreturn]] void on_error(j_common_ptr info) {
  std::longjmp(Watch::of(info).way_out, 1);
}

// Warnings are damage; traces (levels from 0) are not.
void on_message(j_common_ptr info, int level) {
  Watch& watch = Watch::of(info);
  if (level >= 0 || watch.complained) return;
  watch.complained = true;
  watch.rows_before_complaint = reinterpret_cast<j_decompress_ptr>(info)->output_scanline;
}

void no_output(j_common_ptr) {
}

struct Source {
  jpeg_source_mgr manager{};  // first: the library knows only this part
  bool exhausted = false;
};

void no_start(j_decompress_ptr) {
}

// After the last byte there is an end marker again and again, with which the library finishes.
boolean fill(j_decompress_ptr info) {
  static constexpr JOCTET end_marker[] = {0xFF, JPEG_EOI};
  reinterpret_cast<Source*>(info->src)->exhausted = true;
  info->src->next_input_byte = end_marker;
  info->src->bytes_in_buffer = sizeof end_marker;
  return TRUE;
}

void skip(j_decompress_ptr info, long bytes) {
  jpeg_source_mgr& source = *info->src;
  if (bytes <= 0) return;
  if (static_cast<std::size_t>(bytes) >= source.bytes_in_buffer) {
    fill(info);
    return;
  }
  source.next_input_byte += bytes;
  source.bytes_in_buffer -= static_cast<std::size_t>(bytes);
}

// Inks are stored the other way round by those who write the marker of their program.
std::uint32_t colour_of_inks(const JSAMPLE* inks, bool inverted) {
  const auto light = [&](int i) {
    const unsigned ink = inverted ? 255U - inks[i] : inks[i];
    const unsigned black = inverted ? 255U - inks[3] : inks[3];
    return (255U - ink) * (255U - black) / 255U;
  };
  return 0xFF000000U | light(0) << 16U | light(1) << 8U | light(2);
}

class JpegDecoder {
 public:
  explicit JpegDecoder(Bytes file) {
    info_.err = jpeg_std_error(&watch_.errors);
    watch_.errors.error_exit = on_error;
    watch_.errors.emit_message = on_message;
    watch_.errors.output_message = no_output;
    source_.manager.init_source = no_start;
    source_.manager.fill_input_buffer = fill;
    source_.manager.skip_input_data = skip;
    source_.manager.resync_to_restart = jpeg_resync_to_restart;
    source_.manager.term_source = no_start;
    source_.manager.next_input_byte = file.data();
    source_.manager.bytes_in_buffer = file.size();
  }
  JpegDecoder(const JpegDecoder&) = delete;
  JpegDecoder& operator=(const JpegDecoder&) = delete;
  ~JpegDecoder() { jpeg_destroy_decompress(&info_); }

  // False when the file has no usable header.
  bool read_header() {
    if (setjmp(watch_.way_out) != 0) return false;
    jpeg_create_decompress(&info_);
    info_.src = &source_.manager;
    return jpeg_read_header(&info_, TRUE) == JPEG_HEADER_OK && info_.image_width > 0 &&
           info_.image_height > 0;
  }

  // Decodes into a picture within `box`; false when not a row came out.
  bool decode(PictureSize box);

  Decoded outcome();

 private:
  void choose_scale(PictureSize target);
  bool start();
  bool next_row();
  bool prepare(PictureSize box);
  void convert_inks();

  Watch watch_;
  Source source_;
  jpeg_decompress_struct info_{};
  std::vector<JSAMPLE> samples_;
  std::vector<std::uint32_t> row_;
  std::optional<RowScaler> scaler_;  // as soon as the size is known
};

// The library shrinks by eighths while it decodes, which is much faster than afterwards.
void JpegDecoder::choose_scale(PictureSize target) {
  info_.scale_denom = 8;
  for (info_.scale_num = 1; info_.scale_num < 8; ++info_.scale_num) {
    const bool wide_enough = std::uint64_t{info_.image_width} * info_.scale_num / 8 >= target.width;
    const bool high_enough =
        std::uint64_t{info_.image_height} * info_.scale_num / 8 >= target.height;
    if (wide_enough && high_enough) break;
  }
  info_.do_fancy_upsampling = FALSE;
}

bool JpegDecoder::start() {
  if (setjmp(watch_.way_out) != 0) return false;
  const bool has_inks = info_.num_components == 4;
  info_.out_color_space = has_inks ? JCS_CMYK : JCS_EXT_BGRA;
  return jpeg_start_decompress(&info_) == TRUE;
}

bool JpegDecoder::next_row() {
  if (setjmp(watch_.way_out) != 0) return false;
  JSAMPROW row = samples_.data();
  return jpeg_read_scanlines(&info_, &row, 1) == 1;
}

bool JpegDecoder::prepare(PictureSize box) {
  const PictureSize target =
      fitted({.width = info_.image_width, .height = info_.image_height}, box);
  choose_scale(target);
  if (!start()) return false;
  const PictureSize size{.width = info_.output_width, .height = info_.output_height};
  samples_.resize(std::size_t{4} * size.width);
  row_.resize(size.width);
  scaler_.emplace(size, fitted(size, target));
  return true;
}

void JpegDecoder::convert_inks() {
  const bool inverted = info_.saw_Adobe_marker != 0;
  for (std::size_t x = 0; x < row_.size(); ++x) {
    row_[x] = colour_of_inks(samples_.data() + 4 * x, inverted);
  }
}

bool JpegDecoder::decode(PictureSize box) {
  if (!prepare(box)) return false;
  const bool in_one_go = jpeg_has_multiple_scans(&info_) == FALSE;
  while (info_.output_scanline < info_.output_height && next_row()) {
    // What the library makes up after the end of the file is not shown.
    if (in_one_go && source_.exhausted && watch_.complained) break;
    if (info_.out_color_space == JCS_CMYK) {
      convert_inks();
    } else {
      const auto* const bytes = samples_.data();
      for (std::size_t x = 0; x < row_.size(); ++x) {
        row_[x] = 0xFF000000U | static_cast<std::uint32_t>(bytes[4 * x + 2]) << 16U |
                  static_cast<std::uint32_t>(bytes[4 * x + 1]) << 8U | bytes[4 * x];
      }
    }
    scaler_->add(row_);
  }
  return scaler_->rows() > 0;
}

Decoded JpegDecoder::outcome() {
  const std::uint32_t height = info_.output_height;
  const std::uint32_t rows = scaler_->rows();
  const std::uint32_t good = watch_.complained ? watch_.rows_before_complaint : rows;
  const bool in_scans = jpeg_has_multiple_scans(&info_) == TRUE;
  Picture picture = scaler_->finish();
  if (good >= height && rows >= height) return whole(std::move(picture));
  // All rows of a picture in several passes are there after the first one, if only roughly.
  if (in_scans && rows >= height) return partly(std::move(picture));
  return partly(std::move(picture), std::min(good, rows), height);
}

Decoded decode_main_picture(Bytes file, PictureSize box) {
  JpegDecoder decoder(file);
  if (!decoder.read_header() || !decoder.decode(box)) return {};
  return decoder.outcome();
}

}  // namespace

Decoded decode_jpeg(Bytes file, PictureSize box, Orientation fallback) {
  const Exif exif = read_jpeg_exif(file);
  const Orientation orientation = exif.orientation.value_or(fallback);
  const PictureSize stored = stored_box(box, orientation);
  Decoded decoded = decode_main_picture(file, stored);
  const bool is_useless = !decoded.has_something() || decoded.verdict.percent == 0;
  if (is_useless && !exif.thumbnail.empty()) {
    Decoded thumbnail = decode_main_picture(exif.thumbnail, stored);
    if (thumbnail.verdict.completeness == Completeness::whole) {
      decoded = embedded_only(std::move(thumbnail.picture));
    }
  }
  if (decoded.picture) decoded.picture = upright(std::move(*decoded.picture), orientation);
  return decoded;
}

}  // namespace norvo
