// The content of an open file as memory. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace norvo {

using Bytes = std::span<const std::uint8_t>;

// Maps the file, its first 512 MiB when it is longer. A file that shrinks meanwhile ends the
// process, so this is for decoder processes only.
class FileBytes {
 public:
  static constexpr std::size_t most_bytes = std::size_t{512} << 20U;

  // Empty when the file is, or cannot be mapped. `descriptor` stays the caller's.
  explicit FileBytes(int descriptor);
  ~FileBytes();
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  Bytes bytes() const { return bytes_; }

 private:
  Bytes bytes_;
};

}  // namespace norvo
