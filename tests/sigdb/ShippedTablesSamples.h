// Openings of files that the shipped signature tables must recognise.
#pragma once

#include <span>
#include <string_view>

namespace shipped {

/// One opening of a file; `bytes` is in the notation of sector_of().
struct Sample {
  std::string_view extension;  ///< of the first record that has to match
  std::string_view origin;  ///< the encoder that wrote the file, or "format": from its definition
  std::string_view bytes;
};

std::span<const Sample> photo_general_samples();
std::span<const Sample> photo_thorough_samples();
std::span<const Sample> video_general_samples();
std::span<const Sample> video_thorough_samples();
std::span<const Sample> raw_general_samples();
std::span<const Sample> raw_thorough_samples();
std::span<const Sample> audio_general_samples();
std::span<const Sample> audio_thorough_samples();

}  // namespace shipped
