#include "platform/terminal/Sha256.h"

#include <nettle/sha2.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace norvo {

struct Sha256::State {
  sha256_ctx context;
};

Sha256::Sha256() : state_(std::make_unique<State>()) {
  sha256_init(&state_->context);
}

Sha256::~Sha256() = default;

void Sha256::add(std::span<const std::byte> bytes) {
  sha256_update(&state_->context, bytes.size(),
                reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Sha256::digits() {
  constexpr std::string_view digit = "0123456789abcdef";
  std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_digest(&state_->context, digest.size(), digest.data());
  std::string text;
  for (const std::uint8_t byte : digest) {
    text += digit[byte >> 4U];
    text += digit[byte & 0xFU];
  }
  return text;
}

}  // namespace norvo
