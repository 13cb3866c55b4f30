// The little that is wanted of Exif and TIFF directories. Functions of their arguments.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/decoder/formats/FileBytes.h"
#include "platform/decoder/formats/Orientation.h"

namespace norvo {

struct Exif {
  std::optional<Orientation> orientation;
  Bytes thumbnail;          // an embedded JPEG, within the bytes that were read; empty without one
  bool is_raw = false;      // it says that it is a camera's raw file
  bool is_reduced = false;  // its first picture is a small version of another one
};

// Reads a TIFF header and its first two directories. Whatever is broken counts as absent.
Exif read_tiff_directories(Bytes tiff);

// The Exif of a JPEG file.
Exif read_jpeg_exif(Bytes jpeg);

}  // namespace norvo
