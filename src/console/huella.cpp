#include "console/huella.h"

#include <sodium.h>

#include <array>

namespace morvane::console {

std::string sha256(std::span<const std::uint8_t> bytes) {
  std::array<unsigned char, crypto_hash_sha256_BYTES> suma{};
  crypto_hash_sha256(suma.data(), bytes.data(), bytes.size());
  std::array<char, 2 * crypto_hash_sha256_BYTES + 1> texto{};
  return sodium_bin2hex(texto.data(), texto.size(), suma.data(), suma.size());
}

}  // namespace morvane::console
