// SHA-256 of bytes that come piece by piece. One thread at a time.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace norvo {

class Sha256 {
 public:
  Sha256();
  Sha256(const Sha256&) = delete;
  Sha256& operator=(const Sha256&) = delete;
  ~Sha256();

  void add(std::span<const std::byte> bytes);

  // The digest of all bytes that were added, as 64 hexadecimal digits in lower case. Once.
  std::string digits();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace norvo
