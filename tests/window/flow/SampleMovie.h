// A movie to be played.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace norvo::test {

// Makes `file`, larger than the preview box and 20 seconds long, whatever its extension: an AVI by
// its contents.
inline std::filesystem::path make_movie(const std::filesystem::path& file) {
  const std::string command =
      "ffmpeg -v error -f lavfi -i testsrc=size=640x480:rate=10:duration=20 -c:v mjpeg "
      "-pix_fmt yuvj420p -f avi -y " +
      file.native();
  EXPECT_EQ(std::system(command.c_str()), 0);
  return file;
}

}  // namespace norvo::test
