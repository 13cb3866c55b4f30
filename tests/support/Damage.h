// Ways in which files of lost cards are broken, chosen by a seed: the same seed breaks the same
// files in the same way.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace norvo::test {

class Damage {
 public:
  explicit Damage(std::uint64_t seed) : random_(seed) {}

  std::string damaged(std::string content) {
    switch (below(5)) {
      case 0:
        content.resize(below(content.size()));
        break;
      case 1:
        for (std::size_t i = 1 + below(20); i > 0; --i) flip_bit(content);
        break;
      case 2:  // in the header, where the sizes are
        for (std::size_t i = 1 + below(4); i > 0; --i) {
          content[below(std::min<std::size_t>(content.size(), 256))] = any_byte();
        }
        break;
      case 3:  // a sector of something else
        overwrite(content, 512);
        break;
      default:
        content.resize(content.size() / 2 + below(content.size() / 2 + 1));
        flip_bit(content);
        overwrite(content, 16);
        break;
    }
    return content;
  }

 private:
  std::size_t below(std::size_t end) { return end == 0 ? 0 : random_() % end; }
  char any_byte() { return static_cast<char>(random_() & 0xFFU); }
  void flip_bit(std::string& content) {
    if (content.empty()) return;
    char& byte = content[below(content.size())];
    byte = static_cast<char>(byte ^ (1 << below(8)));
  }
  void overwrite(std::string& content, std::size_t length) {
    const std::size_t begin = below(content.size());
    for (std::size_t i = begin; i < std::min(begin + length, content.size()); ++i) {
      content[i] = any_byte();
    }
  }

  std::mt19937_64 random_;
};

// The number that a program was started with, for example a seed.
inline std::uint64_t number_or(const char* text, std::uint64_t otherwise) {
  if (text != nullptr) {
    const std::string_view digits(text);
    std::from_chars(digits.data(), digits.data() + digits.size(), otherwise);
  }
  return otherwise;
}

}  // namespace norvo::test
