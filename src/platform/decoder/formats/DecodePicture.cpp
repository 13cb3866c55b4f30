#include "platform/decoder/formats/DecodePicture.h"

#include <exception>
#include <new>

#include "platform/decoder/formats/HeifPicture.h"
#include "platform/decoder/formats/Jpeg2000Picture.h"
#include "platform/decoder/formats/JpegPicture.h"
#include "platform/decoder/formats/JpegXlPicture.h"
#include "platform/decoder/formats/PictureFormat.h"
#include "platform/decoder/formats/PsdPicture.h"
#include "platform/decoder/formats/QtPicture.h"
#include "platform/decoder/formats/RawPreview.h"

namespace norvo {
namespace {

Decoded decode_as(PictureFormat format, Bytes file, const DecoderRequest& request) {
  switch (format) {
    case PictureFormat::heif:
      return decode_heif(file, request.box, request.purpose);
    case PictureFormat::jpeg:
      return decode_jpeg(file, request.box);
    case PictureFormat::jpeg2000:
      return decode_jpeg2000(file, request.box, request.purpose);
    case PictureFormat::jpeg_xl:
      return decode_jpeg_xl(file, request.box);
    case PictureFormat::psd:
      return decode_psd(file, request.box);
    case PictureFormat::raw:
      return decode_raw_preview(file, request.box, request.purpose);
    default:
      return decode_with_qt(file, format, request.box, request.purpose);
  }
}

}  // namespace

void load_decoders(std::uint64_t bytes_per_picture) {
  load_qt_decoders(bytes_per_picture);
}

Decoded decode_picture(const FileBytes& file, const DecoderRequest& request) {
  // A library may throw over a broken file.
  try {
    for (const PictureFormat format : possible_formats(file.bytes(), request.extension)) {
      Decoded decoded = decode_as(format, file.bytes(), request);
      if (decoded.has_something()) return decoded;
    }
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    return {};
  }
  return {};
}

}  // namespace norvo
