// Whole files in and out, for tests.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace norvo::test {

inline void write_file(const std::filesystem::path& path, std::string_view content) {
  std::ofstream stream(path, std::ios::binary | std::ios::trunc);
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!stream.flush()) throw std::runtime_error("cannot write " + path.string());
}

inline std::string read_file(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

// A disk image of `sectors` sectors of zeros.
inline std::string zero_sectors(std::size_t sectors) {
  return std::string(sectors * 512, '\0');
}

// A sector that begins with `start` and is filled with `fill`.
inline std::string sector_of(std::string_view start, char fill) {
  std::string sector(512, fill);
  return sector.replace(0, start.size(), start);
}

}  // namespace norvo::test
