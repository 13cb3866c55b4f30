// The pictures that make_pictures.py made, and what is in them.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/decoder/Picture.h"

namespace norvo::test {

// The folder of the pictures; the build makes it before the tests run.
std::filesystem::path picture_folder();

// All files in it, by name.
std::vector<std::filesystem::path> all_pictures();

// Red, green and blue at a place, in sixteenths of both sides; -1 when it is transparent.
std::array<int, 3> colour_at(const Picture& picture, std::uint32_t x16, std::uint32_t y16);

// The largest difference of a channel in the middle of the four fields, which are red, green /
// blue, yellow; `in_grey` compares with their brightness.
int distance_from_fields(const Picture& picture, bool in_grey = false);

}  // namespace norvo::test
